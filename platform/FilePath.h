// SPDX-License-Identifier: MIT
// From a path as Qt holds it to a path as the standard streams open it.
#pragma once

#include <QString>

#include <filesystem>
#include <optional>

namespace platform {

/// The same path, whatever letters it holds. What is no letter at all (half a surrogate pair) is replaced
/// where the system's paths cannot express it. Nothing when there is no memory.
[[nodiscard]] std::optional<std::filesystem::path> FileSystemPath(const QString &path) noexcept;

} // namespace platform
