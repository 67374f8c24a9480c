// SPDX-License-Identifier: MIT
#include "tests/alignment/WatchedAllocations.h"

#include "alignment/AlignTable.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace tests {

bool FailsLargeAllocations = false;
int FreedTables = 0;
int FreedTablesThatHeldData = 0;

} // namespace tests

namespace {

void LookAtFreedTable(const void *memory)
{
    const auto *const table = static_cast<const AlignTable *>(memory);
    ++tests::FreedTables;
    const bool zeroed = table->AlignedAt == 0 && table->Version == 0 && table->DataSetCount == 0 &&
                        std::all_of(table->HwId.begin(), table->HwId.end(), [](char c) { return c == 0; });
    if (!zeroed)
        ++tests::FreedTablesThatHeldData;
}

} // namespace

void *operator new(std::size_t size)
{
    constexpr std::size_t large = 1000;
    void *const memory = tests::FailsLargeAllocations && size >= large ? nullptr : std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    return std::malloc(size);
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
