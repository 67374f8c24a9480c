// SPDX-License-Identifier: MIT
// Saving alignment files to a disk with little room: what does not fit leaves the old file as it is.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

class AlignFile_FullDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aFileIsWrittenOnlyWhenItFits_data();
    void aFileIsWrittenOnlyWhenItFits();
    void withoutAnOldFileNoneIsLeftBehind();

private:
    /// The tables of a file that takes up more blocks, and how many more.
    AlignStore Larger;
    qint64 MoreBlocks = 0;
    QByteArray Old;
    QString Path;
};

void AlignFile_FullDiskTest::init()
{
    TARNVIK_NEEDS_SMALL_DISK();
    QVERIFY(tests::EmptySmallDisk());
    Path = tests::SmallDisk() + u"/TarnvikDriver_RtlSdr.ad"_s;
    const auto blocks = [](qint64 size) {
        return (size + tests::SmallDiskBlock - 1) / tests::SmallDiskBlock;
    };
    tools::AlignmentGenerator generator(1);
    Larger.SdrType = SdrType::RtlSdr;
    AlignStore::ClearList(Larger.Tables);
    QVERIFY(generator.AppendFullTables(Larger, 2, tools::AlignmentGenerator::Full::Deep));
    QCOMPARE(Larger.SaveFile(Path), AlignResult::Ok);
    Old = tests::FileBytes(Path);
    QVERIFY(generator.AppendFullTables(Larger, 1, tools::AlignmentGenerator::Full::Deep));
    const QString whole = tests::SmallDisk() + u"/whole.ad"_s;
    QCOMPARE(Larger.SaveFile(whole), AlignResult::Ok);
    MoreBlocks = blocks(QFileInfo(whole).size()) - blocks(Old.size());
    QVERIFY(MoreBlocks > 1);
    QVERIFY(QFile::remove(whole));
}

void AlignFile_FullDiskTest::aFileIsWrittenOnlyWhenItFits_data()
{
    QTest::addColumn<int>("missingBlocks");
    QTest::newRow("just enough room") << 0;
    QTest::newRow("one block missing") << 1;
    QTest::newRow("a full disk") << -1;
}

void AlignFile_FullDiskTest::aFileIsWrittenOnlyWhenItFits()
{
    QFETCH(int, missingBlocks);
    QVERIFY(tests::FillSmallDisk(missingBlocks < 0 ? 0 : MoreBlocks - missingBlocks));
    if (missingBlocks == 0) {
        QCOMPARE(Larger.SaveFile(Path), AlignResult::Ok);
        AlignStore read;
        QCOMPARE(read.LoadFile(Path, read.Tables, true), AlignResult::Ok);
        QCOMPARE(tests::Difference(read.Tables, Larger.Tables), QString());
        return;
    }
    QCOMPARE(Larger.SaveFile(Path), AlignResult::FileError);
    QCOMPARE(tests::FileBytes(Path), Old);
}

void AlignFile_FullDiskTest::withoutAnOldFileNoneIsLeftBehind()
{
    QVERIFY(QFile::remove(Path));
    QVERIFY(tests::FillSmallDisk(MoreBlocks));
    QCOMPARE(Larger.SaveFile(Path), AlignResult::FileError);
    QVERIFY(!QFile::exists(Path));
}

TARNVIK_TEST_MAIN(AlignFile_FullDiskTest, QCoreApplication)

#include "AlignFile_FullDiskTest.moc"
