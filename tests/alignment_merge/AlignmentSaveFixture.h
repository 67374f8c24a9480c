// SPDX-License-Identifier: MIT
// A station whose alignment tables are saved, and a user who answers the questions.
#pragma once

#include "alignment_merge/AlignmentRowList.h"
#include "alignment_merge/AlignmentSave.h"
#include "tests/support/FolderFixture.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace tests {

/// Base of the test classes. The folder is that of the drivers' files, with a folder "import" in it.
class AlignmentSaveFixture : public FolderFixture
{
    Q_OBJECT

protected:
    /// A file to be imported.
    [[nodiscard]] QString imported(const QString &name) const
    {
        return path(QStringLiteral("import/") + name);
    }
    /// Loads the drivers' files, then imports the files given.
    void LoadStation(const QStringList &imports = {});
    /// Sorts the rows as the dialog does; gives the choices as they are without the user, but for those of
    /// the rows "driver/id" in `changes`, which are inverted.
    [[nodiscard]] QList<AlignmentChoice> Choices(const QStringList &changes = {});
    /// What the save reports.
    QString Save(const QList<AlignmentChoice> &chosen);

    AlignmentRowList Rows;
    QString DriversFolder; // that a save writes to; the fresh one unless a test sets another one
    QStringList Asked;     // about drivers without changes
    QStringList Proposed;  // file names
    bool AnswerToUnchanged = true;
    std::function<QString(const QString &)> AnswerToFile; // the proposal unless a test sets another one

protected slots:
    void init();
};

} // namespace tests
