// SPDX-License-Identifier: MIT
// Requests to this process to end.
#pragma once

#include <functional>

namespace platform {

/// Calls a function for each request to end, in the place of the system's own action, while it exists. On
/// Linux a request is SIGTERM or SIGINT; on Windows it is the message that QProcess::terminate sends and
/// every event of the console, and Windows itself ends the process after a close, a sign-out and a shutdown.
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
