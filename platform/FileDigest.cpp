// SPDX-License-Identifier: MIT
#include "platform/FileDigest.h"

#include "platform/FilePath.h"

#include <QCryptographicHash>

#include <array>
#include <fstream>
#include <system_error>

namespace platform {

QByteArray FileDigest(const QString &path)
{
    const std::optional<std::filesystem::path> file = FileSystemPath(path);
    std::error_code ignored;
    if (!file || !std::filesystem::is_regular_file(*file, ignored)) // a pipe would be waited for
        return {};
    std::ifstream stream(*file, std::ios::binary);
    if (!stream.is_open())
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    std::array<char, 65536> part;
    while (stream.read(part.data(), part.size()) || stream.gcount() > 0)
        hash.addData(QByteArrayView(part.data(), static_cast<qsizetype>(stream.gcount())));
    return stream.bad() ? QByteArray() : hash.result();
}

} // namespace platform
