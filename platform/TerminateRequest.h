// SPDX-License-Identifier: MIT
// What a parent process, or a user at the terminal, asks when a program is to end.
#pragma once

#include <functional>

namespace platform {

/// Reports every request to terminate while it exists; the system's own action never follows. On Windows a
/// request is the message that QProcess::terminate sends, or Ctrl-C in a console; on Linux SIGTERM or SIGINT.
/// One at a time; needs the application object, and on Windows its running event loop.
class TerminateRequest
{
public:
    /// `onRequest` is called on any thread.
    explicit TerminateRequest(std::function<void()> onRequest);
    ~TerminateRequest();
    TerminateRequest(const TerminateRequest &) = delete;
    TerminateRequest &operator=(const TerminateRequest &) = delete;

    /// False when requests cannot be received.
    [[nodiscard]] bool isListening() const { return Listening; }

private:
    bool Listening = false;
};

} // namespace platform
