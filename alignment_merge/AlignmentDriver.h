// SPDX-License-Identifier: MIT
// What the driver of a receiver type and its alignment file are called, and the way back.
#pragma once

#include <QString>

/// The driver's display name, "Driver <number>" for a type that the program does not know. Empty for type 0.
[[nodiscard]] QString AlignmentDriverName(int sdrType);

/// The type of a driver by its display name; 0 when the name is none.
[[nodiscard]] int AlignmentDriverType(const QString &driverName);

/// The name of the driver's alignment file; empty for a type that the program does not know.
[[nodiscard]] QString AlignmentDriverFileName(int sdrType);

/// The pattern of the drivers' alignment files in the recorder's folder.
[[nodiscard]] QString AlignmentDriverFilePattern();
