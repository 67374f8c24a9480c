// SPDX-License-Identifier: MIT
// The stand-in recorder and what only Linux has: inodes, and a request to terminate that reaches a program
// without a window.
#include "tests/recorder_standin/StandIn.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <sys/stat.h>

#include <memory>

using tests::StandIn;

namespace {

/// 0 when there is no such file.
ino_t Inode(const QString &path)
{
    struct stat information = {};
    return stat(QFile::encodeName(path).constData(), &information) == 0 ? information.st_ino : 0;
}

} // namespace

class StandInRecorderLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theStatusFileKeepsItsInode_data();
    void theStatusFileKeepsItsInode();
    void itEndsWhenAskedToTerminate();
    void itGoesOnWhenItIsToIgnoreTheRequestToTerminate();

private:
    std::unique_ptr<tests::RecorderReport> Report;
};

void StandInRecorderLinuxTest::init()
{
    QFile::remove(RecorderStatusFile());
    Report = std::make_unique<tests::RecorderReport>();
    Report->setOption("INTERVAL_MS", "30");
}

void StandInRecorderLinuxTest::cleanup()
{
    Report.reset();
}

void StandInRecorderLinuxTest::theStatusFileKeepsItsInode_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::newRow("valid files") << QByteArray("valid");
    QTest::newRow("damaged files") << QByteArray("damaged");
}

void StandInRecorderLinuxTest::theStatusFileKeepsItsInode()
{
    QFETCH(QByteArray, status);
    QFile file(RecorderStatusFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const ino_t inode = Inode(RecorderStatusFile());
    QVERIFY(inode != 0);
    Report->setOption("STATUS", status);
    StandIn recorder;
    recorder.start();
    for (int sequenceNr = 1; sequenceNr <= 10; ++sequenceNr) {
        QTRY_VERIFY(recorder.hasPrinted(QStringLiteral("stand-in: status %1 written").arg(sequenceNr)));
        QCOMPARE(Inode(RecorderStatusFile()), inode);
    }
    // Empty for a moment each time.
    QTRY_VERIFY(QFileInfo(RecorderStatusFile()).size() > 0);
}

void StandInRecorderLinuxTest::itEndsWhenAskedToTerminate()
{
    StandIn recorder;
    recorder.start();
    QTRY_COMPARE(Report->count(QStringLiteral("ready")), 1);
    recorder.Process.terminate();
    QVERIFY(recorder.endsWith(0));
    QCOMPARE(Report->count(QStringLiteral("terminate-request")), 1);
    QCOMPARE(Report->count(QStringLiteral("ends")), 1);
    QCOMPARE(Report->count(QStringLiteral("quit-request")), 0);
}

void StandInRecorderLinuxTest::itGoesOnWhenItIsToIgnoreTheRequestToTerminate()
{
    Report->setOption("IGNORE_TERMINATE", "1");
    StandIn recorder;
    recorder.start();
    QTRY_COMPARE(Report->count(QStringLiteral("ready")), 1);
    for (int request = 1; request <= 3; ++request) {
        recorder.Process.terminate();
        QTRY_COMPARE(Report->count(QStringLiteral("terminate-request")), request);
        recorder.collect();
        const qsizetype next = recorder.standardLines().size() + 3;
        QTRY_VERIFY(recorder.hasPrinted(QStringLiteral("stand-in: status %1 written").arg(next)));
    }
    QCOMPARE(recorder.Process.state(), QProcess::Running);
    QCOMPARE(Report->count(QStringLiteral("ends")), 0);
}

TARNVIK_TEST_MAIN(StandInRecorderLinuxTest, QCoreApplication)

#include "StandInRecorderLinuxTest.moc"
