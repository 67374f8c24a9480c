// SPDX-License-Identifier: MIT
// The program's icon in the tray of a virtual desktop.
#pragma once

#include <QPoint>

namespace tests {

/// The middle of the only icon in the tray.
[[nodiscard]] QPoint TrayIcon();

/// Returns when all clicks before have been dealt with: the menu of the icon opens, and is closed, after
/// them. A click that follows is none of a double click.
[[nodiscard]] bool AwaitTrayClicks();

} // namespace tests
