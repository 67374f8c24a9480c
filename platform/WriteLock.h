// SPDX-License-Identifier: MIT
// Keeps programs that change the same file from doing it at the same time.
#pragma once

#include <filesystem>
#include <memory>

namespace platform {

/// Held from reading a file to replacing it, so that what another program that holds one writes meanwhile is
/// not lost. It is for the whole folder of the file, leaves nothing there, and ends with the process, however
/// that ends. Where the system cannot lock the folder (some network drives) all goes on without.
class WriteLock
{
public:
    /// Waits for whoever holds it, for up to `mostMs`.
    explicit WriteLock(const std::filesystem::path &file, int mostMs = 10'000);
    ~WriteLock();
    WriteLock(const WriteLock &) = delete;
    WriteLock &operator=(const WriteLock &) = delete;

    /// Somebody else held it all the time.
    [[nodiscard]] bool timedOut() const;

private:
    struct State;
    std::unique_ptr<State> Held;
};

} // namespace platform
