// SPDX-License-Identifier: MIT
// For LD_PRELOAD: lets one of the calls that write a file fail, the one whose number TARNVIK_FAILING_CALL
// holds. Standard output and standard error are left alone. Where TARNVIK_WRITTEN_MEANWHILE names a file,
// somebody else seems to write to that while the new one goes to the disk.
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

bool Fails()
{
    static int calls = 0;
    static const int failing = [] {
        const char *const number = std::getenv("TARNVIK_FAILING_CALL");
        return number != nullptr ? std::atoi(number) : 0;
    }();
    if (++calls != failing)
        return false;
    errno = EIO;
    return true;
}

/// The system's own function of the name.
template <typename Function>
Function *Next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The signatures are those of the C library.
extern "C" {

ssize_t write(int descriptor, const void *bytes, size_t size)
{
    static auto *const next = Next<ssize_t(int, const void *, size_t)>("write");
    return descriptor > STDERR_FILENO && Fails() ? -1 : next(descriptor, bytes, size);
}

ssize_t writev(int descriptor, const struct iovec *parts, int count)
{
    static auto *const next = Next<ssize_t(int, const struct iovec *, int)>("writev");
    return descriptor > STDERR_FILENO && Fails() ? -1 : next(descriptor, parts, count);
}

int fsync(int descriptor)
{
    static auto *const next = Next<int(int)>("fsync");
    if (const char *const file = std::getenv("TARNVIK_WRITTEN_MEANWHILE")) {
        std::FILE *const stream = std::fopen(file, "a");
        (void)std::fputc('!', stream);
        (void)std::fclose(stream);
    }
    return Fails() ? -1 : next(descriptor);
}

int mkostemps(char *name, int suffixSize, int flags)
{
    static auto *const next = Next<int(char *, int, int)>("mkostemps");
    return Fails() ? -1 : next(name, suffixSize, flags);
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    static auto *const next = Next<int(int, mode_t)>("fchmod");
    return Fails() ? -1 : next(descriptor, mode);
}

int rename(const char *from, const char *to) noexcept
{
    static auto *const next = Next<int(const char *, const char *)>("rename");
    return Fails() ? -1 : next(from, to);
}
}
