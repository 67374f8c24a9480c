// SPDX-License-Identifier: MIT
// What the Windows sources of this folder share about control events.
#pragma once

namespace platform {

/// Puts the installed handler back after the process got or lost a console: the system forgets the handlers
/// then. Without a handler it does nothing.
void RestoreControlHandler();

} // namespace platform
