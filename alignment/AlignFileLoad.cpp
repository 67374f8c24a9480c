// SPDX-License-Identifier: MIT
// Loading alignment files into a store.
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignFileReader.h"
#include "alignment/AlignStore.h"
#include "platform/FilePath.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <system_error>

using alignfile::ChunkReader;

namespace {

/// Opens the file; false when that fails.
bool OpenForReading(std::ifstream &stream, const QString &path)
{
    const std::filesystem::path file = platform::FileSystemPath(path);
    // Some systems open a folder like a file and fail at the first read, when the old tables would be gone.
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored))
        return false;
    stream.open(file, std::ios::in | std::ios::binary);
    return stream.is_open();
}

struct FileHeader
{
    ::SdrType SdrType = ::SdrType::None;
    std::uint16_t TableCount = 0;
};

AlignResult ReadFileHeader(ChunkReader &reader, FileHeader &header)
{
    const AlignResult result = reader.ReadByteCrcChunk();
    if (result != AlignResult::Ok)
        return result;
    std::uint8_t sdrType = 0;
    if (!reader.TakeInteger(sdrType) || !reader.TakeInteger(header.TableCount))
        return AlignResult::InternalError;
    header.SdrType = static_cast<::SdrType>(sdrType);
    return AlignResult::Ok;
}

/// Reads a table chunk and its data-set chunks into a new table of the list.
AlignResult ReadTable(ChunkReader &reader, const AlignStore &store, AlignTableList &list)
{
    AlignResult result = reader.ReadByteCrcChunk();
    if (result == AlignResult::VersionMismatch) {
        (void)std::fputs("[ERROR] fileversion and header version not equal!\n", stdout);
        (void)std::fflush(stdout); // standard output may be a pipe
    }
    if (result != AlignResult::Ok)
        return result;

    AlignTable *table = store.AppendNewTable(list);
    if (table == nullptr)
        return AlignResult::InternalError;
    const bool complete = reader.TakeInteger(table->Version) && reader.TakeBytes(table->HwId) &&
                          reader.TakeInteger(table->AlignedAt) &&
                          reader.TakeInteger(table->DataSetCapacity) &&
                          reader.TakeInteger(table->DataSetCount);
    // The capacity that the file states stays in the table, but only the block bounds what may be written to
    // it.
    if (!complete || table->DataSetCount > table->DataSets.size())
        return AlignResult::InternalError;

    for (std::size_t i = 0; i < table->DataSetCount; ++i) {
        result = reader.ReadWordCrcChunk();
        if (result != AlignResult::Ok)
            return result;
        if (!reader.TakeDataSet(table->DataSets[i]))
            return AlignResult::InternalError;
    }
    return AlignResult::Ok;
}

AlignResult ReadFile(std::istream &stream, AlignStore &store, AlignTableList &list, bool adoptSdrType)
{
    ChunkReader reader(stream, store.ChunkBuffer);
    FileHeader header;
    AlignResult result = ReadFileHeader(reader, header);
    if (result != AlignResult::Ok)
        return result;
    if (adoptSdrType)
        store.SdrType = header.SdrType;
    else if (store.SdrType != header.SdrType)
        return AlignResult::TableWrongSdrType;
    for (unsigned i = 0; i < header.TableCount && result == AlignResult::Ok; ++i)
        result = ReadTable(reader, store, list);
    return result;
}

} // namespace

AlignResult AlignStore::LoadFile(const QString &path, AlignTableList &list, bool adoptSdrType)
{
    std::array<char, alignfile::StreamBufferSize> streamBuffer; // outlives the stream
    std::ifstream stream;
    stream.rdbuf()->pubsetbuf(streamBuffer.data(), streamBuffer.size());
    if (!OpenForReading(stream, path))
        return AlignResult::FileError;
    return Load(stream, list, adoptSdrType);
}

AlignResult AlignStore::Load(std::istream &stream, AlignTableList &list, bool adoptSdrType)
{
    ClearList(list);
    const AlignResult result = ReadFile(stream, *this, list, adoptSdrType);
    if (result != AlignResult::Ok)
        ClearList(list);
    return result;
}
