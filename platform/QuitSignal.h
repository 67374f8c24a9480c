// SPDX-License-Identifier: MIT
// What a named semaphore needs on each system so that a release reaches only a process that waits at that
// moment.
#pragma once

#include <QString>

namespace platform {

/// True when a process may be waiting on the named system semaphore. Where named semaphores outlive their
/// last handle this looks for a waiting process and, if there is none, takes away any count that was left
/// behind; where they do not, it is always true.
[[nodiscard]] bool QuitSignalHasListener(const QString &key);

/// Called right after a release: a count that nobody took is taken away, and a process that took it does not
/// give it back when it ends. Does nothing where the system sees to that itself.
void SettleQuitSignal(const QString &key);

} // namespace platform
