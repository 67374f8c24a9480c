// SPDX-License-Identifier: MIT
// The allocation functions of a test program, replaced: they look at tables that are freed, and can fail.
#pragma once

namespace tests {

/// While true every allocation of a thousand bytes or more fails: that of a long path, but of nothing else
/// that a load or a save asks for.
extern bool FailsLargeAllocations;

/// Counted where memory of a table's size goes back. No other objects of that size may exist while a test
/// counts.
extern int FreedTables;
extern int FreedTablesThatHeldData;

} // namespace tests
