// SPDX-License-Identifier: MIT
// A row of the alignment dialog's list by state and dates.
#pragma once

#include "alignment_merge/AlignmentRow.h"

namespace tests {

/// A row of the driver LimeMini with the date, as "2024-01-31", and, if there is one, that of the update. The
/// files are present.ad and update.ad.
[[nodiscard]] AlignmentRow SampleRow(AlignmentRow::State state, const char *date,
                                     const char *update = nullptr);

} // namespace tests
