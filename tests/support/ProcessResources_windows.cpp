// SPDX-License-Identifier: MIT
#include "tests/support/ProcessResources.h"

#include <windows.h>

#include <tlhelp32.h>

namespace tests {

ProcessResources ProcessResources::Count()
{
    ProcessResources resources;
    DWORD handles = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &handles) != FALSE)
        resources.Descriptors = static_cast<qsizetype>(handles);
    const DWORD self = GetCurrentProcessId();
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD | TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return resources;
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof thread;
    for (BOOL more = Thread32First(snapshot, &thread); more != FALSE; more = Thread32Next(snapshot, &thread))
        resources.Threads += thread.th32OwnerProcessID == self ? 1 : 0;
    PROCESSENTRY32W process = {};
    process.dwSize = sizeof process;
    for (BOOL more = Process32FirstW(snapshot, &process); more != FALSE;
         more = Process32NextW(snapshot, &process))
        resources.Children += process.th32ParentProcessID == self ? 1 : 0;
    CloseHandle(snapshot);
    return resources;
}

} // namespace tests
