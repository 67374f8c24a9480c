// SPDX-License-Identifier: MIT
// What a save of the alignment tables would take over, and what it writes.
#include "alignment_merge/AlignmentSave.h"

#include "alignment/AlignStore.h"
#include "alignment_merge/AlignmentRowList.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/FailingAllocations.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;

using tests::FileTable;
using tests::TableBytes;
using tests::WriteAlignmentFile;

namespace {

const QString RtlFile = u"TarnvikDriver_RtlSdr.ad"_s;
const QString AirspyFile = u"TarnvikDriver_Airspy.ad"_s;
const QString Rtl = u"RTL-SDR"_s;
const QString AirSpy = u"AirSpy"_s;

} // namespace

class AlignmentSaveTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aRowIsTakenOverOnlyWhenChecked();
    void aNewRowOfAKnownDriverIsTakenFromItsFile();
    void anUncheckedRowLosesItsMark();
    void twoTablesOfOneImportedFileAreOneSource();
    void aRowOfANewDriverSetsTheTargetWhateverItsCheckMark();
    void choicesThatMatchNothingArePassedOver();
    void oneSourceNamesAHardwareIdOnce();

    void withNothingCheckedEveryDriverIsAskedAbout_data();
    void withNothingCheckedEveryDriverIsAskedAbout();
    void aCheckedTableReplacesTheOneInTheFile_data();
    void aCheckedTableReplacesTheOneInTheFile();
    void twoTablesFromOneFileAreBothTaken();
    void tablesFromSeveralFilesAreTaken();
    void aTableThatWasNotCheckedStaysByteByByte();
    void theFileIsWrittenWhereTheUserSays();
    void aSecondSaveMakesTheSameChoices();
    void aDriverThatTheUserLeavesOutDoesNotStopTheRun();
    void anErrorInTheSecondDriverLeavesTheFirstFileWritten();
    void tablesImportedIntoAnEmptiedListAreNotTakenOver();
    void aDriverWithoutAFileIsMadeFromTheImportedOne();
    void aDriverWithoutAFileTakesCheckedTablesOfSeveralImports();
    void aDriverOfAnUnknownTypeKeepsItsFileName();
    void anErrorIsReported_data();
    void anErrorIsReported();
    void aTableThatCannotBeTakenOverLeavesTheFileAsItIs_data();
    void aTableThatCannotBeTakenOverLeavesTheFileAsItIs();
    void withoutMemoryTheSaveEnds_data();
    void withoutMemoryTheSaveEnds();
    void aGroupWithoutTargetIsSkipped();

private:
    [[nodiscard]] QString path(const QString &name) const { return Folder->filePath(name); }
    [[nodiscard]] QString imported(const QString &name) const { return path(u"import/"_s + name); }
    /// Loads the drivers' files, then imports the files given.
    void LoadStation(const QStringList &imports = {});
    /// The choices as they are without the user; `changes` are "driver/id" of rows to be inverted.
    [[nodiscard]] QList<AlignmentChoice> Choices(const QStringList &changes = {});
    QString Save(const QList<AlignmentChoice> &chosen);

    std::unique_ptr<QTemporaryDir> Folder;
    AlignmentRowList Rows;
    QStringList Asked;    // about drivers without changes
    QStringList Proposed; // file names
    bool AnswerToUnchanged = true;
    std::function<QString(const QString &)> AnswerToFile;
};

void AlignmentSaveTest::init()
{
    Folder = std::make_unique<QTemporaryDir>();
    QVERIFY(Folder->isValid());
    QVERIFY(QDir(Folder->path()).mkpath(u"import"_s));
    Rows.Clear();
    Asked.clear();
    Proposed.clear();
    AnswerToUnchanged = true;
    AnswerToFile = [](const QString &proposal) { return proposal; };
}

void AlignmentSaveTest::cleanup()
{
    Folder.reset();
}

void AlignmentSaveTest::LoadStation(const QStringList &imports)
{
    QCOMPARE(Rows.LoadFolder(Folder->path(), u"TarnvikDriver_*.ad"_s), QString());
    for (const QString &name : imports)
        QCOMPARE(Rows.ReadFile(imported(name)), QString());
}

QList<AlignmentChoice> AlignmentSaveTest::Choices(const QStringList &changes)
{
    Rows.Sort();
    QList<AlignmentChoice> chosen;
    for (const AlignmentRow &row : Rows.rows()) {
        const bool changed = changes.contains(row.driver + u'/' + row.hardwareId);
        chosen.append({row.driver, row.hardwareId, IsTakenByDefault(OfferOf(row)) != changed});
    }
    return chosen;
}

QString AlignmentSaveTest::Save(const QList<AlignmentChoice> &chosen)
{
    AlignmentSaveQuestions questions;
    questions.SaveUnchanged = [this](const QString &driver) {
        Asked.append(driver);
        return AnswerToUnchanged;
    };
    questions.FileToWrite = [this](const QString &proposal) {
        Proposed.append(proposal);
        return AnswerToFile(proposal);
    };
    return SaveAlignment(MarkRowsAndCollectSaveGroups(chosen, Rows), Folder->path(), questions);
}

void AlignmentSaveTest::aRowIsTakenOverOnlyWhenChecked()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}, {"C", 5}, {"D", 5}}));
    QVERIFY(
        WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 1}, {"C", 5}, {"D", 8}}));
    LoadStation({u"i.ad"_s});
    const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(Choices({u"RTL-SDR/D"_s}), Rows);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(groups.first().SdrType, 3);
    QCOMPARE(groups.first().TargetPath, path(RtlFile));
    QCOMPARE(groups.first().Sources.size(), 1);
    QCOMPARE(groups.first().Sources.first().filePath(), imported(u"i.ad"_s));
    QCOMPARE(groups.first().Sources.first().picks(), (QList<AlignmentPick>{{u"A"_s, 9}}));
    QVERIFY(Rows.Find(Rtl, u"A"_s)->has(AlignmentRow::takenOver));
    for (const char *id : {"B", "C", "D"})
        QVERIFY(!Rows.Find(Rtl, QString::fromLatin1(id))->has(AlignmentRow::takenOver));
}

void AlignmentSaveTest::aNewRowOfAKnownDriverIsTakenFromItsFile()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"N", 7}}));
    LoadStation({u"i.ad"_s});
    const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(Choices(), Rows);
    QCOMPARE(groups.first().Sources.first().filePath(), imported(u"i.ad"_s));
    QCOMPARE(groups.first().Sources.first().picks(), (QList<AlignmentPick>{{u"N"_s, 7}}));
}

void AlignmentSaveTest::anUncheckedRowLosesItsMark()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    (void)MarkRowsAndCollectSaveGroups(Choices(), Rows);
    QVERIFY(Rows.rows().first().has(AlignmentRow::takenOver));
    const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(Choices({u"RTL-SDR/A"_s}), Rows);
    QVERIFY(!Rows.rows().first().has(AlignmentRow::takenOver));
    QVERIFY(groups.first().Sources.isEmpty());
}

void AlignmentSaveTest::twoTablesOfOneImportedFileAreOneSource()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    LoadStation({u"i.ad"_s});
    const QList<SaveSource> sources = MarkRowsAndCollectSaveGroups(Choices(), Rows).first().Sources;
    QCOMPARE(sources.size(), 1); // so the file is loaded once
    QCOMPARE(sources.first().picks(), (QList<AlignmentPick>{{u"A"_s, 9}, {u"B"_s, 8}}));
}

void AlignmentSaveTest::aRowOfANewDriverSetsTheTargetWhateverItsCheckMark()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    LoadStation({u"i.ad"_s});
    for (const QStringList &changes : {QStringList(), QStringList(u"RTL-SDR/A"_s)}) {
        const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(Choices(changes), Rows);
        QCOMPARE(groups.first().TargetPath, imported(u"i.ad"_s));
        QVERIFY(groups.first().Sources.isEmpty());
        QVERIFY(!Rows.rows().first().has(AlignmentRow::takenOver));
    }
}

void AlignmentSaveTest::choicesThatMatchNothingArePassedOver()
{
    const QList<AlignmentChoice> strangers = {
        {u"Nobody"_s, u"A"_s, true}, {QString(), u"A"_s, true}, {Rtl, u"A"_s, true}};
    const QList<DriverSaveGroup> groups = MarkRowsAndCollectSaveGroups(strangers, Rows);
    QCOMPARE(groups.size(), 1);
    QCOMPARE(groups.first().SdrType, 3);
    QVERIFY(groups.first().Sources.isEmpty());
    QCOMPARE(Save(strangers), QString());
    QVERIFY(Asked.isEmpty() && Proposed.isEmpty());
}

void AlignmentSaveTest::oneSourceNamesAHardwareIdOnce()
{
    SaveSource source(u"i.ad"_s);
    source.Add({u"A"_s, 1});
    source.Add({u"B"_s, 2});
    source.Add({u"A"_s, 3});
    QCOMPARE(source.picks(), (QList<AlignmentPick>{{u"A"_s, 1}, {u"B"_s, 2}}));
}

void AlignmentSaveTest::withNothingCheckedEveryDriverIsAskedAbout_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes rewrites the files unchanged at the chosen place") << true;
    QTest::newRow("no skips them") << false;
}

void AlignmentSaveTest::withNothingCheckedEveryDriverIsAskedAbout()
{
    QFETCH(bool, yes);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"B", 5}, {"A", 6}}));
    QVERIFY(WriteAlignmentFile(path(AirspyFile), SdrType::AirSpy, {{"A", 7}}));
    LoadStation();
    AnswerToUnchanged = yes;
    AnswerToFile = [](const QString &proposal) { return proposal + u".copy"_s; };
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(Asked, (QStringList{AirSpy, Rtl}));
    QCOMPARE(Proposed, yes ? (QStringList{path(AirspyFile), path(RtlFile)}) : QStringList());
    for (const QString &file : {path(RtlFile), path(AirspyFile)}) {
        QCOMPARE(QFile::exists(file + u".copy"_s), yes);
        if (yes)
            QCOMPARE(tests::FileBytes(file + u".copy"_s), tests::FileBytes(file));
    }
}

void AlignmentSaveTest::aCheckedTableReplacesTheOneInTheFile_data()
{
    QTest::addColumn<quint64>("importedDate");
    QTest::addColumn<bool>("invert");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("newer version, left checked") << quint64(9) << false << true;
    QTest::newRow("newer version, unchecked by the user") << quint64(9) << true << false;
    QTest::newRow("older version, left unchecked") << quint64(1) << false << false;
    QTest::newRow("older version, checked against the default") << quint64(1) << true << true;
}

void AlignmentSaveTest::aCheckedTableReplacesTheOneInTheFile()
{
    QFETCH(quint64, importedDate);
    QFETCH(bool, invert);
    QFETCH(bool, replaced);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 6}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", importedDate}}));
    const auto before = TableBytes(path(RtlFile));
    const auto source = TableBytes(imported(u"i.ad"_s));
    QVERIFY(before["A"] != source["A"]);
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices(invert ? QStringList(u"RTL-SDR/A"_s) : QStringList())), QString());
    QCOMPARE(Asked.isEmpty(), replaced);
    const auto after = TableBytes(path(RtlFile));
    QCOMPARE(after.size(), 2);
    QCOMPARE(after["A"], replaced ? source["A"] : before["A"]);
    QCOMPARE(after["B"], before["B"]);
}

void AlignmentSaveTest::twoTablesFromOneFileAreBothTaken()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 6}, {"C", 7}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"C", 9}, {"A", 8}}));
    const auto before = TableBytes(path(RtlFile));
    const auto source = TableBytes(imported(u"i.ad"_s));
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices()), QString());
    const auto after = TableBytes(path(RtlFile));
    QCOMPARE(after.size(), 3);
    QCOMPARE(after["A"], source["A"]);
    QCOMPARE(after["B"], before["B"]);
    QCOMPARE(after["C"], source["C"]);
}

void AlignmentSaveTest::tablesFromSeveralFilesAreTaken()
{
    QVERIFY(WriteAlignmentFile(path(AirspyFile), SdrType::AirSpy, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::AirSpy, {{"A", 9}}));
    QVERIFY(WriteAlignmentFile(imported(u"k.ad"_s), SdrType::AirSpy, {{"N", 8}, {"A", 7}}));
    LoadStation({u"i.ad"_s, u"k.ad"_s});
    QCOMPARE(Save(Choices()), QString());
    const auto after = TableBytes(path(AirspyFile));
    QCOMPARE(after.size(), 2);
    QCOMPARE(after["A"], TableBytes(imported(u"i.ad"_s))["A"]);
    QCOMPARE(after["N"], TableBytes(imported(u"k.ad"_s))["N"]);
}

void AlignmentSaveTest::aTableThatWasNotCheckedStaysByteByByte()
{
    // Forty random stations: what is checked is the imported version, everything else is as it was.
    std::mt19937_64 random(7);
    for (int round = 0; round < 40; ++round) {
        Rows.Clear();
        QList<FileTable> present;
        QList<FileTable> imports;
        for (int i = 0; i < 12; ++i) {
            const QByteArray id = "0x" + QByteArray::number(i, 16).rightJustified(4, '0');
            if (random() % 3 != 0)
                present.append({id, random() % 5});
            if (random() % 2 != 0)
                imports.append({id, random() % 5});
        }
        present.append({"0xffff", 1});
        imports.append({"0xfffe", 1});
        QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, present));
        QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, imports));
        const auto before = TableBytes(path(RtlFile));
        const auto source = TableBytes(imported(u"i.ad"_s));
        LoadStation({u"i.ad"_s});
        QList<AlignmentChoice> chosen = Choices();
        auto expected = before;
        for (AlignmentChoice &choice : chosen) {
            if (OfferOf(*Rows.Find(choice.driver, choice.hardwareId)) == AlignmentOffer::Nothing)
                continue;
            choice.checked = random() % 2 != 0;
            if (choice.checked)
                expected[choice.hardwareId.toLatin1()] = source[choice.hardwareId.toLatin1()];
        }
        QCOMPARE(Save(chosen), QString());
        QCOMPARE(TableBytes(path(RtlFile)), expected);
        QCOMPARE(TableBytes(imported(u"i.ad"_s)), source);
    }
}

void AlignmentSaveTest::theFileIsWrittenWhereTheUserSays()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    const QByteArray before = tests::FileBytes(path(RtlFile));
    LoadStation({u"i.ad"_s});
    QString elsewhere = path(QString::fromUtf8("Größe 1.ad"));
    AnswerToFile = [&elsewhere](const QString &) { return elsewhere; };
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(Proposed, QStringList(path(RtlFile)));
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
    QCOMPARE(TableBytes(elsewhere), TableBytes(imported(u"i.ad"_s)));
}

void AlignmentSaveTest::aSecondSaveMakesTheSameChoices()
{
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 1}}));
    LoadStation({u"i.ad"_s});
    const QByteArray before = tests::FileBytes(path(RtlFile));
    const QList<AlignmentChoice> chosen = Choices({u"RTL-SDR/B"_s}); // against the default
    QCOMPARE(Save(chosen), QString());
    const QList<AlignmentRow> rows = Rows.rows();
    const QByteArray once = tests::FileBytes(path(RtlFile));
    QVERIFY(once != before);
    // Back to the beginning, or a second save that does nothing would look the same.
    QVERIFY(tests::WriteFileBytes(path(RtlFile), before));
    QCOMPARE(Save(chosen), QString());
    QVERIFY(Rows.rows() == rows);
    QVERIFY(Asked.isEmpty());
    QCOMPARE(Proposed, (QStringList{path(RtlFile), path(RtlFile)}));
    QCOMPARE(tests::FileBytes(path(RtlFile)), once);
    QCOMPARE(TableBytes(path(RtlFile)), TableBytes(imported(u"i.ad"_s)));
}

void AlignmentSaveTest::aDriverThatTheUserLeavesOutDoesNotStopTheRun()
{
    QVERIFY(WriteAlignmentFile(path(AirspyFile), SdrType::AirSpy, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"a.ad"_s), SdrType::AirSpy, {{"A", 9}}));
    QVERIFY(WriteAlignmentFile(imported(u"r.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"a.ad"_s, u"r.ad"_s});
    const QByteArray airspy = tests::FileBytes(path(AirspyFile));
    AnswerToFile = [](const QString &proposal) {
        return proposal.endsWith(AirspyFile) ? QString() : proposal; // the first driver is cancelled
    };
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(Proposed, (QStringList{path(AirspyFile), path(RtlFile)}));
    QCOMPARE(tests::FileBytes(path(AirspyFile)), airspy);
    QCOMPARE(TableBytes(path(RtlFile)), TableBytes(imported(u"r.ad"_s)));
}

void AlignmentSaveTest::anErrorInTheSecondDriverLeavesTheFirstFileWritten()
{
    QVERIFY(WriteAlignmentFile(path(AirspyFile), SdrType::AirSpy, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"a.ad"_s), SdrType::AirSpy, {{"A", 9}}));
    QVERIFY(WriteAlignmentFile(imported(u"r.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"a.ad"_s, u"r.ad"_s});
    QVERIFY(tests::WriteFileBytes(path(RtlFile), "rubbish"));
    QCOMPARE(Save(Choices()), u"Version Missmatched"_s);
    QCOMPARE(Proposed, QStringList(path(AirspyFile)));
    QCOMPARE(TableBytes(path(AirspyFile)), TableBytes(imported(u"a.ad"_s)));
    QCOMPARE(tests::FileBytes(path(RtlFile)), QByteArray("rubbish"));
}

void AlignmentSaveTest::tablesImportedIntoAnEmptiedListAreNotTakenOver()
{
    // They count as the driver's own; the user guide warns of it.
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 1}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    const QByteArray before = tests::FileBytes(path(RtlFile));
    LoadStation();
    Rows.Clear();
    QCOMPARE(Rows.ReadFile(imported(u"i.ad"_s)), QString());
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(Asked, QStringList(Rtl));
    QCOMPARE(Proposed, QStringList(path(RtlFile)));
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
}

void AlignmentSaveTest::aDriverWithoutAFileIsMadeFromTheImportedOne()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}}));
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(Asked, QStringList(Rtl));
    QCOMPARE(Proposed, QStringList(path(RtlFile)));
    QCOMPARE(tests::FileBytes(path(RtlFile)), tests::FileBytes(imported(u"i.ad"_s)));
}

void AlignmentSaveTest::aDriverWithoutAFileTakesCheckedTablesOfSeveralImports()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"k.ad"_s), SdrType::RtlSdr, {{"B", 9}, {"C", 9}}));
    const auto first = TableBytes(imported(u"i.ad"_s));
    const auto second = TableBytes(imported(u"k.ad"_s));
    for (const QStringList &imports :
         {QStringList{u"i.ad"_s, u"k.ad"_s}, QStringList{u"k.ad"_s, u"i.ad"_s}}) {
        QFile::remove(path(RtlFile));
        Rows.Clear();
        LoadStation(imports);
        QCOMPARE(Save(Choices()), QString());
        const auto after = TableBytes(path(RtlFile));
        QCOMPARE(after.size(), 3);
        QCOMPARE(after["A"], first["A"]);
        QCOMPARE(after["B"], second["B"]);
        QCOMPARE(after["C"], second["C"]);
    }
}

void AlignmentSaveTest::aDriverOfAnUnknownTypeKeepsItsFileName()
{
    const QString file = path(u"TarnvikDriver_Seven.ad"_s);
    QVERIFY(WriteAlignmentFile(file, static_cast<SdrType>(7), {{"A", 5}}));
    LoadStation();
    const QByteArray before = tests::FileBytes(file);
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(Asked, QStringList(u"Driver 7"_s));
    QCOMPARE(Proposed, QStringList(file));
    QCOMPARE(tests::FileBytes(file), before);
}

void AlignmentSaveTest::anErrorIsReported_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("message");
    QTest::newRow("the target cannot be read") << "damaged target"
                                               << "Version Missmatched";
    QTest::newRow("the target is a folder") << "folder as target"
                                            << "File Error";
    QTest::newRow("the source has gone") << "no source"
                                         << "File Error";
    QTest::newRow("the source is of another type by now") << "other source"
                                                          << "AlignTable has the wrong SdrType";
    QTest::newRow("the file cannot be written") << "unwritable"
                                                << "File Error";
    QTest::newRow("nothing is left to be saved") << "empty target"
                                                 << "Aligntable-List is emptpy, nothing to save";
}

void AlignmentSaveTest::anErrorIsReported()
{
    QFETCH(QString, what);
    QFETCH(QString, message);
    const QString import = imported(u"i.ad"_s);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(import, SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    QList<AlignmentChoice> chosen = Choices();
    if (what == QLatin1String("damaged target")) {
        QVERIFY(tests::WriteFileBytes(path(RtlFile), "rubbish"));
    } else if (what == QLatin1String("folder as target")) {
        QVERIFY(QFile::remove(path(RtlFile)));
        QVERIFY(QDir(Folder->path()).mkpath(RtlFile));
    } else if (what == QLatin1String("no source")) {
        QVERIFY(QFile::remove(import));
    } else if (what == QLatin1String("other source")) {
        QVERIFY(WriteAlignmentFile(import, SdrType::AirSpy, {{"A", 9}}));
    } else if (what == QLatin1String("unwritable")) {
        AnswerToFile = [this](const QString &) { return path(u"missing/x.ad"_s); };
    } else {
        QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {}));
        chosen.first().checked = false;
    }
    const QByteArray before = tests::FileBytes(path(RtlFile));
    QCOMPARE(Save(chosen), message);
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
}

void AlignmentSaveTest::aTableThatCannotBeTakenOverLeavesTheFileAsItIs_data()
{
    QTest::addColumn<int>("sdrType");
    QTest::addColumn<QByteArray>("hwId");
    QTest::addColumn<int>("capacity"); // stated by the imported table
    QTest::newRow("its receiver type is unknown") << 7 << QByteArray("A") << 0;
    QTest::newRow("it states another number of data sets than its type has")
        << int(SdrType::RtlSdr) << QByteArray("A") << 3;
    // No local encoding is left as it is by the way to the dialog's texts and back.
    QTest::newRow("its hardware id is no text in the local encoding")
        << int(SdrType::RtlSdr) << QByteArray("A\x81\xFE\x81") << 1;
}

void AlignmentSaveTest::aTableThatCannotBeTakenOverLeavesTheFileAsItIs()
{
    QFETCH(int, sdrType);
    QFETCH(QByteArray, hwId);
    QFETCH(int, capacity);
    const auto type = static_cast<SdrType>(sdrType);
    const QString file = path(u"TarnvikDriver_RtlSdr.ad"_s);
    const QString import = imported(u"i.ad"_s);
    QVERIFY(WriteAlignmentFile(file, type, {{hwId, 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(import, type, {{hwId, 9}}));
    AlignStore store;
    QCOMPARE(store.LoadFile(import, store.Tables, true), AlignResult::Ok);
    store.Tables.Head->Table->DataSetCapacity = static_cast<std::uint8_t>(capacity);
    QCOMPARE(store.SaveFile(import), AlignResult::Ok);
    LoadStation({u"i.ad"_s});
    const QByteArray before = tests::FileBytes(file);
    QCOMPARE(Save(Choices()), u"Internal Error"_s);
    QVERIFY(Proposed.isEmpty());
    QCOMPARE(tests::FileBytes(file), before);
}

void AlignmentSaveTest::withoutMemoryTheSaveEnds_data()
{
    QTest::addColumn<int>("allocations");
    QTest::addColumn<QString>("message");
    QTest::newRow("no store") << 0 << "Out of memory";
    QTest::newRow("the target cannot be loaded") << 1 << "Internal Error";
    QTest::newRow("the source cannot be loaded") << 3 << "Internal Error";
    QTest::newRow("the merge fails") << 6 << "Internal Error";
}

void AlignmentSaveTest::withoutMemoryTheSaveEnds()
{
    QFETCH(int, allocations);
    QFETCH(QString, message);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    const QByteArray before = tests::FileBytes(path(RtlFile));
    const QList<AlignmentChoice> chosen = Choices();
    {
        const tests::AllocationLimit limit(allocations);
        QCOMPARE(Save(chosen), message);
    }
    QVERIFY(Proposed.isEmpty());
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
}

void AlignmentSaveTest::aGroupWithoutTargetIsSkipped()
{
    const DriverSaveGroup group = {3, {}, {SaveSource(u"missing.ad"_s)}, {}};
    QCOMPARE(SaveAlignment({group}, Folder->path(), {}), QString());
}

TARNVIK_TEST_MAIN(AlignmentSaveTest, QCoreApplication)

#include "AlignmentSaveTest.moc"
