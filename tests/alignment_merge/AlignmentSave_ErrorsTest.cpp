// SPDX-License-Identifier: MIT
// What a save of the alignment tables says and leaves when something goes wrong.
#include "alignment_merge/AlignmentSave.h"

#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/FailingAllocations.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/AlignmentSaveFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdint>

using namespace Qt::StringLiterals;

using tests::AirspyFile;
using tests::RtlFile;
using tests::TableBytes;
using tests::WriteAlignmentFile;

class AlignmentSave_ErrorsTest : public tests::AlignmentSaveFixture
{
    Q_OBJECT

private slots:
    void anErrorInTheSecondDriverLeavesTheFirstFileWritten();
    void anErrorInTheFirstDriverLeavesTheSecondAlone();
    void anErrorIsReported_data();
    void anErrorIsReported();
    void aTableThatCannotBeTakenOverLeavesTheFileAsItIs_data();
    void aTableThatCannotBeTakenOverLeavesTheFileAsItIs();
    void aTableWhoseIdIsNoTextIsTakenOver();
    void aMissingFolderIsMadeBeforeAFileIsAskedFor();
    void aFolderThatCannotBeMadeIsNamed();
    void aTableBehindOneThatCannotBeTakenOverStaysOut();
    void withoutMemoryTheSaveEnds_data();
    void withoutMemoryTheSaveEnds();
};

void AlignmentSave_ErrorsTest::anErrorInTheSecondDriverLeavesTheFirstFileWritten()
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

void AlignmentSave_ErrorsTest::anErrorInTheFirstDriverLeavesTheSecondAlone()
{
    QVERIFY(WriteAlignmentFile(path(AirspyFile), SdrType::AirSpy, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"a.ad"_s), SdrType::AirSpy, {{"A", 9}}));
    QVERIFY(WriteAlignmentFile(imported(u"r.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"a.ad"_s, u"r.ad"_s});
    QVERIFY(tests::WriteFileBytes(path(AirspyFile), "rubbish"));
    const QByteArray before = tests::FileBytes(path(RtlFile));
    QCOMPARE(Save(Choices()), u"Version Missmatched"_s);
    QVERIFY(Proposed.isEmpty());
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
}

void AlignmentSave_ErrorsTest::anErrorIsReported_data()
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

void AlignmentSave_ErrorsTest::anErrorIsReported()
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

void AlignmentSave_ErrorsTest::aTableThatCannotBeTakenOverLeavesTheFileAsItIs_data()
{
    QTest::addColumn<int>("sdrType");
    QTest::addColumn<int>("capacity"); // stated by the imported table
    QTest::newRow("its receiver type is unknown") << 7 << 0;
    QTest::newRow("it states another number of data sets than its type has") << int(SdrType::RtlSdr) << 3;
}

void AlignmentSave_ErrorsTest::aTableThatCannotBeTakenOverLeavesTheFileAsItIs()
{
    QFETCH(int, sdrType);
    QFETCH(int, capacity);
    const auto type = static_cast<SdrType>(sdrType);
    const QString file = path(u"TarnvikDriver_RtlSdr.ad"_s);
    const QString import = imported(u"i.ad"_s);
    QVERIFY(WriteAlignmentFile(file, type, {{"A", 5}, {"B", 5}}));
    QVERIFY(WriteAlignmentFile(import, type, {{"A", 9}}));
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

void AlignmentSave_ErrorsTest::aTableWhoseIdIsNoTextIsTakenOver()
{
    const QByteArray hwId = "A\x81\xFE\x81";
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{hwId, 5}, {"A\x82", 5}}));
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{hwId, 9}}));
    QMap<QByteArray, QByteArray> expected = TableBytes(path(RtlFile));
    expected.insert(TableBytes(imported(u"i.ad"_s)));
    LoadStation({u"i.ad"_s});
    QCOMPARE(Save(Choices()), QString());
    QCOMPARE(TableBytes(path(RtlFile)), expected);
}

void AlignmentSave_ErrorsTest::aMissingFolderIsMadeBeforeAFileIsAskedFor()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    LoadStation({u"i.ad"_s});
    DriversFolder = path(u"Quillane GmbH/TarnvikRecord"_s);
    bool wasThere = false;
    AnswerToFile = [&](const QString &proposal) {
        wasThere = QFileInfo(proposal).dir().exists();
        return proposal;
    };
    QCOMPARE(Save(Choices()), QString());
    QVERIFY(wasThere);
    QCOMPARE(Proposed, QStringList(DriversFolder + u'/' + RtlFile));
    QCOMPARE(TableBytes(DriversFolder + u'/' + RtlFile), TableBytes(imported(u"i.ad"_s)));
}

void AlignmentSave_ErrorsTest::aFolderThatCannotBeMadeIsNamed()
{
    QVERIFY(WriteAlignmentFile(imported(u"i.ad"_s), SdrType::RtlSdr, {{"A", 9}}));
    QVERIFY(tests::WriteFileBytes(path(u"Quillane GmbH"_s), "a file in the folder's place"));
    LoadStation({u"i.ad"_s});
    DriversFolder = path(u"Quillane GmbH/TarnvikRecord"_s);
    QCOMPARE(Save(Choices()), u"The folder can not be made:\n"_s + QDir::toNativeSeparators(DriversFolder));
    QVERIFY(Proposed.isEmpty());
}

void AlignmentSave_ErrorsTest::aTableBehindOneThatCannotBeTakenOverStaysOut()
{
    const QString import = imported(u"i.ad"_s);
    QVERIFY(WriteAlignmentFile(path(RtlFile), SdrType::RtlSdr, {{"A", 5}}));
    QVERIFY(WriteAlignmentFile(import, SdrType::RtlSdr, {{"A", 7}, {"A", 9}}));
    AlignStore store;
    QCOMPARE(store.LoadFile(import, store.Tables, true), AlignResult::Ok);
    store.Tables.Head->Table->DataSetCapacity = 3; // not what its type has
    QCOMPARE(store.SaveFile(import), AlignResult::Ok);
    LoadStation({u"i.ad"_s});
    const QByteArray before = tests::FileBytes(path(RtlFile));
    QCOMPARE(Save(Choices()), u"Internal Error"_s);
    QCOMPARE(tests::FileBytes(path(RtlFile)), before);
}

void AlignmentSave_ErrorsTest::withoutMemoryTheSaveEnds_data()
{
    QTest::addColumn<int>("allocations");
    QTest::addColumn<QString>("message");
    QTest::newRow("no store") << 0 << "Out of memory";
    QTest::newRow("the target cannot be loaded") << 1 << "Internal Error";
    QTest::newRow("the source cannot be loaded") << 3 << "Internal Error";
    QTest::newRow("the merge fails") << 6 << "Internal Error";
}

void AlignmentSave_ErrorsTest::withoutMemoryTheSaveEnds()
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

TARNVIK_TEST_MAIN(AlignmentSave_ErrorsTest, QCoreApplication)

#include "AlignmentSave_ErrorsTest.moc"
