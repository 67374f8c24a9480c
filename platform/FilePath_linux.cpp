// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include <QFile>

namespace platform {

std::filesystem::path FileSystemPath(const QString &path)
{
    // Qt encodes the name: the standard library's conversion throws on letters that it cannot convert.
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

} // namespace platform
