// SPDX-License-Identifier: MIT
#include "platform/FileReplacement.h"

#include "platform/FileReplacementSteps.h"

#include <cerrno>
#include <fstream>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// The error of the system's last call, or another one when it tells none.
std::error_code LastError()
{
    return errno != 0 ? std::error_code(errno, std::generic_category())
                      : std::make_error_code(std::errc::io_error);
}

/// Follows links to the file that is to be replaced.
std::error_code FindTarget(const fs::path &path, fs::path &target)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        // What a dangling link points to is nobody's to make.
        target = path;
        std::error_code ignored;
        return fs::is_symlink(path, ignored) ? error : std::error_code();
    }
    if (error)
        return error;
    if (!fs::is_regular_file(status))
        return std::make_error_code(fs::is_directory(status) ? std::errc::is_a_directory
                                                             : std::errc::operation_not_supported);
    target = fs::canonical(path, error);
    return error ? error : CheckWritable(target);
}

bool WriteTo(const fs::path &file, const std::function<bool(std::ostream &)> &write)
{
    errno = 0;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!stream.is_open() || !write(stream))
        return false;
    stream.close();
    return stream.good();
}

} // namespace

ReplaceResult ReplaceFile(const fs::path &path, const std::function<bool(std::ostream &)> &write,
                          const std::function<bool()> &mayReplace)
{
    fs::path target;
    if (const std::error_code error = FindTarget(path, target))
        return {ReplaceStep::Check, error};
    fs::path temporary;
    if (const std::error_code error = CreateTemporary(target, temporary))
        return {ReplaceStep::Create, error};
    ReplaceResult result;
    if (!WriteTo(temporary, write))
        result = {ReplaceStep::Write, LastError()};
    else if (const std::error_code syncError = SyncFile(temporary))
        result = {ReplaceStep::Sync, syncError};
    else if (mayReplace && !mayReplace())
        result = {ReplaceStep::LastLook, std::make_error_code(std::errc::device_or_resource_busy)};
    else if (const std::error_code replaceError = TakePlace(temporary, target))
        result = {ReplaceStep::Replace, replaceError};
    else if (const std::error_code folderError = SyncFolderOf(target))
        return {ReplaceStep::SyncFolder, folderError};
    if (result.Failed != ReplaceStep::None) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
    }
    return result;
}

} // namespace platform
