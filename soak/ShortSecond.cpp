// SPDX-License-Identifier: MIT
// Linked to the program, it shortens the pauses before the recorder's starts: hours then stand for months.
#include "TarnvikControl/CMainWindow.h"

#include <QCoreApplication>

#include <chrono>

namespace {

void ShortenSecond()
{
    CMainWindow::PauseSecond = std::chrono::milliseconds(10);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(ShortenSecond)
