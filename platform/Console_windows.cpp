// SPDX-License-Identifier: MIT
#include "platform/Console.h"

#include "platform/ControlEvents_windows.h"

#include <windows.h>

#include <cstdio>

namespace platform {

namespace {

/// A click into a console begins a selection, and as long as there is one all who write to it wait: the
/// window would stand still, and the recorder not be started again.
void SwitchQuickEditOff()
{
    const HANDLE input = CreateFileW(L"CONIN$", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (input == INVALID_HANDLE_VALUE)
        return;
    DWORD mode = 0;
    if (GetConsoleMode(input, &mode) != FALSE)
        SetConsoleMode(input, (mode & ~static_cast<DWORD>(ENABLE_QUICK_EDIT_MODE)) | ENABLE_EXTENDED_FLAGS);
    CloseHandle(input);
}

} // namespace

bool OpenConsole()
{
    if (AllocConsole() == FALSE)
        return false;
    // The program writes its local 8-bit encoding; a new console expects that of old DOS programs.
    SetConsoleOutputCP(GetACP());
    std::FILE *stream = nullptr;
    (void)freopen_s(&stream, "CONOUT$", "w", stdout);
    (void)freopen_s(&stream, "CONOUT$", "w", stderr);
    SwitchQuickEditOff();
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
