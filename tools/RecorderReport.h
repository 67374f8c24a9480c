// SPDX-License-Identifier: MIT
// Reads what stand-in recorders report about themselves, and handles processes that are not our children.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tools {

/// One line of a stand-in's report.
struct RecorderEvent
{
    qint64 Microseconds = 0; ///< steady clock
    qint64 ProcessId = 0;
    QString Event;
};

/// The report file of all stand-ins that are started while it exists; it sets the environment variables by
/// which they are told to report. Options are environment variables without their common prefix
/// ("EXIT_AFTER_MS").
class RecorderReport
{
public:
    /// Starts with an empty report and no options, in the temporary folder.
    RecorderReport();
    ~RecorderReport();
    Q_DISABLE_COPY_MOVE(RecorderReport)

    void SetOption(const char *name, const QByteArray &value);
    void ClearOptions();

    /// Ends the recorders in the report that are still alive and waits until they are gone.
    static void KillRecorders();

    [[nodiscard]] static QString file();
    [[nodiscard]] static QList<RecorderEvent> events();
    /// How often an event is in the report.
    [[nodiscard]] int count(const QString &event) const;
    /// How often an event is in the report of one process.
    [[nodiscard]] int count(const QString &event, qint64 processId) const;
    /// The process of the last event of that kind, 0 when there is none.
    [[nodiscard]] qint64 lastProcess(const QString &event) const;
    /// True when a recorder is ready and will notice a quit request; without a process the one that started
    /// last.
    [[nodiscard]] bool recorderListens(qint64 processId = 0) const;

private:
    QStringList Options;
};

/// True while a process with this id exists and is not just waiting to be collected.
bool IsAlive(qint64 processId);
/// Ends a process at once, without giving it a chance to notice.
bool KillProcess(qint64 processId);
/// Full path of the stand-in recorder.
QString StandInProgram();

} // namespace tools
