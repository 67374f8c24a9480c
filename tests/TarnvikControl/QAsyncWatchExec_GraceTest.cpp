// SPDX-License-Identifier: MIT
// How much time the runner grants a recorder that closes its file: after the quit request, after the request
// to terminate, and in all.
#include "TarnvikControl/QAsyncWatchExec.h"

#include "Common_Files/RecorderNames.h"
#include "Common_Files/TarnvikBasic.h"
#include "platform/QuitSignal.h"
#include "tests/TarnvikControl/RunnerTestTools.h"
#include "tests/support/MessageLog.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QOperatingSystemVersion>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

constexpr int NeverMs = 60'000;
/// When a recorder that has not ended is killed, and how late the machine may be with it.
constexpr int KillMs = 5000;
constexpr int SlackMs = 600;
/// How long a recorder that listens to the quit request has for itself where terminating is a signal.
constexpr int AloneMs = 4500;

bool OnWindows()
{
    return QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
}

} // namespace

class QAsyncWatchExec_GraceTest : public tests::RunnerTest
{
    Q_OBJECT

private slots:
    void aRecorderThatClosesItsFileInTimeIsNotCutShort_data();
    void aRecorderThatClosesItsFileInTimeIsNotCutShort();
    void aRecorderThatTakesTooLongIsKilledAfter5s_data();
    void aRecorderThatTakesTooLongIsKilledAfter5s();
    void aDeafRecorderIsAskedToTerminateAtOnce();
#ifdef Q_OS_LINUX // Windows gives the request to one that waits
    void aRecorderLeftOverFromBeforeDoesNotTakeTheRequest();
#endif

private:
    /// Starts the stand-in and stops it when it is ready; returns how long that took.
    qint64 TimeToStop();
    /// Milliseconds between the first events of two kinds.
    [[nodiscard]] static qint64 TimeBetween(const QString &first, const QString &second);
};

qint64 QAsyncWatchExec_GraceTest::TimeToStop()
{
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    const bool deaf = qEnvironmentVariableIntValue("TARNVIK_STANDIN_IGNORE_QUIT") == 1;
    const auto ready = [&] { return deaf ? Report->count(u"ready"_s) == 1 : Report->recorderListens(); };
    if (!runner.Start() || !QTest::qWaitFor(ready) ||
        !QTest::qWaitFor([&] { return runner.isProcessRunning(); }))
        return -1;
    QElapsedTimer timer;
    timer.start();
    runner.Stop();
    return timer.elapsed();
}

qint64 QAsyncWatchExec_GraceTest::TimeBetween(const QString &first, const QString &second)
{
    qint64 begin = 0;
    qint64 end = 0;
    const QList<tools::RecorderEvent> events = tools::RecorderReport::events();
    for (const tools::RecorderEvent &event : events) {
        if (event.Event == first && begin == 0)
            begin = event.Microseconds;
        if (event.Event == second && end == 0)
            end = event.Microseconds;
    }
    return (end - begin) / 1000;
}

void QAsyncWatchExec_GraceTest::aRecorderThatClosesItsFileInTimeIsNotCutShort_data()
{
    QTest::addColumn<bool>("listens");
    QTest::addColumn<int>("quitCloseMs");
    QTest::addColumn<int>("terminateCloseMs");
    QTest::newRow("deaf to the quit request, needs 4 s after the request to terminate")
        << false << NeverMs << 4000;
    QTest::newRow("obeys the quit request and needs 3 s") << true << 3000 << NeverMs;
    QTest::newRow("obeys the quit request and needs 4 s") << true << 4000 << NeverMs;
}

void QAsyncWatchExec_GraceTest::aRecorderThatClosesItsFileInTimeIsNotCutShort()
{
    QFETCH(bool, listens);
    QFETCH(int, quitCloseMs);
    QFETCH(int, terminateCloseMs);
    Report->SetOption("IGNORE_QUIT", listens ? "0" : "1");
    Report->SetOption("QUIT_CLOSE_MS", QByteArray::number(quitCloseMs));
    Report->SetOption("TERMINATE_CLOSE_MS", QByteArray::number(terminateCloseMs));
    if (listens && OnWindows())
        ObeyOnlyTheQuitRequest();
    const qint64 elapsed = TimeToStop();
    QCOMPARE(Report->count(u"closed"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    if (!OnWindows())
        QCOMPARE(Report->count(u"terminate-request"_s), listens ? 0 : 1);
    const int needed = listens ? quitCloseMs : terminateCloseMs;
    QVERIFY2(elapsed >= needed && elapsed < KillMs, qPrintable(QString::number(elapsed)));
}

void QAsyncWatchExec_GraceTest::aRecorderThatTakesTooLongIsKilledAfter5s_data()
{
    QTest::addColumn<bool>("listens");
    QTest::addColumn<bool>("ignoresTerminate");
    QTest::newRow("deaf to all") << false << true;
    QTest::newRow("deaf to the quit request, never done with closing") << false << false;
    QTest::newRow("obeys the quit request, never done with closing, deaf to the other") << true << true;
}

void QAsyncWatchExec_GraceTest::aRecorderThatTakesTooLongIsKilledAfter5s()
{
    QFETCH(bool, listens);
    QFETCH(bool, ignoresTerminate);
    Report->SetOption("IGNORE_QUIT", listens ? "0" : "1");
    Report->SetOption("IGNORE_TERMINATE", ignoresTerminate ? "1" : "0");
    Report->SetOption("QUIT_CLOSE_MS", QByteArray::number(NeverMs));
    Report->SetOption("TERMINATE_CLOSE_MS", QByteArray::number(NeverMs));
    const tests::MessageLog log;
    const qint64 elapsed = TimeToStop();
    QVERIFY2(elapsed >= KillMs && elapsed < KillMs + SlackMs, qPrintable(QString::number(elapsed)));
    QVERIFY(!tools::IsAlive(Report->lastProcess(u"started"_s)));
    QCOMPARE(Report->count(u"quit-request"_s), listens ? 1 : 0);
    QCOMPARE(Report->count(u"closed"_s), 0);
    QCOMPARE(Report->count(u"ends"_s), 0);
    QCOMPARE(log.texts(QtWarningMsg), QStringList()); // a QProcess that is destroyed too early would warn
    if (listens && !OnWindows()) { // a message of Windows does not reach a recorder that is busy closing
        QCOMPARE(Report->count(u"terminate-request"_s), 1);
        const qint64 alone = TimeBetween(u"quit-request"_s, u"terminate-request"_s);
        QVERIFY2(qAbs(alone - AloneMs) < 300, qPrintable(QString::number(alone)));
    }
}

void QAsyncWatchExec_GraceTest::aDeafRecorderIsAskedToTerminateAtOnce()
{
    Report->SetOption("IGNORE_QUIT", "1");
    const qint64 elapsed = TimeToStop();
    QVERIFY2(elapsed >= 0 && elapsed < 1000, qPrintable(QString::number(elapsed)));
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"closed"_s), 1);
}

#ifdef Q_OS_LINUX
void QAsyncWatchExec_GraceTest::aRecorderLeftOverFromBeforeDoesNotTakeTheRequest()
{
    Report->SetOption("QUIT_CLOSE_MS", "1500");
    Report->SetOption("TERMINATE_CLOSE_MS", QByteArray::number(NeverMs));
    QProcess leftOver;
    leftOver.start(tools::StandInProgram(), QStringList());
    QTRY_VERIFY(Report->recorderListens());
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    runner.StopHook = QTarnvikBasic::SendRecorderQuit;
    QVERIFY(runner.Start());
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 2);
    runner.Stop();
    QVERIFY(leftOver.waitForFinished());
    QCOMPARE(Report->count(u"quit-request"_s), 2);
    QCOMPARE(Report->count(u"closed"_s), 2);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
}
#endif

TARNVIK_TEST_MAIN(QAsyncWatchExec_GraceTest, QCoreApplication)

#include "QAsyncWatchExec_GraceTest.moc"
