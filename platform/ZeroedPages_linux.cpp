// SPDX-License-Identifier: MIT
#include "platform/ZeroedPages.h"

#include <sys/mman.h>

#ifdef TARNVIK_SANITIZE
#include <sanitizer/asan_interface.h>
#endif

namespace platform {

namespace {

#ifdef TARNVIK_SANITIZE
// The address sanitizer watches what its own allocator gives, which would fill the pages with zeroes one by
// one. Here it is told of a zone behind the memory instead.
constexpr std::size_t GuardSize = 4096;
#else
constexpr std::size_t GuardSize = 0;
#endif

} // namespace

void *AllocateZeroedPages(std::size_t size) noexcept
{
    if (size == 0)
        return nullptr;
    // A huge page would take up 2 MB for one byte that is written to. Kernels since 6.7 leave them out of a
    // "stack" from the beginning, and have nothing to change when they are told again.
    void *const memory = mmap(nullptr, size + GuardSize, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    (void)madvise(memory, size, MADV_NOHUGEPAGE);
#ifdef TARNVIK_SANITIZE
    ASAN_POISON_MEMORY_REGION(static_cast<char *>(memory) + size, GuardSize);
#endif
    return memory;
}

void FreePages(void *memory, std::size_t size) noexcept
{
    if (memory == nullptr)
        return;
#ifdef TARNVIK_SANITIZE
    ASAN_UNPOISON_MEMORY_REGION(static_cast<char *>(memory) + size, GuardSize);
#endif
    munmap(memory, size + GuardSize);
}

} // namespace platform
