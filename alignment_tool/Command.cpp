// SPDX-License-Identifier: MIT
#include "alignment_tool/Command.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

QString ProgramName()
{
    return QCoreApplication::applicationName();
}

void PrintOverview(Terminal &terminal)
{
    terminal.Print(
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Usage: %1 COMMAND [options] ...")).arg(ProgramName()));
    terminal.Print({});
    for (const Command &command : Commands())
        terminal.Print(u"  %1 %2"_s.arg(QLatin1String(command.Name), -8).arg(Translated(command.Summary)));
    terminal.Print({});
    terminal.Print(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "More on a command: %1 COMMAND --help"))
                       .arg(ProgramName()));
}

void PrintHelp(const Command &command, const QCommandLineParser &parser, Terminal &terminal)
{
    terminal.Print(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Example: %1 %2"))
                       .arg(ProgramName(), QLatin1String(command.Example)));
    terminal.Print({});
    // Qt's own text begins with "Usage: " and the program's path, and knows nothing of commands.
    QString text = parser.helpText();
    const qsizetype path = text.indexOf(u": "_s) + 2;
    text.replace(path, text.indexOf(u" [options]"_s) - path,
                 u"%1 %2"_s.arg(ProgramName(), QLatin1String(command.Name)));
    terminal.PrintBytes(text.toUtf8());
}

Exit Refuse(const QString &reason, const QString &command, Terminal &terminal)
{
    terminal.Complain(
        u"%1; %2"_s.arg(reason, Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "see \"%1 %2--help\""))
                                    .arg(ProgramName(), command.isEmpty() ? QString() : command + u' ')));
    return Exit::WrongUsage;
}

Exit Run(const Command &command, const QStringList &arguments, Terminal &terminal)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // "-output" is no "-o utput"
    parser.setApplicationDescription(Translated(command.Summary));
    const QCommandLineOption help({u"h"_s, u"help"_s},
                                  Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Shows this help.")));
    parser.addOption(help);
    command.Declare(parser);
    if (!parser.parse(arguments)) {
        QString reason = parser.errorText(); // a sentence
        reason.chop(reason.endsWith(u'.') ? 1 : 0);
        return Refuse(reason, QLatin1String(command.Name), terminal);
    }
    if (parser.isSet(help)) {
        PrintHelp(command, parser, terminal);
        return Exit::Done;
    }
    return command.Run(parser, terminal);
}

} // namespace

Exit Worse(Exit left, Exit right)
{
    return std::max(left, right);
}

QString Translated(const char *text)
{
    return QCoreApplication::translate("TarnvikAlign", text);
}

void DeclareFiles(QCommandLineParser &parser)
{
    parser.addPositionalArgument(
        u"FILE|FOLDER"_s,
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                     "A folder stands for the drivers' files in it; without argument: "
                                     "the recorder's folder; \"-\": standard input.")),
        u"[FILE|FOLDER...]"_s);
}

void DeclareFile(QCommandLineParser &parser)
{
    parser.addPositionalArgument(
        u"FILE"_s,
        Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "An alignment file; \"-\": standard input.")));
}

Exit WantsOneFile(Terminal &terminal)
{
    terminal.Complain(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "one file is wanted; see \"--help\"")));
    return Exit::WrongUsage;
}

std::span<const Command> Commands()
{
    static const std::array commands = {ListCommand,  ShowCommand,   VerifyCommand, DiffCommand,
                                        MergeCommand, RemoveCommand, ExportCommand, ImportCommand};
    return commands;
}

Exit RunCommandLine(const QStringList &arguments, Terminal &terminal)
{
    const QString name = arguments.value(1);
    if (name == u"--help"_s || name == u"-h"_s) {
        PrintOverview(terminal);
        return Exit::Done;
    }
    if (name == u"--version"_s) {
        terminal.Print(u"%1 %2"_s.arg(ProgramName(), QCoreApplication::applicationVersion()));
        return Exit::Done;
    }
    const std::span<const Command> commands = Commands();
    const auto command = std::find_if(commands.begin(), commands.end(), [&](const Command &known) {
        return name == QLatin1String(known.Name);
    });
    if (command != commands.end())
        return Run(*command, QStringList(arguments.first()) + arguments.mid(2), terminal);
    return Refuse(
        name.isEmpty()
            ? Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "which command?"))
            : Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "there is no command \"%1\"")).arg(Harmless(name)),
        {}, terminal);
}

} // namespace aligntool
