// SPDX-License-Identifier: MIT
// Where the window goes when it is hidden, with a tray and without one.
#include "TarnvikControl/CMainWindow.h"

#include "TarnvikControl/WindowHiding.h"
#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>

using namespace Qt::StringLiterals;

using tests::StoredSettings;
using tests::Tray;

namespace {

bool TrayIsThere = false;

/// Hides the window as a user does.
void Hide(CMainWindow &window, const QString &how)
{
    if (how == QLatin1String("menu"))
        tests::MenuEntry(window, u"Hide"_s)->trigger();
    else if (how == QLatin1String("close button"))
        QVERIFY(!window.close());
    else
        emit Tray(window).activated(QSystemTrayIcon::Trigger);
}

} // namespace

class CMainWindow_HideTest : public tests::MainWindowFixture
{
    Q_OBJECT

private slots:
    void init();

    void theTrayOfTheMomentDecides_data();
    void theTrayOfTheMomentDecides();
    void aMaximisedWindowComesBackMaximised();
};

void CMainWindow_HideTest::init()
{
    MainWindowFixture::init();
    StoredSettings().setValue(u"CloseIsMinimize"_s, false);
    HasTray = [] { return TrayIsThere; };
}

void CMainWindow_HideTest::theTrayOfTheMomentDecides_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("the menu") << "menu";
    QTest::newRow("the close button that hides") << "close button";
    QTest::newRow("the icon of a tray that goes away") << "icon";
}

void CMainWindow_HideTest::theTrayOfTheMomentDecides()
{
    QFETCH(QString, how);
    CMainWindow window;
    for (const bool trayIsThere : {true, false, true}) {
        window.showNormal();
        TrayIsThere = trayIsThere;
        Hide(window, how);
        QCOMPARE(window.isVisible(), !trayIsThere);
        QCOMPARE(window.isMinimized(), !trayIsThere);
    }
}

void CMainWindow_HideTest::aMaximisedWindowComesBackMaximised()
{
    CMainWindow window;
    window.showMaximized();
    TrayIsThere = false;
    Hide(window, u"menu"_s);
    QVERIFY(window.isMinimized());
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized); // as the task bar does
    QVERIFY(window.isMaximized());
}

TARNVIK_TEST_MAIN(CMainWindow_HideTest, QApplication)

#include "CMainWindow_HideTest.moc"
