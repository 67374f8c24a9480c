// SPDX-License-Identifier: MIT
// Keeps one program running: starts it, restarts it with growing pauses when it ends, stops it on request.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringDecoder>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>

class QWaitForMultipleObjects;

/// Runs a program and keeps it running. A loop on the object's own thread decides when to (re)start it; the
/// process itself lives on the thread of the object (the GUI thread), which alone touches it. The two sides
/// share the event sets, the queued Signal_Start and atomics with the state of the process.
///
/// RestartRule says after which pause a process that ended is started again.
///
/// Every public operation belongs to the thread of the object.
class QAsyncWatchExec : public QThread
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    /// Called with its context, the program, the working folder and the arguments. What a start hook changes
    /// is what the process is given; what a stop hook changes takes effect at the next start.
    using Hook = void (*)(void *context, QString &program, QString &workingDirectory, QStringList &arguments);

    QString
        WorkingDirectory; ///< Working folder of the process; empty: the folder of this program, set by Start.
    QString Program;      ///< Full path of the executable.
    QStringList Arguments;

    QAsyncWatchExec();
    /// For meta-type registration only: a fresh runner with the same parent; no state is copied.
    QAsyncWatchExec(const QAsyncWatchExec &other);
    /// Stops the process like Stop.
    ~QAsyncWatchExec() override;

    /// Stops the process and the loop, if they run. The process is asked by the stop hook and then told to
    /// terminate: at once when nobody has taken the hook's request, and always at once on Windows, else 4500
    /// ms later. After 5000 ms it is killed. Blocks for up to 500 ms for the loop's farewell and 5000 ms for
    /// the end of the process, and shortly after a kill.
    ///
    /// The start hook and slots of stateChanged may call it. A process that is only being started then ends
    /// as soon as its start has returned, before control returns to the event loop.
    virtual void Stop();
    /// Stops what runs, then starts the loop, which starts the process. False when there is nothing to start
    /// (empty Program) or something inside cannot be set up. A program that cannot be executed is no failure
    /// here: it counts as one that ended, and is tried again.
    virtual bool Start();

    /// True while the process is up (not merely starting).
    [[nodiscard]] bool isProcessRunning() const;

    Hook StopHook = nullptr; ///< Called by Stop before the process is asked to terminate.
    void *StopHookContext = nullptr;
    Hook StartHook = nullptr; ///< Called before each start of the process.
    void *StartHookContext = nullptr;

    /// The length of the second in which the loop counts its pauses. Set it before Start.
    std::chrono::milliseconds Second{1000};

signals:
    /// The new QProcess::ProcessState: 0 not running, 1 starting, 2 running. Not emitted while Stop ends the
    /// process.
    void stateChanged(int state);
    /// The loop asks for a start of the process; delivered on the thread of the object.
    void Signal_Start();

protected:
    /// The watch loop.
    void run() override;

private slots:
    void Slot_Start();
    void Slot_readyReadStandardOutput();
    void Slot_readyReadStandardError();
    void Slot_stateChanged(QProcess::ProcessState state);

private:
    /// What the watch loop may know of the process: its state, and how many times it has ended.
    struct Account
    {
        QProcess::ProcessState State;
        std::uint32_t Ends;
    };

    [[nodiscard]] bool SetUpProcess();
    void RemoveControlEvents();
    static void LogOutput(const QByteArray &output, QStringDecoder &decoder);
    void Publish(QProcess::ProcessState state);
    [[nodiscard]] Account account() const;
    void StopLoopAndProcess();
    /// Calls the stop hook. True when its request is known to have been taken by a process that waited for
    /// it; Windows does not tell, and a request to terminate disturbs nobody there: it is only a message.
    bool AskToQuit();
    /// Asks, terminates, kills; then the process goes, as soon as nobody is inside it any more.
    void EndProcess(std::unique_ptr<QProcess> &process);

    std::unique_ptr<QProcess> Process;              // null while no process is set up
    std::unique_ptr<QProcess> StoppedWhileStarting; // set while its start has not returned yet
    const QProcess *BeingStarted = nullptr;         // set while its start has not returned yet
    std::unique_ptr<QWaitForMultipleObjects> ControlEvents;
    std::unique_ptr<QWaitForMultipleObjects> DoneEvents;
    int StopEventId = -1;
    int StateEventId = -1;
    int FinishedEventId = -1;
    std::atomic<bool> IsSetUp = false; // whether there is a process; the loop must not look at the pointer
    std::atomic<std::uint64_t> PackedAccount = 0;
    // A letter of several bytes may arrive in two pieces.
    QStringDecoder OutputDecoder{QStringDecoder::Utf8};
    QStringDecoder ErrorDecoder{QStringDecoder::Utf8};
};

Q_DECLARE_METATYPE(QAsyncWatchExec)
