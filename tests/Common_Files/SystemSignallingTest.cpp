// SPDX-License-Identifier: MIT
#include "Common_Files/SystemSignalling.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QSystemSemaphore>

#include <memory>

using namespace Qt::StringLiterals;

class SystemSignallingTest : public QObject
{
    Q_OBJECT

private slots:
    void aNewObjectHasNoEntries();
    void aReleaseTriggersTheNamedSignalOnce();
    void aReleaseBeforeTheWaitIsReportedByIt();
    void eachNameIsReportedByItself();
    void theWaitEndsWithTheTriggerAndCanBeginAnew();
    void waitFails_data();
    void waitFails();
    void destructionEndsWaitsThatNobodyTriggered();
    void destructionLeavesNoCountBehind();
};

void SystemSignallingTest::aNewObjectHasNoEntries()
{
    QSystemSignalling signalling;
    QVERIFY(!signalling.isWaiting(0));
    QVERIFY(!signalling.Wait(0));
}

void SystemSignallingTest::aReleaseTriggersTheNamedSignalOnce()
{
    QSystemSignalling signalling;
    QSignalSpy spy(&signalling, SIGNAL(Signal_Trigger(QString)));
    QCOMPARE(signalling.Add(u"first"_s), 0);
    QVERIFY(signalling.Wait(0));
    QVERIFY(signalling.isWaiting(0));
    QCOMPARE(spy.count(), 0);
    QSystemSemaphore sender(u"first"_s);
    QVERIFY(sender.release());
    QTRY_COMPARE(spy.count(), 1); // it may have come before a wait for it begins
    QCOMPARE(spy.at(0).at(0).toString(), u"first"_s);
}

void SystemSignallingTest::aReleaseBeforeTheWaitIsReportedByIt()
{
    QSystemSignalling signalling;
    QSignalSpy spy(&signalling, &QSystemSignalling::Signal_Trigger);
    QCOMPARE(signalling.Add(u"first"_s), 0);
    QSystemSemaphore sender(u"first"_s);
    QVERIFY(sender.release());
    QVERIFY(signalling.Wait(0));
    QTRY_COMPARE(spy.count(), 1);
}

void SystemSignallingTest::eachNameIsReportedByItself()
{
    QSystemSignalling signalling;
    QSignalSpy spy(&signalling, &QSystemSignalling::Signal_Trigger);
    QCOMPARE(signalling.Add(u"first"_s), 0);
    QCOMPARE(signalling.Add(u"second"_s), 1);
    QVERIFY(signalling.Wait(0));
    QVERIFY(signalling.Wait(1));
    QVERIFY(QSystemSemaphore(u"second"_s).release());
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), u"second"_s);
    QTRY_VERIFY(!signalling.isWaiting(1));
    QVERIFY(signalling.isWaiting(0));
}

void SystemSignallingTest::theWaitEndsWithTheTriggerAndCanBeginAnew()
{
    QSystemSignalling signalling;
    QSignalSpy spy(&signalling, &QSystemSignalling::Signal_Trigger);
    QCOMPARE(signalling.Add(u"first"_s), 0);
    QSystemSemaphore sender(u"first"_s);
    for (int round = 1; round <= 3; ++round) {
        QVERIFY(signalling.Wait(0));
        QVERIFY(sender.release());
        QTRY_COMPARE(spy.count(), round);
        QTRY_VERIFY(!signalling.isWaiting(0));
    }
    // What nobody waits for stays for the next one who does.
    QVERIFY(sender.release());
    QVERIFY(sender.acquire());
    QCOMPARE(spy.count(), 3);
}

void SystemSignallingTest::waitFails_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("for a negative index") << -1;
    QTest::newRow("for an index behind the last") << 1;
    QTest::newRow("for an entry that waits already") << 0;
}

void SystemSignallingTest::waitFails()
{
    QFETCH(int, index);
    QSystemSignalling signalling;
    QCOMPARE(signalling.Add(u"first"_s), 0);
    QVERIFY(signalling.Wait(0));
    QVERIFY(!signalling.Wait(index));
    QVERIFY(signalling.isWaiting(0));
}

void SystemSignallingTest::destructionEndsWaitsThatNobodyTriggered()
{
    for (int round = 0; round < 20; ++round) {
        auto signalling = std::make_unique<QSystemSignalling>();
        QSignalSpy spy(signalling.get(), &QSystemSignalling::Signal_Trigger);
        for (int index = 0; index < 5; ++index) {
            QCOMPARE(signalling->Add(u"name"_s + QChar(u'a' + index)), index);
            QVERIFY(signalling->Wait(index));
        }
        signalling.reset();
        QCOMPARE(spy.count(), 0);
    }
}

void SystemSignallingTest::destructionLeavesNoCountBehind()
{
    QSystemSemaphore other(u"first"_s, 0, QSystemSemaphore::Create);
    {
        QSystemSignalling signalling;
        QCOMPARE(signalling.Add(u"first"_s), 0);
        QVERIFY(signalling.Wait(0));
    }
    QSystemSignalling signalling;
    QSignalSpy spy(&signalling, &QSystemSignalling::Signal_Trigger);
    QCOMPARE(signalling.Add(u"first"_s), 0);
    QVERIFY(signalling.Wait(0));
    QVERIFY(!spy.wait(200)); // a count left behind would be taken at once
    QVERIFY(signalling.isWaiting(0));
}

TARNVIK_TEST_MAIN(SystemSignallingTest, QCoreApplication)

#include "SystemSignallingTest.moc"
