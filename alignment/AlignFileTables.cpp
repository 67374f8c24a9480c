// SPDX-License-Identifier: MIT
#include "alignment/AlignFileTables.h"

#include "platform/FilePath.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace alignfile {

AlignResult OpenForReading(std::ifstream &stream, const QString &path)
{
    const std::optional<std::filesystem::path> file = platform::FileSystemPath(path);
    if (!file)
        return AlignResult::InternalError;
    // Some systems open a folder like a file and fail at the first read, when the old tables would be gone.
    std::error_code ignored;
    if (std::filesystem::is_directory(*file, ignored) || platform::WaitsForOtherEnd(*file))
        return AlignResult::FileError;
    stream.open(*file, std::ios::in | std::ios::binary);
    return stream.is_open() ? AlignResult::Ok : AlignResult::FileError;
}

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

AlignResult TakeTableFields(ChunkReader &reader, AlignTable &table, std::size_t capacity)
{
    const bool complete = reader.TakeInteger(table.Version) && reader.TakeBytes(table.HwId) &&
                          reader.TakeInteger(table.AlignedAt) && reader.TakeInteger(table.DataSetCapacity) &&
                          reader.TakeInteger(table.DataSetCount);
    return complete && table.DataSetCount <= capacity ? AlignResult::Ok : AlignResult::InternalError;
}

AlignResult ReadDataSet(ChunkReader &reader, AlignDataSet &dataSet)
{
    const AlignResult result = reader.ReadWordCrcChunk();
    if (result != AlignResult::Ok)
        return result;
    return reader.TakeDataSet(dataSet) ? AlignResult::Ok : AlignResult::InternalError;
}

AlignResult TakeTable(ChunkReader &reader, AlignTable &table)
{
    // The capacity that the file states stays in the table, but only the block bounds what may be written to
    // it.
    AlignResult result = TakeTableFields(reader, table, table.DataSets.size());
    for (std::size_t i = 0; i < table.DataSetCount && result == AlignResult::Ok; ++i)
        result = ReadDataSet(reader, table.DataSets.Only(i));
    return result;
}

} // namespace alignfile
