// SPDX-License-Identifier: MIT
// What is read from a status file, and what a message says.
#include "Common_Files/OstrelRecordStatus.h"
#include "tests/Common_Files/StatusFiles.h"
#include "tests/support/FolderFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMetaClassInfo>
#include <QMetaType>
#include <QTest>

using namespace Qt::StringLiterals;

using tests::Rewrite;
using tests::StatusOf;
using tests::StatusText;

/// Takes snapshots as the main window does: connected by the slot's name.
class SnapshotReceiver : public QObject
{
    Q_OBJECT

public:
    QList<StructOstrelRecordStatus> Received;

public slots:
    void Raw_FileChanged(const StructOstrelRecordStatus &snapshot) { Received.append(snapshot); }
};

class OstrelRecordStatusTest : public tests::FolderFixture
{
    Q_OBJECT

private slots:
    void theClassAndTheSnapshotAreKnownToTheMetaObjectSystem();

    void readsAStatusFile_data();
    void readsAStatusFile();
    void withoutAReadableFileTheSnapshotIsCleared_data();
    void withoutAReadableFileTheSnapshotIsCleared();
    void theLargestStatusFileIsReadAndALargerOneIsNot();
    void aFileOfTheSameSizeAndTimeStampIsReadAnew();
    void withoutRoomForACopyTheFileItselfIsRead();
    void anEmptyStatusFileIsMade_data();
    void anEmptyStatusFileIsMade();

    void classifiesAMessage_data();
    void classifiesAMessage();
    void theTagTableHasItsColours_data();
    void theTagTableHasItsColours();
    void aLongMessageTakesLinearTime_data();
    void aLongMessageTakesLinearTime();
};

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
    QVERIFY(Rewrite(path(u"status.ini"_s), content));

    StructOstrelRecordStatus snapshot = StatusOf(99, u"from an earlier read"_s);
    QCOMPARE(QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot), valid);
    QCOMPARE(snapshot.SequenceNr, expected.SequenceNr);
    QCOMPARE(snapshot.LastAction, expected.LastAction);
    QCOMPARE(snapshot.LastActionResult, expected.LastActionResult);
    QCOMPARE(snapshot.Message, expected.Message);
    // Nothing is left behind in the temporary folder.
    QVERIFY(QDir::temp().entryList({u"tarnvikini-*"_s}, QDir::Files).isEmpty());
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
    QVERIFY(Rewrite(path(u"status.ini"_s), content));
    QVERIFY(QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot));
    QCOMPARE(snapshot, StatusOf(1, u"on"_s));

    QVERIFY(Rewrite(path(u"status.ini"_s), content + 'x'));
    QVERIFY(!QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot));
    QCOMPARE(snapshot, StructOstrelRecordStatus());

    QFile huge(path(u"status.ini"_s));
    QVERIFY(huge.resize(qint64(600) * limit));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot));
    QVERIFY2(timer.elapsed() < 1000, "a huge file must not be read");
}

void OstrelRecordStatusTest::aFileOfTheSameSizeAndTimeStampIsReadAnew()
{
    const QDateTime stamp = QDateTime::currentDateTime().addSecs(-10);
    const auto rewriteWithStamp = [&](const QByteArray &content) {
        QFile file(path(u"status.ini"_s));
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
               file.write(content) == content.size() && file.flush() &&
               file.setFileTime(stamp, QFileDevice::FileModificationTime);
    };
    StructOstrelRecordStatus snapshot;
    for (quint32 sequenceNr = 1; sequenceNr <= 9; ++sequenceNr) {
        QVERIFY(rewriteWithStamp(StatusText(sequenceNr, "on")));
        QVERIFY(QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot));
        QCOMPARE(snapshot.SequenceNr, sequenceNr);
    }
}

void OstrelRecordStatusTest::withoutRoomForACopyTheFileItselfIsRead()
{
    const char *const variables[] = {"TMPDIR", "TMP", "TEMP"};
    QVERIFY(Rewrite(path(u"status.ini"_s), StatusText(1, "on")));
    const QByteArray folder = qgetenv("TMPDIR");
    for (const char *variable : variables)
        qputenv(variable, folder + "/missing");
    StructOstrelRecordStatus snapshot;
    const bool valid = QOstrelRecordStatus::ReadStatusFile(path(u"status.ini"_s), snapshot);
    for (const char *variable : variables)
        qputenv(variable, folder);
    QVERIFY(valid);
    QCOMPARE(snapshot, StatusOf(1, u"on"_s));
}

void OstrelRecordStatusTest::anEmptyStatusFileIsMade_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("made");
    QTest::newRow("where there is none") << u"status.ini"_s << true;
    QTest::newRow("in the place of an earlier one") << u"earlier.ini"_s << true;
    QTest::newRow("not in the place of a folder") << u"folder"_s << false;
    QTest::newRow("not in a folder that does not exist") << u"missing/status.ini"_s << false;
}

void OstrelRecordStatusTest::anEmptyStatusFileIsMade()
{
    QFETCH(const QString, name);
    QFETCH(const bool, made);
    QVERIFY(Rewrite(path(u"earlier.ini"_s), StatusText(1, "on")));
    QVERIFY(QDir(Folder->path()).mkdir(u"folder"_s));
    QCOMPARE(QOstrelRecordStatus::CreateStatusFile(path(name)), made);
    QCOMPARE(QFileInfo(path(name)).isFile(), made);
    if (!made)
        return;
    QCOMPARE(QFileInfo(path(name)).size(), qint64{0});
    // Whatever is written from now on has another time stamp.
    QVERIFY(QFileInfo(path(name)).lastModified().secsTo(QDateTime::currentDateTime()) > 30);
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

TARNVIK_TEST_MAIN(OstrelRecordStatusTest, QCoreApplication)
#include "OstrelRecordStatusTest.moc"
