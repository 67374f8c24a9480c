// SPDX-License-Identifier: MIT
#include "tools/IsolatedFolders.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace tools {

IsolatedFolders::IsolatedFolders(Settings settings)
    : StartFolder(QDir::currentPath()), Root(QDir::tempPath() + u"/tarnvik tëst XXXXXX"_s)
{
    if (!Root.isValid())
        qFatal("the test's own folders cannot be made");
    struct Folder
    {
        const char *Variable;
        const char *Path;
    };
    // Windows reads APPDATA and its like through the system, not from the environment; only the temporary
    // folder follows these variables there.
    static constexpr Folder folders[] = {
        {"HOME", "home"},
        {"XDG_CONFIG_HOME", "home/.config"},
        {"XDG_DATA_HOME", "home/.local/share"},
        {"XDG_CACHE_HOME", "home/.cache"},
        {"XDG_RUNTIME_DIR", "run"},
        {"TMPDIR", "tmp"},
        {"TMP", "tmp"},
        {"TEMP", "tmp"},
    };
    for (const Folder &folder : folders) {
        const QString path = Root.filePath(QString::fromLatin1(folder.Path));
        if (!QDir().mkpath(path))
            qFatal("the test's own folder cannot be made: %s", folder.Path);
        qputenv(folder.Variable, QFile::encodeName(QDir::toNativeSeparators(path)));
    }
    QFile::setPermissions(Root.filePath(u"run"_s),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (settings == Settings::Own)
        IsolateSettings();
}

IsolatedFolders::~IsolatedFolders()
{
    GiveSettingsBack();
    QDir::setCurrent(StartFolder); // Windows does not remove a folder that a process is in
}

} // namespace tools
