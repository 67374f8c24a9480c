// SPDX-License-Identifier: MIT
// The option --output.
#pragma once

#include "alignment_tool/Command.h"

#include "platform/WriteLock.h"

#include <QByteArray>
#include <QString>

#include <memory>

class AlignStore;
class QCommandLineParser;

namespace aligntool {

/// The file that a command writes: whole or not at all, and not when nothing would change.
class OutputFile
{
public:
    static void Declare(QCommandLineParser &parser);

    /// The file that --output names; the other one without the option.
    explicit OutputFile(const QCommandLineParser &parser, const QString &otherwise = {});

    [[nodiscard]] bool isSet() const { return !Path.isEmpty(); }
    [[nodiscard]] bool isStandardOutput() const;

    /// From reading the file to writing it: two of these programs wait for each other, and what somebody else
    /// writes meanwhile is not replaced. False, with the reason told, when somebody holds the lock for too
    /// long.
    [[nodiscard]] bool Lock(Terminal &terminal);

    /// Whether this is the file of that path, however it is spelt.
    [[nodiscard]] bool Is(const QString &path) const;
    /// What is said when it is an input that would be lost.
    [[nodiscard]] static QString IsInputText(const QString &path);

    /// What Write would say of tables that cannot be written, and its exit code.
    [[nodiscard]] static Exit Check(AlignStore &store, const QString &path, Terminal &terminal);

    /// Writes the store's Tables, "-" to standard output. A file that the program would refuse to read is not
    /// written.
    [[nodiscard]] Exit Write(AlignStore &store, Terminal &terminal) const;

private:
    QString Path;
    std::unique_ptr<platform::WriteLock> Held;
    QByteArray Digest; // of the file when the lock was taken
};

} // namespace aligntool
