// SPDX-License-Identifier: MIT
// Numbers of the alignment file format that reader and writer share.
//
// A file is a flat sequence of chunks: one header chunk, then for each table a table chunk followed by its
// data-set chunks. Chunk lengths and CRC-32 values are little-endian, all fields inside a payload are
// big-endian; there is no padding.
//
//   header, table:  version (1)  payload length (2)  payload  CRC-8 of the payload (1)
//   data set:                    payload length (2)  payload  CRC-32 of the payload (4)
#pragma once

#include "alignment/AlignTable.h"

#include <cstddef>

namespace alignfile {

/// Header payload: receiver type (1), number of tables (2).
inline constexpr std::size_t HeaderPayloadSize = 3;

/// Table payload: version (1), hardware id (128), date of alignment (8), data-set capacity (1) and count (1).
inline constexpr std::size_t TablePayloadSize = 1 + AlignHwIdSize + 8 + 1 + 1;

/// The payload of a data-set chunk is shorter than this.
inline constexpr std::size_t DataSetPayloadLimit = 16384;

/// Data-set payload: Attr1 to Attr4 (4), Word1, Word2 and FreqPointCount (6), then the frequency points.
inline constexpr std::size_t DataSetFieldsSize = 4 + 3 * 2;

/// Frequency point: Frequency (8), Attr (1), SampleRatePointCount (1), then the sample-rate points.
inline constexpr std::size_t FreqPointFieldsSize = 8 + 1 + 1;

/// Sample-rate point: SampleFrequency (8), GainEntryCount (1), Attr (4), then the gain entries.
inline constexpr std::size_t SampleRatePointFieldsSize = 8 + 1 + 4;

/// Gain entry: Value1 to Value4.
inline constexpr std::size_t GainEntrySize = 4 * 2;

/// Bytes that a chunk takes up in a file: with version byte and CRC-8, or with CRC-32 (data sets).
inline constexpr std::size_t ByteCrcChunkSize(std::size_t payloadSize)
{
    return 1 + 2 + payloadSize + 1;
}
inline constexpr std::size_t WordCrcChunkSize(std::size_t payloadSize)
{
    return 2 + payloadSize + 4;
}

/// Bytes that go to and come from the system in one call.
inline constexpr std::size_t StreamBufferSize = std::size_t{64} * 1024;

} // namespace alignfile
