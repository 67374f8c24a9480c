// SPDX-License-Identifier: MIT
// The memory of a table's data sets.
#pragma once

#include "alignment/AlignDataSet.h"
#include "alignment/SdrType.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>

/// Owns the data sets of one table: one block, zeroed when it is allocated and freed with the object. Its
/// pages come straight from the system, so that a data set nobody writes to costs address space but hardly
/// any memory.
class AlignDataSetBlock
{
public:
    AlignDataSetBlock() = default;

    /// Allocates `count` data sets, zero but for their tag and receiver type. The block is empty when `count`
    /// is 0 or when there is no memory.
    AlignDataSetBlock(std::uint8_t count, SdrType sdrType) noexcept;
    ~AlignDataSetBlock();

    AlignDataSetBlock(AlignDataSetBlock &&other) noexcept;
    AlignDataSetBlock &operator=(AlignDataSetBlock &&other) noexcept;
    AlignDataSetBlock(const AlignDataSetBlock &) = delete;
    AlignDataSetBlock &operator=(const AlignDataSetBlock &) = delete;

    /// Number of data sets in the block.
    [[nodiscard]] std::size_t size() const { return Size; }
    [[nodiscard]] bool empty() const { return Size == 0; }

    /// Data set `index`, which must be below size(). The first form marks all data sets as possibly written:
    /// the caller may step from one to the next.
    [[nodiscard]] AlignDataSet &operator[](std::size_t index);
    [[nodiscard]] const AlignDataSet &operator[](std::size_t index) const;

    /// Data set `index` for a caller that writes to this one alone. A copy of the block is made faster then.
    [[nodiscard]] AlignDataSet &Only(std::size_t index);

    // All data sets in order, for range-for.
    [[nodiscard]] AlignDataSet *begin();
    [[nodiscard]] AlignDataSet *end() { return DataSets + Size; }
    [[nodiscard]] const AlignDataSet *begin() const { return DataSets; }
    [[nodiscard]] const AlignDataSet *end() const { return DataSets + Size; }

    /// The first `count` data sets, which must be there, for reading.
    [[nodiscard]] std::span<const AlignDataSet> first(std::size_t count) const { return {DataSets, count}; }

    /// Copies the data sets of `source` byte for byte, as many as both blocks have. It does not read the
    /// points of data sets that were never handed out for writing, and does not write pages that are all
    /// zero: either would cost memory or time for nothing. Nobody may have written to this block yet.
    void CopyIntoFresh(const AlignDataSetBlock &source);

private:
    AlignDataSet *DataSets = nullptr;
    std::size_t Size = 0;
    std::bitset<256> MaybeWritten; // by index
};
