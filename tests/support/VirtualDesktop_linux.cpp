// SPDX-License-Identifier: MIT
// Xvfb, openbox and trayer; xdotool and import are the hands and the eyes.
#include "tests/support/VirtualDesktop.h"

#include <QDeadlineTimer>
#include <QList>
#include <QRegularExpression>

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
    const QByteArray list =
        Output(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST")});
    QList<qulonglong> windows;
    for (const QByteArray &window : list.mid(list.indexOf('#') + 1).split(','))
        windows.append(window.trimmed().toULongLong(nullptr, 0));
    windows.removeAll(0);
    return windows;
}

bool XDoTool(const QStringList &arguments)
{
    return Run(QStringLiteral("xdotool"), arguments);
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
    // The tray needs the window manager, and a program that starts before both are there would find a
    // different desktop.
    const auto managerAnswers = [] {
        return Output(QStringLiteral("xprop"),
                      {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
            .contains("window id");
    };
    const QString trayer =
        QStringLiteral("trayer --edge bottom --align right --widthtype request --height 26");
    QStringList trayerArguments = trayer.split(u' ');
    const QString trayerProgram = trayerArguments.takeFirst();
    const QDeadlineTimer deadline(StartTimeoutMs);
    while (!managerAnswers()) {
        if (deadline.hasExpired()) {
            Error = QStringLiteral("the window manager does not answer");
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
    display->start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1000x700x24"), QStringLiteral("-noreset")});
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
    QStringList windows;
    for (const qulonglong id : ManagedWindows()) {
        const QString window = QString::number(id);
        if (property(window, QStringLiteral("_NET_WM_NAME")).section(u'"', 1, -2) == title)
            windows.append(window);
    }
    return windows;
}

QString VirtualDesktop::property(const QString &window, const QString &name)
{
    return QString::fromUtf8(
        Output(QStringLiteral("xprop"),
               {QStringLiteral("-len"), QStringLiteral("4000000"), QStringLiteral("-id"), window, name}));
}

bool VirtualDesktop::press(const QString &window, const QStringList &keys)
{
    return XDoTool({QStringLiteral("windowactivate"), QStringLiteral("--sync"), window}) &&
           XDoTool(QStringList{QStringLiteral("key"), QStringLiteral("--clearmodifiers")} + keys);
}

bool VirtualDesktop::press(const QStringList &keys)
{
    return XDoTool(QStringList{QStringLiteral("key"), QStringLiteral("--clearmodifiers")} + keys);
}

bool VirtualDesktop::type(const QString &text)
{
    return XDoTool({QStringLiteral("type"), QStringLiteral("--clearmodifiers"), QStringLiteral("--delay"),
                    QStringLiteral("2"), text});
}

QRect VirtualDesktop::geometry(const QString &window)
{
    const QByteArray output = // lines as "X=10"
        Output(QStringLiteral("xdotool"),
               {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window});
    const auto number = [lines = QString::fromLatin1(output).split(u'\n')](const QString &name) {
        return lines.filter(QRegularExpression(u'^' + name + u'=')).value(0).section(u'=', 1).toInt();
    };
    return {number(QStringLiteral("X")), number(QStringLiteral("Y")), number(QStringLiteral("WIDTH")),
            number(QStringLiteral("HEIGHT"))};
}

QRect VirtualDesktop::openMenu()
{
    // It has a type as all top-level windows, but the window manager does not know it. So is the icon in the
    // tray, whose type tells about that.
    const QByteArray output =
        Output(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                           QStringLiteral("--name"), QString()});
    const QList<qulonglong> managed = ManagedWindows();
    const QStringList visible = QString::fromLatin1(output).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &window : visible) {
        const QString type = property(window, QStringLiteral("_NET_WM_WINDOW_TYPE"));
        if (!managed.contains(window.toULongLong()) &&
            type.contains(QStringLiteral("_NET_WM_WINDOW_TYPE_NORMAL")) &&
            !type.contains(QStringLiteral("OVERRIDE")))
            return geometry(window);
    }
    return {};
}

bool VirtualDesktop::click(const QPoint &place, int button)
{
    return XDoTool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                    QStringLiteral("click"), QString::number(button)});
}

bool VirtualDesktop::startDragAndDrop(const QPoint &from, const QPoint &to)
{
    // A drag begins after some pixels, and the target answers while the mouse moves over it.
    QStringList arguments = {QStringLiteral("mousemove"), QString::number(from.x()),
                             QString::number(from.y()), QStringLiteral("mousedown"), QStringLiteral("1")};
    constexpr int steps = 20;
    for (int step = 1; step <= steps; ++step) {
        const QPoint place = from + (to - from) * step / steps;
        arguments += {QStringLiteral("sleep"), QStringLiteral("0.03"), QStringLiteral("mousemove"),
                      QString::number(place.x()), QString::number(place.y())};
    }
    arguments +=
        {QStringLiteral("sleep"), QStringLiteral("0.3"), QStringLiteral("mouseup"), QStringLiteral("1")};
    return QProcess::startDetached(QStringLiteral("xdotool"), arguments);
}

bool VirtualDesktop::savePicture(const QString &file)
{
    return Run(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), file});
}

} // namespace tests
