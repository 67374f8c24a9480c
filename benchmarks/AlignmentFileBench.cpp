// SPDX-License-Identifier: MIT
// Loading, saving and merging alignment tables against reading and writing the same bytes without looking at
// them.
//
// Counters: "vs_plain" is the time relative to reading or writing as many bytes through one buffer that is
// used again and again, measured in the same benchmark, alternating with it; "vs_keep" (loading only)
// relative to reading the file into fresh memory that holds all of it, which is the least that anyone does
// who keeps what he read. "peak_MB" is the most memory that the process held while measuring, "before_MB"
// what it held when that began.
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignStore.h"
#include "tools/AlignmentGenerator.h"
#include "tools/ProcessMemory.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
using Full = tools::AlignmentGenerator::Full;

constexpr auto none = static_cast<std::int64_t>(SdrType::None);
constexpr auto limeUsb = static_cast<std::int64_t>(SdrType::LimeUsb);
constexpr auto rtlSdr = static_cast<std::int64_t>(SdrType::RtlSdr);

constexpr std::int64_t empty = 0; // no data sets
constexpr std::int64_t deep = 1;  // full data sets: few frequency points with all their entries
constexpr std::int64_t wide = 2;  // full data sets: all frequency points

double SecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// What the benchmarks measure: a store of tables and the file it is saved to.
class Subject
{
public:
    /// Arguments of the benchmark: receiver type, number of tables, layout of their data sets.
    explicit Subject(const benchmark::State &state)
        : Path(Folder.filePath(u"bench.ad"_s)),
          PlainPath(std::filesystem::path(Folder.filePath(u"plain"_s).toStdU16String()))
    {
        // A full wide table of LimeUsb takes 5 MB, an empty one 52 KB.
        if (tools::AvailableMegabytes() < 8000 && state.range(0) == limeUsb && state.range(1) >= 1000)
            return;
        tools::AlignmentGenerator generator(1);
        Store.SdrType = static_cast<SdrType>(state.range(0));
        const auto count = static_cast<int>(state.range(1));
        const bool made =
            state.range(2) == empty
                ? generator.AppendEmptyTables(Store, count)
                : generator.AppendFullTables(Store, count, state.range(2) == deep ? Full::Deep : Full::Wide);
        if (made && Folder.isValid() && Store.SaveFile(Path) == AlignResult::Ok)
            Size = static_cast<std::int64_t>(std::filesystem::file_size(Path.toStdU16String()));
    }

    /// False when the file could not be made, or would not fit into this machine's memory once loaded.
    [[nodiscard]] bool isValid() const { return Size > 0; }

    /// Reads the file piece by piece into a buffer; false on failure.
    [[nodiscard]] bool PlainRead() const
    {
        std::ifstream stream;
        stream.rdbuf()->pubsetbuf(nullptr, 0);
        stream.open(std::filesystem::path(Path.toStdU16String()), std::ios::binary);
        std::vector<char> buffer(alignfile::StreamBufferSize);
        std::int64_t read = 0;
        while (stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) ||
               stream.gcount() > 0) {
            read += stream.gcount();
            benchmark::DoNotOptimize(buffer.data());
        }
        return read == Size;
    }

    /// Reads the file at once into memory of its size; false on failure.
    [[nodiscard]] bool KeepingRead() const
    {
        std::ifstream stream;
        stream.rdbuf()->pubsetbuf(nullptr, 0);
        stream.open(std::filesystem::path(Path.toStdU16String()), std::ios::binary);
        const auto bytes = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(Size));
        stream.read(bytes.get(), Size);
        benchmark::DoNotOptimize(bytes.get());
        return stream.good();
    }

    /// Writes as many bytes as the file has; false on failure.
    [[nodiscard]] bool PlainWrite() const
    {
        std::ofstream stream;
        stream.rdbuf()->pubsetbuf(nullptr, 0);
        stream.open(PlainPath, std::ios::binary | std::ios::trunc);
        const std::vector<char> buffer(alignfile::StreamBufferSize, 'x');
        for (std::int64_t left = Size; left > 0; left -= static_cast<std::int64_t>(buffer.size()))
            stream.write(buffer.data(), std::min(static_cast<std::int64_t>(buffer.size()), left));
        stream.close();
        return stream.good();
    }

private:
    QTemporaryDir Folder;

public:
    AlignStore Store;
    const QString Path;
    std::int64_t Size = 0; // of the file

private:
    const std::filesystem::path PlainPath;
};

/// The time that `work` takes, added to `total`; nothing when it failed.
template <typename Work>
std::optional<double> Time(Work work, double &total)
{
    const Clock::time_point begin = Clock::now();
    if (!work())
        return std::nullopt;
    const double seconds = SecondsSince(begin);
    total += seconds;
    return seconds;
}

void BM_Load(benchmark::State &state)
{
    Subject subject(state);
    if (!subject.isValid()) {
        state.SkipWithError("the file could not be made, or less than 8 GB of memory are free");
        return;
    }
    AlignStore::ClearList(subject.Store.Tables); // only its file is needed
    AlignStore loaded;
    double loading = 0;
    double plain = 0;
    double keeping = 0;
    state.counters["before_MB"] = tools::ResidentMegabytes();
    tools::ResetPeak();
    while (state.KeepRunning()) {
        const bool read = Time([&] { return subject.PlainRead(); }, plain) &&
                          Time([&] { return subject.KeepingRead(); }, keeping);
        const auto seconds = Time(
            [&] { return loaded.LoadFile(subject.Path, loaded.Tables, true) == AlignResult::Ok; }, loading);
        if (!read || !seconds) {
            state.SkipWithError("reading failed");
            return;
        }
        state.SetIterationTime(*seconds);
        AlignStore::ClearList(loaded.Tables); // outside the measured time
    }
    state.counters["peak_MB"] = tools::PeakMegabytes();
    state.counters["file_MB"] = static_cast<double>(subject.Size) / 1e6;
    state.counters["vs_plain"] = loading / plain;
    state.counters["vs_keep"] = loading / keeping;
    state.SetBytesProcessed(state.iterations() * subject.Size);
}

void BM_Save(benchmark::State &state)
{
    Subject subject(state);
    if (!subject.isValid()) {
        state.SkipWithError("the file could not be made, or less than 8 GB of memory are free");
        return;
    }
    double saving = 0;
    double plain = 0;
    state.counters["before_MB"] = tools::ResidentMegabytes();
    tools::ResetPeak();
    while (state.KeepRunning()) {
        const bool written = Time([&] { return subject.PlainWrite(); }, plain).has_value();
        const auto seconds =
            Time([&] { return subject.Store.SaveFile(subject.Path) == AlignResult::Ok; }, saving);
        if (!written || !seconds) {
            state.SkipWithError("writing failed");
            return;
        }
        state.SetIterationTime(*seconds);
    }
    state.counters["peak_MB"] = tools::PeakMegabytes();
    state.counters["file_MB"] = static_cast<double>(subject.Size) / 1e6;
    state.counters["vs_plain"] = saving / plain;
    state.SetBytesProcessed(state.iterations() * subject.Size);
}

void BM_MergeAll(benchmark::State &state)
{
    const Subject subject(state);
    if (!subject.isValid()) {
        state.SkipWithError("the file could not be made, or less than 8 GB of memory are free");
        return;
    }
    std::vector<AlignSelectionEntry> selection;
    for (const AlignTable &table : subject.Store.Tables)
        selection.push_back({std::string(AlignHwIdOf(table)), 0});
    state.counters["before_MB"] = tools::ResidentMegabytes();
    tools::ResetPeak();
    while (state.KeepRunning()) {
        AlignTableList target;
        const Clock::time_point begin = Clock::now();
        const AlignResult result = subject.Store.MergeTables(target, subject.Store.Tables, selection);
        state.SetIterationTime(SecondsSince(begin));
        if (result != AlignResult::Ok || target.Count != subject.Store.Tables.Count) {
            state.SkipWithError("merging failed");
            return;
        }
    }
    state.counters["peak_MB"] = tools::PeakMegabytes();
    state.SetItemsProcessed(state.iterations() * state.range(1));
}

void FileSizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"type", "tables", "layout"})->UseManualTime()->Unit(benchmark::kMillisecond);
    for (const std::int64_t layout : {deep, wide}) {
        for (const std::int64_t tables : {1, 100, 1000})
            benchmark->Args({limeUsb, tables, layout});
    }
    for (const std::int64_t type : {none, rtlSdr, limeUsb})
        benchmark->Args({type, 65535, empty});
}

BENCHMARK(BM_Load)->Apply(FileSizes);
BENCHMARK(BM_Save)->Apply(FileSizes);
BENCHMARK(BM_MergeAll)
    ->ArgNames({"type", "tables", "layout"})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Args({rtlSdr, 65535, empty})
    ->Args({limeUsb, 100, deep});

} // namespace
