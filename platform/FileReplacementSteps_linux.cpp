// SPDX-License-Identifier: MIT
#include "platform/FileReplacementSteps.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace platform {

namespace {

std::error_code ErrorIf(bool failed)
{
    return failed ? std::error_code(errno, std::generic_category()) : std::error_code();
}

std::error_code Sync(const char *path, int flags)
{
    const int descriptor = open(path, flags | O_CLOEXEC);
    if (descriptor == -1)
        return ErrorIf(true);
    const std::error_code error = ErrorIf(fsync(descriptor) != 0);
    close(descriptor);
    return error;
}

/// Gives an open file the rights of another one, or those of a new file when there is none.
std::error_code SetRights(int descriptor, const char *likeWhich)
{
    struct stat status = {};
    if (stat(likeWhich, &status) != 0) {
        const mode_t mask = umask(0); // there is no other way to ask for it
        umask(mask);
        return ErrorIf(fchmod(descriptor, 0666 & ~mask) != 0);
    }
    // Only root may give files away, and others only to their groups. The group's rights are then not theirs.
    mode_t mode = status.st_mode & 07777;
    if (fchown(descriptor, status.st_uid, status.st_gid) != 0 &&
        fchown(descriptor, static_cast<uid_t>(-1), status.st_gid) != 0)
        mode &= ~static_cast<mode_t>(070);
    return ErrorIf(fchmod(descriptor, mode) != 0);
}

} // namespace

std::error_code CheckWritable(const std::filesystem::path &file)
{
    return ErrorIf(faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) != 0);
}

std::error_code CreateTemporary(const std::filesystem::path &target, std::filesystem::path &temporary)
{
    std::string name = target.native() + ".XXXXXX.tmp";
    const int descriptor = mkostemps(name.data(), 4, O_CLOEXEC);
    if (descriptor == -1)
        return ErrorIf(true);
    const std::error_code error = SetRights(descriptor, target.c_str());
    close(descriptor);
    if (error)
        unlink(name.c_str());
    temporary = name;
    return error;
}

std::error_code SyncFile(const std::filesystem::path &file)
{
    return Sync(file.c_str(), O_WRONLY);
}

std::error_code TakePlace(const std::filesystem::path &file, const std::filesystem::path &target)
{
    return ErrorIf(std::rename(file.c_str(), target.c_str()) != 0);
}

std::error_code SyncFolderOf(const std::filesystem::path &file)
{
    const std::filesystem::path folder = file.parent_path();
    return Sync(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
}

} // namespace platform
