// SPDX-License-Identifier: MIT
// The product version stands in the version resource of the program file.
#include "platform/ProductVersion.h"

#include <windows.h>

#include <array>
#include <memory>
#include <new>

namespace platform {

namespace {

std::uint16_t High(DWORD value)
{
    return static_cast<std::uint16_t>(value >> 16);
}

std::uint16_t Low(DWORD value)
{
    return static_cast<std::uint16_t>(value & 0xFFFFU);
}

} // namespace

std::optional<ProductVersion> ReadProductVersion()
{
    std::array<wchar_t, MAX_PATH> path = {};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path.data(), &ignored);
    if (size == 0)
        return std::nullopt;
    // A resource that is there and cannot be read is version 0: no message, and the caller's lowest version.
    const std::unique_ptr<std::byte[]> block(new (std::nothrow) std::byte[size]);
    if (!block || GetFileVersionInfoW(path.data(), 0, size, block.get()) == FALSE)
        return ProductVersion{};
    void *root = nullptr;
    UINT length = 0;
    if (VerQueryValueW(block.get(), L"\\", &root, &length) == FALSE || !root ||
        length < sizeof(VS_FIXEDFILEINFO))
        return ProductVersion{};
    const auto *const info = static_cast<const VS_FIXEDFILEINFO *>(root);
    return ProductVersion{High(info->dwProductVersionMS), Low(info->dwProductVersionMS),
                          High(info->dwProductVersionLS), Low(info->dwProductVersionLS)};
}

} // namespace platform
