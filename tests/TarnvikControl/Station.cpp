// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"

#include "Common_Files/RecorderNames.h"
#include "platform/QuitSignal.h"
#include "tools/RecorderReport.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>

#include <csignal>

using namespace Qt::StringLiterals;

namespace tests {

Station::Station(const QString &recorderName, const QString &folderName) : Place(Folder.path())
{
    if (!folderName.isEmpty()) {
        Place.mkdir(folderName);
        Place.cd(folderName);
    }
    QFile::copy(QStringLiteral(CONTROL_PROGRAM), path(Title));
    if (!recorderName.isEmpty())
        QFile::copy(tools::StandInProgram(), path(recorderName));
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
    // Qt 6.8 remarks on a locale that is not installed, and those of the tests are not everywhere.
    static const QRegularExpression remark(
        u"^TarnvikControl [\\d:]+: Detected locale .*?for more information\\.\\n"_s,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    return QString::fromUtf8(ErrorOutput).remove(remark);
}

bool Station::endedWith(int exitCode)
{
    return Process.waitForFinished(15000) && Process.exitStatus() == QProcess::NormalExit &&
           Process.exitCode() == exitCode;
}

bool PutTranslationsBeside(const Station &station)
{
    const QDir built(QStringLiteral(BUILT_LANGUAGES));
    const QStringList files = built.entryList(QDir::Files);
    bool copied = !files.isEmpty() && QDir().mkpath(station.path(u"languages"_s));
    for (const QString &file : files)
        copied = QFile::copy(built.filePath(file), station.path(u"languages/"_s + file)) && copied;
    return copied;
}

QProcessEnvironment SystemIn(const QString &locale, const QString &languages)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"LC_ALL"_s);
    environment.insert(u"LANG"_s, locale);
    environment.insert(u"LC_CTYPE"_s, u"C.UTF-8"_s); // exists everywhere
    environment.insert(u"LANGUAGE"_s, languages);
    return environment;
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
        if (!VirtualDesktop::press(window, {u"ctrl+a"_s, u"ctrl+c"_s}))
            return QString();
        if (!changed.isEmpty() || changed.wait(1000))
            return QGuiApplication::clipboard()->text();
    }
    return QString();
}

} // namespace tests
