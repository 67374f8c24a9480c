// SPDX-License-Identifier: MIT
// A set of events whose lock is held for longer than anybody waits for it. The lock is not to be reached from
// outside, so the thread that holds it is stopped, by a signal.
#include "Common_Files/WaitForMultipleObjects.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

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

/// A thread that takes the lock of the set and gives it back, over and over, until it goes.
class LockUser
{
public:
    explicit LockUser(Events &events)
        : Thread([this, &events] {
              while (!IsOver)
                  events.Set(0); // of an empty set: it wakes nobody
          })
    {}
    ~LockUser()
    {
        IsOver = true;
        Thread.join();
    }
    Q_DISABLE_COPY_MOVE(LockUser)

    void Stop()
    {
        pthread_kill(Thread.native_handle(), SIGUSR1);
        while (!IsStopped)
            std::this_thread::yield();
    }
    static void GoOn()
    {
        (void)!write(Gate[1], "", 1);
        while (IsStopped)
            std::this_thread::yield();
    }

private:
    std::atomic<bool> IsOver = false;
    std::thread Thread;
};

/// Whether an operation on the set finds the lock taken.
bool FindsLockTaken(Events &events)
{
    QElapsedTimer timer;
    timer.start();
    events.Set(0);
    return timer.elapsed() >= LockTimeoutMs;
}

/// Stops the thread where it has the lock, or, when that never comes, elsewhere.
void StopWithLock(LockUser &user, Events &events)
{
    constexpr int mostTurns = 1000;
    user.Stop();
    for (int turn = 0; turn < mostTurns && !FindsLockTaken(events); ++turn) {
        LockUser::GoOn(); // it was stopped between two of its turns
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
        LockUser user(events);
        // The machine itself may stand for a second, which looks like a lock that is taken.
        for (int attempt = 0; attempt < 3 && !isTaken; ++attempt) {
            StopWithLock(user, events);
            isTaken = FindsLockTaken(events); // still, although somebody went on without it
            LockUser::GoOn();
        }
    }
    QVERIFY(isTaken);
    QVERIFY(!FindsLockTaken(events)); // and the thread that had taken it has given it back
}

TARNVIK_TEST_MAIN(WaitForMultipleObjectsLinuxTest, QCoreApplication)

#include "WaitForMultipleObjectsLinuxTest.moc"
