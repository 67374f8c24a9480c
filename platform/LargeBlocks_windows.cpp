// SPDX-License-Identifier: MIT
// The system's heap decides itself: blocks from about 1 MB on are mapped.
#include "platform/LargeBlocks.h"

namespace platform {

void KeepLargeBlocksMapped() {}

} // namespace platform
