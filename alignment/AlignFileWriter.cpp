// SPDX-License-Identifier: MIT
#include "alignment/AlignFileWriter.h"

#include "alignment/AlignFileFormat.h"
#include "alignment/Crc.h"

#include <algorithm>

namespace alignfile {

std::optional<std::size_t> DataSetPayloadSize(const AlignDataSet &dataSet)
{
    if (dataSet.FreqPointCount > dataSet.FreqPoints.size())
        return std::nullopt;
    std::size_t size = DataSetFieldsSize;
    for (const AlignFreqPoint &point : std::span(dataSet.FreqPoints).first(dataSet.FreqPointCount)) {
        if (point.SampleRatePointCount > point.SampleRatePoints.size())
            return std::nullopt;
        size += FreqPointFieldsSize;
        for (const AlignSampleRatePoint &ratePoint :
             std::span(point.SampleRatePoints).first(point.SampleRatePointCount)) {
            if (ratePoint.GainEntryCount > ratePoint.GainEntries.size())
                return std::nullopt;
            size += SampleRatePointFieldsSize + ratePoint.GainEntryCount * GainEntrySize;
        }
    }
    return size;
}

ChunkWriter::ChunkWriter(std::ostream &stream, AlignChunkBuffer &buffer) : Stream(stream), Buffer(buffer)
{
    Buffer = {};
}

void ChunkWriter::BeginPayload()
{
    Buffer.BufferLength = 0;
}

void ChunkWriter::PutBytes(std::span<const char> bytes)
{
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char *>(Put(bytes.size())));
}

void ChunkWriter::PutDataSet(const AlignDataSet &dataSet)
{
    PutInteger(dataSet.Attr1);
    PutInteger(dataSet.Attr2);
    PutInteger(dataSet.Attr3);
    PutInteger(dataSet.Attr4);
    PutInteger(dataSet.Word1);
    PutInteger(dataSet.Word2);
    PutInteger(dataSet.FreqPointCount);
    for (const AlignFreqPoint &point : std::span(dataSet.FreqPoints).first(dataSet.FreqPointCount)) {
        PutInteger(point.Frequency);
        PutInteger(point.Attr);
        PutInteger(point.SampleRatePointCount);
        for (const AlignSampleRatePoint &ratePoint :
             std::span(point.SampleRatePoints).first(point.SampleRatePointCount)) {
            PutInteger(ratePoint.SampleFrequency);
            PutInteger(ratePoint.GainEntryCount);
            PutInteger(ratePoint.Attr);
            // Nothing but 16-bit numbers, four each, as in the reader: converted all at once.
            static_assert(sizeof(AlignGainEntry) == GainEntrySize);
            qToBigEndian<std::uint16_t>(ratePoint.GainEntries.data(), qsizetype{4} * ratePoint.GainEntryCount,
                                        Put(ratePoint.GainEntryCount * GainEntrySize));
        }
    }
}

bool ChunkWriter::WriteByteCrcChunk(std::uint8_t version)
{
    const std::uint8_t crc = Crc8(payload());
    return WriteRaw({&version, 1}) && WriteLengthPayloadAnd({&crc, 1});
}

bool ChunkWriter::WriteWordCrcChunk()
{
    std::array<std::uint8_t, sizeof(std::uint32_t)> crc = {};
    qToLittleEndian(Crc32(payload()), crc.data());
    return WriteLengthPayloadAnd(crc);
}

std::uint8_t *ChunkWriter::Put(std::size_t size)
{
    Q_ASSERT(size <= Buffer.Bytes.size() - Buffer.BufferLength);
    std::uint8_t *bytes = Buffer.Bytes.data() + Buffer.BufferLength;
    Buffer.BufferLength = static_cast<std::uint16_t>(Buffer.BufferLength + size);
    return bytes;
}

bool ChunkWriter::WriteLengthPayloadAnd(std::span<const std::uint8_t> crc)
{
    std::array<std::uint8_t, 2> length = {};
    qToLittleEndian(Buffer.BufferLength, length.data());
    return WriteRaw(length) && WriteRaw(payload()) && WriteRaw(crc);
}

bool ChunkWriter::WriteRaw(std::span<const std::uint8_t> bytes)
{
    return static_cast<bool>(Stream.write(reinterpret_cast<const char *>(bytes.data()),
                                          static_cast<std::streamsize>(bytes.size())));
}

std::span<const std::uint8_t> ChunkWriter::payload() const
{
    return std::span(Buffer.Bytes).first(Buffer.BufferLength);
}

} // namespace alignfile
