// SPDX-License-Identifier: MIT
// Lines on standard output and standard error that nobody need read.
#pragma once

#include <cstdio>
#include <string_view>

namespace platform {

/// Writes the text to one of the process's standard streams, at once. On Linux whoever reads a pipe or a
/// terminal and stops reading does not stop the program: what is not taken within a second is lost, and until
/// more is taken nothing is waited for. Windows cannot be asked whether a pipe takes more: there the call
/// waits. Lines of several threads stay whole. Any thread.
void WriteOut(std::FILE *stream, std::string_view text);

} // namespace platform
