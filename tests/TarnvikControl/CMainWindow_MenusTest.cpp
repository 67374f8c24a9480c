// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include <QApplication>
class CMainWindow_MenusTest : public QObject
{
    Q_OBJECT
};
TARNVIK_TEST_MAIN(CMainWindow_MenusTest, QApplication)
#include "CMainWindow_MenusTest.moc"
