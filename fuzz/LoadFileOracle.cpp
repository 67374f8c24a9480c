// SPDX-License-Identifier: MIT
#include "fuzz/LoadFileOracle.h"

#include "tools/BitwiseCrc.h"

#include <array>
#include <cstddef>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr unsigned Version = 5;
constexpr std::size_t LongestByteCrcPayload = 16388;
constexpr std::size_t LongestWordCrcPayload = 16383;

/// Takes bytes from the front of a file or a payload.
class Cursor
{
public:
    explicit Cursor(Bytes bytes) : Left(bytes) {}

    /// False when fewer are left; what is left is gone then.
    bool Take(std::size_t count, Bytes &taken)
    {
        const bool enough = count <= Left.size();
        taken = enough ? Left.first(count) : Bytes();
        Left = enough ? Left.subspan(count) : Bytes();
        return enough;
    }
    bool Skip(std::size_t count)
    {
        Bytes ignored;
        return Take(count, ignored);
    }
    /// The next `count` bytes, at most four, as one big-endian number.
    bool TakeNumber(std::size_t count, unsigned &number)
    {
        Bytes bytes;
        if (!Take(count, bytes))
            return false;
        number = 0;
        for (const std::uint8_t byte : bytes)
            number = number << 8 | byte;
        return true;
    }

private:
    Bytes Left;
};

/// The CRC a byte at a time; the table is made by the bit-by-bit form.
template <typename Word>
Word Crc(Bytes bytes, const std::array<Word, 256> &table)
{
    constexpr int topByte = static_cast<int>(8 * (sizeof(Word) - 1));
    Word crc = 0;
    for (const std::uint8_t byte : bytes)
        crc = static_cast<Word>(static_cast<std::uint64_t>(crc) << 8) ^
              table[static_cast<std::uint8_t>(crc >> topByte) ^ byte];
    return crc;
}

template <typename Word>
std::array<Word, 256> TableOf(Word (*bitwise)(Bytes))
{
    std::array<Word, 256> table = {};
    for (unsigned value = 0; value < 256; ++value) {
        const auto byte = static_cast<std::uint8_t>(value);
        table[value] = bitwise({&byte, 1});
    }
    return table;
}

const std::array<std::uint8_t, 256> Table8 = TableOf(&tools::BitwiseCrc8);
const std::array<std::uint32_t, 256> Table32 = TableOf(&tools::BitwiseCrc32);

std::uint32_t LittleEndian(Bytes bytes)
{
    std::uint32_t number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        number = number << 8 | bytes[i - 1];
    return number;
}

AlignResult TakeChunk(Cursor &file, std::size_t longest, std::size_t crcSize, Bytes &payload)
{
    Bytes length;
    if (!file.Take(2, length))
        return AlignResult::FileError;
    const std::size_t size = LittleEndian(length);
    if (size > longest)
        return AlignResult::InternalError;
    Bytes crc;
    if (!file.Take(size, payload) || !file.Take(crcSize, crc))
        return AlignResult::FileCrcFailed;
    const std::uint32_t computed = crcSize == 1 ? Crc(payload, Table8) : Crc(payload, Table32);
    return computed == 0 || computed == LittleEndian(crc) ? AlignResult::Ok : AlignResult::FileCrcFailed;
}

AlignResult TakeVersionedChunk(Cursor &file, Bytes &payload)
{
    unsigned version = 0;
    if (!file.TakeNumber(1, version))
        return AlignResult::FileError;
    if (version != Version)
        return AlignResult::VersionMismatch;
    return TakeChunk(file, LongestByteCrcPayload, 1, payload);
}

/// Whether the payload of a data set holds all that its counts announce, and these are within their limits.
bool IsDataSet(Bytes payload)
{
    Cursor fields(payload);
    unsigned points = 0;
    if (!fields.Skip(4 + 2 + 2) || !fields.TakeNumber(2, points) || points > 100)
        return false;
    for (; points > 0; --points) {
        unsigned ratePoints = 0;
        if (!fields.Skip(8 + 1) || !fields.TakeNumber(1, ratePoints) || ratePoints > 10)
            return false;
        for (; ratePoints > 0; --ratePoints) {
            unsigned entries = 0;
            if (!fields.Skip(8) || !fields.TakeNumber(1, entries) || entries > 50 ||
                !fields.Skip(4 + std::size_t{8} * entries))
                return false;
        }
    }
    return true;
}

unsigned DataSetsOf(unsigned sdrType)
{
    switch (sdrType) {
    case 1:
        return 6;
    case 2:
        return 12;
    case 3:
        return 1;
    case 4:
        return 4;
    default:
        return 0;
    }
}

AlignResult TakeTable(Cursor &file, unsigned sdrType)
{
    Bytes payload;
    AlignResult result = TakeVersionedChunk(file, payload);
    if (result != AlignResult::Ok)
        return result;
    Cursor fields(payload);
    unsigned dataSets = 0;
    if (!fields.Skip(1 + 128 + 8 + 1) || !fields.TakeNumber(1, dataSets) || dataSets > DataSetsOf(sdrType))
        return AlignResult::InternalError;
    for (; dataSets > 0; --dataSets) {
        result = TakeChunk(file, LongestWordCrcPayload, 4, payload);
        if (result != AlignResult::Ok)
            return result;
        if (!IsDataSet(payload))
            return AlignResult::InternalError;
    }
    return AlignResult::Ok;
}

} // namespace

AlignResult ExpectedResult(std::span<const std::uint8_t> file)
{
    Cursor cursor(file);
    Bytes header;
    AlignResult result = TakeVersionedChunk(cursor, header);
    if (result != AlignResult::Ok)
        return result;
    Cursor fields(header);
    unsigned sdrType = 0;
    unsigned tables = 0;
    if (!fields.TakeNumber(1, sdrType) || !fields.TakeNumber(2, tables))
        return AlignResult::InternalError;
    for (; tables > 0 && result == AlignResult::Ok; --tables)
        result = TakeTable(cursor, sdrType);
    return result;
}
