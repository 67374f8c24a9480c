// SPDX-License-Identifier: MIT
// The entry point of a test program.
#pragma once

#include "tools/IsolatedFolders.h"

#include <QTest>

/// Defines main(): isolated folders, an application object of the class given (QCoreApplication,
/// QApplication), then the tests of TestClass.
#define TARNVIK_TEST_MAIN(TestClass, ApplicationClass)                                                       \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        const tools::IsolatedFolders isolation;                                                              \
        ApplicationClass application(argc, argv);                                                            \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
