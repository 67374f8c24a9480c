// SPDX-License-Identifier: MIT
// How a window goes out of the way.
#pragma once

class QWidget;

/// Whether the desktop has a tray at this moment. Tests say so themselves.
extern bool (*HasTray)();

/// Hides a window whose icon in the tray brings it back. While there is no tray it is minimised instead, so
/// that nobody loses it.
void HideWindow(QWidget &window);
