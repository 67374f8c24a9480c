// SPDX-License-Identifier: MIT
// Xvfb, openbox and trayer; xdotool and import are the hands and the eyes.
#include "tests/support/VirtualDesktop.h"

#include <QDeadlineTimer>

namespace tests {

namespace {

constexpr int StartTimeoutMs = 20000;
constexpr int CommandTimeoutMs = 10000;

bool Run(const QString &program, const QStringList &arguments, QByteArray *output = nullptr)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(CommandTimeoutMs))
        return false;
    if (output)
        *output = process.readAllStandardOutput();
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool XDoTool(const QStringList &arguments, QByteArray *output = nullptr)
{
    return Run(QStringLiteral("xdotool"), arguments, output);
}

} // namespace

VirtualDesktop::VirtualDesktop()
{
    if (!startDisplay())
        return;
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("SESSION_MANAGER");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS"); // the tray of this desktop is the X11 one
    if (!startProgram(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")}))
        return;
    const QString trayer =
        QStringLiteral("trayer --edge bottom --align right --widthtype request --height 26");
    QStringList trayerArguments = trayer.split(u' ');
    startProgram(trayerArguments.takeFirst(), trayerArguments);
    // The programs are ready when the window manager and the tray say so on the root window and the
    // selection.
    const QDeadlineTimer deadline(StartTimeoutMs);
    QByteArray answer;
    while (!answer.contains("window id")) {
        if (deadline.hasExpired()) {
            Error = QStringLiteral("the window manager does not answer");
            return;
        }
        Run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")},
            &answer);
    }
}

VirtualDesktop::~VirtualDesktop()
{
    while (!Programs.empty()) {
        Programs.back()->terminate();
        if (!Programs.back()->waitForFinished(CommandTimeoutMs))
            Programs.back()->kill();
        Programs.pop_back();
    }
}

bool VirtualDesktop::startDisplay()
{
    auto display = std::make_unique<QProcess>();
    display->start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1000x700x24")});
    if (!display->waitForReadyRead(StartTimeoutMs)) {
        Error = QStringLiteral("Xvfb: ") + display->errorString();
        return false;
    }
    // It prints the number that it chose.
    qputenv("DISPLAY", ':' + display->readAllStandardOutput().trimmed());
    Programs.push_back(std::move(display));
    return true;
}

bool VirtualDesktop::startProgram(const QString &program, const QStringList &arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    if (!process->waitForStarted(StartTimeoutMs)) {
        Error = program + QStringLiteral(": ") + process->errorString();
        return false;
    }
    Programs.push_back(std::move(process));
    return true;
}

QStringList VirtualDesktop::windows(const QString &title)
{
    // Asked of the window manager: the icon in the tray is a window with the program's title too.
    QByteArray list;
    if (!Run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST")}, &list))
        return {};
    QStringList windows = QString::fromLatin1(list).section(u'#', 1).split(u',', Qt::SkipEmptyParts);
    for (QString &window : windows)
        window = window.trimmed();
    windows.removeIf([&title](const QString &window) {
        return property(window, QStringLiteral("_NET_WM_NAME")).section(u'"', 1, -2) != title;
    });
    return windows;
}

QString VirtualDesktop::property(const QString &window, const QString &name)
{
    QByteArray output;
    Run(QStringLiteral("xprop"),
        {QStringLiteral("-len"), QStringLiteral("4000000"), QStringLiteral("-id"), window, name}, &output);
    return QString::fromUtf8(output);
}

bool VirtualDesktop::press(const QString &window, const QStringList &keys)
{
    return XDoTool({QStringLiteral("windowactivate"), QStringLiteral("--sync"), window}) &&
           XDoTool(QStringList{QStringLiteral("key"), QStringLiteral("--clearmodifiers")} + keys);
}

bool VirtualDesktop::click(const QString &window, int x, int y)
{
    return XDoTool({QStringLiteral("mousemove"), QStringLiteral("--sync"), QStringLiteral("--window"), window,
                    QString::number(x), QString::number(y), QStringLiteral("click"), QStringLiteral("1")});
}

bool VirtualDesktop::savePicture(const QString &file)
{
    return Run(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), file});
}

} // namespace tests
