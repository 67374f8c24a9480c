// SPDX-License-Identifier: MIT
#include "Common_Files/Version.h"

#include <algorithm>

using namespace Qt::StringLiterals;

std::uint64_t PackedVersion = 0;

std::uint32_t PackVersion(const std::optional<platform::ProductVersion> &version)
{
    if (!version)
        return LowestVersion;
    const auto byte = [](std::uint16_t part) { return std::uint32_t{part} & 0xFFU; };
    const std::uint32_t packed = byte(version->Major) << 24 | byte(version->Minor) << 16 |
                                 byte(version->Build) << 8 | byte(version->Revision);
    return std::max(packed, LowestVersion);
}

QString VersionText(std::uint32_t packedVersion)
{
    const std::uint32_t major = packedVersion >> 24;
    const std::uint32_t minor = packedVersion >> 16 & 0xFFU;
    const std::uint32_t build = packedVersion >> 8 & 0xFFU;
    const std::uint32_t revision = packedVersion & 0xFFU;
    QString text = u"%1.%2"_s.arg(major == 0 ? 0 : major + 2000).arg(minor);
    if (build != 0 || revision != 0)
        text += u".%1"_s.arg(build);
    if (revision != 0)
        text += u".%1"_s.arg(revision);
    return text;
}
