// SPDX-License-Identifier: MIT
// Whether a file still fits on its disk.
#pragma once

#include <cstdint>
#include <filesystem>

namespace platform {

/// Whether the disk has room for a file of `size` bytes in the place of the one that may be at `path`. True
/// as well when that cannot be told, and for what is no regular file.
[[nodiscard]] bool HasRoomFor(const std::filesystem::path &path, std::uint64_t size) noexcept;

} // namespace platform
