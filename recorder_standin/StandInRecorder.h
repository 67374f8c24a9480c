// SPDX-License-Identifier: MIT
// A small recorder for demonstration and tests: it records nothing, but behaves like one towards the outside.
#pragma once

#include "Common_Files/SystemSignalling.h"
#include "recorder_standin/StandInOptions.h"
#include "recorder_standin/StandInReport.h"

#include <QObject>
#include <QTimer>

#include <atomic>

/// Waits for the quit request, rewrites the status file and prints lines, as its options say. When it is
/// asked to quit or to terminate, it closes its file, which takes its time, and ends.
class StandInRecorder : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    StandInRecorder(const StandInOptions &options, const StandInReport &report);

    /// Begins to listen, to write and to print; needs a running event loop to go on.
    void Start();

    /// Takes a request to terminate, on any thread. While the file is being closed after the quit request, it
    /// cuts that short: as SIGTERM ends a program that knows the quit request only. On Windows the request is
    /// a message for the thread that closes the file, so it comes when that is done.
    void Terminate();

private slots:
    void Slot_Quit();
    void Slot_WriteStatus();

private:
    void CloseFileAndEnd(int closeMs) const;
    void Flood() const;
    void End(int exitCode) const;
    [[nodiscard]] QString nextMessage() const;
    [[nodiscard]] QByteArray statusContent(const QString &message) const;

    const StandInOptions &Options;
    const StandInReport &Report;
    QSystemSignalling Signalling;
    QTimer StatusTimer;
    QString StatusFile;
    quint32 SequenceNr = 0;
    std::atomic<bool> IsObeyingQuit = false;
};
