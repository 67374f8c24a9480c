// SPDX-License-Identifier: MIT
// What a window says to its user.
#pragma once

#include <QMenu>
#include <QStringList>
#include <QWidget>

namespace tests {

/// Every text of the window, its children, their entries, tool tips and what assistive tools read: titles,
/// labels, buttons, header lines, entries of menus and their submenus, lists to choose from. Not what the
/// user types in, nor files in a folder, nor the contents of text panels.
[[nodiscard]] QStringList ShownTexts(const QWidget &window);

/// The shortcuts of a menu's entries as it shows them.
[[nodiscard]] QStringList ShownShortcuts(const QMenu &menu);

/// The letters that more than one entry of one menu, or more than one part of one dialog, answers to; the
/// texts concerned, one entry per letter. For a window with a menu bar: the bar and each of its menus.
[[nodiscard]] QStringList MnemonicCollisions(const QWidget &window);

/// The texts of visible buttons and labels that have less room than they need.
[[nodiscard]] QStringList CutOffTexts(const QWidget &window);

} // namespace tests
