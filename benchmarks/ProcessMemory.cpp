// SPDX-License-Identifier: MIT
#include "benchmarks/ProcessMemory.h"

#include <fstream>
#include <string>

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

void ResetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}
