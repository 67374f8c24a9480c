// SPDX-License-Identifier: MIT
#include "Common_Files/FreshIniFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// The recorder writes some hundred bytes. A file beyond this is not the recorder's, and parsing it would
/// hold up the GUI thread.
constexpr qint64 MaxFileSize = 1024 * 1024;

/// The file's bytes at this moment; nothing when it cannot be read or is too large. Only regular files are
/// opened: opening a pipe would wait for its writer.
std::optional<QByteArray> ReadWhole(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.read(MaxFileSize + 1);
    if (file.error() != QFileDevice::NoError || content.size() > MaxFileSize)
        return std::nullopt;
    return content;
}

/// Puts the content into the temporary file; false when that fails.
bool WriteCopy(QTemporaryFile &copy, const QByteArray &content)
{
    return copy.open() && copy.write(content) == content.size() && copy.flush();
}

} // namespace

FreshIniFile::FreshIniFile(const QString &path) : Copy(QDir::tempPath() + u"/tarnvikini-XXXXXX.ini"_s)
{
    if (const std::optional<QByteArray> content = ReadWhole(path))
        Settings = std::make_unique<QSettings>(WriteCopy(Copy, *content) ? Copy.fileName() : path,
                                               QSettings::IniFormat);
}

bool FreshIniFile::isValid() const
{
    return Settings != nullptr && Settings->status() == QSettings::NoError;
}

QVariant FreshIniFile::value(const QString &key, const QVariant &fallback) const
{
    return Settings != nullptr ? Settings->value(key, fallback) : fallback;
}
