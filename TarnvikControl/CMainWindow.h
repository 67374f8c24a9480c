// SPDX-License-Identifier: MIT
// The program's window: the recorder's state in a text panel, the menu bar, the tray icon, the way out.
#pragma once

#include "Common_Files/OstrelRecordStatus.h"
#include "TarnvikControl/ColourScheme.h"
#include "TarnvikControl/MenuTable.h"

#include <QDeadlineTimer>
#include <QKeySequence>
#include <QMainWindow>
#include <QPointer>
#include <QSystemTrayIcon>

#include <chrono>
#include <memory>

class QAsyncWatchExec;
class QMenu;
class QMessageBox;
class QSettings;
class StatusPanel;

/// Starts the recorder when it is made and stops it when the application is about to quit. It lives in the
/// tray as well: closing the window hides it or ends the program, as the user has set. Every orderly end
/// stops the recorder; after a crash it goes on. GUI thread only.
///
/// Sources: CMainWindow.cpp (life, settings, way out), CMainWindow_Tray.cpp, CMainWindow_Menus.cpp,
/// CMainWindow_Commands.cpp. StatusPanel writes the panel.
class CMainWindow : public QMainWindow
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    /// Names of the widget styles that there are. Tests put their own list here.
    static QStringList (*StyleNames)();
    /// The second in which the recorder's pauses are counted. The soak run puts a shorter one here.
    static inline std::chrono::milliseconds PauseSecond{1000};
    /// The styles that have menu entries of their own, as StyleNames lists them.
    static inline const QString Fusion = QStringLiteral("Fusion");
    static inline const QString Windows11 = QStringLiteral("windows11");

    /// Asks a recorder of an earlier run to quit, then starts its own. The window is not shown.
    explicit CMainWindow(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    /// Stops the recorder if it still runs.
    ~CMainWindow() override;
    /// The user has quit the program, perhaps before there was an event loop to end.
    [[nodiscard]] bool isQuitConfirmed() const { return QuitConfirmed; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

protected slots:
    void Raw_SlotAboutToQuit();
    void Raw_SlotNewTranslation();
    void Raw_Menu_File_OpenDrawer_Record();
    void Raw_Menu_File_CreateDrawerLink();
    void Raw_Menu_File_OpenDrawer_Settings();
    void Raw_Menu_File_Hide();
    void Raw_Menu_File_QuitApp();
    void Raw_Menu_Align_Show();
    void Raw_Menu_View_SaveWindow();
    void Raw_Menu_View_RestoreWindow();
    void Raw_Menu_View_Close2Hide();
    void Raw_Menu_View_Start2Hide();
    void Raw_Menu_View_AboutQt();
    void Raw_Menu_View_AboutPrg();
    void Raw_Menu_View_OpenReadMe();
    void Raw_Menu_View_WindowStyle();
    void Raw_Menu_View_LightFusionStyle();
    void Raw_Menu_View_DarkFusionStyle();
    void Raw_Menu_View_LightWindows11Style();
    void Raw_Menu_View_DarkWindows11Style();
    void Raw_TrayIconActivated(QSystemTrayIcon::ActivationReason eReason);
    void Raw_FileChanged(const StructOstrelRecordStatus &status);
    void Raw_RunStateChanged(int state);

private:
    void ReadSettings();
    void StartRecorder(const QString &statusFile);
    [[nodiscard]] bool AskStopRecord();
    void SaveWindow();
    void RestoreWindow();
    void ApplySettingsMarks();
    void UpdateStyleMarks();

    void BuildTrayIcon();
    void AddTrayAction(const QString &text, const char *slot);
    void SwitchVisibility();

    void BuildMenus();
    void BuildFileMenu();
    void BuildAlignmentMenu();
    void BuildViewMenu();
    void BuildStyleEntries();
    void AddEntry(const QString &text, const QString &statusTip, const char *slot,
                  const QKeySequence &shortcut = QKeySequence(), int remembered = MenuTable::NotRemembered);

    [[nodiscard]] QString ExistingRecordPath();
    void OpenRecordFolder();
    void CreateRecordFolderLink();
    void ShowAbout();
    void OpenUserGuide();
    void ApplyDefaultStyle();
    void ApplyStyleIfAvailable(const QString &name, ColourScheme scheme, int guiStyle);
    void SetAndStoreStyle(const QString &name, ColourScheme scheme, int guiStyle);
    void Warn(const QString &text);
    void BuildStatusView();
    void RefreshStatusView();

    std::unique_ptr<QSystemTrayIcon> TrayIcon;
    std::unique_ptr<QMenu> TrayMenu;
    QDeadlineTimer DoubleClickEnd; // a second click on the icon until then belongs to the one before
    MenuTable Menus;

    std::unique_ptr<QSettings> Settings;
    bool ReallyClose = false; // the close button ends the program
    bool QuitConfirmed = false;
    QPointer<QMessageBox> StopQuestion; // while it is open
    bool IsStartHidden = false;
    QString LocationFile; // with the system's own separators

    std::unique_ptr<QAsyncWatchExec> Runner;
    std::unique_ptr<QOstrelRecordStatus> StatusWatcher;
    StatusPanel *StatusView = nullptr; // the central widget
    QString LastMessage;               // without its tags
    // How LastMessage is classified. Nothing reads it; kept for whoever looks into the running program.
    StructMessageTag MessageTag;
};
