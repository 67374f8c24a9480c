// SPDX-License-Identifier: MIT
// The whole program on a Wayland desktop, whose tray is reached through D-Bus.
#include "tests/TarnvikControl/Station.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/support/Patience.h"
#include "tests/support/WaylandDesktop.h"
#include "tools/IsolatedFolders.h"
#include "tools/RecorderReport.h"

#include "Common_Files/TarnvikBasic.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

using tests::QuitTitle;
using tests::Station;
using tests::Title;
using tests::TrayItem;
using tests::WaylandDesktop;

class TarnvikControl_WaylandTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theWindowHasItsNameAndItsIcon();
    void theTrayHidesAndShowsTheWindow();
    void theTraysMenuQuits_data();
    void theTraysMenuQuits();
    void theDialogOpensAndCloses();
    void closingTheWindowAsks();

private:
    void Start();
    [[nodiscard]] static qsizetype windows(const QString &title = Title)
    {
        return WaylandDesktop::windows(title).size();
    }

    std::unique_ptr<tools::RecorderReport> Report;
    std::unique_ptr<Station> Running;
};

void TarnvikControl_WaylandTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    Report->SetOption("MESSAGE", "ready");
    QSettings(u"Quillane"_s, Title).clear();
}

void TarnvikControl_WaylandTest::cleanup()
{
    Running.reset();
    Report.reset();
}

void TarnvikControl_WaylandTest::Start()
{
    Running = std::make_unique<Station>();
    Running->Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && TrayItem::isThere(), tests::Patience);
}

void TarnvikControl_WaylandTest::theWindowHasItsNameAndItsIcon()
{
    Start();
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, tests::Patience);
    // Under this name the desktop finds the icon and the menu entry.
    QCOMPARE(WaylandDesktop::windows(Title).first().AppId, u"de.quillane.TarnvikControl"_s);
    QTRY_VERIFY(WaylandDesktop::windows(Title).first().HasKeyboard);
    QCOMPARE(TrayItem::title(), Title);
    QVERIFY(TrayItem::iconWidth() >= 16);
    QVERIFY(Running->Signal(SIGTERM));
    QVERIFY(Running->endedWith(0));
    QCOMPARE(Running->errorOutput(), QString());
    QTRY_VERIFY(!TrayItem::isThere());
}

void TarnvikControl_WaylandTest::theTrayHidesAndShowsTheWindow()
{
    Start();
    for (int round = 0; round < 3; ++round) {
        QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, tests::Patience);
        QVERIFY(TrayItem::Activate());
        QTRY_COMPARE(windows(), 0);
        QVERIFY(TrayItem::Activate());
    }
    QTRY_COMPARE(windows(), 1);
    QVERIFY(TrayItem::Choose(u"Minimize"_s)); // into the tray
    QTRY_COMPARE(windows(), 0);
    QVERIFY(TrayItem::Choose(u"Restore"_s));
    QTRY_COMPARE(windows(), 1);
    QCOMPARE(Report->count(u"started"_s), 1);
    QVERIFY(Report->recorderListens());
}

void TarnvikControl_WaylandTest::theTraysMenuQuits_data()
{
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("with an open window") << false;
    QTest::newRow("with a hidden window") << true;
}

void TarnvikControl_WaylandTest::theTraysMenuQuits()
{
    QFETCH(bool, isHidden);
    Start();
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, tests::Patience);
    if (isHidden) {
        QVERIFY(TrayItem::Activate());
        QTRY_COMPARE(windows(), 0);
    }
    QCOMPARE(TrayItem::menu(),
             (QStringList{u"Minimize"_s, u"Maximize"_s, u"Restore"_s, QString(), u"Quit"_s}));
    QVERIFY(TrayItem::Choose(u"Quit"_s));
    QTRY_COMPARE(windows(QuitTitle), 1);
    QVERIFY(WaylandDesktop::Press(QuitTitle, u"alt+y"_s));
    QVERIFY(Running->endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QCOMPARE(Running->errorOutput(), QString());
}

void TarnvikControl_WaylandTest::theDialogOpensAndCloses()
{
    QVERIFY(QDir().mkpath(QTarnvikBasic::GetRecorderFile(QString())));
    QVERIFY(tests::WriteAlignmentFile(QTarnvikBasic::GetRecorderFile(tests::RtlFile), SdrType::RtlSdr,
                                      {{"0x1", tests::Day("2024-01-01")}}));
    Start();
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, tests::Patience);
    QVERIFY(WaylandDesktop::Press(Title, u"ctrl+s"_s));
    QTRY_COMPARE(windows(), 2); // both have the program's name
    // Here the icon works beside the dialog, which outlives the hidden window.
    QVERIFY(TrayItem::Activate());
    QTRY_COMPARE(windows(), 1);
    QVERIFY(TrayItem::Activate());
    QTRY_COMPARE(windows(), 2);
    QVERIFY(TrayItem::Choose(u"Quit"_s));
    QTRY_COMPARE(windows(QuitTitle), 1);
    QVERIFY(WaylandDesktop::Press(QuitTitle, u"alt+y"_s));
    QVERIFY(Running->endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Running->errorOutput(), QString());
}

void TarnvikControl_WaylandTest::closingTheWindowAsks()
{
    Start();
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, tests::Patience);
    QVERIFY(WaylandDesktop::Close(Title));
    QTRY_COMPARE(windows(QuitTitle), 1);
    QVERIFY(WaylandDesktop::Press(QuitTitle, u"Escape"_s));
    QTRY_COMPARE(windows(QuitTitle), 0);
    QCOMPARE(windows(), 1);
    QVERIFY(Report->recorderListens());
    QVERIFY(WaylandDesktop::Close(Title));
    QTRY_COMPARE(windows(QuitTitle), 1);
    QVERIFY(WaylandDesktop::Press(QuitTitle, u"alt+y"_s));
    QVERIFY(Running->endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
}

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    const WaylandDesktop desktop;
    if (!desktop.error().isEmpty())
        qFatal("no desktop to test on: %s", qUtf8Printable(desktop.error()));
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(Title);
    TarnvikControl_WaylandTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TarnvikControl_WaylandTest.moc"
