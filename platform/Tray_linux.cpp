// SPDX-License-Identifier: MIT
#include "platform/Tray.h"

#include <QSystemTrayIcon>

namespace platform {

bool HasTray()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

} // namespace platform
