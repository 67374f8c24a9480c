// SPDX-License-Identifier: MIT
// The memory of a table's data sets.
#pragma once

#include "alignment/AlignDataSet.h"
#include "alignment/SdrType.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>

/// Owns the data sets of one table: one block, zeroed when it is allocated and freed with the object. The
/// block comes zeroed from the system, so that a data set nobody writes to costs address space but hardly any
/// memory.
class AlignDataSetBlock
{
public:
    AlignDataSetBlock() = default;

    /// Allocates `count` data sets, zero but for their tag and receiver type. The block is empty when `count`
    /// is 0 or the memory cannot be had.
    AlignDataSetBlock(std::uint8_t count, SdrType sdrType) noexcept;
    ~AlignDataSetBlock();

    AlignDataSetBlock(AlignDataSetBlock &&other) noexcept;
    AlignDataSetBlock &operator=(AlignDataSetBlock &&other) noexcept;
    AlignDataSetBlock(const AlignDataSetBlock &) = delete;
    AlignDataSetBlock &operator=(const AlignDataSetBlock &) = delete;

    /// Number of data sets in the block.
    [[nodiscard]] std::size_t size() const { return Size; }
    [[nodiscard]] bool empty() const { return Size == 0; }

    /// Data set `index`, which must be below size(). Only what is got from the first form can have been
    /// written to.
    [[nodiscard]] AlignDataSet &operator[](std::size_t index);
    [[nodiscard]] const AlignDataSet &operator[](std::size_t index) const;

    /// All data sets, for reading.
    [[nodiscard]] std::span<const AlignDataSet> all() const;

    /// Makes the first data sets equal, byte for byte, to those of `source`, as many as both blocks have.
    /// What has never been written to in `source` is neither read nor written: reading it would take a page
    /// fault for every 4 KB, writing it as much memory. Nobody may have written to this block yet.
    void CopyIntoFresh(const AlignDataSetBlock &source);

private:
    AlignDataSet *DataSets = nullptr;
    std::size_t Size = 0;
    std::bitset<256> MaybeWritten; // by index: handed out for writing
};
