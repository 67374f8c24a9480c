// SPDX-License-Identifier: MIT
// Walking over tables, finding them and giving them hardware ids.
#include "alignment/AlignTableList.h"

#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QProcess>

#include <string>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

std::string IdsOf(const AlignTableList &list)
{
    std::string ids;
    for (const AlignTable &table : list)
        ids += std::string(AlignHwIdOf(table)) + ' ';
    return ids;
}

} // namespace

class AlignTableListTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aListIsWalkedOverInOrder();
    void nodesWithoutTableArePassedOver();
    void tablesCanBeChangedOnTheWalk();
    void aClearedListCountsNothingWhateverItCounted();
    void aTableIsFoundByItsWholeId_data();
    void aTableIsFoundByItsWholeId();
    void anIdIsSet_data();
    void anIdIsSet();
    void anIdThatIsTooLongChangesNothing();
    void aTableIsRemovedByItsOwnId_data();
    void aTableIsRemovedByItsOwnId();

private:
    void append(const char *hwId) { QVERIFY(tests::AppendTableWithId(*Store, Store->Tables, hwId)); }

    std::unique_ptr<AlignStore> Store;
};

void AlignTableListTest::init()
{
    Store = std::make_unique<AlignStore>();
}

void AlignTableListTest::aListIsWalkedOverInOrder()
{
    QCOMPARE(IdsOf(Store->Tables), std::string());
    for (const char *id : {"A", "B", "C"})
        append(id);
    QCOMPARE(IdsOf(Store->Tables), std::string("A B C "));
}

void AlignTableListTest::nodesWithoutTableArePassedOver()
{
    for (const char *id : {"A", "B", "C", "D"})
        append(id);
    Store->Tables.Head->Table.reset();
    Store->Tables.Head->Next->Next->Table.reset();
    Store->Tables.Tail->Table.reset();
    QCOMPARE(IdsOf(Store->Tables), std::string("B "));
    QVERIFY(Store->Tables.find("A") == nullptr);
    QVERIFY(Store->Tables.find("B") != nullptr);
}

void AlignTableListTest::tablesCanBeChangedOnTheWalk()
{
    append("A");
    append("B");
    for (AlignTable &table : Store->Tables)
        table.AlignedAt = 7;
    for (const AlignTable &table : std::as_const(Store->Tables))
        QCOMPARE(table.AlignedAt, quint64{7});
}

void AlignTableListTest::aClearedListCountsNothingWhateverItCounted()
{
    append("A");
    append("B");
    Store->Tables.Count = 5; // more than there are
    AlignStore::ClearList(Store->Tables);
    QVERIFY(tests::IsEmpty(Store->Tables));
}

void AlignTableListTest::aTableIsFoundByItsWholeId_data()
{
    QTest::addColumn<QByteArray>("wanted");
    QTest::addColumn<int>("position"); // -1: none
    QTest::newRow("the first") << QByteArray("ABC") << 0;
    QTest::newRow("not one that begins with it") << QByteArray("AB") << -1;
    QTest::newRow("not one that it begins with") << QByteArray("ABCD") << -1;
    QTest::newRow("letter case counts") << QByteArray("abc") << -1;
    QTest::newRow("the empty one") << QByteArray() << 1;
    QTest::newRow("of full length") << QByteArray(128, 'x') << 2;
    QTest::newRow("longer than any") << QByteArray(129, 'x') << -1;
    QTest::newRow("the first of two") << QByteArray("twice") << 3;
}

void AlignTableListTest::aTableIsFoundByItsWholeId()
{
    QFETCH(QByteArray, wanted);
    QFETCH(int, position);
    append("ABC");
    append("");
    append(QByteArray(128, 'x').constData());
    append("twice");
    append("twice");
    const AlignTable *const found = Store->Tables.find({wanted.constData(), std::size_t(wanted.size())});
    int index = 0;
    int expected = -1;
    for (const AlignTable &table : std::as_const(Store->Tables)) {
        if (&table == found)
            expected = index;
        ++index;
    }
    QCOMPARE(expected, position);
}

void AlignTableListTest::anIdIsSet_data()
{
    QTest::addColumn<QByteArray>("hwId");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("short") << QByteArray("0x1");
    QTest::newRow("one byte less than the field") << QByteArray(127, 'y');
    QTest::newRow("as long as the field, without NUL") << QByteArray(128, 'y');
}

void AlignTableListTest::anIdIsSet()
{
    QFETCH(QByteArray, hwId);
    AlignTable table;
    table.HwId.fill('x');
    const std::string_view id(hwId.constData(), static_cast<std::size_t>(hwId.size()));
    QVERIFY(SetAlignHwId(table, id));
    QCOMPARE(AlignHwIdOf(table), id);
    QCOMPARE(QByteArray(table.HwId.data(), 128), hwId + QByteArray(128 - hwId.size(), '\0'));
}

void AlignTableListTest::anIdThatIsTooLongChangesNothing()
{
    AlignTable table;
    QVERIFY(SetAlignHwId(table, "ABC"sv));
    QVERIFY(!SetAlignHwId(table, std::string(129, 'y')));
    QCOMPARE(AlignHwIdOf(table), "ABC"sv);
}

void AlignTableListTest::aTableIsRemovedByItsOwnId_data()
{
    QTest::addColumn<QByteArray>("hwId");
    QTest::newRow("short") << QByteArray("0x1");
    QTest::newRow("as long as the field, without NUL") << QByteArray(128, 'y');
}

void AlignTableListTest::aTableIsRemovedByItsOwnId()
{
    QFETCH(QByteArray, hwId);
    QProcess probe; // what is printed shows whether the id outlived its table
    probe.start(QStringLiteral(ALIGNMENT_PROBE), {u"remove-own"_s, QString::fromLatin1(hwId)});
    QVERIFY2(probe.waitForFinished(), qPrintable(probe.errorString()));
    QCOMPARE(probe.readAllStandardOutput().replace('\r', ""),
             "debug: [OK] raw_clearListElementByHwID, cleared " + hwId + " from pstList\nresult \n");
    QCOMPARE(probe.exitCode(), 0);
}

TARNVIK_TEST_MAIN(AlignTableListTest, QCoreApplication)

#include "AlignTableListTest.moc"
