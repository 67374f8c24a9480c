// SPDX-License-Identifier: MIT
#include "tools/ProcessMemory.h"

#include <fstream>
#include <string>
#include <string_view>

namespace tools {

namespace {

/// The number behind `key` in one of the kernel's status files, which is in KB.
double StatusMegabytes(const char *file, std::string_view key)
{
    std::ifstream status(file);
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == key && status >> kilobytes)
            return kilobytes / 1024;
    }
    return 0;
}

} // namespace

double ResidentMegabytes()
{
    return StatusMegabytes("/proc/self/status", "VmRSS:");
}

double PeakMegabytes()
{
    return StatusMegabytes("/proc/self/status", "VmHWM:");
}

void ResetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

double AvailableMegabytes()
{
    return StatusMegabytes("/proc/meminfo", "MemAvailable:");
}

} // namespace tools
