// SPDX-License-Identifier: MIT
// Generated stores are saved, loaded and saved again.
#include "alignment/AlignStore.h"

#include "alignment/AlignFileFormat.h"
#include "alignment/AlignFileWriter.h"
#include "tests/alignment/AlignmentFileFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QTest>

#include <algorithm>
#include <set>
#include <span>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// The first value of every gain entry.
std::vector<std::uint16_t> GainValuesOf(const AlignDataSet &dataSet)
{
    std::vector<std::uint16_t> values;
    for (const AlignFreqPoint &point : std::span(dataSet.FreqPoints).first(dataSet.FreqPointCount)) {
        for (const AlignSampleRatePoint &ratePoint :
             std::span(point.SampleRatePoints).first(point.SampleRatePointCount)) {
            for (const AlignGainEntry &entry :
                 std::span(ratePoint.GainEntries).first(ratePoint.GainEntryCount))
                values.push_back(entry.Value1);
        }
    }
    return values;
}

} // namespace

class AlignRoundTripTest : public tests::AlignmentFileFixture
{
    Q_OBJECT

private slots:
    void generatedStoresComeBackEqualAndGiveTheSameBytes();
    void sameSeedGivesTheSameStore();
    void fullTablesComeBackEqual_data();
    void fullTablesComeBackEqual();
    void demonstrationTablesHaveReadableIdsOfTheirOwn();
    void loadedTablesMergeIntoAnotherStore();
};

void AlignRoundTripTest::generatedStoresComeBackEqualAndGiveTheSameBytes()
{
    // What the stores must have covered in the end.
    std::set<SdrType> types;
    std::set<int> dataSetCounts;
    std::set<std::size_t> hwIdLengths;
    bool idWithBytesAbove127 = false;
    bool bytesBehindTheNul = false;
    qsizetype greatestFile = 0;

    const QString secondPath = path(u"second.ad"_s);
    for (std::uint64_t seed = 0; seed < 2000; ++seed) {
        tools::AlignmentGenerator generator(seed);
        AlignStore store;
        store.SdrType = generator.AnySdrType();
        const std::uint64_t tables = 1 + generator.UpTo(2);
        for (std::uint64_t i = 0; i < tables; ++i) {
            const AlignTable *table = generator.AppendTable(store);
            QVERIFY(table != nullptr);
            types.insert(table->SdrType);
            dataSetCounts.insert(table->DataSetCount);
            const auto nul = std::find(table->HwId.begin(), table->HwId.end(), '\0');
            hwIdLengths.insert(static_cast<std::size_t>(nul - table->HwId.begin()));
            idWithBytesAbove127 |= std::any_of(table->HwId.begin(), nul, [](char letter) {
                return static_cast<unsigned char>(letter) > 127;
            });
            bytesBehindTheNul |=
                std::any_of(nul, table->HwId.end(), [](char letter) { return letter != '\0'; });
        }
        QCOMPARE(store.SaveFile(Path), AlignResult::Ok);

        AlignStore loaded;
        QCOMPARE(loaded.LoadFile(Path, loaded.Tables, true), AlignResult::Ok);
        QCOMPARE(loaded.SdrType, store.SdrType);
        const QString difference = tests::Difference(loaded.Tables, store.Tables);
        QVERIFY2(difference.isEmpty(), qPrintable(u"seed %1: %2"_s.arg(seed).arg(difference)));

        QCOMPARE(loaded.SaveFile(secondPath), AlignResult::Ok);
        const QByteArray bytes = tests::FileBytes(Path);
        QVERIFY(!bytes.isEmpty());
        QVERIFY(tests::FileBytes(secondPath) == bytes);
        greatestFile = std::max(greatestFile, bytes.size());
    }

    QCOMPARE(types.size(), std::size_t{4});
    QCOMPARE(dataSetCounts.size(), std::size_t{13}); // 0 to 12
    QVERIFY(hwIdLengths.count(0) == 1 && hwIdLengths.count(127) == 1 && hwIdLengths.count(128) == 1);
    QVERIFY(hwIdLengths.size() > 100);
    QVERIFY(idWithBytesAbove127);
    QVERIFY(bytesBehindTheNul);
    QVERIFY(greatestFile > 400'000); // many data sets with nearly full chunks
}

void AlignRoundTripTest::sameSeedGivesTheSameStore()
{
    AlignStore first;
    AlignStore second;
    AlignStore other;
    for (AlignStore *store : {&first, &second, &other}) {
        tools::AlignmentGenerator generator(store == &other ? 2 : 1);
        store->SdrType = SdrType::LimeMini;
        QVERIFY(generator.AppendTable(*store) != nullptr);
        QVERIFY(generator.AppendDemonstrationTables(*store, 2));
    }
    QCOMPARE(tests::Difference(first.Tables, second.Tables), QString());
    QVERIFY(!tests::Difference(first.Tables, other.Tables).isEmpty());
}

void AlignRoundTripTest::fullTablesComeBackEqual_data()
{
    using Full = tools::AlignmentGenerator::Full;
    QTest::addColumn<Full>("layout");
    QTest::addColumn<int>("freqPoints");
    QTest::newRow("few frequency points with everything in them") << Full::Deep << 4;
    QTest::newRow("all frequency points") << Full::Wide << 100;
}

void AlignRoundTripTest::fullTablesComeBackEqual()
{
    QFETCH(tools::AlignmentGenerator::Full, layout);
    QFETCH(int, freqPoints);
    tools::AlignmentGenerator generator(1);
    AlignStore store;
    store.SdrType = SdrType::LimeUsb;
    QVERIFY(generator.AppendFullTables(store, 3, layout));
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    const AlignDataSet &last = std::as_const(store.Tables.Tail->Table->DataSets)[11];
    const std::size_t payload = alignfile::DataSetPayloadSize(last).value_or(0);
    QVERIFY(payload < alignfile::DataSetPayloadLimit);
    QVERIFY2(payload + alignfile::GainEntrySize >= alignfile::DataSetPayloadLimit,
             qPrintable(QString::number(payload))); // no room for one gain entry more
    const std::vector<std::uint16_t> values = GainValuesOf(last);
    QCOMPARE(std::set(values.begin(), values.end()).size(), values.size()); // no two are alike
    // 12 data sets of nearly 16,383 bytes a table.
    const qsizetype size = tests::FileBytes(Path).size();
    QVERIFY2(size > qsizetype{3} * (143 + 12 * 16350) && size < qsizetype{3} * (143 + 12 * 16390),
             qPrintable(QString::number(size)));
    QCOMPARE(store.LoadFile(Path, store.ImportTables, false), AlignResult::Ok);
    QCOMPARE(tests::Difference(store.ImportTables, store.Tables), QString());
    QCOMPARE(int{store.ImportTables.Tail->Table->DataSets[11].FreqPointCount}, freqPoints);
}

void AlignRoundTripTest::demonstrationTablesHaveReadableIdsOfTheirOwn()
{
    tools::AlignmentGenerator generator(1);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(generator.AppendDemonstrationTables(store, 100));
    const QList<QByteArray> ids = tests::HwIdsOf(store.Tables);
    QCOMPARE(QSet<QByteArray>(ids.begin(), ids.end()).size(), qsizetype{100});
    for (const AlignTable &table : std::as_const(store.Tables))
        QVERIFY(std::all_of(table.HwId.begin() + 18, table.HwId.end(), [](char c) { return c == '\0'; }));
    for (const QByteArray &id : ids) {
        QCOMPARE(id.size(), qsizetype{18});
        QVERIFY(id.startsWith("0x"));
    }
    tools::AlignmentGenerator sameSeed(1);
    QCOMPARE(sameSeed.ReadableHwId(), ids.first().toStdString());
    tools::AlignmentGenerator otherSeed(2);
    QVERIFY(!ids.contains(QByteArray::fromStdString(otherSeed.ReadableHwId())));
}

void AlignRoundTripTest::loadedTablesMergeIntoAnotherStore()
{
    tools::AlignmentGenerator generator(11);
    AlignStore imported;
    imported.SdrType = SdrType::AirSpy;
    QVERIFY(generator.AppendDemonstrationTables(imported, 5));
    QCOMPARE(imported.SaveFile(Path), AlignResult::Ok);

    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QCOMPARE(store.LoadFile(Path, store.ImportTables, false), AlignResult::Ok);
    std::vector<AlignSelectionEntry> selection;
    for (const QByteArray &id : tests::HwIdsOf(imported.Tables))
        selection.push_back({id.toStdString(), 0});
    QCOMPARE(store.MergeTables(store.Tables, store.ImportTables, selection), AlignResult::Ok);
    AlignStore::ClearList(store.ImportTables);
    const QString secondPath = path(u"second.ad"_s);
    QCOMPARE(store.SaveFile(secondPath), AlignResult::Ok);
    QVERIFY(tests::FileBytes(secondPath) == tests::FileBytes(Path));
}

TARNVIK_TEST_MAIN(AlignRoundTripTest, QCoreApplication)
#include "AlignRoundTripTest.moc"
