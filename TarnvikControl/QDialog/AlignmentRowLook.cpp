// SPDX-License-Identifier: MIT
#include "TarnvikControl/QDialog/AlignmentRowLook.h"

#include <QCoreApplication>

namespace {

QString Translated(const char *text)
{
    return QCoreApplication::translate("QDlgAlignmentCfg", text);
}

/// The text of the row with its dates still to be filled in.
QString TextOf(AlignmentOffer offer)
{
    switch (offer) {
    case AlignmentOffer::NewTable:
        return Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1 (New in data-base)"));
    case AlignmentOffer::NewerVersion:
        return Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1 (Update from %2 present)"));
    case AlignmentOffer::OlderVersion:
        //: The second date is that of an imported, older version.
        return Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1 (Old data from %2 present)"));
    case AlignmentOffer::Nothing:
        break;
    }
    return Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligned at: %1"));
}

} // namespace

AlignmentRowLook LookOf(const AlignmentRow &row)
{
    const AlignmentOffer offer = OfferOf(row);
    AlignmentRowLook look;
    look.Text = TextOf(offer).arg(AlignmentDateText(row.alignedAt));
    if (offer == AlignmentOffer::NewerVersion || offer == AlignmentOffer::OlderVersion)
        look.Text = look.Text.arg(AlignmentDateText(*row.updateAlignedAt));
    if (offer == AlignmentOffer::Nothing)
        return look;
    look.CheckBox = IsTakenByDefault(offer) ? Qt::Checked : Qt::Unchecked;
    look.Backdrop = IsTakenByDefault(offer) ? Qt::darkGreen : Qt::darkYellow;
    return look;
}
