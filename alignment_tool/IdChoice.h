// SPDX-License-Identifier: MIT
// The option --id.
#pragma once

#include "alignment/AlignTable.h"
#include "alignment_tool/Command.h"

#include <QByteArray>
#include <QSet>

class QCommandLineParser;

namespace aligntool {

/// The tables that --id chooses, by their whole hardware ids; all tables without the option.
class IdChoice
{
public:
    static void Declare(QCommandLineParser &parser);

    explicit IdChoice(const QCommandLineParser &parser);

    /// Whether the table is among them; that is noted.
    [[nodiscard]] bool Takes(const AlignTable &table);
    [[nodiscard]] bool Takes(const QByteArray &hardwareId);

    /// Whether the option is not there.
    [[nodiscard]] bool takesAll() const { return Wanted.isEmpty(); }

    /// Names the ids that no table had. Found if there are any.
    [[nodiscard]] Exit ReportMissing(const QString &file, Terminal &terminal) const;

private:
    QSet<QByteArray> Wanted;
    QSet<QByteArray> Missing;
};

} // namespace aligntool
