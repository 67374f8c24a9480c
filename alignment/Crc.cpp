// SPDX-License-Identifier: MIT
#include "alignment/Crc.h"

#include <array>
#include <cstddef>
#include <limits>

// Both checksums are linear over XOR, so the effect of several bytes can be looked up one by one and
// combined: entry [k][b] of the tables is the remainder of the byte b followed by k zero bytes. The lookups
// of one step do not depend on each other, which is what makes this several times faster than one byte a
// step.

namespace {

template <typename Word, std::size_t Stride>
using SliceTables = std::array<std::array<Word, 256>, Stride>;

/// The register after one more byte, bit by bit.
template <typename Word>
constexpr Word ByteRemainder(Word polynomial, unsigned byte)
{
    constexpr int width = std::numeric_limits<Word>::digits;
    constexpr Word topBit = static_cast<Word>(Word{1} << (width - 1));
    Word crc = static_cast<Word>(static_cast<Word>(byte) << (width - 8));
    for (int bit = 0; bit < 8; ++bit) {
        const bool carry = (crc & topBit) != 0;
        crc = static_cast<Word>(crc << 1);
        if (carry)
            crc ^= polynomial;
    }
    return crc;
}

/// The register after one more byte, looked up in the table of single bytes.
template <typename Word>
constexpr Word NextByte(const std::array<Word, 256> &table, Word crc, std::uint8_t byte)
{
    constexpr int width = std::numeric_limits<Word>::digits;
    const Word entry = table[static_cast<std::uint8_t>(crc >> (width - 8)) ^ byte];
    if constexpr (width == 8)
        return entry;
    else
        return static_cast<Word>(crc << 8) ^ entry;
}

template <typename Word, std::size_t Stride>
constexpr SliceTables<Word, Stride> MakeSliceTables(Word polynomial)
{
    SliceTables<Word, Stride> tables = {};
    for (unsigned byte = 0; byte < 256; ++byte)
        tables[0][byte] = ByteRemainder(polynomial, byte);
    for (std::size_t zeros = 1; zeros < Stride; ++zeros) {
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[zeros][byte] = NextByte(tables[0], tables[zeros - 1][byte], 0);
    }
    return tables;
}

constexpr std::size_t Stride8 = 8;
constexpr std::size_t Stride32 = 16; // measured: 1.6 times as fast as 8; the tables take 16 KiB

alignas(64) constexpr auto Tables8 = MakeSliceTables<std::uint8_t, Stride8>(0x07);
alignas(64) constexpr auto Tables32 = MakeSliceTables<std::uint32_t, Stride32>(0x04C11DB7);

} // namespace

std::uint8_t Crc8(std::span<const std::uint8_t> data, std::uint8_t crc)
{
    const std::uint8_t *p = data.data();
    std::size_t left = data.size();
    for (; left >= Stride8; left -= Stride8, p += Stride8) {
        std::uint8_t next = Tables8[Stride8 - 1][p[0] ^ crc];
        for (std::size_t i = 1; i < Stride8; ++i)
            next ^= Tables8[Stride8 - 1 - i][p[i]];
        crc = next;
    }
    for (; left > 0; --left, ++p)
        crc = NextByte(Tables8[0], crc, *p);
    return crc;
}

std::uint32_t Crc32(std::span<const std::uint8_t> data, std::uint32_t crc)
{
    const std::uint8_t *p = data.data();
    std::size_t left = data.size();
    for (; left >= Stride32; left -= Stride32, p += Stride32) {
        // The register is XORed onto the first four bytes; the others enter as they are.
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < sizeof(crc); ++i) {
            const auto registerByte = static_cast<std::uint8_t>(crc >> (24 - 8 * i));
            next ^= Tables32[Stride32 - 1 - i][p[i] ^ registerByte];
        }
        for (std::size_t i = sizeof(crc); i < Stride32; ++i)
            next ^= Tables32[Stride32 - 1 - i][p[i]];
        crc = next;
    }
    for (; left > 0; --left, ++p)
        crc = NextByte(Tables32[0], crc, *p);
    return crc;
}
