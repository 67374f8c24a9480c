// SPDX-License-Identifier: MIT
// Lines on standard output and standard error that nobody need read.
#pragma once

#include <cstdio>
#include <string_view>

namespace platform {

/// Writes the text to one of the process's standard streams, at once. Whoever reads a pipe or a terminal and
/// stops reading must not stop the program: what is not taken within a second is lost, and until more is
/// taken nothing is waited for. Lines of several threads stay whole. Any thread.
void WriteOut(std::FILE *stream, std::string_view text);

} // namespace platform
