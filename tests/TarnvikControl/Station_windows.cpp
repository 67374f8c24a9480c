// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"

#include "tests/support/WindowsDesktop_windows.h"

#include <QFileInfo>
#include <QTest>

#include <tlhelp32.h>

#include <array>
#include <csignal>

namespace tests {

namespace {

DWORD Id(const QProcess &process)
{
    return static_cast<DWORD>(process.processId());
}

/// Ends every process whose program lies in the folder, also one that has not begun to run.
void KillProgramsIn(const QString &folder)
{
    const QString place = QFileInfo(folder).canonicalFilePath() + u'/';
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof(entry);
    for (BOOL found = Process32FirstW(snapshot, &entry); found != FALSE;
         found = Process32NextW(snapshot, &entry)) {
        const HANDLE process =
            OpenProcess(PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID);
        if (!process)
            continue;
        std::array<wchar_t, 1024> program = {};
        DWORD length = program.size();
        if (QueryFullProcessImageNameW(process, 0, program.data(), &length) != FALSE &&
            QDir::fromNativeSeparators(QString::fromWCharArray(program.data()))
                .startsWith(place, Qt::CaseInsensitive))
            TerminateProcess(process, 1);
        CloseHandle(process);
    }
    CloseHandle(snapshot);
}

} // namespace

Station::~Station()
{
    if (Process.state() != QProcess::NotRunning) {
        Process.kill();
        Process.waitForFinished();
    }
    // A program that is running cannot be removed, nor a little after its end. The recorder is not asked for
    // by its report: one that the program was starting when it was killed may wait for ever before its first
    // instruction.
    QVERIFY2(QTest::qWaitFor([this] {
                 KillProgramsIn(Folder.path());
                 return QDir(Folder.path()).removeRecursively();
             }),
             "the station's folder cannot be removed: does something still run from it?");
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
