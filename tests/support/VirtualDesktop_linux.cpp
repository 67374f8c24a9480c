// SPDX-License-Identifier: MIT
// The scripts start the desktop and find windows on it; xdotool and import are the hands and the eyes.
#include "tests/support/VirtualDesktop.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

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

/// What one of the functions in scripts/desktop.sh prints.
QString Found(const QString &function, const QStringList &arguments = QStringList())
{
    const QString script = QStringLiteral(TARNVIK_SCRIPTS "/desktop.sh");
    return QString::fromUtf8(Output(script, QStringList{function} + arguments)).trimmed();
}

bool XDoTool(const QStringList &arguments)
{
    return Run(u"xdotool"_s, arguments);
}

} // namespace

VirtualDesktop::VirtualDesktop(Tray tray)
{
    QStringList arguments = {u"1000x700"_s};
    if (tray == Tray::Absent)
        arguments.append(u"--without-tray"_s);
    // The script gives up by itself when something does not come up.
    Desktop.start(QStringLiteral(TARNVIK_SCRIPTS "/virtual-desktop"), arguments);
    if (!Desktop.waitForReadyRead(-1)) {
        Desktop.waitForFinished(CommandTimeoutMs);
        Error = Desktop.errorString() + u": "_s + QString::fromUtf8(Desktop.readAllStandardError());
        return;
    }
    qputenv("DISPLAY", Desktop.readAllStandardOutput().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("SESSION_MANAGER");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS"); // the tray of this desktop is the X11 one
}

VirtualDesktop::~VirtualDesktop()
{
    Desktop.closeWriteChannel(); // at the end of its input the desktop ends
    if (!Desktop.waitForFinished(CommandTimeoutMs))
        Desktop.kill();
}

QStringList VirtualDesktop::windows(const QString &title)
{
    return Found(u"windows"_s, {title}).split(u'\n', Qt::SkipEmptyParts);
}

QStringList VirtualDesktop::dialogs(const QString &title)
{
    return Found(u"dialogs"_s, {title}).split(u'\n', Qt::SkipEmptyParts);
}

bool VirtualDesktop::isMinimised(const QString &window)
{
    return property(window, u"WM_STATE"_s).contains(u"Iconic"_s);
}

QString VirtualDesktop::property(const QString &window, const QString &name)
{
    return QString::fromUtf8(Output(u"xprop"_s, {u"-len"_s, u"4000000"_s, u"-id"_s, window, name}));
}

bool VirtualDesktop::Press(const QString &window, const QStringList &keys)
{
    // A window that is activated once more loses the keyboard for a moment, and with it a key. The window
    // manager's word for the active one does not tell: it may be minimised.
    const bool hasKeyboard =
        Output(u"xdotool"_s, {u"getwindowfocus"_s}).trimmed().toULongLong() == window.toULongLong(nullptr, 0);
    return (hasKeyboard || XDoTool({u"windowactivate"_s, u"--sync"_s, window})) &&
           XDoTool(QStringList{u"key"_s, u"--clearmodifiers"_s} + keys);
}

bool VirtualDesktop::Press(const QStringList &keys)
{
    return XDoTool(QStringList{u"key"_s, u"--clearmodifiers"_s} + keys);
}

bool VirtualDesktop::Type(const QString &text)
{
    return XDoTool({u"type"_s, u"--clearmodifiers"_s, u"--delay"_s, u"2"_s, text});
}

QRect VirtualDesktop::geometry(const QString &window)
{
    const QStringList numbers = Found(u"geometry"_s, {window}).split(u' ');
    if (numbers.size() != 4)
        return {};
    return {numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt()};
}

QRect VirtualDesktop::openMenu()
{
    const QString menu = Found(u"open_menu"_s);
    return menu.isEmpty() ? QRect() : geometry(menu);
}

bool VirtualDesktop::Click(const QPoint &place, int button)
{
    return XDoTool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
                    QString::number(button)});
}

bool VirtualDesktop::DoubleClick(const QPoint &place)
{
    return XDoTool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
                    u"--repeat"_s, u"2"_s, u"--delay"_s, u"50"_s, u"1"_s});
}

bool VirtualDesktop::StartDragAndDrop(const QPoint &from, const QPoint &to)
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

bool VirtualDesktop::SavePicture(const QString &file)
{
    return Run(u"import"_s, {u"-window"_s, u"root"_s, file});
}

QString OnlyWindow(const QString &title)
{
    const QStringList windows = VirtualDesktop::windows(title);
    return windows.size() == 1 ? windows.first() : QString();
}

} // namespace tests
