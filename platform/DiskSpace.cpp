// SPDX-License-Identifier: MIT
#include "platform/DiskSpace.h"

#include "platform/FilePath.h"

#include <filesystem>
#include <new>
#include <optional>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// A file takes up whole blocks and gives back whole ones. Most disks have these; where blocks are larger by
/// a factor the sum below is never too small.
constexpr std::uintmax_t BlockSize = 4096;

constexpr std::uintmax_t Blocks(std::uintmax_t bytes)
{
    return bytes / BlockSize + (bytes % BlockSize > 0 ? 1 : 0);
}

bool HasRoomFor(const fs::path &path, std::uintmax_t size)
{
    std::error_code error;
    const fs::path file = fs::weakly_canonical(path, error);
    if (error || (fs::exists(file, error) && !fs::is_regular_file(file, error)))
        return true;
    // With the separator behind it the name is that of a folder on all systems.
    const fs::space_info disk = fs::space(file.parent_path() / "", error);
    if (error)
        return true;
    const std::uintmax_t oldSize = fs::file_size(file, error);
    return Blocks(size) <= disk.available / BlockSize + (error ? 0 : Blocks(oldSize));
}

} // namespace

bool HasRoomFor(const QString &path, std::uint64_t size) noexcept
try {
    const std::optional<fs::path> file = FileSystemPath(path);
    return !file || HasRoomFor(*file, size);
} catch (const std::bad_alloc &) {
    return true;
}

} // namespace platform
