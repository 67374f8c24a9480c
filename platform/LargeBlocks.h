// SPDX-License-Identifier: MIT
// How the process gets large blocks of memory.
#pragma once

namespace platform {

/// Has every large zeroed block come straight from the system, so that its pages cost nothing until they are
/// used. Call it first of all, before other threads exist. Does nothing where the system offers no choice.
void KeepLargeBlocksMapped();

} // namespace platform
