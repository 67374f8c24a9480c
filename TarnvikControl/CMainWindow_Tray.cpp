// SPDX-License-Identifier: MIT
// The main window's tray icon.
#include "TarnvikControl/CMainWindow.h"

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
    TrayActions = {AddTrayAction(tr("Mi&nimize"), SLOT(hide())),
                   AddTrayAction(tr("Ma&ximize"), SLOT(showMaximized())),
                   AddTrayAction(tr("&Restore"), SLOT(showNormal())),
                   AddTrayAction(tr("&Quit"), SLOT(Raw_Menu_File_QuitApp()))};
    TrayMenu->insertSeparator(TrayActions.back());
    TrayIcon = std::make_unique<QSystemTrayIcon>(QApplication::windowIcon(), this);
    TrayIcon->setContextMenu(TrayMenu.get());
    TrayIcon->show();
    connect(TrayIcon.get(), SIGNAL(activated(QSystemTrayIcon::ActivationReason)), this,
            SLOT(Raw_TrayIconActivated(QSystemTrayIcon::ActivationReason)));
}

QAction *CMainWindow::AddTrayAction(const QString &text, const char *slot)
{
    QAction *const action = TrayMenu->addAction(text);
    connect(action, SIGNAL(triggered()), this, slot);
    return action;
}

void CMainWindow::Raw_TrayIconActivated(QSystemTrayIcon::ActivationReason eReason)
{
    switch (eReason) {
    case QSystemTrayIcon::DoubleClick:
    case QSystemTrayIcon::Trigger:
        if (isVisible()) {
            hide();
            break;
        }
        if (isMinimized())
            showNormal();
        else
            show();
        activateWindow();
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
