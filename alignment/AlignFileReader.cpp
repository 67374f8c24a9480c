// SPDX-License-Identifier: MIT
#include "alignment/AlignFileReader.h"

#include "alignment/AlignFileFormat.h"
#include "alignment/AlignTable.h"
#include "alignment/Crc.h"

#include <algorithm>

namespace alignfile {

ChunkReader::ChunkReader(std::istream &stream, AlignChunkBuffer &buffer) : Stream(stream), Buffer(buffer)
{
    Buffer = {};
}

AlignResult ChunkReader::ReadByteCrcChunk()
{
    ChunkBegin = BytesRead;
    std::uint8_t version = 0;
    if (!ReadRaw(&version, sizeof(version)))
        return AlignResult::FileError;
    if (version != AlignVersion)
        return AlignResult::VersionMismatch;
    const AlignResult result = ReadLength(Buffer.Bytes.size() + 1);
    return result == AlignResult::Ok ? ReadPayload<std::uint8_t>(&Crc8) : result;
}

AlignResult ChunkReader::ReadWordCrcChunk()
{
    ChunkBegin = BytesRead;
    const AlignResult result = ReadLength(DataSetPayloadLimit);
    return result == AlignResult::Ok ? ReadPayload<std::uint32_t>(&Crc32) : result;
}

bool ChunkReader::TakeBytes(std::span<char> bytes)
{
    const std::uint8_t *taken = Take(bytes.size());
    if (taken == nullptr)
        return false;
    std::copy_n(taken, bytes.size(), reinterpret_cast<std::uint8_t *>(bytes.data()));
    return true;
}

bool ChunkReader::TakeDataSet(AlignDataSet &dataSet)
{
    const bool complete = TakeInteger(dataSet.Attr1) && TakeInteger(dataSet.Attr2) &&
                          TakeInteger(dataSet.Attr3) && TakeInteger(dataSet.Attr4) &&
                          TakeInteger(dataSet.Word1) && TakeInteger(dataSet.Word2) &&
                          TakeInteger(dataSet.FreqPointCount);
    if (!complete || dataSet.FreqPointCount > dataSet.FreqPoints.size())
        return false;
    const std::span<AlignFreqPoint> used = std::span(dataSet.FreqPoints).first(dataSet.FreqPointCount);
    return std::all_of(used.begin(), used.end(),
                       [this](AlignFreqPoint &point) { return TakeFreqPoint(point); });
}

bool ChunkReader::TakeFreqPoint(AlignFreqPoint &point)
{
    const bool complete =
        TakeInteger(point.Frequency) && TakeInteger(point.Attr) && TakeInteger(point.SampleRatePointCount);
    if (!complete || point.SampleRatePointCount > point.SampleRatePoints.size())
        return false;
    const std::span<AlignSampleRatePoint> used =
        std::span(point.SampleRatePoints).first(point.SampleRatePointCount);
    return std::all_of(used.begin(), used.end(),
                       [this](AlignSampleRatePoint &ratePoint) { return TakeSampleRatePoint(ratePoint); });
}

bool ChunkReader::TakeSampleRatePoint(AlignSampleRatePoint &point)
{
    const bool complete =
        TakeInteger(point.SampleFrequency) && TakeInteger(point.GainEntryCount) && TakeInteger(point.Attr);
    if (!complete || point.GainEntryCount > point.GainEntries.size())
        return false;
    // The entries are nothing but 16-bit numbers, four each, in the file and in memory: converted all at
    // once.
    static_assert(sizeof(AlignGainEntry) == GainEntrySize);
    const std::uint8_t *values = Take(point.GainEntryCount * GainEntrySize);
    if (values == nullptr)
        return false;
    qFromBigEndian<std::uint16_t>(values, qsizetype{4} * point.GainEntryCount, point.GainEntries.data());
    return true;
}

const std::uint8_t *ChunkReader::Take(std::size_t wanted)
{
    if (wanted > std::size_t{Buffer.BufferLength} - Buffer.BufferCursor)
        return nullptr;
    const std::uint8_t *bytes = Buffer.Bytes.data() + Buffer.BufferCursor;
    Buffer.BufferCursor = static_cast<std::uint16_t>(Buffer.BufferCursor + wanted);
    return bytes;
}

bool ChunkReader::ReadRaw(void *bytes, std::size_t size)
{
    Stream.read(static_cast<char *>(bytes), static_cast<std::streamsize>(size));
    BytesRead += static_cast<std::uint64_t>(Stream.gcount());
    return Stream.good();
}

AlignResult ChunkReader::ReadLength(std::size_t limit)
{
    // Nothing can be taken unless the length is good.
    Buffer.BufferLength = 0;
    Buffer.BufferCursor = 0;
    std::array<std::uint8_t, 2> bytes = {};
    if (!ReadRaw(bytes.data(), bytes.size()))
        return AlignResult::FileError;
    const auto length = qFromLittleEndian<std::uint16_t>(bytes.data());
    if (length >= limit)
        return AlignResult::InternalError;
    Buffer.BufferLength = length;
    return AlignResult::Ok;
}

template <typename Crc>
AlignResult ChunkReader::ReadPayload(Crc (*compute)(std::span<const std::uint8_t>, Crc))
{
    const std::span<std::uint8_t> payload = std::span(Buffer.Bytes).first(Buffer.BufferLength);
    std::array<std::uint8_t, sizeof(Crc)> storedBytes = {};
    if (!ReadRaw(payload.data(), payload.size()) || !ReadRaw(storedBytes.data(), storedBytes.size()))
        return AlignResult::FileCrcFailed;
    const Crc computed = compute(payload, 0);
    // A computed value of 0 is accepted whatever is stored; files are in use that rely on it. An empty
    // payload has the CRC 0, so its stored CRC is never looked at.
    if (computed != 0 && computed != qFromLittleEndian<Crc>(storedBytes.data()))
        return AlignResult::FileCrcFailed;
    return AlignResult::Ok;
}

} // namespace alignfile
