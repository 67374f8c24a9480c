// SPDX-License-Identifier: MIT
// A folder of its own with translation files, and a program to be run in it.
#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tests {

/// Holds the folders "program" (with a copy of the probe program) and "working", each with "languages".
class TranslationFolder
{
public:
    TranslationFolder();

    /// False when the folders could not be made.
    [[nodiscard]] bool isValid() const { return Valid; }

    /// Puts the translation file `translation` ("german", "austrian", "english", "qt_german") under the path
    /// `name` in this folder; false when that fails.
    [[nodiscard]] bool Add(const QString &translation, const QString &name) const;

    /// Writes a file that is no translation file; false when that fails.
    [[nodiscard]] bool AddBroken(const QString &name) const;

    [[nodiscard]] QString path(const QString &name) const { return Root.filePath(name); }

    /// What the probe program wrote.
    struct Output
    {
        int ExitCode = -1; ///< -1 also when it did not start or crashed.
        QStringList Lines; ///< Standard output, without its last line end.
        QString Errors;    ///< Standard error.
    };

    /// Runs the probe program from "program", in "working".
    [[nodiscard]] Output
    Run(const QStringList &arguments,
        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment()) const;

private:
    QTemporaryDir Root;
    QString Program;
    bool Valid = false;
};

} // namespace tests
