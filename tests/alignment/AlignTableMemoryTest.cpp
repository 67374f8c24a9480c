// SPDX-License-Identifier: MIT
// What becomes of the memory: a table is zeroed before it goes back, and a path without memory is a result.
// The program's allocation functions are replaced, hence a test program of its own.
#include "alignment/AlignStore.h"
#include "alignment/AlignTableReader.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/WatchedAllocations.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <memory>

using namespace Qt::StringLiterals;

using tests::FailsLargeAllocations;
using tests::FreedTables;
using tests::FreedTablesThatHeldData;

class AlignTableMemoryTest : public QObject
{
    Q_OBJECT

private slots:
    void aTableIsZeroedBeforeItIsFreed_data();
    void aTableIsZeroedBeforeItIsFreed();
    void aPathWithoutMemoryGives11();
};

void AlignTableMemoryTest::aTableIsZeroedBeforeItIsFreed_data()
{
    using Free = void (*)(std::unique_ptr<AlignStore> &);
    QTest::addColumn<Free>("free");
    QTest::addColumn<int>("freed");
    QTest::newRow("by clearing the list")
        << Free([](std::unique_ptr<AlignStore> &store) { AlignStore::ClearList(store->Tables); }) << 2;
    QTest::newRow("by its id") << Free([](std::unique_ptr<AlignStore> &store) {
        AlignStore::ClearTableByHwId(&store->Tables, "A");
    }) << 1;
    QTest::newRow("with its store") << Free([](std::unique_ptr<AlignStore> &store) { store.reset(); }) << 2;
}

void AlignTableMemoryTest::aTableIsZeroedBeforeItIsFreed()
{
    using Free = void (*)(std::unique_ptr<AlignStore> &);
    QFETCH(Free, free);
    QFETCH(int, freed);
    auto store = std::make_unique<AlignStore>();
    store->SdrType = SdrType::RtlSdr;
    for (const char *id : {"A", "B"}) {
        AlignTable *const table = tests::AppendTableWithId(*store, store->Tables, id);
        QVERIFY(table != nullptr);
        table->AlignedAt = 0x0102030405060708;
        table->HwId.back() = 'z';
    }
    FreedTables = FreedTablesThatHeldData = 0;
    free(store);
    QCOMPARE(FreedTables, freed);
    QCOMPARE(FreedTablesThatHeldData, 0);
}

void AlignTableMemoryTest::aPathWithoutMemoryGives11()
{
    const QString path = QString(2000, u'x') + u".ad"_s;
    const auto store = std::make_unique<AlignStore>();
    const auto reader = std::make_unique<AlignTableReader>();
    QVERIFY(tests::AppendTableWithId(*store, store->Tables, "A") != nullptr);
    FailsLargeAllocations = true;
    const AlignResult loaded = store->LoadFile(path, store->ImportTables, true);
    const AlignResult saved = store->SaveFile(path);
    const AlignResult opened = reader->Open(path);
    FailsLargeAllocations = false;
    QCOMPARE(loaded, AlignResult::InternalError);
    QCOMPARE(saved, AlignResult::InternalError);
    QCOMPARE(opened, AlignResult::InternalError);
    // With memory the same path is one that does not exist.
    QCOMPARE(store->LoadFile(path, store->ImportTables, true), AlignResult::FileError);
}

TARNVIK_TEST_MAIN(AlignTableMemoryTest, QCoreApplication)

#include "AlignTableMemoryTest.moc"
