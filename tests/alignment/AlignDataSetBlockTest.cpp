// SPDX-License-Identifier: MIT
// The memory of a table's data sets: zeroed, copied whole, and given back.
#include "alignment/AlignDataSetBlock.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <cstring>
#include <utility>

namespace {

constexpr std::size_t Count = 4;

AlignDataSetBlock NewBlock()
{
    return AlignDataSetBlock(Count, SdrType::AirSpy);
}

/// All bytes of the block's data sets, those between the members included.
bool SameBytes(const AlignDataSetBlock &left, const AlignDataSetBlock &right)
{
    return left.size() == right.size() &&
           std::memcmp(left.begin(), right.begin(), left.size() * sizeof(AlignDataSet)) == 0;
}

} // namespace

class AlignDataSetBlockTest : public QObject
{
    Q_OBJECT

private slots:
    void aFreshBlockIsZeroButForTagsAndTypes();
    void aBlockOfNoDataSetsIsEmpty();
    void aCopyHoldsWhatWasWritten_data();
    void aCopyHoldsWhatWasWritten();
    void aCopyOfACopyHoldsItToo();
    void aCopyTakesAsMuchAsBothHave();
    void movingLeavesAnEmptyBlock();
};

void AlignDataSetBlockTest::aFreshBlockIsZeroButForTagsAndTypes()
{
    AlignDataSetBlock block = NewBlock();
    QCOMPARE(block.size(), Count);
    std::size_t seen = 0;
    for (AlignDataSet &dataSet : block) {
        ++seen;
        QCOMPARE(dataSet.DataType, AlignDataSetDataType);
        QCOMPARE(dataSet.SdrType, SdrType::AirSpy);
        dataSet.DataType = 0;
        dataSet.SdrType = SdrType::None;
        const auto *const bytes = reinterpret_cast<const char *>(&dataSet);
        QVERIFY(QByteArray::fromRawData(bytes, sizeof(dataSet)).count('\0') == sizeof(dataSet));
    }
    QCOMPARE(seen, Count);
}

void AlignDataSetBlockTest::aBlockOfNoDataSetsIsEmpty()
{
    const AlignDataSetBlock block(0, SdrType::None);
    QVERIFY(block.empty());
    QVERIFY(block.begin() == block.end());
    QVERIFY(AlignDataSetBlock().empty());
}

void AlignDataSetBlockTest::aCopyHoldsWhatWasWritten_data()
{
    using Write = void (*)(AlignDataSetBlock &);
    QTest::addColumn<Write>("write");
    QTest::newRow("nothing") << Write([](AlignDataSetBlock &) {});
    QTest::newRow("through the index") << Write([](AlignDataSetBlock &block) { block[2].Word1 = 7; });
    QTest::newRow("through a pointer that went on to the next data set")
        << Write([](AlignDataSetBlock &block) {
               AlignDataSet *const first = &block[0];
               first[1].FreqPoints[99].SampleRatePoints[9].GainEntries[49].Value4 = 7;
               first[3].Word2 = 8;
           });
    QTest::newRow("through a pointer that went back") << Write([](AlignDataSetBlock &block) {
        AlignDataSet *const last = &block[3];
        (last - 3)->FreqPoints[0].Frequency = 7;
    });
    QTest::newRow("in a range-for") << Write([](AlignDataSetBlock &block) {
        for (AlignDataSet &dataSet : block)
            dataSet.FreqPoints[50].Attr = 9;
    });
    QTest::newRow("by a caller that writes one data set alone")
        << Write([](AlignDataSetBlock &block) { block.Only(1).FreqPoints[3].Frequency = 1; });
    QTest::newRow("the first and the last byte") << Write([](AlignDataSetBlock &block) {
        auto *const bytes = reinterpret_cast<char *>(block.begin());
        bytes[0] = 1;
        bytes[Count * sizeof(AlignDataSet) - 1] = 1;
    });
    QTest::newRow("every byte") << Write([](AlignDataSetBlock &block) {
        std::memset(static_cast<void *>(block.begin()), 0x5A, Count * sizeof(AlignDataSet));
    });
    QTest::newRow("on both sides of each page") << Write([](AlignDataSetBlock &block) {
        auto *const bytes = reinterpret_cast<char *>(block.begin());
        for (std::size_t page = 4096; page < Count * sizeof(AlignDataSet); page += 3 * 4096)
            bytes[page - 1] = bytes[page] = 1;
    });
}

void AlignDataSetBlockTest::aCopyHoldsWhatWasWritten()
{
    using Write = void (*)(AlignDataSetBlock &);
    QFETCH(Write, write);
    AlignDataSetBlock block = NewBlock();
    write(block);
    AlignDataSetBlock copy = NewBlock();
    copy.CopyIntoFresh(block);
    QVERIFY(SameBytes(copy, block));
}

void AlignDataSetBlockTest::aCopyOfACopyHoldsItToo()
{
    AlignDataSetBlock block = NewBlock();
    block.Only(2).FreqPoints[70].Attr = 5;
    AlignDataSetBlock copy = NewBlock();
    copy.CopyIntoFresh(block);
    AlignDataSetBlock again = NewBlock();
    again.CopyIntoFresh(copy);
    QVERIFY(SameBytes(again, block));
}

void AlignDataSetBlockTest::aCopyTakesAsMuchAsBothHave()
{
    AlignDataSetBlock small(1, SdrType::AirSpy);
    small[0].Word1 = 7;
    AlignDataSetBlock large = NewBlock();
    large.CopyIntoFresh(small);
    QCOMPARE(std::as_const(large)[0].Word1, quint16{7});
    QCOMPARE(std::as_const(large)[1].Word1, quint16{0});
    AlignDataSetBlock smallAgain(1, SdrType::AirSpy);
    smallAgain.CopyIntoFresh(large);
    QVERIFY(SameBytes(smallAgain, small));
}

void AlignDataSetBlockTest::movingLeavesAnEmptyBlock()
{
    AlignDataSetBlock block = NewBlock();
    block[3].FreqPoints[0].Attr = 3; // a copy looks at the points only of what was written
    const AlignDataSetBlock &former = block;
    AlignDataSetBlock moved(std::move(block));
    QVERIFY(former.empty());
    QCOMPARE(moved.size(), Count);
    AlignDataSetBlock assigned = NewBlock();
    assigned = std::move(moved);
    QCOMPARE(std::as_const(assigned)[3].FreqPoints[0].Attr, quint8{3});
    AlignDataSetBlock copy = NewBlock();
    copy.CopyIntoFresh(assigned); // what was written is still known
    QVERIFY(SameBytes(copy, assigned));
}

TARNVIK_TEST_MAIN(AlignDataSetBlockTest, QCoreApplication)

#include "AlignDataSetBlockTest.moc"
