// SPDX-License-Identifier: MIT
// Mutates alignment files chunk by chunk. Without it almost every mutation would end at a checksum.
#include "fuzz/LoadFileFuzzer.h"

#include "alignment/AlignFileFormat.h"
#include "alignment/Crc.h"

#include <algorithm>
#include <random>
#include <span>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Chunk
{
    bool isDataSet = false;
    std::uint8_t version = AlignVersion;
    Bytes payload;
};

/// The chunks of an input as far as their lengths can be followed; the CRCs are not looked at.
std::vector<Chunk> ChunksOf(std::span<const std::uint8_t> input)
{
    std::vector<Chunk> chunks;
    unsigned dataSetsLeft = 0;
    while (!input.empty()) {
        Chunk chunk;
        chunk.isDataSet = dataSetsLeft > 0;
        const std::size_t headSize = chunk.isDataSet ? 2 : 3;
        const std::size_t crcSize = chunk.isDataSet ? 4 : 1;
        if (input.size() < headSize)
            break;
        if (!chunk.isDataSet)
            chunk.version = input[0];
        const std::size_t announced = input[headSize - 2] | static_cast<std::size_t>(input[headSize - 1])
                                                                << 8;
        input = input.subspan(headSize);
        const auto payload = input.first(std::min(announced, input.size()));
        chunk.payload.assign(payload.begin(), payload.end());
        input = input.subspan(std::min(payload.size() + crcSize, input.size()));
        if (chunk.isDataSet)
            --dataSetsLeft;
        else if (!chunks.empty() && payload.size() >= alignfile::TablePayloadSize)
            dataSetsLeft = payload[alignfile::TablePayloadSize - 1];
        chunks.push_back(std::move(chunk));
    }
    return chunks;
}

/// The input that the chunks make, with right lengths and CRCs.
Bytes InputOf(const std::vector<Chunk> &chunks)
{
    Bytes input;
    for (const Chunk &chunk : chunks) {
        const std::size_t length = std::min<std::size_t>(chunk.payload.size(), 65535);
        const auto payload = std::span(chunk.payload).first(length);
        if (!chunk.isDataSet)
            input.push_back(chunk.version);
        input.push_back(static_cast<std::uint8_t>(length));
        input.push_back(static_cast<std::uint8_t>(length >> 8));
        input.insert(input.end(), payload.begin(), payload.end());
        if (chunk.isDataSet) {
            const std::uint32_t crc = Crc32(payload);
            for (int shift = 0; shift < 32; shift += 8)
                input.push_back(static_cast<std::uint8_t>(crc >> shift));
        } else {
            input.push_back(Crc8(payload));
        }
    }
    return input;
}

void MutatePayload(Chunk &chunk, std::size_t maxSize)
{
    const std::size_t size = chunk.payload.size();
    chunk.payload.resize(std::max<std::size_t>(size, std::min<std::size_t>(maxSize, size + 256)));
    if (chunk.payload.empty())
        return;
    chunk.payload.resize(LLVMFuzzerMutate(chunk.payload.data(), size, chunk.payload.size()));
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    std::minstd_rand random(seed);
    const unsigned choice = random() % 8;
    if (choice == 0)
        return LLVMFuzzerMutate(data, size, maxSize); // lengths and checksums go wrong, too
    std::vector<Chunk> chunks = ChunksOf({data, size});
    if (chunks.empty())
        return LLVMFuzzerMutate(data, size, maxSize);
    const auto chosen = chunks.begin() + static_cast<std::ptrdiff_t>(random() % chunks.size());
    switch (choice) {
    case 1:
        chunks.insert(chosen, Chunk(*chosen));
        break;
    case 2:
        chunks.erase(chosen);
        break;
    default:
        MutatePayload(*chosen, maxSize);
    }
    // Most of the time header and tables announce what is really there.
    if (choice != 3 && !chunks.empty() && chunks.front().payload.size() >= alignfile::HeaderPayloadSize) {
        const auto tables = static_cast<std::size_t>(std::count_if(
            chunks.begin() + 1, chunks.end(), [](const Chunk &chunk) { return !chunk.isDataSet; }));
        chunks.front().payload[1] = static_cast<std::uint8_t>(tables >> 8);
        chunks.front().payload[2] = static_cast<std::uint8_t>(tables);
    }
    const Bytes mutated = InputOf(chunks);
    if (mutated.size() > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::copy(mutated.begin(), mutated.end(), data);
    return mutated.size();
}
