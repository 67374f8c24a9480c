// SPDX-License-Identifier: MIT
// A fresh folder for each test function.
#pragma once

#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace tests {

/// Base of test classes that work with files. A class with an init() or a cleanup() of its own calls that of
/// this class, too.
class FolderFixture : public QObject
{
    Q_OBJECT

protected:
    /// A file or folder in the folder.
    [[nodiscard]] QString path(const QString &name) const { return Folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> Folder;

protected slots:
    void init();
    void cleanup();
};

} // namespace tests
