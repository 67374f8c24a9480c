// SPDX-License-Identifier: MIT
// Folders of its own for one run of a program that is tried: by a test or a benchmark.
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace tools {

/// Points home, configuration, data, runtime and temporary folders of this process and its children (on
/// Windows only the temporary one) into a fresh folder, so that a program that is tried never reads or writes
/// the user's own files. Make it before the application object; the destructor removes the folder. The
/// folder's name holds a blank and a letter beyond ASCII on purpose.
class IsolatedFolders
{
public:
    enum class Settings {
        Own,   ///< on Windows the user's registry is an empty one for this process
        Users, ///< for tests that start the program, which sees the user's own registry
    };

    /// Ends the process when the folders cannot be made: a test must not run in the user's own.
    explicit IsolatedFolders(Settings settings = Settings::Own);
    ~IsolatedFolders();
    Q_DISABLE_COPY_MOVE(IsolatedFolders)

    /// The folder that holds all the others, without a trailing separator.
    [[nodiscard]] QString root() const { return Root.path(); }

private:
    /// Settings that do not lie in files.
    static void IsolateSettings();
    static void GiveSettingsBack();

    QString StartFolder;
    QTemporaryDir Root;
};

} // namespace tools
