// SPDX-License-Identifier: MIT
// The main window with a recorder that reports.
#pragma once

#include "TarnvikControl/CMainWindow.h"
#include "tests/support/RecorderFixture.h"

#include <QString>
#include <QSystemTrayIcon>
#include <QTextEdit>
#include <QWidget>

namespace tests {

/// The window's panel.
[[nodiscard]] QTextEdit &Panel(const QWidget &window);

/// The window's icon in the tray.
[[nodiscard]] QSystemTrayIcon &Tray(const QWidget &window);

/// Gives the window a status with this message, as if it had been read from the recorder's status file.
void ShowMessage(CMainWindow &window, const QString &message);

/// Enters the folder of the records in the recorder's configuration, whose folder is made if need be.
void WriteRecordPath(const QString &path);

/// Base of test classes: the program's names, and for each test function settings without entries and a tray.
class MainWindowFixture : public RecorderFixture
{
    Q_OBJECT

protected slots:
    void initTestCase();
    void init();
};

} // namespace tests
