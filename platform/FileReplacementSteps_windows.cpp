// SPDX-License-Identifier: MIT
#include "platform/FileReplacementSteps.h"

#include <windows.h>

#include <string>

namespace platform {

namespace {

constexpr int Attempts = 20;
constexpr DWORD PauseMs = 100;

std::error_code LastError()
{
    return {static_cast<int>(GetLastError()), std::system_category()};
}

/// Whether another try can help: somebody holds the file open for a moment.
bool MayPass(const std::error_code &error)
{
    return error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_ACCESS_DENIED ||
           error.value() == ERROR_UNABLE_TO_REMOVE_REPLACED;
}

std::error_code TryToTakePlace(const wchar_t *file, const wchar_t *target)
{
    // The first keeps the rights of what is replaced, and wants something to replace.
    if (ReplaceFileW(target, file, nullptr, REPLACEFILE_WRITE_THROUGH, nullptr, nullptr) != FALSE)
        return {};
    if (GetLastError() != ERROR_FILE_NOT_FOUND)
        return LastError();
    return MoveFileExW(file, target, MOVEFILE_WRITE_THROUGH) != FALSE ? std::error_code() : LastError();
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
            return {};
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
