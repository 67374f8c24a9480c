// SPDX-License-Identifier: MIT
// What a command-line program has of its system.
#pragma once

#include <QStringList>

namespace platform {

/// To be called once, first: a closed pipe behind standard output, and a file that may not grow, become
/// errors of the writing instead of the program's end, and bytes go out as they are, in UTF-8.
void PrepareStandardStreams();

/// The arguments, the program's name first. Those that are no UTF-8 on Linux are as PathText makes them.
/// Needs the application object.
[[nodiscard]] QStringList CommandLineArguments(int argc, char **argv);

} // namespace platform
