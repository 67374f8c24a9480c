// SPDX-License-Identifier: MIT
// show: the whole contents of tables, for people.
#include "alignment_tool/Command.h"
#include "alignment_tool/IdChoice.h"
#include "alignment_tool/Json.h"
#include "alignment_tool/TableFile.h"

#include <QCommandLineParser>

#include <span>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

void Declare(QCommandLineParser &parser)
{
    IdChoice::Declare(parser);
    parser.addOption(JsonOption());
    DeclareFile(parser);
}

void Show(const AlignSampleRatePoint &point, Terminal &terminal)
{
    terminal.Print(
        u"      "_s +
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "sample rate %1 (attribute %2), gain entries: %3"))
            .arg(point.SampleFrequency)
            .arg(point.Attr)
            .arg(int{point.GainEntryCount}));
    for (const AlignGainEntry &entry : std::span(point.GainEntries).first(point.GainEntryCount))
        terminal.Print(u"        %1 %2 %3 %4"_s.arg(int{entry.Value1}, 5)
                           .arg(int{entry.Value2}, 5)
                           .arg(int{entry.Value3}, 5)
                           .arg(int{entry.Value4}, 5));
}

void Show(const AlignFreqPoint &point, Terminal &terminal)
{
    terminal.Print(u"    "_s + Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "frequency %1 (attribute %2)"))
                                   .arg(point.Frequency)
                                   .arg(int{point.Attr}));
    for (const AlignSampleRatePoint &ratePoint :
         std::span(point.SampleRatePoints).first(point.SampleRatePointCount))
        Show(ratePoint, terminal);
}

void Show(const AlignDataSet &dataSet, std::size_t number, Terminal &terminal)
{
    terminal.Print(
        u"  "_s +
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                     "data set %1: attributes %2 %3 %4 %5, words %6 %7, frequencies: %8"))
            .arg(number)
            .arg(int{dataSet.Attr1})
            .arg(int{dataSet.Attr2})
            .arg(int{dataSet.Attr3})
            .arg(int{dataSet.Attr4})
            .arg(int{dataSet.Word1})
            .arg(int{dataSet.Word2})
            .arg(int{dataSet.FreqPointCount}));
    for (const AlignFreqPoint &point : std::span(dataSet.FreqPoints).first(dataSet.FreqPointCount))
        Show(point, terminal);
}

void Show(const AlignTable &table, Terminal &terminal)
{
    terminal.Print(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "%1, aligned at %2, data sets: %3 of %4"))
                       .arg(HardwareIdText(table), DateTimeText(table.AlignedAt),
                            QString::number(table.DataSetCount), QString::number(table.DataSetCapacity)));
    std::size_t number = 0;
    for (const AlignDataSet &dataSet : table.DataSets.first(table.DataSetCount))
        Show(dataSet, ++number, terminal);
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    if (parser.isSet(JsonOption()))
        return ExportCommand.Run(parser, terminal);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 1)
        return WantsOneFile(terminal);
    IdChoice ids(parser);
    TableFile file(files.first());
    const AlignResult result = file.ReadTables([&](const AlignTable &table) {
        if (ids.Takes(table))
            Show(table, terminal);
    });
    if (result == AlignResult::Ok)
        return ids.ReportMissing(file.name(), terminal);
    terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
    return file.failureExit();
}

} // namespace

const Command ShowCommand = {
    "show",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Shows the whole contents of an alignment file."),
    "show --id 0x1234 TarnvikDriver_RtlSdr.ad",
    &Declare,
    &Run,
};

} // namespace aligntool
