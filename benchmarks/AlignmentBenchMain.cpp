// SPDX-License-Identifier: MIT
// Entry point of the alignment benchmarks.
#include <benchmark/benchmark.h>

#ifdef HAVE_MALLOPT
#include <malloc.h>
#endif

int main(int argc, char **argv)
{
#ifdef HAVE_MALLOPT
    // After the first large block is freed, and after 65,536 of them, glibc would take such blocks from the
    // heap, where it clears megabytes of a table that uses a few kilobytes.
    (void)mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    (void)mallopt(M_MMAP_MAX, 1 << 20);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
