// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"

#include "tests/support/WindowsDesktop_windows.h"
#include "tools/RecorderReport.h"

#include <QTest>

#include <csignal>

namespace tests {

namespace {

DWORD Id(const QProcess &process)
{
    return static_cast<DWORD>(process.processId());
}

} // namespace

Station::~Station()
{
    if (Process.state() != QProcess::NotRunning) {
        Process.kill();
        Process.waitForFinished();
    }
    // A program that is running cannot be removed, nor a little after its end. A recorder that has just been
    // started reports a little later.
    (void)QTest::qWaitFor([this] {
        tools::RecorderReport::KillRecorders();
        return QDir(Folder.path()).removeRecursively();
    });
}

bool Station::Signal(int number)
{
    return number == SIGINT && SendCtrlC(Id(Process));
}

bool Station::shows(const QString &title) const
{
    return OnlyWindow(title, Id(Process)) != nullptr;
}

QString Station::panelText() const
{
    const HWND shown = OnlyWindow(Title, Id(Process));
    ClearClipboard();
    if (!shown || !Press(shown, VK_CONTROL, 'A') || !Press(shown, VK_CONTROL, 'C'))
        return QString();
    QString text;
    const auto copied = [&text] {
        text = ClipboardText();
        return !text.isEmpty();
    };
    (void)QTest::qWaitFor(copied, 1000);
    return text.remove(u'\r');
}

bool Station::Quit() const
{
    // A key that comes while another program starts or ends may be lost; a user presses it again.
    bool asked = false;
    for (int attempt = 0; attempt < 5 && !asked; ++attempt) {
        const HWND shown = OnlyWindow(Title, Id(Process));
        asked = shown && Press(shown, VK_CONTROL, 'Q') &&
                QTest::qWaitFor([this] { return shows(QuitTitle); }, 5000);
    }
    if (!asked)
        return false;
    // A box that has just appeared may not have the keyboard yet.
    return QTest::qWaitFor([this] {
        const HWND question = OnlyWindow(QuitTitle, Id(Process));
        return !question || (Press(question, VK_MENU, 'Y') && false);
    });
}

} // namespace tests
