// SPDX-License-Identifier: MIT
#include "alignment_tool/IdChoice.h"

#include "platform/EscapedText.h"

#include <QCommandLineParser>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace aligntool {

void IdChoice::Declare(QCommandLineParser &parser)
{
    parser.addOption(
        {u"id"_s,
         Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Only the table of this whole hardware id; may stand "
                                                      "several times.")),
         u"ID"_s});
}

IdChoice::IdChoice(const QCommandLineParser &parser)
{
    const QStringList ids = parser.values(u"id"_s);
    for (const QString &id : ids)
        Wanted.insert(platform::TextBytes(id));
    Missing = Wanted;
}

bool IdChoice::Takes(const AlignTable &table)
{
    const std::string_view id = AlignHwIdOf(table);
    return Takes(QByteArray(id.data(), static_cast<qsizetype>(id.size())));
}

bool IdChoice::Takes(const QByteArray &hardwareId)
{
    Missing.remove(hardwareId);
    return Wanted.isEmpty() || Wanted.contains(hardwareId);
}

Exit IdChoice::ReportMissing(const QString &file, Terminal &terminal) const
{
    QList<QByteArray> ids = Missing.values();
    std::sort(ids.begin(), ids.end());
    for (const QByteArray &id : ids)
        terminal.Complain(
            Translated(
                QT_TRANSLATE_NOOP("TarnvikAlign", "%1: there is no table \"%2\"; \"list\" shows the ids"))
                .arg(file, Harmless(platform::BytesText({id.data(), static_cast<std::size_t>(id.size())}))));
    return ids.isEmpty() ? Exit::Done : Exit::Found;
}

} // namespace aligntool
