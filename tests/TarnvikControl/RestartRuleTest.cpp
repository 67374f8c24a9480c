// SPDX-License-Identifier: MIT
// The pauses before a restart, without process, clock or thread.
#include "TarnvikControl/RestartRule.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QList>

#include <limits>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

using Event = RestartRule::Event;
using Milliseconds = QList<int>;

/// A process and a clock that exist in numbers only: it tells the rule of each event at its time.
class Simulation
{
public:
    /// Lets the process that was started last run for the time given and end; a time below 0 is a start that
    /// fails. Returns the pause until the rule starts it again, -1 when the rule waits for ever.
    int PauseAfterRun(int runMs)
    {
        Tell(Event::StateChanged, QProcess::Starting);
        if (runMs >= 0)
            Tell(Event::StateChanged, QProcess::Running);
        if (runMs >= 0 && Decision.Wait && *Decision.Wait <= milliseconds(runMs))
            Tell(Event::WaitIsOver, QProcess::Running);
        ++Ends;
        Tell(Event::StateChanged, QProcess::NotRunning);
        if (Decision.StartNow)
            return 0;
        if (!Decision.Wait)
            return -1;
        const milliseconds pause = *Decision.Wait;
        Tell(Event::WaitIsOver, QProcess::NotRunning);
        return Decision.StartNow ? static_cast<int>(pause.count()) : -1;
    }

    void Tell(Event event, QProcess::ProcessState state) { Decision = Rule.DecideOn(event, state, Ends); }

    RestartRule Rule;
    RestartRule::Decision Decision;
    std::uint32_t Ends = 0;
};

} // namespace

class RestartRuleTest : public QObject
{
    Q_OBJECT

private slots:
    void aPauseFollowsEachRun_data();
    void aPauseFollowsEachRun();
    void theWaitAfterAStartIsThatForSettling();
    void theFirstRunIsWatchedWithoutLimit();
    void aProcessThatIsStartingWhenThePauseIsOverIsLeftAlone();
    void oneEndToldTwiceIsAnsweredOnce();
    void anEndAndAStartToldAsOneEventAreNoEnd();
    void oneEventMayStandForSeveralEnds();
    void anEndThatIsCountedBeforeItIsToldIsAnswered();
    void theNumberOfEndsMayBeginAnew();
    void theWaitForAPauseEndsWithIt();
    void aChangeThatTellsNothingKeepsTheWait();
};

void RestartRuleTest::aPauseFollowsEachRun_data()
{
    QTest::addColumn<Milliseconds>("runs");
    QTest::addColumn<Milliseconds>("pauses");
    const Milliseconds series = {0, 5000, 10000, 15000, 20000, 25000, 30000, 30000, 30000};
    QTest::newRow("ends at once after every start") << Milliseconds(9, 0) << series;
    QTest::newRow("cannot be started") << Milliseconds(9, -1) << series;
    QTest::newRow("runs 9.9 s each time: the pauses grow on") << Milliseconds(9, 9900) << series;
    QTest::newRow("runs 10.1 s each time: always at once") << Milliseconds(9, 10100) << Milliseconds(9, 0);
    QTest::newRow("runs exactly 10 s each time: always at once")
        << Milliseconds(9, 10000) << Milliseconds(9, 0);
    QTest::newRow("a run of 10.1 s begins the series anew")
        << Milliseconds{0, 0, 0, 10100, 0, 0} << Milliseconds{0, 5000, 10000, 0, 5000, 10000};
    QTest::newRow("a run of 9.9 s does not")
        << Milliseconds{0, 0, 0, 9900, 0, 0} << Milliseconds{0, 5000, 10000, 15000, 20000, 25000};
    QTest::newRow("after the longest pause, too")
        << Milliseconds{0, 0, 0, 0, 0, 0, 0, 0, 10100, 0}
        << Milliseconds{0, 5000, 10000, 15000, 20000, 25000, 30000, 30000, 0, 5000};
    QTest::newRow("a first run of a day is no end in a series")
        << Milliseconds{86'400'000, 0, 0} << Milliseconds{0, 5000, 10000};
}

void RestartRuleTest::aPauseFollowsEachRun()
{
    QFETCH(Milliseconds, runs);
    QFETCH(Milliseconds, pauses);
    Simulation simulation;
    Milliseconds actual;
    for (const int run : runs)
        actual.append(simulation.PauseAfterRun(run));
    QCOMPARE(actual, pauses);
}

void RestartRuleTest::theWaitAfterAStartIsThatForSettling()
{
    Simulation simulation;
    QCOMPARE(simulation.PauseAfterRun(0), 0);
    simulation.Tell(Event::StateChanged, QProcess::Running);
    QVERIFY(!simulation.Decision.StartNow);
    QCOMPARE(simulation.Decision.Wait, std::optional(10s));
    simulation.Tell(Event::WaitIsOver, QProcess::Running); // it has settled
    QVERIFY(!simulation.Decision.StartNow);
    QVERIFY(!simulation.Decision.Wait);
}

void RestartRuleTest::theFirstRunIsWatchedWithoutLimit()
{
    Simulation simulation;
    simulation.Tell(Event::StateChanged, QProcess::Running);
    QVERIFY(!simulation.Decision.StartNow);
    QVERIFY(!simulation.Decision.Wait);
}

void RestartRuleTest::aProcessThatIsStartingWhenThePauseIsOverIsLeftAlone()
{
    Simulation simulation;
    QCOMPARE(simulation.PauseAfterRun(0), 0);
    ++simulation.Ends;
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QCOMPARE(simulation.Decision.Wait, std::optional(5s));
    simulation.Tell(Event::WaitIsOver, QProcess::Starting);
    QVERIFY(!simulation.Decision.StartNow);
    QCOMPARE(simulation.Decision.Wait, std::optional(5s)); // nothing is changed
    simulation.Tell(Event::StateChanged, QProcess::Running);
    QCOMPARE(simulation.Decision.Wait, std::optional(10s));
}

void RestartRuleTest::oneEndToldTwiceIsAnsweredOnce()
{
    Simulation simulation;
    ++simulation.Ends;
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QVERIFY(simulation.Decision.StartNow);
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QVERIFY(!simulation.Decision.StartNow);
    QVERIFY(!simulation.Decision.Wait);
    ++simulation.Ends;
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QCOMPARE(simulation.Decision.Wait, std::optional(5s)); // not 10
}

void RestartRuleTest::anEndAndAStartToldAsOneEventAreNoEnd()
{
    Simulation simulation;
    QCOMPARE(simulation.PauseAfterRun(0), 0);
    ++simulation.Ends; // ended and started again before the rule was told
    simulation.Tell(Event::StateChanged, QProcess::Running);
    QVERIFY(!simulation.Decision.StartNow);
    QCOMPARE(simulation.Decision.Wait, std::optional(10s));
}

void RestartRuleTest::oneEventMayStandForSeveralEnds()
{
    Simulation simulation;
    simulation.Ends = 2;
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QVERIFY(simulation.Decision.StartNow);
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QVERIFY(!simulation.Decision.StartNow);
    QVERIFY(!simulation.Decision.Wait);
}

void RestartRuleTest::anEndThatIsCountedBeforeItIsToldIsAnswered()
{
    Simulation simulation;
    ++simulation.Ends; // between the look at the state and that at the number
    simulation.Tell(Event::StateChanged, QProcess::Running);
    QVERIFY(!simulation.Decision.StartNow);
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QVERIFY(simulation.Decision.StartNow);
}

void RestartRuleTest::theNumberOfEndsMayBeginAnew()
{
    Simulation simulation;
    simulation.Ends = std::numeric_limits<std::uint32_t>::max();
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QVERIFY(simulation.Decision.StartNow);
    ++simulation.Ends;
    simulation.Tell(Event::StateChanged, QProcess::NotRunning);
    QCOMPARE(simulation.Decision.Wait, std::optional(5s));
}

void RestartRuleTest::theWaitForAPauseEndsWithIt()
{
    Simulation simulation;
    QCOMPARE(simulation.PauseAfterRun(0), 0);
    QCOMPARE(simulation.PauseAfterRun(0), 5000);
    QVERIFY(simulation.Decision.StartNow);
    QVERIFY(!simulation.Decision.Wait);
}

void RestartRuleTest::aChangeThatTellsNothingKeepsTheWait()
{
    Simulation simulation;
    simulation.Tell(Event::StateChanged, QProcess::NotRunning); // no end so far
    QVERIFY(!simulation.Decision.StartNow);
    QVERIFY(!simulation.Decision.Wait);
}

TARNVIK_TEST_MAIN(RestartRuleTest, QCoreApplication)

#include "RestartRuleTest.moc"
