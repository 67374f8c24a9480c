// SPDX-License-Identifier: MIT
// The alignment dialog over the recorder's folder, and what a user sees of it.
#pragma once

#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "tests/TarnvikControl/AlignmentFiles.h"

#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTreeWidget>

namespace tests {

/// A shown dialog with the drivers' files loaded, as the main window opens it.
class AlignmentDialogFixture
{
public:
    AlignmentDialogFixture();

    QDlgAlignmentCfg Dialog;

    [[nodiscard]] QTreeWidget &tree() const { return *Dialog.findChild<QTreeWidget *>(); }
    /// The button with the text; it must exist.
    [[nodiscard]] QPushButton &button(const QString &text) const;
    /// The item of a table; null when there is none.
    [[nodiscard]] QTreeWidgetItem *item(const QString &driver, const QString &hardwareId) const;
    /// The tree line by line as shown: drivers as they are, tables as "id | text" with "[x]" or "[ ]" before
    /// it where there is a check box.
    [[nodiscard]] QStringList lines() const;

    /// The recorder's configuration folder.
    static QString recorderFolder();
    /// A file in the recorder's folder, or in a folder of files to be imported.
    static QString recorderFile(const QString &name);
    static QString importFile(const QString &name);
    /// Gives the application its names and empties both folders.
    static bool prepareFolders();
};

} // namespace tests
