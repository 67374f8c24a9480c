// SPDX-License-Identifier: MIT
// The whole program saving alignment tables where something is in the way: no folder yet, somebody else who
// writes the file, a full disk.
#include "tests/TarnvikControl/AlignmentDesktop.h"
#include "tests/TarnvikControl/Station.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tests/support/SmallDisk.h"
#include "tools/AlignmentGenerator.h"
#include "tools/RecorderReport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <memory>

using namespace Qt::StringLiterals;

using tests::Day;
using tests::DesktopPath;
using tests::DriverPath;
using tests::FileBytes;
using tests::TableBytes;
using tests::VirtualDesktop;
using tests::WriteAlignmentFile;

namespace {

const QString ErrorTitle = u"Export alignment data"_s;

/// Writes RTL-SDR tables that take up some kilobytes each.
bool WriteLargeFile(const QString &path, int tables, quint32 seed)
{
    tools::AlignmentGenerator generator(seed);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    return generator.AppendFullTables(store, tables, tools::AlignmentGenerator::Full::Deep) &&
           store.SaveFile(path) == AlignResult::Ok;
}

} // namespace

class TarnvikControl_SavingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aFreshStationGetsTheDriversFolder();
    void tablesThatSomebodyElseAddsMeanwhileStay();
    void aTableThatSomebodyElseChangedIsNotReplaced();
    void aFullDiskLeavesTheOldTables();

private:
    /// Starts the program and opens the dialog.
    void Open();

    std::unique_ptr<tools::RecorderReport> Report;
    std::unique_ptr<tests::Station> Station;
};

void TarnvikControl_SavingTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(tests::Title);
}

void TarnvikControl_SavingTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    QSettings(u"Quillane"_s, tests::Title).clear();
    QVERIFY(QDir().mkpath(DriverPath({})));
    QVERIFY(!DesktopPath({}).isEmpty());
}

void TarnvikControl_SavingTest::cleanup()
{
    if (Station)
        QCOMPARE(Station->errorOutput(), QString());
    Station.reset();
    Report.reset();
    const QString folder = DriverPath({});
    QVERIFY(QFileInfo(folder).isSymLink() ? QFile::remove(folder) : QDir(folder).removeRecursively());
}

void TarnvikControl_SavingTest::Open()
{
    Station = std::make_unique<tests::Station>();
    Station->Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && Station->shows(), tests::Patience);
    QVERIFY(tests::OpenDialog());
}

void TarnvikControl_SavingTest::aFreshStationGetsTheDriversFolder()
{
    QVERIFY(WriteAlignmentFile(DesktopPath(u"i.ad"_s), SdrType::RtlSdr, {{"0x1", Day("2024-01-01")}}));
    Open();
    QVERIFY(QDir(DriverPath({})).removeRecursively());
    QVERIFY(tests::Import(u"i.ad"_s));
    QVERIFY(tests::BeginToSave());
    QVERIFY(tests::AcceptProposedFile(false));
    QTRY_COMPARE(FileBytes(DriverPath()), FileBytes(DesktopPath(u"i.ad"_s)));
}

void TarnvikControl_SavingTest::tablesThatSomebodyElseAddsMeanwhileStay()
{
    QVERIFY(WriteAlignmentFile(DriverPath(), SdrType::RtlSdr, {{"0x1", Day("2024-01-01")}}));
    QVERIFY(WriteAlignmentFile(DesktopPath(u"i.ad"_s), SdrType::RtlSdr, {{"0x2", Day("2024-02-02")}}));
    Open();
    QVERIFY(tests::Import(u"i.ad"_s));
    QVERIFY(tests::BeginToSave());
    QVERIFY(WriteAlignmentFile(DriverPath(), SdrType::RtlSdr,
                               {{"0x1", Day("2024-01-01")}, {"0x3", Day("2024-03-03")}}));
    const QMap<QByteArray, QByteArray> meanwhile = TableBytes(DriverPath());
    QVERIFY(tests::AcceptProposedFile(true));
    QTRY_COMPARE(FileBytes(DriverPath()), tests::HeaderChunk(SdrType::RtlSdr, 3) + meanwhile["0x1"] +
                                              meanwhile["0x3"] + TableBytes(DesktopPath(u"i.ad"_s))["0x2"]);
}

void TarnvikControl_SavingTest::aTableThatSomebodyElseChangedIsNotReplaced()
{
    QVERIFY(WriteAlignmentFile(DriverPath(), SdrType::RtlSdr, {{"0x1", Day("2024-01-01")}}));
    QVERIFY(WriteAlignmentFile(DesktopPath(u"i.ad"_s), SdrType::RtlSdr, {{"0x1", Day("2024-02-02")}}));
    Open();
    QVERIFY(tests::Import(u"i.ad"_s));
    QVERIFY(tests::BeginToSave());
    QVERIFY(WriteAlignmentFile(DriverPath(), SdrType::RtlSdr, {{"0x1", Day("2024-03-03")}}));
    const QByteArray meanwhile = FileBytes(DriverPath());
    QVERIFY(tests::AcceptProposedFile(true));
    QVERIFY(tests::PressIn(ErrorTitle, {u"Return"_s}));
    QTRY_VERIFY(VirtualDesktop::windows(ErrorTitle).isEmpty());
    QCOMPARE(FileBytes(DriverPath()), meanwhile);
}

void TarnvikControl_SavingTest::aFullDiskLeavesTheOldTables()
{
    TARNVIK_NEEDS_SMALL_DISK();
    QVERIFY(tests::EmptySmallDisk());
    QVERIFY(QDir(DriverPath({})).removeRecursively());
    QVERIFY(QFile::link(tests::SmallDisk(), DriverPath({})));
    QVERIFY(WriteLargeFile(DriverPath(), 2, 1));
    QVERIFY(WriteLargeFile(DesktopPath(u"i.ad"_s), 1, 2));
    const QByteArray before = FileBytes(DriverPath());
    const QMap<QByteArray, QByteArray> old = TableBytes(DriverPath());
    QCOMPARE(old.size(), 2);
    Open();
    QVERIFY(tests::Import(u"i.ad"_s));
    QVERIFY(tests::FillSmallDisk(1));
    QVERIFY(tests::BeginToSave());
    QVERIFY(tests::AcceptProposedFile(true));
    QVERIFY(tests::PressIn(ErrorTitle, {u"Return"_s}));
    QTRY_VERIFY(VirtualDesktop::windows(ErrorTitle).isEmpty());
    QCOMPARE(FileBytes(DriverPath()), before);

    // With room again the same choice is saved.
    QVERIFY(QFile::remove(tests::SmallDisk() + u"/filler"_s));
    QVERIFY(tests::BeginToSave());
    QVERIFY(tests::AcceptProposedFile(true));
    QTRY_COMPARE(TableBytes(DriverPath()).size(), 3);
    for (auto table = old.cbegin(); table != old.cend(); ++table)
        QCOMPARE(TableBytes(DriverPath()).value(table.key()), table.value());
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_SavingTest)
#include "TarnvikControl_SavingTest.moc"
