// SPDX-License-Identifier: MIT
// What this process and this machine hold of memory, as Linux tells it.
#pragma once

#include <string_view>

/// The number behind `key` in one of the kernel's status files, which is in KB, as MB; 0 where there is no
/// such file.
double StatusMegabytes(const char *file, std::string_view key);

/// Lets the peak (VmHWM of /proc/self/status) begin anew at what the process holds now.
void ResetPeak();
