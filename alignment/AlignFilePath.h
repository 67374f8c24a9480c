// SPDX-License-Identifier: MIT
// From a path as Qt holds it to a path as the standard streams open it.
#pragma once

#include <QString>

#include <filesystem>

namespace alignfile {

/// The same path, whatever letters it holds. One that the system cannot express names no file.
[[nodiscard]] std::filesystem::path FileSystemPath(const QString &path);

} // namespace alignfile
