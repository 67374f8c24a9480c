// SPDX-License-Identifier: MIT
// The names by which the control program and a recorder meet.
#pragma once

#include <QStandardPaths>
#include <QString>

/// Key of the named system semaphore that asks a recorder to quit; a recorder waits on it.
inline const QString RecorderQuitKey = QStringLiteral("TarnvikRecord_Quit");

/// Full path of the recorder's status file, in the user's temporary folder.
inline QString RecorderStatusFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation) +
           QStringLiteral("/rfrecordstatus.ini");
}
