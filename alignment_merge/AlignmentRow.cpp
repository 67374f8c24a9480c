// SPDX-License-Identifier: MIT
#include "alignment_merge/AlignmentRow.h"

#include "alignment/AlignTable.h"
#include "platform/EscapedText.h"

#include <QDateTime>
#include <QTimeZone>

#include <limits>

using namespace Qt::StringLiterals;

void AlignmentRow::Set(Flag flag, bool on)
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

AlignmentOffer OfferOf(const AlignmentRow &row)
{
    if (row.state == AlignmentRow::NewInDataBase)
        return AlignmentOffer::NewTable;
    const std::uint64_t update = row.updateAlignedAt.value_or(row.alignedAt);
    if (row.state == AlignmentRow::Present || update == row.alignedAt)
        return AlignmentOffer::Nothing;
    return update > row.alignedAt ? AlignmentOffer::NewerVersion : AlignmentOffer::OlderVersion;
}

bool IsTakenByDefault(AlignmentOffer offer)
{
    return offer == AlignmentOffer::NewTable || offer == AlignmentOffer::NewerVersion;
}

QString AlignmentHardwareId(const AlignTable &table)
{
    return platform::BytesText(AlignHwIdOf(table));
}

QByteArray AlignmentHardwareIdBytes(const QString &hardwareId)
{
    return platform::TextBytes(hardwareId);
}

QString AlignmentDateText(std::uint64_t secondsSinceEpoch)
{
    constexpr auto mostSeconds = static_cast<std::uint64_t>(std::numeric_limits<qint64>::max());
    QDateTime date;
    if (secondsSinceEpoch <= mostSeconds)
        date = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(secondsSinceEpoch), QTimeZone::utc());
    return date.isValid() ? date.toString(u"yyyy-MM-dd"_s) : u"%1 s"_s.arg(secondsSinceEpoch);
}
