// SPDX-License-Identifier: MIT
#include "tests/alignment_merge/SampleRow.h"

#include "tests/alignment_merge/AlignmentFiles.h"

using namespace Qt::StringLiterals;

namespace tests {

AlignmentRow SampleRow(AlignmentRow::State state, const char *date, const char *update)
{
    AlignmentRow row;
    row.filePath = u"present.ad"_s;
    row.driver = u"LimeMini"_s;
    row.hardwareId = u"0x1"_s;
    row.alignedAt = Day(date);
    row.state = state;
    if (update) {
        row.updateFilePath = u"update.ad"_s;
        row.updateAlignedAt = Day(update);
    }
    return row;
}

} // namespace tests
