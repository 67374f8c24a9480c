// SPDX-License-Identifier: MIT
// Reads an alignment file table by table.
#pragma once

#include "alignment/AlignChunkBuffer.h"
#include "alignment/AlignFileFormat.h"
#include "alignment/AlignFileTables.h"
#include "alignment/AlignResult.h"
#include "alignment/AlignTable.h"

#include <QString>

#include <array>
#include <cstdint>
#include <fstream>
#include <istream>
#include <optional>

/// Hands out one table after the other, in memory that does not grow with the file. A file gives the same
/// result as with AlignStore::LoadFile: the first one that is not Ok. Some 80 KB large; nothing throws.
class AlignTableReader
{
public:
    AlignTableReader() = default;
    AlignTableReader(const AlignTableReader &) = delete;
    AlignTableReader &operator=(const AlignTableReader &) = delete;

    /// Opens the file and reads its header.
    AlignResult Open(const QString &path);
    /// The same for a stream that is open, in binary mode, at the first byte of the file. The stream is the
    /// caller's and outlives the reading.
    AlignResult Open(std::istream &stream);

    /// True when the last Open found a file or stream to read from, whatever it holds.
    [[nodiscard]] bool isOpen() const { return Chunks.has_value(); }

    /// The receiver type of the file, and how many tables it announces; None and 0 unless Open returned Ok.
    [[nodiscard]] ::SdrType sdrType() const { return Header.SdrType; }
    [[nodiscard]] std::uint16_t tableCount() const { return Header.TableCount; }

    /// Where the chunk that was read last, or could not be read, begins in the file, and how many bytes were
    /// read in all; 0 while no file is open.
    [[nodiscard]] std::uint64_t chunkBegin() const { return Chunks ? Chunks->chunkBegin() : 0; }
    [[nodiscard]] std::uint64_t bytesRead() const { return Chunks ? Chunks->bytesRead() : 0; }

    /// True while there are tables to be read.
    [[nodiscard]] bool hasNext() const { return TablesRead < Header.TableCount; }

    /// Reads the next table in the place of what `table` holds; hasNext() must be true. After a failure
    /// `table` is of no use, and there is no next one.
    AlignResult ReadNext(AlignTable &table);
    /// The same with the same results, faster: the data sets are read and checked, but `table` gets none.
    AlignResult CheckNext(AlignTable &table);

private:
    AlignResult ReadTable(AlignTable &table);
    AlignResult CheckTable(AlignTable &table);
    AlignResult Note(AlignResult result);

    std::array<char, alignfile::StreamBufferSize> StreamBuffer; // outlives File
    std::ifstream File;
    AlignChunkBuffer Buffer;
    std::optional<alignfile::ChunkReader> Chunks; // nothing until a file is open
    AlignDataSetBlock Scratch;                    // for data sets that nobody wants
    alignfile::FileHeader Header;
    unsigned TablesRead = 0;
};
