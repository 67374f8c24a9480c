// SPDX-License-Identifier: MIT
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/AlignmentGenerator.h"
#include "tests/support/TestMain.h"

#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace {

/// Number of non-throwing allocations that still succeed; negative: all.
int allocationsLeft = -1;

bool AllocationFails()
{
    if (allocationsLeft < 0)
        return false;
    if (allocationsLeft == 0)
        return true;
    --allocationsLeft;
    return false;
}

/// Lets `count` non-throwing allocations succeed and all later ones fail, as long as the object lives.
class AllocationLimit
{
public:
    explicit AllocationLimit(int count) { allocationsLeft = count; }
    ~AllocationLimit() { allocationsLeft = -1; }
    Q_DISABLE_COPY_MOVE(AllocationLimit)
};

std::vector<AlignSelectionEntry> Selection(const QList<QByteArray> &hwIds)
{
    std::vector<AlignSelectionEntry> selection;
    for (const QByteArray &hwId : hwIds)
        selection.push_back({hwId.toStdString(), 1'700'000'000});
    return selection;
}

/// What the probe program reports for a removal: all its output, or a text that begins with "failed".
QByteArray OutputOfRemoval(const QStringList &arguments)
{
    QProcess probe;
    probe.start(QStringLiteral(ALIGNMENT_PROBE), QStringList{QStringLiteral("remove")} + arguments);
    if (!probe.waitForFinished() || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return "failed: " + probe.errorString().toUtf8();
    return probe.readAllStandardOutput().replace("\r\n", "\n");
}

} // namespace

// The non-throwing forms that nodes and tables are allocated with, so that a test can make them fail. The
// memory comes from the throwing forms, to which the usual deletes belong.
void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    if (AllocationFails())
        return nullptr;
    try {
        return ::operator new(size);
    } catch (...) {
        return nullptr;
    }
}

void *operator new[](std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    if (AllocationFails())
        return nullptr;
    try {
        return ::operator new[](size);
    } catch (...) {
        return nullptr;
    }
}

class AlignStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void driverNamesAndFileNames();
    void newStoreIsZeroButForItsFileVersion();
    void initTableFillsTheTable_data();
    void initTableFillsTheTable();
    void initTableReplacesWhatTheTableHeld();
    void newTablesAreAppendedAtTheTail();
    void table65536IsRefused();
    void appendingWithoutMemoryAppendsNothing_data();
    void appendingWithoutMemoryAppendsNothing();
    void clearListFreesEverything_data();
    void clearListFreesEverything();

    void clearTableByHwId_data();
    void clearTableByHwId();
    void clearTableByHwIdOnTheOnlyTableLeavesHeadAndTailEmptyAndCount0();
    void clearTableByHwIdKeepsHeadAndTail_data();
    void clearTableByHwIdKeepsHeadAndTail();
    void clearTableByHwIdDoesNothingWithoutListOrId();
    void clearTableByHwIdSkipsANodeWithoutTable();
    void clearTableByHwIdPrintsTheGivenId();
    void clearTableByHwIdWithAnIdThatMatchesNothingPrintsNothing();

    void mergeComparesWholeIds_data();
    void mergeComparesWholeIds();
    void mergeCopiesTheTableByteForByte();
    void mergeKeepsTheOrderOfTheSourceAndAppendsAtTheTail();
    void mergeTwiceAppendsTwice();
    void mergeWhenTheStoresSdrTypeIs0CopiesNothingAndReturns0();
    void mergeStopsSilentlyAtATableOfAnotherCapacity();
    void mergeNeverReadsBeyondASmallerSourceBlock();
    void mergedTableIsIndependentOfItsSource();
    void mergeIntoAFullListGives11();
    void mergeWithoutMemory_data();
    void mergeWithoutMemory();
    void mergeLooksUp65535NamesInAListOf65535Tables();
};

void AlignStoreTest::driverNamesAndFileNames()
{
    QCOMPARE(AlignDriverNames.size(), std::size_t{5});
    QCOMPARE(AlignDriverFileNames.size(), std::size_t{5});
    const QStringList names = {{}, "LimeMini", "LimeUsb", "RTL-SDR", "AirSpy"};
    const QStringList fileNames = {{},
                                   "TarnvikDriver_LimeMini.ad",
                                   "TarnvikDriver_LimeUsb.ad",
                                   "TarnvikDriver_RtlSdr.ad",
                                   "TarnvikDriver_Airspy.ad"};
    for (std::size_t i = 0; i < 5; ++i) {
        QCOMPARE(QString::fromLatin1(AlignDriverNames.at(i)), names.at(static_cast<qsizetype>(i)));
        QCOMPARE(QString::fromLatin1(AlignDriverFileNames.at(i)), fileNames.at(static_cast<qsizetype>(i)));
    }
}

void AlignStoreTest::newStoreIsZeroButForItsFileVersion()
{
    const AlignStore store;
    QCOMPARE(store.FileVersion, std::uint8_t{5});
    QCOMPARE(store.SdrType, SdrType::None);
    QCOMPARE(store.ChunkBuffer.size(), std::size_t{16388});
    QVERIFY(
        std::all_of(store.ChunkBuffer.begin(), store.ChunkBuffer.end(), [](auto byte) { return byte == 0; }));
    QCOMPARE(store.BufferLength, std::uint16_t{0});
    QCOMPARE(store.BufferCursor, std::uint16_t{0});
    QVERIFY(tests::IsEmpty(store.Tables));
    QVERIFY(tests::IsEmpty(store.ImportTables));
}

void AlignStoreTest::initTableFillsTheTable_data()
{
    QTest::addColumn<int>("sdrType");
    QTest::addColumn<int>("capacity");
    QTest::newRow("None has no data sets") << 0 << 0;
    QTest::newRow("LimeMini has 6 data sets") << 1 << 6;
    QTest::newRow("LimeUsb has 12 data sets") << 2 << 12;
    QTest::newRow("RTL-SDR has 1 data set") << 3 << 1;
    QTest::newRow("AirSpy has 4 data sets") << 4 << 4;
    QTest::newRow("5 is treated like None") << 5 << 0;
    QTest::newRow("255 is treated like None") << 255 << 0;
}

void AlignStoreTest::initTableFillsTheTable()
{
    QFETCH(int, sdrType);
    QFETCH(int, capacity);
    const auto type = static_cast<SdrType>(sdrType);
    AlignTable table;
    AlignStore::InitTable(table, type);
    QCOMPARE(table.DataType, std::uint8_t{1});
    QCOMPARE(table.SdrType, type);
    QCOMPARE(table.Version, std::uint8_t{5});
    QVERIFY(std::all_of(table.HwId.begin(), table.HwId.end(), [](char letter) { return letter == '\0'; }));
    QCOMPARE(table.AlignedAt, std::uint64_t{0});
    QCOMPARE(int{table.DataSetCapacity}, capacity);
    QCOMPARE(table.DataSetCount, std::uint8_t{0});
    QCOMPARE(static_cast<int>(table.DataSets.size()), capacity);
    for (const AlignDataSet &dataSet : table.DataSets.all()) {
        QCOMPARE(dataSet.DataType, std::uint8_t{2});
        QCOMPARE(dataSet.SdrType, type);
        const auto *bytes = reinterpret_cast<const unsigned char *>(&dataSet);
        QVERIFY(
            std::all_of(bytes + 2, bytes + sizeof(dataSet), [](unsigned char byte) { return byte == 0; }));
    }
}

void AlignStoreTest::initTableReplacesWhatTheTableHeld()
{
    AlignTable table;
    AlignStore::InitTable(table, SdrType::AirSpy);
    table.HwId[0] = 'A';
    table.AlignedAt = 7;
    table.DataSetCount = 2;
    table.DataSets[0].Word1 = 9;
    AlignStore::InitTable(table, SdrType::RtlSdr);
    AlignTable fresh;
    AlignStore::InitTable(fresh, SdrType::RtlSdr);
    QCOMPARE(tests::Difference(table, fresh), QString());
}

void AlignStoreTest::newTablesAreAppendedAtTheTail()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    const AlignTable *first = store.AppendNewTable(store.Tables);
    QVERIFY(first != nullptr);
    QCOMPARE(first->SdrType, SdrType::RtlSdr);
    QCOMPARE(store.Tables.Head, store.Tables.Tail);
    const AlignTable *second = store.AppendNewTable(store.Tables);
    QCOMPARE(store.Tables.Count, std::uint16_t{2});
    QCOMPARE(store.Tables.Head->Table.get(), first);
    QCOMPARE(store.Tables.Head->Next, store.Tables.Tail);
    QCOMPARE(store.Tables.Tail->Table.get(), second);
    QVERIFY(store.Tables.Tail->Next == nullptr);
    QVERIFY(tests::IsEmpty(store.ImportTables));
}

void AlignStoreTest::table65536IsRefused()
{
    AlignStore store;
    for (int i = 0; i < 65535; ++i)
        QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    const AlignTableNode *tail = store.Tables.Tail;
    QVERIFY(store.AppendNewTable(store.Tables) == nullptr);
    QCOMPARE(store.Tables.Count, std::uint16_t{65535});
    QCOMPARE(store.Tables.Tail, tail);
    QVERIFY(tail->Next == nullptr);
}

void AlignStoreTest::appendingWithoutMemoryAppendsNothing_data()
{
    QTest::addColumn<int>("allocations");
    QTest::newRow("no memory for the node") << 0;
    QTest::newRow("no memory for the table") << 1;
}

void AlignStoreTest::appendingWithoutMemoryAppendsNothing()
{
    QFETCH(int, allocations);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    const AlignTable *appended = nullptr;
    {
        const AllocationLimit limit(allocations);
        appended = store.AppendNewTable(store.Tables);
    }
    QVERIFY(appended == nullptr);
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
    QCOMPARE(store.Tables.Tail, store.Tables.Head);
    QVERIFY(store.Tables.Tail->Next == nullptr);
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
}

void AlignStoreTest::clearListFreesEverything_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("an empty list is left as it is") << 0;
    QTest::newRow("one table") << 1;
    QTest::newRow("several tables") << 5;
}

void AlignStoreTest::clearListFreesEverything()
{
    QFETCH(int, count);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    for (int i = 0; i < count; ++i)
        QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    AlignStore::ClearList(store.Tables);
    QVERIFY(tests::IsEmpty(store.Tables));
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr); // the list is usable again
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
}

void AlignStoreTest::clearTableByHwId_data()
{
    QTest::addColumn<QList<QByteArray>>("stored");
    QTest::addColumn<QByteArray>("hwId");
    QTest::addColumn<QList<QByteArray>>("left");
    using List = QList<QByteArray>;
    const QByteArray full(128, 'x'); // no NUL in the table
    QTest::newRow("ABC removes a table ABCDEF that comes first")
        << List{"ABCDEF", "ABC"} << QByteArray("ABC") << List{"ABC"};
    QTest::newRow("ABCDEF removes a table ABC: the shorter length counts either way")
        << List{"X", "ABC"} << QByteArray("ABCDEF") << List{"X"};
    QTest::newRow("an id that matches nothing leaves the list and Count unchanged")
        << List{"ABC", "DEF"} << QByteArray("XYZ") << List{"ABC", "DEF"};
    QTest::newRow("an empty id removes the first table")
        << List{"ABC", "DEF"} << QByteArray("") << List{"DEF"};
    QTest::newRow("any id removes a table with an empty id")
        << List{"A", "", "B"} << QByteArray("B") << List{"A", "B"};
    QTest::newRow("only the first table that matches is removed")
        << List{"A", "B", "B", "C"} << QByteArray("B") << List{"A", "B", "C"};
    QTest::newRow("case matters") << List{"abc"} << QByteArray("ABC") << List{"abc"};
    QTest::newRow("bytes above 127") << List{"\xE4\xF6", "\xE4\xFC"} << QByteArray("\xE4\xFC")
                                     << List{"\xE4\xF6"};
    QTest::newRow("an id of 128 bytes without NUL") << List{"A", full} << full << List{"A"};
    QTest::newRow("what follows the 128th byte of the given id does not count")
        << List{"A", full} << full + "other" << List{"A"};
    QTest::newRow("the last of 128 bytes counts")
        << List{full} << QByteArray(full.left(127) + "y") << List{full};
    QTest::newRow("an empty list") << List{} << QByteArray("A") << List{};
}

void AlignStoreTest::clearTableByHwId()
{
    QFETCH(QList<QByteArray>, stored);
    QFETCH(QByteArray, hwId);
    QFETCH(QList<QByteArray>, left);
    AlignStore store;
    for (const QByteArray &id : stored)
        QVERIFY(tests::AppendTableWithId(store, store.Tables, id) != nullptr);
    AlignStore::ClearTableByHwId(&store.Tables, hwId.constData());
    QCOMPARE(tests::HwIdsOf(store.Tables), left);
    QCOMPARE(qsizetype{store.Tables.Count}, left.size());
}

void AlignStoreTest::clearTableByHwIdOnTheOnlyTableLeavesHeadAndTailEmptyAndCount0()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    AlignStore::ClearTableByHwId(&store.Tables, "ABC");
    QVERIFY(tests::IsEmpty(store.Tables));
}

void AlignStoreTest::clearTableByHwIdKeepsHeadAndTail_data()
{
    QTest::addColumn<QByteArray>("removed");
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("tail");
    QTest::newRow("the head is removed") << QByteArray("A") << QByteArray("B") << QByteArray("C");
    QTest::newRow("a middle table is removed") << QByteArray("B") << QByteArray("A") << QByteArray("C");
    QTest::newRow("the tail is removed") << QByteArray("C") << QByteArray("A") << QByteArray("B");
}

void AlignStoreTest::clearTableByHwIdKeepsHeadAndTail()
{
    QFETCH(QByteArray, removed);
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, tail);
    AlignStore store;
    for (const char *id : {"A", "B", "C"})
        QVERIFY(tests::AppendTableWithId(store, store.Tables, id) != nullptr);
    AlignStore::ClearTableByHwId(&store.Tables, removed.constData());
    QCOMPARE(QByteArray(store.Tables.Head->Table->HwId.data()), head);
    QCOMPARE(QByteArray(store.Tables.Tail->Table->HwId.data()), tail);
    QVERIFY(store.Tables.Tail->Next == nullptr);
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "D") != nullptr);
    QCOMPARE(tests::HwIdsOf(store.Tables), (QList<QByteArray>{head, tail, "D"}));
}

void AlignStoreTest::clearTableByHwIdDoesNothingWithoutListOrId()
{
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "A") != nullptr);
    AlignStore::ClearTableByHwId(nullptr, "A");
    AlignStore::ClearTableByHwId(&store.Tables, nullptr);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"A"});
}

void AlignStoreTest::clearTableByHwIdSkipsANodeWithoutTable()
{
    AlignStore store;
    store.Tables.Append(std::make_unique<AlignTableNode>());
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "A") != nullptr);
    AlignStore::ClearTableByHwId(&store.Tables, "A");
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
    QVERIFY(store.Tables.Head->Table == nullptr);
}

void AlignStoreTest::clearTableByHwIdPrintsTheGivenId()
{
    QCOMPARE(OutputOfRemoval({QStringLiteral("ABC"), QStringLiteral("X"), QStringLiteral("ABCDEF")}),
             QByteArray("debug: [OK] raw_clearListElementByHwID, cleared ABC from pstList\nresult X\n"));
}

void AlignStoreTest::clearTableByHwIdWithAnIdThatMatchesNothingPrintsNothing()
{
    QCOMPARE(OutputOfRemoval({QStringLiteral("XYZ"), QStringLiteral("ABC")}), QByteArray("result ABC\n"));
}

void AlignStoreTest::mergeComparesWholeIds_data()
{
    QTest::addColumn<QList<QByteArray>>("source");
    QTest::addColumn<QList<QByteArray>>("selected");
    QTest::addColumn<QList<QByteArray>>("merged");
    using List = QList<QByteArray>;
    const QByteArray full(128, 'x');
    QTest::newRow("a selection naming ABC does not copy a table whose id is ABCDEF")
        << List{"ABCDEF", "ABC"} << List{"ABC"} << List{"ABC"};
    QTest::newRow("a selection naming ABCDEF does not copy a table ABC")
        << List{"ABC"} << List{"ABCDEF"} << List{};
    QTest::newRow("an empty selection copies nothing") << List{"ABC", ""} << List{} << List{};
    QTest::newRow("an empty name copies only tables with an empty id")
        << List{"A", "", "B"} << List{""} << List{""};
    QTest::newRow("every table of that id is copied") << List{"A", "B", "A"} << List{"A"} << List{"A", "A"};
    QTest::newRow("a name given twice counts once") << List{"A"} << List{"A", "A"} << List{"A"};
    QTest::newRow("case matters") << List{"abc"} << List{"ABC"} << List{};
    QTest::newRow("bytes above 127") << List{"\xE4\xF6", "\xE4\xFC"} << List{"\xE4\xFC"} << List{"\xE4\xFC"};
    QTest::newRow("an id of 128 bytes without NUL") << List{full} << List{full} << List{full};
    QTest::newRow("a name longer than 128 bytes matches nothing") << List{full} << List{full + "y"} << List{};
    QTest::newRow("a name with a NUL inside matches nothing")
        << List{"A"} << List{QByteArray("A\0", 2)} << List{};
    QTest::newRow("an empty source") << List{} << List{"A"} << List{};
}

void AlignStoreTest::mergeComparesWholeIds()
{
    QFETCH(QList<QByteArray>, source);
    QFETCH(QList<QByteArray>, selected);
    QFETCH(QList<QByteArray>, merged);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    for (const QByteArray &id : source)
        QVERIFY(tests::AppendTableWithId(store, store.ImportTables, id) != nullptr);
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection(selected)), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), merged);
    QCOMPARE(qsizetype{store.Tables.Count}, merged.size());
    QCOMPARE(tests::HwIdsOf(store.ImportTables), source);
}

void AlignStoreTest::mergeCopiesTheTableByteForByte()
{
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    AlignTable *original = tests::AppendTableWithId(store, store.ImportTables, "ABC");
    QVERIFY(original != nullptr);
    original->DataType = 77;
    original->SdrType = SdrType::LimeUsb;
    original->Version = 9;
    original->HwId[127] = 'z'; // behind the NUL
    original->AlignedAt = 0x0123456789ABCDEF;
    original->DataSetCount = 1;
    // Used and unused entries, bytes between the members included; every other frequency point stays zero.
    std::uint8_t value = 0;
    for (AlignDataSet &dataSet : original->DataSets.all()) {
        std::memset(static_cast<void *>(&dataSet), 0, offsetof(AlignDataSet, FreqPoints));
        for (std::size_t i = 0; i < dataSet.FreqPoints.size(); i += 2)
            std::memset(static_cast<void *>(&dataSet.FreqPoints[i]), ++value, sizeof(AlignFreqPoint));
    }
    original->DataSets[3].FreqPoints[99].SampleRatePoints[9].GainEntries[49].Value4 =
        1; // the very last bytes

    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"ABC"})), AlignResult::Ok);
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
    const AlignTable &copy = *store.Tables.Head->Table;
    QCOMPARE(copy.DataType, original->DataType);
    QCOMPARE(copy.SdrType, original->SdrType);
    QCOMPARE(copy.Version, original->Version);
    QVERIFY(copy.HwId == original->HwId);
    QCOMPARE(copy.AlignedAt, original->AlignedAt); // not the time of the selection
    QCOMPARE(copy.DataSetCapacity, original->DataSetCapacity);
    QCOMPARE(copy.DataSetCount, original->DataSetCount);
    QCOMPARE(copy.DataSets.size(), std::size_t{4});
    QVERIFY(std::memcmp(&copy.DataSets[0], &original->DataSets[0], 4 * sizeof(AlignDataSet)) == 0);
}

void AlignStoreTest::mergeKeepsTheOrderOfTheSourceAndAppendsAtTheTail()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "present") != nullptr);
    for (const char *id : {"A", "B", "C"})
        QVERIFY(tests::AppendTableWithId(store, store.ImportTables, id) != nullptr);
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"C", "A"})), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), (QList<QByteArray>{"present", "A", "C"}));
    QCOMPARE(QByteArray(store.Tables.Tail->Table->HwId.data()), QByteArray("C"));
    QVERIFY(store.Tables.Tail->Next == nullptr);
}

void AlignStoreTest::mergeTwiceAppendsTwice()
{
    // The caller removes superseded tables beforehand; merging itself does not look at the target.
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.ImportTables, "A") != nullptr);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"A"})), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), (QList<QByteArray>{"A", "A"}));
}

void AlignStoreTest::mergeWhenTheStoresSdrTypeIs0CopiesNothingAndReturns0()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.ImportTables, "A") != nullptr);
    store.SdrType = SdrType::None;
    QVERIFY(tests::AppendTableWithId(store, store.ImportTables, "B") != nullptr); // without data sets itself
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"A", "B"})), AlignResult::Ok);
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"B"})), AlignResult::Ok);
    QVERIFY(tests::IsEmpty(store.Tables));
    QCOMPARE(store.ImportTables.Count, std::uint16_t{2});
}

void AlignStoreTest::mergeStopsSilentlyAtATableOfAnotherCapacity()
{
    AlignStore store;
    for (const SdrType sdrType : {SdrType::RtlSdr, SdrType::AirSpy, SdrType::RtlSdr}) {
        store.SdrType = sdrType;
        const QByteArray id = QByteArray::number(store.ImportTables.Count);
        QVERIFY(tests::AppendTableWithId(store, store.ImportTables, id) != nullptr);
    }
    // The table in between is passed over as long as it is not selected, and ends the merge when it is.
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"0", "2"})), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), (QList<QByteArray>{"0", "2"}));
    AlignStore::ClearList(store.Tables);
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"0", "1", "2"})),
             AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"0"});
}

void AlignStoreTest::mergeNeverReadsBeyondASmallerSourceBlock()
{
    // A loaded table repeats the capacity of its file: here one data set that claims to be twelve.
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    AlignTable *original = tests::AppendTableWithId(store, store.ImportTables, "A");
    QVERIFY(original != nullptr);
    original->DataSetCapacity = 12;
    original->DataSets[0].Word1 = 4711;
    store.SdrType = SdrType::LimeUsb;
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"A"})), AlignResult::Ok);
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
    const AlignTable &copy = *store.Tables.Head->Table;
    QCOMPARE(copy.DataSets.size(), std::size_t{12});
    QCOMPARE(copy.DataSets[0].Word1, std::uint16_t{4711});
    QCOMPARE(copy.DataSets[1].Word1, std::uint16_t{0});
}

void AlignStoreTest::mergedTableIsIndependentOfItsSource()
{
    tests::AlignmentGenerator generator(1);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QVERIFY(generator.AppendFullTables(store, 1, tests::AlignmentGenerator::Full::Wide));
    AlignTable expected;
    AlignStore::InitTable(expected, SdrType::AirSpy);
    {
        AlignStore source;
        source.SdrType = SdrType::AirSpy;
        tests::AlignmentGenerator sameGenerator(1);
        QVERIFY(sameGenerator.AppendFullTables(source, 1, tests::AlignmentGenerator::Full::Wide));
        const QList<QByteArray> ids = tests::HwIdsOf(source.Tables);
        QCOMPARE(store.MergeTables(store.ImportTables, source.Tables, Selection(ids)), AlignResult::Ok);
        QVERIFY(source.Tables.Head->Table->DataSets[0].FreqPointCount == 100);
        std::memset(static_cast<void *>(&source.Tables.Head->Table->DataSets[0]), 0xFF, sizeof(AlignDataSet));
        AlignStore::ClearList(source.Tables);
        QVERIFY(tests::IsEmpty(source.Tables));
    }
    QCOMPARE(tests::Difference(store.ImportTables, store.Tables), QString());
}

void AlignStoreTest::mergeIntoAFullListGives11()
{
    AlignStore store;
    for (int i = 0; i < 65534; ++i)
        QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    store.SdrType = SdrType::RtlSdr;
    for (const char *id : {"A", "B"})
        QVERIFY(tests::AppendTableWithId(store, store.ImportTables, id) != nullptr);
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"A", "B"})),
             AlignResult::InternalError);
    QCOMPARE(store.Tables.Count, std::uint16_t{65535});
    QCOMPARE(QByteArray(store.Tables.Tail->Table->HwId.data()), QByteArray("A"));
    QVERIFY(store.Tables.Tail->Next == nullptr);
}

void AlignStoreTest::mergeWithoutMemory_data()
{
    QTest::addColumn<int>("allocations");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("merged");
    QTest::newRow("for looking up the selection gives 11") << 0 << 11 << 0;
    QTest::newRow("for the first node gives 11") << 1 << 11 << 0;
    QTest::newRow("for the first table ends with 0") << 2 << 0 << 0;
    QTest::newRow("for the second node gives 11 and keeps the first table") << 3 << 11 << 1;
    QTest::newRow("for the second table ends with 0 and keeps the first table") << 4 << 0 << 1;
    QTest::newRow("none of it: both are merged") << 5 << 0 << 2;
}

void AlignStoreTest::mergeWithoutMemory()
{
    QFETCH(int, allocations);
    QFETCH(int, result);
    QFETCH(int, merged);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    for (const char *id : {"A", "B"})
        QVERIFY(tests::AppendTableWithId(store, store.ImportTables, id) != nullptr);
    const std::vector<AlignSelectionEntry> selection = Selection({"A", "B"});
    AlignResult given = AlignResult::FileError;
    {
        const AllocationLimit limit(allocations);
        given = store.MergeTables(store.Tables, store.ImportTables, selection);
    }
    QCOMPARE(static_cast<int>(given), result);
    QCOMPARE(int{store.Tables.Count}, merged);
    QCOMPARE(tests::HwIdsOf(store.Tables).size(), qsizetype{merged});
}

void AlignStoreTest::mergeLooksUp65535NamesInAListOf65535Tables()
{
    // All but the last table have an id that the selection does not name, so that no memory is needed for
    // copies.
    tests::AlignmentGenerator generator(2);
    AlignStore store;
    QVERIFY(generator.AppendEmptyTables(store, 65534));
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "last") != nullptr);
    std::vector<AlignSelectionEntry> selection;
    for (int i = 0; i < 65534; ++i)
        selection.push_back({generator.ReadableHwId(), 0});
    selection.push_back({"last", 0});
    QCOMPARE(store.MergeTables(store.ImportTables, store.Tables, selection), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.ImportTables), QList<QByteArray>{"last"});
}

TARNVIK_TEST_MAIN(AlignStoreTest, QCoreApplication)
#include "AlignStoreTest.moc"
