// SPDX-License-Identifier: MIT
// Mutates alignment files chunk by chunk, on purpose: without it almost every mutation would end at a
// checksum, and a count beyond its limit would hardly ever have enough bytes behind it.
#include "fuzz/LoadFileFuzzer.h"

#include "alignment/AlignFileFormat.h"
#include "alignment/Crc.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <random>
#include <span>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Chunk
{
    bool IsDataSet = false;
    std::uint8_t Version = AlignVersion;
    Bytes Payload;
    // What is written in the place of the right values.
    std::optional<std::uint16_t> WrongLength;
    std::uint32_t CrcChange = 0; // XORed onto the right CRC
};

using Chunks = std::vector<Chunk>;

class Random
{
public:
    explicit Random(unsigned seed) : Engine(seed) {}
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(Engine() % limit); }
    unsigned OneOf(std::initializer_list<unsigned> values)
    {
        return *(values.begin() + Below(values.size()));
    }

private:
    std::minstd_rand Engine;
};

/// The chunks of an input as far as their lengths can be followed; the CRCs are not looked at.
Chunks ChunksOf(std::span<const std::uint8_t> input)
{
    Chunks chunks;
    unsigned dataSetsLeft = 0;
    while (!input.empty()) {
        Chunk chunk;
        chunk.IsDataSet = dataSetsLeft > 0;
        const std::size_t headSize = chunk.IsDataSet ? 2 : 3;
        const std::size_t crcSize = chunk.IsDataSet ? 4 : 1;
        if (input.size() < headSize)
            break;
        if (!chunk.IsDataSet)
            chunk.Version = input[0];
        const std::size_t announced = input[headSize - 2] | static_cast<std::size_t>(input[headSize - 1])
                                                                << 8;
        input = input.subspan(headSize);
        const auto payload = input.first(std::min(announced, input.size()));
        chunk.Payload.assign(payload.begin(), payload.end());
        input = input.subspan(std::min(payload.size() + crcSize, input.size()));
        if (chunk.IsDataSet)
            --dataSetsLeft;
        else if (!chunks.empty() && payload.size() >= alignfile::TablePayloadSize)
            dataSetsLeft = payload[alignfile::TablePayloadSize - 1];
        chunks.push_back(std::move(chunk));
    }
    return chunks;
}

/// The input that the chunks make, with right lengths and CRCs but for those that are to be wrong.
Bytes InputOf(const Chunks &chunks)
{
    Bytes input;
    for (const Chunk &chunk : chunks) {
        const std::size_t size = std::min<std::size_t>(chunk.Payload.size(), 65535);
        const auto payload = std::span(chunk.Payload).first(size);
        const std::size_t length = chunk.WrongLength.value_or(static_cast<std::uint16_t>(size));
        if (!chunk.IsDataSet)
            input.push_back(chunk.Version);
        input.push_back(static_cast<std::uint8_t>(length));
        input.push_back(static_cast<std::uint8_t>(length >> 8));
        input.insert(input.end(), payload.begin(), payload.end());
        const std::uint32_t crc = (chunk.IsDataSet ? Crc32(payload) : Crc8(payload)) ^ chunk.CrcChange;
        for (int shift = 0; shift < (chunk.IsDataSet ? 32 : 8); shift += 8)
            input.push_back(static_cast<std::uint8_t>(crc >> shift));
    }
    return input;
}

void Append(Bytes &bytes, unsigned value, int size)
{
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(shift < 32 ? value >> shift : 0));
}

/// A data-set payload with counts at, below and above their limits, and as many bytes as the counts announce,
/// or one more or less.
Bytes PayloadWithCounts(Random &random)
{
    // Each point takes up a page of the block, so many of them take most of the time: seldom.
    const unsigned points = random.Below(16) == 0 ? random.OneOf({99, 100, 101, random.Below(128)})
                                                  : random.OneOf({0, 1, 2, random.Below(8)});
    const unsigned chosenPoint = points > 0 ? random.Below(points) : 0;
    const unsigned ratePoints = random.OneOf({0, 1, 9, 10, 11, 255, random.Below(16)});
    const unsigned chosenRatePoint = ratePoints > 0 ? random.Below(ratePoints) : 0;
    const unsigned entries = random.OneOf({0, 1, 49, 50, 51, 255, random.Below(64)});
    Bytes payload(8, static_cast<std::uint8_t>(random.Below(256)));
    Append(payload, points, 2);
    for (unsigned point = 0; point < points; ++point) {
        Append(payload, point + 1, 8);
        Append(payload, random.Below(256), 1);
        const unsigned ratePointsHere = point == chosenPoint ? ratePoints : 0;
        Append(payload, ratePointsHere, 1);
        for (unsigned ratePoint = 0; ratePoint < ratePointsHere; ++ratePoint) {
            const unsigned entriesHere = ratePoint == chosenRatePoint ? entries : 0;
            Append(payload, ratePoint + 1, 8);
            Append(payload, entriesHere, 1);
            Append(payload, random.Below(65536), 4);
            payload.insert(payload.end(), std::size_t{8} * entriesHere, 0x11);
        }
    }
    const unsigned end = random.Below(8);
    if (end == 0)
        payload.push_back(0);
    else if (end == 1)
        payload.pop_back();
    return payload;
}

void MutateBytes(Chunk &chunk, std::size_t maxSize)
{
    const std::size_t size = chunk.Payload.size();
    chunk.Payload.resize(std::max<std::size_t>(size, std::min<std::size_t>(maxSize, size + 256)));
    if (chunk.Payload.empty())
        return;
    chunk.Payload.resize(LLVMFuzzerMutate(chunk.Payload.data(), size, chunk.Payload.size()));
}

void MutateLength(Chunk &chunk, Random &random)
{
    const unsigned length = random.OneOf(
        {0, 1, 2, 3, 4, 9, 10, 138, 139, 140, 16383, 16384, 16387, 16388, 16389, 65535, random.Below(65536)});
    if (random.Below(2) == 0)
        chunk.WrongLength = static_cast<std::uint16_t>(length);
    else
        chunk.Payload.resize(length, 0x22);
}

/// Gives a table another number of data sets, and the file as many chunks.
void MutateDataSetCount(Chunks &chunks, std::size_t table, Random &random)
{
    Chunk &chunk = chunks[table];
    if (chunk.IsDataSet || chunk.Payload.size() < alignfile::TablePayloadSize)
        return;
    const unsigned count = random.OneOf({0, 1, 2, 4, 5, 6, 7, 12, 13, 255, random.Below(16)});
    chunk.Payload[alignfile::TablePayloadSize - 1] = static_cast<std::uint8_t>(count);
    const auto behind = chunks.begin() + static_cast<std::ptrdiff_t>(table) + 1;
    const auto next = std::find_if(behind, chunks.end(), [](const Chunk &other) { return !other.IsDataSet; });
    Chunk dataSet;
    dataSet.IsDataSet = true;
    dataSet.Payload.assign(alignfile::DataSetFieldsSize, 0);
    const auto first = chunks.erase(behind, next);
    chunks.insert(first, std::min(count, 16U), dataSet);
}

void AnnounceAllTables(Chunks &chunks)
{
    if (chunks.empty() || chunks.front().Payload.size() < alignfile::HeaderPayloadSize)
        return;
    const auto tables = static_cast<std::size_t>(
        std::count_if(chunks.begin() + 1, chunks.end(), [](const Chunk &chunk) { return !chunk.IsDataSet; }));
    chunks.front().Payload[1] = static_cast<std::uint8_t>(tables >> 8);
    chunks.front().Payload[2] = static_cast<std::uint8_t>(tables);
}

void Mutate(Chunks &chunks, std::size_t maxSize, Random &random)
{
    const std::size_t index = random.Below(chunks.size());
    Chunk &chunk = chunks[index];
    switch (random.Below(10)) {
    case 0:
        chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(index), Chunk(chunk));
        break;
    case 1:
        chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(index));
        break;
    case 2:
        chunk.CrcChange = random.OneOf({1, 0x80, 0xFFFFFFFF, random.Below(65536)});
        break;
    case 3:
        MutateLength(chunk, random);
        break;
    case 4:
    case 5:
        MutateDataSetCount(chunks, index, random);
        break;
    case 6:
    case 7:
        if (chunk.IsDataSet) {
            chunk.Payload = PayloadWithCounts(random);
            break;
        }
        [[fallthrough]];
    default:
        MutateBytes(chunk, maxSize);
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    Random random(seed);
    if (random.Below(16) == 0)
        return LLVMFuzzerMutate(data, size, maxSize); // whatever comes of it
    Chunks chunks = ChunksOf({data, size});
    if (chunks.empty())
        return LLVMFuzzerMutate(data, size, maxSize);
    Mutate(chunks, maxSize, random);
    if (random.Below(8) != 0) // most of the time the header announces what is really there
        AnnounceAllTables(chunks);
    const Bytes mutated = InputOf(chunks);
    if (mutated.size() > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::copy(mutated.begin(), mutated.end(), data);
    return mutated.size();
}
