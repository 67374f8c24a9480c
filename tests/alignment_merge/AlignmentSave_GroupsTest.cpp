// SPDX-License-Identifier: MIT
// What a save of the alignment tables would take over.
#include "alignment_merge/AlignmentSave.h"

#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/AlignmentSaveFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

using tests::Rtl;
using tests::RtlFile;
using tests::WriteAlignmentFile;

class AlignmentSave_GroupsTest : public tests::AlignmentSaveFixture
{
    Q_OBJECT

private slots:
    void aRowIsTakenOverOnlyWhenChecked();
    void aNewRowOfAKnownDriverIsTakenFromItsFile();
    void anUncheckedRowLosesItsMark();
    void twoTablesOfOneImportedFileAreOneSource();
    void aDriverWithoutFileTakesOverWhatIsChecked();
    void theDriversOwnFileIsAbsolute_data();
    void theDriversOwnFileIsAbsolute();
    void rowsReadIntoAnEmptiedListCountAsTheDriversOwn();
    void aTableSeenInAnotherFileOfTheFolderIsNotComparedWithTheOwnOne();
    void theOwnFileIsRecognisedHoweverItIsSpelt();
    void choicesThatMatchNothingArePassedOver();
    void oneSourceNamesAHardwareIdOnce();

private:
    QList<DriverSaveGroup> Groups(const QList<AlignmentChoice> &choices)
    {
        return MarkRowsAndCollectSaveGroups(choices, Rows, Folder->path());
    }
};

void AlignmentSave_GroupsTest::aRowIsTakenOverOnlyWhenChecked()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}, {"C", 5}, {"D", 5}}));
    QVERIFY(
        WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 1}, {"C", 5}, {"D", 8}}));
    LoadStation({u"i.ad"_s});
    const QList<DriverSaveGroup> groups = Groups(Choices({u"RTL-SDR/D"_s}));
    QCOMPARE(groups.size(), 1);
    QCOMPARE(groups.first().SdrType, 3);
    QCOMPARE(groups.first().TargetPath, path(RtlFile));
    QCOMPARE(groups.first().Sources.size(), 1);
    QCOMPARE(groups.first().Sources.first().filePath(), imported(u"i.ad"_s));
    QCOMPARE(groups.first().Sources.first().picks(), (QList<AlignmentPick>{{u"A"_s, 9, 5, false}}));
    QVERIFY(Rows.Find(Rtl, u"A"_s)->has(AlignmentRow::takenOver));
    for (const char *id : {"B", "C", "D"})
        QVERIFY(!Rows.Find(Rtl, QString::fromLatin1(id))->has(AlignmentRow::takenOver));
}

void AlignmentSave_GroupsTest::aNewRowOfAKnownDriverIsTakenFromItsFile()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"N", 7}}));
    LoadStation({u"i.ad"_s});
    const QList<DriverSaveGroup> groups = Groups(Choices());
    QCOMPARE(groups.first().Sources.first().filePath(), imported(u"i.ad"_s));
    QCOMPARE(groups.first().Sources.first().picks(), (QList<AlignmentPick>{{u"N"_s, 7, {}, true}}));
}

void AlignmentSave_GroupsTest::anUncheckedRowLosesItsMark()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    (void)Groups(Choices());
    QVERIFY(Rows.rows().first().has(AlignmentRow::takenOver));
    const QList<DriverSaveGroup> groups = Groups(Choices({u"RTL-SDR/A"_s}));
    QVERIFY(!Rows.rows().first().has(AlignmentRow::takenOver));
    QVERIFY(groups.first().Sources.isEmpty());
}

void AlignmentSave_GroupsTest::twoTablesOfOneImportedFileAreOneSource()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    LoadStation({u"i.ad"_s});
    const QList<SaveSource> sources = Groups(Choices()).first().Sources;
    QCOMPARE(sources.size(), 1); // so the file is loaded once
    QCOMPARE(sources.first().picks(), (QList<AlignmentPick>{{u"A"_s, 9, 5, false}, {u"B"_s, 8, 5, false}}));
}

void AlignmentSave_GroupsTest::aDriverWithoutFileTakesOverWhatIsChecked()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    LoadStation({u"i.ad"_s});
    const QList<DriverSaveGroup> groups = Groups(Choices({u"RTL-SDR/A"_s}));
    QCOMPARE(groups.first().TargetPath, imported(u"i.ad"_s));
    QCOMPARE(groups.first().OwnFile, path(RtlFile));
    QVERIFY(!groups.first().HasOwnFile);
    QCOMPARE(groups.first().Sources.size(), 1);
    QCOMPARE(groups.first().Sources.first().picks(), (QList<AlignmentPick>{{u"B"_s, 8, {}, true}}));
    QVERIFY(!Rows.Find(Rtl, u"A"_s)->has(AlignmentRow::takenOver));
    QVERIFY(Rows.Find(Rtl, u"B"_s)->has(AlignmentRow::takenOver));
}

void AlignmentSave_GroupsTest::theDriversOwnFileIsAbsolute_data()
{
    QTest::addColumn<bool>("absolute");
    QTest::addColumn<QString>("name");
    QTest::newRow("relative") << false << u"import"_s;
    QTest::newRow("relative with a slash at its end") << false << u"import/"_s;
    QTest::newRow("absolute") << true << u"import"_s;
    QTest::newRow("absolute with a slash at its end") << true << u"import/"_s;
}

void AlignmentSave_GroupsTest::theDriversOwnFileIsAbsolute()
{
    QFETCH(bool, absolute);
    QFETCH(QString, name);
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(Folder->path()));
    const QString expected = (absolute ? Folder->path() : QDir::currentPath()) + u"/import/"_s + RtlFile;
    const QList<DriverSaveGroup> groups =
        MarkRowsAndCollectSaveGroups(Choices(), Rows, absolute ? path(name) : name);
    QVERIFY(QDir::setCurrent(before)); // Windows does not remove a folder that a process is in
    QCOMPARE(groups.first().OwnFile, expected);
}

void AlignmentSave_GroupsTest::rowsReadIntoAnEmptiedListCountAsTheDriversOwn()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 1}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    QCOMPARE(Rows.ReadFile(imported(u"i.ad"_s)), QString());
    const QList<DriverSaveGroup> groups = Groups(Choices());
    QVERIFY(groups.first().HasOwnFile);
    QVERIFY(groups.first().Sources.isEmpty());
    QVERIFY(!Rows.rows().first().has(AlignmentRow::takenOver));
}

void AlignmentSave_GroupsTest::aTableSeenInAnotherFileOfTheFolderIsNotComparedWithTheOwnOne()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 1}}));
    QVERIFY(WriteAlignmentFile(path(u"TarnvikDriver_Copy.ad"_s), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    const QList<AlignmentPick> picks = Groups(Choices()).first().Sources.first().picks();
    QCOMPARE(picks, (QList<AlignmentPick>{{u"A"_s, 9, {}, false}}));
    QCOMPARE(Save(Choices()), QString());
}

void AlignmentSave_GroupsTest::theOwnFileIsRecognisedHoweverItIsSpelt()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 1}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
#ifdef Q_OS_WIN
    const QString folder = Folder->path().toUpper();
#else
    const QString folder = path(u"link"_s);
    QVERIFY(QFile::link(Folder->path(), folder));
#endif
    const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(Choices(), Rows, folder);
    QCOMPARE(groups.first().Sources.first().picks(), (QList<AlignmentPick>{{u"A"_s, 9, 1, false}}));
}

void AlignmentSave_GroupsTest::choicesThatMatchNothingArePassedOver()
{
    const QList<AlignmentChoice> strangers = {
        {u"Nobody"_s, u"A"_s, true}, {QString(), u"A"_s, true}, {Rtl, u"A"_s, true}};
    const QList<DriverSaveGroup> groups = Groups(strangers);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(groups.first().SdrType, 3);
    QVERIFY(groups.first().Sources.isEmpty());
    QCOMPARE(Save(strangers), QString());
    QVERIFY(Asked.isEmpty() && Proposed.isEmpty());
}

void AlignmentSave_GroupsTest::oneSourceNamesAHardwareIdOnce()
{
    SaveSource source(u"i.ad"_s);
    source.Add({u"A"_s, 1});
    source.Add({u"B"_s, 2});
    source.Add({u"A"_s, 3});
    QCOMPARE(source.picks(), (QList<AlignmentPick>{{u"A"_s, 1}, {u"B"_s, 2}}));
}

TARNVIK_TEST_MAIN(AlignmentSave_GroupsTest, QCoreApplication)

#include "AlignmentSave_GroupsTest.moc"
