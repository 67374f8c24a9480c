// SPDX-License-Identifier: MIT
#include "tests/alignment_merge/RowsInWords.h"

using namespace Qt::StringLiterals;

namespace tests {

QString InWords(const AlignmentRow &row)
{
    QString words = u"%1/%2 %3 %4 %5"_s.arg(row.driver, row.hardwareId)
                        .arg(row.state)
                        .arg(AlignmentDateText(row.alignedAt), row.filePath.section(u'/', -1));
    if (row.updateAlignedAt)
        words +=
            u" (%1 %2)"_s.arg(AlignmentDateText(*row.updateAlignedAt), row.updateFilePath.section(u'/', -1));
    return row.has(AlignmentRow::driverIsNew) ? words + u'!' : words;
}

QStringList InWords(const AlignmentRowList &list)
{
    QStringList words;
    for (const AlignmentRow &row : list.rows())
        words.append(InWords(row));
    return words;
}

} // namespace tests
