// SPDX-License-Identifier: MIT
// A small recorder for demonstration and tests: it records nothing, but behaves like one towards the outside.
#pragma once

#include "Common_Files/SystemSignalling.h"
#include "recorder_standin/StandInOptions.h"
#include "recorder_standin/StandInReport.h"

#include <QObject>
#include <QTimer>

/// Waits for the quit request, rewrites the status file and prints lines, as its options say.
class StandInRecorder : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    StandInRecorder(const StandInOptions &options, const StandInReport &report);

    /// Begins to listen, to write and to print; needs a running event loop to go on.
    void Start();

private slots:
    void Slot_Quit();
    void Slot_WriteStatus();

private:
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
};
