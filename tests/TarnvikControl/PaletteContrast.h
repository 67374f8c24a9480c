// SPDX-License-Identifier: MIT
// How well the colours of a palette can be read.
#pragma once

#include <QColor>
#include <QList>
#include <QPalette>
#include <QString>

namespace tests {

/// A role of text and the role that it is drawn on.
struct RolePair
{
    QPalette::ColorRole Text;
    QPalette::ColorRole Background;
};

/// Contrast ratio of WCAG 2: 1 for equal colours to 21 for black on white.
double Contrast(const QColor &one, const QColor &other);

/// The first pair whose contrast is below 7, level AAA of WCAG 2; empty when there is none.
QString TooWeak(const QPalette &palette, const QList<RolePair> &pairs);

/// The pairs of ordinary text.
const QList<RolePair> &TextPairs();

} // namespace tests
