// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/PaletteContrast.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

constexpr double LowestContrast = 7.0;

/// Relative luminance of WCAG 2 for sRGB colours: 0 for black, 1 for white.
double RelativeLuminance(const QColor &colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

double Contrast(const QColor &one, const QColor &other)
{
    const double a = RelativeLuminance(one);
    const double b = RelativeLuminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QString TooWeak(const QPalette &palette, const QList<RolePair> &pairs)
{
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        for (const RolePair &pair : pairs) {
            const QColor text = palette.color(group, pair.Text);
            const QColor background = palette.color(group, pair.Background);
            if (Contrast(text, background) < LowestContrast)
                return u"role %1 on role %2: %3 on %4 has %5"_s.arg(pair.Text)
                    .arg(pair.Background)
                    .arg(text.name(), background.name())
                    .arg(Contrast(text, background));
        }
    }
    return QString();
}

const QList<RolePair> &TextPairs()
{
    static const QList<RolePair> pairs = {
        {QPalette::WindowText, QPalette::Window},
        {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},
        {QPalette::ButtonText, QPalette::Button},
    };
    return pairs;
}

} // namespace tests
