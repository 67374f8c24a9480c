// SPDX-License-Identifier: MIT
// Alignment files as the commands read them: named on the command line, read table by table.
#pragma once

#include "alignment/AlignTableReader.h"
#include "alignment_tool/Command.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>

namespace aligntool {

/// The files that the arguments stand for: a folder stands for the drivers' files in it, by name, no argument
/// for the recorder's folder. Paths are texts of platform::PathText.
[[nodiscard]] QStringList FilesOf(const QStringList &arguments);

/// Reads one file. "-" is standard input.
class TableFile
{
public:
    explicit TableFile(const QString &path) : Path(path) {}

    using Visitor = std::function<void(const AlignTable &)>;

    /// Reads all tables and hands each to the visitor, which finds the number of tables read so far in
    /// tablesRead. The object that it gets is used again for the next one. Ok, or the reason why the reading
    /// ended.
    AlignResult ReadTables(const Visitor &visitor);
    /// The same with data sets that are checked and not kept, which is faster.
    AlignResult ReadHeads(const Visitor &visitor);

    /// Why the last reading failed: the place, the reason, and what helps. One line without the file's name.
    [[nodiscard]] QString failure() const;
    /// FileFailed when the file could not be opened, else Found.
    [[nodiscard]] Exit failureExit() const;

    /// Bytes that lie behind the last chunk, after all was read.
    [[nodiscard]] std::uint64_t bytesBehind() const;

    /// The name to be shown.
    [[nodiscard]] QString name() const;
    [[nodiscard]] const QString &path() const { return Path; }
    [[nodiscard]] ::SdrType sdrType() const { return Reader.sdrType(); }
    [[nodiscard]] unsigned tablesRead() const { return TablesRead; }

private:
    AlignResult Read(AlignResult (AlignTableReader::*next)(AlignTable &), const Visitor &visitor);

    AlignTableReader Reader;
    QString Path;
    AlignResult Result = AlignResult::Ok;
    unsigned TablesRead = 0;
};

/// The hardware id, without its NUL, as a text: bytes that are no letters as platform::PathText has them.
[[nodiscard]] QString HardwareIdText(const AlignTable &table);

/// Whether bytes follow the id's NUL. They are no part of the id, but files keep them.
[[nodiscard]] bool HasBytesBehindId(const AlignTable &table);

/// The UTC date and time as "yyyy-MM-dd hh:mm:ss", or what AlignmentDateText gives beyond the calendar.
[[nodiscard]] QString DateTimeText(std::uint64_t secondsSinceEpoch);

} // namespace aligntool
