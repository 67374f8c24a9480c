// SPDX-License-Identifier: MIT
// export: all that a file holds, as JSON.
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/IdChoice.h"
#include "alignment_tool/Json.h"
#include "alignment_tool/TableFile.h"
#include "alignment_tool/TableJson.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

void Declare(QCommandLineParser &parser)
{
    IdChoice::Declare(parser);
    DeclareFile(parser);
}

QJsonObject HeadOf(const TableFile &file)
{
    const int sdrType = static_cast<int>(file.sdrType());
    return {{u"sdrType"_s, sdrType}, {u"driver"_s, AlignmentDriverName(sdrType)}};
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    const QStringList files = parser.positionalArguments();
    if (files.size() != 1)
        return WantsOneFile(terminal);
    IdChoice ids(parser);
    TableFile file(files.first());
    JsonArray tables(terminal);
    bool begun = false;
    unsigned ofOtherVersion = 0; // the number of such a table
    const auto begin = [&] {
        if (!begun)
            tables.Begin(TablesFormat, HeadOf(file));
        begun = true;
    };
    const AlignResult result = file.ReadTables([&](const AlignTable &table) {
        begin();
        if (!ids.Takes(table))
            return;
        if (table.Version != AlignVersion)
            ofOtherVersion = file.tablesRead();
        tables.Add(TableToJson(table, file.sdrType()));
    });
    if (result != AlignResult::Ok) { // what was printed is no document, and cannot be taken for one
        terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
        return file.failureExit();
    }
    if (ofOtherVersion > 0) { // nobody can tell what it means, and "import" would make another one of it
        terminal.Complain(u"%1: %2"_s.arg(
            file.name(),
            Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "table %1 has another inner version than 5; "
                                                         "only tables of version 5 are exported"))
                .arg(ofOtherVersion)));
        return Exit::Found;
    }
    begin();
    tables.End();
    return ids.ReportMissing(file.name(), terminal);
}

} // namespace

const Command ExportCommand = {
    "export",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Prints all that an alignment file holds, as JSON."),
    "export TarnvikDriver_RtlSdr.ad >tables.json",
    &Declare,
    &Run,
};

} // namespace aligntool
