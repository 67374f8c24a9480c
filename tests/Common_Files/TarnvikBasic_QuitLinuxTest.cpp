// SPDX-License-Identifier: MIT
// The quit request and a semaphore that outlives its processes. On Windows it goes with its last handle, and
// a count stays for a recorder that holds it open.
#include "Common_Files/RecorderNames.h"
#include "tests/support/Patience.h"
#include "tests/support/SendQuit.h"
#include "tests/support/TestMain.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSystemSemaphore>

using namespace Qt::StringLiterals;

using tests::SendQuit;

class TarnvikBasic_QuitLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void aCountLeftBehindByOthersDoesNotReachARecorder();
    void theRequestCreatesNoSemaphoreWhenThereIsNone();
};

void TarnvikBasic_QuitLinuxTest::aCountLeftBehindByOthersDoesNotReachARecorder()
{
    tools::RecorderReport report;
    report.SetOption("INTERVAL_MS", "0");
    // The maker keeps the semaphore alive, as a recorder that does not listen yet would.
    QSystemSemaphore maker(RecorderQuitKey, 0, QSystemSemaphore::Create);
    QCOMPARE(maker.error(), QSystemSemaphore::NoError);
    QVERIFY(maker.release(3));
    SendQuit();
    QProcess recorder;
    recorder.setProcessChannelMode(QProcess::ForwardedChannels);
    recorder.start(tools::StandInProgram(), QStringList());
    QTRY_VERIFY(report.recorderListens());
    SendQuit();
    QVERIFY(recorder.waitForFinished(tests::RecorderMustEnd));
    QCOMPARE(report.count(u"quit-request"_s), 1);
}

void TarnvikBasic_QuitLinuxTest::theRequestCreatesNoSemaphoreWhenThereIsNone()
{
    const auto keyFiles = [] { // the file is made with the semaphore
        return QDir(QDir::tempPath()).entryList({u"qipc_*"_s}, QDir::Files);
    };
    QCOMPARE(keyFiles(), QStringList());
    SendQuit();
    QCOMPARE(keyFiles(), QStringList());
}

TARNVIK_TEST_MAIN(TarnvikBasic_QuitLinuxTest, QCoreApplication)

#include "TarnvikBasic_QuitLinuxTest.moc"
