// SPDX-License-Identifier: MIT
#include "tools/RecorderReport.h"

#include "Common_Files/RecorderNames.h"
#include "platform/QuitSignal.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSystemSemaphore>
#include <QThread>

using namespace Qt::StringLiterals;

namespace tools {

namespace {

constexpr int EndTimeoutMs = 5000;

QByteArray Variable(const char *option)
{
    return QByteArray("TARNVIK_STANDIN_") + option;
}

} // namespace

RecorderReport::RecorderReport()
{
    QFile::remove(file());
    QFile::remove(file() + u".starts"_s);
    SetOption("REPORT", QFile::encodeName(file()));
}

RecorderReport::~RecorderReport()
{
    KillRecorders(); // a test that failed may have left its recorder alone
    ClearOptions();
    qunsetenv(Variable("REPORT").constData());
    // A killed recorder leaves its semaphore in the system; the maker of one removes it at its end.
    const QSystemSemaphore maker(RecorderQuitKey, 0, QSystemSemaphore::Create);
}

QString RecorderReport::file()
{
    return QDir::tempPath() + u"/recorder report.txt"_s;
}

void RecorderReport::KillRecorders()
{
    const QList<RecorderEvent> all = events();
    for (const RecorderEvent &event : all) {
        if (event.Event != QLatin1String("started") || !IsAlive(event.ProcessId))
            continue;
        KillProcess(event.ProcessId);
        const QDeadlineTimer deadline(EndTimeoutMs);
        while (IsAlive(event.ProcessId) && !deadline.hasExpired())
            QThread::msleep(1);
    }
}

void RecorderReport::SetOption(const char *name, const QByteArray &value)
{
    qputenv(Variable(name).constData(), value);
    Options.append(QString::fromLatin1(name));
}

void RecorderReport::ClearOptions()
{
    for (const QString &option : std::as_const(Options)) {
        if (option != QLatin1String("REPORT"))
            qunsetenv(Variable(option.toLatin1().constData()).constData());
    }
}

QList<RecorderEvent> RecorderReport::events()
{
    QList<RecorderEvent> events;
    QFile report(file());
    if (!report.open(QIODevice::ReadOnly))
        return events;
    const QList<QByteArray> lines = report.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() == 3)
            events.append({fields[0].toLongLong(), fields[1].toLongLong(), QString::fromLatin1(fields[2])});
    }
    return events;
}

int RecorderReport::count(const QString &event) const
{
    return count(event, 0);
}

int RecorderReport::count(const QString &event, qint64 processId) const
{
    int count = 0;
    const QList<RecorderEvent> all = events();
    for (const RecorderEvent &one : all)
        count += one.Event == event && (processId == 0 || one.ProcessId == processId) ? 1 : 0;
    return count;
}

qint64 RecorderReport::lastProcess(const QString &event) const
{
    qint64 process = 0;
    const QList<RecorderEvent> all = events();
    for (const RecorderEvent &one : all) {
        if (one.Event == event)
            process = one.ProcessId;
    }
    return process;
}

bool RecorderReport::recorderListens(qint64 processId) const
{
    const qint64 process = processId != 0 ? processId : lastProcess(u"started"_s);
    return count(u"ready"_s, process) == 1 && IsAlive(process) &&
           platform::QuitSignalListeners(RecorderQuitKey) > 0;
}

QString StandInProgram()
{
    return QStringLiteral(TARNVIK_STANDIN_PROGRAM);
}

} // namespace tools
