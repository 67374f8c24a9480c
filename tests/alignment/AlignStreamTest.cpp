// SPDX-License-Identifier: MIT
// Loading from and saving to streams: in memory, and on a device that fails at any byte.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <istream>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

using namespace Qt::StringLiterals;

namespace {

/// A device that takes a number of bytes and refuses the next one. What it took stays.
class FillingDevice : public std::streambuf
{
public:
    explicit FillingDevice(std::size_t room, bool flushes = true) : Room(room), Flushes(flushes) {}

    std::string Taken;

protected:
    int_type overflow(int_type byte) override
    {
        if (Taken.size() >= Room)
            return traits_type::eof();
        Taken.push_back(traits_type::to_char_type(byte));
        return byte;
    }
    int sync() override { return Flushes ? 0 : -1; }

private:
    std::size_t Room;
    bool Flushes;
};

/// A device that gives the first bytes of a file and fails then.
class BreakingDevice : public std::streambuf
{
public:
    BreakingDevice(std::string bytes, std::size_t given) : Bytes(std::move(bytes))
    {
        setg(Bytes.data(), Bytes.data(), Bytes.data() + given);
    }

private:
    std::string Bytes;
};

/// A store with two tables; the first has data sets of different sizes, an empty one among them.
bool FillStore(AlignStore &store)
{
    store.SdrType = SdrType::AirSpy;
    tools::AlignmentGenerator generator(8);
    AlignTable *const table = store.AppendNewTable(store.Tables);
    if (table == nullptr)
        return false;
    generator.SetHwId(*table, "ABC");
    table->DataSetCount = 3;
    generator.FillDataSet(table->DataSets[0], 300);
    generator.FillDataSet(table->DataSets[2], 60);
    return generator.AppendEmptyTables(store, 1);
}

std::string SavedInMemory(AlignStore &store)
{
    std::ostringstream stream(std::ios::binary);
    return store.Save(stream) == AlignResult::Ok ? stream.str() : std::string();
}

/// What loading the first `given` bytes of a file gives: a chunk whose version or length is incomplete is a
/// file error, an incomplete payload or CRC fails the CRC check.
AlignResult ExpectedOf(const QByteArray &file, qsizetype given)
{
    for (const tests::ChunkPosition &chunk : tests::ChunksOf(file)) {
        if (given < chunk.Payload)
            return AlignResult::FileError;
        if (given < chunk.End)
            return AlignResult::FileCrcFailed;
    }
    return AlignResult::Ok;
}

} // namespace

class AlignStreamTest : public QObject
{
    Q_OBJECT

private slots:
    void aStreamHoldsTheBytesOfTheFile();
    void whatIsSavedInMemoryIsLoadedFromMemory();
    void loadingTakesOverTheTypeOnlyWhenToldTo();
    void savingFailsWhereverTheDeviceFails();
    void savingFailsWhenTheLastBytesDoNotGoOut();
    void savingRefusesBeforeTheFirstByte_data();
    void savingRefusesBeforeTheFirstByte();
    void loadingFailsWhereverTheDeviceFails();
    void loadingFromAStreamThatHasFailedGives9();
};

void AlignStreamTest::aStreamHoldsTheBytesOfTheFile()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file.ad"_s);
    QCOMPARE(store.SaveFile(path), AlignResult::Ok);
    QCOMPARE(QByteArray::fromStdString(SavedInMemory(store)), tests::FileBytes(path));
}

void AlignStreamTest::whatIsSavedInMemoryIsLoadedFromMemory()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    std::istringstream stream(SavedInMemory(store), std::ios::binary);
    AlignStore loaded;
    QVERIFY(tests::AppendTableWithId(loaded, loaded.Tables, "to be replaced") != nullptr);
    QCOMPARE(loaded.Load(stream, loaded.Tables, true), AlignResult::Ok);
    QCOMPARE(tests::Difference(loaded.Tables, store.Tables), QString());
}

void AlignStreamTest::loadingTakesOverTheTypeOnlyWhenToldTo()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    const std::string bytes = SavedInMemory(store);
    AlignStore loaded;
    loaded.SdrType = SdrType::RtlSdr;
    std::istringstream first(bytes, std::ios::binary);
    QCOMPARE(loaded.Load(first, loaded.ImportTables, false), AlignResult::TableWrongSdrType);
    QVERIFY(tests::IsEmpty(loaded.ImportTables));
    std::istringstream second(bytes, std::ios::binary);
    QCOMPARE(loaded.Load(second, loaded.ImportTables, true), AlignResult::Ok);
    QCOMPARE(loaded.SdrType, SdrType::AirSpy);
}

void AlignStreamTest::savingFailsWhereverTheDeviceFails()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    const std::string whole = SavedInMemory(store);
    QVERIFY(whole.size() > 500);
    for (std::size_t room = 0; room <= whole.size(); ++room) {
        FillingDevice device(room);
        std::ostream stream(&device);
        QCOMPARE(store.Save(stream), room < whole.size() ? AlignResult::FileError : AlignResult::Ok);
        QCOMPARE(device.Taken, whole.substr(0, room));
    }
}

void AlignStreamTest::savingFailsWhenTheLastBytesDoNotGoOut()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    FillingDevice device(std::string::npos, false);
    std::ostream stream(&device);
    QCOMPARE(store.Save(stream), AlignResult::FileError);
}

void AlignStreamTest::savingRefusesBeforeTheFirstByte_data()
{
    QTest::addColumn<int>("dataSets"); // of the only table; -1: there is no table
    QTest::addColumn<AlignResult>("result");
    QTest::newRow("no table") << -1 << AlignResult::ListIsEmpty;
    QTest::newRow("more data sets than there are") << 5 << AlignResult::InternalError;
    QTest::newRow("as many data sets as there are") << 4 << AlignResult::Ok;
}

void AlignStreamTest::savingRefusesBeforeTheFirstByte()
{
    QFETCH(int, dataSets);
    QFETCH(AlignResult, result);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    if (dataSets >= 0) {
        AlignTable *const table = store.AppendNewTable(store.Tables);
        QVERIFY(table != nullptr);
        table->DataSetCount = static_cast<std::uint8_t>(dataSets);
    }
    std::ostringstream stream(std::ios::binary);
    QCOMPARE(store.Save(stream), result);
    QCOMPARE(stream.str().empty(), result != AlignResult::Ok);
}

void AlignStreamTest::loadingFailsWhereverTheDeviceFails()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    const std::string whole = SavedInMemory(store);
    const QByteArray file = QByteArray::fromStdString(whole);
    for (std::size_t given = 0; given <= whole.size(); ++given) {
        BreakingDevice device(whole, given);
        std::istream stream(&device);
        AlignStore loaded;
        QVERIFY(tests::AppendTableWithId(loaded, loaded.Tables, "to be replaced") != nullptr);
        const AlignResult result = loaded.Load(stream, loaded.Tables, true);
        QCOMPARE(result, ExpectedOf(file, static_cast<qsizetype>(given)));
        QCOMPARE(tests::IsEmpty(loaded.Tables), result != AlignResult::Ok);
    }
}

void AlignStreamTest::loadingFromAStreamThatHasFailedGives9()
{
    AlignStore store;
    QVERIFY(FillStore(store));
    std::istringstream stream(SavedInMemory(store), std::ios::binary);
    stream.setstate(std::ios::badbit);
    QCOMPARE(store.Load(stream, store.Tables, true), AlignResult::FileError);
    QVERIFY(tests::IsEmpty(store.Tables));
}

TARNVIK_TEST_MAIN(AlignStreamTest, QCoreApplication)

#include "AlignStreamTest.moc"
