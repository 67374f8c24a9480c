// SPDX-License-Identifier: MIT
// The user's part of the registry is a fresh key for this process. Programs that it starts see the real one.
#include "tools/IsolatedFolders.h"

#include <windows.h>

#include <string>

namespace tools {

namespace {

std::wstring KeyName()
{
    return L"Software\\TarnvikTests\\" + std::to_wstring(GetCurrentProcessId());
}

} // namespace

void IsolatedFolders::IsolateSettings()
{
    HKEY key = nullptr;
    // A process number can come back: what an earlier test left must not be seen.
    RegDeleteTreeW(HKEY_CURRENT_USER, KeyName().c_str());
    if (RegCreateKeyExW(HKEY_CURRENT_USER, KeyName().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                        nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, key) != ERROR_SUCCESS)
        qFatal("the test's own registry key cannot be made");
    RegCloseKey(key); // the override holds it
}

void IsolatedFolders::GiveSettingsBack()
{
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, KeyName().c_str());
}

} // namespace tools
