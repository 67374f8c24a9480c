// SPDX-License-Identifier: MIT
// What the tests of the runner share.
#pragma once

#include "TarnvikControl/QAsyncWatchExec.h"
#include "tests/support/RecorderFixture.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>

namespace tests {

/// Full path of the program whose arguments say what it does.
extern const QString ScriptedProgram;

/// What a hook was called with, and on which thread.
struct HookCall
{
    void *Context = nullptr;
    QString Program;
    QString WorkingDirectory;
    QStringList Arguments;
    QThread *Thread = nullptr;
};

/// The calls of RecordHook since the test function began. Hooks are called on the test's own thread.
extern QList<HookCall> HookCalls;

/// A hook that changes nothing and notes its call in HookCalls.
void RecordHook(void *context, QString &program, QString &workingDirectory, QStringList &arguments);

/// When the runner's loop asked for starts and when the program ended, on one clock. Each is noted on the
/// thread on which it happens, so that a busy test thread does not blur the requests of the loop.
class Timeline
{
public:
    /// Takes notes for as long as the runner exists.
    explicit Timeline(QAsyncWatchExec &runner);

    [[nodiscard]] qsizetype startCount() const;
    /// What is wrong with the pause between an end, counted from 0, and the start that followed it; empty
    /// when the pause took the time expected, or longer by less than the slack.
    ///
    /// An end is noted a little after the loop has heard of it, and much later when the machine is busy. A
    /// pause that is too short is therefore told from the time between two starts, which no delay makes
    /// shorter than the pause.
    [[nodiscard]] QString faultInPause(qsizetype end, std::chrono::milliseconds expected,
                                       std::chrono::milliseconds slack) const;

private:
    struct Notes;
    std::shared_ptr<Notes> TheNotes; // shared with the runner's connections, which may outlive this object
};

/// Base of the runner's test classes: for each test function no calls in HookCalls.
class RunnerTest : public RecorderFixture
{
    Q_OBJECT

protected slots:
    void init();
};

} // namespace tests
