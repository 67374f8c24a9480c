// SPDX-License-Identifier: MIT
#include "platform/FileReplacementSteps.h"

#include <windows.h>

#include <aclapi.h>

#include <memory>
#include <string>

namespace platform {

namespace {

constexpr int Attempts = 20;
constexpr DWORD PauseMs = 100;
/// What a replaced file passes on.
constexpr DWORD KeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

std::error_code Error(DWORD code)
{
    return {static_cast<int>(code), std::system_category()};
}

std::error_code LastError()
{
    return Error(GetLastError());
}

/// Whether another try can help: somebody holds the file open for a moment.
bool MayPass(const std::error_code &error)
{
    return error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_ACCESS_DENIED;
}

/// Gives a file the access list of another one, if that has one and the file system knows any.
std::error_code CopyAccessList(std::wstring from, std::wstring to)
{
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    DWORD error = GetNamedSecurityInfoW(from.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                        nullptr, &list, nullptr, &descriptor);
    const std::unique_ptr<void, decltype(&LocalFree)> owner(descriptor, LocalFree);
    if (error == ERROR_SUCCESS && list != nullptr) {
        SECURITY_DESCRIPTOR_CONTROL control = 0;
        DWORD revision = 0;
        GetSecurityDescriptorControl(descriptor, &control, &revision);
        // Or what it inherits from the folder would be added to a list that is not to inherit.
        const DWORD inheritance = (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                                     : UNPROTECTED_DACL_SECURITY_INFORMATION;
        error = SetNamedSecurityInfoW(to.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance,
                                      nullptr, nullptr, list, nullptr);
    }
    return Error(error == ERROR_NOT_SUPPORTED ? ERROR_SUCCESS : error);
}

std::error_code TryToTakePlace(const wchar_t *file, const wchar_t *target)
{
    // Not ReplaceFileW: it puts the old file aside first, and whoever is ended then leaves none behind.
    return MoveFileExW(file, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE
               ? std::error_code()
               : LastError();
}

} // namespace

std::error_code CheckWritable(const std::filesystem::path &file)
{
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return LastError();
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? std::make_error_code(std::errc::permission_denied)
                                                       : std::error_code();
}

std::error_code CreateTemporary(const std::filesystem::path &target, std::filesystem::path &temporary)
{
    for (DWORD number = GetTickCount();; ++number) {
        temporary = target.native() + L"." + std::to_wstring(number % 1000000) + L".tmp";
        const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            CloseHandle(file);
            if (GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES)
                return {};
            const std::error_code error = CopyAccessList(target, temporary);
            if (error)
                DeleteFileW(temporary.c_str());
            return error;
        }
        if (GetLastError() != ERROR_FILE_EXISTS)
            return LastError();
    }
}

std::error_code SyncFile(const std::filesystem::path &file)
{
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return LastError();
    const std::error_code error = FlushFileBuffers(handle) != FALSE ? std::error_code() : LastError();
    CloseHandle(handle);
    return error;
}

std::error_code TakePlace(const std::filesystem::path &file, const std::filesystem::path &target)
{
    // Not before: a hidden file could not be written to as every other one.
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & KeptAttributes) != 0)
        SetFileAttributesW(file.c_str(), attributes & KeptAttributes);
    std::error_code error = TryToTakePlace(file.c_str(), target.c_str());
    for (int attempt = 1; MayPass(error) && attempt < Attempts; ++attempt) {
        Sleep(PauseMs);
        error = TryToTakePlace(file.c_str(), target.c_str());
    }
    return error;
}

std::error_code SyncFolderOf(const std::filesystem::path & /*file*/)
{
    return {}; // the replacing was written through
}

} // namespace platform
