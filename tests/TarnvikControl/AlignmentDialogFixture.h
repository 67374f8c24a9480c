// SPDX-License-Identifier: MIT
// The alignment dialog over the recorder's folder, and what a user sees of it.
#pragma once

#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "tests/alignment_merge/AlignmentFiles.h"

#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTreeWidget>

namespace tests {

/// What every file dialog of the alignment dialog filters by.
inline const QStringList FileFilters = {QStringLiteral("AlignFile (*.ad)"), QStringLiteral("All (*.*)")};

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
    /// Gives the application its names and empties both folders.
    static bool PrepareFolders();
};

/// A file in the recorder's folder.
[[nodiscard]] QString RecorderFile(const QString &name);
/// A file in the folder of files to be imported.
[[nodiscard]] QString ImportFile(const QString &name);

/// Writes a file for each of the two drivers and imports for them: r.ad holds a newer version of RTL-SDR's
/// table 0x1 and an older one of its 0x2, a.ad a table 0x9 that AirSpy does not have.
[[nodiscard]] bool WriteStationWithImports();

/// Writes a file for each of the two drivers, and one to be imported with RTL-SDR's tables: 0x1 newer, 0x2
/// older, 0x3 of the same date, 0x4 not there yet.
[[nodiscard]] bool WriteStationWithVersions();
/// That file, as an import takes it.
[[nodiscard]] QStringList VersionsFile();
/// The tree of that station before the import.
extern const QStringList StationLines;

} // namespace tests
