// SPDX-License-Identifier: MIT
#include "alignment/AlignResult.h"

#include <QCoreApplication>

#include <array>
#include <cstddef>

namespace {

// The alignment dialog shows the messages, so they are translated with its texts. They are the keys of the
// translations: a corrected spelling would lose the translation.
constexpr char TranslationContext[] = "QDlgAlignmentCfg";

// Indexed by result code.
constexpr std::array<const char *, 23> Messages = {
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Ok"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Gain out of range"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Frequency out of range"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Sample frequency out of range"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "No align table for device"),
    //: A receive path of the device, not of a file.
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "No data-set for selected path"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Array size to small"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Dataset-Pointer is Null"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "DataEntry-Pointer is Null"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "File Error"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Parametername Mismatch"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Internal Error"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Sdrtype Missmatched"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Version Missmatched"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "File CRC check failed"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Dataset has no Power-Levels"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Dataset has no Noise-Levels"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "AlignTable has the wrong DataType"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "AlignTable has the wrong SdrType"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Dataset has the wrong DataType"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Dataset has the wrong SdrType"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Cant load CSV-File completly, the CSV-File is to big"),
    QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Aligntable-List is emptpy, nothing to save"),
};

constexpr const char *UnknownCodeMessage = QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "Error <%1>");

} // namespace

QString AlignResultText(int code)
{
    if (code < 0 || static_cast<std::size_t>(code) >= Messages.size())
        return QCoreApplication::translate(TranslationContext, UnknownCodeMessage).arg(code);
    return QCoreApplication::translate(TranslationContext, Messages[static_cast<std::size_t>(code)]);
}

QString AlignResultText(AlignResult result)
{
    return AlignResultText(static_cast<int>(result));
}
