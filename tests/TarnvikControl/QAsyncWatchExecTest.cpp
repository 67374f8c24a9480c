// SPDX-License-Identifier: MIT
#include "TarnvikControl/QAsyncWatchExec.h"

#include "Common_Files/RecorderNames.h"
#include "Common_Files/TarnvikBasic.h"
#include "platform/QuitSignal.h"
#include "tests/support/MessageLog.h"
#include "tests/support/ProcessResources.h"
#include "tests/support/RecorderReport.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMetaClassInfo>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <atomic>
#include <memory>

using namespace std::chrono_literals;

namespace {

const QString ScriptedProgram = QStringLiteral(SCRIPTED_PROGRAM);

struct HookCall
{
    void *Context = nullptr;
    QString Program;
    QString WorkingDirectory;
    QStringList Arguments;
    QThread *Thread = nullptr;
};

QList<HookCall> HookCalls;

void RecordHook(void *context, QString &program, QString &workingDirectory, QStringList &arguments)
{
    HookCalls.append({context, program, workingDirectory, arguments, QThread::currentThread()});
}

void EmptyProgram(void * /*context*/, QString &program, QString & /*folder*/, QStringList & /*arguments*/)
{
    program.clear();
}

void ChangeEverything(void *context, QString &program, QString &workingDirectory, QStringList &arguments)
{
    program = ScriptedProgram;
    workingDirectory = *static_cast<QString *>(context);
    arguments = QStringList{QStringLiteral("out:changed"), QStringLiteral("wait")};
}

/// When the loop asked for starts and when the process ended, on one clock. The loop's requests are taken on
/// its own thread, so that a busy test thread does not blur them.
class Timeline
{
public:
    explicit Timeline(QAsyncWatchExec &runner)
    {
        Clock.start();
        QObject::connect(
            &runner, &QAsyncWatchExec::Signal_Start, &Receiver, [this] { add(Starts); },
            Qt::DirectConnection);
        QObject::connect(
            &runner, &QAsyncWatchExec::stateChanged, &Receiver,
            [this](int state) {
                if (state == QProcess::NotRunning)
                    add(Ends);
            },
            Qt::DirectConnection);
    }

    [[nodiscard]] qsizetype startCount() const { return StartCount; }
    /// Milliseconds from the n-th end to the start that followed it.
    [[nodiscard]] qint64 pauseAfterEnd(qsizetype n) const { return Starts.at(n + 1) - Ends.at(n); }

private:
    void add(QList<qint64> &times)
    {
        times.append(Clock.elapsed());
        if (&times == &Starts)
            ++StartCount;
    }

    QObject Receiver;
    QElapsedTimer Clock;
    QList<qint64> Starts; // written by the loop's thread, read when StartCount has been seen
    QList<qint64> Ends;
    std::atomic<qsizetype> StartCount = 0;
};

} // namespace

class QAsyncWatchExecTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void carriesItsClassInformation();
    void aCopyIsAFreshRunnerWithTheSameParent();
    void startWithoutProgramFails();
    void stopBeforeStartDoesNothing();
    void startRunsTheProgramAndReportsEachState();
    void theWorkingFolderIsTheProgramsOwnUnlessGiven_data();
    void theWorkingFolderIsTheProgramsOwnUnlessGiven();
    void aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses_data();
    void aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses();
    void thePausesInRealTimeUpTo5s();
    void aRunOf10sResetsThePause();
    void aRunOfLessThan10sDoesNotResetThePause();
    void aRecorderThatIsStartingWhenAPauseExpiresIsLeftAlone();
    void aKilledProcessIsRunningAgainWithinASecond();
    void outputIsLoggedWithoutLineBreaks_data();
    void outputIsLoggedWithoutLineBreaks();
    void aLetterThatArrivesInTwoPiecesIsNotDamaged();
    void longOutputIsLoggedWhole();
    void theStartHookIsCalledOnTheGuiThreadAndChangesWhatIsStarted();
    void aStartHookThatEmptiesTheProgramCountsAsAnEnd();
    void theStopHookGetsItsContextAndWhatItChangesCountsForTheNextStart();
    void startOnARunningRunnerStopsTheOldProcessFirst();
    void startRightAfterStopReallyStarts();
    void stopWithARecorderThatObeysTheQuitSemaphoreReturnsAsSoonAsItHasEnded();
    void stopTerminatesARecorderThatIgnoresTheQuitSemaphore();
    void stopWithoutHookTerminatesAtOnce();
    void stopKillsARecorderThatIgnoresEverythingAfter5s();
    void stopDuringAPauseEndsAtOnce();
    void stopReportsNoStates();
    void stopEndsALoopThatIsLateForItsFarewell();
    void theDestructorStopsTheProcess();
    void tenStopStartRoundsWithTheQuitSemaphoreNeverStopALaterRecorder();
    void aThousandRoundsLeaveNothingBehind();

private:
    std::unique_ptr<tests::RecorderReport> Report;
};

void QAsyncWatchExecTest::init()
{
    Report = std::make_unique<tests::RecorderReport>();
    Report->setOption("INTERVAL_MS", "0");
    HookCalls.clear();
}

void QAsyncWatchExecTest::cleanup()
{
    Report.reset();
}

void QAsyncWatchExecTest::carriesItsClassInformation()
{
    const QMetaObject &metaObject = QAsyncWatchExec::staticMetaObject;
    QCOMPARE(metaObject.classInfo(metaObject.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QCOMPARE(metaObject.classInfo(metaObject.indexOfClassInfo("Status")).value(), "Development");
}

void QAsyncWatchExecTest::aCopyIsAFreshRunnerWithTheSameParent()
{
    QObject parent;
    auto *original = new QAsyncWatchExec;
    original->setParent(&parent);
    original->Program = ScriptedProgram;
    original->StopHook = RecordHook;
    const QAsyncWatchExec copy(*original);
    QCOMPARE(copy.parent(), &parent);
    QVERIFY(copy.Program.isEmpty());
    QVERIFY(!copy.StopHook);
    QVERIFY(!copy.isRunning());
    QVERIFY(QMetaType::fromType<QAsyncWatchExec>().isValid());
}

void QAsyncWatchExecTest::startWithoutProgramFails()
{
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    QVERIFY(!runner.Start());
    QVERIFY(!runner.isRunning());
    QVERIFY(!runner.IsProcessRunning());
    QVERIFY(log.messages().isEmpty());
}

void QAsyncWatchExecTest::stopBeforeStartDoesNothing()
{
    QAsyncWatchExec runner;
    runner.StopHook = RecordHook;
    runner.Program = ScriptedProgram;
    runner.Stop();
    QVERIFY(HookCalls.isEmpty());
}

void QAsyncWatchExecTest::startRunsTheProgramAndReportsEachState()
{
    QAsyncWatchExec runner;
    QSignalSpy states(&runner, SIGNAL(stateChanged(int)));
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    QVERIFY(runner.Start());
    QVERIFY(runner.isRunning());
    QTRY_COMPARE(states.count(), 2);
    QCOMPARE(states.at(0).at(0).toInt(), static_cast<int>(QProcess::Starting));
    QCOMPARE(states.at(1).at(0).toInt(), static_cast<int>(QProcess::Running));
    QVERIFY(runner.IsProcessRunning());
    runner.Stop();
    QVERIFY(!runner.IsProcessRunning());
    QVERIFY(!runner.isRunning());
}

void QAsyncWatchExecTest::theWorkingFolderIsTheProgramsOwnUnlessGiven_data()
{
    QTest::addColumn<bool>("given");
    QTest::newRow("not given") << false;
    QTest::newRow("given") << true;
}

void QAsyncWatchExecTest::theWorkingFolderIsTheProgramsOwnUnlessGiven()
{
    QFETCH(bool, given);
    const QTemporaryDir folder;
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    runner.StartHook = RecordHook;
    if (given)
        runner.WorkingDirectory = folder.path();
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.IsProcessRunning());
    QCOMPARE(HookCalls.at(0).WorkingDirectory,
             given ? folder.path() : QCoreApplication::applicationDirPath());
}

void QAsyncWatchExecTest::aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a program that ends with code 0") << "exit:0";
    QTest::newRow("a program that ends with an error code") << "exit:3";
    QTest::newRow("a program that crashes") << "crash";
    QTest::newRow("a missing program") << "missing";
    QTest::newRow("a file that is not executable") << "not executable";
    QTest::newRow("a folder") << "folder";
}

void QAsyncWatchExecTest::aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses()
{
    QFETCH(QString, kind);
    const tests::MessageLog log;
    const QTemporaryDir folder;
    QAsyncWatchExec runner;
    runner.Second = 20ms;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{kind};
    if (kind == QLatin1String("missing"))
        runner.Program = folder.filePath(QStringLiteral("missing"));
    if (kind == QLatin1String("folder"))
        runner.Program = folder.path();
    if (kind == QLatin1String("not executable")) {
        runner.Program = folder.filePath(QStringLiteral("text"));
        QFile file(runner.Program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no program");
    }
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    constexpr int pauses[] = {0, 5, 10, 15, 20, 25, 30, 30};
    QTRY_COMPARE_WITH_TIMEOUT(timeline.startCount(), qsizetype(std::size(pauses)) + 1, 30000);
    runner.Stop();
    QStringList measured;
    bool right = true;
    for (qsizetype i = 0; i < qsizetype(std::size(pauses)); ++i) {
        const qint64 expected = pauses[i] * runner.Second.count();
        const qint64 pause = timeline.pauseAfterEnd(i);
        measured.append(QString::number(pause));
        // The next longer pause would be 100 ms more; the clock counts whole milliseconds.
        right = right && pause >= expected - 1 && pause < expected + 90;
    }
    QVERIFY2(right, qPrintable(measured.join(u' ')));
}

void QAsyncWatchExecTest::thePausesInRealTimeUpTo5s()
{
    QAsyncWatchExec runner;
    QCOMPARE(runner.Second, 1000ms);
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("exit:1")};
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    QTRY_COMPARE_WITH_TIMEOUT(timeline.startCount(), 3, 10000);
    QVERIFY(timeline.pauseAfterEnd(0) < 500);
    QVERIFY2(timeline.pauseAfterEnd(1) >= 4999 && timeline.pauseAfterEnd(1) < 5500,
             qPrintable(QString::number(timeline.pauseAfterEnd(1))));
}

void QAsyncWatchExecTest::aRunOf10sResetsThePause()
{
    QAsyncWatchExec runner;
    runner.Second = 40ms;
    runner.Program = tests::StandInProgram();
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    for (int end = 0; end < 3; ++end) {
        QTRY_COMPARE(Report->count(QStringLiteral("started")), end + 1);
        QTRY_VERIFY(runner.IsProcessRunning());
        QTest::qWait(600); // longer than ten of the runner's seconds, during which nothing is to be seen
        QVERIFY(tests::KillProcess(Report->lastProcess(QStringLiteral("started"))));
        QTRY_COMPARE(timeline.startCount(), end + 2);
        QVERIFY2(timeline.pauseAfterEnd(end) < 150, qPrintable(QString::number(timeline.pauseAfterEnd(end))));
    }
}

void QAsyncWatchExecTest::aRunOfLessThan10sDoesNotResetThePause()
{
    QAsyncWatchExec runner;
    runner.Second = 40ms;
    runner.Program = tests::StandInProgram();
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    for (int end = 0; end < 3; ++end) {
        QTRY_COMPARE(Report->count(QStringLiteral("started")), end + 1);
        QTRY_VERIFY(runner.IsProcessRunning());
        QVERIFY(tests::KillProcess(Report->lastProcess(QStringLiteral("started"))));
        QTRY_COMPARE(timeline.startCount(), end + 2);
        const qint64 pause = timeline.pauseAfterEnd(end);
        QVERIFY2(pause >= end * 200 - 1 && pause < end * 200 + 190, qPrintable(QString::number(pause)));
    }
}

void QAsyncWatchExecTest::aRecorderThatIsStartingWhenAPauseExpiresIsLeftAlone()
{
    QAsyncWatchExec runner;
    runner.Second = 40ms;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("exit:1")};
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    // start, end, start at once, end: now a pause of 200 ms runs
    QTRY_COMPARE(states.count(), 6);
    QCOMPARE(timeline.startCount(), 2);
    runner.Arguments = QStringList{QStringLiteral("wait")};
    emit runner.Signal_Start();
    QCOMPARE(timeline.startCount(), 3);
    QTRY_COMPARE(states.count(), 7);
    QCOMPARE(states.at(6).at(0).toInt(), static_cast<int>(QProcess::Starting));
    // This thread does not look at the process, so it stays "starting" until long after the pause.
    QThread::msleep(500);
    QCOMPARE(timeline.startCount(), 3);
    QTRY_VERIFY(runner.IsProcessRunning());
    QCOMPARE(timeline.startCount(), 3);
    QCOMPARE(states.count(), 8);
}

void QAsyncWatchExecTest::aKilledProcessIsRunningAgainWithinASecond()
{
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(QStringLiteral("started")), 1);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(tests::KillProcess(Report->lastProcess(QStringLiteral("started"))));
    QTRY_COMPARE(Report->count(QStringLiteral("started")), 2);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

void QAsyncWatchExecTest::outputIsLoggedWithoutLineBreaks_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("logged");
    QTest::newRow("two lines with carriage return and line feed in one chunk")
        << "out:first line\\r\\nsecond line\\r\\n"
        << "first linesecond line";
    QTest::newRow("the same on the error channel") << "err:first line\\r\\nsecond line\\r\\n"
                                                   << "first linesecond line";
    QTest::newRow("line feeds only") << "out:a\\nb\\n\\nc"
                                     << "abc";
    QTest::newRow("letters beyond ASCII")
        << QString::fromUtf8("out:grüße 你好\\n") << QString::fromUtf8("grüße 你好");
    QTest::newRow("tags and placeholders are plain text") << "out:<ERROR> %1 100 %s\\n"
                                                          << "<ERROR> %1 100 %s";
    QTest::newRow("quotes and backslashes stay as they are") << "out:say \"hello\" \\t"
                                                             << "say \"hello\" \\t";
    QTest::newRow("blanks at both ends stay") << "out:  x  \\n"
                                              << "  x  ";
}

void QAsyncWatchExecTest::outputIsLoggedWithoutLineBreaks()
{
    QFETCH(QString, step);
    QFETCH(QString, logged);
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{step, QStringLiteral("wait")};
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.messages().size(), 1);
    QCOMPARE(log.messages().at(0).Type, QtInfoMsg);
    QCOMPARE(log.messages().at(0).Text, logged);
}

void QAsyncWatchExecTest::aLetterThatArrivesInTwoPiecesIsNotDamaged()
{
    // The pipe is full when the program writes the second half of its output, so letters are cut at its end.
    const tests::MessageLog log;
    const QString text = QStringLiteral("x") + QString(60000, QChar(0x4F60));
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    const QString half = text.left(30000);
    const QString rest = text.mid(30000);
    runner.Arguments =
        QStringList{QStringLiteral("out:") + half, QStringLiteral("out:") + rest, QStringLiteral("wait")};
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.texts(QtInfoMsg).join(QString()).size(), text.size());
    QCOMPARE(log.texts(QtInfoMsg).join(QString()), text);
}

void QAsyncWatchExecTest::longOutputIsLoggedWhole()
{
    constexpr int lines = 100000;
    Report->setOption("FLOOD_LINES", QByteArray::number(lines));
    qsizetype expected = 0;
    for (int line = 1; line <= lines; ++line)
        expected += QString::fromUtf8("stand-in: line %1 of %2, as fast as it is taken; grüße, 你好")
                        .arg(line)
                        .arg(lines)
                        .size();
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    QVERIFY(runner.Start());
    const auto loggedSize = [&log] {
        qsizetype size = 0;
        const QList<tests::MessageLog::Message> messages = log.messages();
        for (const auto &message : messages)
            size += message.Text.size();
        return size;
    };
    QTRY_COMPARE_WITH_TIMEOUT(loggedSize(), expected, 60000);
}

void QAsyncWatchExecTest::theStartHookIsCalledOnTheGuiThreadAndChangesWhatIsStarted()
{
    const tests::MessageLog log;
    QString folder = QDir::tempPath();
    QAsyncWatchExec runner;
    runner.Program = QStringLiteral("/does/not/exist");
    runner.StartHook = RecordHook;
    runner.StartHookContext = &folder;
    QVERIFY(runner.Start());
    QTRY_COMPARE(HookCalls.size(), 2); // the first start and the one after its end
    QCOMPARE(HookCalls.at(0).Context, &folder);
    QCOMPARE(HookCalls.at(0).Program, QStringLiteral("/does/not/exist"));
    QCOMPARE(HookCalls.at(0).Thread, QThread::currentThread());
    runner.StartHook = ChangeEverything;
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.IsProcessRunning());
    QTRY_COMPARE(log.texts(QtInfoMsg), QStringList{QStringLiteral("changed")});
    QCOMPARE(runner.WorkingDirectory, folder);
}

void QAsyncWatchExecTest::aStartHookThatEmptiesTheProgramCountsAsAnEnd()
{
    const tests::MessageLog log; // the process complains about the empty name
    QAsyncWatchExec runner;
    runner.Second = 10ms;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    runner.StartHook = EmptyProgram;
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    QTRY_VERIFY(timeline.startCount() >= 4);
    runner.StartHook = nullptr;
    runner.Program = ScriptedProgram;
    QTRY_VERIFY(runner.IsProcessRunning());
}

void QAsyncWatchExecTest::theStopHookGetsItsContextAndWhatItChangesCountsForTheNextStart()
{
    const tests::MessageLog log;
    QString folder = QDir::tempPath();
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    runner.StopHook = RecordHook;
    runner.StopHookContext = &folder;
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.IsProcessRunning());
    runner.Stop();
    QCOMPARE(HookCalls.size(), 1);
    QCOMPARE(HookCalls.at(0).Context, &folder);
    QCOMPARE(HookCalls.at(0).Program, ScriptedProgram);
    QCOMPARE(HookCalls.at(0).Arguments, QStringList{QStringLiteral("wait")});
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.IsProcessRunning());
    runner.StopHook = ChangeEverything;
    runner.Stop();
    QVERIFY(log.texts(QtInfoMsg).isEmpty());
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.texts(QtInfoMsg), QStringList{QStringLiteral("changed")});
}

void QAsyncWatchExecTest::startOnARunningRunnerStopsTheOldProcessFirst()
{
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    runner.StopHook = RecordHook;
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(QStringLiteral("started")), 1);
    QTRY_VERIFY(runner.IsProcessRunning());
    const qint64 oldProcess = Report->lastProcess(QStringLiteral("started"));
    QVERIFY(runner.Start());
    QCOMPARE(HookCalls.size(), 1);
    QVERIFY(!tests::IsAlive(oldProcess));
    QTRY_COMPARE(Report->count(QStringLiteral("started")), 2);
    QTRY_VERIFY(runner.IsProcessRunning());
}

void QAsyncWatchExecTest::startRightAfterStopReallyStarts()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    for (int round = 0; round < 50; ++round) {
        QVERIFY(runner.Start());
        QTRY_VERIFY2(runner.IsProcessRunning(), qPrintable(QString::number(round)));
        runner.Stop();
    }
}

void QAsyncWatchExecTest::stopWithARecorderThatObeysTheQuitSemaphoreReturnsAsSoonAsItHasEnded()
{
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.IsProcessRunning() && platform::QuitSignalHasListener(RecorderQuitKey));
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Report->count(QStringLiteral("quit-request")), 1);
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 0);
    QCOMPARE(Report->count(QStringLiteral("ends")), 1); // it came to its own end: it was not killed
}

void QAsyncWatchExecTest::stopTerminatesARecorderThatIgnoresTheQuitSemaphore()
{
    Report->setOption("IGNORE_QUIT", "1");
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(QStringLiteral("ready")), 1);
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Report->count(QStringLiteral("quit-request")), 0);
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 1);
    QCOMPARE(Report->count(QStringLiteral("ends")), 1);
}

void QAsyncWatchExecTest::stopWithoutHookTerminatesAtOnce()
{
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(QStringLiteral("ready")), 1);
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 1);
    QCOMPARE(Report->count(QStringLiteral("ends")), 1);
}

void QAsyncWatchExecTest::stopKillsARecorderThatIgnoresEverythingAfter5s()
{
    Report->setOption("IGNORE_QUIT", "1");
    Report->setOption("IGNORE_TERMINATE", "1");
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(QStringLiteral("ready")), 1);
    const qint64 process = Report->lastProcess(QStringLiteral("started"));
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    const qint64 elapsed = timer.elapsed();
    QVERIFY2(elapsed >= 5000 && elapsed < 6000, qPrintable(QString::number(elapsed)));
    QVERIFY(!tests::IsAlive(process));
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 1);
    QCOMPARE(Report->count(QStringLiteral("ends")), 0);
    QCOMPARE(log.texts(QtWarningMsg), QStringList());
}

void QAsyncWatchExecTest::stopDuringAPauseEndsAtOnce()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("exit:1")};
    runner.StopHook = RecordHook;
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    QVERIFY(runner.Start());
    QTRY_COMPARE(states.count(), 6); // ended twice: the pause of 5 s runs
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(HookCalls.size(), 1);
}

void QAsyncWatchExecTest::stopReportsNoStates()
{
    QAsyncWatchExec runner;
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    QVERIFY(runner.Start());
    QTRY_COMPARE(states.count(), 2);
    runner.Stop();
    QCoreApplication::processEvents();
    QCOMPARE(states.count(), 2);
}

void QAsyncWatchExecTest::stopEndsALoopThatIsLateForItsFarewell()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("wait")};
    QSemaphore inside;
    QSemaphore leave;
    const QMetaObject::Connection connection = connect(
        &runner, &QAsyncWatchExec::Signal_Start, this,
        [&] { // on the loop's thread
            inside.release();
            leave.tryAcquire(1, 1500);
        },
        Qt::DirectConnection);
    QVERIFY(runner.Start());
    inside.acquire();
    QElapsedTimer timer;
    timer.start();
    runner.Stop(); // longer than the farewell may take
    QVERIFY2(timer.elapsed() >= 500 && timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!runner.isRunning());
    disconnect(connection);
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.IsProcessRunning());
}

void QAsyncWatchExecTest::theDestructorStopsTheProcess()
{
    auto runner = std::make_unique<QAsyncWatchExec>();
    runner->Program = tests::StandInProgram();
    runner->StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner->Start());
    QTRY_VERIFY(runner->IsProcessRunning() && platform::QuitSignalHasListener(RecorderQuitKey));
    const qint64 process = Report->lastProcess(QStringLiteral("started"));
    runner.reset();
    QVERIFY(!tests::IsAlive(process));
    QCOMPARE(Report->count(QStringLiteral("quit-request")), 1);
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 0);
}

void QAsyncWatchExecTest::tenStopStartRoundsWithTheQuitSemaphoreNeverStopALaterRecorder()
{
    QAsyncWatchExec runner;
    runner.Program = tests::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    for (int round = 0; round < 10; ++round) {
        QVERIFY(runner.Start());
        QTRY_VERIFY2(runner.IsProcessRunning() && platform::QuitSignalHasListener(RecorderQuitKey),
                     qPrintable(QString::number(round)));
        QCOMPARE(Report->count(QStringLiteral("started")), round + 1);
        runner.Stop();
        QCOMPARE(Report->count(QStringLiteral("quit-request")), round + 1);
    }
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 0);
}

void QAsyncWatchExecTest::aThousandRoundsLeaveNothingBehind()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QStringLiteral("out:hello\\n"), QStringLiteral("wait")};
    const tests::MessageLog log;
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    tests::ProcessResources before;
    for (int round = 0; round < 1000; ++round) {
        if (round == 1) // the first round makes what the libraries keep
            before = tests::ProcessResources::Count();
        QVERIFY(runner.Start());
        while (round % 4 != 3 &&
               !runner.IsProcessRunning()) // sometimes stopped before the process has started
            QVERIFY2(states.wait(), qPrintable(QString::number(round)));
        runner.Stop();
    }
    QTRY_COMPARE(tests::ProcessResources::Count(),
                 before); // a thread of the system ends a little after its QThread
    QCOMPARE(before.Children, 0);
}

TARNVIK_TEST_MAIN(QAsyncWatchExecTest, QCoreApplication)

#include "QAsyncWatchExecTest.moc"
