// SPDX-License-Identifier: MIT
// Large zeroed memory straight from the system.
#pragma once

#include <cstddef>

namespace platform {

/// Gets `size` bytes of zeroed memory from the system; null when there is none, or when `size` is 0. A page
/// takes up memory only once it is written to. FreePages gives the memory back.
[[nodiscard]] void *AllocateZeroedPages(std::size_t size) noexcept;

/// Gives memory of AllocateZeroedPages back to the system at once. `size` is what was asked for; null is
/// allowed.
void FreePages(void *memory, std::size_t size) noexcept;

} // namespace platform
