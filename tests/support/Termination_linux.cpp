// SPDX-License-Identifier: MIT
// The default action of SIGTERM is all that is needed.
#include "tests/support/Termination.h"

#include <unistd.h>

namespace tests {

void ReceiveTermination() {}

void WaitUntilTerminated()
{
    for (;;)
        pause();
}

} // namespace tests
