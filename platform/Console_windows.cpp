// SPDX-License-Identifier: MIT
#include "platform/Console.h"

#include "platform/ControlEvents_windows.h"

#include <windows.h>

#include <cstdio>

namespace platform {

bool OpenConsole()
{
    if (AllocConsole() == FALSE)
        return false;
    // The program writes its local 8-bit encoding; a new console expects that of old DOS programs.
    SetConsoleOutputCP(GetACP());
    std::FILE *stream = nullptr;
    (void)freopen_s(&stream, "CONOUT$", "w", stdout);
    (void)freopen_s(&stream, "CONOUT$", "w", stderr);
    RestoreControlHandler();
    return true;
}

void CloseConsole()
{
    (void)std::fflush(stdout);
    (void)std::fflush(stderr);
    FreeConsole();
    RestoreControlHandler();
}

} // namespace platform
