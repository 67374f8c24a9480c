// SPDX-License-Identifier: MIT
// A stand-in recorder that runs as a child of the test.
#pragma once

#include "Common_Files/RecorderNames.h"
#include "tests/support/WithoutConsole.h"
#include "tools/RecorderReport.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QString>
#include <QStringList>

namespace tests {

/// The content of a status file, read back as a watcher would.
struct StandInStatus
{
    quint32 SequenceNr = 0;
    int LastAction = 0;
    int LastActionResult = 0;
    QString Message;
};

inline StandInStatus ReadStatus()
{
    const QSettings status(RecorderStatusFile(), QSettings::IniFormat);
    return {status.value(QStringLiteral("SequenceNr")).toUInt(),
            status.value(QStringLiteral("LastAction")).toInt(),
            status.value(QStringLiteral("LastActionResult")).toInt(),
            status.value(QStringLiteral("Message")).toString()};
}

/// The process, and what it has printed so far. It is killed with this object.
class StandIn
{
public:
    StandIn() = default;
    ~StandIn()
    {
        if (Process.state() != QProcess::NotRunning) {
            Process.kill();
            Process.waitForFinished();
        }
    }
    Q_DISABLE_COPY_MOVE(StandIn)

    void Start()
    {
        LetRunWithoutConsole(Process);
        Process.start(tools::StandInProgram(), QStringList(), QIODevice::ReadOnly);
    }
    /// Takes in what the process has printed; true when a line of standard output equals the text given.
    bool HasPrinted(const QString &line)
    {
        Collect();
        return standardLines().contains(line);
    }
    /// Waits for the end; true when it was an ordinary one with this exit code.
    bool EndsWith(int exitCode)
    {
        if (Process.state() != QProcess::NotRunning)
            Process.waitForFinished();
        Collect();
        return Process.error() == QProcess::UnknownError && Process.state() == QProcess::NotRunning &&
               Process.exitStatus() == QProcess::NormalExit && Process.exitCode() == exitCode;
    }
    void Collect()
    {
        Standard += Process.readAllStandardOutput();
        Error += Process.readAllStandardError();
    }
    [[nodiscard]] QStringList standardLines() const { return Lines(Standard); }
    [[nodiscard]] QStringList errorLines() const { return Lines(Error); }

    QProcess Process;

private:
    static QStringList Lines(const QByteArray &text)
    {
        return QString::fromUtf8(text).remove(u'\r').split(u'\n', Qt::SkipEmptyParts);
    }

    QByteArray Standard;
    QByteArray Error;
};

} // namespace tests
