// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"

#include "tests/support/VirtualDesktop.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace tests {

Station::~Station()
{
    if (Process.state() != QProcess::NotRunning) {
        Signal(SIGINT);
        if (!Process.waitForFinished(10000))
            Process.kill();
        Process.waitForFinished();
    }
}

void Station::KeepTogether() {}

bool Station::Signal(int number)
{
    return kill(static_cast<pid_t>(Process.processId()), number) == 0;
}

bool Station::shows(const QString &title) const
{
    return !OnlyWindow(title).isEmpty();
}

QString Station::panelText() const
{
    const QString window = OnlyWindow(Title);
    if (window.isEmpty())
        return QString();
    // A message that comes between the two keys takes the selection away, and nothing is copied.
    for (int attempt = 0; attempt < 5; ++attempt) {
        QSignalSpy changed(QGuiApplication::clipboard(), &QClipboard::dataChanged);
        if (!VirtualDesktop::Press(window, {u"ctrl+a"_s, u"ctrl+c"_s}))
            return QString();
        if (!changed.isEmpty() || changed.wait(1000))
            return QGuiApplication::clipboard()->text();
    }
    return QString();
}

bool Station::Quit() const
{
    return VirtualDesktop::Press(OnlyWindow(Title), {u"ctrl+q"_s}) &&
           QTest::qWaitFor([this] { return shows(QuitTitle); }) &&
           VirtualDesktop::Press(OnlyWindow(QuitTitle), {u"alt+y"_s});
}

} // namespace tests
