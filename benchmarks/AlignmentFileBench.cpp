// SPDX-License-Identifier: MIT
// Loading, saving and merging alignment tables against reading and writing the same bytes without looking at
// them.
//
// Counters: MB/s of file; "vs_plain" is the time relative to the plain reading or writing measured in the
// same benchmark, alternating with it; "peak_MB" the most memory the process held while measuring,
// "before_MB" what it held when that began.
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignStore.h"
#include "tests/support/AlignmentGenerator.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Full = tests::AlignmentGenerator::Full;

double SecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// A value of this process's status in MB ("VmHWM:", "VmRSS:"); 0 on systems that have no such file.
double StatusMegabytes(std::string_view key)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == key && status >> kilobytes)
            return kilobytes / 1024;
    }
    return 0;
}

/// Lets the peak begin anew at what the process holds now.
void ResetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

/// What the benchmarks measure: a store of tables, made when first needed, and the file it is saved to.
class Subject
{
public:
    explicit Subject(const benchmark::State &state)
    {
        Path = Folder.filePath(QStringLiteral("bench.ad"));
        PlainPath = Folder.filePath(QStringLiteral("plain"));
        tests::AlignmentGenerator generator(1);
        Store.SdrType = static_cast<SdrType>(state.range(0));
        const auto count = static_cast<int>(state.range(1));
        const bool made =
            state.range(2) == 0
                ? generator.AppendEmptyTables(Store, count)
                : generator.AppendFullTables(Store, count, state.range(2) == 1 ? Full::Deep : Full::Wide);
        if (made && Folder.isValid() && Store.SaveFile(Path) == AlignResult::Ok)
            Size = static_cast<std::int64_t>(std::filesystem::file_size(Path.toStdU16String()));
    }

    [[nodiscard]] bool isValid() const { return Size > 0; }

    /// Reads the file into a buffer; false on failure.
    [[nodiscard]] bool PlainRead() const
    {
        std::ifstream stream(std::filesystem::path(Path.toStdU16String()), std::ios::binary);
        std::vector<char> buffer(alignfile::StreamBufferSize);
        stream.rdbuf()->pubsetbuf(nullptr, 0);
        std::int64_t read = 0;
        while (stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) ||
               stream.gcount() > 0) {
            read += stream.gcount();
            benchmark::DoNotOptimize(buffer.data());
        }
        return read == Size;
    }

    /// Writes as many bytes as the file has; false on failure.
    [[nodiscard]] bool PlainWrite() const
    {
        std::ofstream stream;
        stream.rdbuf()->pubsetbuf(nullptr, 0);
        stream.open(std::filesystem::path(PlainPath.toStdU16String()), std::ios::binary | std::ios::trunc);
        const std::vector<char> buffer(alignfile::StreamBufferSize, 'x');
        for (std::int64_t left = Size; left > 0; left -= static_cast<std::int64_t>(buffer.size()))
            stream.write(buffer.data(), std::min(static_cast<std::streamsize>(buffer.size()),
                                                 static_cast<std::streamsize>(left)));
        stream.close();
        return stream.good();
    }

    AlignStore Store;
    QString Path;
    QString PlainPath;
    std::int64_t Size = 0;

private:
    QTemporaryDir Folder;
};

/// Measures `work` as the benchmark's time, alternating with `plain`.
template <typename Work, typename Plain>
void MeasureAgainst(benchmark::State &state, const Subject &subject, Work work, Plain plain)
{
    double workSeconds = 0;
    double plainSeconds = 0;
    state.counters["before_MB"] = StatusMegabytes("VmRSS:");
    ResetPeak();
    for (auto _ : state) {
        Clock::time_point begin = Clock::now();
        if (!plain()) {
            state.SkipWithError("plain reading or writing failed");
            return;
        }
        plainSeconds += SecondsSince(begin);
        begin = Clock::now();
        if (!work()) {
            state.SkipWithError("loading or saving failed");
            return;
        }
        const double seconds = SecondsSince(begin);
        state.SetIterationTime(seconds);
        workSeconds += seconds;
    }
    state.counters["peak_MB"] = StatusMegabytes("VmHWM:");
    state.counters["file_MB"] = static_cast<double>(subject.Size) / 1e6;
    state.counters["vs_plain"] = workSeconds / plainSeconds;
    state.SetBytesProcessed(state.iterations() * subject.Size);
}

void BM_Load(benchmark::State &state)
{
    Subject subject(state);
    if (!subject.isValid()) {
        state.SkipWithError("the file could not be made");
        return;
    }
    AlignStore::ClearList(subject.Store.Tables); // only its file is needed
    AlignStore loaded;
    // Freeing the tables of the round before is part of a load.
    MeasureAgainst(
        state, subject, [&] { return loaded.LoadFile(subject.Path, loaded.Tables, true) == AlignResult::Ok; },
        [&] { return subject.PlainRead(); });
}

void BM_Save(benchmark::State &state)
{
    Subject subject(state);
    if (!subject.isValid()) {
        state.SkipWithError("the file could not be made");
        return;
    }
    MeasureAgainst(
        state, subject, [&] { return subject.Store.SaveFile(subject.Path) == AlignResult::Ok; },
        [&] { return subject.PlainWrite(); });
}

void BM_MergeAll(benchmark::State &state)
{
    const Subject subject(state);
    if (!subject.isValid()) {
        state.SkipWithError("the file could not be made");
        return;
    }
    std::vector<AlignSelectionEntry> selection;
    for (const AlignTableNode *node = subject.Store.Tables.Head; node != nullptr; node = node->Next)
        selection.push_back({node->Table->HwId.data(), 0}); // readable ids end with NUL
    state.counters["before_MB"] = StatusMegabytes("VmRSS:");
    ResetPeak();
    for (auto _ : state) {
        AlignTableList target;
        const Clock::time_point begin = Clock::now();
        const AlignResult result = subject.Store.MergeTables(target, subject.Store.Tables, selection);
        state.SetIterationTime(SecondsSince(begin));
        if (result != AlignResult::Ok || target.Count != subject.Store.Tables.Count) {
            state.SkipWithError("merging failed");
            return;
        }
    }
    state.counters["peak_MB"] = StatusMegabytes("VmHWM:");
    state.SetItemsProcessed(state.iterations() * state.range(1));
}

constexpr auto none = static_cast<std::int64_t>(SdrType::None);
constexpr auto limeUsb = static_cast<std::int64_t>(SdrType::LimeUsb);
constexpr auto rtlSdr = static_cast<std::int64_t>(SdrType::RtlSdr);

constexpr std::int64_t empty = 0; // no data sets
constexpr std::int64_t deep = 1;  // full data sets: few frequency points with all their entries
constexpr std::int64_t wide = 2;  // full data sets: all frequency points

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
