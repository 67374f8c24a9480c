// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/RunnerTestTools.h"

#include <QMutex>
#include <QMutexLocker>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace tests {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto ClockTick = 20ms; // a system may count a timeout in ticks, and end it up to one too early

} // namespace

const QString ScriptedProgram = QStringLiteral(SCRIPTED_PROGRAM);

QList<HookCall> HookCalls;

void RecordHook(void *context, QString &program, QString &workingDirectory, QStringList &arguments)
{
    HookCalls.append({context, program, workingDirectory, arguments, QThread::currentThread()});
}

struct Timeline::Notes
{
    QMutex Mutex; // guards both lists: the loop and the test may each ask for a start
    QList<Clock::time_point> Starts;
    QList<Clock::time_point> Ends;
};

Timeline::Timeline(QAsyncWatchExec &runner) : TheNotes(std::make_shared<Notes>())
{
    QObject::connect(
        &runner, &QAsyncWatchExec::Signal_Start, &runner,
        [notes = TheNotes] {
            const auto now = Clock::now();
            const QMutexLocker lock(&notes->Mutex);
            notes->Starts.append(now);
        },
        Qt::DirectConnection);
    QObject::connect(
        &runner, &QAsyncWatchExec::stateChanged, &runner,
        [notes = TheNotes](int state) {
            if (state != QProcess::NotRunning)
                return;
            const auto now = Clock::now();
            const QMutexLocker lock(&notes->Mutex);
            notes->Ends.append(now);
        },
        Qt::DirectConnection);
}

qsizetype Timeline::startCount() const
{
    const QMutexLocker lock(&TheNotes->Mutex);
    return TheNotes->Starts.size();
}

QString Timeline::faultInPause(qsizetype end, std::chrono::milliseconds expected,
                               std::chrono::milliseconds slack) const
{
    const QMutexLocker lock(&TheNotes->Mutex);
    const auto start = TheNotes->Starts.at(end + 1);
    const auto sinceStart = start - TheNotes->Starts.at(end);
    const auto sinceEnd = start - TheNotes->Ends.at(end);
    if (sinceStart >= expected - ClockTick && sinceEnd < expected + slack)
        return {};
    const auto milliseconds = [](Clock::duration time) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
    };
    return u"after end %1 a pause of %2 ms was expected, but the start came %3 ms after the last "
           "one and %4 ms after the end"_s.arg(end)
               .arg(expected.count())
               .arg(milliseconds(sinceStart))
               .arg(milliseconds(sinceEnd));
}

void RunnerTest::init()
{
    RecorderFixture::init();
    HookCalls.clear();
}

} // namespace tests
