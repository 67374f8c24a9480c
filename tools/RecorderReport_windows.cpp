// SPDX-License-Identifier: MIT
#include "tools/RecorderReport.h"

#include <windows.h>

namespace tools {

bool IsAlive(qint64 processId)
{
    // A process that ended can be opened as long as somebody holds a handle to it.
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(processId));
    if (!process)
        return false;
    const bool alive = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return alive;
}

bool KillProcess(qint64 processId)
{
    const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(processId));
    if (!process)
        return false;
    const bool killed = TerminateProcess(process, 1) != FALSE;
    CloseHandle(process);
    return killed;
}

} // namespace tools
