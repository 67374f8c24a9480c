// SPDX-License-Identifier: MIT
// The functions that a fuzzer calls; the names are the fuzzer's.
#pragma once

#include <cstddef>
#include <cstdint>

/// Runs the target on one input; ends the program when something is wrong. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Changes an input in place and gives its new size, at most `maxSize`. Same seed, same change.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                               unsigned seed);

/// The fuzzer's own mutation, which ours is built on.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t maxSize);
