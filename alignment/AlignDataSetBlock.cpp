// SPDX-License-Identifier: MIT
#include "alignment/AlignDataSetBlock.h"

#include "platform/ZeroedPages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

// Both allow the block to begin as zeroed memory and to be copied bytewise.
static_assert(std::is_trivial_v<AlignDataSet>);
static_assert(std::is_standard_layout_v<AlignDataSet>);

namespace {

/// Blocks are copied in pieces of this size, which is that of a page: what is all zero is left out.
constexpr std::size_t PieceSize = 4096;

bool IsZero(const std::byte *bytes, std::size_t size)
{
    static constexpr std::array<std::byte, PieceSize> zeros = {};
    return std::memcmp(bytes, zeros.data(), size) == 0;
}

/// Copies the bytes from `begin` to `end` of a block into a fresh one.
void CopyBytesIntoFresh(std::byte *to, const std::byte *from, std::size_t begin, std::size_t end)
{
    while (begin < end) {
        const std::size_t size = std::min(end, (begin / PieceSize + 1) * PieceSize) - begin;
        if (!IsZero(from + begin, size))
            std::memcpy(to + begin, from + begin, size);
        begin += size;
    }
}

} // namespace

AlignDataSetBlock::AlignDataSetBlock(std::uint8_t count, SdrType sdrType) noexcept
{
    if (count == 0)
        return;
    DataSets = static_cast<AlignDataSet *>(platform::AllocateZeroedPages(count * sizeof(AlignDataSet)));
    if (DataSets == nullptr)
        return;
    Size = count;
    for (AlignDataSet &dataSet : std::span(DataSets, Size)) {
        dataSet.DataType = AlignDataSetDataType;
        dataSet.SdrType = sdrType;
    }
}

AlignDataSetBlock::~AlignDataSetBlock()
{
    platform::FreePages(DataSets, Size * sizeof(AlignDataSet));
}

AlignDataSetBlock::AlignDataSetBlock(AlignDataSetBlock &&other) noexcept
    : DataSets(std::exchange(other.DataSets, nullptr)),
      Size(std::exchange(other.Size, 0)),
      MaybeWritten(std::exchange(other.MaybeWritten, {}))
{}

AlignDataSetBlock &AlignDataSetBlock::operator=(AlignDataSetBlock &&other) noexcept
{
    AlignDataSetBlock moved(std::move(other));
    std::swap(DataSets, moved.DataSets);
    std::swap(Size, moved.Size);
    std::swap(MaybeWritten, moved.MaybeWritten);
    return *this;
}

AlignDataSet &AlignDataSetBlock::operator[](std::size_t index)
{
    return begin()[index];
}

AlignDataSet &AlignDataSetBlock::Only(std::size_t index)
{
    MaybeWritten[index] = true;
    return DataSets[index];
}

AlignDataSet *AlignDataSetBlock::begin()
{
    MaybeWritten.set(); // from here on nobody knows where the caller writes
    return DataSets;
}

const AlignDataSet &AlignDataSetBlock::operator[](std::size_t index) const
{
    return DataSets[index];
}

void AlignDataSetBlock::CopyIntoFresh(const AlignDataSetBlock &source)
{
    // Bytes rather than members: those between the members count too.
    auto *const to = reinterpret_cast<std::byte *>(DataSets);
    const auto *const from = reinterpret_cast<const std::byte *>(source.DataSets);
    const std::size_t count = std::min(Size, source.Size);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t begin = i * sizeof(AlignDataSet);
        const std::size_t size =
            source.MaybeWritten[i] ? sizeof(AlignDataSet) : offsetof(AlignDataSet, FreqPoints);
        CopyBytesIntoFresh(to, from, begin, begin + size);
        MaybeWritten[i] = source.MaybeWritten[i];
    }
}
