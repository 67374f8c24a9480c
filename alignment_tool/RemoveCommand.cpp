// SPDX-License-Identifier: MIT
// remove: takes tables out of a file.
#include "alignment/AlignStore.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/IdChoice.h"
#include "alignment_tool/OutputFile.h"
#include "alignment_tool/TableFile.h"

#include <QCommandLineParser>

#include <memory>
#include <new>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

void Declare(QCommandLineParser &parser)
{
    IdChoice::Declare(parser);
    OutputFile::Declare(parser);
    parser.addPositionalArgument(u"FILE"_s,
                                 Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "An alignment file.")));
}

/// Reads the file into the store without the chosen tables.
Exit Read(const QString &path, IdChoice &ids, AlignStore &store, Terminal &terminal)
{
    TableFile file(path); // says more of damage than the store does
    if (file.ReadHeads([&](const AlignTable &table) { (void)ids.Takes(table); }) != AlignResult::Ok) {
        terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
        return file.failureExit();
    }
    const Exit missing = ids.ReportMissing(file.name(), terminal);
    if (missing != Exit::Done)
        return missing;
    const AlignResult result = store.LoadFile(path, store.Tables, true);
    if (result != AlignResult::Ok) {
        terminal.Complain(u"%1: %2"_s.arg(file.name(), AlignResultText(result)));
        return Exit::FileFailed;
    }
    store.Tables.RemoveIf([&](const AlignTable &table) { return ids.Takes(table); });
    if (store.Tables.Head != nullptr)
        return Exit::Done;
    terminal.Complain(
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                     "%1: no table would be left, and a file holds one at least; delete the "
                                     "file instead"))
            .arg(file.name()));
    return Exit::WrongUsage;
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    const QStringList files = parser.positionalArguments();
    IdChoice ids(parser);
    if (files.size() != 1 || files.first() == u"-"_s || ids.takesAll()) {
        terminal.Complain(
            Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "one file, and --id, are wanted; see \"--help\"")));
        return Exit::WrongUsage;
    }
    const std::unique_ptr<AlignStore> store(new (std::nothrow) AlignStore);
    if (store == nullptr)
        return Exit::FileFailed;
    OutputFile output(parser, files.first());
    if (!output.isSet()) {
        terminal.Complain(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "--output wants a file")));
        return Exit::WrongUsage;
    }
    if (!output.Lock(terminal))
        return Exit::FileFailed;
    const Exit exit = Read(files.first(), ids, *store, terminal);
    if (exit != Exit::Done)
        return exit;
    return output.Write(*store, terminal);
}

} // namespace

const Command RemoveCommand = {
    "remove",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Takes tables out of a file."),
    "remove TarnvikDriver_RtlSdr.ad --id 0x1234",
    &Declare,
    &Run,
};

} // namespace aligntool
