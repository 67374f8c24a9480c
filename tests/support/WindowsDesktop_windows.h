// SPDX-License-Identifier: MIT
// Windows of other processes and a user's hands, for tests of the whole program.
#pragma once

#include <QString>

#include <windows.h>

#include <vector>

namespace tests {

/// The visible top-level windows of a process with exactly this title; of any process when it is 0.
std::vector<HWND> WindowsTitled(const QString &title, DWORD processId = 0);
/// The one such window, null when there is none or more than one.
HWND OnlyWindow(const QString &title, DWORD processId = 0);
/// Gives a window the keyboard and presses a key together with a modifier (0 for none), as virtual key codes;
/// false when the window does not get the keyboard.
bool Press(HWND window, WORD modifier, WORD key);
/// Presses a key where the keyboard is: in an open menu, which is a window of its own and closes when another
/// one gets the keyboard.
bool Press(WORD key);
/// The text in the clipboard; empty when there is none or the clipboard is in use.
QString ClipboardText();
void ClearClipboard();
/// The text of all that a console shows, by the process that owns it; nothing when the process has no
/// console.
QString ConsoleText(DWORD processId);
/// The console's input mode, ENABLE_QUICK_EDIT_MODE among others; 0 when the process has no console.
DWORD ConsoleInputMode(DWORD processId);
/// Sends Ctrl-C to the console of a process; false when it has none.
bool SendCtrlC(DWORD processId);

} // namespace tests
