// SPDX-License-Identifier: MIT
#include "platform/Tray.h"

namespace platform {

bool HasTray()
{
    return true;
}

} // namespace platform
