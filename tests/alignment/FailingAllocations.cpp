// SPDX-License-Identifier: MIT
#include "tests/alignment/FailingAllocations.h"

#include <cstddef>
#include <new>

namespace {

/// Number of allocations that still succeed; negative: all.
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

} // namespace

namespace tests {

AllocationLimit::AllocationLimit(int count)
{
    allocationsLeft = count;
}

AllocationLimit::~AllocationLimit()
{
    allocationsLeft = -1;
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
