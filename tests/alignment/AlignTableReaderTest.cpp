// SPDX-License-Identifier: MIT
// Reading a file table by table: the same tables and the same results as loading it whole.
#include "alignment/AlignTableReader.h"

#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::string SavedInMemory(AlignStore &store)
{
    std::ostringstream stream(std::ios::binary);
    return store.Save(stream) == AlignResult::Ok ? stream.str() : std::string();
}

/// What checking table by table gives, and the tables without their data sets.
AlignResult CheckAll(AlignTableReader &reader, AlignResult opened, std::vector<AlignTable> &tables)
{
    AlignResult result = opened;
    while (result == AlignResult::Ok && reader.hasNext()) {
        tables.emplace_back();
        result = reader.CheckNext(tables.back());
    }
    return result;
}

/// What reading table by table gives, and the tables that were read until then.
AlignResult ReadAll(AlignTableReader &reader, AlignResult opened, AlignTableList &tables)
{
    AlignStore store;
    store.SdrType = reader.sdrType();
    AlignResult result = opened;
    while (result == AlignResult::Ok && reader.hasNext()) {
        AlignTable *const table = store.AppendNewTable(tables);
        if (table == nullptr)
            return AlignResult::InternalError;
        result = reader.ReadNext(*table);
    }
    return result;
}

} // namespace

class AlignTableReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theTablesAreThoseOfTheFile();
    void oneTableServesForAll();
    void everyDamagedFileGivesTheResultOfLoadingIt();
    void everyTruncatedFileGivesTheResultOfLoadingIt();
    void aCheckGivesTheTablesWithoutTheirDataSets();
    void theChunkThatCannotBeReadIsKnownByItsPlace();
    void afterAFailureThereIsNoNextTable();
    void aFileWithoutTablesHasNone();
    void aMissingFileGives9();
    void aFolderGives9();
    void aReaderServesForSeveralFiles();
    void nothingOfTheFileBeforeIsLeftAfterAFailedOpen_data();
    void nothingOfTheFileBeforeIsLeftAfterAFailedOpen();

private:
    [[nodiscard]] static AlignResult loaded(const std::string &bytes, AlignTableList &tables);

    std::unique_ptr<AlignStore> Store;
    std::unique_ptr<AlignTableReader> Reader;
};

void AlignTableReaderTest::init()
{
    tools::AlignmentGenerator generator(21);
    Reader = std::make_unique<AlignTableReader>();
    Store = std::make_unique<AlignStore>();
    Store->SdrType = SdrType::AirSpy;
    for (const std::size_t payload : {400, 10, 90})
        QVERIFY(generator.AppendTable(*Store, payload) != nullptr);
}

AlignResult AlignTableReaderTest::loaded(const std::string &bytes, AlignTableList &tables)
{
    AlignStore store;
    std::istringstream stream(bytes, std::ios::binary);
    return store.Load(stream, tables, true);
}

void AlignTableReaderTest::theTablesAreThoseOfTheFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file.ad"_s);
    QCOMPARE(Store->SaveFile(path), AlignResult::Ok);
    const AlignResult opened = Reader->Open(path);
    QCOMPARE(opened, AlignResult::Ok);
    QCOMPARE(Reader->sdrType(), SdrType::AirSpy);
    QCOMPARE(Reader->tableCount(), quint16{3});
    AlignTableList tables;
    QCOMPARE(ReadAll(*Reader, opened, tables), AlignResult::Ok);
    QCOMPARE(tests::Difference(tables, Store->Tables), QString());
    QVERIFY(!Reader->hasNext());
}

void AlignTableReaderTest::oneTableServesForAll()
{
    std::istringstream stream(SavedInMemory(*Store), std::ios::binary);
    QCOMPARE(Reader->Open(stream), AlignResult::Ok);
    AlignTable table;
    for (const AlignTable &expected : Store->Tables) {
        QVERIFY(Reader->hasNext());
        QCOMPARE(Reader->ReadNext(table), AlignResult::Ok);
        QCOMPARE(tests::Difference(table, expected), QString()); // nothing is left of the table before
    }
    QVERIFY(!Reader->hasNext());
}

void AlignTableReaderTest::everyDamagedFileGivesTheResultOfLoadingIt()
{
    const std::string bytes = SavedInMemory(*Store);
    QVERIFY(bytes.size() > 800);
    for (std::size_t position = 0; position < bytes.size(); ++position) {
        for (const int change : {1, 0x80, 0xFF}) {
            std::string damaged = bytes;
            damaged[position] = static_cast<char>(damaged[position] ^ change);
            AlignTableList expected;
            const AlignResult result = loaded(damaged, expected);
            std::istringstream stream(damaged, std::ios::binary);
            AlignTableList tables;
            const AlignResult opened = Reader->Open(stream);
            QCOMPARE(ReadAll(*Reader, opened, tables), result);
            if (result == AlignResult::Ok)
                QCOMPARE(tests::Difference(tables, expected), QString());
            stream = std::istringstream(damaged, std::ios::binary);
            std::vector<AlignTable> checked;
            const AlignResult openedAgain = Reader->Open(stream);
            QCOMPARE(CheckAll(*Reader, openedAgain, checked), result);
        }
    }
}

void AlignTableReaderTest::everyTruncatedFileGivesTheResultOfLoadingIt()
{
    const std::string bytes = SavedInMemory(*Store);
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        AlignTableList ignored;
        const AlignResult result = loaded(bytes.substr(0, size), ignored);
        std::istringstream stream(bytes.substr(0, size), std::ios::binary);
        AlignTableList tables;
        const AlignResult opened = Reader->Open(stream);
        QCOMPARE(ReadAll(*Reader, opened, tables), result);
        stream = std::istringstream(bytes.substr(0, size), std::ios::binary);
        std::vector<AlignTable> checked;
        const AlignResult openedAgain = Reader->Open(stream);
        QCOMPARE(CheckAll(*Reader, openedAgain, checked), result);
    }
}

void AlignTableReaderTest::aCheckGivesTheTablesWithoutTheirDataSets()
{
    std::istringstream stream(SavedInMemory(*Store), std::ios::binary);
    std::vector<AlignTable> checked;
    const AlignResult opened = Reader->Open(stream);
    QCOMPARE(CheckAll(*Reader, opened, checked), AlignResult::Ok);
    QCOMPARE(checked.size(), std::size_t{3});
    std::size_t i = 0;
    for (const AlignTable &expected : Store->Tables) {
        QCOMPARE(checked[i].HwId, expected.HwId);
        QCOMPARE(checked[i].AlignedAt, expected.AlignedAt);
        QCOMPARE(checked[i].SdrType, SdrType::AirSpy);
        QCOMPARE(checked[i].Version, AlignVersion);
        QCOMPARE(checked[i].DataSetCapacity, expected.DataSetCapacity);
        QCOMPARE(checked[i].DataSetCount, expected.DataSetCount);
        QCOMPARE(checked[i].DataSets.size(), std::size_t{0});
        ++i;
    }
}

void AlignTableReaderTest::theChunkThatCannotBeReadIsKnownByItsPlace()
{
    const std::string bytes = SavedInMemory(*Store);
    const QList<tests::ChunkPosition> chunks = tests::ChunksOf(QByteArray::fromStdString(bytes));
    QVERIFY(chunks.size() > 1 + 3); // data sets, too
    for (const tests::ChunkPosition &chunk : chunks) {
        std::istringstream stream(bytes.substr(0, static_cast<std::size_t>(chunk.Crc)), std::ios::binary);
        AlignTableList tables;
        const AlignResult opened = Reader->Open(stream);
        QCOMPARE(ReadAll(*Reader, opened, tables), AlignResult::FileCrcFailed);
        QCOMPARE(Reader->chunkBegin(), static_cast<std::uint64_t>(chunk.Begin));
        QCOMPARE(Reader->bytesRead(), static_cast<std::uint64_t>(chunk.Crc));
    }
    std::istringstream stream(bytes + "more", std::ios::binary);
    AlignTableList tables;
    const AlignResult opened = Reader->Open(stream);
    QCOMPARE(ReadAll(*Reader, opened, tables), AlignResult::Ok);
    QCOMPARE(Reader->chunkBegin(), static_cast<std::uint64_t>(chunks.last().Begin));
    QCOMPARE(Reader->bytesRead(), std::uint64_t{bytes.size()}); // what lies behind is not looked at
}

void AlignTableReaderTest::afterAFailureThereIsNoNextTable()
{
    const std::string bytes = SavedInMemory(*Store);
    std::istringstream stream(bytes.substr(0, bytes.size() / 2), std::ios::binary);
    QCOMPARE(Reader->Open(stream), AlignResult::Ok);
    AlignTable table;
    AlignResult result = AlignResult::Ok;
    while (Reader->hasNext() && result == AlignResult::Ok)
        result = Reader->ReadNext(table);
    QVERIFY(result != AlignResult::Ok);
    QVERIFY(!Reader->hasNext());
    QCOMPARE(Reader->tableCount(), quint16{3}); // what the file announces
}

void AlignTableReaderTest::aFileWithoutTablesHasNone()
{
    std::istringstream stream(tests::HeaderChunk(SdrType::RtlSdr, 0).toStdString(), std::ios::binary);
    QCOMPARE(Reader->Open(stream), AlignResult::Ok);
    QCOMPARE(Reader->sdrType(), SdrType::RtlSdr);
    QVERIFY(!Reader->hasNext());
}

void AlignTableReaderTest::aMissingFileGives9()
{
    const QTemporaryDir folder;
    QCOMPARE(Reader->Open(folder.filePath(u"missing.ad"_s)), AlignResult::FileError);
    QVERIFY(!Reader->hasNext());
    QCOMPARE(Reader->sdrType(), SdrType::None);
}

void AlignTableReaderTest::aFolderGives9()
{
    const QTemporaryDir folder;
    QCOMPARE(Reader->Open(folder.path()), AlignResult::FileError);
    QVERIFY(!Reader->hasNext());
}

void AlignTableReaderTest::aReaderServesForSeveralFiles()
{
    const QTemporaryDir folder;
    QCOMPARE(Store->SaveFile(folder.filePath(u"good.ad"_s)), AlignResult::Ok);
    QVERIFY(tests::WriteFileBytes(folder.filePath(u"bad.ad"_s), "rubbish"));
    AlignTable table;
    QCOMPARE(Reader->Open(folder.filePath(u"good.ad"_s)), AlignResult::Ok);
    QCOMPARE(Reader->ReadNext(table), AlignResult::Ok);
    QCOMPARE(Reader->Open(folder.filePath(u"bad.ad"_s)), AlignResult::VersionMismatch);
    QVERIFY(!Reader->hasNext());
    QCOMPARE(Reader->Open(folder.filePath(u"missing.ad"_s)), AlignResult::FileError);
    QVERIFY(!Reader->hasNext());
    AlignTableList tables;
    const AlignResult opened = Reader->Open(folder.filePath(u"good.ad"_s));
    QCOMPARE(ReadAll(*Reader, opened, tables), AlignResult::Ok);
    QCOMPARE(tests::Difference(tables, Store->Tables), QString());
}

void AlignTableReaderTest::nothingOfTheFileBeforeIsLeftAfterAFailedOpen_data()
{
    using Open = AlignResult (*)(AlignTableReader &);
    QTest::addColumn<Open>("open");
    QTest::addColumn<AlignResult>("result");
    QTest::newRow("a missing file") << Open([](AlignTableReader &reader) {
        return reader.Open(QTemporaryDir().filePath(u"missing.ad"_s));
    }) << AlignResult::FileError;
    QTest::newRow("a stream that holds no file") << Open([](AlignTableReader &reader) {
        std::istringstream rubbish("rubbish", std::ios::binary);
        return reader.Open(rubbish);
    }) << AlignResult::VersionMismatch;
    QTest::newRow("a stream that ends within the header") << Open([](AlignTableReader &reader) {
        std::istringstream beginning("\5", std::ios::binary);
        return reader.Open(beginning);
    }) << AlignResult::FileError;
}

void AlignTableReaderTest::nothingOfTheFileBeforeIsLeftAfterAFailedOpen()
{
    using Open = AlignResult (*)(AlignTableReader &);
    QFETCH(Open, open);
    QFETCH(AlignResult, result);
    std::istringstream stream(SavedInMemory(*Store), std::ios::binary);
    QCOMPARE(Reader->Open(stream), AlignResult::Ok);
    QVERIFY(Reader->hasNext());
    QCOMPARE(open(*Reader), result);
    QVERIFY(!Reader->hasNext());
    QCOMPARE(Reader->tableCount(), quint16{0});
    QCOMPARE(Reader->sdrType(), SdrType::None);
}

TARNVIK_TEST_MAIN(AlignTableReaderTest, QCoreApplication)

#include "AlignTableReaderTest.moc"
