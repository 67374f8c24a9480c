// SPDX-License-Identifier: MIT
// Control events of a console. The system sends them to every process of the console, so each case runs in a
// process with a console of its own: the test running itself again with an argument.
#include "platform/ChildProcess.h"
#include "platform/Console.h"
#include "platform/ControlEvents.h"
#include "tools/IsolatedFolders.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <windows.h>

#include <atomic>
#include <iterator>
#include <string>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr int Survived = 7;  // the exit code of a process that no event ended
constexpr int BadSetUp = 99; // the exit code of a process in which something else went wrong
constexpr DWORD TimeoutMs = 10000;

HANDLE Handled = nullptr; // set when the handler was called
std::atomic<std::uint32_t> LastType = 0;
std::atomic<std::thread::id> HandlerThread;
std::atomic<int> Calls = 0;

bool HandleOnce(std::uint32_t type)
{
    LastType = type;
    HandlerThread = std::this_thread::get_id();
    const bool first = Calls++ == 0;
    SetEvent(Handled);
    return first;
}

bool LeaveToTheSystem(std::uint32_t /*type*/)
{
    return false;
}

/// Sends an event to this process's console.
bool Send(DWORD event)
{
    return GenerateConsoleCtrlEvent(event, 0) != FALSE;
}

bool WaitHandled()
{
    return WaitForSingleObject(Handled, TimeoutMs) == WAIT_OBJECT_0;
}

/// Waits for the end that an event brings.
int OutliveTheEvent()
{
    Sleep(TimeoutMs);
    return Survived;
}

int FirstIsHandled()
{
    const bool handled = platform::InstallControlHandler(HandleOnce) && Send(CTRL_C_EVENT) && WaitHandled();
    const bool right = LastType == platform::ControlTypeCtrlC && HandlerThread != std::this_thread::get_id();
    return handled && right ? Survived : BadSetUp;
}

int SecondIsNotHandled()
{
    if (FirstIsHandled() != Survived || !Send(CTRL_C_EVENT))
        return BadSetUp;
    return OutliveTheEvent();
}

int RefusedByTheHandler()
{
    if (!platform::InstallControlHandler(LeaveToTheSystem) || !Send(CTRL_C_EVENT))
        return BadSetUp;
    return OutliveTheEvent();
}

int AfterTheRemoval()
{
    if (!platform::InstallControlHandler(HandleOnce))
        return BadSetUp;
    platform::RemoveControlHandler();
    platform::RemoveControlHandler();
    if (!Send(CTRL_C_EVENT))
        return BadSetUp;
    return OutliveTheEvent();
}

/// The debug console is opened after the handler is installed.
int InAConsoleOpenedLater()
{
    FreeConsole();
    if (!platform::InstallControlHandler(HandleOnce) || !platform::OpenConsole())
        return BadSetUp;
    if (!Send(CTRL_C_EVENT) || !WaitHandled() || Calls != 1)
        return BadSetUp;
    if (!Send(CTRL_C_EVENT))
        return BadSetUp;
    return OutliveTheEvent();
}

/// Starts a recorder, then gets a Ctrl-C in its debug console. A recorder started by a program that shows no
/// console would have one of its own anyway.
int WithARecorder()
{
    FreeConsole();
    if (!platform::OpenConsole())
        return BadSetUp;
    QProcess recorder;
    platform::DetachFromThisProgram(recorder);
    recorder.start(tools::StandInProgram(), QStringList(), QIODevice::ReadOnly);
    if (!recorder.waitForReadyRead())
        return BadSetUp;
    const int result = FirstIsHandled();
    // Until the recorder has printed once more, it would have got the event too.
    recorder.readAll();
    return result == Survived && recorder.waitForReadyRead() ? Survived : BadSetUp;
}

struct Case
{
    const char *Name;
    int (*Run)();
    DWORD ExitCode;
};

constexpr DWORD EndedByControl = 0xC000013A; // STATUS_CONTROL_C_EXIT

constexpr Case Cases[] = {
    {"the first Ctrl-C is handled, on a thread of its own", FirstIsHandled, Survived},
    {"a second Ctrl-C ends the process", SecondIsNotHandled, EndedByControl},
    {"an event that the handler refuses ends the process", RefusedByTheHandler, EndedByControl},
    {"Ctrl-C ends the process when the handler was removed", AfterTheRemoval, EndedByControl},
    {"the handler works once in a console that was opened later", InAConsoleOpenedLater, EndedByControl},
};

} // namespace

class ControlEventsWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void anEventMeetsTheHandler_data();
    void anEventMeetsTheHandler();
    void aDetachedRecorderDoesNotGetIt();
    void installFailsWithoutHandlerOrWhenThereIsOneAlready();

private:
    static DWORD RunSelf(const QString &argument);
};

/// Runs this program with an argument in a console of its own; returns its exit code.
DWORD ControlEventsWindowsTest::RunSelf(const QString &argument)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments *arguments) { arguments->flags |= CREATE_NO_WINDOW; });
    process.start(QCoreApplication::applicationFilePath(), QStringList{argument});
    process.waitForFinished();
    return static_cast<DWORD>(process.exitCode());
}

void ControlEventsWindowsTest::anEventMeetsTheHandler_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(Cases)); ++i)
        QTest::newRow(Cases[i].Name) << i;
}

void ControlEventsWindowsTest::anEventMeetsTheHandler()
{
    QFETCH(int, index);
    QCOMPARE(RunSelf(QString::number(index)), Cases[index].ExitCode);
}

void ControlEventsWindowsTest::aDetachedRecorderDoesNotGetIt()
{
    tools::RecorderReport report;
    report.SetOption("INTERVAL_MS", "50");
    report.SetOption("STATUS", "none");
    QCOMPARE(RunSelf(u"recorder"_s), DWORD{Survived});
    QCOMPARE(report.count(u"ready"_s), 1);
    QCOMPARE(report.count(u"terminate-request"_s), 0);
}

void ControlEventsWindowsTest::installFailsWithoutHandlerOrWhenThereIsOneAlready()
{
    QVERIFY(!platform::InstallControlHandler(nullptr));
    QVERIFY(platform::InstallControlHandler(LeaveToTheSystem));
    QVERIFY(!platform::InstallControlHandler(LeaveToTheSystem));
    platform::RemoveControlHandler();
}

int main(int argc, char **argv)
{
    if (argc == 2 && (argv[1] == std::string("recorder") || QByteArray(argv[1]).toInt() > 0 ||
                      argv[1] == std::string("0"))) {
        const QCoreApplication application(argc, argv);
        Handled = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        SetConsoleCtrlHandler(nullptr, FALSE); // the test's parent may have switched Ctrl-C off
        return argv[1] == std::string("recorder") ? WithARecorder()
                                                  : Cases[QByteArray(argv[1]).toInt()].Run();
    }
    const tools::IsolatedFolders isolation;
    QCoreApplication application(argc, argv);
    ControlEventsWindowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ControlEventsWindowsTest.moc"
