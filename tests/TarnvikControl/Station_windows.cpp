// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"

#include "tests/support/WindowsDesktop_windows.h"

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
    // What the program was starting when it was killed may wait for ever before its first instruction: a
    // recorder, which is in no report yet, or the console that Wine runs for a recorder. It would keep the
    // test's output open.
    TerminateJobObject(Started.get(), 1);
    // A program cannot be removed until a little after its end.
    QVERIFY2(QTest::qWaitFor([this] { return QDir(Folder.path()).removeRecursively(); }),
             "the station's folder cannot be removed: does something still run from it?");
}

void Station::KeepTogether()
{
    if (!Started)
        Started = std::shared_ptr<void>(CreateJobObjectW(nullptr, nullptr), CloseHandle);
    QVERIFY2(Process.processId() != 0, qPrintable(Process.errorString()));
    const HANDLE program = OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, Id(Process));
    const bool kept = AssignProcessToJobObject(Started.get(), program) != FALSE;
    CloseHandle(program);
    QVERIFY(kept);
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
    // A box that has just appeared may not have the keyboard yet. It is given to it again only when needed:
    // with a box that closes this lasts until the program has done with its recorder.
    bool answered = false;
    for (int attempt = 0; attempt < 5 && !answered; ++attempt) {
        const HWND question = OnlyWindow(QuitTitle, Id(Process));
        if (question)
            Press(question, VK_MENU, 'Y');
        answered = QTest::qWaitFor([this] { return !shows(QuitTitle); }, 1000);
    }
    return answered;
}

} // namespace tests
