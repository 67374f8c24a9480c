// SPDX-License-Identifier: MIT
// Requests to end that come from the terminal or the system.
#pragma once

#include <cstdint>

namespace platform {

/// The control types that the program acts on; the numbers are those of the Windows console.
inline constexpr std::uint32_t ControlTypeCtrlC = 0;
inline constexpr std::uint32_t ControlTypeShutdown = 6;

/// Called on a thread of its own with a control type. True: handled. False: the system's default action
/// follows, which ends the process.
using ControlHandler = bool (*)(std::uint32_t controlType);

/// Installs the process's one handler; true on success. On Linux SIGINT is Ctrl-C and SIGTERM is shutdown;
/// the signals are not blocked and not ignored, so child processes start with the default actions.
[[nodiscard]] bool InstallControlHandler(ControlHandler handler);

/// Takes the handler away again and restores what was there before. Without a handler it does nothing.
void RemoveControlHandler();

} // namespace platform
