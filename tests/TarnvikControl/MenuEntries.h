// SPDX-License-Identifier: MIT
// The entries of the main window's menu bar, and what they store.
#pragma once

#include <QAction>
#include <QMainWindow>
#include <QSettings>
#include <QString>

namespace tests {

/// The entry with the text in one of the window's menus, submenus themselves included; null when there is
/// none.
[[nodiscard]] QAction *MenuEntry(const QMainWindow &window, const QString &text);

/// The style entries that are checked, as the numbers of "GuiStyle", for example "1".
[[nodiscard]] QString CheckedStyles(const QMainWindow &window);

/// The program's settings.
[[nodiscard]] QSettings StoredSettings();

} // namespace tests
