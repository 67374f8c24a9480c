// SPDX-License-Identifier: MIT
// Files that somebody else writes while a save is under way, and tables that a save would lose.
#include "alignment_merge/AlignmentSave.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/FailingAllocations.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/AlignmentSaveFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QFile>

#include <memory>

using namespace Qt::StringLiterals;

using tests::FileTable;
using tests::RtlFile;
using tests::TableBytes;
using tests::WriteAlignmentFile;

namespace {

using Tables = QList<FileTable>;

const QString Internal = u"Internal Error"_s;
const QString Changed = u"The table of RTL-SDR A has changed since the list was read.\n"
                        "Choose Reset and pick again."_s;

} // namespace

class AlignmentSave_MeanwhileTest : public tests::AlignmentSaveFixture
{
    Q_OBJECT

private slots:
    void aTableThatSomebodyElseAddsStays_data();
    void aTableThatSomebodyElseAddsStays();
    void whatIsWrittenWhileTheFileIsReadAgainStays_data();
    void whatIsWrittenWhileTheFileIsReadAgainStays();
    void aTableThatIsNotTheOneShownIsNotReplaced_data();
    void aTableThatIsNotTheOneShownIsNotReplaced();
    void aTableThatHasGoneMeanwhileIsTakenOverAllTheSame();
    void anImportThatWasReplacedIsNotTakenOver();
    void anOwnFileThatWasRemovedEndsTheSave();
    void anOwnFileThatAppearsKeepsItsTables();
    void anOwnFileThatComesAndGoesLeavesNothingBehind();
    void ofTwoTablesOfOneIdTheLatestIsTheOneShown_data();
    void ofTwoTablesOfOneIdTheLatestIsTheOneShown();
    void aCheckedTableIsNeverMissing_data();
    void aCheckedTableIsNeverMissing();
    void anImportedTableWithoutIdReplacesTheFirst();

private:
    /// Imports a newer A and lets somebody write `meanwhile` to the driver's file while the user chooses
    /// where to save.
    QString SaveWhile(const Tables &meanwhile);
};

QString AlignmentSave_MeanwhileTest::SaveWhile(const Tables &meanwhile)
{
    AnswerToFile = [this, meanwhile](const QString &proposal) {
        return WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, meanwhile) ? proposal : QString();
    };
    return Save(Choices());
}

void AlignmentSave_MeanwhileTest::aTableThatSomebodyElseAddsStays_data()
{
    QTest::addColumn<bool>("beforeSaving"); // else while the user chooses the file
    QTest::newRow("between reading the list and saving") << true;
    QTest::newRow("while the user chooses the file") << false;
}

void AlignmentSave_MeanwhileTest::aTableThatSomebodyElseAddsStays()
{
    QFETCH(bool, beforeSaving);
    const Tables more = {{"A", 5}, {"B", 5}, {"Z", 6}};
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    if (beforeSaving) {
        QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, more));
        QCOMPARE(Save(Choices()), QString());
    } else {
        QCOMPARE(SaveWhile(more), QString());
    }
    const auto after = TableBytes(path(RtlFile));
    QCOMPARE(after.keys(), (QList<QByteArray>{"A", "B", "Z"}));
    QCOMPARE(after["A"], TableBytes(imported(u"i.ad"_s))["A"]);
}

void AlignmentSave_MeanwhileTest::whatIsWrittenWhileTheFileIsReadAgainStays_data()
{
    QTest::addColumn<quint64>("times");
    QTest::addColumn<QString>("result");
    QTest::newRow("once") << quint64{1} << QString();
    QTest::newRow("again and again") << quint64{10'000} << u"File Error"_s;
}

void AlignmentSave_MeanwhileTest::whatIsWrittenWhileTheFileIsReadAgainStays()
{
    QFETCH(quint64, times);
    QFETCH(QString, result);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    quint64 written = 0; // the date of Z
    const auto write = [&] {
        if (WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"Z", written + 1}}))
            ++written;
    };
    std::unique_ptr<tests::AllocationWatch> reading; // which allocates
    AnswerToFile = [&](const QString &proposal) {
        write();
        reading = std::make_unique<tests::AllocationWatch>([&] {
            if (written <= times)
                write();
        });
        return proposal;
    };
    QCOMPARE(Save(Choices()), result);
    reading.reset();
    const bool saved = result.isEmpty();
    QCOMPARE(written > times, saved);
    const QString expected = path(u"expected.ad"_s);
    const quint64 dateOfA = saved ? 9 : 5;
    QVERIFY(WriteAlignmentFile(expected, SdrType::RtlSdr, {{"A", dateOfA}, {"Z", written}}));
    QCOMPARE(TableBytes(path(RtlFile)), TableBytes(expected));
}

void AlignmentSave_MeanwhileTest::aTableThatIsNotTheOneShownIsNotReplaced_data()
{
    QTest::addColumn<Tables>("shown");
    QTest::addColumn<Tables>("meanwhile");
    QTest::newRow("another date") << Tables{{"A", 5}, {"B", 5}} << Tables{{"A", 6}, {"B", 5}};
    QTest::newRow("an older date") << Tables{{"A", 5}, {"B", 5}} << Tables{{"A", 4}, {"B", 5}};
    QTest::newRow("shown as new, there now") << Tables{{"B", 5}} << Tables{{"B", 5}, {"A", 5}};
}

void AlignmentSave_MeanwhileTest::aTableThatIsNotTheOneShownIsNotReplaced()
{
    QFETCH(Tables, shown);
    QFETCH(Tables, meanwhile);
    // The table that has changed is not the first one that is taken over.
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"0", 9}, {"A", 9}}));
    for (const bool whileChoosing : {false, true}) {
        QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, shown));
        Rows.Clear();
        LoadStation({u"i.ad"_s});
        if (whileChoosing) {
            QCOMPARE(SaveWhile(meanwhile), Changed);
        } else {
            QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, meanwhile));
            QCOMPARE(Save(Choices()), Changed);
            QVERIFY(Proposed.isEmpty());
        }
        const QByteArray onDisk = tests::FileBytes(path(RtlFile));
        QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, meanwhile));
        QCOMPARE(tests::FileBytes(path(RtlFile)), onDisk); // what somebody else wrote
    }
}

void AlignmentSave_MeanwhileTest::aTableThatHasGoneMeanwhileIsTakenOverAllTheSame()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    QCOMPARE(SaveWhile({{"B", 5}}), QString());
    QCOMPARE(TableBytes(path(RtlFile)).keys(), (QList<QByteArray>{"A", "B"}));
}

void AlignmentSave_MeanwhileTest::anImportThatWasReplacedIsNotTakenOver()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 8}}));
    const QByteArray before = tests::FileBytes(path(RtlFile));
    QCOMPARE(Save(Choices()), Internal);
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
}

void AlignmentSave_MeanwhileTest::anOwnFileThatWasRemovedEndsTheSave()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    AnswerToFile = [this](const QString &proposal) {
        return QFile::remove(path(RtlFile)) ? proposal : QString();
    };
    QCOMPARE(Save(Choices()), u"File Error"_s);
    QVERIFY(!QFile::exists(path(RtlFile)));
}

void AlignmentSave_MeanwhileTest::anOwnFileThatAppearsKeepsItsTables()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    QCOMPARE(SaveWhile({{"Z", 1}}), QString());
    QCOMPARE(TableBytes(path(RtlFile)).keys(), (QList<QByteArray>{"A", "Z"}));
}

void AlignmentSave_MeanwhileTest::anOwnFileThatComesAndGoesLeavesNothingBehind()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(Choices(), Rows, Folder->path());
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"Z", 1}}));
    AlignmentSaveQuestions questions;
    questions.FileToWrite = [this](const QString &proposal) {
        return QFile::remove(path(RtlFile)) ? proposal : QString();
    };
    QCOMPARE(SaveAlignment(groups, questions), QString());
    QCOMPARE(TableBytes(path(RtlFile)).keys(), QList<QByteArray>{"A"});
}

void AlignmentSave_MeanwhileTest::ofTwoTablesOfOneIdTheLatestIsTheOneShown_data()
{
    QTest::addColumn<Tables>("own");
    QTest::newRow("the first") << Tables{{"A", 7}, {"A", 5}};
    QTest::newRow("the last") << Tables{{"A", 5}, {"A", 7}};
}

void AlignmentSave_MeanwhileTest::ofTwoTablesOfOneIdTheLatestIsTheOneShown()
{
    QFETCH(Tables, own);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, own));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices()), QString()); // nothing has changed meanwhile
    QVERIFY(TableBytes(path(RtlFile))["A"].endsWith(TableBytes(imported(u"i.ad"_s))["A"]));
}

void AlignmentSave_MeanwhileTest::aCheckedTableIsNeverMissing_data()
{
    QTest::addColumn<Tables>("first");
    QTest::addColumn<Tables>("second");
    QTest::newRow("an id that is the beginning of one taken over before")
        << Tables{{"ABCD", 9}} << Tables{{"AB", 9}};
    QTest::newRow("an id that begins with one taken over before") << Tables{{"AB", 9}} << Tables{{"ABCD", 9}};
    QTest::newRow("an empty id") << Tables{{"ABCD", 9}} << Tables{{"", 9}};
}

void AlignmentSave_MeanwhileTest::aCheckedTableIsNeverMissing()
{
    QFETCH(Tables, first);
    QFETCH(Tables, second);
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, first));
    QVERIFY(WriteAlignmentFile(imported(u"k.ad"_s), SdrType::RtlSdr, second));
    LoadStation({u"i.ad"_s, u"k.ad"_s});
    // In the list's order the second one removes the first one that was taken over, or the reverse.
    QCOMPARE(Save(Choices()), Internal);
    QVERIFY(Proposed.isEmpty());
    QVERIFY(!QFile::exists(path(RtlFile)));
}

void AlignmentSave_MeanwhileTest::anImportedTableWithoutIdReplacesTheFirst()
{
    // As the user guide says: an empty id is the beginning of every other.
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"", 9}}));
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(TableBytes(path(RtlFile)).keys(), (QList<QByteArray>{"", "B"}));
}

TARNVIK_TEST_MAIN(AlignmentSave_MeanwhileTest, QCoreApplication)

#include "AlignmentSave_MeanwhileTest.moc"
