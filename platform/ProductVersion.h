// SPDX-License-Identifier: MIT
// The product version that the build gave the program file.
#pragma once

#include <cstdint>
#include <optional>

namespace platform {

struct ProductVersion
{
    std::uint16_t Major = 0;
    std::uint16_t Minor = 0;
    std::uint16_t Build = 0;
    std::uint16_t Revision = 0;
};

/// The version that the program file carries; nothing when it carries none.
[[nodiscard]] std::optional<ProductVersion> ReadProductVersion();

} // namespace platform
