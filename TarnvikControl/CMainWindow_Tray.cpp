// SPDX-License-Identifier: MIT
// The main window's tray icon.
#include "TarnvikControl/CMainWindow.h"

#include "TarnvikControl/WindowHiding.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

void CMainWindow::BuildTrayIcon()
{
    if (TrayIcon) {
        disconnect(TrayIcon.get(), SIGNAL(activated(QSystemTrayIcon::ActivationReason)), this,
                   SLOT(Raw_TrayIconActivated(QSystemTrayIcon::ActivationReason)));
        TrayIcon.reset();
    }
    TrayMenu = std::make_unique<QMenu>(this);
    AddTrayAction(tr("Mi&nimize"), SLOT(hide()));
    AddTrayAction(tr("Ma&ximize"), SLOT(showMaximized()));
    AddTrayAction(tr("&Restore"), SLOT(showNormal()));
    TrayMenu->addSeparator();
    AddTrayAction(tr("&Quit"), SLOT(Raw_Menu_File_QuitApp()));
    TrayIcon = std::make_unique<QSystemTrayIcon>(QApplication::windowIcon(), this);
    TrayIcon->setContextMenu(TrayMenu.get());
    TrayIcon->show();
    connect(TrayIcon.get(), SIGNAL(activated(QSystemTrayIcon::ActivationReason)), this,
            SLOT(Raw_TrayIconActivated(QSystemTrayIcon::ActivationReason)));
}

void CMainWindow::AddTrayAction(const QString &text, const char *slot)
{
    connect(TrayMenu->addAction(text), SIGNAL(triggered()), this, slot);
}

void CMainWindow::SwitchVisibility()
{
    if (isVisible()) {
        HideWindow(*this);
        return;
    }
    if (isMinimized())
        showNormal();
    else
        show();
    activateWindow();
}

void CMainWindow::Raw_TrayIconActivated(QSystemTrayIcon::ActivationReason eReason)
{
    // The first click of a double click comes as a click of its own and has switched already.
    const bool isSecondClick = eReason == QSystemTrayIcon::DoubleClick && !DoubleClickEnd.hasExpired();
    DoubleClickEnd = QDeadlineTimer();
    switch (eReason) {
    case QSystemTrayIcon::DoubleClick:
        if (!isSecondClick)
            SwitchVisibility();
        break;
    case QSystemTrayIcon::Trigger:
        SwitchVisibility();
        DoubleClickEnd.setRemainingTime(QApplication::doubleClickInterval());
        break;
    case QSystemTrayIcon::MiddleClick:
        showNormal();
        activateWindow();
        break;
    case QSystemTrayIcon::Context:
    case QSystemTrayIcon::Unknown:
        break;
    }
}
