// SPDX-License-Identifier: MIT
// A named mutex that nobody ever waits for: only the question whether it existed counts.
#include "platform/InstanceLock.h"

#include <windows.h>

namespace platform {

InstanceLock::InstanceLock(const char *name)
{
    const std::wstring wideName = QString::fromLatin1(name).toStdWString();
    SetLastError(ERROR_SUCCESS);
    Handle = CreateMutexW(nullptr, FALSE, wideName.c_str());
    const DWORD error = GetLastError();
    // Access denied: it belongs to another user, who runs the program already.
    Existed = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
}

InstanceLock::~InstanceLock()
{
    if (Handle)
        CloseHandle(Handle);
    Handle = nullptr;
}

} // namespace platform
