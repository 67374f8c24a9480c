// SPDX-License-Identifier: MIT
// The main window's menu bar and the marks in it.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "TarnvikControl/SettingsKeys.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>

#include <algorithm>

namespace {

constexpr int DefaultGuiStyle = 0;
constexpr int HighestGuiStyle = 4;
constexpr int UnknownGuiStyle = 2; // what the marks show while no style is stored

} // namespace

void CMainWindow::buildMenus()
{
    // Clearing the bar takes the menus out of it but leaves them alive. One of them may be the sender of the
    // signal that led here.
    const QList<QAction *> titles = menuBar()->actions();
    for (const QAction *title : titles)
        title->menu()->deleteLater();
    menuBar()->clear();
    ActionTable = {};
    ActionCount = 0;
    RememberedIndices = {};
    buildFileMenu();
    buildAlignmentMenu();
    buildViewMenu();
}

void CMainWindow::buildFileMenu()
{
    addMenu(tr("File"));
    addEntry(tr("Open record file folder"), tr("Open drawer with record files"),
             SLOT(Raw_Menu_File_OpenDrawer_Record()), QKeySequence(Qt::CTRL | Qt::Key_R));
    addEntry(tr("Create record file folder link on Desktop"),
             tr("Create symblic link on desktop to record files drawer"),
             SLOT(Raw_Menu_File_CreateDrawerLink()));
    addEntry(tr("Open settings folder..."), tr("Open drawer with settings"),
             SLOT(Raw_Menu_File_OpenDrawer_Settings()), QKeySequence(Qt::CTRL | Qt::Key_D));
    CurrentMenu->addSeparator();
    addEntry(tr("Hide"), tr("Hide"), SLOT(Raw_Menu_File_Hide()), QKeySequence(Qt::CTRL | Qt::Key_H));
    addEntry(tr("Quit"), tr("Quit"), SLOT(Raw_Menu_File_QuitApp()), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void CMainWindow::buildAlignmentMenu()
{
    addMenu(tr("Alignment"));
    addEntry(tr("Show..."), tr("Show alignement table for SDRs"), SLOT(Raw_Menu_Align_Show()),
             QKeySequence(Qt::CTRL | Qt::Key_S));
}

void CMainWindow::buildViewMenu()
{
    addMenu(tr("View"));
    addEntry(tr("Save Windows"), tr("Save size and state of windows"), SLOT(Raw_Menu_View_SaveWindow()));
    addEntry(tr("Restore Windows"), tr("Restore size and state of windows"),
             SLOT(Raw_Menu_View_RestoreWindow()));
    CurrentMenu->addSeparator();
    //: Checked: the close button hides the window in the tray.
    addEntry(tr("Hide when close"), tr("Close button minimized into tray"), SLOT(Raw_Menu_View_Close2Hide()),
             QKeySequence(), HideWhenClose);
    addEntry(tr("Start with hidden GUI"), tr("Start minimized into tray"), SLOT(Raw_Menu_View_Start2Hide()),
             QKeySequence(), StartHidden);
    CurrentMenu->addSeparator();
    if (AppTranslation.CountLanguages() > 0) {
        AppTranslation.FillLanguageMenu(CurrentMenu->addMenu(tr("Language")));
        CurrentMenu->addSeparator();
        // Queued: the rebuild deletes the menu whose entry was chosen.
        connect(&AppTranslation, SIGNAL(SignalNewTranslation()), this, SLOT(Raw_SlotNewTranslation()),
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
    }
    // Ctrl+H stands for "Hide" too: an ambiguous shortcut triggers neither.
    addEntry(tr("Open User Guide"), tr("Open User Guide"), SLOT(Raw_Menu_View_OpenReadMe()),
             QKeySequence(Qt::CTRL | Qt::Key_H));
    CurrentMenu->addSeparator();
    buildStyleEntries();
    addEntry(tr("About Qt..."), tr("About Qt..."), SLOT(Raw_Menu_View_AboutQt()));
    addEntry(tr("About %1...").arg(QGuiApplication::applicationDisplayName()), tr("About..."),
             SLOT(Raw_Menu_View_AboutPrg()));
}

void CMainWindow::buildStyleEntries()
{
    const QStringList styles = StyleNames();
    const bool fusion = styles.contains(Fusion);
    const bool windows11 = styles.contains(Windows11);
    if (!fusion && !windows11)
        return;
    CurrentMenu->addSeparator();
    addEntry(tr("View in default style"), tr("Default windows style for GUI"),
             SLOT(Raw_Menu_View_WindowStyle()), QKeySequence(), DefaultStyle);
    if (fusion) {
        addEntry(tr("View in light Fusion style"), tr("Light Fusion style for GUI"),
                 SLOT(Raw_Menu_View_LightFusionStyle()), QKeySequence(), LightFusion);
        addEntry(tr("View in dark Fusion style"), tr("Dark Fusion style for GUI"),
                 SLOT(Raw_Menu_View_DarkFusionStyle()), QKeySequence(), DarkFusion);
    }
    if (windows11) {
        addEntry(tr("View in light Windows 11 style"), tr("Light Windows 11 style for GUI"),
                 SLOT(Raw_Menu_View_LightWindows11Style()), QKeySequence(), LightWindows11);
        addEntry(tr("View in dark Windows 11 style"), tr("Dark Windows 11 style for GUI"),
                 SLOT(Raw_Menu_View_DarkWindows11Style()), QKeySequence(), DarkWindows11);
    }
    CurrentMenu->addSeparator();
}

void CMainWindow::addMenu(const QString &title)
{
    CurrentMenu = menuBar()->addMenu(title);
}

void CMainWindow::addEntry(const QString &text, const QString &statusTip, const char *slot,
                           const QKeySequence &shortcut, int remembered)
{
    QAction *const action = CurrentMenu->addAction(text);
    if (!statusTip.isEmpty())
        action->setStatusTip(statusTip);
    if (!shortcut.isEmpty())
        action->setShortcut(shortcut);
    if (remembered != NotRemembered) {
        action->setCheckable(true);
        RememberedIndices.at(static_cast<std::size_t>(remembered)) = ActionCount;
    }
    connect(action, SIGNAL(triggered()), this, slot);
    ActionTable.at(ActionCount) = action;
    ++ActionCount;
}

QAction *CMainWindow::rememberedAction(int entry) const
{
    return ActionTable.at(RememberedIndices.at(static_cast<std::size_t>(entry)));
}

void CMainWindow::ApplySettingsMarks()
{
    if (QAction *const entry = rememberedAction(HideWhenClose))
        entry->setChecked(!ReallyClose);
    if (QAction *const entry = rememberedAction(StartHidden))
        entry->setChecked(IsStartHidden);
    bool isNumber = false;
    const int stored = Settings->value(GuiStyleKey).toInt(&isNumber);
    // A negative number is nobody's choice: it must not trigger one of the entries before the styles.
    const int guiStyle = isNumber ? std::clamp(stored, DefaultGuiStyle, HighestGuiStyle) : DefaultGuiStyle;
    if (QAction *const entry = rememberedAction(DefaultStyle + guiStyle))
        entry->trigger();
}

void CMainWindow::UpdateStyleMarks()
{
    bool isNumber = false;
    const int stored = Settings->value(GuiStyleKey).toInt(&isNumber);
    const int guiStyle = isNumber ? stored : UnknownGuiStyle;
    for (int style = DefaultGuiStyle; style <= HighestGuiStyle; ++style) {
        if (QAction *const entry = rememberedAction(DefaultStyle + style))
            entry->setChecked(style == guiStyle);
    }
}
