// SPDX-License-Identifier: MIT
#include "tests/alignment/FailingAllocations.h"

#include <cstddef>
#include <new>

namespace {

/// Number of allocations that still succeed; negative: all.
int AllocationsLeft = -1;

bool AllocationFails()
{
    if (AllocationsLeft < 0)
        return false;
    if (AllocationsLeft == 0)
        return true;
    --AllocationsLeft;
    return false;
}

} // namespace

namespace tests {

AllocationLimit::AllocationLimit(int count)
{
    AllocationsLeft = count;
}

AllocationLimit::~AllocationLimit()
{
    AllocationsLeft = -1;
}

} // namespace tests

// Replacements of the standard forms. The memory comes from the throwing forms, to which the usual deletes
// belong.

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
