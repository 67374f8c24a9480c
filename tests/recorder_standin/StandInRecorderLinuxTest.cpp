// SPDX-License-Identifier: MIT
// The stand-in recorder and what only Linux has: inodes.
#include "tests/recorder_standin/StandIn.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <sys/stat.h>

#include <memory>

using namespace Qt::StringLiterals;

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

private:
    std::unique_ptr<tools::RecorderReport> Report;
};

void StandInRecorderLinuxTest::init()
{
    QFile::remove(RecorderStatusFile());
    Report = std::make_unique<tools::RecorderReport>();
    Report->SetOption("INTERVAL_MS", "30");
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
    Report->SetOption("STATUS", status);
    StandIn recorder;
    recorder.Start();
    for (int sequenceNr = 1; sequenceNr <= 10; ++sequenceNr) {
        QTRY_VERIFY(recorder.HasPrinted(u"stand-in: status %1 written"_s.arg(sequenceNr)));
        QCOMPARE(Inode(RecorderStatusFile()), inode);
    }
    // The file is empty for a moment each time.
    QTRY_VERIFY(QFileInfo(RecorderStatusFile()).size() > 0);
}

TARNVIK_TEST_MAIN(StandInRecorderLinuxTest, QCoreApplication)

#include "StandInRecorderLinuxTest.moc"
