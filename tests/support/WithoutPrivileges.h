// SPDX-License-Identifier: MIT
// Lets file permissions hold in tests that run as root, with what Linux has for it.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <unistd.h>

namespace tests {

/// File permissions hold as long as the object lives, also when the tests run as root: the process then acts
/// as a user who owns nothing.
class WithoutPrivileges
{
public:
    WithoutPrivileges() : WasRoot(geteuid() == 0), Valid(!WasRoot || seteuid(Nobody) == 0) {}
    ~WithoutPrivileges()
    {
        if (WasRoot && seteuid(0) != 0)
            qFatal("the privileges do not come back");
    }
    Q_DISABLE_COPY_MOVE(WithoutPrivileges)

    [[nodiscard]] bool isValid() const { return Valid; }

private:
    static constexpr uid_t Nobody = 65534;
    bool WasRoot;
    bool Valid;
};

/// Lets everybody pass through the folders of the test down to `folder`.
[[nodiscard]] inline bool OpenFoldersTo(const QString &folder)
{
    const QString shared = QDir::cleanPath(QDir::rootPath() + QStringLiteral("tmp"));
    for (QDir dir(folder); dir.path() != shared && !dir.isRoot(); dir = QDir(QFileInfo(dir.path()).path())) {
        const QFileDevice::Permissions pass = QFileDevice::ExeGroup | QFileDevice::ExeOther;
        const QFileDevice::Permissions permissions = QFile::permissions(dir.path());
        if ((permissions & pass) != pass && !QFile::setPermissions(dir.path(), permissions | pass))
            return false;
    }
    return true;
}

inline constexpr QFileDevice::Permissions EverybodyReadsAndWrites =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::WriteGroup |
    QFileDevice::ReadOther | QFileDevice::WriteOther;

} // namespace tests
