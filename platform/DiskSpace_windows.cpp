// SPDX-License-Identifier: MIT
#include "platform/DiskSpace.h"

#include <windows.h>

#include <new>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// A file takes up whole clusters and gives back whole ones. Most disks have these; where they are larger by
/// a factor the sum below is never too small.
constexpr std::uint64_t ClusterSize = 4096;

std::uint64_t Clusters(std::uint64_t bytes)
{
    return bytes / ClusterSize + (bytes % ClusterSize > 0 ? 1 : 0);
}

} // namespace

bool HasRoomFor(const fs::path &path, std::uint64_t size) noexcept
try {
    std::error_code error;
    const fs::path file = fs::weakly_canonical(path, error);
    if (error || (fs::exists(file, error) && !fs::is_regular_file(file, error)))
        return true;
    ULARGE_INTEGER available = {};
    ULARGE_INTEGER total = {};
    // The folder's own disk, which need not be that of the drive's root.
    if (GetDiskFreeSpaceExW(file.parent_path().c_str(), &available, &total, nullptr) == FALSE ||
        total.QuadPart == 0)
        return true;
    const std::uintmax_t oldSize = fs::file_size(file, error);
    return Clusters(size) <= available.QuadPart / ClusterSize + (error ? 0 : Clusters(oldSize));
} catch (const std::bad_alloc &) {
    return true;
}

} // namespace platform
