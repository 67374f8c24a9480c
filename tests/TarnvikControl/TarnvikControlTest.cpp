// SPDX-License-Identifier: MIT
// The whole program as a process, on a desktop of its own, with the stand-in recorder beside it.
#include "Common_Files/OstrelRecordStatus.h"
#include "Common_Files/RecorderNames.h"
#include "tests/TarnvikControl/Station.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

using tests::OnlyWindow;
using tests::QuitTitle;
using tests::Station;
using tests::Title;

class TarnvikControlTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theRecorderAndItsMessageAreShown();
    void aKilledRecorderIsRunningAgainWithinASecondAndThePanelShowsIt();
    void aSecondInstanceTellsSoAndEndsWithMinus1();
    void theInstanceAfterAKilledOneStarts();
    void sigintAndSigtermEndWith0AndStopTheRecorder_data();
    void sigintAndSigtermEndWith0AndStopTheRecorder();
    void aSecondCtrlCWhileTheEventLoopIsStillEndingIsNotHandled();
    void quitAnsweredWithYesStopsTheRecorderByTheSemaphoreAlone();
    void theCloseButtonAnsweredWithAbortKeepsTheProgram();
    void aRecorderThatIgnoresEverythingIsKilledAfter5s();
    void aRecorderSurvivesACrashAndIsAskedToQuitAtTheNextStart();
    void startHiddenShowsNoWindow();
    void theDebugConsoleIsOpened_data();
    void theDebugConsoleIsOpened();
    void theDebugConsoleIsOpenedAfterTheWindowWasMade();
    void onlyTheFirstFourArgumentsReachTheApplicationObject();
    void anArgumentThatIsTooLongIsRefused();
    void theVersionIsTheFirstLine_data();
    void theVersionIsTheFirstLine();
    void aBrokenOutputPipeDoesNotEndTheProgram();
    void theWindowCarriesTheIconInItsSizes();
    void withoutARecorderItIsShownAsStopped();
    void theRecorderWithTheEndingExeComesFirst();

private:
    std::unique_ptr<tools::RecorderReport> Report;
};

void TarnvikControlTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    QSettings(u"Quillane"_s, Title).clear();
}

void TarnvikControlTest::cleanup()
{
    Report.reset();
}

void TarnvikControlTest::theRecorderAndItsMessageAreShown()
{
    Report->SetOption("MESSAGE", "<WORK>Recording <INFO>162.400 MHz\nFile 1 of 4");
    Station station;
    station.Start();
    const QString expected = u"Program information\n\nStart               : With open GUI\n\n"
                             "TarnvikRecord\n\nProgram status      : Running\n"
                             "Last message        : Recording 162.400 MHz\n"_s +
                             QString(22, u' ') + u"File 1 of 4\n"_s;
    QTRY_COMPARE_WITH_TIMEOUT(station.panelText(), expected, tests::Patience);
    QTRY_VERIFY(station.output().contains(u"\nstand-in: status 1 written\n"_s));
}

void TarnvikControlTest::aKilledRecorderIsRunningAgainWithinASecondAndThePanelShowsIt()
{
    Report->SetOption("INTERVAL_MS", "0");
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.panelText().contains(u"Running"_s), tests::Patience);
    QCOMPARE(Report->count(u"started"_s), 1);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    while (Report->count(u"started"_s) < 2 && timer.elapsed() < 5000)
        QTest::qWait(1);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QTRY_VERIFY(station.panelText().contains(u"Running"_s));
    // The next end is followed by a pause: now the panel can be seen to say so.
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    bool stopped = false;
    const auto stoppedWasShown = [&] {
        stopped = stopped || station.panelText().contains(u"Stopped"_s);
        return stopped;
    };
    QTRY_VERIFY(stoppedWasShown());
    QTRY_VERIFY_WITH_TIMEOUT(station.panelText().contains(u"Running"_s), 8000);
}

void TarnvikControlTest::aSecondInstanceTellsSoAndEndsWithMinus1()
{
    Station first;
    first.Start();
    QTRY_VERIFY_WITH_TIMEOUT(first.shows(), tests::Patience);
    QTRY_VERIFY(Report->recorderListens());
    Station second;
    second.Start();
    QTRY_VERIFY_WITH_TIMEOUT(second.shows(u"Error..."_s), tests::Patience);
    QCOMPARE(tests::VirtualDesktop::windows(Title).size(), 1);
    QVERIFY(tests::VirtualDesktop::Press(OnlyWindow(u"Error..."_s), {u"Return"_s}));
    QVERIFY(second.endedWith(255)); // -1 as an exit code of eight bits
    QCOMPARE(second.output().section(u'\n', 1),
             u"TarnvikControl: Error an instance is already running...\n"_s);
    const QRegularExpression line(u"^TarnvikControl \\d\\d:\\d\\d:\\d\\d: TarnvikControl: Error -1!\n$"_s);
    QVERIFY2(line.match(second.errorOutput()).hasMatch(), qPrintable(second.errorOutput()));
    QCOMPARE(Report->count(u"started"_s), 1);
    QVERIFY(Report->recorderListens()); // the first one's recorder was not asked to quit
}

void TarnvikControlTest::theInstanceAfterAKilledOneStarts()
{
    Station station;
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"started"_s), 1, tests::Patience);
    station.Process.kill();
    QVERIFY(station.Process.waitForFinished());
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"started"_s), 2, tests::Patience);
}

void TarnvikControlTest::sigintAndSigtermEndWith0AndStopTheRecorder_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TarnvikControlTest::sigintAndSigtermEndWith0AndStopTheRecorder()
{
    QFETCH(int, number);
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    QVERIFY(station.Signal(number));
    QVERIFY(station.endedWith(0));
    QVERIFY(station.output().contains(u"\nCtrlCException\n"_s));
    QCOMPARE(station.errorOutput(), QString());
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QVERIFY(!tools::IsAlive(Report->lastProcess(u"started"_s)));
}

void TarnvikControlTest::aSecondCtrlCWhileTheEventLoopIsStillEndingIsNotHandled()
{
    Report->SetOption("IGNORE_QUIT", "1");
    Report->SetOption("IGNORE_TERMINATE", "1");
    Station station;
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"ready"_s), 1, tests::Patience);
    QVERIFY(station.Signal(SIGINT));
    QTRY_VERIFY(station.output().contains(u"CtrlCException"_s));
    QVERIFY(station.Signal(SIGINT)); // while the program waits for its recorder
    QVERIFY(station.Process.waitForFinished(3000));
    QCOMPARE(station.Process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(station.Process.exitCode(), SIGINT);
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
}

void TarnvikControlTest::quitAnsweredWithYesStopsTheRecorderByTheSemaphoreAlone()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    QVERIFY(station.Quit());
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControlTest::theCloseButtonAnsweredWithAbortKeepsTheProgram()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    QVERIFY(tests::VirtualDesktop::Press(OnlyWindow(Title), {u"alt+F4"_s}));
    QTRY_VERIFY(station.shows(QuitTitle));
    QVERIFY(tests::VirtualDesktop::Press(OnlyWindow(QuitTitle), {u"Escape"_s}));
    QTRY_VERIFY(OnlyWindow(QuitTitle).isEmpty());
    QVERIFY(station.shows());
    QVERIFY(Report->recorderListens());
    QCOMPARE(station.Process.state(), QProcess::Running);
}

void TarnvikControlTest::aRecorderThatIgnoresEverythingIsKilledAfter5s()
{
    Report->SetOption("IGNORE_QUIT", "1");
    Report->SetOption("IGNORE_TERMINATE", "1");
    Station station;
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"ready"_s), 1, tests::Patience);
    const qint64 recorder = Report->lastProcess(u"started"_s);
    QTRY_VERIFY(station.shows());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
    QVERIFY2(timer.elapsed() >= 5000 && timer.elapsed() < 7000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!tools::IsAlive(recorder));
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 0);
}

void TarnvikControlTest::aRecorderSurvivesACrashAndIsAskedToQuitAtTheNextStart()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
    const qint64 recorder = Report->lastProcess(u"started"_s);
    station.Process.kill();
    QVERIFY(station.Process.waitForFinished());
    QVERIFY(tools::IsAlive(recorder));
    QVERIFY(Report->recorderListens());
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"ends"_s, recorder), 1, tests::Patience);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    QTRY_VERIFY(station.panelText().contains(u"Running"_s));
    QTRY_VERIFY(Report->recorderListens());
    QCOMPARE(Report->count(u"quit-request"_s), 1); // it did not reach the new one
}

void TarnvikControlTest::startHiddenShowsNoWindow()
{
    QSettings(u"Quillane"_s, Title).setValue(u"StartHidden"_s, true);
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
    QTRY_VERIFY(station.output().contains(u"status 2 written"_s)); // long after the start
    QVERIFY(tests::VirtualDesktop::windows(Title).isEmpty());
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
}

void TarnvikControlTest::theDebugConsoleIsOpened_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("opened");
    QTest::newRow("--DEBUG as the first argument") << "--DEBUG" << true;
    QTest::newRow("--DEBUG as the first argument, others following") << "--DEBUG a b c d e" << true;
    QTest::newRow("--DEBUG twice") << "--DEBUG --DEBUG" << true;
    QTest::newRow("--DEBUG as the second argument behind another one") << "a --DEBUG" << false;
    QTest::newRow("--debug in another case") << "--debug" << false;
    QTest::newRow("--DEBUG with something behind it") << "--DEBUGGER" << false;
    QTest::newRow("no argument") << "" << false;
}

void TarnvikControlTest::theDebugConsoleIsOpened()
{
    QFETCH(QString, arguments);
    QFETCH(bool, opened);
    Station station;
    station.Start(arguments.split(u' ', Qt::SkipEmptyParts));
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.output().contains(u"status 1"_s),
                             tests::Patience);
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
    QCOMPARE(station.output().contains(u"\nDebug console open:\n"_s), opened);
}

void TarnvikControlTest::theDebugConsoleIsOpenedAfterTheWindowWasMade()
{
    // A style that does not exist here triggers the first menu entry while the window is being made, and that
    // asks for a record path.
    QSettings(u"Quillane"_s, Title).setValue(u"GuiStyle"_s, 4);
    Station station;
    station.Start({u"--DEBUG"_s});
    QTRY_VERIFY_WITH_TIMEOUT(station.shows(u"Error"_s) && station.output().contains(u'\n'), tests::Patience);
    QVERIFY(!station.output().contains(u"Debug console"_s));
    QVERIFY(tests::VirtualDesktop::Press(OnlyWindow(u"Error"_s), {u"Return"_s}));
    QTRY_VERIFY_WITH_TIMEOUT(station.output().contains(u"\nDebug console open:\n"_s), tests::Patience);
}

void TarnvikControlTest::onlyTheFirstFourArgumentsReachTheApplicationObject()
{
    // The application object understands "-platform"; as the fifth argument it must not see it.
    Station station;
    station.Start(u"a b c d -platform nonsense"_s.split(u' '));
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
    Station other;
    other.Start(u"a b -platform nonsense"_s.split(u' '));
    QVERIFY(other.Process.waitForFinished(tests::Patience));
    QVERIFY(other.Process.exitStatus() == QProcess::CrashExit || other.Process.exitCode() != 0);
}

void TarnvikControlTest::anArgumentThatIsTooLongIsRefused()
{
    Station station;
    station.Start({QString(260, u'x')});
    QVERIFY(station.endedWith(255));
    QVERIFY(station.errorOutput().contains(u"An argument is longer than 259 bytes."_s));
    QCOMPARE(Report->count(u"started"_s), 0);
    Station longest;
    longest.Start({QString(259, u'x')});
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
}

void TarnvikControlTest::theVersionIsTheFirstLine_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("of the program under its own name") << Title;
    QTest::newRow("of a program that was renamed") << u"Monitor"_s;
}

void TarnvikControlTest::theVersionIsTheFirstLine()
{
    QFETCH(const QString, file);
    Station station;
    QVERIFY(file == Title || QFile::rename(station.path(Title), station.path(file)));
    station.Process.start(station.path(file));
    QTRY_VERIFY_WITH_TIMEOUT(station.output().contains(u'\n'), tests::Patience);
    QCOMPARE(station.output().section(u'\n', 0, 0), QStringLiteral("TarnvikControl " VERSION_TEXT));
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
}

void TarnvikControlTest::aBrokenOutputPipeDoesNotEndTheProgram()
{
    Report->SetOption("INTERVAL_MS", "50"); // it logs a line each time
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.output().contains(u"status 1"_s), tests::Patience);
    station.Process.closeReadChannel(QProcess::StandardOutput);
    station.Process.closeReadChannel(QProcess::StandardError);
    bool reached = false; // the file is empty now and then, while it is rewritten
    const auto manyLinesWritten = [&reached] {
        StructOstrelRecordStatus status;
        const bool valid = QOstrelRecordStatus::ReadStatusFile(RecorderStatusFile(), status);
        reached = reached || (valid && status.SequenceNr > 30);
        return reached;
    };
    QTRY_VERIFY(manyLinesWritten()); // so many lines went into the broken pipe
    QCOMPARE(station.Process.state(), QProcess::Running);
    QCOMPARE(Report->count(u"started"_s), 1);
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
}

void TarnvikControlTest::theWindowCarriesTheIconInItsSizes()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows(), tests::Patience);
    const QString icons = tests::VirtualDesktop::property(OnlyWindow(Title), u"_NET_WM_ICON"_s);
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        QVERIFY2(icons.contains(u"Icon (%1 x %1)"_s.arg(size)), qPrintable(QString::number(size)));
}

void TarnvikControlTest::withoutARecorderItIsShownAsStopped()
{
    Station station{QString()};
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.panelText().contains(u"Program status      : Stopped\n"_s),
                             tests::Patience);
    QCOMPARE(Report->count(u"started"_s), 0);
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControlTest::theRecorderWithTheEndingExeComesFirst()
{
    Station station(u"TarnvikRecord.exe"_s);
    QFile wrong(station.path(u"TarnvikRecord"_s));
    QVERIFY(wrong.open(QIODevice::WriteOnly));
    wrong.close();
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
    QTRY_VERIFY(station.panelText().contains(u"Running"_s));
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControlTest)
#include "TarnvikControlTest.moc"
