// SPDX-License-Identifier: MIT
#include "platform/FileReplacementSteps.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

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

constexpr const char *AccessList = "system.posix_acl_access";

/// Whether the error says that the file system has no such attribute, or none at all.
bool HasNone(int error)
{
    return error == ENODATA || error == ENOTSUP;
}

/// Copies an extended attribute; one that vanished meanwhile is none.
std::error_code CopyAttribute(const char *from, int to, const char *name)
{
    const ssize_t size = getxattr(from, name, nullptr, 0);
    std::vector<char> value(size > 0 ? static_cast<std::size_t>(size) : 0);
    if (size < 0 || getxattr(from, name, value.data(), value.size()) < 0)
        return ErrorIf(!HasNone(errno));
    return ErrorIf(fsetxattr(to, name, value.data(), value.size(), 0) != 0);
}

/// Gives an open file the access list and the user's attributes of another one, and takes the list away that
/// the folder gave it. Attributes of the system are the system's.
std::error_code CopyAttributes(const char *from, int to)
{
    if (fremovexattr(to, AccessList) != 0 && !HasNone(errno))
        return ErrorIf(true);
    std::error_code error = CopyAttribute(from, to, AccessList);
    const ssize_t size = listxattr(from, nullptr, 0);
    std::vector<char> names(size > 0 ? static_cast<std::size_t>(size) : 0);
    const ssize_t listed = listxattr(from, names.data(), names.size());
    const std::string_view all(names.data(), listed > 0 ? static_cast<std::size_t>(listed) : 0);
    for (std::size_t begin = 0; begin < all.size() && !error; begin = all.find('\0', begin) + 1) {
        if (all.substr(begin).starts_with("user."))
            error = CopyAttribute(from, to, all.data() + begin);
    }
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
    // Only root may give files away. Others may to their groups, and to no other: its members would lose
    // their rights.
    if (fchown(descriptor, status.st_uid, status.st_gid) != 0 &&
        fchown(descriptor, static_cast<uid_t>(-1), status.st_gid) != 0)
        return ErrorIf(true);
    if (fchmod(descriptor, status.st_mode & 07777) != 0)
        return ErrorIf(true);
    return CopyAttributes(likeWhich, descriptor);
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
    const std::error_code error = Sync(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    // Some network file systems know no such thing.
    return error == std::errc::invalid_argument || error == std::errc::not_supported ? std::error_code()
                                                                                     : error;
}

} // namespace platform
