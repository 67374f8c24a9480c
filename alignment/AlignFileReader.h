// SPDX-License-Identifier: MIT
// Reads the chunks of an alignment file and takes their payload apart.
#pragma once

#include "alignment/AlignChunkBuffer.h"
#include "alignment/AlignDataSet.h"
#include "alignment/AlignResult.h"

#include <QtEndian>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <span>

namespace alignfile {

/// Reads chunks into a buffer, one at a time, and hands out the fields of the one read last.
/// The contents of a file are never trusted: each length, count and CRC is checked before anything depends on
/// it.
class ChunkReader
{
public:
    /// Stream and buffer are the caller's and outlive the reader. The buffer is cleared.
    ChunkReader(std::istream &stream, AlignChunkBuffer &buffer);

    /// Reads a chunk with version byte and CRC-8 (file header, table).
    AlignResult ReadByteCrcChunk();

    /// Reads a chunk with CRC-32 and no version byte (data set).
    AlignResult ReadWordCrcChunk();

    /// The position of the chunk that was read last, or could not be read: bytes since the reader was made.
    [[nodiscard]] std::uint64_t chunkBegin() const { return ChunkBegin; }
    /// All bytes that were read, those of a chunk that ends too early included.
    [[nodiscard]] std::uint64_t bytesRead() const { return BytesRead; }

    // The fields of the payload, in order. Each function is false when the payload does not hold all of its
    // fields; what it stored until then is of no use.

    bool TakeBytes(std::span<char> bytes);

    template <typename Integer>
    bool TakeInteger(Integer &value)
    {
        const std::uint8_t *bytes = Take(sizeof(Integer));
        if (bytes == nullptr)
            return false;
        value = qFromBigEndian<Integer>(bytes);
        return true;
    }

    /// Takes all fields of a data-set payload. False, too, when a count is above the capacity of its array.
    bool TakeDataSet(AlignDataSet &dataSet);

private:
    /// The next `wanted` bytes of the payload, or null when fewer are left. The only place that moves
    /// BufferCursor.
    const std::uint8_t *Take(std::size_t wanted);

    bool TakeFreqPoint(AlignFreqPoint &point);
    bool TakeSampleRatePoint(AlignSampleRatePoint &point);

    /// False when the stream ends or fails first.
    bool ReadRaw(void *bytes, std::size_t size);

    /// Reads the length and refuses one of `limit` or more.
    AlignResult ReadLength(std::size_t limit);

    /// Reads payload and CRC, and checks the CRC.
    template <typename Crc>
    AlignResult ReadPayload(Crc (*compute)(std::span<const std::uint8_t>, Crc));

    std::istream &Stream;
    AlignChunkBuffer &Buffer;
    std::uint64_t ChunkBegin = 0;
    std::uint64_t BytesRead = 0;
};

} // namespace alignfile
