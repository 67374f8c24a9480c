// SPDX-License-Identifier: MIT
// Reading alignment files into the list of tables, and merging.
#include "alignment_merge/AlignmentRowList.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/FailingAllocations.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/RowsInWords.h"
#include "tests/support/FolderFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

using tests::Day;
using tests::InWords;
using tests::WriteAlignmentFile;

namespace {

const QString AllFiles = u"*.ad"_s;

} // namespace

class AlignmentRowListTest : public tests::FolderFixture
{
    Q_OBJECT

private slots:
    void aFileGivesRowsInItsOrder();
    void aFileThatCannotBeReadGivesAMessageAndNoRow_data();
    void aFileThatCannotBeReadGivesAMessageAndNoRow();
    void withoutMemoryAFileGivesAMessage();
    void theErrorsOfSeveralFilesAreLines();
    void twoFilesWithOneTableInBothOrders_data();
    void twoFilesWithOneTableInBothOrders();
    void theSameHardwareIdOfTwoDriversIsTwoRows();
    void onlyTheFirstFileOfADriverMarksItAsNew();
    void mergingTheSameFileTwiceChangesNothingTheSecondTime();
    void aHardwareIdOfFullLengthNeedsNoEnd();
    void afterLoadingAFolderAllRowsArePresent();
    void loadingTheFolderAgainMakesImportedVersionsPresent();
    void onlyMatchingFilesOfTheFolderItselfAreLoaded();
    void anEmptyFolderNameIsNotTheWorkingFolder();
    void anEmptyOrMissingFolderGivesNoRowAndNoMessage();
    void aDamagedFileInTheFolderLeavesOutItsTablesOnly();
    void sortingKeepsEveryRowFindable();
};

void AlignmentRowListTest::aFileGivesRowsInItsOrder()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), static_cast<SdrType>(7),
                               {{"B", Day("2024-01-02")}, {"A", Day("2024-01-01")}, {"", 0}}));
    AlignmentRowList list;
    QCOMPARE(list.ReadFile(path(u"a.ad"_s)), QString());
    QCOMPARE(InWords(list),
             (QStringList{u"Driver 7/B 1 2024-01-02 a.ad!"_s, u"Driver 7/A 1 2024-01-01 a.ad!"_s,
                          u"Driver 7/ 1 1970-01-01 a.ad!"_s}));
    QCOMPARE(list.rows().first().filePath, path(u"a.ad"_s));
}

void AlignmentRowListTest::aFileThatCannotBeReadGivesAMessageAndNoRow_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message");
    QByteArray damaged = tests::FileOf150Bytes();
    damaged[20] = 'x';
    QByteArray otherVersion = tests::FileOf150Bytes();
    otherVersion[0] = 4;
    QTest::newRow("missing file") << QByteArray() << "File Error";
    QTest::newRow("damaged payload") << damaged << "File CRC check failed";
    QTest::newRow("another version") << otherVersion << "Version Missmatched";
    QTest::newRow("no table") << tests::HeaderChunk(SdrType::LimeMini, 0) << "File Error";
    QTest::newRow("type None") << tests::HeaderChunk(SdrType::None, 1) + tests::TableChunk(0, 0)
                               << "File Error";
    QTest::newRow("data sets beyond the type's")
        << tests::HeaderChunk(SdrType::RtlSdr, 1) + tests::TableChunk(2, 2) << "Internal Error";
}

void AlignmentRowListTest::aFileThatCannotBeReadGivesAMessageAndNoRow()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    const QString file = path(u"a.ad"_s);
    if (!bytes.isEmpty())
        QVERIFY(tests::WriteFileBytes(file, bytes));
    AlignmentRowList list;
    QCOMPARE(list.ReadFile(file), message);
    QVERIFY(list.rows().isEmpty());
}

void AlignmentRowListTest::withoutMemoryAFileGivesAMessage()
{
    const QString file = path(u"a.ad"_s);
    QVERIFY(tests::WriteFileBytes(file, tests::FileOf150Bytes()));
    AlignmentRowList list;
    {
        const tests::AllocationLimit none(0);
        QCOMPARE(list.ReadFile(file), u"Out of memory"_s);
    }
    {
        const tests::AllocationLimit storeOnly(1);
        QCOMPARE(list.ReadFile(file), u"Internal Error"_s);
    }
    QVERIFY(list.rows().isEmpty());
}

void AlignmentRowListTest::theErrorsOfSeveralFilesAreLines()
{
    QVERIFY(tests::WriteFileBytes(path(u"good.ad"_s), tests::FileOf150Bytes()));
    QVERIFY(tests::WriteFileBytes(path(u"%1 %2.ad"_s), "rubbish"));
    AlignmentRowList list;
    const QStringList files = {path(u"missing.ad"_s), path(u"good.ad"_s), path(u"%1 %2.ad"_s)};
    QCOMPARE(list.ReadFiles(files), u"missing.ad: File Error\n%1 %2.ad: Version Missmatched"_s);
    QCOMPARE(list.rows().size(), 1);
    QCOMPARE(list.ReadFiles({}), QString());
}

void AlignmentRowListTest::twoFilesWithOneTableInBothOrders_data()
{
    QTest::addColumn<QString>("present"); // its date, or empty: none
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("afterAB");
    QTest::addColumn<QString>("afterBA");
    QTest::addColumn<AlignmentOffer>("offer"); // after both orders
    using enum AlignmentOffer;
    const char *const old = "2024-01-01";
    const char *const middle = "2024-02-01";
    const char *const recent = "2024-03-01";
    QTest::newRow("new table, two dates: the newer one and its file stay")
        << "" << old << middle << "1 2024-02-01 b.ad!"
        << "1 2024-02-01 b.ad!" << NewTable;
    QTest::newRow("new table, one date: the first file stays") << "" << old << old << "1 2024-01-01 a.ad!"
                                                               << "1 2024-01-01 b.ad!" << NewTable;
    QTest::newRow("present, both the same date: nothing") << old << old << old << "0 2024-01-01 present.ad!"
                                                          << "0 2024-01-01 present.ad!" << Nothing;
    QTest::newRow("present, one older and one newer version: the newer one")
        << middle << old << recent << "2 2024-02-01 present.ad (2024-03-01 b.ad)!"
        << "2 2024-02-01 present.ad (2024-03-01 b.ad)!" << NewerVersion;
    QTest::newRow("present, two older versions: the newer of them")
        << recent << old << middle << "2 2024-03-01 present.ad (2024-02-01 b.ad)!"
        << "2 2024-03-01 present.ad (2024-02-01 b.ad)!" << OlderVersion;
    QTest::newRow("present, two newer versions: the newer of them")
        << old << middle << recent << "2 2024-01-01 present.ad (2024-03-01 b.ad)!"
        << "2 2024-01-01 present.ad (2024-03-01 b.ad)!" << NewerVersion;
    QTest::newRow("present, the same older version twice: the first file")
        << recent << old << old << "2 2024-03-01 present.ad (2024-01-01 a.ad)!"
        << "2 2024-03-01 present.ad (2024-01-01 b.ad)!" << OlderVersion;
    QTest::newRow("present, an older version and the present one: the older stays beside it")
        << middle << old << middle << "2 2024-02-01 present.ad (2024-01-01 a.ad)!"
        << "2 2024-02-01 present.ad (2024-01-01 a.ad)!" << OlderVersion;
}

void AlignmentRowListTest::twoFilesWithOneTableInBothOrders()
{
    QFETCH(QString, present);
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QString, afterAB);
    QFETCH(QString, afterBA);
    QFETCH(AlignmentOffer, offer);
    const auto write = [this](const char *name, const QString &date) {
        return WriteAlignmentFile(path(QString::fromLatin1(name)), SdrType::RtlSdr,
                                  {{"0x1", Day(date.toLatin1().constData())}});
    };
    if (!present.isEmpty())
        QVERIFY(write("present.ad", present));
    QVERIFY(write("a.ad", a));
    QVERIFY(write("b.ad", b));
    for (const bool reversed : {false, true}) {
        AlignmentRowList list;
        QCOMPARE(list.LoadFolder(Folder->path(), u"present*.ad"_s), QString());
        QStringList files = {path(u"a.ad"_s), path(u"b.ad"_s)};
        if (reversed)
            std::reverse(files.begin(), files.end());
        QCOMPARE(list.ReadFiles(files), QString());
        QCOMPARE(InWords(list), QStringList{u"RTL-SDR/0x1 "_s + (reversed ? afterBA : afterAB)});
        QCOMPARE(OfferOf(list.rows().first()), offer);
        QCOMPARE(list.ReadFiles(files), QString()); // once more changes nothing
        QCOMPARE(InWords(list), QStringList{u"RTL-SDR/0x1 "_s + (reversed ? afterBA : afterAB)});
    }
}

void AlignmentRowListTest::theSameHardwareIdOfTwoDriversIsTwoRows()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"0x1", 0}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::AirSpy, {{"0x1", 0}, {"0X1", 0}}));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), AllFiles), QString());
    QCOMPARE(list.rows().size(), 3);
    QVERIFY(list.Find(u"RTL-SDR"_s, u"0x1"_s));
    QVERIFY(list.Find(u"AirSpy"_s, u"0x1"_s));
    QVERIFY(!list.Find(u"RTL-SDR"_s, u"0X1"_s));
}

void AlignmentRowListTest::onlyTheFirstFileOfADriverMarksItAsNew()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"A", 0}, {"B", 0}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"C", 0}, {"A", 1}}));
    AlignmentRowList list;
    QCOMPARE(list.ReadFiles({path(u"a.ad"_s), path(u"b.ad"_s)}), QString());
    QCOMPARE(InWords(list), (QStringList{u"RTL-SDR/A 1 1970-01-01 b.ad!"_s, u"RTL-SDR/B 1 1970-01-01 a.ad!"_s,
                                         u"RTL-SDR/C 1 1970-01-01 b.ad"_s}));
}

void AlignmentRowListTest::mergingTheSameFileTwiceChangesNothingTheSecondTime()
{
    QVERIFY(WriteAlignmentFile(path(u"present.ad"_s), SdrType::LimeUsb,
                               {{"same", 5}, {"older", 7}, {"newer", 3}}));
    const QString import = path(u"import.ad"_s);
    QVERIFY(WriteAlignmentFile(import, SdrType::LimeUsb,
                               {{"same", 5}, {"older", 4}, {"newer", 9}, {"new", 1}, {"new", 2}}));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), u"present.ad"_s), QString());
    QCOMPARE(list.ReadFile(import), QString());
    const QList<AlignmentRow> once = list.rows();
    QCOMPARE(once.size(), 4);
    QCOMPARE(list.ReadFile(import), QString());
    QVERIFY(list.rows() == once);
}

void AlignmentRowListTest::aHardwareIdOfFullLengthNeedsNoEnd()
{
    const QByteArray longest(128, 'x');
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{longest, 0}}));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), AllFiles), QString());
    QCOMPARE(list.rows().first().hardwareId, QString::fromLatin1(longest));
}

void AlignmentRowListTest::afterLoadingAFolderAllRowsArePresent()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr,
                               {{"A", Day("2024-01-01")}, {"B", Day("2024-05-01")}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr,
                               {{"A", Day("2024-02-01")}, {"B", Day("2024-04-01")}}));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), AllFiles), QString());
    // Two files with one table give one row, the newest, with the file that holds it.
    QCOMPARE(InWords(list),
             (QStringList{u"RTL-SDR/A 0 2024-02-01 b.ad!"_s, u"RTL-SDR/B 0 2024-05-01 a.ad!"_s}));
}

void AlignmentRowListTest::loadingTheFolderAgainMakesImportedVersionsPresent()
{
    QVERIFY(WriteAlignmentFile(path(u"present.ad"_s), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(path(u"import.ad"_s), SdrType::RtlSdr, {{"A", 9}, {"B", 9}}));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), u"present.ad"_s), QString());
    QCOMPARE(list.ReadFile(path(u"import.ad"_s)), QString());
    QCOMPARE(list.rows().at(0).state, AlignmentRow::UpdatePresent);
    QCOMPARE(list.rows().at(1).state, AlignmentRow::NewInDataBase);
    QCOMPARE(list.LoadFolder(Folder->path(), u"present.ad"_s), QString());
    for (const AlignmentRow &row : list.rows())
        QCOMPARE(row.state, AlignmentRow::Present);
}

void AlignmentRowListTest::onlyMatchingFilesOfTheFolderItselfAreLoaded()
{
    const auto write = [this](const QString &name, const QByteArray &id) {
        return WriteAlignmentFile(path(name), SdrType::RtlSdr, {{id, 0}});
    };
    QVERIFY(QDir(Folder->path()).mkpath(u"sub"_s));
    QVERIFY(QDir(Folder->path()).mkpath(u"TarnvikDriver_folder.ad"_s));
    QVERIFY(write(u"TarnvikDriver_RtlSdr.ad"_s, "A"));
    QVERIFY(write(u"Driver_RtlSdr.ad"_s, "B"));
    QVERIFY(write(u"TarnvikDriver_RtlSdr.ad.bak"_s, "C"));
    QVERIFY(write(u"sub/TarnvikDriver_RtlSdr.ad"_s, "D"));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), u"TarnvikDriver_*.ad"_s), QString());
    QCOMPARE(InWords(list), QStringList{u"RTL-SDR/A 0 1970-01-01 TarnvikDriver_RtlSdr.ad!"_s});
}

void AlignmentRowListTest::anEmptyFolderNameIsNotTheWorkingFolder()
{
    const QString before = QDir::currentPath();
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"A", 0}}));
    QVERIFY(QDir::setCurrent(Folder->path()));
    AlignmentRowList list;
    const QString errors = list.LoadFolder(QString(), AllFiles);
    QVERIFY(QDir::setCurrent(before)); // Windows does not remove a folder that a process is in
    QCOMPARE(errors, QString());
    QVERIFY(list.rows().isEmpty());
}

void AlignmentRowListTest::anEmptyOrMissingFolderGivesNoRowAndNoMessage()
{
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), AllFiles), QString());
    QCOMPARE(list.LoadFolder(path(u"missing"_s), AllFiles), QString());
    QVERIFY(list.rows().isEmpty());
}

void AlignmentRowListTest::aDamagedFileInTheFolderLeavesOutItsTablesOnly()
{
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"B", 0}}));
    QVERIFY(tests::WriteFileBytes(path(u"a.ad"_s), "rubbish"));
    QVERIFY(tests::WriteFileBytes(path(u"c.ad"_s), "\5"));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), AllFiles), u"a.ad: Version Missmatched\nc.ad: File Error"_s);
    QCOMPARE(list.rows().size(), 1);
}

void AlignmentRowListTest::sortingKeepsEveryRowFindable()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"b", 1}, {"B", 2}, {"a", 3}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::AirSpy, {{"c", 4}}));
    AlignmentRowList list;
    QCOMPARE(list.LoadFolder(Folder->path(), AllFiles), QString());
    list.Sort();
    QStringList order;
    for (const AlignmentRow &row : list.rows()) {
        order.append(row.hardwareId);
        QCOMPARE(list.Find(row.driver, row.hardwareId), &row);
    }
    QCOMPARE(order, (QStringList{u"c"_s, u"B"_s, u"a"_s, u"b"_s}));
}

TARNVIK_TEST_MAIN(AlignmentRowListTest, QCoreApplication)

#include "AlignmentRowListTest.moc"
