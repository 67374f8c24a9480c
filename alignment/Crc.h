// SPDX-License-Identifier: MIT
// The two checksums of the alignment files.
#pragma once

#include <cstdint>
#include <span>

/// CRC-8/SMBUS: polynomial 0x07, most significant bit first, no reflection, no final XOR; 0xF4 over
/// "123456789". To compute it piece by piece pass the value so far as `crc`.
[[nodiscard]] std::uint8_t Crc8(std::span<const std::uint8_t> data, std::uint8_t crc = 0);

/// CRC-32 with the polynomial 0x04C11DB7, most significant bit first, no reflection, initial value 0, no
/// final XOR; 0x89A1897F over "123456789". To compute it piece by piece pass the value so far as `crc`.
[[nodiscard]] std::uint32_t Crc32(std::span<const std::uint8_t> data, std::uint32_t crc = 0);
