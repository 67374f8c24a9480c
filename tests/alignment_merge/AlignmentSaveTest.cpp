// SPDX-License-Identifier: MIT
// What a save of the alignment tables writes.
#include "alignment_merge/AlignmentSave.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/AlignmentSaveFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QFile>

#include <random>

using namespace Qt::StringLiterals;

using tests::AirSpy;
using tests::AirspyFile;
using tests::FileTable;
using tests::Rtl;
using tests::RtlFile;
using tests::TableBytes;
using tests::WriteAlignmentFile;

class AlignmentSaveTest : public tests::AlignmentSaveFixture
{
    Q_OBJECT

private slots:
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
    void tablesImportedIntoAnEmptiedListAreNotTakenOver();
    void aDriverWithoutAFileGetsWhatIsCheckedAndNothingElse_data();
    void aDriverWithoutAFileGetsWhatIsCheckedAndNothingElse();
    void aDriverWithoutAFileTakesCheckedTablesOfSeveralImports();
    void aDriverOfAnUnknownTypeKeepsItsFileName();
    void aGroupWithoutTargetIsSkipped();
};

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
    // In forty random stations each checked table becomes the imported one, and all else stays.
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

void AlignmentSaveTest::aDriverWithoutAFileGetsWhatIsCheckedAndNothingElse_data()
{
    QTest::addColumn<QStringList>("unchecked");
    QTest::addColumn<QStringList>("written");
    QTest::newRow("all checked") << QStringList() << QStringList{u"A"_s, u"B"_s, u"C"_s};
    QTest::newRow("the first unchecked") << QStringList{u"RTL-SDR/A"_s} << QStringList{u"B"_s, u"C"_s};
    QTest::newRow("only one checked") << QStringList{u"RTL-SDR/A"_s, u"RTL-SDR/C"_s} << QStringList{u"B"_s};
    QTest::newRow("none checked: nothing is asked, nothing is written")
        << QStringList{u"RTL-SDR/A"_s, u"RTL-SDR/B"_s, u"RTL-SDR/C"_s} << QStringList();
}

void AlignmentSaveTest::aDriverWithoutAFileGetsWhatIsCheckedAndNothingElse()
{
    QFETCH(QStringList, unchecked);
    QFETCH(QStringList, written);
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 8}, {"C", 7}}));
    const auto source = TableBytes(imported(u"i.ad"_s));
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices(unchecked)), QString());
    QVERIFY(Asked.isEmpty());
    QCOMPARE(Proposed, written.isEmpty() ? QStringList() : QStringList(path(RtlFile)));
    QCOMPARE(QFile::exists(path(RtlFile)), !written.isEmpty());
    const auto after = TableBytes(path(RtlFile));
    QCOMPARE(after.size(), written.size());
    for (const QString &id : written)
        QCOMPARE(after[id.toLatin1()], source[id.toLatin1()]);
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

void AlignmentSaveTest::aGroupWithoutTargetIsSkipped()
{
    DriverSaveGroup group;
    group.SdrType = 3;
    group.Sources = {SaveSource(u"missing.ad"_s)};
    QCOMPARE(SaveAlignment({group}, {}), QString());
}

TARNVIK_TEST_MAIN(AlignmentSaveTest, QCoreApplication)

#include "AlignmentSaveTest.moc"
