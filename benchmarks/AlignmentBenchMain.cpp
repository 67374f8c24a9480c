// SPDX-License-Identifier: MIT
// Entry point of the alignment benchmarks.
#include <benchmark/benchmark.h>

#ifdef HAVE_MALLOPT
#include <malloc.h>
#endif

int main(int argc, char **argv)
{
#ifdef HAVE_MALLOPT
    // After the first large block is freed, glibc would take such blocks from the heap, where it must clear
    // them: five megabytes for a table that uses a few kilobytes.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
