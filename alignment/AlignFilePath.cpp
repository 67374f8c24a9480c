// SPDX-License-Identifier: MIT
#include "alignment/AlignFilePath.h"

#include <QFile>

#include <type_traits>

namespace alignfile {

std::filesystem::path FileSystemPath(const QString &path)
{
    // Not through the standard library's own conversion: it throws on letters that it cannot convert.
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return std::filesystem::path(path.toStdWString());
    else
        return std::filesystem::path(QFile::encodeName(path).toStdString());
}

} // namespace alignfile
