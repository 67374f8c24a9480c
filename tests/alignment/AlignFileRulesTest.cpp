// SPDX-License-Identifier: MIT
// The finer rules of loading and saving: what comes before what, what is lenient, and what a save refuses.
#include "alignment/AlignStore.h"

#include "alignment/Crc.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

using tests::ByteCrcChunk;
using tests::HeaderChunk;
using tests::TableChunk;
using tests::WordCrcChunk;

namespace {

AlignResult Load(const QByteArray &bytes, AlignStore &store, bool adoptSdrType = true)
{
    std::istringstream stream(bytes.toStdString(), std::ios::binary);
    return store.Load(stream, store.Tables, adoptSdrType);
}

/// The chunk with the last byte of its CRC changed.
QByteArray WithWrongCrc(QByteArray chunk)
{
    chunk.back() = static_cast<char>(chunk.back() ^ 0x55);
    return chunk;
}

/// The payload of a table ABC that states `version`, without data sets.
QByteArray TablePayload(int version)
{
    QByteArray payload(139, '\0');
    payload[0] = static_cast<char>(version);
    payload.replace(1, 3, "ABC");
    return payload;
}

/// A data-set payload whose CRC is 0: the fields and then four bytes that take the CRC back.
QByteArray PayloadWithCrc0(QByteArray fields)
{
    const auto crc = [](const QByteArray &bytes) {
        return Crc32({reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                      static_cast<std::size_t>(bytes.size())});
    };
    const quint32 rest = crc(fields);
    for (int shift = 24; shift >= 0; shift -= 8)
        fields.append(static_cast<char>(rest >> shift));
    return fields;
}

} // namespace

class AlignFileRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void theVersionOfATableComesFromItsPayload();
    void aWrongVersionComesBeforeAWrongCrc_data();
    void aWrongVersionComesBeforeAWrongCrc();
    void anotherTypeIsToldBeforeAnythingBehindTheHeaderIsRead_data();
    void anotherTypeIsToldBeforeAnythingBehindTheHeaderIsRead();
    void aPayloadWithCrc0NeedsItsStoredCrc_data();
    void aPayloadWithCrc0NeedsItsStoredCrc();
    void thePayloadOfLength0IsAcceptedWithAnyCrc_data();
    void thePayloadOfLength0IsAcceptedWithAnyCrc();
    void aStoredCrcOf0IsNoLicence_data();
    void aStoredCrcOf0IsNoLicence();
    void aHeaderThatFailsLeavesTheTypeOfTheStore_data();
    void aHeaderThatFailsLeavesTheTypeOfTheStore();
    void theHeaderTakesTheFileVersion();
    void aSaveRefusesWhatALoadWouldRefuse_data();
    void aSaveRefusesWhatALoadWouldRefuse();
    void theBufferIsClearedAtASave();
    void aCountThatDoesNotFitIsRefusedAtEveryPlace_data();
    void aCountThatDoesNotFitIsRefusedAtEveryPlace();
    void anIdLongerThanTheFieldIsNotCut();
    void theCountNeverRunsBelow0();
};

void AlignFileRulesTest::theVersionOfATableComesFromItsPayload()
{
    AlignStore store;
    const QByteArray file = HeaderChunk(SdrType::RtlSdr, 1) + ByteCrcChunk(TablePayload(7), 5);
    QCOMPARE(Load(file, store), AlignResult::Ok);
    QCOMPARE(store.Tables.Head->Table->Version, quint8{7});
}

void AlignFileRulesTest::aWrongVersionComesBeforeAWrongCrc_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray header = HeaderChunk(SdrType::RtlSdr, 1);
    QTest::newRow("file header") << WithWrongCrc(ByteCrcChunk(header.mid(3, 3), 4));
    QTest::newRow("table") << header + WithWrongCrc(ByteCrcChunk(TablePayload(5), 4));
    QTest::newRow("file header without payload") << QByteArray("\4");
}

void AlignFileRulesTest::aWrongVersionComesBeforeAWrongCrc()
{
    QFETCH(QByteArray, file);
    AlignStore store;
    QCOMPARE(Load(file, store), AlignResult::VersionMismatch);
    QVERIFY(tests::IsEmpty(store.Tables));
}

void AlignFileRulesTest::anotherTypeIsToldBeforeAnythingBehindTheHeaderIsRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("a whole file") << tests::FileOf150Bytes();
    QTest::newRow("a file without tables") << HeaderChunk(SdrType::LimeMini, 0);
    QTest::newRow("nothing behind the header") << HeaderChunk(SdrType::LimeMini, 1);
    QTest::newRow("rubbish behind the header") << HeaderChunk(SdrType::LimeMini, 1) + "rubbish";
    QTest::newRow("a table of another version behind the header")
        << HeaderChunk(SdrType::LimeMini, 1) + ByteCrcChunk(TablePayload(4), 4);
}

void AlignFileRulesTest::anotherTypeIsToldBeforeAnythingBehindTheHeaderIsRead()
{
    QFETCH(QByteArray, file);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QCOMPARE(Load(file, store, false), AlignResult::TableWrongSdrType);
    QCOMPARE(store.SdrType, SdrType::RtlSdr);
}

void AlignFileRulesTest::aPayloadWithCrc0NeedsItsStoredCrc_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray header = HeaderChunk(SdrType::None, 0); // a payload of zeros has the CRC 0
    QCOMPARE(header.back(), '\0');
    QTest::newRow("file header") << header;
    const QByteArray before = HeaderChunk(SdrType::RtlSdr, 1) + TableChunk(1, 1);
    QTest::newRow("data set") << before + WordCrcChunk(PayloadWithCrc0(tests::DataSetPayload(0)));
}

void AlignFileRulesTest::aPayloadWithCrc0NeedsItsStoredCrc()
{
    QFETCH(QByteArray, file);
    AlignStore store;
    QCOMPARE(Load(file, store), AlignResult::Ok);
    QCOMPARE(Load(WithWrongCrc(file), store), AlignResult::Ok); // whatever is stored
    QCOMPARE(Load(file.chopped(1), store), AlignResult::FileCrcFailed);
}

void AlignFileRulesTest::thePayloadOfLength0IsAcceptedWithAnyCrc_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray header = HeaderChunk(SdrType::RtlSdr, 1);
    QTest::newRow("file header") << WithWrongCrc(ByteCrcChunk(QByteArray()));
    QTest::newRow("table") << header + WithWrongCrc(ByteCrcChunk(QByteArray()));
    QTest::newRow("data set") << header + TableChunk(1, 1) + WithWrongCrc(WordCrcChunk(QByteArray()));
}

void AlignFileRulesTest::thePayloadOfLength0IsAcceptedWithAnyCrc()
{
    QFETCH(QByteArray, file);
    AlignStore store;
    // Not the CRC is wrong: the payload lacks its fields.
    QCOMPARE(Load(file, store), AlignResult::InternalError);
}

void AlignFileRulesTest::aStoredCrcOf0IsNoLicence_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray header = HeaderChunk(SdrType::RtlSdr, 1);
    const QByteArray table = TableChunk(1, 1);
    const QByteArray dataSet = WordCrcChunk(tests::DataSetPayload(1));
    QTest::newRow("file header") << header.chopped(1) + QByteArray(1, '\0');
    QTest::newRow("table") << header + table.chopped(1) + QByteArray(1, '\0');
    QTest::newRow("data set") << header + table + dataSet.chopped(4) + QByteArray(4, '\0');
}

void AlignFileRulesTest::aStoredCrcOf0IsNoLicence()
{
    QFETCH(QByteArray, file);
    AlignStore store;
    QCOMPARE(Load(file, store), AlignResult::FileCrcFailed);
}

void AlignFileRulesTest::aHeaderThatFailsLeavesTheTypeOfTheStore_data()
{
    QTest::addColumn<QByteArray>("header");
    const QByteArray header = HeaderChunk(SdrType::LimeMini, 1);
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("of another version") << ByteCrcChunk(header.mid(3, 3), 4);
    QTest::newRow("with a wrong CRC") << WithWrongCrc(header);
    QTest::newRow("too short for the number of tables") << ByteCrcChunk(header.mid(3, 2));
}

void AlignFileRulesTest::aHeaderThatFailsLeavesTheTypeOfTheStore()
{
    QFETCH(QByteArray, header);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(Load(header, store) != AlignResult::Ok);
    QCOMPARE(store.SdrType, SdrType::RtlSdr);
}

void AlignFileRulesTest::theHeaderTakesTheFileVersion()
{
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    store.FileVersion = 6;
    std::ostringstream stream(std::ios::binary);
    QCOMPARE(store.Save(stream), AlignResult::Ok);
    QCOMPARE(int{stream.str().at(0)}, 6);
    QCOMPARE(int{stream.str().at(7)}, 5);  // the table's version
    QCOMPARE(int{stream.str().at(10)}, 5); // the same in its payload
}

void AlignFileRulesTest::aSaveRefusesWhatALoadWouldRefuse_data()
{
    using Spoil = void (*)(AlignStore &);
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<AlignResult>("result");
    QTest::newRow("nothing spoilt") << Spoil([](AlignStore &) {}) << AlignResult::Ok;
    QTest::newRow("the first table of another version")
        << Spoil([](AlignStore &store) { store.Tables.Head->Table->Version = 4; })
        << AlignResult::VersionMismatch;
    QTest::newRow("the last table of another version")
        << Spoil([](AlignStore &store) { store.Tables.Tail->Table->Version = 0; })
        << AlignResult::VersionMismatch;
    QTest::newRow("a table of another version with too many data sets") << Spoil([](AlignStore &store) {
        store.Tables.Tail->Table->Version = 4;
        store.Tables.Tail->Table->DataSetCount = 5;
    }) << AlignResult::VersionMismatch;
    QTest::newRow("as many data sets as the table has")
        << Spoil([](AlignStore &store) { store.Tables.Tail->Table->DataSetCount = 4; }) << AlignResult::Ok;
    QTest::newRow("more data sets than the table has")
        << Spoil([](AlignStore &store) { store.Tables.Tail->Table->DataSetCount = 5; })
        << AlignResult::InternalError;
    QTest::newRow("more data sets than there are, though table and store claim them")
        << Spoil([](AlignStore &store) {
               store.Tables.Tail->Table->DataSetCount = 5;
               store.Tables.Tail->Table->DataSetCapacity = 12;
               store.SdrType = SdrType::LimeUsb;
           })
        << AlignResult::InternalError;
    QTest::newRow("more data sets than the store's type has") << Spoil([](AlignStore &store) {
        store.Tables.Tail->Table->DataSetCount = 2;
        store.SdrType = SdrType::RtlSdr;
    }) << AlignResult::InternalError;
    QTest::newRow("as many data sets as the store's type has") << Spoil([](AlignStore &store) {
        store.Tables.Tail->Table->DataSetCount = 1;
        store.SdrType = SdrType::RtlSdr;
    }) << AlignResult::Ok;
    QTest::newRow("a data set in a store of no type") << Spoil([](AlignStore &store) {
        store.Tables.Tail->Table->DataSetCount = 1;
        store.SdrType = SdrType::None;
    }) << AlignResult::InternalError;
}

void AlignFileRulesTest::aSaveRefusesWhatALoadWouldRefuse()
{
    using Spoil = void (*)(AlignStore &);
    QFETCH(Spoil, spoil);
    QFETCH(AlignResult, result);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    for (const char *id : {"A", "B", "C"})
        QVERIFY(tests::AppendTableWithId(store, store.Tables, id) != nullptr);
    spoil(store);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file.ad"_s);
    QVERIFY(tests::WriteFileBytes(path, "untouched"));
    QCOMPARE(store.SaveFile(path), result);
    if (result != AlignResult::Ok) {
        QCOMPARE(tests::FileBytes(path), QByteArray("untouched"));
        return;
    }
    AlignStore again;
    QCOMPARE(again.LoadFile(path, again.Tables, true), AlignResult::Ok);
}

void AlignFileRulesTest::theBufferIsClearedAtASave()
{
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    store.ChunkBuffer.Bytes.fill(0xFF);
    std::ostringstream stream(std::ios::binary);
    QCOMPARE(store.Save(stream), AlignResult::Ok);
    QVERIFY(std::all_of(store.ChunkBuffer.Bytes.begin() + 139, store.ChunkBuffer.Bytes.end(),
                        [](auto byte) { return byte == 0; }));
}

void AlignFileRulesTest::aCountThatDoesNotFitIsRefusedAtEveryPlace_data()
{
    using Spoil = void (*)(AlignDataSet &);
    QTest::addColumn<Spoil>("spoil");
    QTest::newRow("frequency points") << Spoil([](AlignDataSet &set) { set.FreqPointCount = 101; });
    QTest::newRow("sample-rate points of the first frequency point")
        << Spoil([](AlignDataSet &set) { set.FreqPoints[0].SampleRatePointCount = 11; });
    QTest::newRow("sample-rate points of the last frequency point")
        << Spoil([](AlignDataSet &set) { set.FreqPoints[99].SampleRatePointCount = 11; });
    QTest::newRow("gain entries of the first sample-rate point")
        << Spoil([](AlignDataSet &set) { set.FreqPoints[0].SampleRatePoints[0].GainEntryCount = 51; });
    QTest::newRow("gain entries of the last sample-rate point")
        << Spoil([](AlignDataSet &set) { set.FreqPoints[99].SampleRatePoints[9].GainEntryCount = 51; });
    QTest::newRow("more than a chunk holds") << Spoil([](AlignDataSet &set) {
        for (AlignFreqPoint &point : set.FreqPoints)
            point.SampleRatePoints[0].GainEntryCount = 20;
    });
}

void AlignFileRulesTest::aCountThatDoesNotFitIsRefusedAtEveryPlace()
{
    using Spoil = void (*)(AlignDataSet &);
    QFETCH(Spoil, spoil);
    for (const std::size_t spoilt : {0, 3}) {
        AlignStore store;
        store.SdrType = SdrType::AirSpy;
        for (const char *id : {"A", "B"})
            QVERIFY(tests::AppendTableWithId(store, store.Tables, id) != nullptr);
        AlignTable &table = *store.Tables.Tail->Table;
        table.DataSetCount = 4;
        for (AlignDataSet &dataSet : table.DataSets) {
            dataSet.FreqPointCount = 100;
            dataSet.FreqPoints[0].SampleRatePointCount = 1;
            dataSet.FreqPoints[99].SampleRatePointCount = 10;
        }
        std::ostringstream good(std::ios::binary);
        QCOMPARE(store.Save(good), AlignResult::Ok);
        for (AlignFreqPoint &point : table.DataSets[spoilt].FreqPoints)
            point.SampleRatePointCount = std::max<std::uint8_t>(point.SampleRatePointCount, 1);
        spoil(table.DataSets[spoilt]);
        std::ostringstream stream(std::ios::binary);
        QCOMPARE(store.Save(stream), AlignResult::InternalError);
        QVERIFY(stream.str().empty());
    }
}

void AlignFileRulesTest::anIdLongerThanTheFieldIsNotCut()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    const std::string full(128, 'x');
    QVERIFY(tests::AppendTableWithId(store, store.ImportTables, full.c_str()) != nullptr);
    const std::vector<AlignSelectionEntry> longer = {{full + 'y', 0}};
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, longer), AlignResult::Ok);
    QVERIFY(tests::IsEmpty(store.Tables));
    const std::vector<AlignSelectionEntry> whole = {{full, 0}};
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, whole), AlignResult::Ok);
    QCOMPARE(store.Tables.Count, quint16{1});
}

void AlignFileRulesTest::theCountNeverRunsBelow0()
{
    AlignStore store;
    for (const char *id : {"A", "B"})
        QVERIFY(tests::AppendTableWithId(store, store.Tables, id) != nullptr);
    store.Tables.Count = 1; // less than there are
    AlignStore::ClearTableByHwId(&store.Tables, "A");
    QCOMPARE(store.Tables.Count, quint16{0});
    AlignStore::ClearTableByHwId(&store.Tables, "B");
    QCOMPARE(store.Tables.Count, quint16{0});
    QVERIFY(tests::IsEmpty(store.Tables));
}

TARNVIK_TEST_MAIN(AlignFileRulesTest, QCoreApplication)

#include "AlignFileRulesTest.moc"
