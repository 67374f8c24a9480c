// SPDX-License-Identifier: MIT
// Stop and Start, called from what the runner itself calls: the start hook and stateChanged.
#include "TarnvikControl/QAsyncWatchExec.h"

#include "Common_Files/TarnvikBasic.h"
#include "tests/TarnvikControl/RunnerTestTools.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>

using namespace Qt::StringLiterals;

using tests::HookCalls;
using tests::RecordHook;
using tests::ScriptedProgram;

namespace {

/// What is called inside, and how often still.
struct Inside
{
    QAsyncWatchExec *Runner = nullptr;
    bool AndStart = false;
    int Calls = 1;

    void Call()
    {
        if (Calls-- <= 0)
            return;
        if (AndStart)
            QVERIFY(Runner->Start());
        else
            Runner->Stop();
    }
};

void CallInside(void *context, QString & /*program*/, QString & /*folder*/, QStringList & /*arguments*/)
{
    static_cast<Inside *>(context)->Call();
}

void AddStopAndStartRows(const QString &name, const std::function<void(QTestData &)> &addRest)
{
    for (const bool andStart : {false, true}) {
        const QString row = name + (andStart ? u", Start"_s : u", Stop"_s);
        addRest(QTest::newRow(qPrintable(row)) << andStart);
    }
}

} // namespace

class QAsyncWatchExec_StopInsideTest : public tests::RunnerTest
{
    Q_OBJECT

private slots:
    void calledByTheStartHook_data();
    void calledByTheStartHook();
    void calledByStateChanged_data();
    void calledByStateChanged();
    void whatIsStillStartingIsEndedLikeAnyOther();
};

void QAsyncWatchExec_StopInsideTest::calledByTheStartHook_data()
{
    QTest::addColumn<bool>("andStart");
    QTest::addColumn<int>("starts");
    AddStopAndStartRows(u"at the first start"_s, [](QTestData &row) { row << 0; });
    AddStopAndStartRows(u"at the second start"_s, [](QTestData &row) { row << 1; });
}

void QAsyncWatchExec_StopInsideTest::calledByTheStartHook()
{
    QFETCH(bool, andStart);
    QFETCH(int, starts);
    QAsyncWatchExec runner;
    Inside inside{&runner, andStart};
    runner.Program = tools::StandInProgram();
    if (starts == 1)
        QVERIFY(runner.Start());
    QTRY_COMPARE(Report->count(u"ready"_s), starts);
    runner.StartHook = CallInside;
    runner.StartHookContext = &inside;
    if (starts == 1)
        QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s))); // it is started again at once
    else
        QVERIFY(runner.Start());
    QTRY_VERIFY(inside.Calls <= 0);
    if (andStart) {
        QTRY_VERIFY(runner.isProcessRunning());
        QTRY_COMPARE(Report->count(u"started"_s), starts + 1);
    } else {
        QVERIFY(!runner.isRunning());
        QVERIFY(!runner.isProcessRunning());
        QVERIFY(runner.Start()); // and it works as before
        QTRY_VERIFY(runner.isProcessRunning());
        QTRY_COMPARE(Report->count(u"started"_s), starts + 1);
    }
}

void QAsyncWatchExec_StopInsideTest::calledByStateChanged_data()
{
    QTest::addColumn<bool>("andStart");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("program");
    const auto row = [](const char *name, QProcess::ProcessState state, const QString &program) {
        AddStopAndStartRows(QString::fromLatin1(name),
                            [&](QTestData &data) { data << int(state) << program; });
    };
    row("starting", QProcess::Starting, u"stand-in"_s);
    row("running", QProcess::Running, u"stand-in"_s);
    row("ended", QProcess::NotRunning, ScriptedProgram);
    row("could not be started", QProcess::NotRunning, u"missing"_s);
}

void QAsyncWatchExec_StopInsideTest::calledByStateChanged()
{
    QFETCH(bool, andStart);
    QFETCH(int, state);
    QFETCH(QString, program);
    const QTemporaryDir folder;
    QAsyncWatchExec runner;
    Inside inside{&runner, andStart};
    runner.Program = program == QLatin1String("stand-in")  ? tools::StandInProgram()
                     : program == QLatin1String("missing") ? folder.filePath(program)
                                                           : program;
    runner.Arguments = QStringList{u"exit:1"_s};
    qint64 longest = 0;
    connect(&runner, &QAsyncWatchExec::stateChanged, this, [&](int newState) {
        if (newState != state)
            return;
        QElapsedTimer timer;
        timer.start();
        // The next one is a program that stays.
        runner.Program = tools::StandInProgram();
        inside.Call();
        longest = qMax(longest, timer.elapsed());
    });
    QVERIFY(runner.Start());
    QTRY_VERIFY(inside.Calls <= 0);
    QVERIFY2(longest < 2000, qPrintable(QString::number(longest)));
    if (!andStart) {
        QTRY_VERIFY(!runner.isRunning());
        QVERIFY(!runner.isProcessRunning());
        QVERIFY(runner.Start());
    }
    QTRY_VERIFY(runner.isProcessRunning());
    const auto alive = [] {
        int count = 0;
        const QList<tools::RecorderEvent> events = tools::RecorderReport::events();
        for (const tools::RecorderEvent &event : events)
            count += event.Event == QLatin1String("started") && tools::IsAlive(event.ProcessId) ? 1 : 0;
        return count;
    };
    QTRY_COMPARE(alive(), 1); // only the last one
    runner.Stop();
    QTRY_COMPARE(alive(), 0);
}

void QAsyncWatchExec_StopInsideTest::whatIsStillStartingIsEndedLikeAnyOther()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"wait"_s};
    runner.StopHook = RecordHook;
    QSignalSpy states(&runner, &QAsyncWatchExec::stateChanged);
    connect(&runner, &QAsyncWatchExec::stateChanged, this, [&](int state) {
        if (state != QProcess::Starting)
            return;
        runner.Stop();
        QVERIFY(HookCalls.isEmpty()); // there is nobody to ask yet
        QVERIFY(!runner.isRunning());
    });
    QVERIFY(runner.Start());
    QTRY_COMPARE(HookCalls.size(), 1);
    QTRY_VERIFY(runner.findChildren<QProcess *>().isEmpty());
    QCOMPARE(states.count(), 1);
}

TARNVIK_TEST_MAIN(QAsyncWatchExec_StopInsideTest, QCoreApplication)

#include "QAsyncWatchExec_StopInsideTest.moc"
