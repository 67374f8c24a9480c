// SPDX-License-Identifier: MIT
// Translation files where the program looks for them, and what of them reaches the user.
#pragma once

#include "tests/CommonQt/TranslationFolder.h"

#include <QLocale>
#include <QMenu>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace tests {

/// A text in the language that is installed; "language" when there is none.
[[nodiscard]] QString SampleText();

/// The menu's entries as "text|data", with "|checked" behind the checked ones.
[[nodiscard]] QStringList Entries(const QMenu &menu);

/// Base of the test classes: the working folder is that of a fresh TranslationFolder, and the default locale
/// is put back after each test function.
class AppTranslationFixture : public QObject
{
    Q_OBJECT

protected:
    /// See TranslationFolder::Add.
    [[nodiscard]] bool AddToWorkingFolder(const QString &translation, const QString &fileName);

    std::unique_ptr<TranslationFolder> Folder;
    QLocale StartLocale; // the default one before the test function

protected slots:
    void init();
    void cleanup();

private:
    QString StartFolder;
};

} // namespace tests
