// SPDX-License-Identifier: MIT
// Whether a file still fits on its disk.
#pragma once

#include <QString>

#include <cstdint>

namespace platform {

/// Whether the disk has room for a file of `size` bytes in the place of the one that may be at `path`. True
/// as well when that cannot be told: for what is no regular file, and without memory.
[[nodiscard]] bool HasRoomFor(const QString &path, std::uint64_t size) noexcept;

} // namespace platform
