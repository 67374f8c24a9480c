// SPDX-License-Identifier: MIT
// The debug console.
#pragma once

namespace platform {

/// Opens a console and sends standard output and standard error to it; true when it opened one. Where the
/// streams exist anyway it does nothing and returns false.
[[nodiscard]] bool OpenConsole();

/// Closes the console that OpenConsole opened.
void CloseConsole();

} // namespace platform
