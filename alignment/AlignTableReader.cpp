// SPDX-License-Identifier: MIT
#include "alignment/AlignTableReader.h"

#include "alignment/AlignStore.h"

AlignResult AlignTableReader::Open(const QString &path)
{
    Header = {}; // of the file before
    Chunks.reset();
    File = std::ifstream();
    File.rdbuf()->pubsetbuf(StreamBuffer.data(), static_cast<std::streamsize>(StreamBuffer.size()));
    const AlignResult opened = alignfile::OpenForReading(File, path);
    return opened == AlignResult::Ok ? Open(File) : opened;
}

AlignResult AlignTableReader::Open(std::istream &stream)
{
    TablesRead = 0;
    Header = {};
    alignfile::FileHeader header;
    const AlignResult result = alignfile::ReadFileHeader(Chunks.emplace(stream, Buffer), header);
    if (result == AlignResult::Ok)
        Header = header;
    return result;
}

AlignResult AlignTableReader::ReadNext(AlignTable &table)
{
    return Note(ReadTable(table));
}

AlignResult AlignTableReader::CheckNext(AlignTable &table)
{
    return Note(CheckTable(table));
}

AlignResult AlignTableReader::Note(AlignResult result)
{
    ++TablesRead;
    if (result != AlignResult::Ok)
        TablesRead = Header.TableCount;
    return result;
}

AlignResult AlignTableReader::ReadTable(AlignTable &table)
{
    const AlignResult result = Chunks->ReadByteCrcChunk();
    if (result != AlignResult::Ok)
        return result;
    AlignStore::InitTable(table, Header.SdrType);
    if (table.DataSetCapacity != AlignDataSetCapacityOf(Header.SdrType))
        return AlignResult::InternalError; // no memory for the data sets
    return alignfile::TakeTable(*Chunks, table);
}

AlignResult AlignTableReader::CheckTable(AlignTable &table)
{
    AlignResult result = Chunks->ReadByteCrcChunk();
    if (result != AlignResult::Ok)
        return result;
    AlignStore::InitTable(table, ::SdrType::None);
    table.SdrType = Header.SdrType;
    result = alignfile::TakeTableFields(*Chunks, table, AlignDataSetCapacityOf(Header.SdrType));
    if (table.DataSetCount > 0 && Scratch.size() == 0)
        Scratch = AlignDataSetBlock(1, Header.SdrType);
    for (std::size_t i = 0; i < table.DataSetCount && result == AlignResult::Ok; ++i)
        result =
            Scratch.size() > 0 ? alignfile::ReadDataSet(*Chunks, Scratch[0]) : AlignResult::InternalError;
    return result;
}
