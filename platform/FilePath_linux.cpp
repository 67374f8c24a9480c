// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include "platform/EscapedText.h"

#include <new>

namespace platform {

std::optional<std::filesystem::path> FileSystemPath(const QString &path) noexcept
{
    try {
        // Not by the standard library's conversion, which throws on letters that it cannot convert.
        return std::filesystem::path(TextBytes(path).toStdString());
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

QString PathText(const std::filesystem::path &path)
{
    return BytesText(path.native());
}

} // namespace platform
