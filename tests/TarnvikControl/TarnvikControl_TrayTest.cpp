// SPDX-License-Identifier: MIT
// The icon in the tray under the mouse of a user.
#include "tests/TarnvikControl/Station.h"
#include "tests/TarnvikControl/TrayIcon.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

#include <QSettings>

#include <csignal>

using namespace Qt::StringLiterals;

using tests::AwaitTrayClicks;
using tests::OnlyWindow;
using tests::Station;
using tests::TrayIcon;
using tests::VirtualDesktop;

class TarnvikControl_TrayTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void clicksSwitchTheWindow_data();
    void clicksSwitchTheWindow();
};

void TarnvikControl_TrayTest::init()
{
    QSettings(u"Quillane"_s, tests::Title).clear();
}

void TarnvikControl_TrayTest::clicksSwitchTheWindow_data()
{
    QTest::addColumn<bool>("startHidden");
    QTest::addColumn<bool>("twice");
    QTest::newRow("a click on that of a hidden window") << true << false;
    QTest::newRow("a double click on that of a hidden window") << true << true;
    QTest::newRow("a click on that of an open window") << false << false;
    QTest::newRow("a double click on that of an open window") << false << true;
}

void TarnvikControl_TrayTest::clicksSwitchTheWindow()
{
    QFETCH(bool, startHidden);
    QFETCH(bool, twice);
    const tools::RecorderReport report;
    QSettings(u"Quillane"_s, tests::Title).setValue(u"StartHidden"_s, startHidden);
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(report.recorderListens(), tests::Patience);
    QTRY_VERIFY_WITH_TIMEOUT(station.shows() != startHidden, tests::Patience);
    QTRY_VERIFY_WITH_TIMEOUT(!OnlyWindow(u"panel"_s).isEmpty(), tests::Patience);
    QVERIFY(AwaitTrayClicks()); // the icon is where it stays
    for (const bool shown : {startHidden, !startHidden}) {
        QVERIFY(twice ? VirtualDesktop::DoubleClick(TrayIcon()) : VirtualDesktop::Click(TrayIcon()));
        QVERIFY(AwaitTrayClicks());
        QTRY_COMPARE(station.shows(), shown);
    }
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_TrayTest)

#include "TarnvikControl_TrayTest.moc"
