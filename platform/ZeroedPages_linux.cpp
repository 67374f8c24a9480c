// SPDX-License-Identifier: MIT
#include "platform/ZeroedPages.h"

#include <sys/mman.h>

#include <cstdlib>

namespace platform {

#ifdef __SANITIZE_ADDRESS__

// The address sanitizer watches the bounds of what comes from its own allocator only.

void *AllocateZeroedPages(std::size_t size) noexcept
{
    return size > 0 ? std::calloc(1, size) : nullptr;
}

void FreePages(void *memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

#else

void *AllocateZeroedPages(std::size_t size) noexcept
{
    if (size == 0)
        return nullptr;
    void *const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    // A huge page would take up 2 MB for one byte that is written to.
    (void)madvise(memory, size, MADV_NOHUGEPAGE);
    return memory;
}

void FreePages(void *memory, std::size_t size) noexcept
{
    if (memory != nullptr)
        munmap(memory, size);
}

#endif

} // namespace platform
