// SPDX-License-Identifier: MIT
// list: a line for each table.
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/Json.h"
#include "alignment_tool/TableFile.h"

#include <QCommandLineParser>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

void Declare(QCommandLineParser &parser)
{
    parser.addOption(JsonOption());
    DeclareFiles(parser);
}

QString DriverText(SdrType sdrType)
{
    const QString name = AlignmentDriverName(static_cast<int>(sdrType));
    return name.isEmpty() ? u"-"_s : name;
}

QString LineOf(const AlignTable &table, const TableFile &file)
{
    // At once: what an id holds is not looked at for places to be filled.
    return u"%1  %2  %3  %4  %5"_s.arg(DriverText(file.sdrType()).leftJustified(8),
                                       HardwareIdText(table).leftJustified(18),
                                       DateTimeText(table.AlignedAt).leftJustified(19),
                                       QString::number(table.DataSetCount).rightJustified(3), file.name());
}

QJsonObject ObjectOf(const AlignTable &table, const TableFile &file)
{
    QJsonObject object = TableHead(table, file.sdrType());
    PutText(object, u"file"_s, file.path());
    object.insert(u"dataSets"_s, int{table.DataSetCount});
    return object;
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    const bool json = parser.isSet(JsonOption());
    Exit exit = Exit::Done;
    JsonArray tables(terminal);
    if (json)
        tables.Begin(u"tarnvik-align/list"_s);
    for (const QString &path : FilesOf(parser.positionalArguments())) {
        TableFile file(path);
        const AlignResult result = file.ReadHeads([&](const AlignTable &table) {
            if (json)
                tables.Add(ObjectOf(table, file));
            else
                terminal.Print(LineOf(table, file));
        });
        if (result == AlignResult::Ok)
            continue;
        terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
        exit = Worse(exit, file.failureExit());
    }
    if (json)
        tables.End();
    return exit;
}

} // namespace

const Command ListCommand = {
    "list",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Lists the tables of alignment files."),
    "list --json TarnvikDriver_RtlSdr.ad",
    &Declare,
    &Run,
};

} // namespace aligntool
