// SPDX-License-Identifier: MIT
// What becomes of the memory: a table is zeroed before it goes back, and a path without memory is a result.
// The program's allocation functions are replaced, hence a test program of its own.
#include "alignment/AlignStore.h"
#include "alignment/AlignTableReader.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

using namespace Qt::StringLiterals;

namespace {

bool FailsLargeAllocations = false;
int FreedTables = 0;
int FreedTablesThatHeldData = 0;

/// Looks at memory of a table's size that goes back. Of other objects of that size none exists while a test
/// counts.
void LookAtFreedTable(const void *memory)
{
    const auto *const table = static_cast<const AlignTable *>(memory);
    ++FreedTables;
    const bool zeroed = table->AlignedAt == 0 && table->Version == 0 && table->DataSetCount == 0 &&
                        std::all_of(table->HwId.begin(), table->HwId.end(), [](char c) { return c == 0; });
    if (!zeroed)
        ++FreedTablesThatHeldData;
}

} // namespace

void *operator new(std::size_t size)
{
    constexpr std::size_t large = 1000; // a long path, but nothing else that a load or a save asks for
    void *const memory = FailsLargeAllocations && size >= large ? nullptr : std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t size) noexcept
{
    if (memory != nullptr && size == sizeof(AlignTable))
        LookAtFreedTable(memory);
    std::free(memory);
}

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
    using Free = void (*)(AlignStore &);
    QTest::addColumn<Free>("free");
    QTest::addColumn<int>("freed");
    QTest::newRow("by clearing the list")
        << Free([](AlignStore &store) { AlignStore::ClearList(store.Tables); }) << 2;
    QTest::newRow("by its id") << Free([](AlignStore &store) {
        AlignStore::ClearTableByHwId(&store.Tables, "A");
    }) << 1;
}

void AlignTableMemoryTest::aTableIsZeroedBeforeItIsFreed()
{
    using Free = void (*)(AlignStore &);
    QFETCH(Free, free);
    QFETCH(int, freed);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    for (const char *id : {"A", "B"}) {
        AlignTable *const table = tests::AppendTableWithId(store, store.Tables, id);
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
