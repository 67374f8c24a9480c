// SPDX-License-Identifier: MIT
// The icon is a resource of the program file.
#include "platform/WindowIcon.h"

#include <QImage>
#include <QPixmap>

#include <windows.h>

namespace platform {

namespace {

constexpr WORD IconResource = 101; // as in cmake/WindowsProgram.cmake

} // namespace

QIcon LoadWindowIcon()
{
    auto *const icon =
        static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IconResource), IMAGE_ICON,
                                      0, 0, LR_DEFAULTSIZE | LR_LOADTRANSPARENT));
    if (!icon)
        return QIcon();
    const QIcon result(QPixmap::fromImage(QImage::fromHICON(icon)));
    DestroyIcon(icon);
    return result;
}

} // namespace platform
