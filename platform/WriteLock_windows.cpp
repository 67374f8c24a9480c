// SPDX-License-Identifier: MIT
#include "platform/WriteLock.h"

#include <windows.h>

#include <QCryptographicHash>
#include <QString>

#include <system_error>

namespace platform {

namespace {

/// The same for every spelling of the folder in which the file lies.
std::wstring NameFor(const std::filesystem::path &file)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::weakly_canonical(file, error).parent_path();
    const QByteArray key = QString::fromStdWString(folder.wstring()).toCaseFolded().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(key, QCryptographicHash::Sha256).toHex();
    return L"Global\\TarnvikAlign-" + QString::fromLatin1(hash).toStdWString();
}

} // namespace

struct WriteLock::State
{
    HANDLE Mutex = nullptr;
    bool IsOwner = false;
    bool TimedOut = false;
};

WriteLock::WriteLock(const std::filesystem::path &file, int mostMs) : Held(std::make_unique<State>())
{
    Held->Mutex = CreateMutexW(nullptr, FALSE, NameFor(file).c_str());
    if (Held->Mutex == nullptr)
        return;
    const DWORD result = WaitForSingleObject(Held->Mutex, static_cast<DWORD>(mostMs));
    Held->IsOwner = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    Held->TimedOut = result == WAIT_TIMEOUT;
}

WriteLock::~WriteLock()
{
    if (Held->IsOwner)
        ReleaseMutex(Held->Mutex);
    if (Held->Mutex != nullptr)
        CloseHandle(Held->Mutex);
}

bool WriteLock::timedOut() const
{
    return Held->TimedOut;
}

} // namespace platform
