// SPDX-License-Identifier: MIT
// The alignment dialog of the whole program on a virtual desktop, worked by the keyboard.
#pragma once

#include "tests/alignment_merge/AlignmentFiles.h"

#include <QString>
#include <QStringList>

namespace tests {

inline const QString ImportTitle = QStringLiteral("Choose alignment file for importing");
inline const QString ExportTitle = QStringLiteral("Choose alignment file for exporting");

/// A file in the folder of the recorder and of the drivers' files.
[[nodiscard]] QString DriverPath(const QString &name = RtlFile);

/// A file where the file dialog for importing stands at first. The folder is made.
[[nodiscard]] QString DesktopPath(const QString &name);

/// The alignment dialog, which has the program's name as its title like the main window; empty when it is not
/// open.
[[nodiscard]] QString DialogWindow();

/// Waits for the one window of the title (empty: the alignment dialog) and presses keys in it; false when it
/// does not come.
[[nodiscard]] bool PressIn(const QString &title, const QStringList &keys);

/// Opens the dialog from the main window, which is shown.
[[nodiscard]] bool OpenDialog();

/// Imports a file of the folder that the file dialog stands in. The keyboard is in the tree, as in a fresh
/// dialog, and comes back to it.
[[nodiscard]] bool Import(const QString &name);

/// Presses "Save..." and waits for the file dialog. The keyboard is in the tree.
[[nodiscard]] bool BeginToSave();

/// Accepts the proposed file; `replaces`: one that is there, which is confirmed.
[[nodiscard]] bool AcceptProposedFile(bool replaces);

} // namespace tests
