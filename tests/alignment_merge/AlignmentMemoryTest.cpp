// SPDX-License-Identifier: MIT
// The memory of this process while a whole station's alignment is loaded, merged and saved.
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_merge/AlignmentRowList.h"
#include "alignment_merge/AlignmentSave.h"

#include "alignment/AlignStore.h"
#include "tests/support/TestMain.h"
#include "tools/ProcessMemory.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <string>

using namespace Qt::StringLiterals;

namespace {

constexpr int Devices = 400; // of each driver
constexpr int Rounds = 3;
constexpr double MostGrowth = 70; // MB; what a process holds before differs: 11 on Linux, 52 under Wine
constexpr double MostMegabytesLeft = 5;
constexpr SdrType Drivers[] = {SdrType::LimeMini, SdrType::LimeUsb, SdrType::RtlSdr, SdrType::AirSpy};

/// Three frequency points with some entries, as a measurement gives.
void Fill(AlignDataSet &dataSet)
{
    dataSet.FreqPointCount = 3;
    for (std::size_t i = 0; i < 3; ++i) {
        AlignFreqPoint &point = dataSet.FreqPoints[i];
        point.Frequency = 162'400'000 + i;
        point.SampleRatePointCount = 2;
        for (std::size_t j = 0; j < 2; ++j) {
            AlignSampleRatePoint &ratePoint = point.SampleRatePoints[j];
            ratePoint.SampleFrequency = 250'000 * (j + 1);
            ratePoint.GainEntryCount = 10;
            for (std::size_t k = 0; k < 10; ++k)
                ratePoint.GainEntries[k] = {1, 2, 3, static_cast<std::uint16_t>(k)};
        }
    }
}

/// Writes a file with a table for each device of the driver; false when that fails.
bool WriteDriver(const QString &path, SdrType sdrType, std::uint64_t date)
{
    AlignStore store;
    store.SdrType = sdrType;
    for (int device = 0; device < Devices; ++device) {
        AlignTable *const table = store.AppendNewTable(store.Tables);
        if (table == nullptr || !SetAlignHwId(*table, "0x" + std::to_string(10'000 + device)))
            return false;
        table->AlignedAt = date;
        table->DataSetCount = table->DataSetCapacity;
        for (AlignDataSet &dataSet : table->DataSets)
            Fill(dataSet);
    }
    return store.SaveFile(path) == AlignResult::Ok;
}

/// Imports newer versions of all tables and takes all of them over, as the dialog does. Returns the error.
QString TakeOverAll(const QString &folder, const QString &imports)
{
    AlignmentRowList rows;
    QString error = rows.LoadFolder(folder, AlignmentDriverFilePattern());
    for (const SdrType driver : Drivers)
        error += rows.ReadFile(imports + u'/' + AlignmentDriverFileName(static_cast<int>(driver)));
    rows.Sort();
    QList<AlignmentChoice> choices;
    for (const AlignmentRow &row : rows.rows())
        choices.append({row.driver, row.hardwareId, IsTakenByDefault(OfferOf(row))});
    AlignmentSaveQuestions questions;
    questions.SaveUnchanged = [](const QString &) { return false; };
    questions.FileToWrite = [](const QString &proposal) { return proposal; };
    return error + SaveAlignment(MarkRowsAndCollectSaveGroups(choices, rows, folder), questions);
}

} // namespace

class AlignmentMemoryTest : public QObject
{
    Q_OBJECT

private slots:
    void aWholeStationIsLoadedMergedAndSavedInLittleMemory();
};

void AlignmentMemoryTest::aWholeStationIsLoadedMergedAndSavedInLittleMemory()
{
    const QTemporaryDir folder;
    const QString imports = folder.filePath(u"imports"_s);
    QVERIFY(QDir().mkpath(imports));
    for (const SdrType driver : Drivers)
        QVERIFY(WriteDriver(folder.filePath(AlignmentDriverFileName(static_cast<int>(driver))), driver, 1));
    const double before = tools::ResidentMegabytes();
    QVERIFY(before > 0);
    tools::ResetPeak();
    double after = 0;
    for (int round = 1; round <= Rounds; ++round) {
        for (const SdrType driver : Drivers) // each time newer than what was saved
            QVERIFY(WriteDriver(imports + u'/' + AlignmentDriverFileName(static_cast<int>(driver)), driver,
                                static_cast<std::uint64_t>(round) + 1));
        QCOMPARE(TakeOverAll(folder.path(), imports), QString());
        after = tools::ResidentMegabytes();
    }
    AlignStore store;
    QCOMPARE(store.LoadFile(folder.filePath(AlignmentDriverFileName(2)), store.Tables, true),
             AlignResult::Ok);
    QCOMPARE(store.Tables.Count, quint16{Devices});
    QCOMPARE(store.Tables.Tail->Table->AlignedAt, quint64{Rounds + 1});
    const double peak = tools::PeakMegabytes();
    qInfo("resident: %.1f MB before, %.1f MB at most, %.1f MB after", before, peak, after);
    QVERIFY(peak - before <= MostGrowth);
    QVERIFY(after <= before + MostMegabytesLeft);
}

TARNVIK_TEST_MAIN(AlignmentMemoryTest, QCoreApplication)

#include "AlignmentMemoryTest.moc"
