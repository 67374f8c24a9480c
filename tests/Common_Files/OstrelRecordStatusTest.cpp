// SPDX-License-Identifier: MIT
#include "Common_Files/OstrelRecordStatus.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMetaClassInfo>
#include <QMetaType>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Long enough for a delay that should not run to be over.
constexpr int BeyondTheDelay = 800;

QByteArray StatusText(quint32 sequenceNr, const QByteArray &message)
{
    return "SequenceNr=" + QByteArray::number(sequenceNr) +
           "\nLastAction=3\nLastActionResult=-7\nMessage=" + message + '\n';
}

StructOstrelRecordStatus StatusOf(quint32 sequenceNr, const QString &message)
{
    return {sequenceNr, 3, -7, message};
}

/// Rewrites the file in place, as the recorder does; false when that fails.
bool Rewrite(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

/// What the last signal carried.
StructOstrelRecordStatus LastSnapshot(const QSignalSpy &spy)
{
    return spy.isEmpty() ? StructOstrelRecordStatus() : spy.last().first().value<StructOstrelRecordStatus>();
}

} // namespace

/// Takes snapshots as the main window does: connected by the slot's name.
class SnapshotReceiver : public QObject
{
    Q_OBJECT

public:
    QList<StructOstrelRecordStatus> Received;

public slots:
    void Raw_FileChanged(const StructOstrelRecordStatus &snapshot) { Received.append(snapshot); }
};

class OstrelRecordStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theClassAndTheSnapshotAreKnownToTheMetaObjectSystem();

    void readsAStatusFile_data();
    void readsAStatusFile();
    void withoutAReadableFileTheSnapshotIsCleared_data();
    void withoutAReadableFileTheSnapshotIsCleared();
    void theLargestStatusFileIsReadAndALargerOneIsNot();
    void aFileOfTheSameSizeAndTimeStampIsReadAnew();
    void withoutRoomForACopyTheFileItselfIsRead();

    void classifiesAMessage_data();
    void classifiesAMessage();
    void theTagTableHasItsColours_data();
    void theTagTableHasItsColours();
    void aLongMessageTakesLinearTime_data();
    void aLongMessageTakesLinearTime();

    void twoNotifications100MsApartGiveOneSignal500MsAfterTheFirst();
    void aNotificationForTheSamePathTwiceWithinTheDelayIsReadOnce();
    void theLastPathOfABurstWins();
    void beforeAWatchIsSetAChangeIsReadAtOnce();
    void aChangeWhileTheSnapshotIsHandledIsNotLost();
    void aNewWatchDuringTheDelayDropsThePendingPaths();

    void aMissingFileCannotBeWatched();
    void anEmptyPathEndsTheWatch();
    void anotherPathTakesOverTheWatch();
    void afterAFolderAFileCanBeWatched();
    void aDeletedFileGivesAClearedSnapshot();
    void aRewriteRightAfterTheReadIsSeen();
    void aThousandRewritesAreReadAtMostEvery500MsAndTheLastIsNotLost();

private:
    [[nodiscard]] QString path(const char *name) const { return Folder->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> Folder;
};

void OstrelRecordStatusTest::init()
{
    Folder = std::make_unique<QTemporaryDir>();
    QVERIFY(Folder->isValid());
}

void OstrelRecordStatusTest::cleanup()
{
    Folder.reset();
}

void OstrelRecordStatusTest::theClassAndTheSnapshotAreKnownToTheMetaObjectSystem()
{
    QOstrelRecordStatus status;
    const QMetaObject &meta = *status.metaObject();
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Status")).value(), "Development");
    QVERIFY(QMetaType::fromName("StructOstrelRecordStatus").isValid());

    SnapshotReceiver receiver;
    QVERIFY(connect(&status, SIGNAL(Signal_FileChanged(const StructOstrelRecordStatus &)), &receiver,
                    SLOT(Raw_FileChanged(const StructOstrelRecordStatus &)), Qt::QueuedConnection));
    const StructOstrelRecordStatus sent = StatusOf(1, u"queued"_s);
    emit status.Signal_FileChanged(sent);
    QVERIFY(receiver.Received.isEmpty());
    QTRY_COMPARE(receiver.Received.size(), 1);
    QCOMPARE(receiver.Received.first(), sent);
}

void OstrelRecordStatusTest::readsAStatusFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<StructOstrelRecordStatus>("expected");

    constexpr quint32 invalid = 4294967295U;
    const QString message = u"on"_s;
    QTest::newRow("all keys") << StatusText(12, "on") << true << StatusOf(12, message);
    QTest::newRow("all keys in the group General")
        << QByteArray("[General]\n") + StatusText(12, "on") << true << StatusOf(12, message);
    QTest::newRow("all keys with line ends of Windows")
        << StatusText(12, "on").replace("\n", "\r\n") << true << StatusOf(12, message);
    QTest::newRow("a quoted message with comma and letters beyond ASCII")
        << StatusText(12, "\"<INFO>L\xc3\xa4uft, 5 \xe2\x82\xac\"") << true
        << StatusOf(12, u"<INFO>Läuft, 5 €"_s);
    QTest::newRow("without LastAction but with a valid SequenceNr LastAction is 8")
        << QByteArray("SequenceNr=1\nMessage=on\n") << true << StructOstrelRecordStatus{1, 8, 0, message};
    QTest::newRow("the largest valid SequenceNr")
        << StatusText(invalid - 1, "on") << true << StatusOf(invalid - 1, message);
    QTest::newRow("a SequenceNr of 4294967295 is not valid: only the sequence number is filled")
        << StatusText(invalid, "on") << false << StructOstrelRecordStatus{invalid, 0, 0, {}};
    QTest::newRow("a missing SequenceNr reads as 4294967295")
        << QByteArray("LastAction=3\nMessage=on\n") << false << StructOstrelRecordStatus{invalid, 0, 0, {}};
    QTest::newRow("a SequenceNr that is not a number")
        << QByteArray("SequenceNr=abc\nLastAction=3\nMessage=on\n") << false << StructOstrelRecordStatus{};
    QTest::newRow("a negative SequenceNr")
        << QByteArray("SequenceNr=-1\nLastAction=3\nMessage=on\n") << false << StructOstrelRecordStatus{};
    QTest::newRow("a SequenceNr above 32 bits")
        << QByteArray("SequenceNr=4294967296\nLastAction=3\nMessage=on\n") << false
        << StructOstrelRecordStatus{};
    QTest::newRow("without a message the numbers are filled all the same")
        << QByteArray("SequenceNr=5\nLastAction=3\nLastActionResult=-7\n") << false << StatusOf(5, QString());
    QTest::newRow("an empty message") << StatusText(5, "") << false << StatusOf(5, QString());
    QTest::newRow("a LastAction that is not a number reads as 0")
        << QByteArray("SequenceNr=5\nLastAction=x\nMessage=on\n") << true
        << StructOstrelRecordStatus{5, 0, 0, message};
    QTest::newRow("an empty file") << QByteArray() << false << StructOstrelRecordStatus{invalid, 0, 0, {}};
    QTest::newRow("a line without value cannot be parsed")
        << QByteArray("SequenceNr=5\nnot a setting\nMessage=on\n") << false << StructOstrelRecordStatus{};
}

void OstrelRecordStatusTest::readsAStatusFile()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, valid);
    QFETCH(const StructOstrelRecordStatus, expected);
    QVERIFY(Rewrite(path("status.ini"), content));

    StructOstrelRecordStatus snapshot = StatusOf(99, u"from an earlier read"_s);
    QCOMPARE(QOstrelRecordStatus::ReadStatusFile(path("status.ini"), snapshot), valid);
    QCOMPARE(snapshot.SequenceNr, expected.SequenceNr);
    QCOMPARE(snapshot.LastAction, expected.LastAction);
    QCOMPARE(snapshot.LastActionResult, expected.LastActionResult);
    QCOMPARE(snapshot.Message, expected.Message);
    // Nothing is left behind in the temporary folder.
    QVERIFY(QDir::temp().entryList({u"rfrecordstatus-*"_s}, QDir::Files).isEmpty());
}

void OstrelRecordStatusTest::withoutAReadableFileTheSnapshotIsCleared_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a missing file") << u"missing.ini"_s;
    QTest::newRow("a missing folder") << u"missing/status.ini"_s;
    QTest::newRow("a folder") << u"."_s;
}

void OstrelRecordStatusTest::withoutAReadableFileTheSnapshotIsCleared()
{
    QFETCH(const QString, name);
    StructOstrelRecordStatus snapshot = StatusOf(99, u"from an earlier read"_s);
    QVERIFY(!QOstrelRecordStatus::ReadStatusFile(Folder->filePath(name), snapshot));
    QCOMPARE(snapshot, StructOstrelRecordStatus());
}

void OstrelRecordStatusTest::theLargestStatusFileIsReadAndALargerOneIsNot()
{
    constexpr qsizetype limit = 1024 * 1024;
    QByteArray content = StatusText(1, "on") + ';';
    content.append(limit - content.size(), 'x');
    StructOstrelRecordStatus snapshot;
    QVERIFY(Rewrite(path("status.ini"), content));
    QVERIFY(QOstrelRecordStatus::ReadStatusFile(path("status.ini"), snapshot));
    QCOMPARE(snapshot, StatusOf(1, u"on"_s));

    QVERIFY(Rewrite(path("status.ini"), content + 'x'));
    QVERIFY(!QOstrelRecordStatus::ReadStatusFile(path("status.ini"), snapshot));
    QCOMPARE(snapshot, StructOstrelRecordStatus());

    QFile huge(path("status.ini"));
    QVERIFY(huge.resize(qint64(600) * limit));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!QOstrelRecordStatus::ReadStatusFile(path("status.ini"), snapshot));
    QVERIFY2(timer.elapsed() < 1000, "a huge file must not be read");
}

void OstrelRecordStatusTest::aFileOfTheSameSizeAndTimeStampIsReadAnew()
{
    const QDateTime stamp = QDateTime::currentDateTime().addSecs(-10);
    const auto rewriteWithStamp = [&](const QByteArray &content) {
        QFile file(path("status.ini"));
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
               file.write(content) == content.size() && file.flush() &&
               file.setFileTime(stamp, QFileDevice::FileModificationTime);
    };
    StructOstrelRecordStatus snapshot;
    for (quint32 sequenceNr = 1; sequenceNr <= 9; ++sequenceNr) {
        QVERIFY(rewriteWithStamp(StatusText(sequenceNr, "on")));
        QVERIFY(QOstrelRecordStatus::ReadStatusFile(path("status.ini"), snapshot));
        QCOMPARE(snapshot.SequenceNr, sequenceNr);
    }
}

void OstrelRecordStatusTest::withoutRoomForACopyTheFileItselfIsRead()
{
    const char *const variables[] = {"TMPDIR", "TMP", "TEMP"};
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    const QByteArray folder = qgetenv("TMPDIR");
    for (const char *variable : variables)
        qputenv(variable, folder + "/missing");
    StructOstrelRecordStatus snapshot;
    const bool valid = QOstrelRecordStatus::ReadStatusFile(path("status.ini"), snapshot);
    for (const char *variable : variables)
        qputenv(variable, folder);
    QVERIFY(valid);
    QCOMPARE(snapshot, StatusOf(1, u"on"_s));
}

void OstrelRecordStatusTest::classifiesAMessage_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("stripped");

    const auto row = [](const char *name, const char *message, const char *tag, const char *stripped) {
        QTest::newRow(name) << QString::fromLatin1(message) << QString::fromLatin1(tag)
                            << QString::fromLatin1(stripped);
    };
    row("<INFO>Started <ERROR>Device lost: the higher priority wins", "<INFO>Started <ERROR>Device lost",
        "<ERROR>", "Started Device lost");
    row("the higher priority wins from the front too", "<ERROR>Device lost<INFO>", "<ERROR>", "Device lost");
    row("<GET><SEND>: on equal priority the first wins", "<GET><SEND>", "<GET>", "");
    row("<WORK> found after <SEND> has equal priority", "<SEND>x<WORK>", "<SEND>", "x");
    row("a>b<INFO>: the first > before the first < ends the search", "a>b<INFO>", "", "a>b<INFO>");
    row("<FOO>text: an unknown tag is removed", "<FOO>text", "", "text");
    row("an unknown tag beside a known one", "<FOO>a<WORK>b<BAR>", "<WORK>", "ab");
    row("a > behind a tag ends the search", "<INFO>a>b<ERROR>", "<INFO>", "a>b<ERROR>");
    row("an opening bracket without closing one", "a<INFO", "", "a<INFO");
    row("a tag, then an opening bracket without closing one", "<INFO>a<ERROR", "<INFO>", "a<ERROR");
    row("a closing bracket alone", "a>b", "", "a>b");
    row("a tag within a tag is one unknown tag", "<<INFO>>x", "", ">x");
    row("empty brackets", "a<>b", "", "ab");
    row("a tag in lower case is unknown", "<info>x", "", "x");
    row("a tag with a blank is unknown", "<INFO >x", "", "x");
    row("a tag in the middle", "left <CONNECTING>right", "<CONNECTING>", "left right");
    row("no tag", "plain text", "", "plain text");
    row("an empty message", "", "", "");
}

void OstrelRecordStatusTest::classifiesAMessage()
{
    QFETCH(QString, message);
    QFETCH(const QString, tag);
    QFETCH(const QString, stripped);
    const StructMessageTag &row = QOstrelRecordStatus::GetMessageTag(message);
    QCOMPARE(row.Tag, tag);
    QCOMPARE(message, stripped);
    QCOMPARE(&row == &QOstrelRecordStatus::DefaultMessageTag(), tag.isEmpty());
}

void OstrelRecordStatusTest::theTagTableHasItsColours_data()
{
    QTest::addColumn<quint32>("colour");
    QTest::addColumn<int>("priority");
    QTest::newRow("<INFO>") << 0x69BCC0U << 50;
    QTest::newRow("<WARNING>") << 0xAEAF50U << 100;
    QTest::newRow("<ERROR>") << 0xBE8383U << 127;
    QTest::newRow("<GET>") << 0x000000U << 0;
    QTest::newRow("<SEND>") << 0x000000U << 0;
    QTest::newRow("<CONNECTING>") << 0x000000U << 0;
    QTest::newRow("<WORK>") << 0x76B859U << 0;
    QTest::newRow("") << 0x000000U << -128;
}

void OstrelRecordStatusTest::theTagTableHasItsColours()
{
    QFETCH(const quint32, colour);
    QFETCH(const int, priority);
    QString message = QString::fromLatin1(QTest::currentDataTag());
    const StructMessageTag &row = QOstrelRecordStatus::GetMessageTag(message);
    QCOMPARE(row.Tag, QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(row.Colour, colour);
    QCOMPARE(row.SecondColour, 0U);
    QCOMPARE(int(row.Priority), priority);
}

void OstrelRecordStatusTest::aLongMessageTakesLinearTime_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("remainder");
    QTest::newRow("tags only") << u"<INFO>"_s << QString();
    QTest::newRow("tags between text") << u"ab<WORK>"_s << u"ab"_s;
    QTest::newRow("opening brackets") << u"<"_s << u"<"_s;
    QTest::newRow("closing brackets") << u">"_s << u">"_s;
}

void OstrelRecordStatusTest::aLongMessageTakesLinearTime()
{
    QFETCH(const QString, unit);
    QFETCH(const QString, remainder);
    constexpr int units = 1'000'000; // cut one by one in place this would move terabytes
    QString message = unit.repeated(units);
    QElapsedTimer timer;
    timer.start();
    QOstrelRecordStatus::GetMessageTag(message);
    QVERIFY(timer.elapsed() < 10'000);
    QCOMPARE(message, remainder.repeated(units));
}

void OstrelRecordStatusTest::twoNotifications100MsApartGiveOneSignal500MsAfterTheFirst()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("status.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);

    // Timers of one thread fire in the order of their deadlines, however loaded the machine is.
    qsizetype signalsBefore = -1;
    qsizetype signalsAfter = -1;
    const auto at = [&](int milliseconds, auto &&action) {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &status, action);
    };
    status.Slot_fileChanged(path("status.ini"));
    at(100, [&] { status.Slot_fileChanged(path("status.ini")); });
    at(450, [&] { signalsBefore = spy.size(); });
    at(550, [&] { signalsAfter = spy.size(); });
    QTRY_VERIFY(signalsAfter >= 0);
    QCOMPARE(signalsBefore, 0);
    QCOMPARE(signalsAfter, 1);
    QCOMPARE(LastSnapshot(spy), StatusOf(1, u"on"_s));
    QVERIFY(!spy.wait(BeyondTheDelay));
}

void OstrelRecordStatusTest::aNotificationForTheSamePathTwiceWithinTheDelayIsReadOnce()
{
    QVERIFY(Rewrite(path("one.ini"), StatusText(1, "one")));
    QVERIFY(Rewrite(path("two.ini"), StatusText(2, "two")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("one.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path("one.ini"));
    status.Slot_fileChanged(path("two.ini"));
    status.Slot_fileChanged(path("one.ini")); // were it read again, it would be the last one read
    QVERIFY(spy.wait());
    QCOMPARE(LastSnapshot(spy), StatusOf(2, u"two"_s));
    QVERIFY(!spy.wait(BeyondTheDelay));
    QCOMPARE(spy.size(), 1);
}

void OstrelRecordStatusTest::theLastPathOfABurstWins()
{
    QVERIFY(Rewrite(path("one.ini"), StatusText(1, "one")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("one.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path("one.ini"));
    status.Slot_fileChanged(path("missing.ini")); // starts from a cleared snapshot
    QVERIFY(spy.wait());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(LastSnapshot(spy), StructOstrelRecordStatus());
}

void OstrelRecordStatusTest::beforeAWatchIsSetAChangeIsReadAtOnce()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path("status.ini"));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(LastSnapshot(spy), StatusOf(1, u"on"_s));
    QVERIFY(!spy.wait(BeyondTheDelay));
}

void OstrelRecordStatusTest::aChangeWhileTheSnapshotIsHandledIsNotLost()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("other.ini")) == false); // sets the delay, watches nothing
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    connect(&status, &QOstrelRecordStatus::Signal_FileChanged, this, [&] {
        if (spy.size() > 1)
            return;
        QVERIFY(Rewrite(path("status.ini"), StatusText(2, "next")));
        status.Slot_fileChanged(path("status.ini"));
    });
    status.Slot_fileChanged(path("status.ini"));
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(LastSnapshot(spy), StatusOf(2, u"next"_s));
}

void OstrelRecordStatusTest::aNewWatchDuringTheDelayDropsThePendingPaths()
{
    QVERIFY(Rewrite(path("one.ini"), StatusText(1, "one")));
    QVERIFY(Rewrite(path("two.ini"), StatusText(2, "two")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("one.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    status.Slot_fileChanged(path("one.ini"));
    QVERIFY(status.SetWatchFile(path("two.ini")));
    QVERIFY(spy.wait());
    QCOMPARE(LastSnapshot(spy), StructOstrelRecordStatus()); // the snapshot as it stands: nothing was read
}

void OstrelRecordStatusTest::aMissingFileCannotBeWatched()
{
    QOstrelRecordStatus status;
    QVERIFY(!status.SetWatchFile(path("status.ini")));
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QVERIFY(status.SetWatchFile(path("status.ini"))); // not taken for the path already watched
    QVERIFY(status.SetWatchFile(path("status.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path("status.ini"), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
}

void OstrelRecordStatusTest::anEmptyPathEndsTheWatch()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(QString()));
    QVERIFY(status.SetWatchFile(path("status.ini")));
    QVERIFY(status.SetWatchFile(QString()));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path("status.ini"), StatusText(2, "on")));
    QVERIFY(!spy.wait(BeyondTheDelay));
    QVERIFY(status.SetWatchFile(path("status.ini"))); // the path watched last: changes nothing
    QVERIFY(Rewrite(path("status.ini"), StatusText(3, "on")));
    QVERIFY(!spy.wait(BeyondTheDelay));
}

void OstrelRecordStatusTest::anotherPathTakesOverTheWatch()
{
    QVERIFY(Rewrite(path("one.ini"), StatusText(1, "one")));
    QVERIFY(Rewrite(path("two.ini"), StatusText(2, "two")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("one.ini")));
    QVERIFY(status.SetWatchFile(path("two.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path("one.ini"), StatusText(3, "one")));
    QVERIFY(!spy.wait(BeyondTheDelay));
    QVERIFY(Rewrite(path("two.ini"), StatusText(4, "two")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(4, u"two"_s));
}

void OstrelRecordStatusTest::afterAFolderAFileCanBeWatched()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(Folder->path()));
    QVERIFY(status.SetWatchFile(path("status.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path("status.ini"), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
}

void OstrelRecordStatusTest::aDeletedFileGivesAClearedSnapshot()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("status.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    QVERIFY(Rewrite(path("status.ini"), StatusText(2, "on")));
    QTRY_COMPARE(LastSnapshot(spy), StatusOf(2, u"on"_s));
    QVERIFY(QFile::remove(path("status.ini")));
    QTRY_COMPARE(LastSnapshot(spy), StructOstrelRecordStatus());
}

void OstrelRecordStatusTest::aRewriteRightAfterTheReadIsSeen()
{
    QVERIFY(Rewrite(path("status.ini"), StatusText(1, "on")));
    QOstrelRecordStatus status;
    QVERIFY(status.SetWatchFile(path("status.ini")));
    QSignalSpy spy(&status, &QOstrelRecordStatus::Signal_FileChanged);
    // Each snapshot is answered by the next rewrite at once: same size, and within one tick of the file's
    // clock.
    connect(&status, &QOstrelRecordStatus::Signal_FileChanged, this,
            [&](const StructOstrelRecordStatus &snapshot) {
                if (snapshot.SequenceNr < 5)
                    QVERIFY(Rewrite(path("status.ini"), StatusText(snapshot.SequenceNr + 1, "on")));
            });
    QVERIFY(Rewrite(path("status.ini"), StatusText(2, "on")));
    QTRY_COMPARE_WITH_TIMEOUT(LastSnapshot(spy), StatusOf(5, u"on"_s), tests::Patience);
}

void OstrelRecordStatusTest::aThousandRewritesAreReadAtMostEvery500MsAndTheLastIsNotLost()
{
    constexpr quint32 rewrites = 1000;
    const QString statusFile = path("status.ini");
    QVERIFY(Rewrite(statusFile, StatusText(0, "written")));
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

TARNVIK_TEST_MAIN(OstrelRecordStatusTest, QCoreApplication)
#include "OstrelRecordStatusTest.moc"
