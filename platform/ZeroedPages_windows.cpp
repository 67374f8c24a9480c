// SPDX-License-Identifier: MIT
#include "platform/ZeroedPages.h"

#include <windows.h>

namespace platform {

void *AllocateZeroedPages(std::size_t size) noexcept
{
    return size > 0 ? VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE) : nullptr;
}

void FreePages(void *memory, std::size_t /*size*/) noexcept
{
    if (memory != nullptr)
        VirtualFree(memory, 0, MEM_RELEASE); // wants 0: the system knows the size
}

} // namespace platform
