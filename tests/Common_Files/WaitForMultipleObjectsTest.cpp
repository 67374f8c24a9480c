// SPDX-License-Identifier: MIT
#include "Common_Files/WaitForMultipleObjects.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSemaphore>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

using Events = QWaitForMultipleObjects;

class WaitForMultipleObjectsTest : public QObject
{
    Q_OBJECT

private slots:
    void addGivesTheLowestFreeId();
    void addOnAFullSetGives64AndSet64Fails();
    void setFailsForIdsThatAreNotInTheSet_data();
    void setFailsForIdsThatAreNotInTheSet();
    void theLowerOfTwoSetEventsComesFirst();
    void aManualResetEventHidesHigherOnesUntilItIsRemoved();
    void anAutoResetEventSetBeforeTheWaitIsReturnedAtOnceAndLeftClear();
    void setTwiceBeforeTheWaitCountsOnce();
    void anIdIsClearWhenItIsGivenOutAgain();
    void clearForgetsSetEvents();
    void waitTimesOut_data();
    void waitTimesOut();
    void aChangeWithoutSetEventStartsTheTimeoutAnew_data();
    void aChangeWithoutSetEventStartsTheTimeoutAnew();
    void aSecondWaiterFailsAfter100Ms();
    void theWaiterGuardIsFreeAgainAfterAWait();
    void aWaitIsWokenByAnotherThread();
    void destroyingTheSetCancelsTheWait();
    void aSetInWhichNobodyWaitsGoesAtOnce();
    void manyThreadsSetEventsAndNoneIsLost();
    void aWaitDoesNotLoseWhatIsSetWhileItClearsAnother();
    void noOperationKeepsTheLock();
    void threadsThatAddAndRemoveNeverShareAnId();
    void whatIsSetWhileTheSetIsClearedIsNeverReturned();
};

void WaitForMultipleObjectsTest::addGivesTheLowestFreeId()
{
    Events events;
    QCOMPARE(events.Add(0, false), 0);
    QCOMPARE(events.Add(0, true), 1);
    QCOMPARE(events.Add(0, false), 2);
    events.Remove(1);
    QCOMPARE(events.Add(0, false), 1);
    QCOMPARE(events.Add(0, false), 3);
}

void WaitForMultipleObjectsTest::addOnAFullSetGives64AndSet64Fails()
{
    Events events;
    for (int id = 0; id < 64; ++id)
        QCOMPARE(events.Add(0, false), id);
    QCOMPARE(events.Add(0, false), 64);
    QVERIFY(!events.Set(64));
    events.Remove(64);
    QVERIFY(events.Set(63));
    QCOMPARE(events.Wait(0), 63);
    events.Remove(40);
    QCOMPARE(events.Add(0, false), 40);
}

void WaitForMultipleObjectsTest::setFailsForIdsThatAreNotInTheSet_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("an id that was never given out") << 1;
    QTest::newRow("an id that was removed") << 2;
    QTest::newRow("the first id beyond the set") << 64;
    QTest::newRow("an id far beyond the set") << 1000;
    QTest::newRow("a negative id") << -1;
}

void WaitForMultipleObjectsTest::setFailsForIdsThatAreNotInTheSet()
{
    QFETCH(int, id);
    Events events;
    for (int i = 0; i < 3; ++i)
        events.Add(0, false);
    events.Remove(1);
    events.Remove(2);
    QVERIFY(!events.Set(id));
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::theLowerOfTwoSetEventsComesFirst()
{
    Events events;
    for (int i = 0; i < 3; ++i)
        events.Add(0, true);
    QVERIFY(events.Set(2));
    QVERIFY(events.Set(1));
    QCOMPARE(events.Wait(-1), 1);
    QCOMPARE(events.Wait(-1), 2);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::aManualResetEventHidesHigherOnesUntilItIsRemoved()
{
    Events events;
    const int manual = events.Add(0, false);
    const int automatic = events.Add(0, true);
    QVERIFY(events.Set(automatic));
    QVERIFY(events.Set(manual));
    for (int i = 0; i < 5; ++i)
        QCOMPARE(events.Wait(-1), manual);
    events.Remove(manual);
    QCOMPARE(events.Wait(-1), automatic);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::anAutoResetEventSetBeforeTheWaitIsReturnedAtOnceAndLeftClear()
{
    Events events;
    const int id = events.Add(0, true);
    QVERIFY(events.Set(id));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(events.Wait(tests::LongPatience), id);
    QVERIFY(timer.elapsed() < 1000);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::setTwiceBeforeTheWaitCountsOnce()
{
    Events events;
    const int id = events.Add(0, true);
    QVERIFY(events.Set(id));
    QVERIFY(events.Set(id));
    QCOMPARE(events.Wait(-1), id);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::anIdIsClearWhenItIsGivenOutAgain()
{
    Events events;
    const int id = events.Add(0, false);
    QVERIFY(events.Set(id));
    events.Remove(id);
    QCOMPARE(events.Add(0, true), id);
    QCOMPARE(events.Wait(0), Events::Timeout);
    QVERIFY(events.Set(id)); // and it is auto-reset now
    QCOMPARE(events.Wait(0), id);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::clearForgetsSetEvents()
{
    Events events;
    events.Add(0, false);
    events.Add(0, false);
    QVERIFY(events.Set(0));
    events.Clear();
    QCOMPARE(events.Wait(0), Events::Timeout);
    QVERIFY(!events.Set(0));
    QCOMPARE(events.Add(0, false), 0);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::waitTimesOut_data()
{
    QTest::addColumn<int>("timeoutMs");
    QTest::newRow("at once") << 0;
    QTest::newRow("after 200 ms") << 200;
}

void WaitForMultipleObjectsTest::waitTimesOut()
{
    QFETCH(int, timeoutMs);
    Events events;
    events.Add(0, true);
    QElapsedTimer timer;
    timer.start();
    // The event just added is a change too, but no wake-up for a set that is empty of set events.
    QCOMPARE(events.Wait(timeoutMs), Events::Timeout);
    QVERIFY(timer.elapsed() >= timeoutMs);
}

void WaitForMultipleObjectsTest::aChangeWithoutSetEventStartsTheTimeoutAnew_data()
{
    QTest::addColumn<bool>("isEmpty");
    QTest::addColumn<bool>("byClear");
    QTest::addColumn<bool>("startsAnew");
    QTest::newRow("Remove") << false << false << true;
    QTest::newRow("Clear") << false << true << true;
    QTest::newRow("Clear of an empty set is no change") << true << true << false;
}

void WaitForMultipleObjectsTest::aChangeWithoutSetEventStartsTheTimeoutAnew()
{
    QFETCH(bool, isEmpty);
    QFETCH(bool, byClear);
    QFETCH(bool, startsAnew);
    Events events;
    if (!isEmpty)
        events.Add(0, true);
    QElapsedTimer timer;
    timer.start();
    std::thread changer([&] {
        QThread::msleep(600); // the moment of the change is what is tested
        if (byClear)
            events.Clear();
        else
            events.Remove(0);
    });
    QCOMPARE(events.Wait(900), Events::Timeout);
    const qint64 elapsed = timer.elapsed();
    changer.join();
    QVERIFY2(startsAnew ? elapsed >= 1500 : elapsed < 1500, qPrintable(QString::number(elapsed)));
}

void WaitForMultipleObjectsTest::aSecondWaiterFailsAfter100Ms()
{
    Events events;
    const int id = events.Add(0, true);
    QSemaphore begun;
    std::thread waiter([&] {
        begun.release();
        QCOMPARE(events.Wait(-1), id);
    });
    begun.acquire();
    while (events.Wait(0) == Events::Timeout) { // until the first waiter has the set to itself
    }
    // A busy machine only adds to the time.
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        QElapsedTimer timer;
        timer.start();
        const int result = events.Wait(0);
        shortest = qMin(shortest, timer.elapsed());
        if (result != Events::Failed)
            shortest = 0;
    }
    QVERIFY(events.Set(id));
    waiter.join();
    QVERIFY2(shortest >= 100 && shortest < 150, qPrintable(QString::number(shortest)));
}

void WaitForMultipleObjectsTest::theWaiterGuardIsFreeAgainAfterAWait()
{
    Events events;
    const int id = events.Add(0, true);
    QCOMPARE(events.Wait(0), Events::Timeout);
    QVERIFY(events.Set(id));
    QCOMPARE(events.Wait(0), id);
    QVERIFY(events.Set(id));
    QCOMPARE(events.Wait(0), id);
}

void WaitForMultipleObjectsTest::aWaitIsWokenByAnotherThread()
{
    Events events;
    events.Add(0, true);
    const int id = events.Add(0, true);
    std::thread setter([&] { QVERIFY(events.Set(id)); });
    QCOMPARE(events.Wait(-1), id);
    setter.join();
}

void WaitForMultipleObjectsTest::destroyingTheSetCancelsTheWait()
{
    qint64 shortest = tests::LongPatience;
    for (int round = 0; round < 20; ++round) {
        auto events = std::make_unique<Events>();
        events->Add(0, true);
        std::atomic<int> result = 0;
        QSemaphore begun;
        std::thread waiter([&result, &begun, set = events.get()] {
            begun.release();
            result = set->Wait(-1);
        });
        begun.acquire();
        while (events->Wait(0) != Events::Failed) { // until the thread is inside its wait
        }
        QElapsedTimer timer;
        timer.start();
        events.reset();
        shortest = std::min(shortest, timer.elapsed());
        waiter.join();
        QCOMPARE(result.load(), Events::Cancelled);
    }
    // The destructor waits for the waiter, up to 100 ms. One that returns at once is not waited for longer.
    QVERIFY2(shortest < 50, qPrintable(QString::number(shortest)));
}

void WaitForMultipleObjectsTest::aSetInWhichNobodyWaitsGoesAtOnce()
{
    // A busy machine only adds to the time.
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        auto events = std::make_unique<Events>();
        QElapsedTimer timer;
        timer.start();
        events.reset();
        shortest = qMin(shortest, timer.elapsed());
    }
    QVERIFY2(shortest < 50, qPrintable(QString::number(shortest))); // nobody's 100 ms
}

void WaitForMultipleObjectsTest::manyThreadsSetEventsAndNoneIsLost()
{
    constexpr int threadCount = 8;
    constexpr int rounds = 2000;
    Events events;
    QSemaphore answered[threadCount];
    for (int i = 0; i < threadCount; ++i)
        QCOMPARE(events.Add(0, true), i);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&events, &answer = answered[i], i] {
            for (int round = 0; round < rounds; ++round) {
                events.Set(i);
                answer.acquire();
            }
        });
    }
    std::vector<int> counts(threadCount, 0);
    for (int n = 0; n < threadCount * rounds; ++n) {
        const int id = events.Wait(tests::Patience);
        if (id < 0)
            break;
        ++counts[static_cast<std::size_t>(id)];
        answered[id].release();
    }
    const bool complete = counts == std::vector<int>(threadCount, rounds);
    for (QSemaphore &answer : answered)
        answer.release(complete ? 0 : rounds); // let the threads go when an event was lost
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(complete);
    QCOMPARE(events.Wait(0), Events::Timeout);
}

void WaitForMultipleObjectsTest::aWaitDoesNotLoseWhatIsSetWhileItClearsAnother()
{
    constexpr int rounds = 100'000;
    Events events;
    const int counted = events.Add(0, true);
    const int other = events.Add(0, true);
    std::atomic<int> answered = 0;
    std::atomic<bool> isOver = false;
    std::thread setter([&] {
        for (int round = 0; round < rounds && !isOver; ++round) {
            events.Set(counted);
            while (answered == round && !isOver)
                events.Set(other); // so that the wait has always something to clear
        }
    });
    QElapsedTimer sinceAnswer;
    sinceAnswer.start();
    while (answered < rounds && sinceAnswer.elapsed() < tests::Patience) {
        if (events.Wait(tests::Patience) == counted) {
            ++answered;
            sinceAnswer.start();
        }
    }
    isOver = true;
    setter.join();
    QCOMPARE(answered.load(), rounds);
}

void WaitForMultipleObjectsTest::noOperationKeepsTheLock()
{
    Events events;
    QElapsedTimer timer;
    timer.start();
    // Whoever finds the lock taken waits for a second; Wait waits for ever.
    for (int id = 0; id <= Events::Capacity; ++id) // the last one does not fit
        events.Add(0, false);
    events.Remove(5);
    QVERIFY(!events.Set(5));
    QVERIFY(events.Set(6));
    QCOMPARE(events.Wait(0), 6);
    events.Clear();
    events.Clear(); // nothing to do
    QCOMPARE(events.Wait(0), Events::Timeout);
    QCOMPARE(events.Add(0, false), 0);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

void WaitForMultipleObjectsTest::threadsThatAddAndRemoveNeverShareAnId()
{
    constexpr int threadCount = 2;
    constexpr int rounds = 20'000'000;
    Events events;
    std::atomic<int> owners[Events::Capacity + 1] = {};
    std::atomic<int> shared = 0;
    std::barrier gate(threadCount); // a thread does its rounds in the time that it takes to start another
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            gate.arrive_and_wait();
            for (int round = 0; round < rounds; ++round) {
                const int id = events.Add(0, false);
                shared += owners[id].fetch_add(1) == 0 ? 0 : 1;
                owners[id].fetch_sub(1);
                events.Remove(id);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(shared.load(), 0);
    for (int id = 0; id < Events::Capacity; ++id)
        QCOMPARE(events.Add(0, false), id); // none stayed behind
}

void WaitForMultipleObjectsTest::whatIsSetWhileTheSetIsClearedIsNeverReturned()
{
    constexpr int rounds = 5'000'000;
    Events events;
    std::atomic<bool> isOver = false;
    std::barrier gate(2);
    std::thread setter([&] {
        gate.arrive_and_wait();
        while (!isOver)
            events.Set(0);
    });
    gate.arrive_and_wait();
    int returned = 0;
    for (int round = 0; round < rounds; ++round) {
        events.Add(0, false);
        events.Clear();
        returned += events.Wait(0) == Events::Timeout ? 0 : 1;
    }
    isOver = true;
    setter.join();
    QCOMPARE(returned, 0);
}

TARNVIK_TEST_MAIN(WaitForMultipleObjectsTest, QCoreApplication)

#include "WaitForMultipleObjectsTest.moc"
