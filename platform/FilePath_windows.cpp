// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

namespace platform {

std::filesystem::path FileSystemPath(const QString &path)
{
    return std::filesystem::path(path.toStdWString());
}

} // namespace platform
