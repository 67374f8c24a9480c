// SPDX-License-Identifier: MIT
#include "tools/ProcessMemory.h"

#include <windows.h>

#include <psapi.h>

namespace tools {

namespace {

constexpr double BytesPerMegabyte = 1024 * 1024;

PROCESS_MEMORY_COUNTERS Counters()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters;
}

} // namespace

double ResidentMegabytes()
{
    return static_cast<double>(Counters().WorkingSetSize) / BytesPerMegabyte;
}

double PeakMegabytes()
{
    return static_cast<double>(Counters().PeakWorkingSetSize) / BytesPerMegabyte;
}

void ResetPeak() {}

double AvailableMegabytes()
{
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    GlobalMemoryStatusEx(&status);
    return static_cast<double>(status.ullAvailPhys) / BytesPerMegabyte;
}

} // namespace tools
