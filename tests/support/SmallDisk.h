// SPDX-License-Identifier: MIT
// A disk that is easily full.
#pragma once

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

/// Where there is no such disk the test function is skipped, aloud: a container may forbid its users to mount
/// anything, which is no fault of the program. In CI (environment variable CI) it fails: there a disk must
/// be, or nobody would notice that a full one is no longer tested.
#define TARNVIK_NEEDS_SMALL_DISK()                                                                           \
    do {                                                                                                     \
        if (tests::SmallDisk().isEmpty() && qEnvironmentVariableIsSet("CI"))                                 \
            QFAIL("CI needs a small file system for the tests of a full disk (see with-small-disk)");        \
        if (tests::SmallDisk().isEmpty())                                                                    \
            QSKIP("no small file system can be mounted here, so a full disk is not tested");                 \
    } while (false)
