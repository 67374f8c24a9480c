// SPDX-License-Identifier: MIT
// Finds the semaphore that Qt makes: a change of Qt's naming must show here.
#include "platform/QuitSignal.h"

#include "Common_Files/RecorderNames.h"
#include "tests/support/TestMain.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSystemSemaphore>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

/// Waits on the semaphore on a thread of its own, until it is released or the object goes.
struct Listener
{
    explicit Listener(const QString &key)
        : Key(key), Thread([this] { Woken = QSystemSemaphore(Key).acquire(); })
    {}
    ~Listener()
    {
        while (!Woken) // a release before the thread waits stays for it
            QSystemSemaphore(Key).release();
        Thread.join();
    }
    Q_DISABLE_COPY_MOVE(Listener)

    QString Key;
    std::atomic<bool> Woken = false;
    std::thread Thread;
};

} // namespace

class QuitSignalTest : public QObject
{
    Q_OBJECT

private slots:
    void theSemaphoreOfQtIsFound_data();
    void theSemaphoreOfQtIsFound();
    void aCountThatNobodyTookIsTakenAway();
    void everyProcessThatWaitsIsAsked();
    void aProcessThatTookTheCountDoesNotGiveItBackAtItsEnd();
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
    QCOMPARE(platform::QuitSignalListeners(key), 0);
    QSystemSemaphore semaphore(key, 0, QSystemSemaphore::Create);
    QCOMPARE(platform::QuitSignalListeners(key), 0);
    const Listener listener(key);
    QTRY_COMPARE(platform::QuitSignalListeners(key), 1);
    QVERIFY(semaphore.release());
    // Counted out at once, by the release itself: so the sender can tell that the request was taken.
    QCOMPARE(platform::QuitSignalListeners(key), 0);
    QTRY_VERIFY(listener.Woken);
}

void QuitSignalTest::aCountThatNobodyTookIsTakenAway()
{
    QSystemSemaphore semaphore(RecorderQuitKey, 2, QSystemSemaphore::Create);
    platform::SendQuitSignal(RecorderQuitKey);
    const Listener listener(RecorderQuitKey);
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 1); // it waits: the count of 2 is gone
    QVERIFY(!listener.Woken);
}

void QuitSignalTest::everyProcessThatWaitsIsAsked()
{
    const QSystemSemaphore semaphore(RecorderQuitKey, 0, QSystemSemaphore::Create);
    const Listener first(RecorderQuitKey);
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 1);
    const Listener second(RecorderQuitKey);
    const Listener third(RecorderQuitKey);
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 3);
    platform::SendQuitSignal(RecorderQuitKey);
    QTRY_VERIFY(first.Woken && second.Woken && third.Woken);
    const Listener later(RecorderQuitKey);
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 1);
    QVERIFY(!later.Woken);
}

void QuitSignalTest::aProcessThatTookTheCountDoesNotGiveItBackAtItsEnd()
{
    tools::RecorderReport report;
    report.SetOption("INTERVAL_MS", "0");
    // Made here, so that the recorder is not its maker.
    const QSystemSemaphore semaphore(RecorderQuitKey, 0, QSystemSemaphore::Create);
    QProcess recorder;
    recorder.start(tools::StandInProgram(), QStringList());
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 1);
    platform::SendQuitSignal(RecorderQuitKey);
    QVERIFY(recorder.waitForFinished());
    QCOMPARE(report.count(u"quit-request"_s), 1);
    const Listener listener(RecorderQuitKey);
    QTRY_COMPARE(platform::QuitSignalListeners(RecorderQuitKey), 1);
    QVERIFY(!listener.Woken);
}

TARNVIK_TEST_MAIN(QuitSignalTest, QCoreApplication)

#include "QuitSignalTest.moc"
