// SPDX-License-Identifier: MIT
// Saving the tables of a store.
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignFileWriter.h"
#include "alignment/AlignStore.h"
#include "platform/DiskSpace.h"
#include "platform/FilePath.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>

using alignfile::ChunkWriter;

namespace {

/// Whether every data set of the table that counts fits a chunk.
bool FitsChunks(const AlignTable &table)
{
    const std::span<const AlignDataSet> used = table.DataSets.first(table.DataSetCount);
    return std::all_of(used.begin(), used.end(), [](const AlignDataSet &dataSet) {
        return alignfile::DataSetPayloadSize(dataSet).value_or(alignfile::DataSetPayloadLimit) <
               alignfile::DataSetPayloadLimit;
    });
}

/// Ok when the program would read the table back from a file of the type.
AlignResult CheckReadable(const AlignTable &table, ::SdrType sdrType)
{
    if (table.Version != AlignVersion)
        return AlignResult::VersionMismatch;
    const std::size_t most = std::min(table.DataSets.size(), std::size_t{AlignDataSetCapacityOf(sdrType)});
    return table.DataSetCount <= most && FitsChunks(table) ? AlignResult::Ok : AlignResult::InternalError;
}

/// Ok when the program would read all tables of the store back from a file.
AlignResult CheckReadable(const AlignStore &store)
{
    if (store.Tables.Head == nullptr || store.Tables.Head->Table == nullptr)
        return AlignResult::ListIsEmpty;
    for (const AlignTableNode *node = store.Tables.Head; node != nullptr; node = node->Next) {
        const AlignResult result =
            node->Table != nullptr ? CheckReadable(*node->Table, store.SdrType) : AlignResult::InternalError;
        if (result != AlignResult::Ok)
            return result;
    }
    return AlignResult::Ok;
}

/// The size of the file that a save of these tables, all of which can be written, makes.
std::uint64_t FileSizeOf(const AlignTableList &tables)
{
    std::uint64_t size = alignfile::ByteCrcChunkSize(alignfile::HeaderPayloadSize);
    for (const AlignTable &table : tables) {
        size += alignfile::ByteCrcChunkSize(alignfile::TablePayloadSize);
        for (const AlignDataSet &dataSet : table.DataSets.first(table.DataSetCount))
            size += alignfile::WordCrcChunkSize(alignfile::DataSetPayloadSize(dataSet).value_or(0));
    }
    return size;
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
    for (const AlignDataSet &dataSet : table.DataSets.first(table.DataSetCount)) {
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
    for (const AlignTable &table : store.Tables) {
        if (!WriteTable(writer, table))
            return false;
    }
    // A full disk may show only now: the last bytes are still in the stream's buffer.
    stream.flush();
    return stream.good();
}

} // namespace

AlignResult AlignStore::SaveFile(const QString &path)
{
    // Before the file is opened, which empties it.
    const AlignResult readable = CheckReadable(*this);
    if (readable != AlignResult::Ok)
        return readable;
    const std::optional<std::filesystem::path> file = platform::FileSystemPath(path);
    if (!file)
        return AlignResult::InternalError;
    if (platform::WaitsForOtherEnd(*file) || !platform::HasRoomFor(*file, FileSizeOf(Tables)))
        return AlignResult::FileError;
    std::array<char, alignfile::StreamBufferSize> streamBuffer; // outlives the stream
    std::ofstream stream;
    stream.rdbuf()->pubsetbuf(streamBuffer.data(), streamBuffer.size());
    stream.open(*file, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!stream.is_open())
        return AlignResult::FileError;
    const bool written = WriteFile(stream, *this);
    stream.close();
    return written && stream.good() ? AlignResult::Ok : AlignResult::FileError;
}

AlignResult AlignStore::Save(std::ostream &stream)
{
    const AlignResult readable = CheckReadable(*this);
    if (readable != AlignResult::Ok)
        return readable;
    return WriteFile(stream, *this) ? AlignResult::Ok : AlignResult::FileError;
}
