// SPDX-License-Identifier: MIT
// The entry point of a test program that has a desktop of its own.
#pragma once

#include "tests/support/VirtualDesktop.h"
#include "tools/IsolatedFolders.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QTest>

/// Defines main(): isolated folders, a virtual desktop, an application object on it, then the tests.
#define TARNVIK_DESKTOP_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        const tools::IsolatedFolders isolation;                                                              \
        const tests::VirtualDesktop desktop;                                                                 \
        if (!desktop.error().isEmpty())                                                                      \
            qFatal("no desktop to test on: %s", qUtf8Printable(desktop.error()));                            \
        QApplication application(argc, argv);                                                                \
        if (!QTest::qWaitFor(&QSystemTrayIcon::isSystemTrayAvailable, 20000))                                \
            qFatal("no tray to test with");                                                                  \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
