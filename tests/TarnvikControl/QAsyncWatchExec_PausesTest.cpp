// SPDX-License-Identifier: MIT
// When the runner starts a program again that has ended.
#include "TarnvikControl/QAsyncWatchExec.h"

#include "tests/TarnvikControl/RunnerTestTools.h"
#include "tests/support/MessageLog.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <thread>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using tests::ScriptedProgram;
using tests::Timeline;

namespace {

/// The pauses after the first, the second and each later end, in seconds of the runner.
constexpr std::array Pauses = {0, 5, 10, 15, 20, 25, 30, 30};
/// How much longer a pause may take on a busy machine. It is less than what a pause grows by.
constexpr int SlackInSeconds = 4;

/// A short second for the runner. Ten of them reset the pause, and a program that ends at once must not take
/// as long to start and to end, which under Wine is half a second and more.
std::chrono::milliseconds ShortSecond()
{
    QProcess::execute(ScriptedProgram, {u"exit:0"_s}); // the first start is slower
    QElapsedTimer timer;
    timer.start();
    QProcess::execute(ScriptedProgram, {u"exit:0"_s});
    return std::max(60ms, std::chrono::milliseconds(timer.elapsed()) / 4);
}

} // namespace

class QAsyncWatchExec_PausesTest : public tests::RunnerTest
{
    Q_OBJECT

private slots:
    void aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses_data();
    void aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses();
    void thePausesInRealTimeUpTo5s();
    void aRunOf10sResetsThePause();
    void aRunOfLessThan10sDoesNotResetThePause();
    void aRecorderThatIsStartingWhenAPauseExpiresIsLeftAlone();
    void aKilledProcessIsRunningAgainWithinASecond();

private:
    /// Kills the stand-in three times, each time after a run of so many of the runner's seconds, and compares
    /// the pauses that follow.
    void CheckPausesAfterRuns(std::chrono::milliseconds second, int runSeconds,
                              const std::array<int, 3> &pauses);
};

void QAsyncWatchExec_PausesTest::aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses_data()
{
    // All pauses take long, so most rows see only the first ones.
    constexpr int few = 4;
    constexpr int all = static_cast<int>(Pauses.size());
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("pauses");
    QTest::newRow("a program that ends with code 0") << "exit:0" << all;
    QTest::newRow("a program that ends with an error code") << "exit:3" << few;
    QTest::newRow("a program that crashes") << "crash" << few;
    QTest::newRow("a missing program") << "missing" << all;
    QTest::newRow("a file that is not executable") << "not executable" << few;
    QTest::newRow("a folder") << "folder" << few;
}

void QAsyncWatchExec_PausesTest::aRecorderThatEndsAtOnceIsRestartedAfterGrowingPauses()
{
    QFETCH(QString, kind);
    QFETCH(int, pauses);
    const tests::MessageLog log;
    const QTemporaryDir folder;
    QAsyncWatchExec runner;
    runner.Second = ShortSecond();
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{kind};
    if (kind == QLatin1String("missing"))
        runner.Program = folder.filePath(u"missing"_s);
    if (kind == QLatin1String("folder"))
        runner.Program = folder.path();
    if (kind == QLatin1String("not executable")) {
        runner.Program = folder.filePath(u"text"_s);
        QFile file(runner.Program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no program");
    }
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    QTRY_VERIFY_WITH_TIMEOUT(timeline.startCount() > pauses, tests::LongPatience);
    runner.Stop();
    for (int end = 0; end < pauses; ++end)
        QCOMPARE(timeline.faultInPause(end, Pauses[static_cast<std::size_t>(end)] * runner.Second,
                                       SlackInSeconds * runner.Second),
                 QString());
}

void QAsyncWatchExec_PausesTest::thePausesInRealTimeUpTo5s()
{
    QAsyncWatchExec runner;
    QCOMPARE(runner.Second, 1000ms);
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"exit:1"_s};
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    QTRY_VERIFY_WITH_TIMEOUT(timeline.startCount() > 2, tests::Patience);
    QCOMPARE(timeline.faultInPause(0, 0ms, 1000ms), QString());
    QCOMPARE(timeline.faultInPause(1, 5000ms, 1000ms), QString());
}

void QAsyncWatchExec_PausesTest::CheckPausesAfterRuns(std::chrono::milliseconds second, int runSeconds,
                                                      const std::array<int, 3> &pauses)
{
    QAsyncWatchExec runner;
    runner.Second = second;
    runner.Program = tools::StandInProgram();
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    for (int end = 0; end < static_cast<int>(pauses.size()); ++end) {
        QTRY_COMPARE(Report->count(u"started"_s), end + 1);
        QTRY_VERIFY(runner.isProcessRunning());
        QTest::qWait(static_cast<int>(second.count()) * runSeconds); // nothing is to be seen in this time
        QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
        QTRY_COMPARE(timeline.startCount(), end + 2);
        QCOMPARE(timeline.faultInPause(end, pauses[static_cast<std::size_t>(end)] * second,
                                       SlackInSeconds * second),
                 QString());
    }
}

void QAsyncWatchExec_PausesTest::aRunOf10sResetsThePause()
{
    // Three times what resets the pause: the loop may come late.
    CheckPausesAfterRuns(100ms, 30, {0, 0, 0});
}

void QAsyncWatchExec_PausesTest::aRunOfLessThan10sDoesNotResetThePause()
{
    // Long seconds: even a recorder that is killed late has run for less than ten of them.
    CheckPausesAfterRuns(200ms, 0, {0, 5, 10});
}

void QAsyncWatchExec_PausesTest::aRecorderThatIsStartingWhenAPauseExpiresIsLeftAlone()
{
    QAsyncWatchExec runner;
    runner.Second = 300ms;
    const auto pause = 5 * runner.Second;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"exit:1"_s};
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    // start, end, start at once, end: now the pause runs
    QTRY_COMPARE(states.count(), 6);
    QCOMPARE(timeline.startCount(), 2);
    runner.Arguments = QStringList{u"wait"_s};
    // The process stays "starting" for as long as this signal is being handled: until long after the pause.
    connect(&runner, &QAsyncWatchExec::stateChanged, &runner, [pause](int state) {
        if (state == QProcess::Starting)
            std::this_thread::sleep_for(pause + 500ms);
    });
    emit runner.Signal_Start();
    QCoreApplication::sendPostedEvents(&runner);
    QCOMPARE(states.at(6).at(0).toInt(), static_cast<int>(QProcess::Starting));
    QCOMPARE(timeline.startCount(), 3); // the one made here, and none by the loop
    QTRY_VERIFY(runner.isProcessRunning());
    QCOMPARE(timeline.startCount(), 3);
    QCOMPARE(states.count(), 8);
}

void QAsyncWatchExec_PausesTest::aKilledProcessIsRunningAgainWithinASecond()
{
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"started"_s), 1);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

TARNVIK_TEST_MAIN(QAsyncWatchExec_PausesTest, QCoreApplication)

#include "QAsyncWatchExec_PausesTest.moc"
