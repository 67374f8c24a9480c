// SPDX-License-Identifier: MIT
// Status files that are none (a pipe, one whose reading fails), and files that no status file may replace.
#include "Common_Files/OstrelRecordStatus.h"
#include "tests/Common_Files/StatusFiles.h"
#include "tests/support/FolderFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivileges.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

using tests::Rewrite;
using tests::StatusOf;

class OstrelRecordStatusLinuxTest : public tests::FolderFixture
{
    Q_OBJECT

private slots:
    void aPipeIsNotOpened();
    void aFileWhoseReadingFailsIsNone();
    void aLinkIsReplacedAndWhatItNamesStays();
    void aFileThatCannotBeRemovedStaysAsItIs();
};

void OstrelRecordStatusLinuxTest::aPipeIsNotOpened()
{
    const QByteArray pipe = QFile::encodeName(path(u"status.ini"_s));
    QCOMPARE(mkfifo(pipe.constData(), S_IRUSR | S_IWUSR), 0);
    // Writes a good status as soon as somebody opens the pipe for reading.
    std::thread writer([&pipe] {
        const int end = open(pipe.constData(), O_WRONLY);
        const QByteArray content = tests::StatusText(1, "on");
        (void)!write(end, content.constData(), static_cast<std::size_t>(content.size()));
        close(end);
    });
    StructOstrelRecordStatus snapshot = StatusOf(99, u"from an earlier read"_s);
    const bool valid = QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot);
    const int end = open(pipe.constData(), O_RDONLY | O_NONBLOCK); // lets the writer go on if it still waits
    writer.join();
    close(end);
    QVERIFY(!valid);
    QCOMPARE(snapshot, StructOstrelRecordStatus());
}

void OstrelRecordStatusLinuxTest::aFileWhoseReadingFailsIsNone()
{
    // The first page of a process is never there: a file that can be opened, but not read from its beginning.
    QVERIFY(QFile::link(u"/proc/self/mem"_s, path(u"status.ini"_s)));
    StructOstrelRecordStatus snapshot = StatusOf(99, u"from an earlier read"_s);
    QVERIFY(!QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot));
    QCOMPARE(snapshot, StructOstrelRecordStatus());
}

void OstrelRecordStatusLinuxTest::aLinkIsReplacedAndWhatItNamesStays()
{
    QVERIFY(Rewrite(path(u"other.txt"_s), "somebody's"));
    QVERIFY(QFile::link(path(u"other.txt"_s), path(u"status.ini"_s)));
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QVERIFY(!QFileInfo(path(u"status.ini"_s)).isSymLink());
    QCOMPARE(QFileInfo(path(u"status.ini"_s)).size(), qint64{0});
    QCOMPARE(QFileInfo(path(u"other.txt"_s)).size(), qint64{10});
}

void OstrelRecordStatusLinuxTest::aFileThatCannotBeRemovedStaysAsItIs()
{
    // As in a temporary folder that is everybody's: who may write to a file need not be allowed to remove it.
    const QString file = path(u"status.ini"_s);
    QVERIFY(Rewrite(file, "somebody's"));
    QVERIFY(QFile::setPermissions(file, tests::EverybodyReadsAndWrites));
    QVERIFY(tests::OpenFoldersTo(Folder->path()));
    const QFileDevice::Permissions before = QFile::permissions(Folder->path());
    QVERIFY(
        QFile::setPermissions(Folder->path(), before & ~QFileDevice::WriteOwner & ~QFileDevice::WriteUser));
    bool created = true;
    {
        const tests::WithoutPrivileges permissionsHold;
        QVERIFY(permissionsHold.isValid());
        created = QOstrelRecordStatus::CreateStatusFile(file);
    }
    QVERIFY(QFile::setPermissions(Folder->path(), before));
    QVERIFY(!created);
    QCOMPARE(QFileInfo(file).size(), qint64{10});
}

TARNVIK_TEST_MAIN(OstrelRecordStatusLinuxTest, QCoreApplication)
#include "OstrelRecordStatusLinuxTest.moc"
