// SPDX-License-Identifier: MIT
// Xvfb, openbox and trayer; xdotool and import are the hands and the eyes.
#include "tests/support/VirtualDesktop.h"

#include <QDeadlineTimer>
#include <QList>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

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

QByteArray Output(const QString &program, const QStringList &arguments)
{
    QByteArray output;
    Run(program, arguments, &output);
    return output;
}

/// The windows that the window manager knows, hidden ones left out; others have titles, too, as the icon in
/// the tray.
QList<qulonglong> ManagedWindows()
{
    const QByteArray list = Output(u"xprop"_s, {u"-root"_s, u"_NET_CLIENT_LIST"_s});
    QList<qulonglong> windows;
    for (const QByteArray &window : list.mid(list.indexOf('#') + 1).split(','))
        windows.append(window.trimmed().toULongLong(nullptr, 0));
    windows.removeAll(0);
    return windows;
}

bool XDoTool(const QStringList &arguments)
{
    return Run(u"xdotool"_s, arguments);
}

} // namespace

VirtualDesktop::VirtualDesktop()
{
    if (!startDisplay())
        return;
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("SESSION_MANAGER");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS"); // the tray of this desktop is the X11 one
    if (!startProgram(u"openbox"_s, {u"--sm-disable"_s}))
        return;
    // The tray needs the window manager, and a program that starts before both are there would find a
    // different desktop.
    const auto managerAnswers = [] {
        return Output(u"xprop"_s, {u"-root"_s, u"_NET_SUPPORTING_WM_CHECK"_s}).contains("window id");
    };
    const QString trayer = u"trayer --edge bottom --align right --widthtype request --height 26"_s;
    QStringList trayerArguments = trayer.split(u' ');
    const QString trayerProgram = trayerArguments.takeFirst();
    const QDeadlineTimer deadline(StartTimeoutMs);
    while (!managerAnswers()) {
        if (deadline.hasExpired()) {
            Error = u"the window manager does not answer"_s;
            return;
        }
    }
    startProgram(trayerProgram, trayerArguments);
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
    // -noreset: otherwise the end of a tool that is the only client for a moment resets the display, and
    // throws out whoever connects at that moment.
    auto display = std::make_unique<QProcess>();
    display->start(u"Xvfb"_s,
                   {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1000x700x24"_s, u"-noreset"_s});
    if (!display->waitForReadyRead(StartTimeoutMs)) {
        Error = u"Xvfb: "_s + display->errorString();
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
        Error = program + u": "_s + process->errorString();
        return false;
    }
    Programs.push_back(std::move(process));
    return true;
}

QStringList VirtualDesktop::windows(const QString &title)
{
    QStringList windows;
    for (const qulonglong id : ManagedWindows()) {
        const QString window = QString::number(id);
        if (property(window, u"_NET_WM_NAME"_s).section(u'"', 1, -2) == title)
            windows.append(window);
    }
    return windows;
}

QString VirtualDesktop::property(const QString &window, const QString &name)
{
    return QString::fromUtf8(Output(u"xprop"_s, {u"-len"_s, u"4000000"_s, u"-id"_s, window, name}));
}

bool VirtualDesktop::press(const QString &window, const QStringList &keys)
{
    return XDoTool({u"windowactivate"_s, u"--sync"_s, window}) &&
           XDoTool(QStringList{u"key"_s, u"--clearmodifiers"_s} + keys);
}

bool VirtualDesktop::press(const QStringList &keys)
{
    return XDoTool(QStringList{u"key"_s, u"--clearmodifiers"_s} + keys);
}

bool VirtualDesktop::type(const QString &text)
{
    return XDoTool({u"type"_s, u"--clearmodifiers"_s, u"--delay"_s, u"2"_s, text});
}

QRect VirtualDesktop::geometry(const QString &window)
{
    const QByteArray output = // lines as "X=10"
        Output(u"xdotool"_s, {u"getwindowgeometry"_s, u"--shell"_s, window});
    const auto number = [lines = QString::fromLatin1(output).split(u'\n')](const QString &name) {
        return lines.filter(QRegularExpression(u'^' + name + u'=')).value(0).section(u'=', 1).toInt();
    };
    return {number(u"X"_s), number(u"Y"_s), number(u"WIDTH"_s), number(u"HEIGHT"_s)};
}

QRect VirtualDesktop::openMenu()
{
    // It has a type as all top-level windows, but the window manager does not know it. So is the icon in the
    // tray, whose type tells about that.
    const QByteArray output = Output(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, QString()});
    const QList<qulonglong> managed = ManagedWindows();
    const QStringList visible = QString::fromLatin1(output).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &window : visible) {
        const QString type = property(window, u"_NET_WM_WINDOW_TYPE"_s);
        if (!managed.contains(window.toULongLong()) && type.contains(u"_NET_WM_WINDOW_TYPE_NORMAL"_s) &&
            !type.contains(u"OVERRIDE"_s))
            return geometry(window);
    }
    return {};
}

bool VirtualDesktop::click(const QPoint &place, int button)
{
    return XDoTool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
                    QString::number(button)});
}

bool VirtualDesktop::startDragAndDrop(const QPoint &from, const QPoint &to)
{
    // A drag begins after some pixels, and the target answers while the mouse moves over it.
    QStringList arguments = {u"mousemove"_s, QString::number(from.x()), QString::number(from.y()),
                             u"mousedown"_s, u"1"_s};
    constexpr int steps = 20;
    for (int step = 1; step <= steps; ++step) {
        const QPoint place = from + (to - from) * step / steps;
        arguments +=
            {u"sleep"_s, u"0.03"_s, u"mousemove"_s, QString::number(place.x()), QString::number(place.y())};
    }
    arguments += {u"sleep"_s, u"0.3"_s, u"mouseup"_s, u"1"_s};
    return QProcess::startDetached(u"xdotool"_s, arguments);
}

bool VirtualDesktop::savePicture(const QString &file)
{
    return Run(u"import"_s, {u"-window"_s, u"root"_s, file});
}

} // namespace tests
