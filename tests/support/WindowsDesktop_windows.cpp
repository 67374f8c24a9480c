// SPDX-License-Identifier: MIT
#include "tests/support/WindowsDesktop_windows.h"

#include <QElapsedTimer>

#include <array>

namespace tests {

namespace {

constexpr int TimeoutMs = 5000;

struct Search
{
    std::wstring Title;
    DWORD ProcessId = 0;
    std::vector<HWND> Found;
};

BOOL CALLBACK Collect(HWND window, LPARAM parameter)
{
    auto &search = *reinterpret_cast<Search *>(parameter);
    std::array<wchar_t, 256> title = {};
    GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    if (IsWindowVisible(window) != FALSE && title.data() == search.Title &&
        (search.ProcessId == 0 || search.ProcessId == processId))
        search.Found.push_back(window);
    return TRUE;
}

/// This process attached to the console of another one; one at a time.
class AttachedConsole
{
public:
    explicit AttachedConsole(DWORD processId)
    {
        FreeConsole(); // its own, when it has one: its output goes to a pipe or file
        Attached = AttachConsole(processId) != FALSE;
    }
    ~AttachedConsole()
    {
        if (Attached)
            FreeConsole();
    }
    Q_DISABLE_COPY_MOVE(AttachedConsole)

    [[nodiscard]] bool isAttached() const { return Attached; }

private:
    bool Attached = false;
};

INPUT KeyInput(WORD key, DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    return input;
}

bool Send(std::vector<INPUT> inputs)
{
    return SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) == inputs.size();
}

} // namespace

std::vector<HWND> WindowsTitled(const QString &title, DWORD processId)
{
    Search search{title.toStdWString(), processId, {}};
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

HWND OnlyWindow(const QString &title, DWORD processId)
{
    const std::vector<HWND> windows = WindowsTitled(title, processId);
    return windows.size() == 1 ? windows.front() : nullptr;
}

bool Press(HWND window, WORD modifier, WORD key)
{
    QElapsedTimer timer;
    timer.start();
    while (GetForegroundWindow() != window) {
        if (timer.hasExpired(TimeoutMs))
            return false;
        SetForegroundWindow(window);
        Sleep(10);
    }
    if (modifier == 0)
        return Press(key);
    return Send({KeyInput(modifier, 0), KeyInput(key, 0), KeyInput(key, KEYEVENTF_KEYUP),
                 KeyInput(modifier, KEYEVENTF_KEYUP)});
}

bool Press(WORD key)
{
    return Send({KeyInput(key, 0), KeyInput(key, KEYEVENTF_KEYUP)});
}

QString ClipboardText()
{
    if (OpenClipboard(nullptr) == FALSE)
        return QString();
    QString text;
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    if (const void *const content = data ? GlobalLock(data) : nullptr) {
        text = QString::fromWCharArray(static_cast<const wchar_t *>(content));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

void ClearClipboard()
{
    if (OpenClipboard(nullptr) == FALSE)
        return;
    EmptyClipboard();
    CloseClipboard();
}

QString ConsoleText(DWORD processId)
{
    const AttachedConsole console(processId);
    if (!console.isAttached())
        return QString();
    const HANDLE output = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    GetConsoleScreenBufferInfo(output, &info);
    QString text;
    std::vector<wchar_t> line(static_cast<std::size_t>(info.dwSize.X));
    for (SHORT row = 0; row <= info.dwCursorPosition.Y; ++row) {
        DWORD count = 0;
        ReadConsoleOutputCharacterW(output, line.data(), static_cast<DWORD>(line.size()), {0, row}, &count);
        text += QString::fromWCharArray(line.data(), static_cast<qsizetype>(count)).trimmed() + u'\n';
    }
    CloseHandle(output);
    return text;
}

DWORD ConsoleInputMode(DWORD processId)
{
    const AttachedConsole console(processId);
    if (!console.isAttached())
        return 0;
    const HANDLE input = CreateFileW(L"CONIN$", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD mode = 0;
    GetConsoleMode(input, &mode);
    CloseHandle(input);
    return mode;
}

bool SendCtrlC(DWORD processId)
{
    const AttachedConsole console(processId);
    SetConsoleCtrlHandler(nullptr, TRUE); // this process is in that console now
    const bool sent = console.isAttached() && GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE;
    Sleep(100); // the event comes on a thread of its own, and this process must not take notice of it
    SetConsoleCtrlHandler(nullptr, FALSE);
    return sent;
}

} // namespace tests
