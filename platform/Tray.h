// SPDX-License-Identifier: MIT
// The place for icons on the desktop.
#pragma once

namespace platform {

/// Whether the desktop has a tray at this moment. Needs the application object. On Windows there always is
/// one: while Explorer starts anew its icons come back with it.
[[nodiscard]] bool HasTray();

} // namespace platform
