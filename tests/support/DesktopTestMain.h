// SPDX-License-Identifier: MIT
// The entry point of a test program that has a desktop of its own.
#pragma once

#include "tests/support/VirtualDesktop.h"
#include "tools/IsolatedFolders.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QTest>

namespace tests {

/// Isolated folders, a virtual desktop, an application object on it, then the tests of TestClass. Returns
/// the exit code.
template <typename TestClass>
int RunOnDesktop(VirtualDesktop::Tray tray, int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    const VirtualDesktop desktop(tray);
    if (!desktop.error().isEmpty())
        qFatal("no desktop to test on: %s", qUtf8Printable(desktop.error()));
    const QApplication application(argc, argv);
    if (tray == VirtualDesktop::Tray::Present &&
        !QTest::qWaitFor(&QSystemTrayIcon::isSystemTrayAvailable, 20000))
        qFatal("no tray to test with");
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace tests

/// Defines main(): the tests of TestClass on a desktop of their own.
#define TARNVIK_DESKTOP_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return tests::RunOnDesktop<TestClass>(tests::VirtualDesktop::Tray::Present, argc, argv);             \
    }

/// The same on a desktop without a tray.
#define TARNVIK_TRAYLESS_DESKTOP_TEST_MAIN(TestClass)                                                        \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return tests::RunOnDesktop<TestClass>(tests::VirtualDesktop::Tray::Absent, argc, argv);              \
    }
