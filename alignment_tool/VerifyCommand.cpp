// SPDX-License-Identifier: MIT
// verify: reads files to the end and says what is wrong.
#include "alignment_tool/Command.h"
#include "alignment_tool/TableFile.h"

#include <QCommandLineParser>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

/// Collects what the program accepts and a strict reader would not.
class Warnings
{
public:
    Warnings(const TableFile &file, Terminal &terminal) : File(file), Out(terminal) {}

    void Look(const AlignTable &table)
    {
        const unsigned number = File.tablesRead();
        Ids.emplace_back(AlignHwIdOf(table), number);
        if (table.Version != AlignVersion)
            Warn(InTable(number).arg(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "its inner version is %1"))
                                         .arg(int{table.Version})));
        if (HasBytesBehindId(table))
            Warn(InTable(number).arg(
                Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "bytes follow the end of its hardware id"))));
        if (const int capacity = AlignDataSetCapacityOf(File.sdrType()); table.DataSetCapacity != capacity)
            Warn(InTable(number).arg(
                Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                             "it states room for %1 data sets, its receiver type has %2"))
                    .arg(int{table.DataSetCapacity})
                    .arg(capacity)));
    }

    /// What only the whole file shows.
    void LookAtAll()
    {
        if (AlignDataSetCapacityOf(File.sdrType()) == 0)
            Warn(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "its receiver type, %1, is unknown"))
                     .arg(static_cast<int>(File.sdrType())));
        if (Ids.empty())
            Warn(Translated(
                QT_TRANSLATE_NOOP("TarnvikAlign", "it holds no table; the window refuses to read it")));
        WarnOfBeginnings();
        if (const std::uint64_t bytes = File.bytesBehind(); bytes > 0)
            Warn(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "bytes behind the last table: %1")).arg(bytes));
    }

    [[nodiscard]] int count() const { return Count; }

private:
    /// Names for each id the longest other one that it begins with.
    void WarnOfBeginnings()
    {
        std::sort(Ids.begin(), Ids.end()); // an id comes right before all that begin with it
        std::vector<std::pair<std::string, unsigned>> beginnings;
        for (const auto &id : Ids) {
            while (!beginnings.empty() && !std::string_view(id.first).starts_with(beginnings.back().first))
                beginnings.pop_back();
            if (!beginnings.empty() && beginnings.back().first == id.first)
                Warn(Translated(
                         QT_TRANSLATE_NOOP("TarnvikAlign", "tables %1 and %2 have the same hardware id"))
                         .arg(beginnings.back().second)
                         .arg(id.second));
            else if (!beginnings.empty())
                Warn(Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                                  "the hardware id of table %1 is the beginning of that of "
                                                  "table %2"))
                         .arg(beginnings.back().second)
                         .arg(id.second));
            beginnings.push_back(id);
        }
    }

    static QString InTable(unsigned number)
    {
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "table %1: %2")).arg(number);
    }

    void Warn(const QString &text)
    {
        ++Count;
        Out.Print(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "%1: warning: %2")).arg(File.name(), text));
    }

    const TableFile &File;
    Terminal &Out;
    std::vector<std::pair<std::string, unsigned>> Ids; // with the number of the table
    int Count = 0;
};

Exit Verify(const QString &path, Terminal &terminal)
{
    TableFile file(path);
    Warnings warnings(file, terminal);
    if (file.ReadHeads([&](const AlignTable &table) { warnings.Look(table); }) != AlignResult::Ok) {
        if (file.failureExit() == Exit::FileFailed)
            terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
        else
            terminal.Print(u"%1: %2"_s.arg(file.name(), file.failure()));
        return file.failureExit();
    }
    warnings.LookAtAll();
    const QString ok =
        file.tablesRead() == 1
            ? Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "ok, 1 table"))
            : Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "ok, %1 tables")).arg(file.tablesRead());
    const QString noted = Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "warnings: %1")).arg(warnings.count());
    terminal.Print(u"%1: %2"_s.arg(file.name(), warnings.count() > 0 ? ok + u", "_s + noted : ok));
    return Exit::Done;
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    Exit exit = Exit::Done;
    for (const QString &path : FilesOf(parser.positionalArguments()))
        exit = Worse(exit, Verify(path, terminal));
    return exit;
}

} // namespace

const Command VerifyCommand = {
    "verify",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Reads alignment files to the end and says what is wrong with them."),
    "verify TarnvikDriver_RtlSdr.ad",
    &DeclareFiles,
    &Run,
};

} // namespace aligntool
