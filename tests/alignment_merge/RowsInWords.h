// SPDX-License-Identifier: MIT
// Rows as texts that a test can compare.
#pragma once

#include "alignment_merge/AlignmentRowList.h"

#include <QStringList>

namespace tests {

/// The row in words: state, date, file, date and file of the update, driverIsNew as "!".
[[nodiscard]] QString InWords(const AlignmentRow &row);

/// All rows of the list, in order.
[[nodiscard]] QStringList InWords(const AlignmentRowList &list);

} // namespace tests
