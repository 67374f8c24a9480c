// SPDX-License-Identifier: MIT
// The product version: four bytes in one number, and its text.
#pragma once

#include "platform/ProductVersion.h"

#include <QString>

#include <cstdint>
#include <optional>

/// The version below which no program reports itself: 25.12.1.1.
inline constexpr std::uint32_t LowestVersion = 0x190C0101;

/// The product version: major in bits 24 to 31, minor in 16 to 23, build in 8 to 15, revision in 0 to 7. Set
/// once at start-up; 0 before.
extern std::uint64_t PackedVersion;

/// The low eight bits of each part, packed; never below LowestVersion, which also stands for "no version".
[[nodiscard]] std::uint32_t PackVersion(const std::optional<platform::ProductVersion> &version);

/// The text of a packed version: year form of the major number, minor, and the build and revision as far as
/// they are needed ("2025.12.1.1", "2026.1.3", "2026.1").
[[nodiscard]] QString VersionText(std::uint32_t packedVersion);
