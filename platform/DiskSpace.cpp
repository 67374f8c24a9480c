// SPDX-License-Identifier: MIT
#include "platform/DiskSpace.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <new>

namespace platform {

bool HasRoomFor(const QString &path, std::uint64_t size) noexcept
try {
    const QFileInfo file(path);
    const bool exists = file.exists();
    if (exists && !file.isFile())
        return true;
    const QStorageInfo disk(exists ? file.canonicalPath() : file.absolutePath());
    if (!disk.isValid() || !disk.isReady() || disk.blockSize() <= 0)
        return true;
    // A file takes up whole blocks, and gives back whole ones.
    const auto blockSize = static_cast<std::uint64_t>(disk.blockSize());
    const auto blocks = [blockSize](std::uint64_t bytes) { return (bytes + blockSize - 1) / blockSize; };
    const std::uint64_t available = static_cast<std::uint64_t>(disk.bytesAvailable()) / blockSize;
    return blocks(size) <= available + blocks(static_cast<std::uint64_t>(file.size()));
} catch (const std::bad_alloc &) {
    return true;
}

} // namespace platform
