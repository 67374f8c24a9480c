// SPDX-License-Identifier: MIT
#include "alignment_tool/TableFile.h"

#include "Common_Files/TarnvikBasic.h"
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_merge/AlignmentRow.h"
#include "platform/EscapedText.h"
#include "platform/FilePath.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <limits>
#include <system_error>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

namespace fs = std::filesystem;

const QString StandardInput = u"-"_s;

fs::path PathOf(const QString &text)
{
    return platform::FileSystemPath(text).value_or(fs::path());
}

QStringList DriverFilesIn(const QString &folder)
{
    const QRegularExpression pattern(
        QRegularExpression::wildcardToRegularExpression(AlignmentDriverFilePattern()),
        QRegularExpression::CaseInsensitiveOption);
    QStringList files;
    std::error_code error;
    for (const fs::directory_entry &entry : fs::directory_iterator(PathOf(folder), error)) {
        // Half surrogates match nothing.
        const QByteArray name = platform::TextBytes(platform::PathText(entry.path().filename()));
        std::error_code ignored;
        if (entry.is_regular_file(ignored) && pattern.match(QString::fromUtf8(name)).hasMatch())
            files.append(platform::PathText(entry.path()));
    }
    if (error || files.isEmpty())
        return {folder}; // which cannot be read as a file either, and is reported so
    files.sort();
    return files;
}

bool IsListableFolder(const fs::path &path)
{
    std::error_code error;
    const fs::directory_iterator entries(path, error);
    return !error;
}

/// What helps against a file that was opened and could not be read.
QString Remedy(AlignResult result)
{
    switch (result) {
    case AlignResult::VersionMismatch:
        return Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "this is no alignment file of version 5, or it is damaged"));
    case AlignResult::FileError:
        return Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "the file ends too early; take it from its source again"));
    case AlignResult::InternalError:
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                            "a length or a count is beyond what a table holds; "
                                            "take the file from its source again"));
    default:
        return Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "the file is damaged; take it from its source again"));
    }
}

} // namespace

QStringList FilesOf(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return DriverFilesIn(QTarnvikBasic::GetRecorderFile(QString()));
    QStringList files;
    for (const QString &argument : arguments) {
        std::error_code ignored;
        if (argument != StandardInput && fs::is_directory(PathOf(argument), ignored))
            files += DriverFilesIn(argument);
        else
            files.append(argument);
    }
    return files;
}

AlignResult TableFile::ReadTables(const Visitor &visitor)
{
    return Read(&AlignTableReader::ReadNext, visitor);
}

AlignResult TableFile::ReadHeads(const Visitor &visitor)
{
    return Read(&AlignTableReader::CheckNext, visitor);
}

AlignResult TableFile::Read(AlignResult (AlignTableReader::*next)(AlignTable &), const Visitor &visitor)
{
    TablesRead = 0;
    Result = Path == StandardInput ? Reader.Open(std::cin) : Reader.Open(Path);
    AlignTable current;
    while (Result == AlignResult::Ok && Reader.hasNext()) {
        Result = (Reader.*next)(current);
        if (Result != AlignResult::Ok)
            break;
        ++TablesRead;
        visitor(current);
    }
    return Result;
}

QString TableFile::failure() const
{
    if (!Reader.isOpen()) {
        std::error_code error;
        const fs::file_status status = fs::status(PathOf(Path), error);
        if (!fs::exists(status))
            return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "there is no such file; check the name"));
        if (IsListableFolder(PathOf(Path)))
            return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "no file %1 is in this folder; name files"))
                .arg(AlignmentDriverFilePattern());
        return Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "the file cannot be opened; check that you may read it"));
    }
    const QString place = Reader.chunkBegin() == 0
                              ? Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "header, byte 0"))
                              : Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "table %1, byte %2"))
                                    .arg(TablesRead + 1)
                                    .arg(Reader.chunkBegin());
    return u"%1: %2; %3"_s.arg(place, AlignResultText(Result), Remedy(Result));
}

Exit TableFile::failureExit() const
{
    return Reader.isOpen() ? Exit::Found : Exit::FileFailed;
}

std::uint64_t TableFile::bytesBehind() const
{
    if (Path == StandardInput) {
        std::cin.ignore(std::numeric_limits<std::streamsize>::max());
        return static_cast<std::uint64_t>(std::cin.gcount());
    }
    std::error_code error;
    const std::uintmax_t size = fs::file_size(PathOf(Path), error);
    return error || size < Reader.bytesRead() ? 0 : size - Reader.bytesRead();
}

QString TableFile::name() const
{
    return Path == StandardInput ? Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "standard input"))
                                 : Harmless(Path);
}

QString HardwareIdText(const AlignTable &table)
{
    return Harmless(platform::BytesText(AlignHwIdOf(table)));
}

bool HasBytesBehindId(const AlignTable &table)
{
    const std::size_t size = AlignHwIdOf(table).size();
    return std::any_of(table.HwId.begin() + static_cast<std::ptrdiff_t>(size), table.HwId.end(),
                       [](char byte) { return byte != 0; });
}

QString DateTimeText(std::uint64_t secondsSinceEpoch)
{
    constexpr std::uint64_t calendarEnd = 253402300800; // 10000-01-01
    if (secondsSinceEpoch >= calendarEnd)
        return AlignmentDateText(secondsSinceEpoch);
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(secondsSinceEpoch), QTimeZone::utc())
        .toString(u"yyyy-MM-dd hh:mm:ss"_s);
}

} // namespace aligntool
