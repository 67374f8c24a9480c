// SPDX-License-Identifier: MIT
#include "TarnvikControl/ColourScheme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleHints>

namespace {

/// The colours that the roles of a palette are made of.
struct Colours
{
    QColor Window, Base, AlternateBase, Button, ToolTip;
    QColor Text, DisabledText, BrightText;
    QColor Highlight, HighlightedText, DisabledHighlight;
    QColor Link, LinkVisited;
};

// Contrast of text on its background is at least 7:1 in both, by the relative luminance of WCAG 2.
const Colours LightColours = {
    QColor(0xEFEFEFU), QColor(0xFFFFFFU), QColor(0xF7F7F7U), QColor(0xEFEFEFU), QColor(0xFFFFDCU),
    QColor(0x000000U), QColor(0x8E8E8EU), QColor(0xFFFFFFU), QColor(0x1B5A98U), QColor(0xFFFFFFU),
    QColor(0xBEBEBEU), QColor(0x0000C8U), QColor(0x8000A0U),
};
const Colours DarkColours = {
    QColor(0x2D2F31U), QColor(0x1E1F20U), QColor(0x282A2BU), QColor(0x36393BU), QColor(0x3C3F41U),
    QColor(0xF2F2F2U), QColor(0x8A8D8FU), QColor(0xFFFFFFU), QColor(0x245B91U), QColor(0xFFFFFFU),
    QColor(0x55585AU), QColor(0x7FB8F5U), QColor(0xC8A2F0U),
};

QPalette MakePalette(const Colours &colours)
{
    QPalette palette(colours.Button, colours.Window); // light, mid, dark and shadow follow from these two
    palette.setColor(QPalette::Base, colours.Base);
    palette.setColor(QPalette::AlternateBase, colours.AlternateBase);
    palette.setColor(QPalette::ToolTipBase, colours.ToolTip);
    palette.setColor(QPalette::Highlight, colours.Highlight);
    palette.setColor(QPalette::HighlightedText, colours.HighlightedText);
    palette.setColor(QPalette::BrightText, colours.BrightText);
    palette.setColor(QPalette::Link, colours.Link);
    palette.setColor(QPalette::LinkVisited, colours.LinkVisited);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, colours.Text);
        palette.setColor(QPalette::Disabled, role, colours.DisabledText);
    }
    palette.setColor(QPalette::PlaceholderText, colours.DisabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.DisabledHighlight);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colours.DisabledText);
    return palette;
}

/// Asks the platform for the colour scheme; true when it has it then. Qt knows how from 6.8 on, and of the
/// Linux desktops not all can.
bool PlatformTakes(ColourScheme scheme)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    const Qt::ColorScheme schemes[] = {Qt::ColorScheme::Unknown, Qt::ColorScheme::Light,
                                       Qt::ColorScheme::Dark};
    const Qt::ColorScheme wanted = schemes[static_cast<int>(scheme)];
    QGuiApplication::styleHints()->setColorScheme(wanted);
    return scheme == ColourScheme::FollowSystem || QGuiApplication::styleHints()->colorScheme() == wanted;
#else
    return scheme == ColourScheme::FollowSystem;
#endif
}

} // namespace

void SetColourScheme(ColourScheme scheme)
{
    if (PlatformTakes(scheme))
        QApplication::setPalette(QPalette()); // with no colour of its own: the desktop's, else the style's
    else
        QApplication::setPalette(MakePalette(scheme == ColourScheme::Dark ? DarkColours : LightColours));
}
