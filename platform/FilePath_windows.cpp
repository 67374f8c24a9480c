// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include <new>

namespace platform {

std::optional<std::filesystem::path> FileSystemPath(const QString &path) noexcept
{
    try {
        return std::filesystem::path(path.toStdWString());
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

QString PathText(const std::filesystem::path &path)
{
    return QString::fromStdWString(path.native());
}

} // namespace platform
