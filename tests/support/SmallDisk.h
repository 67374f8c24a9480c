// SPDX-License-Identifier: MIT
// A disk that is easily full.
#pragma once

#include "tests/support/Needs.h"

#include <QString>
#include <QtGlobal>

namespace tests {

/// A folder on a file system of 256 KiB that only this test program uses; empty where none could be mounted.
[[nodiscard]] QString SmallDisk();

/// Removes all from that disk.
[[nodiscard]] bool EmptySmallDisk();

/// Makes a file there that leaves so many blocks free; false when there is less.
[[nodiscard]] bool FillSmallDisk(qint64 freeBlocks);

/// The size of its blocks in bytes, which is that of a page.
inline constexpr qint64 SmallDiskBlock = 4096;

} // namespace tests

/// A container may forbid its users to mount anything, which is no fault of the program (see
/// with-small-disk).
#define TARNVIK_NEEDS_SMALL_DISK()                                                                           \
    TARNVIK_NEEDS(!tests::SmallDisk().isEmpty(),                                                             \
                  "no small file system can be mounted here, so a full disk is not tested")
