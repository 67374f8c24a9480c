// SPDX-License-Identifier: MIT
// The request is the message WM_CLOSE, which a thread can only be sent once it has asked for messages.
#include "tests/support/Termination.h"

#include <windows.h>

namespace tests {

void ReceiveTermination()
{
    MSG message = {};
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
}

void WaitUntilTerminated()
{
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_CLOSE) {
    }
}

} // namespace tests
