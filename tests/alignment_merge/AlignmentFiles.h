// SPDX-License-Identifier: MIT
// Alignment files by what the alignment dialog shows of them.
#pragma once

#include "alignment/SdrType.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <cstdint>

namespace tests {

/// Two drivers: display names and names of their files.
inline const QString AirSpy = QStringLiteral("AirSpy");
inline const QString AirspyFile = QStringLiteral("TarnvikDriver_Airspy.ad");
inline const QString Rtl = QStringLiteral("RTL-SDR");
inline const QString RtlFile = QStringLiteral("TarnvikDriver_RtlSdr.ad");

/// A table of a file.
struct FileTable
{
    QByteArray HwId;
    std::uint64_t AlignedAt = 0; // seconds since 1970-01-01 00:00:00 UTC
};

/// Midnight UTC of a date as "2024-01-31".
[[nodiscard]] std::uint64_t Day(const char *date);

/// Writes a file of the tables. Their data sets depend on hardware id and date, so that no two versions of a
/// table are alike. False when that fails.
[[nodiscard]] bool WriteAlignmentFile(const QString &path, SdrType sdrType, const QList<FileTable> &tables);

/// The bytes of every table in a valid file, its data sets included, by hardware id. Empty when the file
/// cannot be read.
[[nodiscard]] QMap<QByteArray, QByteArray> TableBytes(const QString &path);

} // namespace tests
