// SPDX-License-Identifier: MIT
#include "tests/alignment/FailingAllocations.h"

#include <cstddef>
#include <new>
#include <utility>

namespace {

/// Number of allocations that still succeed; negative: all.
int AllocationsLeft = -1;

/// Null while nobody watches, and while the watch's function runs.
const std::function<void()> *OnAllocation = nullptr;

void TellWatch()
{
    if (const auto *const watch = std::exchange(OnAllocation, nullptr)) {
        (*watch)();
        OnAllocation = watch;
    }
}

bool AllocationFails()
{
    TellWatch();
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

AllocationWatch::AllocationWatch(std::function<void()> onAllocation) : Function(std::move(onAllocation))
{
    OnAllocation = &Function;
}

AllocationWatch::~AllocationWatch()
{
    OnAllocation = nullptr;
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
