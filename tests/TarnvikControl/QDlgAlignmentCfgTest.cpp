// SPDX-License-Identifier: MIT
// What the alignment dialog shows.
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "tests/TarnvikControl/AlignmentDialogFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLayout>
#include <QMetaMethod>

#include <algorithm>
#include <cstdlib>
#include <limits>

using namespace Qt::StringLiterals;

using tests::AlignmentDialogFixture;
using tests::Day;
using tests::FileTable;
using tests::RecorderFile;
using tests::Rtl;
using tests::RtlFile;
using tests::StationLines;
using tests::VersionsFile;
using tests::WriteAlignmentFile;
using tests::WriteStationWithVersions;

namespace {

const QStringList ImportedLines = {
    u"AirSpy"_s,
    u"0x1 | Aligned at: 2023-01-01"_s,
    u"RTL-SDR"_s,
    u"[x] 0x1 | Aligned at: 2024-01-01 (Update from 2024-06-01 present)"_s,
    u"[ ] 0x2 | Aligned at: 2024-02-02 (Old data from 2022-02-02 present)"_s,
    u"0x3 | Aligned at: 2024-03-03"_s,
    u"[x] 0x4 | Aligned at: 2024-04-04 (New in data-base)"_s,
};

} // namespace

class QDlgAlignmentCfgTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(AlignmentDialogFixture::PrepareFolders()); }

    void theClassTellsAboutItself();
    void nothingIsLoadedOrLaidOutBeforeTheFirstShow();
    void theTreeShowsDriversAndTables();
    void anImportColoursTheRowsAndSaysTheSameInWords();
    void aCheckMarkIsSeenOnEveryColour_data();
    void aCheckMarkIsSeenOnEveryColour();
    void importingTheFileLoadedAtResetChangesNothing();
    void anEmptyOrMissingDataFolderGivesAnEmptyTreeAndNoMessage_data();
    void anEmptyOrMissingDataFolderGivesAnEmptyTreeAndNoMessage();
    void twoFilesWithTheSameTableGiveOneRow();
    void aDateBeyondTheCalendarIsNotShownAsAnotherDate();
    void resetDropsWhatWasImported();
    void resetReadsTheDriversFilesOnly();
    void clearEmptiesTheTreeAndTouchesNoFile();
    void aRefillSetsTheCheckMarksToTheirDefaults();
    void theTreeStartsAscendingAndARefillKeepsTheUsersOrder();
    void sixtyFiveThousandRowsAreShownQuickly();
};

void QDlgAlignmentCfgTest::theClassTellsAboutItself()
{
    const QMetaObject &meta = QDlgAlignmentCfg::staticMetaObject;
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Status")).value(), "Development");
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QStringList slotNames;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        slotNames.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(slotNames, (QStringList{u"Slot_Button_Reset()"_s, u"Slot_Button_Clear()"_s,
                                     u"Slot_Button_Import(QStringList)"_s, u"Slot_Button_Import()"_s,
                                     u"Slot_Button_Save()"_s}));
}

void QDlgAlignmentCfgTest::nothingIsLoadedOrLaidOutBeforeTheFirstShow()
{
    QVERIFY(WriteStationWithVersions());
    QDlgAlignmentCfg dialog;
    QVERIFY(!dialog.parent());
    QVERIFY(!dialog.layout());
    QVERIFY(dialog.rows().isEmpty());
    QVERIFY(dialog.acceptDrops());
    QVERIFY(dialog.windowTitle().isEmpty());
    dialog.Slot_Button_Reset(); // works without a layout
    QCOMPARE(dialog.rows().size(), 4);
    dialog.show();
    const QLayout *const layout = dialog.layout();
    QVERIFY(layout);
    dialog.hide();
    dialog.show();
    QCOMPARE(dialog.layout(), layout); // built once
}

void QDlgAlignmentCfgTest::theTreeShowsDriversAndTables()
{
    QVERIFY(WriteStationWithVersions());
    const AlignmentDialogFixture shown;
    QCOMPARE(shown.lines(), StationLines); // all of it is expanded, or the lines below were missing
    const QTreeWidgetItem &driver = *shown.tree().topLevelItem(1);
    QCOMPARE(driver.flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    QCOMPARE(driver.child(0)->flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    for (const int column : {0, 1})
        QCOMPARE(driver.child(0)->background(column).style(), Qt::NoBrush);
}

void QDlgAlignmentCfgTest::anImportColoursTheRowsAndSaysTheSameInWords()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(VersionsFile());
    QCOMPARE(shown.lines(), ImportedLines);
    const std::pair<const char *, Qt::GlobalColor> coloured[] = {
        {"0x1", Qt::darkGreen}, {"0x2", Qt::darkYellow}, {"0x4", Qt::darkGreen}};
    for (const auto &[id, colour] : coloured) {
        const QTreeWidgetItem &item = *shown.item(Rtl, QString::fromLatin1(id));
        QCOMPARE(item.flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        for (const int column : {0, 1}) {
            QCOMPARE(item.background(column), QBrush(colour, Qt::SolidPattern));
            QCOMPARE(item.foreground(column).color(), QColor(Qt::white));
        }
    }
    // A table of the same date is plain text without check box and colour.
    const QTreeWidgetItem &same = *shown.item(Rtl, u"0x3"_s);
    QCOMPARE(same.flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    QCOMPARE(same.background(0).style(), Qt::NoBrush);
}

void QDlgAlignmentCfgTest::aCheckMarkIsSeenOnEveryColour_data()
{
    QTest::addColumn<QString>("hardwareId");
    QTest::newRow("on the green of an update") << "0x1";
    QTest::newRow("on the yellow of old data") << "0x2";
    QTest::newRow("on the green of a new table") << "0x4";
}

void QDlgAlignmentCfgTest::aCheckMarkIsSeenOnEveryColour()
{
    QFETCH(QString, hardwareId);
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(VersionsFile());
    QTreeWidgetItem *const item = shown.item(Rtl, hardwareId);
    const auto picture = [&](Qt::CheckState state) {
        item->setCheckState(0, state);
        return shown.tree().viewport()->grab(shown.tree().visualItemRect(item)).toImage();
    };
    const QImage checked = picture(Qt::Checked);
    const QImage unchecked = picture(Qt::Unchecked);
    int greatest = 0; // what differs between the two is the mark
    for (int y = 0; y < checked.height(); ++y) {
        for (int x = 0; x < checked.width(); ++x)
            greatest =
                std::max(greatest, std::abs(qGray(checked.pixel(x, y)) - qGray(unchecked.pixel(x, y))));
    }
    QVERIFY2(greatest >= 90, qPrintable(QString::number(greatest)));
}

void QDlgAlignmentCfgTest::importingTheFileLoadedAtResetChangesNothing()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import({RecorderFile(RtlFile)});
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfgTest::anEmptyOrMissingDataFolderGivesAnEmptyTreeAndNoMessage_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("empty folder") << "empty";
    QTest::newRow("missing folder") << "missing";
    QTest::newRow("folder with nothing but a damaged file") << "damaged";
}

void QDlgAlignmentCfgTest::anEmptyOrMissingDataFolderGivesAnEmptyTreeAndNoMessage()
{
    QFETCH(QString, what);
    if (what == QLatin1String("missing"))
        QVERIFY(QDir(AlignmentDialogFixture::recorderFolder()).removeRecursively());
    if (what == QLatin1String("damaged"))
        QVERIFY(tests::WriteFileBytes(RecorderFile(RtlFile), "rubbish"));
    const tests::DialogAnswers answers(QMessageBox::Ok);
    const AlignmentDialogFixture shown;
    shown.button(u"Reset"_s).click();
    QCOMPARE(shown.tree().topLevelItemCount(), 0);
    QVERIFY(answers.boxes().isEmpty());
}

void QDlgAlignmentCfgTest::twoFilesWithTheSameTableGiveOneRow()
{
    QVERIFY(WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr, {{"0x1", Day("2024-01-01")}}));
    QVERIFY(WriteAlignmentFile(RecorderFile(u"TarnvikDriver_copy.ad"_s), SdrType::RtlSdr,
                               {{"0x1", Day("2024-01-02")}}));
    const AlignmentDialogFixture shown;
    QCOMPARE(shown.lines(), (QStringList{Rtl, u"0x1 | Aligned at: 2024-01-02"_s}));
}

void QDlgAlignmentCfgTest::aDateBeyondTheCalendarIsNotShownAsAnotherDate()
{
    QVERIFY(WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr,
                               {{"0x1", std::numeric_limits<quint64>::max()}}));
    const AlignmentDialogFixture shown;
    QCOMPARE(shown.lines(), (QStringList{Rtl, u"0x1 | Aligned at: 18446744073709551615 s"_s}));
}

void QDlgAlignmentCfgTest::resetDropsWhatWasImported()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(VersionsFile());
    shown.button(u"Reset"_s).click();
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfgTest::resetReadsTheDriversFilesOnly()
{
    QVERIFY(WriteStationWithVersions());
    const AlignmentDialogFixture shown;
    QVERIFY(WriteAlignmentFile(RecorderFile(u"Backup_RtlSdr.ad"_s), SdrType::RtlSdr,
                               {{"0x9", Day("2024-01-09")}}));
    shown.button(u"Reset"_s).click();
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfgTest::clearEmptiesTheTreeAndTouchesNoFile()
{
    QVERIFY(WriteStationWithVersions());
    const QByteArray before = tests::FileBytes(RecorderFile(RtlFile));
    const AlignmentDialogFixture shown;
    shown.button(u"Clear"_s).click();
    QCOMPARE(shown.tree().topLevelItemCount(), 0);
    QVERIFY(shown.Dialog.rows().isEmpty());
    QCOMPARE(tests::FileBytes(RecorderFile(RtlFile)), before);
}

void QDlgAlignmentCfgTest::aRefillSetsTheCheckMarksToTheirDefaults()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(VersionsFile());
    shown.item(Rtl, u"0x1"_s)->setCheckState(0, Qt::Unchecked);
    shown.item(Rtl, u"0x2"_s)->setCheckState(0, Qt::Checked);
    shown.Dialog.Slot_Button_Import(VersionsFile());
    QCOMPARE(shown.lines(), ImportedLines);
}

void QDlgAlignmentCfgTest::theTreeStartsAscendingAndARefillKeepsTheUsersOrder()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    QHeaderView *const header = shown.tree().header();
    QVERIFY(shown.tree().isSortingEnabled());
    QCOMPARE(header->sortIndicatorSection(), 0);
    QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(5, header->height() / 2));
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    shown.Dialog.Slot_Button_Import(VersionsFile());
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    QStringList ids;
    for (int i = 0; i < 4; ++i)
        ids.append(shown.tree().topLevelItem(0)->child(i)->text(0));
    QCOMPARE(shown.tree().topLevelItem(0)->text(0), Rtl);
    QCOMPARE(ids, (QStringList{u"0x4"_s, u"0x3"_s, u"0x2"_s, u"0x1"_s}));
}

void QDlgAlignmentCfgTest::sixtyFiveThousandRowsAreShownQuickly()
{
    QList<FileTable> tables;
    for (unsigned i = 0; i < 65'535; ++i)
        tables.append({QByteArray::number(i * 2654435761U, 16), Day("2024-01-01") + i * 3600ULL});
    QVERIFY(WriteAlignmentFile(RecorderFile(u"TarnvikDriver_x.ad"_s), static_cast<SdrType>(7), tables));
    QElapsedTimer time;
    time.start();
    const AlignmentDialogFixture shown;
    const qint64 opened = time.restart();
    QCOMPARE(shown.tree().topLevelItem(0)->childCount(), 65'535);
    shown.button(u"Reset"_s).click();
    const qint64 refilled = time.restart();
    shown.tree().sortByColumn(1, Qt::DescendingOrder);
    const qint64 sorted = time.restart();
    qInfo("opened in %lld ms, reset in %lld ms, sorted in %lld ms", static_cast<long long>(opened),
          static_cast<long long>(refilled), static_cast<long long>(sorted));
    QVERIFY(opened + refilled + sorted < 20'000); // a quadratic step takes minutes
}

TARNVIK_TEST_MAIN(QDlgAlignmentCfgTest, QApplication)

#include "QDlgAlignmentCfgTest.moc"
