// SPDX-License-Identifier: MIT
// Lets a test program run out of memory on purpose.
#pragma once

#include <QtGlobal>

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

} // namespace tests
