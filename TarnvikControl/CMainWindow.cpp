// SPDX-License-Identifier: MIT
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/RecorderNames.h"
#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/QAsyncWatchExec.h"
#include "TarnvikControl/SettingsKeys.h"
#include "TarnvikControl/StatusPanel.h"
#include "TarnvikControl/WindowHiding.h"
#include "platform/ChildProcess.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFontMetrics>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace {

// The size of a window that was never saved: the panel with a message of usual length.
constexpr int DefaultColumns = 64;
constexpr int DefaultLines = 16;

} // namespace

QStringList (*CMainWindow::StyleNames)() = QStyleFactory::keys;

CMainWindow::CMainWindow(QWidget *parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags),
      Settings(std::make_unique<QSettings>(SettingsOrganisation, SettingsApplication())),
      LocationFile(QTarnvikBasic::GetRecorderFile(u"tarnviklocation.ini"_s)),
      Runner(std::make_unique<QAsyncWatchExec>()),
      StatusWatcher(std::make_unique<QOstrelRecordStatus>()),
      MessageTag(QOstrelRecordStatus::DefaultMessageTag())
{
    QString program;
    QString workingDirectory;
    QStringList arguments;
    QTarnvikBasic::SendRecorderQuit(nullptr, program, workingDirectory, arguments);
    LocationFile = QDir::toNativeSeparators(LocationFile);
    ReadSettings();
    setAccessibleName(QGuiApplication::applicationDisplayName()); // its title comes from the window system
    // A dialog that closes while this window is hidden in the tray would count as the last window; only this
    // window's own closing may end the program.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(qApp, SIGNAL(aboutToQuit()), this, SLOT(Raw_SlotAboutToQuit()));
    BuildTrayIcon();
    BuildMenus();
    BuildStatusView();
    const QFontMetrics metrics(StatusView->font());
    resize(DefaultColumns * metrics.horizontalAdvance(u'x'), DefaultLines * metrics.lineSpacing());
    ApplySettingsMarks();
    RestoreWindow();
    StartRecorder(RecorderStatusFile());
}

CMainWindow::~CMainWindow()
{
    disconnect(StatusWatcher.get(), SIGNAL(Signal_FileChanged(StructOstrelRecordStatus)), this,
               SLOT(Raw_FileChanged(StructOstrelRecordStatus)));
    StatusWatcher.reset();
    Runner.reset();
    TrayMenu.reset();
    TrayIcon.reset();
    Settings.reset();
}

void CMainWindow::ReadSettings()
{
    ReallyClose = Settings->value(CloseIsMinimizeKey, true).toBool();
    IsStartHidden = Settings->value(StartHiddenKey, false).toBool();
}

void CMainWindow::StartRecorder(const QString &statusFile)
{
    // When it cannot be made there is nothing to watch; the recorder's state is shown all the same.
    (void)QOstrelRecordStatus::CreateStatusFile(statusFile);
    Runner->Second = PauseSecond;
    Runner->StopHook = QTarnvikBasic::SendRecorderQuit;
    Runner->StopHookContext = nullptr;
    Runner->Program = platform::RecorderProgram(QCoreApplication::applicationDirPath());
    connect(Runner.get(), SIGNAL(stateChanged(int)), this, SLOT(Raw_RunStateChanged(int)));
    Runner->Start();
    StatusWatcher->SetWatchFile(statusFile);
    connect(StatusWatcher.get(), SIGNAL(Signal_FileChanged(StructOstrelRecordStatus)), this,
            SLOT(Raw_FileChanged(StructOstrelRecordStatus)));
}

void CMainWindow::closeEvent(QCloseEvent *event)
{
    if (!ReallyClose) {
        HideWindow(*this);
        event->ignore();
        return;
    }
    if (!QuitConfirmed && !AskStopRecord()) {
        event->ignore();
        return;
    }
    SaveWindow();
    event->accept();
    QMainWindow::closeEvent(event);
    QCoreApplication::exit(0);
}

void CMainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
}

void CMainWindow::BuildStatusView()
{
    const bool hadKeyboard = StatusView && focusWidget() == StatusView;
    StatusView = new StatusPanel;
    setCentralWidget(StatusView); // deletes the one before
    StatusView->show();           // at once: what is hidden cannot have the keyboard
    if (hadKeyboard)
        StatusView->setFocus();
}

void CMainWindow::RefreshStatusView()
{
    StatusView->Show({IsStartHidden, Runner->isProcessRunning(), LastMessage});
}

void CMainWindow::Raw_FileChanged(const StructOstrelRecordStatus &status)
{
    LastMessage = status.Message;
    MessageTag = QOstrelRecordStatus::GetMessageTag(LastMessage);
    RefreshStatusView();
}

void CMainWindow::Raw_RunStateChanged(int /*state*/)
{
    RefreshStatusView();
}

bool CMainWindow::AskStopRecord()
{
    if (StopQuestion) { // the tray's menu works while the question is open
        StopQuestion->raise();
        StopQuestion->activateWindow();
        return false;
    }
    //: Title of the question before the program ends.
    QMessageBox box(QMessageBox::Question, tr("Close indication"),
                    tr("Do you want also to stop the running record?"), QMessageBox::Yes | QMessageBox::Abort,
                    this); // its default flags: a dialog of fixed size
    StopQuestion = &box;
    return box.exec() == QMessageBox::Yes;
}

void CMainWindow::Raw_Menu_File_QuitApp()
{
    if (!AskStopRecord())
        return;
    ReallyClose = true;
    QuitConfirmed = true;
    // Without an event loop, while the start shows a box, quit() does nothing: the box is closed here, and
    // whoever begins the loop asks isQuitConfirmed().
    QApplication::closeAllWindows();
    QCoreApplication::quit();
}

void CMainWindow::Raw_SlotAboutToQuit()
{
    Runner->Stop();
    SaveWindow();
    ReallyClose = true;
}

void CMainWindow::Raw_SlotNewTranslation()
{
    SaveWindow();
    BuildTrayIcon();
    BuildMenus();
    BuildStatusView();
    ApplySettingsMarks();
    RestoreWindow();
}

void CMainWindow::SaveWindow()
{
    Settings->setValue(GeometryKey, saveGeometry());
    Settings->setValue(WindowStateKey, saveState(0));
}

void CMainWindow::RestoreWindow()
{
    restoreGeometry(Settings->value(GeometryKey).toByteArray());
    restoreState(Settings->value(WindowStateKey).toByteArray(), 0);
}
