// SPDX-License-Identifier: MIT
#include "platform/Console.h"

namespace platform {

bool OpenConsole()
{
    return false;
}

void CloseConsole() {}

} // namespace platform
