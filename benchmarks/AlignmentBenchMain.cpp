// SPDX-License-Identifier: MIT
// Entry point of the alignment benchmarks.
#include "platform/LargeBlocks.h"

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    platform::KeepLargeBlocksMapped(); // as the program does
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
