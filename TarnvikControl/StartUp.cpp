// SPDX-License-Identifier: MIT
#include "TarnvikControl/StartUp.h"

#include "CommonQt/AppTranslation.h"
#include "CommonQt/PathUrlOpener.h"
#include "Common_Files/Version.h"
#include "TarnvikControl/ArgumentStore.h"
#include "TarnvikControl/CMainWindow.h"
#include "TarnvikControl/LogHandler.h"
#include "TarnvikControl/SettingsKeys.h"
#include "TarnvikControl/WindowHiding.h"
#include "platform/Console.h"
#include "platform/ControlEvents.h"
#include "platform/ProductVersion.h"
#include "platform/WindowIcon.h"

#include <QApplication>
#include <QDebug>
#include <QDialog>
#include <QMessageBox>
#include <QPixmapCache>
#include <QSettings>

#include <atomic>
#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int RefusedExitCode = -1;

// None: each file dialog and style caches its icons under names of its own, and Qt 6.4 forgets none of these,
// not even when it lets the pixmaps go. Little is drawn, so little is lost.
constexpr int PixmapCacheKilobytes = 0;

// Set by the first request to end that was handled; never cleared.
std::atomic<bool> EndRequested = false;

void ReadVersion()
{
    const std::optional<platform::ProductVersion> version = platform::ReadProductVersion();
    if (!version)
        std::printf("No Version available. Ressource Version info created?!\n ");
    PackedVersion = PackVersion(version);
}

void SetIdentity()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    QCoreApplication::setApplicationVersion(VersionText(static_cast<std::uint32_t>(PackedVersion)));
    // Wayland's desktops show the icon of the installed desktop file of this name.
    QGuiApplication::setDesktopFileName(u"de.quillane.TarnvikControl"_s);
}

void RefuseSecondInstance()
{
    const QString message = QCoreApplication::translate("main", "Error an instance is already running...");
    qInfo().noquote() << u"%1: %2"_s.arg(QCoreApplication::applicationName(), message);
    if (QGuiApplication::platformName() == u"offscreen"_s)
        return; // a station without a screen: nobody could close a box
    QMessageBox box(QMessageBox::Critical, QCoreApplication::translate("main", "Error..."), message,
                    QMessageBox::Ok);
    box.exec();
}

bool OpenDebugConsole(const ArgumentStore &arguments)
{
    if (!arguments.wantsDebugConsole())
        return false;
    const bool opened = platform::OpenConsole();
    std::printf("Debug console open:\n");
    (void)std::fflush(stdout);
    return opened;
}

void ShowOrHide(QWidget &window, int showCommand)
{
    const QSettings settings(SettingsOrganisation, SettingsApplication());
    if (settings.value(StartHiddenKey, false).toBool())
        HideWindow(window);
    else
        ApplyShowCommand(window, showCommand);
}

/// Shows the window and runs the event loop; returns its exit code. What was ended before does not begin.
int ShowAndRun(CMainWindow &window, int showCommand)
{
    if (window.isQuitConfirmed())
        return 0;
    ShowOrHide(window, showCommand);
    // A request that came before the loop was answered by nobody, or by the loop of a message box.
    return EndRequested ? 0 : QApplication::exec();
}

/// Ends the event loop, and first the dialogs: the loop of one that the system shows is not Qt's.
void EndEventLoop()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        if (auto *const dialog = qobject_cast<QDialog *>(window); dialog && dialog->isVisible())
            dialog->reject();
    }
    QCoreApplication::exit(0);
}

/// What was there before the program installed its handlers.
struct Handlers
{
    QtMessageHandler PreviousMessageHandler = nullptr;
    bool ControlHandlerInstalled = false;

    void RemoveControlHandler() const
    {
        if (ControlHandlerInstalled)
            platform::RemoveControlHandler();
    }
};

/// What happens while the application object exists; it is destroyed last.
int RunApplication(ArgumentStore &arguments, int showCommand, bool instanceExists, const Handlers &handlers)
{
    QApplication application(arguments.argc(), arguments.argv());
    QApplication::setCursorFlashTime(0); // or the panel's caret would wake an idle program every half second
    QPixmapCache::setCacheLimit(PixmapCacheKilobytes);
    const PathUrlOpener pathUrlOpener; // the user guide is opened by its path
    SetIdentity();
    AppTranslation.Init(&application);
    qInfo().noquote() << u"%1 %2"_s.arg(QCoreApplication::applicationName(),
                                        QCoreApplication::applicationVersion());
    const QIcon icon = platform::LoadWindowIcon();
    if (!icon.isNull())
        QApplication::setWindowIcon(icon);

    int exitCode = RefusedExitCode;
    bool consoleOpened = false;
    std::unique_ptr<CMainWindow> window;
    if (instanceExists) {
        RefuseSecondInstance();
    } else {
        window = std::make_unique<CMainWindow>();
        consoleOpened = OpenDebugConsole(arguments);
        exitCode = ShowAndRun(*window, showCommand);
    }
    if (exitCode != 0) {
        const QString error = QCoreApplication::translate("main", "Error %1").arg(exitCode);
        qCritical().noquote() << u"%1: %2!"_s.arg(QCoreApplication::applicationName(), error);
    }
    if (consoleOpened)
        platform::CloseConsole();
    window.reset();
    handlers.RemoveControlHandler();
    AppTranslation.UnloadTranslators();
    qInstallMessageHandler(handlers.PreviousMessageHandler);
    return exitCode;
}

} // namespace

int RunControl(const std::vector<std::string> &arguments, int showCommand, bool instanceExists)
{
    Handlers handlers;
    handlers.PreviousMessageHandler = qInstallMessageHandler(ConsoleMessageHandler);
    handlers.ControlHandlerInstalled = platform::InstallControlHandler(CtrlCException);
    ReadVersion();
    ArgumentStore argumentStore;
    if (!argumentStore.Fill(arguments)) {
        qCritical("An argument is longer than %d bytes.", ArgumentStore::LongestArgument);
        handlers.RemoveControlHandler();
        qInstallMessageHandler(handlers.PreviousMessageHandler);
        return RefusedExitCode;
    }
    return RunApplication(argumentStore, showCommand, instanceExists, handlers);
}

void ApplyShowCommand(QWidget &window, int showCommand)
{
    switch (showCommand) {
    case ShowNormal:
    case ShowDefault:
        window.show();
        break;
    case ShowMinimised:
    case Minimise:
        window.showMinimized();
        break;
    case ShowMaximised:
        window.showMaximized();
        break;
    default:
        window.hide();
        break;
    }
}

bool CtrlCException(std::uint32_t controlType)
{
    qInfo("CtrlCException");
    const bool known =
        controlType == platform::ControlTypeCtrlC || controlType == platform::ControlTypeShutdown;
    if (!known || EndRequested.exchange(true))
        return false;
    if (QCoreApplication *const application = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(application, &EndEventLoop, Qt::QueuedConnection);
    }
    return true;
}
