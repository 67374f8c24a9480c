// SPDX-License-Identifier: MIT
#include "platform/ControlEvents.h"

#include "platform/ControlEvents_windows.h"

#include <windows.h>

#include <atomic>

namespace platform {

static_assert(ControlTypeCtrlC == CTRL_C_EVENT && ControlTypeShutdown == CTRL_SHUTDOWN_EVENT);

namespace {

// Read on the thread that the system makes for an event.
std::atomic<ControlHandler> Installed = nullptr;

BOOL WINAPI Forward(DWORD controlType)
{
    const ControlHandler handler = Installed;
    return handler && handler(controlType) ? TRUE : FALSE;
}

} // namespace

bool InstallControlHandler(ControlHandler handler)
{
    ControlHandler none = nullptr;
    if (!handler || !Installed.compare_exchange_strong(none, handler))
        return false;
    if (SetConsoleCtrlHandler(Forward, TRUE) != FALSE)
        return true;
    Installed = nullptr;
    return false;
}

void RemoveControlHandler()
{
    if (Installed.exchange(nullptr))
        SetConsoleCtrlHandler(Forward, FALSE);
}

void RestoreControlHandler()
{
    if (!Installed)
        return;
    // Removed first: where the system kept it, it must not stand in the list twice.
    SetConsoleCtrlHandler(Forward, FALSE);
    SetConsoleCtrlHandler(Forward, TRUE);
}

} // namespace platform
