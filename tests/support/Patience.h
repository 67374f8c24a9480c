// SPDX-License-Identifier: MIT
// How long tests wait for what has to come, in milliseconds.
#pragma once

namespace tests {

/// For what comes within a few seconds even on a busy machine. Only a test that fails waits to the end.
constexpr int Patience = 30'000;

/// For what has much to do itself, as a thousand rewrites of a file or a flood of output.
constexpr int LongPatience = 60'000;

/// What the program grants a recorder that it has asked to quit, before it kills it. A recorder that takes
/// longer is at fault, however busy the machine is.
constexpr int RecorderMustEnd = 5000;

} // namespace tests
