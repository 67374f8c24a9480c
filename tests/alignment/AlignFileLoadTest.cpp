// SPDX-License-Identifier: MIT
// Loading alignment files: good ones, and one test for each way in which a file can be wrong.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentFileFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QProcess>
#include <QTest>
#include <QtEndian>

#include <algorithm>

using namespace Qt::StringLiterals;

using tests::ByteCrcChunk;
using tests::DataSetPayload;
using tests::FileOf150Bytes;
using tests::HeaderChunk;
using tests::RtlSdrFile;
using tests::TableChunk;
using tests::WordCrcChunk;

namespace {

QByteArray WithByte(QByteArray bytes, qsizetype position, int value)
{
    bytes[position] = static_cast<char>(value);
    return bytes;
}

} // namespace

class AlignFileLoadTest : public tests::AlignmentFileFixture
{
    Q_OBJECT

private slots:
    void loadingThe150BytesBackWithAdoptionGivesAnEqualTable();
    void loadingThe150BytesIntoAStoreWhoseSdrTypeIs2WithoutAdoptionGives18AndAnEmptyList();
    void everyFieldOfADataSetIsRead();
    void loadIntoImportTablesLeavesTablesAlone();
    void adoptedTypeStaysAfterALaterFailure();
    void loadForgetsThePayloadOfAnEarlierOne();
    void load_data();
    void load();
    void changingOnePayloadByteOfAnyChunkGives14UnlessTheNewPayloadsCrcIs0();
    void payloadWhoseCrcIs0PassesWithAnyStoredCrc_data();
    void payloadWhoseCrcIs0PassesWithAnyStoredCrc();
    void versionMessage_data();
    void versionMessage();
    void loadOfAMissingFileGives9AndLeavesTheListAsItWas();
    void loadOfAFolderGives9AndLeavesTheListAsItWas();
};

void AlignFileLoadTest::loadingThe150BytesBackWithAdoptionGivesAnEqualTable()
{
    QVERIFY(tests::WriteFileBytes(Path, FileOf150Bytes()));
    AlignStore store;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::Ok);
    QCOMPARE(store.SdrType, SdrType::LimeMini);

    AlignStore expected;
    expected.SdrType = SdrType::LimeMini;
    AlignTable *table = tests::AppendTableWithId(expected, expected.Tables, "ABC");
    QVERIFY(table != nullptr);
    table->AlignedAt = 0x0000000065A0BC00;
    QCOMPARE(tests::Difference(store.Tables, expected.Tables), QString());
}

void AlignFileLoadTest::loadingThe150BytesIntoAStoreWhoseSdrTypeIs2WithoutAdoptionGives18AndAnEmptyList()
{
    QVERIFY(tests::WriteFileBytes(Path, FileOf150Bytes()));
    AlignStore store;
    store.SdrType = SdrType::LimeUsb;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    QCOMPARE(store.LoadFile(Path, store.Tables, false), AlignResult::TableWrongSdrType);
    QVERIFY(tests::IsEmpty(store.Tables));
    QCOMPARE(store.SdrType, SdrType::LimeUsb);
}

void AlignFileLoadTest::everyFieldOfADataSetIsRead()
{
    const QByteArray payload = QByteArray::fromHex("01020304 0506 0708 0001"
                                                   "1112131415161718 19 01"
                                                   "2122232425262728 01 31323334 4142434445464748");
    QVERIFY(tests::WriteFileBytes(Path, RtlSdrFile(WordCrcChunk(payload))));
    AlignStore store;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::Ok);
    const AlignTable &table = *store.Tables.Head->Table;
    QCOMPARE(table.DataType, std::uint8_t{1});
    QCOMPARE(table.SdrType, SdrType::RtlSdr);
    QCOMPARE(table.DataSetCount, std::uint8_t{1});
    const AlignDataSet &dataSet = table.DataSets[0];
    QCOMPARE(dataSet.DataType, std::uint8_t{2});
    QCOMPARE(dataSet.SdrType, SdrType::RtlSdr);
    QCOMPARE(dataSet.Attr1, std::uint8_t{1});
    QCOMPARE(dataSet.Attr2, std::uint8_t{2});
    QCOMPARE(dataSet.Attr3, std::uint8_t{3});
    QCOMPARE(dataSet.Attr4, std::uint8_t{4});
    QCOMPARE(dataSet.Word1, std::uint16_t{0x0506});
    QCOMPARE(dataSet.Word2, std::uint16_t{0x0708});
    QCOMPARE(dataSet.FreqPointCount, std::uint16_t{1});
    const AlignFreqPoint &point = dataSet.FreqPoints[0];
    QCOMPARE(point.Frequency, std::uint64_t{0x1112131415161718});
    QCOMPARE(point.Attr, std::uint8_t{0x19});
    QCOMPARE(point.SampleRatePointCount, std::uint8_t{1});
    const AlignSampleRatePoint &ratePoint = point.SampleRatePoints[0];
    QCOMPARE(ratePoint.SampleFrequency, std::uint64_t{0x2122232425262728});
    QCOMPARE(ratePoint.GainEntryCount, std::uint8_t{1});
    QCOMPARE(ratePoint.Attr, std::uint32_t{0x31323334});
    QCOMPARE(ratePoint.GainEntries[0].Value1, std::uint16_t{0x4142});
    QCOMPARE(ratePoint.GainEntries[0].Value2, std::uint16_t{0x4344});
    QCOMPARE(ratePoint.GainEntries[0].Value3, std::uint16_t{0x4546});
    QCOMPARE(ratePoint.GainEntries[0].Value4, std::uint16_t{0x4748});
}

void AlignFileLoadTest::loadIntoImportTablesLeavesTablesAlone()
{
    QVERIFY(tests::WriteFileBytes(Path, FileOf150Bytes()));
    AlignStore store;
    store.SdrType = SdrType::LimeMini;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "present") != nullptr);
    QCOMPARE(store.LoadFile(Path, store.ImportTables, false), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"present"});
    QCOMPARE(tests::HwIdsOf(store.ImportTables), QList<QByteArray>{"ABC"});
}

void AlignFileLoadTest::adoptedTypeStaysAfterALaterFailure()
{
    QVERIFY(tests::WriteFileBytes(Path, FileOf150Bytes().chopped(1)));
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::FileCrcFailed);
    QCOMPARE(store.SdrType, SdrType::LimeMini);
    QVERIFY(tests::IsEmpty(store.Tables));
}

void AlignFileLoadTest::loadForgetsThePayloadOfAnEarlierOne()
{
    QVERIFY(tests::WriteFileBytes(Path, RtlSdrFile(WordCrcChunk(DataSetPayload(3)))));
    AlignStore store;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::Ok);
    QVERIFY(tests::WriteFileBytes(Path, QByteArray()));
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::FileError);
    QVERIFY(std::all_of(store.ChunkBuffer.Bytes.begin(), store.ChunkBuffer.Bytes.end(),
                        [](auto byte) { return byte == 0; }));
}

void AlignFileLoadTest::load_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<AlignResult>("result");
    using enum AlignResult;
    const QByteArray file = FileOf150Bytes();
    const QByteArray rtlTable = HeaderChunk(SdrType::RtlSdr, 1) + TableChunk(1, 1);
    const auto lengthOnly = [](int length) {
        QByteArray bytes(2, '\0');
        qToLittleEndian(static_cast<quint16>(length), bytes.data());
        return bytes;
    };
    const auto row = [](const char *name, const QByteArray &bytes, AlignResult result) {
        QTest::newRow(name) << bytes << result;
    };

    row("a file that ends after its tables", file, Ok);
    row("bytes after the last chunk are not read", file + "more", Ok);
    row("a file without tables", HeaderChunk(SdrType::LimeMini, 0), Ok);

    // The file header.
    row("an empty file", {}, FileError);
    row("a file-header chunk whose version byte is 4", WithByte(file, 0, 4), VersionMismatch);
    row("a file-header chunk whose version byte is 6", WithByte(file, 0, 6), VersionMismatch);
    row("the file ends within the header's length", file.left(2), FileError);
    row("the file ends within the header's payload", file.left(5), FileCrcFailed);
    row("the file ends before the header's CRC", file.left(6), FileCrcFailed);
    row("the header's CRC is wrong", WithByte(file, 6, 0x6D), FileCrcFailed);
    row("a header of length 0", ByteCrcChunk({}), InternalError);
    row("a header too short for its fields", ByteCrcChunk("\1\1"), InternalError);
    row("a header longer than its fields", ByteCrcChunk(QByteArray("\1\0\0more", 7)), Ok);
    row("a header as long as the buffer", ByteCrcChunk(QByteArray("\1\0\0", 3) + QByteArray(16385, 'x')), Ok);
    row("a header longer than the buffer", ByteCrcChunk(QByteArray("\1\0\0", 3) + QByteArray(16386, 'x')),
        InternalError);
    row("a header of length 65535", ByteCrcChunk(QByteArray("\1\0\0", 3) + QByteArray(65532, 'x')),
        InternalError);

    // A table.
    row("the file ends after the header", file.left(7), FileError);
    row("a table chunk whose version byte is 4", WithByte(file, 7, 4), VersionMismatch);
    row("the file ends within a table's length", file.left(9), FileError);
    row("the file ends within a table's payload", file.left(100), FileCrcFailed);
    row("the file ends before a table's CRC", file.left(149), FileCrcFailed);
    row("a table's CRC is wrong", WithByte(file, 149, 0xDF), FileCrcFailed);
    row("a table of length 0", HeaderChunk(SdrType::LimeMini, 1) + ByteCrcChunk({}), InternalError);
    row("a table one byte too short", HeaderChunk(SdrType::LimeMini, 1) + ByteCrcChunk(QByteArray(138, '\5')),
        InternalError);
    row("a table longer than its fields",
        HeaderChunk(SdrType::LimeMini, 1) + ByteCrcChunk(QByteArray(139, '\0') + "more"), Ok);
    row("a table of length 65535", HeaderChunk(SdrType::LimeMini, 1) + ByteCrcChunk(QByteArray(65535, '\0')),
        InternalError);
    row("fewer tables than the header announces", HeaderChunk(SdrType::LimeMini, 2) + file.mid(7), FileError);
    row("one data set more than the type has", HeaderChunk(SdrType::RtlSdr, 1) + TableChunk(1, 2),
        InternalError);
    row("data sets as the file's capacity, not the block's, allows",
        HeaderChunk(SdrType::RtlSdr, 1) + TableChunk(12, 12), InternalError);
    row("255 data sets", HeaderChunk(SdrType::LimeUsb, 1) + TableChunk(255, 255), InternalError);
    for (const int type : {0, 5, 255}) {
        QTest::addRow("type %d with a data set", type)
            << HeaderChunk(static_cast<SdrType>(type), 1) + TableChunk(1, 1) + WordCrcChunk(DataSetPayload(0))
            << InternalError;
    }

    // A data set.
    row("the file ends after a table that announces a data set", rtlTable, FileError);
    row("the file ends within a data set's length", rtlTable + "\x0A", FileError);
    row("the file ends within a data set's payload", RtlSdrFile(WordCrcChunk(DataSetPayload(0)).left(8)),
        FileCrcFailed);
    row("the file ends within a data set's CRC", RtlSdrFile(WordCrcChunk(DataSetPayload(0)).left(15)),
        FileCrcFailed);
    row("a data set's CRC is wrong", RtlSdrFile(WordCrcChunk(DataSetPayload(0)).left(12) + "\1\2\3\4"),
        FileCrcFailed);
    row("a data set of length 0", RtlSdrFile(WordCrcChunk({})), InternalError);
    row("a data set one byte too short for its fields", RtlSdrFile(WordCrcChunk(QByteArray(9, '\1'))),
        InternalError);
    row("a data set without frequency points", RtlSdrFile(WordCrcChunk(DataSetPayload(0))), Ok);
    row("a data set longer than its fields", RtlSdrFile(WordCrcChunk(DataSetPayload(1) + "more")), Ok);
    row("a data-set chunk with length 0x3FFF is read",
        RtlSdrFile(WordCrcChunk(DataSetPayload(1).leftJustified(0x3FFF, 'x'))), Ok);
    row("a data-set chunk with length 0x4000",
        RtlSdrFile(WordCrcChunk(DataSetPayload(1).leftJustified(0x4000, 'x'))), InternalError);
    row("a data-set chunk with length 0x4000 and nothing behind it", RtlSdrFile(lengthOnly(0x4000)),
        InternalError);
    row("a data-set chunk with length 65535", RtlSdrFile(WordCrcChunk(QByteArray(65535, '\0'))),
        InternalError);
    row("100 frequency points", RtlSdrFile(WordCrcChunk(DataSetPayload(100))), Ok);
    row("101 frequency points", RtlSdrFile(WordCrcChunk(DataSetPayload(101))), InternalError);
    row("65535 frequency points announced", RtlSdrFile(WordCrcChunk(QByteArray(10, '\xFF'))), InternalError);
    row("10 sample-rate points", RtlSdrFile(WordCrcChunk(DataSetPayload(1, 10))), Ok);
    row("11 sample-rate points", RtlSdrFile(WordCrcChunk(DataSetPayload(1, 11))), InternalError);
    row("255 sample-rate points", RtlSdrFile(WordCrcChunk(DataSetPayload(1, 255))), InternalError);
    row("50 gain entries", RtlSdrFile(WordCrcChunk(DataSetPayload(1, 1, 50))), Ok);
    row("51 gain entries", RtlSdrFile(WordCrcChunk(DataSetPayload(1, 1, 51))), InternalError);
    row("255 gain entries", RtlSdrFile(WordCrcChunk(DataSetPayload(1, 1, 255))), InternalError);
    row("a payload that ends within a frequency point",
        RtlSdrFile(WordCrcChunk(DataSetPayload(1).chopped(1))), InternalError);
    row("a payload that ends within a sample-rate point",
        RtlSdrFile(WordCrcChunk(DataSetPayload(1, 1).chopped(1))), InternalError);
    row("a payload that ends within a gain entry",
        RtlSdrFile(WordCrcChunk(DataSetPayload(1, 1, 1).chopped(1))), InternalError);
}

void AlignFileLoadTest::load()
{
    QFETCH(QByteArray, bytes);
    QFETCH(AlignResult, result);
    QVERIFY(tests::WriteFileBytes(Path, bytes));
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    QCOMPARE(store.LoadFile(Path, store.Tables, true), result);
    if (result == AlignResult::Ok)
        QCOMPARE(qsizetype{store.Tables.Count}, qsizetype{qFromBigEndian<quint16>(bytes.constData() + 4)});
    else
        QVERIFY(tests::IsEmpty(store.Tables));
}

void AlignFileLoadTest::changingOnePayloadByteOfAnyChunkGives14UnlessTheNewPayloadsCrcIs0()
{
    const QByteArray original = RtlSdrFile(WordCrcChunk(DataSetPayload(1, 1, 1)));
    const QList<tests::ChunkPosition> chunks = tests::ChunksOf(original);
    QCOMPARE(chunks.size(), qsizetype{3});
    int accepted = 0;
    for (const tests::ChunkPosition &chunk : chunks) {
        for (qsizetype position = chunk.Payload; position < chunk.Crc; ++position) {
            const QByteArray bytes = WithByte(original, position, original.at(position) ^ 0x01);
            QVERIFY(tests::WriteFileBytes(Path, bytes));
            AlignStore store;
            const AlignResult result = store.LoadFile(Path, store.Tables, true);
            const bool lenient = tests::PayloadCrc(bytes, chunk) == 0;
            QCOMPARE(result == AlignResult::FileCrcFailed, !lenient);
            QCOMPARE(tests::IsEmpty(store.Tables), result != AlignResult::Ok);
            accepted += lenient ? 1 : 0;
        }
    }
    // A checksum of 8 bits comes out as 0 now and then: the leniency did come up, but seldom.
    QVERIFY(accepted > 0);
    QVERIFY(accepted < 5);
}

void AlignFileLoadTest::payloadWhoseCrcIs0PassesWithAnyStoredCrc_data()
{
    QTest::addColumn<QByteArray>("bytes");
    // A file header of zeros: no type, no tables.
    QTest::newRow("file header") << QByteArray::fromHex("05 0300 000000 55");
    QTest::newRow("table") << HeaderChunk(SdrType::RtlSdr, 1) + QByteArray::fromHex("05 8B00") +
                                  QByteArray(139, '\0') + QByteArray::fromHex("AA");
    QTest::newRow("data set") << RtlSdrFile(QByteArray::fromHex("0A00") + QByteArray(10, '\0') +
                                            QByteArray::fromHex("DEADBEEF"));
}

void AlignFileLoadTest::payloadWhoseCrcIs0PassesWithAnyStoredCrc()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(tests::WriteFileBytes(Path, bytes));
    AlignStore store;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::Ok);
    QCOMPARE(int{store.Tables.Count}, bytes.size() > 7 ? 1 : 0);
}

void AlignFileLoadTest::versionMessage_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("a file-header chunk whose version byte is 4 gives 13 without the message")
        << 0 << QByteArray();
    QTest::newRow("a table chunk whose version byte is 4 gives 13 with the message")
        << 7 << QByteArray("[ERROR] fileversion and header version not equal!\n");
}

void AlignFileLoadTest::versionMessage()
{
    QFETCH(int, position);
    QFETCH(QByteArray, message);
    QVERIFY(tests::WriteFileBytes(Path, WithByte(FileOf150Bytes(), position, 4)));
    QProcess probe;
    probe.start(QStringLiteral(ALIGNMENT_PROBE), {u"load"_s, Path});
    probe.write("\n");
    QVERIFY2(probe.waitForFinished(), qPrintable(probe.errorString()));
    QCOMPARE(probe.exitCode(), 0);
    QCOMPARE(probe.readAllStandardOutput().replace("\r\n", "\n"),
             "ready\n" + message + "result VersionMismatch (13) 0\n");
}

void AlignFileLoadTest::loadOfAMissingFileGives9AndLeavesTheListAsItWas()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::FileError);
    QCOMPARE(store.LoadFile(QString(), store.Tables, true), AlignResult::FileError);
    const QString halfALetter = path(QString(QChar(0xD83D))); // no letter without its other half
    QCOMPARE(store.LoadFile(halfALetter, store.Tables, true), AlignResult::FileError);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"ABC"});
    QCOMPARE(store.SdrType, SdrType::RtlSdr);
}

void AlignFileLoadTest::loadOfAFolderGives9AndLeavesTheListAsItWas()
{
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    QCOMPARE(store.LoadFile(Folder->path(), store.Tables, true), AlignResult::FileError);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"ABC"});
}

TARNVIK_TEST_MAIN(AlignFileLoadTest, QCoreApplication)
#include "AlignFileLoadTest.moc"
