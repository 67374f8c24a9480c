// SPDX-License-Identifier: MIT
// What ReplaceFile has of its system. Each step gives the error, or none.
#pragma once

#include <filesystem>
#include <system_error>

namespace platform {

/// Whether this user may write to the file.
[[nodiscard]] std::error_code CheckWritable(const std::filesystem::path &file);

/// Makes an empty file of a new name beside the target, with the rights of the target, or of a new file where
/// there is no target.
[[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path &target,
                                              std::filesystem::path &temporary);

/// Waits until the file's contents are on the disk.
[[nodiscard]] std::error_code SyncFile(const std::filesystem::path &file);

/// Puts the file in the place of the target, at once for everybody.
[[nodiscard]] std::error_code TakePlace(const std::filesystem::path &file,
                                        const std::filesystem::path &target);

/// Waits until the file's name is on the disk.
[[nodiscard]] std::error_code SyncFolderOf(const std::filesystem::path &file);

} // namespace platform
