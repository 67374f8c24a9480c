// SPDX-License-Identifier: MIT
// The whole program on a desktop that has no tray, or has one only later.
#include "tests/TarnvikControl/Station.h"
#include "tests/TarnvikControl/TrayIcon.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

#include <QSettings>

#include <csignal>

using namespace Qt::StringLiterals;

using tests::OnlyWindow;
using tests::Station;
using tests::VirtualDesktop;

namespace {

bool IsMinimised()
{
    return VirtualDesktop::isMinimised(OnlyWindow(tests::Title));
}

/// A tray for as long as it exists.
class LateTray
{
public:
    LateTray()
    {
        // As wide as its icons; without one it may be hidden.
        Process.start(u"trayer"_s, {u"--edge"_s, u"bottom"_s, u"--widthtype"_s, u"request"_s});
    }
    ~LateTray()
    {
        Process.terminate();
        Process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(LateTray)

private:
    QProcess Process;
};

} // namespace

class TarnvikControl_NoTrayTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aWindowThatIsHiddenCanBeBroughtBack_data();
    void aWindowThatIsHiddenCanBeBroughtBack();
    void withATrayThatCameLaterTheWindowIsHidden();
};

void TarnvikControl_NoTrayTest::init()
{
    QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
    QSettings(u"Quillane"_s, tests::Title).clear();
    QSettings(u"Quillane"_s, tests::Title).setValue(u"CloseIsMinimize"_s, false);
}

void TarnvikControl_NoTrayTest::aWindowThatIsHiddenCanBeBroughtBack_data()
{
    QTest::addColumn<bool>("startHidden");
    QTest::newRow("hidden by its close button") << false;
    QTest::newRow("hidden from the start") << true;
}

void TarnvikControl_NoTrayTest::aWindowThatIsHiddenCanBeBroughtBack()
{
    QFETCH(bool, startHidden);
    const tools::RecorderReport report;
    QSettings(u"Quillane"_s, tests::Title).setValue(u"StartHidden"_s, startHidden);
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(report.recorderListens() && station.shows(), tests::Patience);
    if (!startHidden) {
        QVERIFY(!IsMinimised());
        QVERIFY(VirtualDesktop::Press(OnlyWindow(tests::Title), {u"alt+F4"_s}));
    }
    QTRY_VERIFY(IsMinimised());
    // Its entry in the task bar brings it back.
    QTRY_VERIFY_WITH_TIMEOUT(station.panelText().contains(u"Running"_s), tests::Patience);
    QVERIFY(!IsMinimised());
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
}

void TarnvikControl_NoTrayTest::withATrayThatCameLaterTheWindowIsHidden()
{
    const tools::RecorderReport report;
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(report.recorderListens() && station.shows(), tests::Patience);
    {
        const LateTray tray;
        QTRY_VERIFY_WITH_TIMEOUT(!OnlyWindow(u"panel"_s).isEmpty(), tests::Patience); // with the icon
        QVERIFY(VirtualDesktop::Press(OnlyWindow(tests::Title), {u"alt+F4"_s}));
        QTRY_VERIFY(!station.shows());
        QVERIFY(VirtualDesktop::Click(tests::TrayIcon()));
        QTRY_VERIFY(station.shows());
    }
    QTRY_VERIFY_WITH_TIMEOUT(!QSystemTrayIcon::isSystemTrayAvailable(), tests::Patience);
    QVERIFY(VirtualDesktop::Press(OnlyWindow(tests::Title), {u"alt+F4"_s}));
    QTRY_VERIFY(IsMinimised());
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
}

TARNVIK_TRAYLESS_DESKTOP_TEST_MAIN(TarnvikControl_NoTrayTest)

#include "TarnvikControl_NoTrayTest.moc"
