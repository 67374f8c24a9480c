// SPDX-License-Identifier: MIT
// What loading a file must give, found without the code under test.
#pragma once

#include "alignment/AlignResult.h"

#include <cstdint>
#include <span>

/// The result of loading the bytes as an alignment file, taking over its type: written a second time,
/// plainly, from the description of the format (docs/alignment-file-format.md).
[[nodiscard]] AlignResult ExpectedResult(std::span<const std::uint8_t> file);
