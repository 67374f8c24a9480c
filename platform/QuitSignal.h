// SPDX-License-Identifier: MIT
// A named semaphore as a request to quit, which reaches only a process that waits at that moment.
#pragma once

#include <QString>

namespace platform {

/// True when a process waits on the named system semaphore. Always true where a release without a waiting
/// process is harmless because the semaphore goes with its last handle. Changes nothing.
[[nodiscard]] bool QuitSignalHasListener(const QString &key);

/// Releases the named system semaphore once for a process that waits on it at this moment. A process that
/// begins to wait later never gets this request. Errors are silent.
void SendQuitSignal(const QString &key);

} // namespace platform
