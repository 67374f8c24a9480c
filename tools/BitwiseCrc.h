// SPDX-License-Identifier: MIT
// The checksums of the alignment files in their plainest form, bit by bit: what the fast ones are measured
// against.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

namespace tools {

/// The remainder of the data for a polynomial as wide as Word, most significant bit first, initial value 0.
template <typename Word>
Word BitwiseCrc(std::span<const std::uint8_t> data, Word polynomial)
{
    constexpr int width = std::numeric_limits<Word>::digits;
    Word crc = 0;
    for (const std::uint8_t byte : data) {
        for (int bit = 7; bit >= 0; --bit) {
            const bool dataBit = ((byte >> bit) & 1) != 0;
            const bool topBit = ((crc >> (width - 1)) & 1) != 0;
            crc = static_cast<Word>(crc << 1);
            if (topBit != dataBit)
                crc ^= polynomial;
        }
    }
    return crc;
}

inline std::uint8_t BitwiseCrc8(std::span<const std::uint8_t> data)
{
    return BitwiseCrc<std::uint8_t>(data, 0x07);
}

inline std::uint32_t BitwiseCrc32(std::span<const std::uint8_t> data)
{
    return BitwiseCrc<std::uint32_t>(data, 0x04C11DB7);
}

} // namespace tools
