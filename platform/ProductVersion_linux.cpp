// SPDX-License-Identifier: MIT
// A program file has no version resource here; the number comes from the build.
#include "platform/ProductVersion.h"

namespace platform {

std::optional<ProductVersion> ReadProductVersion()
{
    return ProductVersion{TARNVIK_VERSION_MAJOR, TARNVIK_VERSION_MINOR, TARNVIK_VERSION_BUILD,
                          TARNVIK_VERSION_REVISION};
}

} // namespace platform
