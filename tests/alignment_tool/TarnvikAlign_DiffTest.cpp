// SPDX-License-Identifier: MIT
// TarnvikAlign diff and remove.
#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>

#ifdef Q_OS_LINUX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

using tests::Day;
using tests::FileBytes;
using tests::TableBytes;
using tests::WriteAlignmentFile;

class TarnvikAlign_DiffTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void everyKindOfDifferenceIsTold();
    void equalFilesAreNoDifference();
    void everyPartOfATableIsCompared_data();
    void everyPartOfATableIsCompared();
    void ofTablesWithOneIdTheLatestCounts();
    void tablesOfAnotherReceiverTypeAreOthers();
    void foldersAreCompared();
    void standardInputIsCompared();
    void whatCannotBeReadIsNotCompared();
    void tablesAreRemovedByWholeId_data();
    void tablesAreRemovedByWholeId();
    void theOutputIsWrittenInTheFilesPlace();
#ifdef Q_OS_LINUX
    void aPipeIsNotWaitedFor();
#endif
    void whatCannotBeRemovedIsRefusedAndNothingIsWritten_data();
    void whatCannotBeRemovedIsRefusedAndNothingIsWritten();
};

void TarnvikAlign_DiffTest::everyKindOfDifferenceIsTold()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr,
                               {{"same", 1}, {"A", 2}, {"n%1", Day("2024-01-02")}, {"o", 3}, {"c", 7}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr,
                               {{"same", 1}, {"B", 2}, {"n%1", Day("2024-01-01")}, {"o", 4}, {"c", 7}}));
    // Another attribute of a data set, and the checksum that goes with it.
    QByteArray bytes = FileBytes(path(u"b.ad"_s));
    const tests::ChunkPosition last = tests::ChunksOf(bytes).last();
    QByteArray payload = bytes.mid(last.Payload, last.Crc - last.Payload);
    payload[0] = static_cast<char>(payload[0] + 1);
    QVERIFY(tests::WriteFileBytes(path(u"b.ad"_s), bytes.first(last.Begin) + tests::WordCrcChunk(payload)));

    const tests::ToolRun run = Run({u"diff"_s, u"a.ad"_s, u"b.ad"_s});
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(run.Output, QByteArray("only in a.ad: RTL-SDR A (1970-01-01 00:00:02)\n"
                                    "same date, other content: RTL-SDR c (1970-01-01 00:00:07)\n"
                                    "newer in a.ad: RTL-SDR n%1 (2024-01-02 00:00:00; 2024-01-01 00:00:00)\n"
                                    "newer in b.ad: RTL-SDR o (1970-01-01 00:00:04; 1970-01-01 00:00:03)\n"
                                    "only in b.ad: RTL-SDR B (1970-01-01 00:00:02)\n"));
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_DiffTest::equalFilesAreNoDifference()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}, {"2", 2}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"2", 2}, {"1", 1}}));
    const tests::ToolRun run = Run({u"diff"_s, u"a.ad"_s, u"b.ad"_s});
    QCOMPARE(run.Output + run.Errors, QByteArray());
    QCOMPARE(run.ExitCode, 0);
}

void TarnvikAlign_DiffTest::everyPartOfATableIsCompared_data()
{
    QTest::addColumn<int>("offset"); // in the file of 150 bytes; the table's payload begins at 10
    QTest::newRow("a byte behind the id's NUL") << 10 + 1 + 127;
    QTest::newRow("the capacity") << 10 + 1 + 128 + 8;
}

void TarnvikAlign_DiffTest::everyPartOfATableIsCompared()
{
    QFETCH(int, offset);
    const QByteArray bytes = tests::FileOf150Bytes();
    QByteArray payload = bytes.mid(10, 139);
    payload[offset - 10] = 9;
    QVERIFY(tests::WriteFileBytes(path(u"a.ad"_s), bytes));
    QVERIFY(tests::WriteFileBytes(path(u"b.ad"_s), bytes.first(7) + tests::ByteCrcChunk(payload)));
    const tests::ToolRun run = Run({u"diff"_s, u"a.ad"_s, u"b.ad"_s});
    QVERIFY2(run.Output.startsWith("same date, other content: LimeMini ABC ("),
             (run.Output + run.Errors).constData());
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_DiffTest::ofTablesWithOneIdTheLatestCounts()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 9}, {"1", 5}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"1", 4}, {"1", 9}}));
    QCOMPARE(Run({u"diff"_s, u"a.ad"_s, u"b.ad"_s}).ExitCode, 0);
}

void TarnvikAlign_DiffTest::tablesOfAnotherReceiverTypeAreOthers()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::AirSpy, {{"1", 1}}));
    QCOMPARE(Run({u"diff"_s, u"a.ad"_s, u"b.ad"_s}).Output,
             QByteArray("only in a.ad: RTL-SDR 1 (1970-01-01 00:00:01)\n"
                        "only in b.ad: AirSpy 1 (1970-01-01 00:00:01)\n"));
}

void TarnvikAlign_DiffTest::foldersAreCompared()
{
    QVERIFY(QDir(Folder->path()).mkdir(u"old"_s));
    QVERIFY(WriteAlignmentFile(path(tests::RtlFile), SdrType::RtlSdr, {{"1", 1}}));
    QVERIFY(WriteAlignmentFile(path(tests::AirspyFile), SdrType::AirSpy, {{"2", 2}}));
    QVERIFY(WriteAlignmentFile(path(u"old/TarnvikDriver_RtlSdr.ad"_s), SdrType::RtlSdr, {{"1", 1}}));
    const tests::ToolRun run = Run({u"diff"_s, u"."_s, u"old"_s});
    QCOMPARE(run.Output, QByteArray("only in .: AirSpy 2 (1970-01-01 00:00:02)\n"));
}

void TarnvikAlign_DiffTest::standardInputIsCompared()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"1", 2}}));
    QCOMPARE(Run({u"diff"_s, u"a.ad"_s, u"-"_s}, FileBytes(path(u"b.ad"_s))).Output,
             QByteArray("newer in -: RTL-SDR 1 (1970-01-01 00:00:02; 1970-01-01 00:00:01)\n"));
    QCOMPARE(Run({u"diff"_s, u"-"_s, u"-"_s}).ExitCode, 2);
    QCOMPARE(Run({u"diff"_s, u"a.ad"_s}).ExitCode, 2);
}

void TarnvikAlign_DiffTest::whatCannotBeReadIsNotCompared()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}}));
    tests::ToolRun run = Run({u"diff"_s, u"a.ad"_s, u"no.ad"_s});
    QCOMPARE(run.Output, QByteArray());
    QCOMPARE(run.Errors, QByteArray("TarnvikAlign: no.ad: there is no such file; check the name\n"));
    QCOMPARE(run.ExitCode, 3);
    run = Run({u"diff"_s, u"no.ad"_s, u"none.ad"_s}); // both are told
    for (const QByteArray name : {"no.ad", "none.ad"})
        QVERIFY2(run.Errors.contains("TarnvikAlign: " + name + ": there is no such file; check the name\n"),
                 run.Errors.constData());
    QVERIFY(tests::WriteFileBytes(path(u"no.ad"_s), FileBytes(path(u"a.ad"_s)).chopped(1)));
    run = Run({u"diff"_s, u"no.ad"_s, u"a.ad"_s});
    QCOMPARE(run.Output, QByteArray());
    QVERIFY2(run.Errors.startsWith("TarnvikAlign: no.ad: table 1, byte "), run.Errors.constData());
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_DiffTest::tablesAreRemovedByWholeId_data()
{
    QTest::addColumn<QStringList>("ids");
    QTest::addColumn<QByteArrayList>("left");
    QTest::newRow("one") << QStringList{u"AB"_s} << QByteArrayList{"", "A", "ABC"};
    QTest::newRow("two") << QStringList{u"A"_s, u"ABC"_s} << QByteArrayList{"", "AB"};
    QTest::newRow("neighbours, up to the end")
        << QStringList{u"AB"_s, u"A"_s, QString()} << QByteArrayList{"ABC"};
    QTest::newRow("the empty one") << QStringList{QString()} << QByteArrayList{"A", "AB", "ABC"};
}

void TarnvikAlign_DiffTest::tablesAreRemovedByWholeId()
{
    QFETCH(QStringList, ids);
    QFETCH(QByteArrayList, left);
    // One stands twice.
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr,
                               {{"ABC", 1}, {"AB", 2}, {"A", 3}, {"AB", 4}, {"", 5}}));
    QMap<QByteArray, QByteArray> expected = TableBytes(path(u"a.ad"_s));
    QStringList arguments = {u"remove"_s, u"a.ad"_s};
    for (const QString &id : ids)
        arguments += {u"--id"_s, id};
    const tests::ToolRun run = Run(arguments);
    QCOMPARE(run.Output + run.Errors, QByteArray());
    QCOMPARE(run.ExitCode, 0);
    for (const QString &id : ids)
        expected.remove(id.toUtf8());
    QCOMPARE(TableBytes(path(u"a.ad"_s)), expected);
    QCOMPARE(expected.keys(), left);
}

void TarnvikAlign_DiffTest::theOutputIsWrittenInTheFilesPlace()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}, {"2", 2}}));
    const QByteArray before = FileBytes(path(u"a.ad"_s));
    QCOMPARE(Run({u"remove"_s, u"a.ad"_s, u"--id"_s, u"1"_s, u"-o"_s, u"b.ad"_s}).ExitCode, 0);
    const tests::ToolRun run = Run({u"remove"_s, u"a.ad"_s, u"--id"_s, u"1"_s, u"-o"_s, u"-"_s});
    QCOMPARE(FileBytes(path(u"a.ad"_s)), before);
    QCOMPARE(run.Output, FileBytes(path(u"b.ad"_s)));
    QCOMPARE(TableBytes(path(u"b.ad"_s)).keys(), QByteArrayList{"2"});
}

#ifdef Q_OS_LINUX
void TarnvikAlign_DiffTest::aPipeIsNotWaitedFor()
{
    QCOMPARE(mkfifo(qPrintable(path(u"pipe"_s)), 0600), 0);
    const tests::ToolRun run = Run({u"remove"_s, u"--id=1"_s, u"pipe"_s});
    QCOMPARE(run.Errors,
             QByteArray("TarnvikAlign: pipe: the file cannot be opened; check that you may read it\n"));
    QCOMPARE(run.ExitCode, 3);
}
#endif

void TarnvikAlign_DiffTest::whatCannotBeRemovedIsRefusedAndNothingIsWritten_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");
    const QByteArray usage = "one file, and --id, are wanted; see \"--help\"";
    QTest::newRow("no id") << QStringList{u"a.ad"_s} << 2 << usage;
    QTest::newRow("no file") << QStringList{u"--id=1"_s} << 2 << usage;
    QTest::newRow("two files") << QStringList{u"--id=1"_s, u"a.ad"_s, u"b.ad"_s} << 2 << usage;
    QTest::newRow("standard input") << QStringList{u"--id=1"_s, u"-"_s} << 2 << usage;
    QTest::newRow("an id that the file does not have")
        << QStringList{u"--id=1"_s, u"--id=3"_s, u"a.ad"_s} << 1
        << QByteArray("a.ad: there is no table \"3\"; \"list\" shows the ids");
    QTest::newRow("all tables") << QStringList{u"--id=1"_s, u"--id=2"_s, u"a.ad"_s} << 2
                                << QByteArray("a.ad: no table would be left, and a file holds one at least; "
                                              "delete the file instead");
    QTest::newRow("a file that is not there") << QStringList{u"--id=1"_s, u"b.ad"_s} << 3
                                              << QByteArray("b.ad: there is no such file; check the name");
    QTest::newRow("a damaged file") << QStringList{u"--id=1"_s, u"damaged.ad"_s} << 1
                                    << QByteArray("damaged.ad: header, byte 0: File Error; the file ends too "
                                                  "early; take it from its source again");
}

void TarnvikAlign_DiffTest::whatCannotBeRemovedIsRefusedAndNothingIsWritten()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}, {"2", 2}}));
    QVERIFY(tests::WriteFileBytes(path(u"damaged.ad"_s), QByteArray()));
    const QByteArray before = FileBytes(path(u"a.ad"_s));
    const tests::ToolRun run = Run(QStringList{u"remove"_s} + arguments);
    QCOMPARE(run.Errors, "TarnvikAlign: " + message + '\n');
    QCOMPARE(run.ExitCode, exitCode);
    QCOMPARE(FileBytes(path(u"a.ad"_s)), before);
    QCOMPARE(QDir(Folder->path()).entryList(QDir::Files), (QStringList{u"a.ad"_s, u"damaged.ad"_s}));
}

TARNVIK_TEST_MAIN(TarnvikAlign_DiffTest, QCoreApplication)

#include "TarnvikAlign_DiffTest.moc"
