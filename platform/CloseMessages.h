// SPDX-License-Identifier: MIT
// The message by which one program asks another to close. Only Windows knows it: the functions do nothing
// elsewhere, where QProcess::terminate sends a signal (see ControlEvents.h).
#pragma once

#include <functional>

namespace platform {

/// Calls `onMessage` for each message that arrives without a window, on the thread of the event loop. One
/// receiver at a time; needs the application object.
void ReceiveCloseMessages(const std::function<void()> &onMessage);

/// Takes the receiver away.
void IgnoreCloseMessages();

} // namespace platform
