// SPDX-License-Identifier: MIT
// A receiver's data sets are one block of up to 5 MB, of which most is never touched. A block that is mapped
// costs no memory until it is; from the heap it would have to be cleared. By default glibc moves to the heap
// once the first such block is freed, or when 65,536 are mapped.
#include "platform/LargeBlocks.h"

#include <malloc.h>

namespace platform {

void KeepLargeBlocksMapped()
{
    constexpr int threshold = 128 * 1024; // bytes; glibc's own, made fixed by being set
    constexpr int mostBlocks = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, threshold);
    mallopt(M_MMAP_MAX, mostBlocks);
}

} // namespace platform
