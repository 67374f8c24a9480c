// SPDX-License-Identifier: MIT
// The entry point on Linux.
#include "TarnvikControl/InstanceMutex.h"
#include "TarnvikControl/StartUp.h"

#include <csignal>

int main(int argc, char **argv)
{
    // Whoever reads our output may go away; that must not end the program.
    (void)std::signal(SIGPIPE, SIG_IGN);
    return RunControl({argv, argv + argc}, ShowNormal, InstanceMutex.alreadyExisted());
}
