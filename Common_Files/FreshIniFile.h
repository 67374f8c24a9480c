// SPDX-License-Identifier: MIT
// Reads INI files that other programs write.
#pragma once

#include <QSettings>
#include <QString>
#include <QTemporaryFile>
#include <QVariant>

#include <memory>

/// The values of an INI file as they stand when the object is made. QSettings keeps what it parsed and parses
/// a file again only when its size or time stamp differ; another program can rewrite the file with the same
/// size within one tick of the file system's clock. Hence QSettings sees a private copy under a fresh name;
/// without room for a copy it reads the file itself, as a late value is better than none.
class FreshIniFile
{
public:
    /// Reads the file, which is a regular one of at most 1 MiB; others count as not readable.
    explicit FreshIniFile(const QString &path);

    /// False when the file could not be read or is no INI file. Reading values may show the latter.
    [[nodiscard]] bool isValid() const;

    /// The value of "group/key"; `fallback` when there is none.
    [[nodiscard]] QVariant value(const QString &key, const QVariant &fallback = {}) const;

private:
    QTemporaryFile Copy;
    std::unique_ptr<QSettings> Settings; // null: not readable
};
