// SPDX-License-Identifier: MIT
// One data set of a table and the records that it is made of.
#pragma once

#include "alignment/SdrType.h"

#include <array>
#include <cstdint>

/// What AlignDataSet::DataType says, so that a record of the wrong kind is recognised.
inline constexpr std::uint8_t AlignDataSetDataType = 2;

// The measurement values below are carried as they stand: only the programs that measure and use them know
// their units and the meaning of the attributes. The records are fixed-size blocks of plain data, zero in
// every unused byte; the counts say how many entries of the array beside them are used.

/// One entry of a gain table.
struct AlignGainEntry
{
    std::uint16_t Value1;
    std::uint16_t Value2;
    std::uint16_t Value3;
    std::uint16_t Value4;
};

/// The gain table at one sample frequency.
struct AlignSampleRatePoint
{
    std::uint64_t SampleFrequency;
    std::uint8_t GainEntryCount;
    std::uint32_t Attr;
    std::array<AlignGainEntry, 50> GainEntries;
};

/// The sample-rate points at one receive frequency.
struct AlignFreqPoint
{
    std::uint64_t Frequency;
    std::uint8_t Attr;
    std::uint8_t SampleRatePointCount;
    std::array<AlignSampleRatePoint, 10> SampleRatePoints;
};

/// One data set: the alignment of one receive path of a device. Some 400 KB, most of them unused as a rule.
struct AlignDataSet
{
    std::uint8_t DataType;
    ::SdrType SdrType;
    std::uint8_t Attr1;
    std::uint8_t Attr2;
    std::uint8_t Attr3;
    std::uint8_t Attr4;
    std::uint16_t Word1;
    std::uint16_t Word2;
    std::uint16_t FreqPointCount;
    std::array<AlignFreqPoint, 100> FreqPoints;
};
