// SPDX-License-Identifier: MIT
// Whether a file fits: on a disk with little room, and where that cannot be told.
#include "platform/DiskSpace.h"

#include "tests/support/SmallDisk.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint64_t Exabyte = std::uint64_t{1} << 60;

bool HasRoomFor(const QString &path, std::uint64_t size)
{
    return platform::HasRoomFor(path.toStdU16String(), size);
}

} // namespace

class DiskSpaceTest : public QObject
{
    Q_OBJECT

private slots:
    void countsWholeBlocks_data();
    void countsWholeBlocks();
    void whatCannotBeToldIsNoObstacle_data();
    void whatCannotBeToldIsNoObstacle();
    void noDiskIsThatLarge();
};

void DiskSpaceTest::countsWholeBlocks_data()
{
    QTest::addColumn<qint64>("oldBlocks"); // of the file that is there; -1: none
    QTest::addColumn<qint64>("freeBlocks");
    QTest::addColumn<qint64>("blocks"); // of the new one
    QTest::addColumn<qint64>("bytes");  // more than these blocks
    QTest::addColumn<bool>("fits");
    QTest::newRow("a new file that just fits") << -1LL << 3LL << 3LL << 0LL << true;
    QTest::newRow("one byte too large") << -1LL << 3LL << 3LL << 1LL << false;
    QTest::newRow("the last block not full") << -1LL << 3LL << 3LL << -1LL << true;
    QTest::newRow("nothing onto a full disk") << -1LL << 0LL << 0LL << 0LL << true;
    QTest::newRow("a byte onto a full disk") << -1LL << 0LL << 0LL << 1LL << false;
    QTest::newRow("the old file's blocks count") << 5LL << 3LL << 8LL << 0LL << true;
    QTest::newRow("and no more than those") << 5LL << 3LL << 8LL << 1LL << false;
    QTest::newRow("a smaller file onto a full disk") << 5LL << 0LL << 4LL << 1LL << true;
}

void DiskSpaceTest::countsWholeBlocks()
{
    QFETCH(qint64, oldBlocks);
    QFETCH(qint64, freeBlocks);
    QFETCH(qint64, blocks);
    QFETCH(qint64, bytes);
    QFETCH(bool, fits);
    TARNVIK_NEEDS_SMALL_DISK();
    QVERIFY(tests::EmptySmallDisk());
    const QString path = tests::SmallDisk() + u"/file"_s;
    if (oldBlocks >= 0) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(oldBlocks * tests::SmallDiskBlock - 1, 'x'));
        QVERIFY(file.flush());
    }
    QVERIFY(tests::FillSmallDisk(freeBlocks));
    const auto size = static_cast<std::uint64_t>(blocks * tests::SmallDiskBlock + bytes);
    QCOMPARE(HasRoomFor(path, size), fits);
}

void DiskSpaceTest::whatCannotBeToldIsNoObstacle_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a folder in the place of the file") << ".";
    QTest::newRow("a device") << QFile::decodeName("/dev/null");
}

void DiskSpaceTest::whatCannotBeToldIsNoObstacle()
{
    QFETCH(QString, path);
    const QTemporaryDir folder;
    QVERIFY(HasRoomFor(QDir(folder.path()).filePath(path), Exabyte));
}

void DiskSpaceTest::noDiskIsThatLarge()
{
    const QTemporaryDir folder;
    QVERIFY(!HasRoomFor(folder.filePath(u"x.ad"_s), Exabyte));
    QVERIFY(HasRoomFor(folder.filePath(u"x.ad"_s), 150));
}

TARNVIK_TEST_MAIN(DiskSpaceTest, QCoreApplication)

#include "DiskSpaceTest.moc"
