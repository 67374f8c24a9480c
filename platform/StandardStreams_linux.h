// SPDX-License-Identifier: MIT
// What the Linux sources of this folder share about the standard streams.
#pragma once

namespace platform {

/// Opens those of the descriptors 0 to 2 that are closed on nothing. Whoever makes a descriptor for the life
/// of the process calls it first: the system gives out the lowest free number, and what is printed would go
/// into it.
void OpenStandardStreams();

} // namespace platform
