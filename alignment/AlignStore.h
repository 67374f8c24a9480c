// SPDX-License-Identifier: MIT
// The object through which alignment tables are made, changed, read from files and written to files.
#pragma once

#include "alignment/AlignChunkBuffer.h"
#include "alignment/AlignResult.h"
#include "alignment/AlignTable.h"
#include "alignment/AlignTableList.h"

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

/// One table chosen for AlignStore::MergeTables.
struct AlignSelectionEntry
{
    std::string HwId;       // the whole hardware id: same length, same bytes
    std::uint64_t Time = 0; // seconds since 1970; kept beside the id, never read here
};

/// Alignment tables of one receiver type and the buffer for their file. Every operation runs in the caller's
/// thread; a store and its lists belong to one thread at a time. Nothing throws: failures are results, lack
/// of memory included.
class AlignStore
{
public:
    AlignStore() = default;
    AlignStore(const AlignStore &) = delete;
    AlignStore &operator=(const AlignStore &) = delete;

    /// Turns `table` into an empty table of the given type: all zero but for tags, type and version, with the
    /// zeroed data sets of the type. What the table held before is freed. When the memory cannot be had,
    /// DataSets is empty and DataSetCapacity is 0.
    static void InitTable(AlignTable &table, ::SdrType sdrType);

    /// Appends an empty table of the store's type to the list, in constant time. The list owns it. Null, with
    /// the list unchanged, when there is no memory or the list is full; the caller reports that as
    /// InternalError.
    AlignTable *AppendNewTable(AlignTableList &list) const;

    /// Frees all tables of the list.
    static void ClearList(AlignTableList &list);

    /// Removes the first table whose hardware id matches and says so on standard output; null pointers and an
    /// id that matches nothing change nothing. Only the shorter of the two ids' lengths is compared: ABC
    /// removes a table ABCDEF and the reverse, and an empty id removes the first table. MergeTables compares
    /// whole ids.
    static void ClearTableByHwId(AlignTableList *list, const char *hwId);

    /// Appends to `target` a copy of every table of `source` (another list) whose hardware id the selection
    /// names, in the order of `source`. A copy keeps the date of alignment of its source.
    ///
    /// The first selected table that does not have the data sets of the store's type, or for which there is
    /// no memory, ends the merge without an error. InternalError when there is no memory for a node or for
    /// looking up the selection, or when `target` is full. What was merged until then stays.
    AlignResult MergeTables(AlignTableList &target, const AlignTableList &source,
                            std::span<const AlignSelectionEntry> selection) const;

    /// Reads the alignment file into `list`, whose former tables are freed as soon as the file is open. With
    /// `adoptSdrType` the store takes over the file's receiver type, without it the file must be of the
    /// store's. After a failure the list is empty, except when the file could not be opened: then it is as it
    /// was.
    AlignResult LoadFile(const QString &path, AlignTableList &list, bool adoptSdrType);
    /// The same from a stream that is open, in binary mode, at the first byte of the file.
    AlignResult Load(std::istream &stream, AlignTableList &list, bool adoptSdrType);

    /// Writes Tables to the file, in place: a failure while writing leaves a partly written file behind. What
    /// LoadFile would not read back is refused before the file is touched: ListIsEmpty without a table,
    /// VersionMismatch for a table of another version, InternalError for counts beyond what the store's type,
    /// the records or a chunk hold, and without memory for the path.
    AlignResult SaveFile(const QString &path);
    /// The same to a stream that is open in binary mode. Ends with the stream flushed.
    AlignResult Save(std::ostream &stream);

    /// Version written at the head of a file.
    std::uint8_t FileVersion = AlignVersion;
    /// Receiver type of the store; None until its owner sets it or a file is adopted.
    ::SdrType SdrType = ::SdrType::None;
    AlignChunkBuffer ChunkBuffer;
    /// The tables of the driver's file; what SaveFile writes.
    AlignTableList Tables;
    /// Tables of a file that is being imported, before they are merged.
    AlignTableList ImportTables;
};
