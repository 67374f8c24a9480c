// SPDX-License-Identifier: MIT
// The program's settings: where they are kept and what they are called.
#pragma once

#include <QGuiApplication>
#include <QString>

/// The organisation under which the settings are kept; the application is SettingsApplication.
inline const QString SettingsOrganisation = QStringLiteral("Quillane");
inline QString SettingsApplication()
{
    return QGuiApplication::applicationDisplayName();
}

/// bool, default true. Inverted against its name: true means that the close button ends the program.
inline const QString CloseIsMinimizeKey = QStringLiteral("CloseIsMinimize");
/// bool, default false.
inline const QString StartHiddenKey = QStringLiteral("StartHidden");
/// int: 0 default style, 1 light Fusion, 2 dark Fusion, 3 light Windows 11, 4 dark Windows 11.
inline const QString GuiStyleKey = QStringLiteral("GuiStyle");
inline const QString GeometryKey = QStringLiteral("geometry");
inline const QString WindowStateKey = QStringLiteral("windowState");
