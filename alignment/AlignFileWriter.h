// SPDX-License-Identifier: MIT
// Puts the chunks of an alignment file together and writes them.
#pragma once

#include "alignment/AlignChunkBuffer.h"
#include "alignment/AlignDataSet.h"

#include <QtEndian>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <span>

namespace alignfile {

/// Number of payload bytes of a data-set chunk, or nothing when a count of the data set is above the capacity
/// of its array. A chunk holds less than DataSetPayloadLimit.
[[nodiscard]] std::optional<std::size_t> DataSetPayloadSize(const AlignDataSet &dataSet);

/// Builds payloads in a buffer and writes them as chunks. The caller has made sure that they fit.
class ChunkWriter
{
public:
    /// Stream and buffer are the caller's and outlive the writer. The buffer is cleared.
    ChunkWriter(std::ostream &stream, AlignChunkBuffer &buffer);

    /// Begins the payload of the next chunk.
    void BeginPayload();

    // The fields of the payload, in order.

    void PutBytes(std::span<const char> bytes);

    template <typename Integer>
    void PutInteger(Integer value)
    {
        qToBigEndian(value, Put(sizeof(Integer)));
    }

    /// Puts all fields of a data-set payload. DataSetPayloadSize() must have allowed it.
    void PutDataSet(const AlignDataSet &dataSet);

    /// Writes the payload as a chunk with version byte and CRC-8 (file header, table). False when the stream
    /// failed.
    bool WriteByteCrcChunk(std::uint8_t version);

    /// Writes the payload as a chunk with CRC-32 and no version byte (data set). False when the stream
    /// failed.
    bool WriteWordCrcChunk();

private:
    /// Room for the next `size` bytes of the payload. The only place that moves BufferLength.
    std::uint8_t *Put(std::size_t size);

    bool WriteLengthPayloadAnd(std::span<const std::uint8_t> crc);
    bool WriteRaw(std::span<const std::uint8_t> bytes);
    [[nodiscard]] std::span<const std::uint8_t> payload() const;

    std::ostream &Stream;
    AlignChunkBuffer &Buffer;
};

} // namespace alignfile
