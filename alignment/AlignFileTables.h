// SPDX-License-Identifier: MIT
// Header and tables of an alignment file, read chunk by chunk.
#pragma once

#include "alignment/AlignFileReader.h"
#include "alignment/AlignTable.h"

#include <QString>

#include <cstdint>
#include <fstream>

namespace alignfile {

struct FileHeader
{
    ::SdrType SdrType = ::SdrType::None;
    std::uint16_t TableCount = 0;
};

/// Opens a file for reading; Ok, FileError, or InternalError without memory.
AlignResult OpenForReading(std::ifstream &stream, const QString &path);

AlignResult ReadFileHeader(ChunkReader &reader, FileHeader &header);

/// Takes the fields of the table whose chunk was read last. InternalError, too, when it counts more than
/// `capacity` data sets.
AlignResult TakeTableFields(ChunkReader &reader, AlignTable &table, std::size_t capacity);

/// Reads the next data-set chunk. The data set's unused entries stay as they are.
AlignResult ReadDataSet(ChunkReader &reader, AlignDataSet &dataSet);

/// Takes the table apart whose chunk was read last, and reads its data-set chunks. The table must be fresh
/// from AlignStore::InitTable.
AlignResult TakeTable(ChunkReader &reader, AlignTable &table);

} // namespace alignfile
