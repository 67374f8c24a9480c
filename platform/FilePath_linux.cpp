// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include <QFile>

#include <new>

namespace platform {

std::optional<std::filesystem::path> FileSystemPath(const QString &path) noexcept
{
    try {
        // Qt encodes the name: the standard library's conversion throws on letters that it cannot convert.
        return std::filesystem::path(QFile::encodeName(path).toStdString());
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

} // namespace platform
