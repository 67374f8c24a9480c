// SPDX-License-Identifier: MIT
#include "platform/StandardStreams_linux.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

void OpenStandardStreams()
{
    int descriptor = -1;
    do // not close-on-exec: child processes inherit the streams
        descriptor = open("/dev/null", O_RDWR);
    while (descriptor >= STDIN_FILENO && descriptor <= STDERR_FILENO);
    if (descriptor != -1)
        close(descriptor);
}

} // namespace platform
