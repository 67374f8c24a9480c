// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include <QApplication>
class CMainWindow_CommandsTest : public QObject
{
    Q_OBJECT
};
TARNVIK_TEST_MAIN(CMainWindow_CommandsTest, QApplication)
#include "CMainWindow_CommandsTest.moc"
