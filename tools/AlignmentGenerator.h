// SPDX-License-Identifier: MIT
// Makes alignment tables from a seed, for tests, benchmarks and demonstration data.
#pragma once

#include "alignment/AlignStore.h"

#include <cstdint>
#include <random>
#include <string>

namespace tools {

/// Fills stores with tables. The same seed gives the same tables on every system. Unused array entries stay
/// zero, as the file format does not carry them.
class AlignmentGenerator
{
public:
    explicit AlignmentGenerator(std::uint64_t seed) : Engine(seed), ReadableIdMask(std::mt19937_64(~seed)())
    {}

    /// How the frequency points of a full data set are laid out. Either way the payload has the greatest
    /// length below the limit of a chunk that the layout allows.
    enum class Full {
        Deep, // few frequency points, each with all its sample-rate points and gain entries
        Wide, // all frequency points, spread over the whole data set
    };

    /// A receiver type that has data sets.
    SdrType AnySdrType();

    /// A number from 0 to `most`.
    std::uint64_t UpTo(std::uint64_t most);

    /// A hardware id: 0 to 128 bytes of any value but NUL. Of the full length it has no NUL at its end.
    std::string AnyHwId();

    /// A hardware id as devices report it: "0x" and 16 hexadecimal digits, never twice from one generator.
    std::string ReadableHwId();

    /// Writes the id into the table. What follows the NUL is zero, or, with `garbage`, arbitrary bytes, which
    /// a file carries like the id itself.
    void SetHwId(AlignTable &table, const std::string &hwId, bool garbage = false);

    /// Fills the data set at random: any counts up to the capacities with a payload of at most `payloadSize`
    /// bytes (10 to 16,383).
    void FillDataSet(AlignDataSet &dataSet, std::size_t payloadSize);

    /// Fills the data set with as much as a chunk holds.
    static void FillDataSetFull(AlignDataSet &dataSet, Full layout);

    /// Appends a table of the store's type with arbitrary contents to the store's Tables; each data set's
    /// payload has at most `payloadSize` bytes. Null when there is no memory.
    AlignTable *AppendTable(AlignStore &store, std::size_t payloadSize = 16383);

    /// Appends `count` tables whose data sets are all full, with readable ids. False when there is no memory.
    bool AppendFullTables(AlignStore &store, int count, Full layout);

    /// Appends `count` tables without data sets, with readable ids. False when there is no memory.
    bool AppendEmptyTables(AlignStore &store, int count);

    /// Appends `count` tables as a station has them: readable ids, dates of alignment of the years 2020 to
    /// 2025, some frequency points in every data set. False when there is no memory.
    bool AppendDemonstrationTables(AlignStore &store, int count);

private:
    AlignTable *AppendReadableTable(AlignStore &store);

    std::mt19937_64 Engine;
    std::uint64_t ReadableIds = 0;
    std::uint64_t ReadableIdMask;
};

} // namespace tools
