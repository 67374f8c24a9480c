// SPDX-License-Identifier: MIT
// The quit request, with real recorder processes. A recorder that finds a stale request ends before it
// listens, so "it listens" proves that there was none.
#include "Common_Files/RecorderNames.h"
#include "tests/support/Patience.h"
#include "tests/support/RecorderFixture.h"
#include "tests/support/SendQuit.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutConsole.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QProcess>

#include <memory>

using namespace Qt::StringLiterals;

using tests::SendQuit;

namespace {

constexpr int Rounds = 10;

} // namespace

class TarnvikBasic_QuitTest : public tests::RecorderFixture
{
    Q_OBJECT

private slots:
    void aListeningRecorderEndsOnTheRequest();
    void aRequestWithoutRecorderHasNoEffectOnARecorderStartedLater();
    void aRequestAfterARecorderWasKilledDoesNotReachTheNext();
    void aRecorderThatEndsAfterTheRequestLeavesNothingForTheNext();
    void aRecorderThatDoesNotListenKeepsRunningAndTheNextIsNotStopped();
    void aNewRecorderStartedWhileTheOldOneEndsIsNotStopped();

private:
    std::unique_ptr<QProcess> StartRecorder();
    void LeaveASemaphoreBehind();
};

std::unique_ptr<QProcess> TarnvikBasic_QuitTest::StartRecorder()
{
    auto recorder = std::make_unique<QProcess>();
    recorder->setProcessChannelMode(QProcess::ForwardedChannels);
    tests::LetRunWithoutConsole(*recorder);
    recorder->start(tools::StandInProgram(), QStringList());
    if (!recorder->waitForStarted())
        return nullptr;
    return recorder;
}

/// A killed recorder cannot remove the semaphore that it made: those that come later find it and, unlike its
/// maker, do not remove it when they end.
void TarnvikBasic_QuitTest::LeaveASemaphoreBehind()
{
    const auto recorder = StartRecorder();
    QVERIFY(recorder);
    QTRY_VERIFY(Report->recorderListens(recorder->processId()));
    recorder->kill();
    QVERIFY(recorder->waitForFinished(tests::Patience));
}

void TarnvikBasic_QuitTest::aListeningRecorderEndsOnTheRequest()
{
    const auto recorder = StartRecorder();
    QVERIFY(recorder);
    QTRY_VERIFY(Report->recorderListens(recorder->processId()));
    SendQuit();
    QVERIFY(recorder->waitForFinished(tests::RecorderMustEnd));
    QCOMPARE(recorder->exitStatus(), QProcess::NormalExit);
    QCOMPARE(recorder->exitCode(), 0);
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
}

void TarnvikBasic_QuitTest::aRequestWithoutRecorderHasNoEffectOnARecorderStartedLater()
{
    LeaveASemaphoreBehind();
    for (int round = 0; round < Rounds; ++round) {
        SendQuit();
        SendQuit();
        const auto recorder = StartRecorder();
        QVERIFY(recorder);
        QTRY_VERIFY2(Report->recorderListens(recorder->processId()), qPrintable(QString::number(round)));
        SendQuit();
        QVERIFY(recorder->waitForFinished(tests::RecorderMustEnd));
        QCOMPARE(Report->count(u"quit-request"_s), round + 1);
    }
}

void TarnvikBasic_QuitTest::aRequestAfterARecorderWasKilledDoesNotReachTheNext()
{
    for (int round = 0; round < Rounds; ++round) {
        const auto recorder = StartRecorder();
        QVERIFY(recorder);
        QTRY_VERIFY2(Report->recorderListens(recorder->processId()), qPrintable(QString::number(round)));
        recorder->kill();
        QVERIFY(recorder->waitForFinished(tests::Patience));
        SendQuit();
    }
    QCOMPARE(Report->count(u"started"_s), Rounds);
    QCOMPARE(Report->count(u"quit-request"_s), 0);
}

void TarnvikBasic_QuitTest::aRecorderThatEndsAfterTheRequestLeavesNothingForTheNext()
{
    LeaveASemaphoreBehind();
    for (int round = 0; round < Rounds; ++round) {
        const auto recorder = StartRecorder();
        QVERIFY(recorder);
        QTRY_VERIFY2(Report->recorderListens(recorder->processId()), qPrintable(QString::number(round)));
        SendQuit();
        QVERIFY(recorder->waitForFinished(tests::RecorderMustEnd));
        QCOMPARE(recorder->exitCode(), 0);
        QCOMPARE(Report->count(u"quit-request"_s), round + 1);
    }
}

void TarnvikBasic_QuitTest::aRecorderThatDoesNotListenKeepsRunningAndTheNextIsNotStopped()
{
    Report->SetOption("IGNORE_QUIT", "1");
    const auto deaf = StartRecorder();
    QVERIFY(deaf);
    QTRY_COMPARE(Report->count(u"started"_s), 1);
    SendQuit();
    Report->SetOption("IGNORE_QUIT", "0");
    const auto recorder = StartRecorder();
    QVERIFY(recorder);
    QTRY_VERIFY(Report->recorderListens(recorder->processId()));
    QCOMPARE(deaf->state(), QProcess::Running);
    SendQuit();
    QVERIFY(recorder->waitForFinished(tests::RecorderMustEnd));
    QCOMPARE(deaf->state(), QProcess::Running);
    deaf->kill();
    QVERIFY(deaf->waitForFinished(tests::Patience));
}

void TarnvikBasic_QuitTest::aNewRecorderStartedWhileTheOldOneEndsIsNotStopped()
{
    LeaveASemaphoreBehind();
    auto oldRecorder = StartRecorder();
    QVERIFY(oldRecorder);
    QTRY_VERIFY(Report->recorderListens(oldRecorder->processId()));
    for (int round = 0; round < Rounds; ++round) {
        SendQuit();
        auto newRecorder = StartRecorder();
        QVERIFY(newRecorder);
        QVERIFY(oldRecorder->waitForFinished(tests::RecorderMustEnd));
        QCOMPARE(oldRecorder->exitCode(), 0);
        QTRY_VERIFY2(Report->recorderListens(newRecorder->processId()), qPrintable(QString::number(round)));
        QCOMPARE(Report->count(u"quit-request"_s), round + 1);
        oldRecorder = std::move(newRecorder);
    }
    SendQuit();
    QVERIFY(oldRecorder->waitForFinished(tests::RecorderMustEnd));
}

TARNVIK_TEST_MAIN(TarnvikBasic_QuitTest, QCoreApplication)

#include "TarnvikBasic_QuitTest.moc"
