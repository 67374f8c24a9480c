// SPDX-License-Identifier: MIT
// Saving the tables of a store.
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignFileWriter.h"
#include "alignment/AlignStore.h"
#include "platform/FilePath.h"

#include <algorithm>
#include <array>
#include <fstream>

using alignfile::ChunkWriter;

namespace {

/// Whether a file can express the table: its data sets exist and each fits a chunk.
bool IsWritable(const AlignTable &table)
{
    if (table.DataSetCount > table.DataSets.size())
        return false;
    const std::span<const AlignDataSet> used = table.DataSets.all().first(table.DataSetCount);
    return std::all_of(used.begin(), used.end(), [](const AlignDataSet &dataSet) {
        return alignfile::DataSetPayloadSize(dataSet).value_or(alignfile::DataSetPayloadLimit) <
               alignfile::DataSetPayloadLimit;
    });
}

bool IsWritable(const AlignTableList &list)
{
    for (const AlignTableNode *node = list.Head; node != nullptr; node = node->Next) {
        if (node->Table == nullptr || !IsWritable(*node->Table))
            return false;
    }
    return true;
}

bool WriteFileHeader(ChunkWriter &writer, const AlignStore &store)
{
    writer.BeginPayload();
    writer.PutInteger(static_cast<std::uint8_t>(store.SdrType));
    writer.PutInteger(store.Tables.Count);
    return writer.WriteByteCrcChunk(store.FileVersion);
}

bool WriteTable(ChunkWriter &writer, const AlignTable &table)
{
    writer.BeginPayload();
    writer.PutInteger(table.Version);
    writer.PutBytes(table.HwId);
    writer.PutInteger(table.AlignedAt);
    writer.PutInteger(table.DataSetCapacity);
    writer.PutInteger(table.DataSetCount);
    if (!writer.WriteByteCrcChunk(table.Version))
        return false;
    for (const AlignDataSet &dataSet : table.DataSets.all().first(table.DataSetCount)) {
        writer.BeginPayload();
        writer.PutDataSet(dataSet);
        if (!writer.WriteWordCrcChunk())
            return false;
    }
    return true;
}

/// False when the stream failed, at the latest when its last bytes went out.
bool WriteFile(std::ostream &stream, AlignStore &store)
{
    ChunkWriter writer(stream, store.ChunkBuffer);
    if (!WriteFileHeader(writer, store))
        return false;
    for (const AlignTableNode *node = store.Tables.Head; node != nullptr; node = node->Next) {
        if (!WriteTable(writer, *node->Table))
            return false;
    }
    // A full disk may show only now: the last bytes are still in the stream's buffer.
    stream.flush();
    return stream.good();
}

/// Whether a file can hold the tables of the store.
AlignResult CheckWritable(const AlignTableList &list)
{
    if (list.Head == nullptr || list.Head->Table == nullptr)
        return AlignResult::ListIsEmpty;
    return IsWritable(list) ? AlignResult::Ok : AlignResult::InternalError;
}

} // namespace

AlignResult AlignStore::SaveFile(const QString &path)
{
    // Before the file is opened, which empties it.
    const AlignResult writable = CheckWritable(Tables);
    if (writable != AlignResult::Ok)
        return writable;
    std::array<char, alignfile::StreamBufferSize> streamBuffer; // outlives the stream
    std::ofstream stream;
    stream.rdbuf()->pubsetbuf(streamBuffer.data(), streamBuffer.size());
    stream.open(platform::FileSystemPath(path), std::ios::out | std::ios::binary | std::ios::trunc);
    if (!stream.is_open())
        return AlignResult::FileError;
    const bool written = WriteFile(stream, *this);
    stream.close();
    return written && stream.good() ? AlignResult::Ok : AlignResult::FileError;
}

AlignResult AlignStore::Save(std::ostream &stream)
{
    const AlignResult writable = CheckWritable(Tables);
    if (writable != AlignResult::Ok)
        return writable;
    return WriteFile(stream, *this) ? AlignResult::Ok : AlignResult::FileError;
}
