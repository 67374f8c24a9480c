// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"

#include "Common_Files/RecorderNames.h"
#include "platform/QuitSignal.h"
#include "tests/support/RecorderReport.h"

#include <QClipboard>
#include <QFile>
#include <QSignalSpy>

#include <csignal>

namespace tests {

Station::Station(const QString &recorderName)
{
    QFile::copy(QStringLiteral(CONTROL_PROGRAM), path(Title));
    if (!recorderName.isEmpty())
        QFile::copy(StandInProgram(), path(recorderName));
}

Station::~Station()
{
    if (Process.state() != QProcess::NotRunning) {
        signal(SIGINT);
        if (!Process.waitForFinished(10000))
            Process.kill();
        Process.waitForFinished();
    }
}

bool Station::signal(int number)
{
    return kill(static_cast<pid_t>(Process.processId()), number) == 0;
}

QString Station::output()
{
    Output += Process.readAllStandardOutput();
    return QString::fromUtf8(Output);
}

QString Station::errorOutput()
{
    ErrorOutput += Process.readAllStandardError();
    return QString::fromUtf8(ErrorOutput);
}

bool Station::endedWith(int exitCode)
{
    return Process.waitForFinished(15000) && Process.exitStatus() == QProcess::NormalExit &&
           Process.exitCode() == exitCode;
}

bool RecorderListens()
{
    return platform::QuitSignalHasListener(RecorderQuitKey);
}

QString OnlyWindow(const QString &title)
{
    const QStringList windows = VirtualDesktop::windows(title);
    return windows.size() == 1 ? windows.first() : QString();
}

QString PanelText()
{
    const QString window = OnlyWindow(Title);
    if (window.isEmpty())
        return QString();
    // A message that comes between the two keys takes the selection away, and nothing is copied.
    for (int attempt = 0; attempt < 5; ++attempt) {
        QSignalSpy changed(QGuiApplication::clipboard(), &QClipboard::dataChanged);
        if (!VirtualDesktop::press(window, {QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")}))
            return QString();
        if (!changed.isEmpty() || changed.wait(1000))
            return QGuiApplication::clipboard()->text();
    }
    return QString();
}

} // namespace tests
