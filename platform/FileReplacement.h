// SPDX-License-Identifier: MIT
// Writes a file whole or not at all.
#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <system_error>

namespace platform {

/// The steps of ReplaceFile, in order.
enum class ReplaceStep { None, Check, Create, Write, Sync, LastLook, Replace, SyncFolder };

/// The step that failed, None when all is done, and why.
struct ReplaceResult
{
    ReplaceStep Failed = ReplaceStep::None;
    std::error_code Reason;
};

/// Replaces the file at `path`, or makes it, by what `write` puts into a binary stream: into a temporary file
/// in the same folder, which then takes its place. Whoever finds the file, after the program or the system
/// was stopped at any moment, finds it as it was or as it is to be; it is as it was after every failure but
/// that of the last step. `write` is false when it failed. `mayReplace` is asked right before the replacing;
/// when it is false nothing is replaced.
///
/// A symbolic link stays one, and its target is replaced; another hard link keeps the old file. Rights,
/// access lists and extended attributes (on Windows access lists, and whether the file is hidden, of the
/// system or not to be indexed) stay as they were, and so does the owner where the user may give files away;
/// where not even the group can stay, and for a file that may not be written to, nothing is replaced. A
/// program that is ended meanwhile leaves a temporary file behind; its name is that of the file, some letters
/// and ".tmp". On Windows somebody who holds the file open is waited for, for up to 2 s.
[[nodiscard]] ReplaceResult ReplaceFile(const std::filesystem::path &path,
                                        const std::function<bool(std::ostream &)> &write,
                                        const std::function<bool()> &mayReplace = {});

} // namespace platform
