// SPDX-License-Identifier: MIT
// The memory through which all chunks of alignment files pass.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The payload of one chunk while it is built or parsed. One buffer serves a whole file, so that nothing is
/// allocated for a chunk.
struct AlignChunkBuffer
{
    std::array<std::uint8_t, std::size_t{16 * 1024} + 4> Bytes = {};
    /// Number of payload bytes in Bytes.
    std::uint16_t BufferLength = 0;
    /// Number of payload bytes already parsed.
    std::uint16_t BufferCursor = 0;
};
