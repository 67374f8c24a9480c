// SPDX-License-Identifier: MIT
// The memory of a table's data sets.
#pragma once

#include <cstddef>
#include <span>

struct AlignDataSet;

/// Owns the data sets of one table: one block, zeroed when it is allocated and freed with the object. The
/// block comes zeroed from the system, so that a data set nobody writes to costs address space but hardly any
/// memory.
class AlignDataSetBlock
{
public:
    AlignDataSetBlock() = default;

    /// Allocates `count` zeroed data sets. The block is empty when `count` is 0 or the memory cannot be had.
    explicit AlignDataSetBlock(std::size_t count) noexcept;
    ~AlignDataSetBlock();

    AlignDataSetBlock(AlignDataSetBlock &&other) noexcept;
    AlignDataSetBlock &operator=(AlignDataSetBlock &&other) noexcept;
    AlignDataSetBlock(const AlignDataSetBlock &) = delete;
    AlignDataSetBlock &operator=(const AlignDataSetBlock &) = delete;

    /// Number of data sets in the block.
    [[nodiscard]] std::size_t size() const { return Size; }
    [[nodiscard]] bool empty() const { return Size == 0; }

    /// Data set `index`, which must be below size().
    [[nodiscard]] AlignDataSet &operator[](std::size_t index);
    [[nodiscard]] const AlignDataSet &operator[](std::size_t index) const;

    [[nodiscard]] std::span<AlignDataSet> all();
    [[nodiscard]] std::span<const AlignDataSet> all() const;

    /// Makes the first data sets equal, byte for byte, to those of `source`, as many as both blocks have.
    /// What is zero in `source` and has never been written here stays untouched, so the copy takes as little
    /// memory as the source does.
    ///
    /// The frequency points of this block must all still be zero, as after allocation.
    void CopyIntoFresh(const AlignDataSetBlock &source);

private:
    AlignDataSet *DataSets = nullptr;
    std::size_t Size = 0;
};
