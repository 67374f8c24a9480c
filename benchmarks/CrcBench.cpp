// SPDX-License-Identifier: MIT
// The checksums of the alignment files against their bit-by-bit form and against other libraries' CRC-32.
#include "alignment/Crc.h"
#include "tools/BitwiseCrc.h"

#include <benchmark/benchmark.h>

#ifdef HAVE_ZLIB
#include <zlib.h>
#endif
#ifdef HAVE_ISAL
#include <isa-l/crc.h>
#endif

#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace {

constexpr std::int64_t tablePayload = 139;
constexpr std::int64_t fullDataSet = 16383;

/// Runs `compute` on arbitrary bytes, as many as the benchmark's argument says.
template <typename Compute>
void Measure(benchmark::State &state, Compute compute)
{
    std::mt19937 engine(1);
    std::vector<std::uint8_t> data(static_cast<std::size_t>(state.range(0)));
    for (std::uint8_t &byte : data)
        byte = static_cast<std::uint8_t>(engine());
    for (auto _ : state) {
        benchmark::DoNotOptimize(data.data());
        benchmark::ClobberMemory();
        auto crc = compute(std::span<const std::uint8_t>(data));
        benchmark::DoNotOptimize(crc);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_Crc8(benchmark::State &state)
{
    Measure(state, [](auto data) { return Crc8(data); });
}

void BM_Crc8Bitwise(benchmark::State &state)
{
    Measure(state, [](auto data) { return tools::BitwiseCrc8(data); });
}

void BM_Crc32(benchmark::State &state)
{
    Measure(state, [](auto data) { return Crc32(data); });
}

void BM_Crc32Bitwise(benchmark::State &state)
{
    Measure(state, [](auto data) { return tools::BitwiseCrc32(data); });
}

BENCHMARK(BM_Crc8)->Arg(tablePayload)->Arg(fullDataSet);
BENCHMARK(BM_Crc8Bitwise)->Arg(tablePayload)->Arg(fullDataSet);
BENCHMARK(BM_Crc32)->Arg(tablePayload)->Arg(fullDataSet);
BENCHMARK(BM_Crc32Bitwise)->Arg(tablePayload)->Arg(fullDataSet);

#ifdef HAVE_ZLIB
// The same polynomial, reflected: other values, the same work.
void BM_Crc32Zlib(benchmark::State &state)
{
    Measure(state, [](auto data) { return crc32(0, data.data(), static_cast<uInt>(data.size())); });
}
BENCHMARK(BM_Crc32Zlib)->Arg(tablePayload)->Arg(fullDataSet);
#endif

#ifdef HAVE_ISAL
// The same polynomial and bit order; its carry-less multiplication instructions are the processor's own.
void BM_Crc32IsaL(benchmark::State &state)
{
    Measure(state, [](auto data) { return crc32_ieee(0, data.data(), data.size()); });
}
BENCHMARK(BM_Crc32IsaL)->Arg(tablePayload)->Arg(fullDataSet);
#endif

} // namespace
