// SPDX-License-Identifier: MIT
// A valid file damaged in every place. What memory errors there are, the sanitizers find; the results are
// checked here.
#include "alignment/AlignStore.h"
#include "alignment/AlignTableReader.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {

/// The result of reading the bytes table by table.
AlignResult ReadTableByTable(const QByteArray &bytes)
{
    std::istringstream stream(bytes.toStdString(), std::ios::binary);
    AlignTableReader reader;
    AlignTable table;
    AlignResult result = reader.Open(stream);
    while (result == AlignResult::Ok && reader.hasNext())
        result = reader.ReadNext(table);
    return result;
}

} // namespace

class AlignHostileFileTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theFileIsWhatTheTestsNeed();
    void everyTruncationGives14Or9AndLeavesTheListEmpty();
    void everyFlippedBit();
    void everyLength_data();
    void everyLength();
    void everyCountOfDataSetsForEveryType_data();
    void everyCountOfDataSetsForEveryType();
    void arbitraryBytes();

private:
    /// Loads the bytes over a list of one table, and checks what holds for every result, and that reading
    /// table by table gives the same one; nothing when a check failed.
    std::optional<AlignResult> Load(const QByteArray &bytes);
    [[nodiscard]] const tests::ChunkPosition &ChunkAt(qsizetype position) const;

    QByteArray File; // valid: three tables with one to three data sets
    QList<tests::ChunkPosition> Chunks;
};

std::optional<AlignResult> AlignHostileFileTest::Load(const QByteArray &bytes)
{
    AlignStore store;
    if (store.AppendNewTable(store.Tables) == nullptr)
        return std::nullopt;
    std::istringstream stream(bytes.toStdString(), std::ios::binary);
    const AlignResult result = store.Load(stream, store.Tables, true);
    static const std::set<AlignResult> possible = {AlignResult::Ok, AlignResult::FileError,
                                                   AlignResult::InternalError, AlignResult::VersionMismatch,
                                                   AlignResult::FileCrcFailed};
    if (possible.count(result) == 0 || (result != AlignResult::Ok && !tests::IsEmpty(store.Tables)))
        return std::nullopt;
    return ReadTableByTable(bytes) == result ? std::optional(result) : std::nullopt;
}

const tests::ChunkPosition &AlignHostileFileTest::ChunkAt(qsizetype position) const
{
    return *std::find_if(Chunks.begin(), Chunks.end(),
                         [position](const tests::ChunkPosition &chunk) { return position < chunk.End; });
}

void AlignHostileFileTest::initTestCase()
{
    tools::AlignmentGenerator generator(20261101);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    for (std::uint8_t dataSets = 1; dataSets <= 3; ++dataSets) {
        AlignTable *table = store.AppendNewTable(store.Tables);
        QVERIFY(table != nullptr);
        generator.SetHwId(*table, generator.ReadableHwId());
        table->AlignedAt = 1'700'000'000;
        table->DataSetCount = dataSets;
        for (std::size_t set = 0; set < dataSets; ++set)
            generator.FillDataSet(table->DataSets[set], 120);
    }
    std::ostringstream stream(std::ios::binary);
    QCOMPARE(store.Save(stream), AlignResult::Ok);
    File = QByteArray::fromStdString(stream.str());
    Chunks = tests::ChunksOf(File);
}

void AlignHostileFileTest::theFileIsWhatTheTestsNeed()
{
    QCOMPARE(Chunks.size(), qsizetype{1 + 3 + 6});
    QCOMPARE(Chunks.last().End, File.size());
    QCOMPARE(Load(File), AlignResult::Ok);
    // No payload passes whatever its stored CRC is, or the checks below would prove nothing.
    for (const tests::ChunkPosition &chunk : std::as_const(Chunks))
        QVERIFY(tests::PayloadCrc(File, chunk) != 0);
}

void AlignHostileFileTest::everyTruncationGives14Or9AndLeavesTheListEmpty()
{
    for (qsizetype length = 0; length < File.size(); ++length) {
        // A version byte or a length that is missing gives 9, a payload or a CRC 14.
        const bool inPayloadOrCrc = length >= ChunkAt(length).Payload;
        const AlignResult expected = inPayloadOrCrc ? AlignResult::FileCrcFailed : AlignResult::FileError;
        const std::optional<AlignResult> result = Load(File.left(length));
        QVERIFY2(result == expected, qPrintable(u"length %1"_s.arg(length)));
    }
}

void AlignHostileFileTest::everyFlippedBit()
{
    for (qsizetype position = 0; position < File.size(); ++position) {
        const tests::ChunkPosition &chunk = ChunkAt(position);
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray bytes = File;
            bytes[position] = static_cast<char>(bytes.at(position) ^ (1 << bit));
            const std::optional<AlignResult> result = Load(bytes);
            const QByteArray place = u"bit %1 of byte %2"_s.arg(bit).arg(position).toLatin1();
            QVERIFY2(result.has_value(), place.constData());
            if (chunk.isVersion(position)) {
                QVERIFY2(result == AlignResult::VersionMismatch, place.constData());
            } else if (chunk.isPayload(position)) {
                const bool lenient = tests::PayloadCrc(bytes, chunk) == 0;
                QVERIFY2(lenient || result == AlignResult::FileCrcFailed, place.constData());
            } else if (chunk.isCrc(position)) {
                QVERIFY2(result == AlignResult::FileCrcFailed, place.constData());
            } else {
                // A wrong length: too long, beyond the end, or another CRC; now and then the CRC matches by
                // chance.
                QVERIFY(chunk.isLength(position));
                QVERIFY2(result != AlignResult::Ok, place.constData());
            }
        }
    }
}

void AlignHostileFileTest::everyLength_data()
{
    QTest::addColumn<int>("chunkIndex");
    QTest::newRow("file header") << 0;
    QTest::newRow("table") << 1;
    QTest::newRow("data set") << 2;
}

void AlignHostileFileTest::everyLength()
{
    // The length claims anything up to 65,535; behind it come more bytes than any length announces.
    QFETCH(int, chunkIndex);
    const tests::ChunkPosition &chunk = Chunks.at(chunkIndex);
    const int step = 37; // not every one, for the sake of time; the limits are visited all the same
    std::set<int> lengths = {16383, 16384, 16387, 16388, 16389, 65534, 65535};
    for (int length = 0; length < 65536; length += step)
        lengths.insert(length);
    QByteArray bytes = File + QByteArray(70000, '\x5A');
    for (const int length : lengths) {
        bytes[chunk.Payload - 2] = static_cast<char>(length);
        bytes[chunk.Payload - 1] = static_cast<char>(length >> 8);
        const std::optional<AlignResult> result = Load(bytes);
        QVERIFY2(result.has_value(), qPrintable(QString::number(length)));
        const int limit = chunk.IsDataSet ? 16384 : 16389;
        if (length >= limit)
            QVERIFY2(result == AlignResult::InternalError, qPrintable(QString::number(length)));
        else if (length != chunk.Crc - chunk.Payload)
            QVERIFY2(result != AlignResult::Ok, qPrintable(QString::number(length)));
    }
}

void AlignHostileFileTest::everyCountOfDataSetsForEveryType_data()
{
    QTest::addColumn<int>("sdrType");
    QTest::addColumn<int>("capacity");
    QTest::newRow("None") << 0 << 0;
    QTest::newRow("LimeMini") << 1 << 6;
    QTest::newRow("LimeUsb") << 2 << 12;
    QTest::newRow("RTL-SDR") << 3 << 1;
    QTest::newRow("AirSpy") << 4 << 4;
    QTest::newRow("type 5") << 5 << 0;
    QTest::newRow("type 255") << 255 << 0;
}

void AlignHostileFileTest::everyCountOfDataSetsForEveryType()
{
    QFETCH(int, sdrType);
    QFETCH(int, capacity);
    const QByteArray dataSet = tests::WordCrcChunk(QByteArray("\1\2\3\4\5\6\7\x8\0\0", 10));
    for (int count = 0; count <= 255; ++count) {
        const QByteArray bytes = tests::HeaderChunk(static_cast<SdrType>(sdrType), 1) +
                                 tests::TableChunk(count, count) + dataSet.repeated(count);
        QCOMPARE(Load(bytes), count <= capacity ? AlignResult::Ok : AlignResult::InternalError);
    }
}

void AlignHostileFileTest::arbitraryBytes()
{
    // Behind a valid header, so that the reader gets somewhere.
    tools::AlignmentGenerator generator(7);
    for (int round = 0; round < 500; ++round) {
        QByteArray bytes = tests::HeaderChunk(generator.AnySdrType(), 3);
        const auto length = static_cast<qsizetype>(generator.UpTo(2000));
        for (qsizetype i = 0; i < length; ++i)
            bytes += static_cast<char>(i == 0 ? 5 : generator.UpTo(255));
        const std::optional<AlignResult> result = Load(bytes);
        QVERIFY(result.has_value());
        QVERIFY(result != AlignResult::Ok);
    }
}

TARNVIK_TEST_MAIN(AlignHostileFileTest, QCoreApplication)
#include "AlignHostileFileTest.moc"
