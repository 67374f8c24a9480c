// SPDX-License-Identifier: MIT
// TarnvikAlign verify: damage by its place, and what a strict reader would refuse.
#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

using tests::WriteAlignmentFile;

class TarnvikAlign_VerifyTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void wholeFilesAreOk();
    void damageIsToldByItsPlace_data();
    void damageIsToldByItsPlace();
    void theOneDamagedFileAmongFiftyIsFound();
    void everyIdThatBeginsWithAnotherIsNamed();
    void whatAStrictReaderWouldRefuseIsAWarning_data();
    void whatAStrictReaderWouldRefuseIsAWarning();
    void whatCannotBeOpenedIsAnError();
};

void TarnvikAlign_VerifyTest::wholeFilesAreOk()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::AirSpy, {{"1", 5}, {"2", 5}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"1", 5}}));
    const tests::ToolRun run = Run({u"verify"_s, u"a.ad"_s, u"b.ad"_s});
    QCOMPARE(run.Output, QByteArray("a.ad: ok, 2 tables\nb.ad: ok, 1 table\n"));
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(run.ExitCode, 0);
}

void TarnvikAlign_VerifyTest::damageIsToldByItsPlace_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("message");
    const QByteArray header = tests::HeaderChunk(SdrType::RtlSdr, 1);
    const QByteArray damaged = "the file is damaged; take it from its source again\n";
    const QByteArray early = "File Error; the file ends too early; take it from its source again\n";
    const QByteArray version =
        "Version Missmatched; this is no alignment file of version 5, or it is damaged\n";
    QTest::newRow("an empty file") << QByteArray() << "header, byte 0: " + early;
    QTest::newRow("another file") << QByteArray("#!/bin/sh\n") << "header, byte 0: " + version;
    QTest::newRow("the header's CRC")
        << header.chopped(1) + '\x7F' << "header, byte 0: File CRC check failed; " + damaged;
    QTest::newRow("no table") << header << "table 1, byte 7: " + early;
    QTest::newRow("a table of another version")
        << header + tests::ByteCrcChunk("x", 4) << "table 1, byte 7: " + version;
    QTest::newRow("a count beyond the type's")
        << header + tests::TableChunk(1, 2)
        << QByteArray("table 1, byte 7: Internal Error; a length or a count is beyond what a table holds; "
                      "take the file from its source again\n");
    QTest::newRow("a data set that is missing")
        << header + tests::TableChunk(1, 1) << "table 1, byte 150: " + early;
    QByteArray dataSet = tests::RtlSdrFile(tests::WordCrcChunk(tests::DataSetPayload(1)));
    dataSet[160] = static_cast<char>(dataSet[160] ^ 1);
    QTest::newRow("a damaged data set") << dataSet << "table 1, byte 150: File CRC check failed; " + damaged;
}

void TarnvikAlign_VerifyTest::damageIsToldByItsPlace()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, message);
    QVERIFY(tests::WriteFileBytes(path(u"f.ad"_s), bytes));
    tests::ToolRun run = Run({u"verify"_s, u"f.ad"_s});
    QCOMPARE(run.Output, "f.ad: " + message);
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(run.ExitCode, 1);
    run = Run({u"verify"_s, u"-"_s}, bytes);
    QCOMPARE(run.Output, "standard input: " + message);
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_VerifyTest::theOneDamagedFileAmongFiftyIsFound()
{
    for (int i = 0; i < 50; ++i)
        QVERIFY(
            WriteAlignmentFile(path(u"TarnvikDriver_%1.ad"_s.arg(i)), SdrType::RtlSdr, {{"1", 5}, {"2", 5}}));
    QByteArray bytes = tests::FileBytes(path(u"TarnvikDriver_23.ad"_s));
    const tests::ChunkPosition chunk = tests::ChunksOf(bytes).last();
    bytes[chunk.Payload] = static_cast<char>(bytes[chunk.Payload] ^ 1);
    QVERIFY(tests::WriteFileBytes(path(u"TarnvikDriver_23.ad"_s), bytes));
    const tests::ToolRun run = Run({u"verify"_s, u"."_s});
    QCOMPARE(run.Output.count(": ok, 2 tables\n"), 49);
    const QByteArrayList lines = run.Output.split('\n');
    QVERIFY(std::is_sorted(lines.begin(), lines.end() - 1)); // the files by name; nothing is behind the last
    const QByteArray place = "TarnvikDriver_23.ad: table 2, byte " + QByteArray::number(chunk.Begin) +
                             ": File CRC check failed; the file is damaged; take it from its source again\n";
    QVERIFY2(run.Output.contains(place), run.Output.constData());
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_VerifyTest::everyIdThatBeginsWithAnotherIsNamed()
{
    QVERIFY(WriteAlignmentFile(path(u"f.ad"_s), SdrType::RtlSdr,
                               {{"AC", 1}, {"A", 1}, {"ABC", 1}, {"B", 1}, {"AB", 1}, {"AD", 1}}));
    const tests::ToolRun run = Run({u"verify"_s, u"f.ad"_s});
    const QByteArray warning =
        "f.ad: warning: the hardware id of table %1 is the beginning of that of table %2\n";
    QByteArray expected;
    for (const QByteArray pair : {"25", "53", "21", "26"}) // A AB, AB ABC, A AC, A AD
        expected += QByteArray(warning).replace("%1", pair.first(1)).replace("%2", pair.last(1));
    QCOMPARE(run.Output, expected + "f.ad: ok, 6 tables, warnings: 4\n");
}

void TarnvikAlign_VerifyTest::whatAStrictReaderWouldRefuseIsAWarning_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("warning");
    const QByteArray file = tests::FileOf150Bytes(); // LimeMini, table ABC without data sets
    QTest::newRow("bytes after the end") << file + "xyz" << QByteArray("bytes behind the last table: 3");
    QByteArray payload = file.mid(10, 139);
    payload[138 - 1] = 7;
    QTest::newRow("a capacity that does not fit")
        << file.first(7) + tests::ByteCrcChunk(payload)
        << QByteArray("table 1: it states room for 7 data sets, its receiver type has 6");
    payload = file.mid(10, 139);
    payload[0] = 4;
    QTest::newRow("another inner version")
        << file.first(7) + tests::ByteCrcChunk(payload) << QByteArray("table 1: its inner version is 4");
    QByteArray other = file.mid(7);
    payload = file.mid(10, 139);
    payload[1 + 3] = 'D';
    QTest::newRow("an id that is the beginning of another")
        << tests::HeaderChunk(SdrType::LimeMini, 2) + tests::ByteCrcChunk(payload) + other
        << QByteArray("the hardware id of table 2 is the beginning of that of table 1");
    QTest::newRow("an id that stands twice") << tests::HeaderChunk(SdrType::LimeMini, 2) + other + other
                                             << QByteArray("tables 1 and 2 have the same hardware id");
    payload = file.mid(10, 139);
    payload[1 + 127] = 'x';
    QTest::newRow("bytes behind the id's NUL")
        << file.first(7) + tests::ByteCrcChunk(payload)
        << QByteArray("table 1: bytes follow the end of its hardware id");
    payload = file.mid(10, 139);
    payload[137] = 0;
    QTest::newRow("no table") << tests::HeaderChunk(SdrType::RtlSdr, 0)
                              << QByteArray("it holds no table; the window refuses to read it");
    QTest::newRow("an unknown receiver type")
        << tests::HeaderChunk(static_cast<SdrType>(9), 1) + tests::ByteCrcChunk(payload)
        << QByteArray("its receiver type, 9, is unknown");
}

void TarnvikAlign_VerifyTest::whatAStrictReaderWouldRefuseIsAWarning()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, warning);
    QVERIFY(tests::WriteFileBytes(path(u"f.ad"_s), bytes));
    const tests::ToolRun run = Run({u"verify"_s, u"f.ad"_s});
    const int count = static_cast<quint8>(bytes[5]);
    const QByteArray tables = QByteArray::number(count) + (count == 1 ? " table" : " tables");
    QCOMPARE(run.Output, "f.ad: warning: " + warning + "\nf.ad: ok, " + tables + ", warnings: 1\n");
    QCOMPARE(run.ExitCode, 0);
    const tests::ToolRun input = Run({u"verify"_s, u"-"_s}, bytes);
    QCOMPARE(input.Output, QByteArray(run.Output).replace("f.ad", "standard input"));
}

void TarnvikAlign_VerifyTest::whatCannotBeOpenedIsAnError()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 5}}));
    const tests::ToolRun run = Run({u"verify"_s, u"no.ad"_s, u"a.ad"_s});
    QCOMPARE(run.Output, QByteArray("a.ad: ok, 1 table\n"));
    QCOMPARE(run.Errors, QByteArray("TarnvikAlign: no.ad: there is no such file; check the name\n"));
    QCOMPARE(run.ExitCode, 3);
}

TARNVIK_TEST_MAIN(TarnvikAlign_VerifyTest, QCoreApplication)

#include "TarnvikAlign_VerifyTest.moc"
