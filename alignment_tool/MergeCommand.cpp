// SPDX-License-Identifier: MIT
// merge: takes tables of other files over, by the rules of the window's dialog.
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_merge/AlignmentRowList.h"
#include "alignment_merge/AlignmentSave.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/IdChoice.h"
#include "alignment_tool/OutputFile.h"
#include "alignment_tool/TableFile.h"
#include "platform/FilePath.h"

#include <QCommandLineParser>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

const QString AllOption = u"all"_s;
const QString NewerOption = u"newer"_s;
const QString DryRunOption = u"dry-run"_s;

void Declare(QCommandLineParser &parser)
{
    IdChoice::Declare(parser);
    parser.addOption(
        {AllOption, Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Takes older versions of tables, too."))});
    parser.addOption(
        {NewerOption,
         Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                      "Takes newer versions of tables only, no tables that TARGET lacks."))});
    parser.addOption({DryRunOption, Translated(QT_TRANSLATE_NOOP(
                                        "TarnvikAlign", "Says what would be done, and writes nothing."))});
    OutputFile::Declare(parser);
    parser.addPositionalArgument(
        u"TARGET"_s, Translated(QT_TRANSLATE_NOOP(
                         "TarnvikAlign", "The file that takes the tables; made when it is not there.")));
    parser.addPositionalArgument(
        u"SOURCE"_s, Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "The files that the tables come from.")),
        u"SOURCE..."_s);
}

/// The files of a merge.
struct Files
{
    QString Target;
    QStringList Sources;
    OutputFile Output; // the target without --output

    explicit Files(const QCommandLineParser &parser)
        : Target(parser.positionalArguments().value(0)),
          Sources(parser.positionalArguments().mid(1)),
          Output(parser, Target)
    {}

    /// Why these files cannot be merged, whatever they hold; empty when they can.
    [[nodiscard]] QString objection() const
    {
        if (Target.isEmpty() || Sources.isEmpty())
            return Translated(
                QT_TRANSLATE_NOOP("TarnvikAlign", "a target and sources are wanted; see \"--help\""));
        if (!Output.isSet())
            return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "--output wants a file"));
        if (Target == u"-"_s || Sources.contains(u"-"_s))
            return Translated(QT_TRANSLATE_NOOP(
                "TarnvikAlign", "files of a merge are read more than once; name files, not \"-\""));
        for (const QString &source : Sources) {
            if (platform::IsSameFile(source, Target))
                return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "%1: this source is the target itself"))
                    .arg(Harmless(source));
            if (Output.Is(source))
                return OutputFile::IsInputText(source);
        }
        return {};
    }
};

/// False, with the reason told, when the target is neither there nor could be made.
bool IsThereOrCanBeMade(const QString &file, Terminal &terminal)
{
    const auto path = platform::FileSystemPath(file);
    std::error_code ignored;
    if (path && (platform::FileExists(file) || !path->has_parent_path() ||
                 std::filesystem::is_directory(path->parent_path(), ignored)))
        return true;
    terminal.Complain(
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "%1: there is no such folder; check the name"))
            .arg(Harmless(file)));
    return false;
}

/// Reads the files into rows as the dialog does: the target's tables are present, the sources' imported.
Exit ReadRows(const Files &files, AlignmentRowList &rows, SdrType &sdrType, Terminal &terminal)
{
    QStringList paths = files.Sources;
    if (platform::FileExists(files.Target)) // not before the lock: another program may just have made it
        paths.prepend(files.Target);
    for (const QString &path : paths) {
        TableFile file(path); // says more of damage than the rows do
        if (file.ReadHeads([](const AlignTable &) {}) != AlignResult::Ok) {
            terminal.Complain(u"%1: %2"_s.arg(file.name(), file.failure()));
            return file.failureExit();
        }
        if (sdrType == SdrType::None)
            sdrType = file.sdrType();
        if (file.sdrType() != sdrType) {
            terminal.Complain(
                Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "%1: its tables are for %2, those of %3 for %4; "
                                                             "a file has one receiver type"))
                    .arg(file.name(), AlignmentDriverName(static_cast<int>(file.sdrType())),
                         Harmless(paths.first()), AlignmentDriverName(static_cast<int>(sdrType))));
            return Exit::WrongUsage;
        }
        if (file.tablesRead() == 0) {
            terminal.Complain(u"%1: %2"_s.arg(
                file.name(), Translated(QT_TRANSLATE_NOOP(
                                 "TarnvikAlign", "it holds no table; the window refuses to read it"))));
            return Exit::Found;
        }
        const QString error = path == files.Target ? rows.LoadFile(path) : rows.ReadFile(path);
        if (!error.isEmpty()) {
            terminal.Complain(u"%1: %2"_s.arg(file.name(), error));
            return Exit::Found;
        }
    }
    rows.Sort();
    return Exit::Done;
}

/// Decides on each row, and says so.
class Decisions
{
public:
    Decisions(const QCommandLineParser &parser, IdChoice &ids)
        : Ids(ids), All(parser.isSet(AllOption)), NewerOnly(parser.isSet(NewerOption))
    {}

    void Decide(const AlignmentRow &row)
    {
        const AlignmentOffer offer = OfferOf(row);
        const bool chosen = Ids.Takes(AlignmentHardwareIdBytes(row.hardwareId));
        const bool taken = chosen && Wants(offer);
        Choices.append({row.driver, row.hardwareId, taken});
        Taken += taken ? 1 : 0;
        Lines.append(Line(row, taken,
                          taken || chosen
                              ? Reason(row, offer)
                              : Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "not chosen by --id"))));
    }

    QList<AlignmentChoice> Choices;
    QStringList Lines;
    int Taken = 0;

private:
    [[nodiscard]] bool Wants(AlignmentOffer offer) const
    {
        if (NewerOnly)
            return offer == AlignmentOffer::NewerVersion;
        return IsTakenByDefault(offer) || (All && offer == AlignmentOffer::OlderVersion);
    }

    static QString Line(const AlignmentRow &row, bool taken, const QString &reason)
    {
        const QString yes = Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "taken"));
        const QString no = Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "not taken"));
        const qsizetype width = std::max(yes.size(), no.size());
        return u"%1  %2  %3"_s.arg((taken ? yes : no).leftJustified(width),
                                   Harmless(row.hardwareId).leftJustified(18), reason);
    }

    static QString Reason(const AlignmentRow &row, AlignmentOffer offer)
    {
        const QString source = Harmless(row.updateFilePath);
        const QString date = DateTimeText(row.alignedAt);
        const QString update = DateTimeText(row.updateAlignedAt.value_or(0));
        switch (offer) {
        case AlignmentOffer::NewTable:
            return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "new: %1, of %2"))
                .arg(date, Harmless(row.filePath));
        case AlignmentOffer::NewerVersion:
            return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "newer: %1, of %2; was %3"))
                .arg(update, source, date);
        case AlignmentOffer::OlderVersion:
            return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "older: %1, of %2; was %3"))
                .arg(update, source, date);
        case AlignmentOffer::Nothing:
            break;
        }
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "no source has another date"));
    }

    IdChoice &Ids;
    bool All;
    bool NewerOnly;
};

void Report(const Decisions &decisions, bool written, bool toStandardOutput, Terminal &terminal)
{
    QStringList lines = decisions.Lines;
    const QString count =
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "tables taken: %1")).arg(decisions.Taken);
    lines.append(written
                     ? count
                     : count + u"; "_s + Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "nothing is written")));
    for (const QString &line : std::as_const(lines)) {
        if (toStandardOutput)
            terminal.Print(line);
        else
            terminal.Note(line);
    }
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    Files files(parser);
    QString objection = files.objection();
    if (parser.isSet(AllOption) && parser.isSet(NewerOption))
        objection = Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "--all and --newer exclude each other"));
    if (!objection.isEmpty()) {
        terminal.Complain(objection);
        return Exit::WrongUsage;
    }
    if (!IsThereOrCanBeMade(files.Target, terminal))
        return Exit::FileFailed;
    if (!parser.isSet(DryRunOption) && !files.Output.Lock(terminal))
        return Exit::FileFailed;
    AlignmentRowList rows;
    SdrType sdrType = SdrType::None;
    Exit exit = ReadRows(files, rows, sdrType, terminal);
    if (exit != Exit::Done)
        return exit;

    IdChoice ids(parser);
    Decisions decisions(parser, ids);
    for (const AlignmentRow &row : rows.rows())
        decisions.Decide(row);
    exit = ids.ReportMissing(files.Sources.join(u", "_s), terminal);
    if (exit != Exit::Done)
        return exit;

    const auto target = [&](const DriverSaveGroup &) { return files.Target; };
    QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(decisions.Choices, rows, target);
    for (DriverSaveGroup &group : groups)
        group.WholeIds = true;
    AlignmentSaveQuestions questions;
    // Without a table to take there is nothing to write, but for a file of another name.
    questions.SaveUnchanged = [&](const QString &) { return !files.Output.Is(files.Target); };
    questions.FileToWrite = [](const QString &proposal) { return proposal; };
    bool written = false;
    questions.Write = [&](AlignStore &store, const QString &) {
        if (parser.isSet(DryRunOption))
            exit = OutputFile::Check(store, files.Target, terminal);
        else
            exit = files.Output.Write(store, terminal);
        written = !parser.isSet(DryRunOption);
        return QString();
    };
    const QString error = SaveAlignment(groups, questions);
    if (!error.isEmpty()) {
        terminal.Complain(
            Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                         "%1: %2; nothing is written; \"verify\" tells more of the files"))
                .arg(Harmless(files.Target), Harmless(error.section(u'\n', 0, 0))));
        return Exit::FileFailed;
    }
    if (exit == Exit::Done)
        Report(decisions, written, !files.Output.isStandardOutput(), terminal);
    return exit;
}

} // namespace

const Command MergeCommand = {
    "merge",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Takes new and newer tables of other files over into a file."),
    "merge --dry-run TarnvikDriver_RtlSdr.ad colleague.ad",
    &Declare,
    &Run,
};

} // namespace aligntool
