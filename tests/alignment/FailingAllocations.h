// SPDX-License-Identifier: MIT
// Lets a test program run out of memory on purpose, or do something in the midst of what allocates.
#pragma once

#include <QtGlobal>

#include <functional>

namespace tests {

/// Lets `count` non-throwing allocations (operator new with std::nothrow, which nodes, tables and lookups
/// use) succeed and all later ones fail, as long as the object lives. One at a time.
class AllocationLimit
{
public:
    explicit AllocationLimit(int count);
    ~AllocationLimit();
    Q_DISABLE_COPY_MOVE(AllocationLimit)
};

/// Calls a function before each non-throwing allocation, but for those of the function itself, as long as the
/// object lives. One at a time, on one thread.
class AllocationWatch
{
public:
    explicit AllocationWatch(std::function<void()> onAllocation);
    ~AllocationWatch();
    Q_DISABLE_COPY_MOVE(AllocationWatch)

private:
    std::function<void()> Function;
};

} // namespace tests
