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

void CMainWindow::BuildMenus()
{
    Menus.Clear(*menuBar());
    BuildFileMenu();
    BuildAlignmentMenu();
    BuildViewMenu();
}

void CMainWindow::BuildFileMenu()
{
    Menus.AddMenu(*menuBar(), tr("File"));
    AddEntry(tr("Open record file folder"), tr("Open drawer with record files"),
             SLOT(Raw_Menu_File_OpenDrawer_Record()), QKeySequence(Qt::CTRL | Qt::Key_R));
    AddEntry(tr("Create record file folder link on Desktop"),
             tr("Create symblic link on desktop to record files drawer"),
             SLOT(Raw_Menu_File_CreateDrawerLink()));
    AddEntry(tr("Open settings folder..."), tr("Open drawer with settings"),
             SLOT(Raw_Menu_File_OpenDrawer_Settings()), QKeySequence(Qt::CTRL | Qt::Key_D));
    Menus.current().addSeparator();
    AddEntry(tr("Hide"), tr("Hide"), SLOT(Raw_Menu_File_Hide()), QKeySequence(Qt::CTRL | Qt::Key_H));
    AddEntry(tr("Quit"), tr("Quit"), SLOT(Raw_Menu_File_QuitApp()), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void CMainWindow::BuildAlignmentMenu()
{
    Menus.AddMenu(*menuBar(), tr("Alignment"));
    AddEntry(tr("Show..."), tr("Show alignement table for SDRs"), SLOT(Raw_Menu_Align_Show()),
             QKeySequence(Qt::CTRL | Qt::Key_S));
}

void CMainWindow::BuildViewMenu()
{
    Menus.AddMenu(*menuBar(), tr("View"));
    AddEntry(tr("Save Windows"), tr("Save size and state of windows"), SLOT(Raw_Menu_View_SaveWindow()));
    AddEntry(tr("Restore Windows"), tr("Restore size and state of windows"),
             SLOT(Raw_Menu_View_RestoreWindow()));
    Menus.current().addSeparator();
    //: Checked: the close button hides the window in the tray.
    AddEntry(tr("Hide when close"), tr("Close button minimized into tray"), SLOT(Raw_Menu_View_Close2Hide()),
             QKeySequence(), MenuTable::HideWhenClose);
    AddEntry(tr("Start with hidden GUI"), tr("Start minimized into tray"), SLOT(Raw_Menu_View_Start2Hide()),
             QKeySequence(), MenuTable::StartHidden);
    Menus.current().addSeparator();
    if (AppTranslation.CountLanguages() > 0) {
        AppTranslation.FillLanguageMenu(Menus.current().addMenu(tr("Language")));
        Menus.current().addSeparator();
        // Queued: the rebuild deletes the menu whose entry was chosen.
        connect(&AppTranslation, SIGNAL(SignalNewTranslation()), this, SLOT(Raw_SlotNewTranslation()),
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
    }
    // Ctrl+H stands for "Hide" too: an ambiguous shortcut triggers neither.
    AddEntry(tr("Open User Guide"), tr("Open User Guide"), SLOT(Raw_Menu_View_OpenReadMe()),
             QKeySequence(Qt::CTRL | Qt::Key_H));
    Menus.current().addSeparator();
    BuildStyleEntries();
    AddEntry(tr("About Qt..."), tr("About Qt..."), SLOT(Raw_Menu_View_AboutQt()));
    AddEntry(tr("About %1...").arg(QGuiApplication::applicationDisplayName()), tr("About..."),
             SLOT(Raw_Menu_View_AboutPrg()));
}

void CMainWindow::BuildStyleEntries()
{
    const QStringList styles = StyleNames();
    const bool fusion = styles.contains(Fusion);
    const bool windows11 = styles.contains(Windows11);
    if (!fusion && !windows11)
        return;
    Menus.current().addSeparator();
    AddEntry(tr("View in default style"), tr("Default windows style for GUI"),
             SLOT(Raw_Menu_View_WindowStyle()), QKeySequence(), MenuTable::DefaultStyle);
    if (fusion) {
        AddEntry(tr("View in light Fusion style"), tr("Light Fusion style for GUI"),
                 SLOT(Raw_Menu_View_LightFusionStyle()), QKeySequence(), MenuTable::LightFusion);
        AddEntry(tr("View in dark Fusion style"), tr("Dark Fusion style for GUI"),
                 SLOT(Raw_Menu_View_DarkFusionStyle()), QKeySequence(), MenuTable::DarkFusion);
    }
    if (windows11) {
        AddEntry(tr("View in light Windows 11 style"), tr("Light Windows 11 style for GUI"),
                 SLOT(Raw_Menu_View_LightWindows11Style()), QKeySequence(), MenuTable::LightWindows11);
        AddEntry(tr("View in dark Windows 11 style"), tr("Dark Windows 11 style for GUI"),
                 SLOT(Raw_Menu_View_DarkWindows11Style()), QKeySequence(), MenuTable::DarkWindows11);
    }
    Menus.current().addSeparator();
}

void CMainWindow::AddEntry(const QString &text, const QString &statusTip, const char *slot,
                           const QKeySequence &shortcut, int remembered)
{
    connect(Menus.AddEntry(text, statusTip, shortcut, remembered), SIGNAL(triggered()), this, slot);
}

void CMainWindow::ApplySettingsMarks()
{
    if (QAction *const entry = Menus.remembered(MenuTable::HideWhenClose))
        entry->setChecked(!ReallyClose);
    if (QAction *const entry = Menus.remembered(MenuTable::StartHidden))
        entry->setChecked(IsStartHidden);
    bool isNumber = false;
    const int stored = Settings->value(GuiStyleKey).toInt(&isNumber);
    // A negative number is nobody's choice: it must not trigger one of the entries before the styles.
    const int guiStyle = isNumber ? std::clamp(stored, DefaultGuiStyle, HighestGuiStyle) : DefaultGuiStyle;
    // A stored style without an entry of its own triggers the entry at index 0, the first of the File menu.
    // This is meant so.
    if (QAction *const entry = Menus.remembered(MenuTable::DefaultStyle + guiStyle))
        entry->trigger();
}

void CMainWindow::UpdateStyleMarks()
{
    bool isNumber = false;
    const int stored = Settings->value(GuiStyleKey).toInt(&isNumber);
    const int guiStyle = isNumber ? stored : UnknownGuiStyle;
    for (int style = DefaultGuiStyle; style <= HighestGuiStyle; ++style) {
        if (QAction *const entry = Menus.remembered(MenuTable::DefaultStyle + style))
            entry->setChecked(style == guiStyle);
    }
}
