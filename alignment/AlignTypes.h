// SPDX-License-Identifier: MIT
// The records that hold the alignment (calibration) of receivers, and the lists indexed by receiver type.
#pragma once

#include "alignment/AlignDataSetBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The receiver types. A file may carry any byte here; a value above AirSpy is treated like None.
enum class SdrType : std::uint8_t {
    None = 0,
    LimeMini = 1,
    LimeUsb = 2,
    RtlSdr = 3,
    AirSpy = 4,
};

/// Names of the drivers as the user sees them, indexed by SdrType.
inline constexpr std::array<const char *, 5> AlignDriverNames = {"", "LimeMini", "LimeUsb", "RTL-SDR",
                                                                 "AirSpy"};

/// Names of the drivers' alignment files, indexed by SdrType.
inline constexpr std::array<const char *, 5> AlignDriverFileNames = {
    "",
    "TarnvikDriver_LimeMini.ad",
    "TarnvikDriver_LimeUsb.ad",
    "TarnvikDriver_RtlSdr.ad",
    "TarnvikDriver_Airspy.ad",
};

/// Number of data sets that a table of the type has: one per receive path; 0 for None and unknown types.
[[nodiscard]] constexpr std::uint8_t AlignDataSetCapacityOf(SdrType sdrType)
{
    constexpr std::array<std::uint8_t, 5> capacities = {0, 6, 12, 1, 4};
    const auto index = static_cast<std::size_t>(sdrType);
    return index < capacities.size() ? capacities[index] : std::uint8_t{0};
}

/// What AlignTable::DataType and AlignDataSet::DataType say, so that a record of the wrong kind is
/// recognised.
inline constexpr std::uint8_t AlignTableDataType = 1;
inline constexpr std::uint8_t AlignDataSetDataType = 2;

/// The one version of files and of table records that there is.
inline constexpr std::uint8_t AlignVersion = 5;

/// Length of AlignTable::HwId.
inline constexpr std::size_t AlignHwIdSize = 128;

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

/// The alignment of one device. AlignStore::InitTable makes one ready for use; a value-initialised one is all
/// zero and has no data sets.
struct AlignTable
{
    std::uint8_t DataType = 0;
    ::SdrType SdrType = ::SdrType::None;
    std::uint8_t Version = 0;
    /// The hardware id of the device, the key of the table; ends with NUL when shorter than the array.
    std::array<char, AlignHwIdSize> HwId = {};
    /// Date of alignment, in seconds since 1970-01-01 00:00:00 UTC.
    std::uint64_t AlignedAt = 0;
    /// Number of data sets as the table states it. A loaded table repeats what the file says here, whatever
    /// was allocated: DataSets.size() is the number of data sets that are really there.
    std::uint8_t DataSetCapacity = 0;
    /// Number of data sets that hold data, from the first one on; only these are in a file.
    std::uint8_t DataSetCount = 0;
    AlignDataSetBlock DataSets;
};

/// The bytes of the table's hardware id, without its NUL and what follows that.
[[nodiscard]] inline std::string_view AlignHwIdOf(const AlignTable &table)
{
    const std::string_view field(table.HwId.data(), table.HwId.size());
    return field.substr(0, field.find('\0'));
}
