// SPDX-License-Identifier: MIT
// What this process and this machine hold of memory, in MB of 1,048,576 bytes.
#pragma once

namespace tools {

/// Memory that this process holds at the moment.
[[nodiscard]] double ResidentMegabytes();

/// The most that it held since its start, on Linux since ResetPeak.
[[nodiscard]] double PeakMegabytes();

/// Lets the peak begin anew at what the process holds now. Only Linux can.
void ResetPeak();

/// Memory of the machine that programs can still have.
[[nodiscard]] double AvailableMegabytes();

} // namespace tools
