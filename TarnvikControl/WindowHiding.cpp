// SPDX-License-Identifier: MIT
#include "TarnvikControl/WindowHiding.h"

#include "platform/Tray.h"

#include <QWidget>

bool (*HasTray)() = platform::HasTray;

void HideWindow(QWidget &window)
{
    if (HasTray())
        window.hide();
    else
        window.showMinimized();
}
