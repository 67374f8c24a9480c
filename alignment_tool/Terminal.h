// SPDX-License-Identifier: MIT
// Standard output and standard error of a command.
#pragma once

#include <QByteArray>
#include <QString>

namespace aligntool {

/// What a command says to whom it serves, in UTF-8.
class Terminal
{
public:
    /// Writes a line to standard output.
    void Print(const QString &line);
    /// Writes bytes to standard output as they are.
    void PrintBytes(const QByteArray &bytes);
    /// Writes a line to standard error. Standard output comes first.
    void Note(const QString &line);
    /// The same with the program's name before it.
    void Complain(const QString &message);
    /// Writes what is still in the buffer. False when anything was lost since the beginning.
    [[nodiscard]] bool Flush();

private:
    bool Lost = false;
};

/// The text with what would control a terminal, line ends, and bytes that platform::BytesText escaped written
/// as
/// "\x1B". Names and ids in files are anybody's.
[[nodiscard]] QString Harmless(const QString &text);

} // namespace aligntool
