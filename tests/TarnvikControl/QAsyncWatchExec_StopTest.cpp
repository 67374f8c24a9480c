// SPDX-License-Identifier: MIT
// How the runner ends its program, and that it can start another one afterwards.
#include "TarnvikControl/QAsyncWatchExec.h"

#include "Common_Files/RecorderNames.h"
#include "Common_Files/TarnvikBasic.h"
#include "tests/TarnvikControl/RunnerTestTools.h"
#include "tests/support/MessageLog.h"
#include "tests/support/ProcessResources.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QOperatingSystemVersion>
#include <QSemaphore>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

using tests::HookCalls;
using tests::RecordHook;
using tests::ScriptedProgram;

namespace {

QElapsedTimer HookTimer;
qint64 HookTime = 0; // ms of HookTimer at the last call of NoteTime

void NoteTime(void * /*context*/, QString & /*program*/, QString & /*folder*/, QStringList & /*arguments*/)
{
    HookTime = HookTimer.elapsed();
}

} // namespace

class QAsyncWatchExec_StopTest : public tests::RunnerTest
{
    Q_OBJECT

private slots:
    void startOnARunningRunnerStopsTheOldProcessFirst();
    void startWithAnEmptyProgramOnARunningRunnerStopsItAndFails();
    void startRightAfterStopReallyStarts();
    void stopWithARecorderThatObeysTheQuitSemaphoreReturnsAsSoonAsItHasEnded();
    void stopWithoutHookTerminatesAtOnce();
    void aSecondStopDoesNothing();
    void stopBeforeTheProcessIsUp_data();
    void stopBeforeTheProcessIsUp();
    void stopDuringAPauseEndsAtOnce();
    void stopReportsNoStates();
    void stopEndsALoopThatIsLateForItsFarewell();
    void theDestructorStopsTheProcess();
    void tenStopStartRoundsWithTheQuitSemaphoreNeverStopALaterRecorder();
    void manyRoundsLeaveNothingBehind();
};

void QAsyncWatchExec_StopTest::startOnARunningRunnerStopsTheOldProcessFirst()
{
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    runner.StopHook = RecordHook;
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    QTRY_VERIFY(runner.isProcessRunning());
    const qint64 oldProcess = Report->lastProcess(u"ready"_s);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(runner.Start());
    QVERIFY2(timer.elapsed() < 4500, qPrintable(QString::number(timer.elapsed()))); // killed after 5 s
    QCOMPARE(HookCalls.size(), 1);
    QVERIFY(!tools::IsAlive(oldProcess));
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s, oldProcess),
             1); // it came to its own end: it was not killed
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    QTRY_VERIFY(runner.isProcessRunning());
}

void QAsyncWatchExec_StopTest::startWithAnEmptyProgramOnARunningRunnerStopsItAndFails()
{
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    runner.StopHook = RecordHook;
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    QTRY_VERIFY(runner.isProcessRunning());
    runner.Program.clear();
    QVERIFY(!runner.Start());
    QCOMPARE(HookCalls.size(), 1);
    QVERIFY(!runner.isRunning());
    QVERIFY(!runner.isProcessRunning());
    QVERIFY(!tools::IsAlive(Report->lastProcess(u"started"_s)));
    runner.Program = tools::StandInProgram();
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"started"_s), 2);
}

void QAsyncWatchExec_StopTest::startRightAfterStopReallyStarts()
{
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"out:hello\\n"_s, u"wait"_s};
    for (int round = 0; round < 50; ++round) {
        QVERIFY(runner.Start());
        QTRY_VERIFY2(log.messages().size() == round + 1, qPrintable(QString::number(round)));
        QVERIFY(runner.isProcessRunning());
        runner.Stop();
    }
}

void QAsyncWatchExec_StopTest::stopWithARecorderThatObeysTheQuitSemaphoreReturnsAsSoonAsItHasEnded()
{
    ObeyOnlyTheQuitRequest();
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.isProcessRunning() && Report->recorderListens());
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1); // it came to its own end: it was not killed
}

void QAsyncWatchExec_StopTest::stopWithoutHookTerminatesAtOnce()
{
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
}

void QAsyncWatchExec_StopTest::aSecondStopDoesNothing()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"out:up"_s, u"wait"_s};
    runner.StopHook = RecordHook;
    const tests::MessageLog log;
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.messages().size(), 1);
    runner.Stop();
    QCOMPARE(HookCalls.size(), 1);
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    QVERIFY2(timer.elapsed() < 400, qPrintable(QString::number(timer.elapsed()))); // no farewell to wait for
    QCOMPARE(HookCalls.size(), 1);
}

void QAsyncWatchExec_StopTest::stopBeforeTheProcessIsUp_data()
{
    QTest::addColumn<bool>("asked");
    QTest::newRow("before the loop's first request is delivered") << false;
    QTest::newRow("as soon as it has been delivered") << true;
}

void QAsyncWatchExec_StopTest::stopBeforeTheProcessIsUp()
{
    QFETCH(bool, asked);
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    const tests::Timeline timeline(runner);
    QVERIFY(runner.Start());
    while (timeline.startCount() == 0) // not by the event loop, which would start the process
        QThread::yieldCurrentThread();
    if (asked)
        QCoreApplication::sendPostedEvents(&runner);
    const qint64 process = runner.findChild<QProcess *>()->processId();
    QCOMPARE(process != 0, asked);
    runner.Stop();
    QVERIFY(!runner.isRunning());
    QVERIFY(!asked || !tools::IsAlive(process));
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    QCoreApplication::processEvents(); // the request itself is still queued
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(states.count(), 0);
    QVERIFY(runner.findChildren<QProcess *>().isEmpty());
    const int before = Report->count(u"started"_s);
    QVERIFY(before <= (asked ? 1 : 0));
    QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"started"_s), before + 1);
    QTRY_VERIFY(runner.isProcessRunning());
}

void QAsyncWatchExec_StopTest::stopDuringAPauseEndsAtOnce()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"exit:1"_s};
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

void QAsyncWatchExec_StopTest::stopReportsNoStates()
{
    QAsyncWatchExec runner;
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"wait"_s};
    QVERIFY(runner.Start());
    QTRY_COMPARE(states.count(), 2);
    runner.Stop();
    QCoreApplication::processEvents();
    QCOMPARE(states.count(), 2);
}

void QAsyncWatchExec_StopTest::stopEndsALoopThatIsLateForItsFarewell()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"wait"_s};
    runner.StopHook = NoteTime;
    QSemaphore inside;
    QSemaphore leave;
    constexpr int longerThanTheFarewell = 1500; // ms; the runner waits 500 ms for it
    QElapsedTimer held;
    const QMetaObject::Connection connection = connect(
        &runner, &QAsyncWatchExec::Signal_Start, this,
        [&] { // on the loop's thread
            held.start();
            inside.release();
            leave.tryAcquire(1, longerThanTheFarewell);
        },
        Qt::DirectConnection);
    QVERIFY(runner.Start());
    inside.acquire();
    HookTimer.start();
    runner.Stop();
    // The loop is held longer: this is when the runner ceased to wait for it.
    QVERIFY2(HookTime >= 500 && HookTime < 1000, qPrintable(QString::number(HookTime)));
    QVERIFY2(held.elapsed() >= longerThanTheFarewell, qPrintable(QString::number(held.elapsed())));
    QVERIFY(!runner.isRunning());
    disconnect(connection);
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.isProcessRunning());
}

void QAsyncWatchExec_StopTest::theDestructorStopsTheProcess()
{
    ObeyOnlyTheQuitRequest();
    auto runner = std::make_unique<QAsyncWatchExec>();
    runner->Program = tools::StandInProgram();
    runner->StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner->Start());
    QTRY_VERIFY(runner->isProcessRunning() && Report->recorderListens());
    const qint64 process = Report->lastProcess(u"started"_s);
    runner.reset();
    QVERIFY(!tools::IsAlive(process));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
}

void QAsyncWatchExec_StopTest::tenStopStartRoundsWithTheQuitSemaphoreNeverStopALaterRecorder()
{
    ObeyOnlyTheQuitRequest();
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    for (int round = 0; round < 10; ++round) {
        QVERIFY(runner.Start());
        QTRY_VERIFY2(runner.isProcessRunning() && Report->recorderListens(),
                     qPrintable(QString::number(round)));
        QCOMPARE(Report->count(u"started"_s), round + 1);
        runner.Stop();
        QCOMPARE(Report->count(u"quit-request"_s), round + 1);
    }
}

void QAsyncWatchExec_StopTest::manyRoundsLeaveNothingBehind()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"out:hello\\n"_s, u"wait"_s};
    const tests::MessageLog log;
    // Under Wine each takes much longer.
    const bool windows = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    const int rounds = windows ? 100 : 1000;
    tests::ProcessResources before;
    for (int round = 0; round < rounds; ++round) {
        if (round == 1) {
            // The first round makes what the libraries keep. The system may list its process a little longer.
            QTRY_COMPARE(tests::ProcessResources::Count().Children, 0);
            before = tests::ProcessResources::Count();
        }
        QVERIFY(runner.Start());
        // Mostly stopped when it has printed, sometimes before it has started. Seldom as soon as it runs: on
        // Windows it does not notice the request to terminate that early, and the runner waits for 5 s.
        const qsizetype printed = log.messages().size();
        const bool early = round % 100 == 50;
        const auto reached = [&] {
            return early ? runner.isProcessRunning() : log.messages().size() > printed;
        };
        QVERIFY2(round % 4 == 3 || QTest::qWaitFor(reached), qPrintable(QString::number(round)));
        runner.Stop();
    }
    // A thread of the system ends a little after its QThread.
    (void)QTest::qWaitFor([&] { return !tests::ProcessResources::Count().exceeds(before); });
    const tests::ProcessResources after = tests::ProcessResources::Count();
    if (after.exceeds(before))
        QCOMPARE(after, before);
}

TARNVIK_TEST_MAIN(QAsyncWatchExec_StopTest, QCoreApplication)

#include "QAsyncWatchExec_StopTest.moc"
