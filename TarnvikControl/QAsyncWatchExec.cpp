// SPDX-License-Identifier: MIT
#include "TarnvikControl/QAsyncWatchExec.h"

#include "Common_Files/RecorderNames.h"
#include "Common_Files/WaitForMultipleObjects.h"
#include "TarnvikControl/RestartRule.h"
#include "platform/ChildProcess.h"
#include "platform/QuitSignal.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDebug>
#include <QPointer>

namespace {

constexpr int StateEvent = 1; // the id that Start's order of Add gives the state event

constexpr int FarewellTimeoutMs = 500;
constexpr int EndTimeoutMs = 5000;
// The part of EndTimeoutMs that a recorder has for itself once it has taken the quit request: a signal would
// cut short what it does then.
constexpr int AloneTimeoutMs = 4500;
constexpr int KillTimeoutMs = 100;

constexpr int Forever = -1;

} // namespace

QAsyncWatchExec::QAsyncWatchExec()
    : ControlEvents(std::make_unique<QWaitForMultipleObjects>()),
      DoneEvents(std::make_unique<QWaitForMultipleObjects>())
{
    connect(this, SIGNAL(Signal_Start()), this, SLOT(Slot_Start()), Qt::QueuedConnection);
}

QAsyncWatchExec::QAsyncWatchExec(const QAsyncWatchExec &other) : QAsyncWatchExec()
{
    setParent(other.parent());
}

QAsyncWatchExec::~QAsyncWatchExec()
{
    if (!Process)
        return;
    disconnect(this, SIGNAL(Signal_Start()), this, SLOT(Slot_Start()));
    Process->disconnect(this);
    if (isRunning())
        StopLoopAndProcess();
}

bool QAsyncWatchExec::Start()
{
    Stop();
    if (Program.isEmpty()) {
        RemoveControlEvents();
        return false;
    }
    if (WorkingDirectory.isEmpty())
        WorkingDirectory = QCoreApplication::applicationDirPath();
    ControlEvents->Clear();
    DoneEvents->Clear();
    StopEventId = ControlEvents->Add(0, false);
    StateEventId = ControlEvents->Add(0, true);
    FinishedEventId = DoneEvents->Add(0, false);
    if (StopEventId < 0 || StateEventId < 0 || FinishedEventId < 0) {
        qCritical("Error can not create internal resources'!");
        RemoveControlEvents();
        return false;
    }
    if (!SetUpProcess()) {
        RemoveControlEvents();
        return false;
    }
    start(QThread::InheritPriority);
    return true;
}

void QAsyncWatchExec::Stop()
{
    if (Process && isRunning())
        StopLoopAndProcess();
}

bool QAsyncWatchExec::isProcessRunning() const
{
    return Process && Process->state() == QProcess::Running;
}

bool QAsyncWatchExec::SetUpProcess()
{
    Process.reset(new QProcess(this));
    PackedAccount = 0;
    IsSetUp = true;
    platform::DetachFromThisProgram(*Process);
    return connect(Process.get(), SIGNAL(readyReadStandardOutput()), this,
                   SLOT(Slot_readyReadStandardOutput())) &&
           connect(Process.get(), SIGNAL(readyReadStandardError()), this,
                   SLOT(Slot_readyReadStandardError())) &&
           connect(Process.get(), SIGNAL(stateChanged(QProcess::ProcessState)), this,
                   SLOT(Slot_stateChanged(QProcess::ProcessState)));
}

void QAsyncWatchExec::RemoveControlEvents()
{
    ControlEvents->Remove(StopEventId);
    ControlEvents->Remove(StateEventId);
    StopEventId = StateEventId = -1;
}

void QAsyncWatchExec::run()
{
    if (!IsSetUp)
        return;
    emit Signal_Start();
    RestartRule rule;
    RestartRule::Decision decision;
    for (;;) {
        const int timeout =
            decision.Wait ? static_cast<int>(decision.Wait->count() * Second.count()) : Forever;
        const int event = ControlEvents->Wait(timeout);
        if (event != QWaitForMultipleObjects::Timeout && event != StateEvent)
            break;
        const auto [state, ends] = account();
        decision = rule.DecideOn(event == StateEvent ? RestartRule::Event::StateChanged
                                                     : RestartRule::Event::WaitIsOver,
                                 state, ends);
        if (decision.StartNow)
            emit Signal_Start();
    }
    DoneEvents->Set(FinishedEventId);
    exit(0);
}

void QAsyncWatchExec::Slot_Start()
{
    // A request that was still queued when the runner was started anew finds the process up already.
    if (!Process || Process->state() != QProcess::NotRunning)
        return;
    const QPointer<QProcess> process = Process.get();
    if (StartHook)
        StartHook(StartHookContext, Program, WorkingDirectory, Arguments);
    if (!process || process != Process.get()) // the hook has stopped the runner
        return;
    Process->setWorkingDirectory(WorkingDirectory);
    Process->setProgram(Program);
    Process->setArguments(Arguments);
    OutputDecoder.resetState();
    ErrorDecoder.resetState();
    const std::uint32_t endsBefore = account().Ends;
    BeingStarted = Process.get();
    Process->start(QIODevice::ReadOnly);
    BeingStarted = nullptr;
    if (StoppedWhileStarting) {
        EndProcess(StoppedWhileStarting);
        return;
    }
    // A start refused at once (a hook emptied the program) changes no state: the loop must hear of this end
    // too.
    if (Process->state() == QProcess::NotRunning && account().Ends == endsBefore)
        Slot_stateChanged(QProcess::NotRunning);
}

void QAsyncWatchExec::Slot_readyReadStandardOutput()
{
    if (Process)
        LogOutput(Process->readAllStandardOutput(), OutputDecoder);
}

void QAsyncWatchExec::Slot_readyReadStandardError()
{
    if (Process)
        LogOutput(Process->readAllStandardError(), ErrorDecoder);
}

void QAsyncWatchExec::LogOutput(const QByteArray &output, QStringDecoder &decoder)
{
    QString text = decoder.decode(output);
    text.remove(u'\n').remove(u'\r');
    qInfo().noquote() << text;
}

void QAsyncWatchExec::Slot_stateChanged(QProcess::ProcessState state)
{
    Publish(state);
    if (StateEventId >= 0)
        ControlEvents->Set(StateEventId);
    emit stateChanged(static_cast<int>(state));
}

void QAsyncWatchExec::Publish(QProcess::ProcessState state)
{
    const std::uint64_t ends = account().Ends + (state == QProcess::NotRunning ? 1U : 0U);
    PackedAccount = ends << 32 | static_cast<std::uint32_t>(state);
}

QAsyncWatchExec::Account QAsyncWatchExec::account() const
{
    const std::uint64_t packed = PackedAccount;
    return {static_cast<QProcess::ProcessState>(packed & 0xFFFFFFFFU),
            static_cast<std::uint32_t>(packed >> 32)};
}

void QAsyncWatchExec::StopLoopAndProcess()
{
    ControlEvents->Set(StopEventId);
    const bool farewell = DoneEvents->Wait(FarewellTimeoutMs) == FinishedEventId;
    if (farewell) {
        ControlEvents->Clear();
        DoneEvents->Clear();
    }
    disconnect(Process.get(), SIGNAL(stateChanged(QProcess::ProcessState)), this,
               SLOT(Slot_stateChanged(QProcess::ProcessState)));
    if (Process.get() == BeingStarted)
        StoppedWhileStarting = std::move(Process); // Slot_Start ends it
    else
        EndProcess(Process);
    IsSetUp = false;
    // The next Start needs a thread that has ended. A loop that is late still finds its stop event.
    wait();
    if (!farewell) {
        ControlEvents->Clear();
        DoneEvents->Clear();
    }
}

bool QAsyncWatchExec::AskToQuit()
{
    if (!StopHook)
        return false;
    const int listeners = platform::QuitSignalListeners(RecorderQuitKey);
    StopHook(StopHookContext, Program, WorkingDirectory, Arguments);
    return platform::QuitSignalListeners(RecorderQuitKey) < listeners;
}

void QAsyncWatchExec::EndProcess(std::unique_ptr<QProcess> &process)
{
    const bool quitRequestTaken = AskToQuit();
    const QDeadlineTimer deadline(EndTimeoutMs);
    const bool endedAlone = process->state() == QProcess::NotRunning ||
                            (quitRequestTaken && process->waitForFinished(AloneTimeoutMs));
    if (!endedAlone) {
        process->terminate();
        if (!process->waitForFinished(static_cast<int>(deadline.remainingTime())) &&
            process->state() != QProcess::NotRunning) {
            process->kill();
            process->waitForFinished(KillTimeoutMs);
        }
    }
    disconnect(process.get(), SIGNAL(readyReadStandardOutput()), this, SLOT(Slot_readyReadStandardOutput()));
    disconnect(process.get(), SIGNAL(readyReadStandardError()), this, SLOT(Slot_readyReadStandardError()));
    process.release()->deleteLater(); // one of its own signals may have led here
}
