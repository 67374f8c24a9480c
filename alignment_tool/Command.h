// SPDX-License-Identifier: MIT
// The commands of the program, and what they end with.
#pragma once

#include "alignment_tool/Terminal.h"

#include <QStringList>

#include <span>

class QCommandLineParser;

namespace aligntool {

/// How the program ends. Of several the highest counts.
enum class Exit : int {
    Done = 0,
    Found = 1, // differences or damage
    WrongUsage = 2,
    FileFailed = 3, // a file, or standard output, cannot be read or written
};

/// One command: "TarnvikAlign <Name> ...".
struct Command
{
    const char *Name;
    const char *Summary;                   // translated in the context "TarnvikAlign"
    const char *Example;                   // the arguments behind the program's name
    void (*Declare)(QCommandLineParser &); // options and arguments
    Exit (*Run)(const QCommandLineParser &, Terminal &);
};

[[nodiscard]] Exit Worse(Exit left, Exit right);

/// The text in the user's language.
[[nodiscard]] QString Translated(const char *text);

/// All commands, in the order of the help.
[[nodiscard]] std::span<const Command> Commands();

/// Runs the command that the arguments name, the program's name first.
[[nodiscard]] Exit RunCommandLine(const QStringList &arguments, Terminal &terminal);

/// Any number of files and folders, as FilesOf takes them.
void DeclareFiles(QCommandLineParser &parser);

/// The one file that most commands want, and what is said when it is not one.
void DeclareFile(QCommandLineParser &parser);
[[nodiscard]] Exit WantsOneFile(Terminal &terminal);

extern const Command DiffCommand;
extern const Command ExportCommand;
extern const Command ImportCommand;
extern const Command ListCommand;
extern const Command MergeCommand;
extern const Command RemoveCommand;
extern const Command ShowCommand;
extern const Command VerifyCommand;

} // namespace aligntool
