// SPDX-License-Identifier: MIT
// diff: which tables two files, or two folders, do not have in common.
#include "alignment/AlignChunkBuffer.h"
#include "alignment/AlignFileWriter.h"
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/TableFile.h"

#include <QCommandLineParser>
#include <QCryptographicHash>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

void Declare(QCommandLineParser &parser)
{
    const QString either = Translated(
        QT_TRANSLATE_NOOP("TarnvikAlign", "A file; a folder stands for the drivers' files in it."));
    parser.addPositionalArgument(u"A"_s, either);
    parser.addPositionalArgument(u"B"_s, either);
}

/// What is compared of a table.
struct Version
{
    std::uint64_t AlignedAt = 0;
    QByteArray Content;
    QString Name; // of the device
};

/// By driver and hardware id. Of several tables with one id the latest counts, as in the window.
using Versions = std::map<std::pair<SdrType, std::string>, Version>;

/// Tells contents apart: all that a file holds of a table but for its date.
class ContentHash
{
public:
    QByteArray Of(const AlignTable &table)
    {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        hash.addData(QByteArrayView(table.HwId.data(), AlignHwIdSize));
        hash.addData(QByteArray(1, static_cast<char>(table.Version)));
        hash.addData(QByteArray(1, static_cast<char>(table.DataSetCapacity)));
        for (const AlignDataSet &dataSet : table.DataSets.first(table.DataSetCount)) {
            std::ostringstream bytes;
            alignfile::ChunkWriter writer(bytes, *Buffer);
            writer.BeginPayload();
            writer.PutDataSet(dataSet);
            (void)writer.WriteWordCrcChunk(); // a string takes all
            hash.addData(QByteArray::fromStdString(bytes.str()));
        }
        return hash.result();
    }

private:
    std::unique_ptr<AlignChunkBuffer> Buffer = std::make_unique<AlignChunkBuffer>();
};

Exit Read(const QString &path, Versions &versions, Terminal &terminal)
{
    ContentHash hash;
    Exit exit = Exit::Done;
    for (const QString &name : FilesOf({path})) {
        TableFile file(name);
        const AlignResult result = file.ReadTables([&](const AlignTable &table) {
            Version &version = versions[{file.sdrType(), std::string(AlignHwIdOf(table))}];
            if (!version.Name.isEmpty() && version.AlignedAt >= table.AlignedAt)
                return;
            version = {table.AlignedAt, hash.Of(table),
                       AlignmentDriverName(static_cast<int>(file.sdrType())) + u' ' + HardwareIdText(table)};
        });
        if (result == AlignResult::Ok)
            continue;
        terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
        exit = Worse(exit, file.failureExit());
    }
    return exit;
}

/// Prints the differences as it finds them.
class Comparison
{
public:
    Comparison(const QString &left, const QString &right, Terminal &terminal)
        : Left(Harmless(left)), Right(Harmless(right)), Out(terminal)
    {}

    /// Both versions are of one table.
    void Compare(const Version &left, const Version &right)
    {
        if (left.AlignedAt > right.AlignedAt)
            Print(NewerText(Left, left, right));
        else if (left.AlignedAt < right.AlignedAt)
            Print(NewerText(Right, right, left));
        else if (left.Content != right.Content)
            Print(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "same date, other content: %1 (%2)"))
                      .arg(left.Name, DateTimeText(left.AlignedAt)));
    }
    void NoteOnlyOne(const Version &version, bool inLeft)
    {
        Print(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "only in %1: %2 (%3)"))
                  .arg(inLeft ? Left : Right, version.Name, DateTimeText(version.AlignedAt)));
    }

    [[nodiscard]] bool foundAny() const { return Found; }

private:
    static QString NewerText(const QString &where, const Version &newer, const Version &older)
    {
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "newer in %1: %2 (%3; %4)"))
            .arg(where, newer.Name, DateTimeText(newer.AlignedAt), DateTimeText(older.AlignedAt));
    }
    void Print(const QString &line)
    {
        Found = true;
        Out.Print(line);
    }

    QString Left;
    QString Right;
    Terminal &Out;
    bool Found = false;
};

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    const QStringList paths = parser.positionalArguments();
    if (paths.size() != 2 || paths == QStringList{u"-"_s, u"-"_s}) {
        terminal.Complain(
            Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "two files are wanted; see \"--help\"")));
        return Exit::WrongUsage;
    }
    Versions left;
    Versions right;
    Exit exit = Read(paths[0], left, terminal);
    exit = Worse(exit, Read(paths[1], right, terminal));
    if (exit != Exit::Done)
        return exit; // what cannot be read is not told to be missing

    Comparison comparison(paths[0], paths[1], terminal);
    for (const auto &[key, version] : left) {
        const auto other = right.find(key);
        if (other != right.end())
            comparison.Compare(version, other->second);
        else
            comparison.NoteOnlyOne(version, true);
    }
    for (const auto &[key, version] : right) {
        if (!left.contains(key))
            comparison.NoteOnlyOne(version, false);
    }
    return comparison.foundAny() ? Exit::Found : Exit::Done;
}

} // namespace

const Command DiffCommand = {
    "diff",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Says in which tables two files differ."),
    "diff TarnvikDriver_RtlSdr.ad colleague.ad",
    &Declare,
    &Run,
};

} // namespace aligntool
