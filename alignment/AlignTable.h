// SPDX-License-Identifier: MIT
// The alignment (calibration) of one device.
#pragma once

#include "alignment/AlignDataSetBlock.h"
#include "alignment/SdrType.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// What AlignTable::DataType says, so that a record of the wrong kind is recognised.
inline constexpr std::uint8_t AlignTableDataType = 1;

/// The one version of files and of table records that there is.
inline constexpr std::uint8_t AlignVersion = 5;

/// Length of AlignTable::HwId.
inline constexpr std::size_t AlignHwIdSize = 128;

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

/// Sets the table's hardware id and zeroes what follows it. False, with the table unchanged, for an id of
/// more than AlignHwIdSize bytes.
[[nodiscard]] inline bool SetAlignHwId(AlignTable &table, std::string_view hwId)
{
    if (hwId.size() > table.HwId.size())
        return false;
    table.HwId = {};
    std::copy(hwId.begin(), hwId.end(), table.HwId.begin());
    return true;
}

/// The bytes of the table's hardware id, without its NUL and what follows that.
[[nodiscard]] inline std::string_view AlignHwIdOf(const AlignTable &table)
{
    const std::string_view field(table.HwId.data(), table.HwId.size());
    return field.substr(0, field.find('\0'));
}
