// SPDX-License-Identifier: MIT
#include "platform/WriteLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

namespace platform {

namespace {

constexpr std::chrono::milliseconds Pause{10};

/// The folder in which the file itself lies, not a link to it.
std::filesystem::path FolderOf(const std::filesystem::path &file)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::weakly_canonical(file, error).parent_path();
    return error || folder.empty() ? std::filesystem::path(".") : folder;
}

} // namespace

struct WriteLock::State
{
    int Descriptor = -1;
    bool TimedOut = false;
};

WriteLock::WriteLock(const std::filesystem::path &file, int mostMs) : Held(std::make_unique<State>())
{
    Held->Descriptor = open(FolderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(mostMs);
    while (Held->Descriptor != -1 && flock(Held->Descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return;
        Held->TimedOut = std::chrono::steady_clock::now() >= end;
        if (Held->TimedOut)
            return;
        std::this_thread::sleep_for(Pause); // the call that waits cannot be told for how long
    }
}

WriteLock::~WriteLock()
{
    if (Held->Descriptor != -1)
        close(Held->Descriptor); // and with it the lock
}

bool WriteLock::timedOut() const
{
    return Held->TimedOut;
}

} // namespace platform
