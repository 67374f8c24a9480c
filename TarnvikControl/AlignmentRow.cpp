// SPDX-License-Identifier: MIT
#include "TarnvikControl/AlignmentRow.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimeZone>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

QString Translated(const char *text)
{
    return QCoreApplication::translate("QDlgAlignmentCfg", text);
}

} // namespace

void AlignmentRow::set(Flag flag, bool on)
{
    flags = static_cast<std::uint8_t>(on ? flags | flag : flags & ~flag);
}

void AlignmentRow::AddVersion(const QString &file, std::uint64_t date)
{
    if (date == alignedAt)
        return;
    switch (state) {
    case Present:
        // Any other date is another version, an older one too: the user may want to go back to it.
        state = UpdatePresent;
        updateFilePath = file;
        updateAlignedAt = date;
        break;
    case NewInDataBase:
        if (date > alignedAt) {
            filePath = file;
            alignedAt = date;
        }
        break;
    case UpdatePresent:
        if (date > updateAlignedAt) {
            updateFilePath = file;
            updateAlignedAt = date;
        }
        break;
    }
}

AlignmentRowLook LookOf(const AlignmentRow &row)
{
    const QString date = AlignmentDateText(row.alignedAt);
    if (row.state == AlignmentRow::NewInDataBase)
        return {
            Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1 (New in data-base)")).arg(date),
            Qt::Checked, Qt::darkGreen};
    const std::uint64_t update = row.updateAlignedAt.value_or(row.alignedAt);
    if (row.state == AlignmentRow::Present || update == row.alignedAt)
        return {Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1")).arg(date), {}, {}};
    if (update < row.alignedAt)
        //: The second date is that of an imported, older version.
        return {Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1 (Old data from %2 present)"))
                    .arg(date, AlignmentDateText(update)),
                Qt::Unchecked, Qt::darkYellow};
    return {Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1 (Update from %2 present)"))
                .arg(date, AlignmentDateText(update)),
            Qt::Checked, Qt::darkGreen};
}

QString AlignmentDateText(std::uint64_t secondsSinceEpoch)
{
    constexpr auto mostSeconds = static_cast<std::uint64_t>(std::numeric_limits<qint64>::max());
    QDateTime date;
    if (secondsSinceEpoch <= mostSeconds)
        date = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(secondsSinceEpoch), QTimeZone::utc());
    return date.isValid() ? date.toString(u"yyyy-MM-dd"_s) : u"%1 s"_s.arg(secondsSinceEpoch);
}
