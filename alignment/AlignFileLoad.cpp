// SPDX-License-Identifier: MIT
// Loading alignment files into a store.
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignFileTables.h"
#include "alignment/AlignStore.h"

#include <array>
#include <cstdio>

using alignfile::ChunkReader;

namespace {

/// Reads a table chunk and says on standard output when its version is wrong.
AlignResult ReadTableChunk(ChunkReader &reader)
{
    const AlignResult result = reader.ReadByteCrcChunk();
    if (result == AlignResult::VersionMismatch) {
        (void)std::fputs("[ERROR] fileversion and header version not equal!\n", stdout);
        (void)std::fflush(stdout); // standard output may be a pipe
    }
    return result;
}

AlignResult ReadFile(std::istream &stream, AlignStore &store, AlignTableList &list, bool adoptSdrType)
{
    ChunkReader reader(stream, store.ChunkBuffer);
    alignfile::FileHeader header;
    AlignResult result = alignfile::ReadFileHeader(reader, header);
    if (result != AlignResult::Ok)
        return result;
    if (adoptSdrType)
        store.SdrType = header.SdrType;
    else if (store.SdrType != header.SdrType)
        return AlignResult::TableWrongSdrType;
    for (unsigned i = 0; i < header.TableCount && result == AlignResult::Ok; ++i) {
        result = ReadTableChunk(reader);
        if (result != AlignResult::Ok)
            return result;
        AlignTable *const table = store.AppendNewTable(list);
        result = table != nullptr ? alignfile::TakeTable(reader, *table) : AlignResult::InternalError;
    }
    return result;
}

} // namespace

AlignResult AlignStore::LoadFile(const QString &path, AlignTableList &list, bool adoptSdrType)
{
    std::array<char, alignfile::StreamBufferSize> streamBuffer; // outlives the stream
    std::ifstream stream;
    stream.rdbuf()->pubsetbuf(streamBuffer.data(), streamBuffer.size());
    const AlignResult opened = alignfile::OpenForReading(stream, path);
    return opened == AlignResult::Ok ? Load(stream, list, adoptSdrType) : opened;
}

AlignResult AlignStore::Load(std::istream &stream, AlignTableList &list, bool adoptSdrType)
{
    ClearList(list);
    const AlignResult result = ReadFile(stream, *this, list, adoptSdrType);
    if (result != AlignResult::Ok)
        ClearList(list);
    return result;
}
