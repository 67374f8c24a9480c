// SPDX-License-Identifier: MIT
// Finds the semaphore that Qt makes: a change of Qt's naming must show here.
#include "platform/QuitSignal.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QSystemSemaphore>

#include <thread>

class QuitSignalTest : public QObject
{
    Q_OBJECT

private slots:
    void theSemaphoreOfQtIsFound_data();
    void theSemaphoreOfQtIsFound();
    void aCountIsTakenAwayWhenNobodyListens();
    void aReleaseThatWasTakenIsNotGivenBack();
};

void QuitSignalTest::theSemaphoreOfQtIsFound_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("the recorder's key") << "TarnvikRecord_Quit";
    QTest::newRow("a key with digits, blanks and letters beyond ASCII")
        << QString::fromUtf8("1 Schlüssel / 你好");
}

void QuitSignalTest::theSemaphoreOfQtIsFound()
{
    QFETCH(QString, key);
    QVERIFY(!platform::QuitSignalHasListener(key));
    QSystemSemaphore semaphore(key, 0, QSystemSemaphore::Create);
    QVERIFY(!platform::QuitSignalHasListener(key));
    bool acquired = false;
    std::thread listener([&] { acquired = QSystemSemaphore(key).acquire(); });
    QTRY_VERIFY(platform::QuitSignalHasListener(key));
    QVERIFY(semaphore.release());
    listener.join();
    QVERIFY(acquired);
    QVERIFY(!platform::QuitSignalHasListener(key));
}

void QuitSignalTest::aCountIsTakenAwayWhenNobodyListens()
{
    const QString key = QStringLiteral("TarnvikRecord_Quit");
    QSystemSemaphore semaphore(key, 2, QSystemSemaphore::Create);
    QVERIFY(!platform::QuitSignalHasListener(key));
    std::thread listener([&] { semaphore.acquire(); });
    QTRY_VERIFY(platform::QuitSignalHasListener(key)); // it waits: the count of 2 is gone
    QVERIFY(QSystemSemaphore(key).release());
    listener.join();
}

void QuitSignalTest::aReleaseThatWasTakenIsNotGivenBack()
{
    const QString key = QStringLiteral("TarnvikRecord_Quit");
    QSystemSemaphore semaphore(key, 0, QSystemSemaphore::Create);
    QVERIFY(semaphore.release());
    platform::SettleQuitSignal(key);
    std::thread listener([&] { semaphore.acquire(); });
    QTRY_VERIFY(platform::QuitSignalHasListener(key));
    QVERIFY(QSystemSemaphore(key).release());
    listener.join();
}

TARNVIK_TEST_MAIN(QuitSignalTest, QCoreApplication)

#include "QuitSignalTest.moc"
