// SPDX-License-Identifier: MIT
// The receiver types and the lists indexed by them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The receiver types. A file may carry any byte here; a value above AirSpy is treated like None.
enum class SdrType : std::uint8_t {
    None = 0,
    LimeMini = 1,
    LimeUsb = 2,
    RtlSdr = 3,
    AirSpy = 4,
};

/// Names of the drivers as the user sees them, indexed by SdrType.
inline constexpr std::array AlignDriverNames = {"", "LimeMini", "LimeUsb", "RTL-SDR", "AirSpy"};

/// Names of the drivers' alignment files, indexed by SdrType.
inline constexpr std::array AlignDriverFileNames = {
    "",
    "TarnvikDriver_LimeMini.ad",
    "TarnvikDriver_LimeUsb.ad",
    "TarnvikDriver_RtlSdr.ad",
    "TarnvikDriver_Airspy.ad",
};

// A further receiver type needs an entry in each list.
static_assert(AlignDriverNames.size() == static_cast<std::size_t>(SdrType::AirSpy) + 1);
static_assert(AlignDriverFileNames.size() == AlignDriverNames.size());

/// Number of data sets that a table of the type has: one per receive path; 0 for None and unknown types.
[[nodiscard]] constexpr std::uint8_t AlignDataSetCapacityOf(SdrType sdrType)
{
    constexpr auto capacities = std::to_array<std::uint8_t>({0, 6, 12, 1, 4});
    static_assert(capacities.size() == AlignDriverNames.size());
    const auto index = static_cast<std::size_t>(sdrType);
    return index < capacities.size() ? capacities[index] : std::uint8_t{0};
}
