// SPDX-License-Identifier: MIT
// A named semaphore as a request to quit.
#pragma once

#include <QString>

namespace platform {

/// How many processes wait on the named system semaphore; always 1 on Windows, which does not tell. Changes
/// nothing.
[[nodiscard]] int QuitSignalListeners(const QString &key);

/// Asks the process that waits on the named system semaphore to quit, once. On Linux every process that waits
/// at this moment gets the request, and no other; on Windows a process that holds the semaphore open gets it
/// with its next wait. A process that opens the semaphore later never gets it. Errors are silent.
void SendQuitSignal(const QString &key);

} // namespace platform
