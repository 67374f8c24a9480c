// SPDX-License-Identifier: MIT
#include "platform/DiskSpace.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <new>
#include <string>

namespace platform {

bool HasRoomFor(const std::filesystem::path &path, std::uint64_t size) noexcept
try {
    constexpr std::uint64_t statBlock = 512;
    struct stat old = {};
    const bool exists = stat(path.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode))
        return true;
    struct statvfs disk = {};
    // Without a folder in its name the file lies in the working folder.
    const std::string folder = exists ? path.native() : (path.parent_path() / ".").native();
    if (statvfs(folder.c_str(), &disk) != 0 || disk.f_frsize == 0 || disk.f_blocks == 0)
        return true;
    // A file takes up whole blocks, and gives back those that it has.
    const std::uint64_t needed = size / disk.f_frsize + (size % disk.f_frsize > 0 ? 1 : 0);
    const std::uint64_t given =
        exists ? static_cast<std::uint64_t>(old.st_blocks) * statBlock / disk.f_frsize : 0;
    return needed <= disk.f_bavail + given;
} catch (const std::bad_alloc &) {
    return true;
}

} // namespace platform
