// SPDX-License-Identifier: MIT
// The quit request and a semaphore that outlives its processes. On Windows it goes with its last handle, and
// a count stays for a recorder that holds it open.
#include "Common_Files/RecorderNames.h"
#include "Common_Files/TarnvikBasic.h"
#include "tests/support/RecorderReport.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSystemSemaphore>

using namespace Qt::StringLiterals;

namespace {

void SendQuit()
{
    QString program;
    QString folder;
    QStringList arguments;
    QTarnvikBasic::SendRecorderQuit(nullptr, program, folder, arguments);
}

} // namespace

class TarnvikBasic_QuitLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void aCountLeftBehindByOthersDoesNotReachARecorder();
    void theRequestCreatesNoSemaphoreWhenThereIsNone();
};

void TarnvikBasic_QuitLinuxTest::aCountLeftBehindByOthersDoesNotReachARecorder()
{
    tests::RecorderReport report;
    report.setOption("INTERVAL_MS", "0");
    // The maker keeps the semaphore alive, as a recorder that does not listen yet would.
    QSystemSemaphore maker(RecorderQuitKey, 0, QSystemSemaphore::Create);
    QCOMPARE(maker.error(), QSystemSemaphore::NoError);
    QVERIFY(maker.release(3));
    SendQuit();
    QProcess recorder;
    recorder.setProcessChannelMode(QProcess::ForwardedChannels);
    recorder.start(tests::StandInProgram(), QStringList());
    QTRY_VERIFY(report.recorderListens());
    SendQuit();
    QVERIFY(recorder.waitForFinished(5000));
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
