// SPDX-License-Identifier: MIT
// A set of events one of whose threads comes to a standstill inside it: with the lock, or in its wait.
// Neither place is to be reached from outside, so a signal stops the thread.
#include "Common_Files/WaitForMultipleObjects.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <functional>
#include <limits>
#include <memory>
#include <thread>
#include <utility>

using Events = QWaitForMultipleObjects;

namespace {

constexpr int LockTimeoutMs = 1000; // after this an operation goes on without the lock

int Gate[2] = {-1, -1};
std::atomic<bool> IsStopped = false;

/// Stops the thread that gets the signal until a byte comes through the gate.
extern "C" void StopHere(int /*signalNumber*/)
{
    char byte = 0;
    IsStopped = true;
    (void)!read(Gate[0], &byte, 1);
    IsStopped = false;
}

/// A thread that can be stopped wherever it is; one at a time.
class StoppableThread
{
public:
    explicit StoppableThread(std::function<void()> function) : Thread(std::move(function)) {}
    /// Waits for its end.
    ~StoppableThread() { Thread.join(); }
    Q_DISABLE_COPY_MOVE(StoppableThread)

    void Stop()
    {
        pthread_kill(Thread.native_handle(), SIGUSR1);
        while (!IsStopped)
            std::this_thread::yield();
    }
    void GoOn()
    {
        (void)!write(Gate[1], "", 1);
        while (IsStopped)
            std::this_thread::yield();
    }

private:
    std::thread Thread;
};

/// Whether an operation on the set finds the lock taken.
bool FindsLockTaken(Events &events)
{
    QElapsedTimer timer;
    timer.start();
    events.Set(0); // of an empty set: it wakes nobody
    return timer.elapsed() >= LockTimeoutMs;
}

/// Stops the thread where it has the lock, or, when that never comes, elsewhere.
void StopWithLock(StoppableThread &user, Events &events)
{
    constexpr int mostTurns = 1000;
    user.Stop();
    for (int turn = 0; turn < mostTurns && !FindsLockTaken(events); ++turn) {
        user.GoOn(); // it was stopped between two of its turns
        user.Stop();
    }
}

} // namespace

class WaitForMultipleObjectsLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aLockThatWasNotTakenIsNotGivenBack();
    void aWaiterThatIsLateIsWaitedForUpTo100Ms();
};

void WaitForMultipleObjectsLinuxTest::initTestCase()
{
    QCOMPARE(pipe(Gate), 0);
    QVERIFY(std::signal(SIGUSR1, StopHere) != SIG_ERR);
}

void WaitForMultipleObjectsLinuxTest::aLockThatWasNotTakenIsNotGivenBack()
{
    Events events;
    bool isTaken = false;
    {
        std::atomic<bool> isOver = false;
        StoppableThread user([&] {
            while (!isOver)
                events.Set(0);
        });
        // The machine itself may stand for a second, which looks like a lock that is taken.
        for (int attempt = 0; attempt < 3 && !isTaken; ++attempt) {
            StopWithLock(user, events);
            isTaken = FindsLockTaken(events); // still, although somebody went on without it
            user.GoOn();
        }
        isOver = true;
    }
    QVERIFY(isTaken);
    QVERIFY(!FindsLockTaken(events)); // and the thread that had taken it has given it back
}

void WaitForMultipleObjectsLinuxTest::aWaiterThatIsLateIsWaitedForUpTo100Ms()
{
    // A busy machine only adds to the time.
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        auto events = std::make_unique<Events>();
        events->Add(0, true);
        std::atomic<int> result = 0;
        {
            StoppableThread waiter([&result, set = events.get()] { result = set->Wait(-1); });
            while (events->Wait(0) != Events::Failed) { // until the thread is inside its wait
            }
            waiter.Stop();
            QElapsedTimer timer;
            timer.start();
            events.reset();
            shortest = std::min(shortest, timer.elapsed());
            waiter.GoOn();
        }
        QCOMPARE(result.load(), Events::Cancelled);
    }
    QVERIFY2(shortest >= 100 && shortest < 150, qPrintable(QString::number(shortest)));
}

TARNVIK_TEST_MAIN(WaitForMultipleObjectsLinuxTest, QCoreApplication)

#include "WaitForMultipleObjectsLinuxTest.moc"
