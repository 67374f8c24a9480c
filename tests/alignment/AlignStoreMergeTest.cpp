// SPDX-License-Identifier: MIT
// AlignStore::MergeTables.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/FailingAllocations.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QTest>

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace {

std::vector<AlignSelectionEntry> Selection(const QList<QByteArray> &hwIds)
{
    std::vector<AlignSelectionEntry> selection;
    for (const QByteArray &hwId : hwIds)
        selection.push_back({hwId.toStdString(), 1'700'000'000});
    return selection;
}

} // namespace

class AlignStoreMergeTest : public QObject
{
    Q_OBJECT

private slots:
    void mergeComparesWholeIds_data();
    void mergeComparesWholeIds();
    void mergeCopiesTheTableByteForByte();
    void mergeCopiesWhatWasWrittenToADataSetThatDoesNotCount();
    void mergedTableMergesAgain();
    void mergeKeepsTheOrderOfTheSourceAndAppendsAtTheTail();
    void mergeTwiceAppendsTwice();
    void mergeWhenTheStoresSdrTypeIs0CopiesNothingAndReturns0();
    void mergeStopsSilentlyAtATableOfAnotherCapacity();
    void mergeNeverReadsBeyondASmallerSourceBlock();
    void mergedTableIsIndependentOfItsSource();
    void mergePassesOverANodeWithoutTable();
    void mergeIntoAFullListGives11();
    void mergeWithoutMemory_data();
    void mergeWithoutMemory();
    void mergeLooksUp65535NamesInAListOf65535Tables();
};

void AlignStoreMergeTest::mergeComparesWholeIds_data()
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

void AlignStoreMergeTest::mergeComparesWholeIds()
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

void AlignStoreMergeTest::mergeCopiesTheTableByteForByte()
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
    for (std::size_t set = 0; set < original->DataSets.size(); ++set) {
        AlignDataSet &dataSet = original->DataSets[set];
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
    const auto *copied = reinterpret_cast<const char *>(&copy.DataSets[0]);
    const auto *originals = reinterpret_cast<const char *>(&original->DataSets[0]);
    QVERIFY(std::memcmp(copied, originals, 4 * sizeof(AlignDataSet)) == 0);
}

void AlignStoreMergeTest::mergeCopiesWhatWasWrittenToADataSetThatDoesNotCount()
{
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    AlignTable *original = tests::AppendTableWithId(store, store.ImportTables, "ABC");
    QVERIFY(original != nullptr);
    original->DataSets[2].FreqPoints[50].Attr = 1; // beyond DataSetCount and FreqPointCount
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"ABC"})), AlignResult::Ok);
    const AlignTable &copy = *store.Tables.Head->Table;
    QCOMPARE(copy.DataSetCount, std::uint8_t{0});
    const auto *copied = reinterpret_cast<const char *>(&copy.DataSets[0]);
    const auto *originals = reinterpret_cast<const char *>(&original->DataSets[0]);
    QVERIFY(std::memcmp(copied, originals, 4 * sizeof(AlignDataSet)) == 0);
}

void AlignStoreMergeTest::mergedTableMergesAgain()
{
    // The copy of a copy is as complete as the first one.
    tools::AlignmentGenerator generator(5);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QVERIFY(generator.AppendFullTables(store, 1, tools::AlignmentGenerator::Full::Wide));
    const std::vector<AlignSelectionEntry> selection = Selection(tests::HwIdsOf(store.Tables));
    QCOMPARE(store.MergeTables(store.ImportTables, store.Tables, selection), AlignResult::Ok);
    AlignTableList again;
    QCOMPARE(store.MergeTables(again, store.ImportTables, selection), AlignResult::Ok);
    QCOMPARE(tests::Difference(again, store.Tables), QString());
}

void AlignStoreMergeTest::mergeKeepsTheOrderOfTheSourceAndAppendsAtTheTail()
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

void AlignStoreMergeTest::mergeTwiceAppendsTwice()
{
    // The caller removes superseded tables beforehand; merging itself does not look at the target.
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.ImportTables, "A") != nullptr);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"A"})), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), (QList<QByteArray>{"A", "A"}));
}

void AlignStoreMergeTest::mergeWhenTheStoresSdrTypeIs0CopiesNothingAndReturns0()
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

void AlignStoreMergeTest::mergeStopsSilentlyAtATableOfAnotherCapacity()
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

void AlignStoreMergeTest::mergeNeverReadsBeyondASmallerSourceBlock()
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

void AlignStoreMergeTest::mergedTableIsIndependentOfItsSource()
{
    tools::AlignmentGenerator generator(1);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QVERIFY(generator.AppendFullTables(store, 1, tools::AlignmentGenerator::Full::Wide));
    {
        AlignStore source;
        source.SdrType = SdrType::AirSpy;
        tools::AlignmentGenerator sameGenerator(1);
        QVERIFY(sameGenerator.AppendFullTables(source, 1, tools::AlignmentGenerator::Full::Wide));
        const QList<QByteArray> ids = tests::HwIdsOf(source.Tables);
        QCOMPARE(store.MergeTables(store.ImportTables, source.Tables, Selection(ids)), AlignResult::Ok);
        QVERIFY(source.Tables.Head->Table->DataSets[0].FreqPointCount == 100);
        std::memset(static_cast<void *>(&source.Tables.Head->Table->DataSets[0]), 0xFF, sizeof(AlignDataSet));
        AlignStore::ClearList(source.Tables);
        QVERIFY(tests::IsEmpty(source.Tables));
    }
    QCOMPARE(tests::Difference(store.ImportTables, store.Tables), QString());
}

void AlignStoreMergeTest::mergePassesOverANodeWithoutTable()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    store.ImportTables.Append(std::make_unique<AlignTableNode>());
    QVERIFY(tests::AppendTableWithId(store, store.ImportTables, "A") != nullptr);
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"A"})), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"A"});
}

void AlignStoreMergeTest::mergeIntoAFullListGives11()
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
    // A table that is not selected needs no room.
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, Selection({"C"})), AlignResult::Ok);
}

void AlignStoreMergeTest::mergeWithoutMemory_data()
{
    QTest::addColumn<int>("allocations");
    QTest::addColumn<AlignResult>("result");
    QTest::addColumn<int>("merged");
    using enum AlignResult;
    QTest::newRow("for looking up the selection gives 11") << 0 << InternalError << 0;
    QTest::newRow("for the first node gives 11") << 1 << InternalError << 0;
    QTest::newRow("for the first table ends with 0") << 2 << Ok << 0;
    QTest::newRow("for the second node gives 11 and keeps the first table") << 3 << InternalError << 1;
    QTest::newRow("for the second table ends with 0 and keeps the first table") << 4 << Ok << 1;
    QTest::newRow("none of it: both are merged") << 5 << Ok << 2;
}

void AlignStoreMergeTest::mergeWithoutMemory()
{
    QFETCH(int, allocations);
    QFETCH(AlignResult, result);
    QFETCH(int, merged);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    for (const char *id : {"A", "B"})
        QVERIFY(tests::AppendTableWithId(store, store.ImportTables, id) != nullptr);
    const std::vector<AlignSelectionEntry> selection = Selection({"A", "B"});
    AlignResult given = AlignResult::FileError;
    {
        const tests::AllocationLimit limit(allocations);
        given = store.MergeTables(store.Tables, store.ImportTables, selection);
    }
    QCOMPARE(given, result);
    QCOMPARE(int{store.Tables.Count}, merged);
    QCOMPARE(tests::HwIdsOf(store.Tables).size(), qsizetype{merged});
}

void AlignStoreMergeTest::mergeLooksUp65535NamesInAListOf65535Tables()
{
    // All but the last table have an id that the selection does not name, so that no memory is needed for
    // copies.
    tools::AlignmentGenerator generator(2);
    AlignStore store;
    QVERIFY(generator.AppendEmptyTables(store, 65534));
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "last") != nullptr);
    std::vector<AlignSelectionEntry> selection;
    selection.reserve(65535);
    for (int i = 0; i < 65534; ++i)
        selection.push_back({generator.ReadableHwId(), 0});
    selection.push_back({"last", 0});
    QCOMPARE(store.MergeTables(store.ImportTables, store.Tables, selection), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.ImportTables), QList<QByteArray>{"last"});
}

TARNVIK_TEST_MAIN(AlignStoreMergeTest, QCoreApplication)
#include "AlignStoreMergeTest.moc"
