// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include <system_error>

namespace platform {

bool FileExists(const QString &path) noexcept
{
    const std::optional<std::filesystem::path> file = FileSystemPath(path);
    std::error_code ignored;
    return file && std::filesystem::exists(*file, ignored);
}

bool IsSameFile(const QString &left, const QString &right) noexcept
{
    const std::optional<std::filesystem::path> leftFile = FileSystemPath(left);
    const std::optional<std::filesystem::path> rightFile = FileSystemPath(right);
    std::error_code ignored;
    return leftFile && rightFile && std::filesystem::equivalent(*leftFile, *rightFile, ignored);
}

bool WaitsForOtherEnd(const std::filesystem::path &path) noexcept
{
    std::error_code ignored;
    const std::filesystem::file_type type = std::filesystem::status(path, ignored).type();
    return type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::socket;
}

} // namespace platform
