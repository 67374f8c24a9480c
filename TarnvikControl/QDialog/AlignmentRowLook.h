// SPDX-License-Identifier: MIT
// How the alignment dialog shows a row.
#pragma once

#include "alignment_merge/AlignmentRow.h"

#include <QString>
#include <Qt>

#include <optional>

struct AlignmentRowLook
{
    QString Text;                            ///< of the column beside the hardware id
    std::optional<Qt::CheckState> CheckBox;  ///< empty: the row has none
    std::optional<Qt::GlobalColor> Backdrop; ///< with white text on it; empty: the usual colours
};

/// How the row is shown, in the language of the user interface.
[[nodiscard]] AlignmentRowLook LookOf(const AlignmentRow &row);
