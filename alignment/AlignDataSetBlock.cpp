// SPDX-License-Identifier: MIT
#include "alignment/AlignDataSetBlock.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>

// Both allow the block to be made by calloc and copied bytewise.
static_assert(std::is_trivial_v<AlignDataSet>);
static_assert(std::is_standard_layout_v<AlignDataSet>);

namespace {

/// Whether every byte is zero, those between the members included.
bool IsZero(const AlignFreqPoint &point)
{
    static constexpr std::array<unsigned char, sizeof(AlignFreqPoint)> zeros = {};
    return std::memcmp(reinterpret_cast<const unsigned char *>(&point), zeros.data(), zeros.size()) == 0;
}

} // namespace

AlignDataSetBlock::AlignDataSetBlock(std::uint8_t count, SdrType sdrType) noexcept
{
    if (count == 0)
        return;
    DataSets = static_cast<AlignDataSet *>(std::calloc(count, sizeof(AlignDataSet)));
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
    std::free(DataSets);
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
    MaybeWritten[index] = true;
    return DataSets[index];
}

const AlignDataSet &AlignDataSetBlock::operator[](std::size_t index) const
{
    return DataSets[index];
}

std::span<const AlignDataSet> AlignDataSetBlock::all() const
{
    return {DataSets, Size};
}

void AlignDataSetBlock::CopyIntoFresh(const AlignDataSetBlock &source)
{
    // memcpy rather than assignment: the bytes between the members count too.
    const std::size_t count = std::min(Size, source.Size);
    for (std::size_t i = 0; i < count; ++i) {
        const AlignDataSet &from = source.DataSets[i];
        std::memcpy(&DataSets[i], &from, offsetof(AlignDataSet, FreqPoints));
        if (!source.MaybeWritten[i])
            continue;
        AlignDataSet &to = (*this)[i];
        for (std::size_t point = 0; point < from.FreqPoints.size(); ++point) {
            if (!IsZero(from.FreqPoints[point]))
                std::memcpy(&to.FreqPoints[point], &from.FreqPoints[point], sizeof(AlignFreqPoint));
        }
    }
}
