// SPDX-License-Identifier: MIT
// The frame of the process: from the entry point to the exit code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class QWidget;

/// How the system wants the window shown at the start; the numbers are those of Windows.
enum ShowCommand {
    ShowNormal = 1,
    ShowMinimised = 2,
    ShowMaximised = 3,
    Minimise = 6,
    ShowDefault = 10,
};

/// Runs the program. `arguments` is the command line as UTF-8, the program's name first; `instanceExists`
/// says that another instance runs, in which case this one only tells so. Returns the exit code of the
/// process.
int RunControl(const std::vector<std::string> &arguments, int showCommand, bool instanceExists);

/// Shows or hides a window as a show command asks; one that is not in ShowCommand hides it.
void ApplyShowCommand(QWidget &window, int showCommand);

/// The control handler: the first Ctrl-C or shutdown asks the event loop to end with exit code 0. It returns
/// false for everything else and for a later one, and the system then ends the process. Not called on the GUI
/// thread.
bool CtrlCException(std::uint32_t controlType);
