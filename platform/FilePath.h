// SPDX-License-Identifier: MIT
// Between paths as texts and paths as the standard streams open them.
#pragma once

#include <QString>

#include <filesystem>
#include <optional>

namespace platform {

/// The same path, whatever letters it holds. What is no letter at all (half a surrogate pair) is replaced
/// where the system's paths cannot express it, but for what PathText makes. Nothing when there is no memory.
[[nodiscard]] std::optional<std::filesystem::path> FileSystemPath(const QString &path) noexcept;

/// Whether there is something of this name; where that cannot be told, it counts as not there.
[[nodiscard]] bool FileExists(const QString &path) noexcept;

/// Whether both paths, however they are spelt, lead to one file that exists.
[[nodiscard]] bool IsSameFile(const QString &left, const QString &right) noexcept;

/// Whether opening the file would wait for somebody at its other end: a pipe, a socket.
[[nodiscard]] bool WaitsForOtherEnd(const std::filesystem::path &path) noexcept;

/// The way back. A byte of a Linux path that is no part of a letter is escaped as BytesText does it;
/// FileSystemPath makes the byte of it again.
[[nodiscard]] QString PathText(const std::filesystem::path &path);

} // namespace platform
