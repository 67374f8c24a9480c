// SPDX-License-Identifier: MIT
// What a named semaphore needs on each system so that a release reaches only a process that waits at that
// moment.
#pragma once

#include <QString>

namespace platform {

/// True when a process waits on the named system semaphore. Always true where a release without a waiting
/// process is harmless because the semaphore goes with its last handle. Changes nothing.
[[nodiscard]] bool QuitSignalHasListener(const QString &key);

/// Takes away a count that nobody took, and sees to it that a process that took one does not give it back
/// when it ends. Call it right after a release, and in place of a release that nobody waits for. Does nothing
/// where the system sees to that itself.
void SettleQuitSignal(const QString &key);

} // namespace platform
