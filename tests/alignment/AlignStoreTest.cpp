// SPDX-License-Identifier: MIT
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/FailingAllocations.h"
#include "tests/support/TestMain.h"

#include <QProcess>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// What the probe program reports for a removal: all its output, or a text that begins with "failed".
QByteArray OutputOfRemoval(const QStringList &arguments)
{
    QProcess probe;
    probe.start(QStringLiteral(ALIGNMENT_PROBE), QStringList{u"remove"_s} + arguments);
    if (!probe.waitForFinished() || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return "failed: " + probe.errorString().toUtf8();
    return probe.readAllStandardOutput().replace("\r\n", "\n");
}

} // namespace

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
    QCOMPARE(store.ChunkBuffer.Bytes.size(), std::size_t{16388});
    QVERIFY(std::all_of(store.ChunkBuffer.Bytes.begin(), store.ChunkBuffer.Bytes.end(),
                        [](auto byte) { return byte == 0; }));
    QCOMPARE(store.ChunkBuffer.BufferLength, std::uint16_t{0});
    QCOMPARE(store.ChunkBuffer.BufferCursor, std::uint16_t{0});
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
    for (const AlignDataSet &dataSet : std::as_const(table.DataSets)) {
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
        const tests::AllocationLimit limit(allocations);
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
    QCOMPARE(OutputOfRemoval({u"ABC"_s, u"X"_s, u"ABCDEF"_s}),
             QByteArray("debug: [OK] raw_clearListElementByHwID, cleared ABC from pstList\nresult X\n"));
}

void AlignStoreTest::clearTableByHwIdWithAnIdThatMatchesNothingPrintsNothing()
{
    QCOMPARE(OutputOfRemoval({u"XYZ"_s, u"ABC"_s}), QByteArray("result ABC\n"));
}

TARNVIK_TEST_MAIN(AlignStoreTest, QCoreApplication)
#include "AlignStoreTest.moc"
