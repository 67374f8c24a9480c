// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/TrayIcon.h"

#include "tests/support/Patience.h"
#include "tests/support/VirtualDesktop.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tests {

QPoint TrayIcon()
{
    return VirtualDesktop::geometry(OnlyWindow(u"panel"_s)).center();
}

bool AwaitTrayClicks()
{
    return VirtualDesktop::Click(TrayIcon(), 3) &&
           QTest::qWaitFor([] { return !VirtualDesktop::openMenu().isEmpty(); }, Patience) &&
           VirtualDesktop::Press({u"Escape"_s}) &&
           QTest::qWaitFor([] { return VirtualDesktop::openMenu().isEmpty(); }, Patience);
}

} // namespace tests
