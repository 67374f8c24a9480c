// SPDX-License-Identifier: MIT
// Saving alignment files: the bytes of the format, what is refused, and where files may lie.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentFileFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

using tests::DataSetPayload;
using tests::FileOf150Bytes;
using tests::HeaderChunk;
using tests::RtlSdrFile;
using tests::TableChunk;
using tests::WordCrcChunk;

class AlignFileSaveTest : public tests::AlignmentFileFixture
{
    Q_OBJECT

private slots:
    void oneLimeMiniTableSavesTo150Bytes();
    void dataSetIsWrittenByteForByte();
    void typeOfATableOfAnUnknownTypeIsKept_data();
    void typeOfATableOfAnUnknownTypeIsKept();
    void claimedCapacityIsKeptButNotBelieved();
    void saveRefuses_data();
    void saveRefuses();
    void saveOfAnEmptyListGives22AndLeavesTheFileUntouched();
    void saveOfAHeadWithoutTableGives22();
    void saveOfALaterNodeWithoutTableGives11();
    void saveOfTheGreatestPayloadIsReadBack_data();
    void saveOfTheGreatestPayloadIsReadBack();
    void saveReplacesALongerFile();
    void saveIntoAMissingFolderGives9();
    void saveToAFolderGives9();
    void pathWithNonAsciiLetters_data();
    void pathWithNonAsciiLetters();
    void loadAndSave65535Tables();
};

void AlignFileSaveTest::oneLimeMiniTableSavesTo150Bytes()
{
    AlignStore store;
    store.SdrType = SdrType::LimeMini;
    AlignTable *table = tests::AppendTableWithId(store, store.Tables, "ABC");
    QVERIFY(table != nullptr);
    table->AlignedAt = 0x0000000065A0BC00;
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    const QByteArray bytes = tests::FileBytes(Path);
    QCOMPARE(bytes.size(), qsizetype{150});
    QCOMPARE(bytes.toHex(' '), FileOf150Bytes().toHex(' '));
    QCOMPARE(static_cast<quint8>(bytes.at(6)), quint8{0x6C});
    QCOMPARE(static_cast<quint8>(bytes.at(149)), quint8{0xDE});
}

void AlignFileSaveTest::dataSetIsWrittenByteForByte()
{
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    AlignTable *table = tests::AppendTableWithId(store, store.Tables, "ABC");
    QVERIFY(table != nullptr);
    table->DataSetCount = 1;
    AlignDataSet &dataSet = table->DataSets[0];
    dataSet.Attr1 = 1;
    dataSet.Attr2 = 2;
    dataSet.Attr3 = 3;
    dataSet.Attr4 = 4;
    dataSet.Word1 = 0x0506;
    dataSet.Word2 = 0x0708;
    dataSet.FreqPointCount = 2;
    AlignFreqPoint &point = dataSet.FreqPoints[0];
    point.Frequency = 0x1112131415161718;
    point.Attr = 0x19;
    point.SampleRatePointCount = 1;
    AlignSampleRatePoint &ratePoint = point.SampleRatePoints[0];
    ratePoint.SampleFrequency = 0x2122232425262728;
    ratePoint.GainEntryCount = 1;
    ratePoint.Attr = 0x31323334;
    ratePoint.GainEntries[0] = {0x4142, 0x4344, 0x4546, 0x4748};
    ratePoint.GainEntries[1] = {1, 1, 1, 1}; // unused, not written
    dataSet.FreqPoints[1].Frequency = 0x51;
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);

    const QByteArray payload = QByteArray::fromHex("01020304 0506 0708 0002"
                                                   "1112131415161718 19 01"
                                                   "2122232425262728 01 31323334 4142434445464748"
                                                   "0000000000000051 00 00");
    QCOMPARE(payload.size(), qsizetype{10 + 10 + 13 + 8 + 10});
    QCOMPARE(tests::FileBytes(Path).toHex(' '), RtlSdrFile(WordCrcChunk(payload)).toHex(' '));
}

void AlignFileSaveTest::typeOfATableOfAnUnknownTypeIsKept_data()
{
    QTest::addColumn<int>("sdrType");
    QTest::newRow("type 0 without data sets") << 0;
    QTest::newRow("type 5 without data sets") << 5;
    QTest::newRow("type 255 without data sets") << 255;
}

void AlignFileSaveTest::typeOfATableOfAnUnknownTypeIsKept()
{
    QFETCH(int, sdrType);
    const auto type = static_cast<SdrType>(sdrType);
    const QByteArray bytes = HeaderChunk(type, 1) + TableChunk(0, 0);
    QVERIFY(tests::WriteFileBytes(Path, bytes));
    AlignStore store;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::Ok);
    QCOMPARE(store.SdrType, type);
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
    QCOMPARE(store.Tables.Head->Table->SdrType, type);
    QVERIFY(store.Tables.Head->Table->DataSets.empty());
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    QCOMPARE(tests::FileBytes(Path).toHex(), bytes.toHex());
}

void AlignFileSaveTest::claimedCapacityIsKeptButNotBelieved()
{
    const QByteArray bytes =
        HeaderChunk(SdrType::RtlSdr, 1) + TableChunk(255, 1) + WordCrcChunk(DataSetPayload(1));
    QVERIFY(tests::WriteFileBytes(Path, bytes));
    AlignStore store;
    QCOMPARE(store.LoadFile(Path, store.Tables, true), AlignResult::Ok);
    QCOMPARE(store.Tables.Head->Table->DataSetCapacity, std::uint8_t{255});
    QCOMPARE(store.Tables.Head->Table->DataSets.size(), std::size_t{1});
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    QCOMPARE(tests::FileBytes(Path).toHex(), bytes.toHex());
}

void AlignFileSaveTest::saveRefuses_data()
{
    QTest::addColumn<int>("dataSetCount");
    QTest::addColumn<int>("freqPoints");
    QTest::addColumn<int>("sampleRatePoints");
    QTest::addColumn<int>("gainEntries");
    // Four data sets; the last one that counts gets the other counts.
    QTest::newRow("more data sets than the block has") << 5 << 0 << 0 << 0;
    QTest::newRow("101 frequency points") << 4 << 101 << 0 << 0;
    QTest::newRow("65535 frequency points") << 4 << 65535 << 0 << 0;
    QTest::newRow("11 sample-rate points") << 4 << 1 << 11 << 0;
    QTest::newRow("255 sample-rate points") << 4 << 1 << 255 << 0;
    QTest::newRow("51 gain entries") << 4 << 1 << 1 << 51;
    QTest::newRow("255 gain entries") << 4 << 1 << 1 << 255;
    QTest::newRow("all counts at their capacities: longer than the buffer") << 4 << 100 << 10 << 50;
    // 10 + 4 * (10 + 10 * 13 + 493 * 8) = 16346 would fit; see saveOfTheGreatestPayloadIsReadBack for the
    // limit.
    QTest::newRow("four frequency points with all entries") << 4 << 4 << 10 << 50;
}

void AlignFileSaveTest::saveRefuses()
{
    QFETCH(int, dataSetCount);
    QFETCH(int, freqPoints);
    QFETCH(int, sampleRatePoints);
    QFETCH(int, gainEntries);
    QVERIFY(tests::WriteFileBytes(Path, "untouched"));
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr); // a writable table comes first
    AlignTable *table = store.AppendNewTable(store.Tables);
    QVERIFY(table != nullptr);
    table->DataSetCount = static_cast<std::uint8_t>(dataSetCount);
    AlignDataSet &dataSet = table->DataSets[3];
    dataSet.FreqPointCount = static_cast<std::uint16_t>(freqPoints);
    for (AlignFreqPoint &point : dataSet.FreqPoints) {
        point.SampleRatePointCount = static_cast<std::uint8_t>(sampleRatePoints);
        for (AlignSampleRatePoint &ratePoint : point.SampleRatePoints)
            ratePoint.GainEntryCount = static_cast<std::uint8_t>(gainEntries);
    }
    QCOMPARE(store.SaveFile(Path), AlignResult::InternalError);
    QCOMPARE(tests::FileBytes(Path), QByteArray("untouched"));
    QCOMPARE(store.Tables.Count, std::uint16_t{2});
}

void AlignFileSaveTest::saveOfAnEmptyListGives22AndLeavesTheFileUntouched()
{
    QVERIFY(tests::WriteFileBytes(Path, "untouched"));
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    QVERIFY(store.AppendNewTable(store.ImportTables) != nullptr); // not what is saved
    QCOMPARE(store.SaveFile(Path), AlignResult::ListIsEmpty);
    QCOMPARE(tests::FileBytes(Path), QByteArray("untouched"));
    const QString missing = path(u"missing.ad"_s);
    QCOMPARE(store.SaveFile(missing), AlignResult::ListIsEmpty);
    QVERIFY(!QFileInfo::exists(missing));
}

void AlignFileSaveTest::saveOfAHeadWithoutTableGives22()
{
    AlignStore store;
    store.Tables.Append(std::make_unique<AlignTableNode>());
    QCOMPARE(store.SaveFile(Path), AlignResult::ListIsEmpty);
    QVERIFY(!QFileInfo::exists(Path));
}

void AlignFileSaveTest::saveOfALaterNodeWithoutTableGives11()
{
    AlignStore store;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    store.Tables.Append(std::make_unique<AlignTableNode>());
    QCOMPARE(store.SaveFile(Path), AlignResult::InternalError);
    QVERIFY(!QFileInfo::exists(Path));
}

void AlignFileSaveTest::saveOfTheGreatestPayloadIsReadBack_data()
{
    QTest::addColumn<int>("freqPoints");
    QTest::addColumn<int>("sampleRatePoints");
    QTest::addColumn<int>("lastGainEntries");
    QTest::addColumn<int>("payload");
    // The first 39 sample-rate points are full, the 40th has the last gain entries, a 41st has none.
    QTest::newRow("a little below the limit") << 5 << 40 << 25 << 16380;
    QTest::newRow("the greatest payload") << 8 << 41 << 20 << 16383;
    QTest::newRow("one byte more") << 7 << 40 << 23 << 16384;
    QTest::newRow("fits the buffer, not the format") << 5 << 40 << 26 << 16388;
    QTest::newRow("longer than the buffer") << 5 << 40 << 27 << 16396;
}

void AlignFileSaveTest::saveOfTheGreatestPayloadIsReadBack()
{
    QFETCH(int, freqPoints);
    QFETCH(int, sampleRatePoints);
    QFETCH(int, lastGainEntries);
    QFETCH(int, payload);
    QCOMPARE(10 + 10 * freqPoints + 13 * sampleRatePoints + 8 * (39 * 50 + lastGainEntries), payload);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    AlignTable *table = store.AppendNewTable(store.Tables);
    QVERIFY(table != nullptr);
    table->DataSetCount = 1;
    AlignDataSet &dataSet = table->DataSets[0];
    dataSet.FreqPointCount = static_cast<std::uint16_t>(freqPoints);
    dataSet.FreqPoints[4].SampleRatePointCount = static_cast<std::uint8_t>(sampleRatePoints - 40);
    for (std::size_t i = 0; i < 4; ++i) {
        dataSet.FreqPoints.at(i).SampleRatePointCount = 10;
        for (AlignSampleRatePoint &ratePoint : dataSet.FreqPoints.at(i).SampleRatePoints) {
            ratePoint.GainEntryCount = 50;
            ratePoint.GainEntries[49].Value4 = static_cast<std::uint16_t>(i + 1);
        }
    }
    dataSet.FreqPoints[3].SampleRatePoints[9].GainEntryCount = static_cast<std::uint8_t>(lastGainEntries);
    if (payload >= 16384) {
        QCOMPARE(store.SaveFile(Path), AlignResult::InternalError);
        QVERIFY(!QFileInfo::exists(Path));
        return;
    }
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    QCOMPARE(QFileInfo(Path).size(), qint64{7 + 143 + 2 + payload + 4});
    AlignStore loaded;
    QCOMPARE(loaded.LoadFile(Path, loaded.Tables, true), AlignResult::Ok);
    QCOMPARE(tests::Difference(loaded.Tables, store.Tables), QString());
}

void AlignFileSaveTest::saveReplacesALongerFile()
{
    QVERIFY(tests::WriteFileBytes(Path, QByteArray(100000, 'x')));
    AlignStore store;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    QCOMPARE(QFileInfo(Path).size(), qint64{150});
}

void AlignFileSaveTest::saveIntoAMissingFolderGives9()
{
    AlignStore store;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    QCOMPARE(store.SaveFile(path(u"missing/file.ad"_s)), AlignResult::FileError);
    QCOMPARE(store.SaveFile(QString()), AlignResult::FileError);
    QCOMPARE(store.Tables.Count, std::uint16_t{1});
}

void AlignFileSaveTest::saveToAFolderGives9()
{
    AlignStore store;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    QCOMPARE(store.SaveFile(Folder->path()), AlignResult::FileError);
}

void AlignFileSaveTest::pathWithNonAsciiLetters_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("umlauts") << u"Übermaß.ad"_s;
    QTest::newRow("Cyrillic") << u"Приёмник.ad"_s;
    QTest::newRow("Chinese") << u"接收机.ad"_s;
    QTest::newRow("beyond the first 65536 letters") << u"📡.ad"_s;
    QTest::newRow("blanks") << u"a file.ad"_s;
}

void AlignFileSaveTest::pathWithNonAsciiLetters()
{
    QFETCH(QString, name);
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    const QString file = path(name);
    QCOMPARE(store.SaveFile(file), AlignResult::Ok);
    QCOMPARE(QDir(Folder->path()).entryList(QDir::Files), QStringList{name});
    QCOMPARE(store.LoadFile(file, store.ImportTables, false), AlignResult::Ok);
    QCOMPARE(tests::HwIdsOf(store.ImportTables), QList<QByteArray>{"ABC"});
}

void AlignFileSaveTest::loadAndSave65535Tables()
{
    tools::AlignmentGenerator generator(3);
    AlignStore store;
    QVERIFY(generator.AppendEmptyTables(store, 65535)); // of no type: without blocks
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    QCOMPARE(QFileInfo(Path).size(), qint64{7} + qint64{65535} * 143);
    QCOMPARE(store.LoadFile(Path, store.ImportTables, false), AlignResult::Ok);
    QCOMPARE(tests::Difference(store.ImportTables, store.Tables), QString());
}

TARNVIK_TEST_MAIN(AlignFileSaveTest, QCoreApplication)
#include "AlignFileSaveTest.moc"
