// SPDX-License-Identifier: MIT
// When a changed status file is read: the delay, the watch and what they make of many changes.
#include "Common_Files/OstrelRecordStatus.h"
#include "tests/Common_Files/StatusFiles.h"
#include "tests/support/FolderFixture.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

using tests::Rewrite;
using tests::StatusOf;
using tests::StatusText;

namespace {

/// Longer than the delay. What has not come by then does not come.
constexpr int BeyondTheDelay = 800;

/// What the last signal carried.
StructOstrelRecordStatus LastSnapshot(const QSignalSpy &spy)
{
    return spy.isEmpty() ? StructOstrelRecordStatus() : spy.last().first().value<StructOstrelRecordStatus>();
}

} // namespace

class OstrelRecordStatus_WatchTest : public tests::FolderFixture
{
    Q_OBJECT

private slots:
    void twoNotifications100MsApartGiveOneSignal500MsAfterTheFirst();
    void aNotificationForTheSamePathTwiceWithinTheDelayIsReadOnce();
    void theLastPathOfABurstWins();
    void beforeAWatchIsSetAChangeIsReadAtOnce();
    void aChangeWhileTheSnapshotIsHandledIsNotLost();
    void aNewWatchDuringTheDelayDropsThePendingPaths();

    void aMissingFileCannotBeWatched();
    void afterARefusedFileTheOneBeforeCanBeWatchedAgain();
    void anEmptyPathEndsTheWatch();
    void anotherPathTakesOverTheWatch();
    void afterAFolderAFileCanBeWatched();
    void aDeletedFileGivesAClearedSnapshot();
    void aRewriteRightAfterTheReadIsSeen();
    void aThousandRewritesAreReadAtMostEvery500MsAndTheLastIsNotLost();
};

void OstrelRecordStatus_WatchTest::twoNotifications100MsApartGiveOneSignal500MsAfterTheFirst()
{
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);

    // Timers of one thread fire in the order of their deadlines, however loaded the machine is.
    qsizetype signalsBefore = -1;
    qsizetype signalsAfter = -1;
    const auto at = [&](int milliseconds, auto &&action) {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &status, action);
    };
    status.Slot_fileChanged(path(u"status.ini"_s));
    at(100, [&] { status.Slot_fileChanged(path(u"status.ini"_s)); });
    at(450, [&] { signalsBefore = spy.size(); });
    at(550, [&] { signalsAfter = spy.size(); });
    QTRY_VERIFY(signalsAfter >= 0);
    QCOMPARE(signalsBefore, 0);
    QCOMPARE(signalsAfter, 1);
    QCOMPARE(LastSnapshot(spy), StatusOf(1, u"on"_s));
    QVERIFY(!spy.wait(BeyondTheDelay));
}

void OstrelRecordStatus_WatchTest::aNotificationForTheSamePathTwiceWithinTheDelayIsReadOnce()
{
    QVERIFY(Rewrite(path(u"one.ini"_s), StatusText(1, "one")));
    QVERIFY(Rewrite(path(u"two.ini"_s), StatusText(2, "two")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"one.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path(u"one.ini"_s));
    status.Slot_fileChanged(path(u"two.ini"_s));
    status.Slot_fileChanged(path(u"one.ini"_s)); // a second read would make it the last one read
    QVERIFY(spy.wait());
    QCOMPARE(LastSnapshot(spy), StatusOf(2, u"two"_s));
    QVERIFY(!spy.wait(BeyondTheDelay));
    QCOMPARE(spy.size(), 1);
}

void OstrelRecordStatus_WatchTest::theLastPathOfABurstWins()
{
    QVERIFY(Rewrite(path(u"one.ini"_s), StatusText(1, "one")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"one.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path(u"one.ini"_s));
    status.Slot_fileChanged(path(u"missing.ini"_s)); // starts from a cleared snapshot
    QVERIFY(spy.wait());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(LastSnapshot(spy), StructOstrelRecordStatus());
}

void OstrelRecordStatus_WatchTest::beforeAWatchIsSetAChangeIsReadAtOnce()
{
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path(u"status.ini"_s));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(LastSnapshot(spy), StatusOf(1, u"on"_s));
    QVERIFY(!spy.wait(BeyondTheDelay));
}

void OstrelRecordStatus_WatchTest::aChangeWhileTheSnapshotIsHandledIsNotLost()
{
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"other.ini"_s)) == false); // sets the delay, watches nothing
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    connect(&status, &QOstrelRecordStatus::Signal_FileChanged, this, [&] {
        if (spy.size() > 1)
            return;
        QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "next")));
        status.Slot_fileChanged(path(u"status.ini"_s));
    });
    status.Slot_fileChanged(path(u"status.ini"_s));
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(LastSnapshot(spy), StatusOf(2, u"next"_s));
}

void OstrelRecordStatus_WatchTest::aNewWatchDuringTheDelayDropsThePendingPaths()
{
    QVERIFY(Rewrite(path(u"one.ini"_s), StatusText(1, "one")));
    QVERIFY(Rewrite(path(u"two.ini"_s), StatusText(2, "two")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"one.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path(u"one.ini"_s));
    QVERIFY(status.SetWatchFile(path(u"two.ini"_s)));
    QVERIFY(spy.wait());
    QCOMPARE(LastSnapshot(spy), StructOstrelRecordStatus()); // the snapshot as it stands: nothing was read
}

void OstrelRecordStatus_WatchTest::aMissingFileCannotBeWatched()
{
    QOstrelRecordStatus status;
    QVERIFY(!status.SetWatchFile(path(u"status.ini"_s)));
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s))); // not taken for the path already watched
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
}

void OstrelRecordStatus_WatchTest::afterARefusedFileTheOneBeforeCanBeWatchedAgain()
{
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QVERIFY(!status.SetWatchFile(path(u"missing.ini"_s)));
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s))); // not taken for the path already watched
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
}

void OstrelRecordStatus_WatchTest::anEmptyPathEndsTheWatch()
{
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(QString()));
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QVERIFY(status.SetWatchFile(QString()));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "on")));
    QVERIFY(!spy.wait(BeyondTheDelay));
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s))); // the path watched last: changes nothing
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(3, "on")));
    QVERIFY(!spy.wait(BeyondTheDelay));
}

void OstrelRecordStatus_WatchTest::anotherPathTakesOverTheWatch()
{
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"one.ini"_s)));
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"two.ini"_s)));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"one.ini"_s)));
    QVERIFY(status.SetWatchFile(path(u"two.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path(u"one.ini"_s), StatusText(3, "one")));
    QVERIFY(!spy.wait(BeyondTheDelay));
    QVERIFY(Rewrite(path(u"two.ini"_s), StatusText(4, "two")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(4, u"two"_s));
}

void OstrelRecordStatus_WatchTest::afterAFolderAFileCanBeWatched()
{
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(Folder->path()));
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
}

void OstrelRecordStatus_WatchTest::aDeletedFileGivesAClearedSnapshot()
{
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
    QVERIFY(QFile::remove(path(u"status.ini"_s)));
    QTRY_COMPARE(LastSnapshot(spy), StructOstrelRecordStatus());
}

void OstrelRecordStatus_WatchTest::aRewriteRightAfterTheReadIsSeen()
{
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(path(u"status.ini"_s)));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path(u"status.ini"_s)));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    // Each snapshot is answered by the next rewrite at once: same size, and within one tick of the file's
    // clock.
    connect(&status, &QOstrelRecordStatus::Signal_FileChanged, this,
            [&](const StructOstrelRecordStatus &snapshot) {
                if (snapshot.SequenceNr < 5)
                    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(snapshot.SequenceNr + 1, "on")));
            });
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(2, "on")));
    QTRY_COMPARE_WITH_TIMEOUT(LastSnapshot(spy), StatusOf(5, u"on"_s), tests::Patience);
}

void OstrelRecordStatus_WatchTest::aThousandRewritesAreReadAtMostEvery500MsAndTheLastIsNotLost()
{
    constexpr quint32 rewrites = 1000;
    const QString statusFile = path(u"status.ini"_s);
    QVERIFY(QOstrelRecordStatus::CreateStatusFile(statusFile));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(statusFile));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QElapsedTimer clock;
    QList<qint64> times;
    connect(&status, &QOstrelRecordStatus::Signal_FileChanged, this, [&] { times.append(clock.elapsed()); });

    // Truncated and written in two steps, so that a read may meet an empty or a half written file.
    bool written = true;
    const std::unique_ptr<QThread> recorder(QThread::create([&statusFile, &written] {
        for (quint32 sequenceNr = 1; sequenceNr <= rewrites && written; ++sequenceNr) {
            const QByteArray content = StatusText(sequenceNr, "written");
            QFile file(statusFile);
            written = file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                      file.write(content.first(20)) == 20 && file.flush() &&
                      file.write(content.sliced(20)) == content.size() - 20 && file.flush();
            QThread::msleep(10); // the recorder's pace: a thousand in ten seconds
        }
    }));
    clock.start();
    recorder->start();
    const StructOstrelRecordStatus last = StatusOf(rewrites, u"written"_s);
    QTRY_VERIFY_WITH_TIMEOUT(recorder->isFinished(), tests::LongPatience);
    QVERIFY(written);
    QTRY_COMPARE(LastSnapshot(spy), last);

    QVERIFY(times.size() > 1);
    for (qsizetype i = 1; i < times.size(); ++i)
        QVERIFY2(times[i] - times[i - 1] >= 499, qPrintable(QString::number(times[i] - times[i - 1])));
    QVERIFY2(times.size() <= times.last() / 500, qPrintable(QString::number(times.size())));

    // A change after the last read may still be under way; it brings the same content.
    spy.wait(BeyondTheDelay);
    QCOMPARE(LastSnapshot(spy), last);
}

TARNVIK_TEST_MAIN(OstrelRecordStatus_WatchTest, QCoreApplication)
#include "OstrelRecordStatus_WatchTest.moc"
