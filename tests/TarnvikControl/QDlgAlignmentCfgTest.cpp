// SPDX-License-Identifier: MIT
// What the alignment dialog shows, and how it is used with keyboard and mouse.
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "tests/TarnvikControl/AlignmentDialogFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QMetaMethod>
#include <QScreen>
#include <QSignalSpy>

#include <algorithm>
#include <cstdlib>
#include <limits>

using namespace Qt::StringLiterals;

using tests::AirspyFile;
using tests::AlignmentDialogFixture;
using tests::Day;
using tests::FileTable;
using tests::ImportFile;
using tests::RecorderFile;
using tests::Rtl;
using tests::RtlFile;
using tests::WriteAlignmentFile;

namespace {

/// Two drivers with three tables, and a file with all kinds of versions of them.
bool WriteStation()
{
    const QList<FileTable> rtl = {
        {"0x3", Day("2024-03-03")}, {"0x1", Day("2024-01-01")}, {"0x2", Day("2024-02-02")}};
    const QList<FileTable> airspy = {{"0x1", Day("2023-01-01")}};
    const QList<FileTable> import = {{"0x1", Day("2024-06-01")},
                                     {"0x2", Day("2022-02-02")},
                                     {"0x3", Day("2024-03-03")},
                                     {"0x4", Day("2024-04-04")}};
    return WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr, rtl) &&
           WriteAlignmentFile(RecorderFile(AirspyFile), SdrType::AirSpy, airspy) &&
           WriteAlignmentFile(ImportFile(u"i.ad"_s), SdrType::RtlSdr, import);
}

const QStringList StationLines = {
    u"AirSpy"_s,
    u"0x1 | Aligned at: 2023-01-01"_s,
    u"RTL-SDR"_s,
    u"0x1 | Aligned at: 2024-01-01"_s,
    u"0x2 | Aligned at: 2024-02-02"_s,
    u"0x3 | Aligned at: 2024-03-03"_s,
};

const QStringList ImportedLines = {
    u"AirSpy"_s,
    u"0x1 | Aligned at: 2023-01-01"_s,
    u"RTL-SDR"_s,
    u"[x] 0x1 | Aligned at: 2024-01-01 (Update from 2024-06-01 present)"_s,
    u"[ ] 0x2 | Aligned at: 2024-02-02 (Old data from 2022-02-02 present)"_s,
    u"0x3 | Aligned at: 2024-03-03"_s,
    u"[x] 0x4 | Aligned at: 2024-04-04 (New in data-base)"_s,
};

QStringList Import()
{
    return {ImportFile(u"i.ad"_s)};
}

} // namespace

class QDlgAlignmentCfgTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(AlignmentDialogFixture::PrepareFolders()); }

    void theClassTellsAboutItself();
    void nothingIsLoadedOrLaidOutBeforeTheFirstShow();
    void theLayoutHasItsLines();
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
    void clearEmptiesTheTreeAndTouchesNoFile();
    void quitAndEscapeRejectAndSaveNothing();
    void aRefillSetsTheCheckMarksToTheirDefaults();
    void theTreeStartsAscendingAndARefillKeepsTheUsersOrder();
    void theDialogIsUsableWithTheKeyboardAlone();
    void enterNeverDropsTheImports();
    void screenReadersFindNamesAndDescriptions();
    void aLargerFontGivesAWiderDialog();
    void theTreeNeverAsksForMoreThanTheScreen();
    void theDialogGrowsWithTheTreeSoThatItIsNotCutOff();
    void sixtyFiveThousandRowsAreShownQuickly();
    void closingItNeverEndsTheProgram();
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
    QVERIFY(WriteStation());
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

void QDlgAlignmentCfgTest::theLayoutHasItsLines()
{
    const AlignmentDialogFixture shown;
    QCOMPARE(shown.Dialog.findChild<QLabel *>()->text(), u"Alignment data for SDR:"_s);
    QCOMPARE(shown.tree().columnCount(), 2);
    QCOMPARE(shown.tree().headerItem()->text(0), u"SDR"_s);
    QCOMPARE(shown.tree().headerItem()->text(1), u"Date of alignment"_s);
    QCOMPARE(shown.tree().selectionBehavior(), QAbstractItemView::SelectRows);
    QStringList buttons;
    const QList<QPushButton *> all = shown.Dialog.findChildren<QPushButton *>();
    for (const QPushButton *button : all)
        buttons.append(button->text() + u'|' + button->toolTip());
    QCOMPARE(buttons,
             (QStringList{u"Reset|Loads default"_s, u"Clear|Clear full list"_s, u"Import...|Imports data"_s,
                          u"Save...|Saves data"_s, u"Quit|Closes the dialog box"_s}));
    const auto bottom = [&](const QString &text) { return shown.button(text).geometry().bottom(); };
    QCOMPARE(bottom(u"Reset"_s), bottom(u"Save..."_s));
    QVERIFY(bottom(u"Quit"_s) - bottom(u"Save..."_s) > shown.button(u"Quit"_s).height() + 20);
    const QRect line = shown.tree().fontMetrics().boundingRect(
        u"________0x8888888888888888______Aligned to: 8888-88-88 (BBBBBBBBBBBBBBBBBBBBBBBBBBBBBB)____"_s);
    QCOMPARE(shown.tree().minimumHeight(), 20 * line.height());
    QCOMPARE(shown.Dialog.minimumWidth(), line.width() + 40);
}

void QDlgAlignmentCfgTest::theTreeShowsDriversAndTables()
{
    QVERIFY(WriteStation());
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
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(Import());
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
    // Of the same date: plain text, no check box, no colour.
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
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(Import());
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
    QVERIFY(WriteStation());
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
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(Import());
    shown.button(u"Reset"_s).click();
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfgTest::clearEmptiesTheTreeAndTouchesNoFile()
{
    QVERIFY(WriteStation());
    const QByteArray before = tests::FileBytes(RecorderFile(RtlFile));
    const AlignmentDialogFixture shown;
    shown.button(u"Clear"_s).click();
    QCOMPARE(shown.tree().topLevelItemCount(), 0);
    QVERIFY(shown.Dialog.rows().isEmpty());
    QCOMPARE(tests::FileBytes(RecorderFile(RtlFile)), before);
}

void QDlgAlignmentCfgTest::quitAndEscapeRejectAndSaveNothing()
{
    QVERIFY(WriteStation());
    const QByteArray before = tests::FileBytes(RecorderFile(RtlFile));
    const tests::DialogAnswers answers(QMessageBox::Yes);
    for (const bool escape : {false, true}) {
        AlignmentDialogFixture shown;
        shown.Dialog.Slot_Button_Import(Import());
        const QSignalSpy rejected(&shown.Dialog, &QDialog::rejected);
        if (escape)
            QTest::keyClick(&shown.tree(), Qt::Key_Escape);
        else
            shown.button(u"Quit"_s).click();
        QCOMPARE(rejected.size(), 1);
        QVERIFY(!shown.Dialog.isVisible());
    }
    QVERIFY(answers.boxes().isEmpty());
    QCOMPARE(tests::FileBytes(RecorderFile(RtlFile)), before);
}

void QDlgAlignmentCfgTest::aRefillSetsTheCheckMarksToTheirDefaults()
{
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(Import());
    shown.item(Rtl, u"0x1"_s)->setCheckState(0, Qt::Unchecked);
    shown.item(Rtl, u"0x2"_s)->setCheckState(0, Qt::Checked);
    shown.Dialog.Slot_Button_Import(Import());
    QCOMPARE(shown.lines(), ImportedLines);
}

void QDlgAlignmentCfgTest::theTreeStartsAscendingAndARefillKeepsTheUsersOrder()
{
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    QHeaderView *const header = shown.tree().header();
    QVERIFY(shown.tree().isSortingEnabled());
    QCOMPARE(header->sortIndicatorSection(), 0);
    QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(5, header->height() / 2));
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    shown.Dialog.Slot_Button_Import(Import());
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    QStringList ids;
    for (int i = 0; i < 4; ++i)
        ids.append(shown.tree().topLevelItem(0)->child(i)->text(0));
    QCOMPARE(shown.tree().topLevelItem(0)->text(0), Rtl);
    QCOMPARE(ids, (QStringList{u"0x4"_s, u"0x3"_s, u"0x2"_s, u"0x1"_s}));
}

void QDlgAlignmentCfgTest::theDialogIsUsableWithTheKeyboardAlone()
{
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(Import());
    QVERIFY(shown.tree().hasFocus());

    QTest::keyClick(&shown.tree(), Qt::Key_Home);
    for (int i = 0; i < 3; ++i) // AirSpy, 0x1, RTL-SDR, 0x1
        QTest::keyClick(&shown.tree(), Qt::Key_Down);
    QTreeWidgetItem *const update = shown.item(Rtl, u"0x1"_s);
    QCOMPARE(shown.tree().currentItem(), update);
    QTest::keyClick(&shown.tree(), Qt::Key_Space);
    QCOMPARE(update->checkState(0), Qt::Unchecked);
    QTest::keyClick(&shown.tree(), Qt::Key_Space);
    QCOMPARE(update->checkState(0), Qt::Checked);
    QTest::keyClick(&shown.tree(), Qt::Key_Down);
    QTest::keyClick(&shown.tree(), Qt::Key_Space);
    QCOMPARE(shown.item(Rtl, u"0x2"_s)->checkState(0), Qt::Checked);
    QTest::keyClick(&shown.tree(), Qt::Key_Down);
    QTest::keyClick(&shown.tree(), Qt::Key_Space); // no check box, and none appears
    QVERIFY(!shown.item(Rtl, u"0x3"_s)->data(0, Qt::CheckStateRole).isValid());

    QStringList order;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const auto *const button = qobject_cast<QPushButton *>(QApplication::focusWidget());
        order.append(button ? button->text() : u"no button"_s);
    }
    QCOMPARE(order, (QStringList{u"Reset"_s, u"Clear"_s, u"Import..."_s, u"Save..."_s, u"Quit"_s}));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(shown.tree().hasFocus());
    QTest::keyClick(&shown.tree(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // on Reset
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfgTest::enterNeverDropsTheImports()
{
    QVERIFY(WriteStation());
    tests::DialogAnswers answers(QMessageBox::No);
    AlignmentDialogFixture shown;
    QVERIFY(shown.button(u"Save..."_s).isDefault());
    QTest::keyClick(&shown.tree(), Qt::Key_Return);
    QCOMPARE(answers.boxes().size(), 2); // it is "Save...", which asks about both drivers
    QVERIFY(shown.Dialog.isVisible());
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfgTest::screenReadersFindNamesAndDescriptions()
{
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(Import());
    const auto text = [](QWidget &widget, QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(&widget)->text(kind);
    };
    QCOMPARE(text(shown.tree(), QAccessible::Name), u"Alignment data for SDR:"_s);
    QCOMPARE(shown.Dialog.findChild<QLabel *>()->buddy(), &shown.tree());
    const QList<QPushButton *> buttons = shown.Dialog.findChildren<QPushButton *>();
    QCOMPARE(buttons.size(), 5);
    for (QPushButton *const button : buttons) {
        QCOMPARE(text(*button, QAccessible::Name), button->text());
        QCOMPARE(text(*button, QAccessible::Description), button->toolTip());
        QVERIFY(!button->toolTip().isEmpty());
    }
    // The rows are read as they are shown, with the state of their check boxes.
    const QAccessibleTableInterface *const table =
        QAccessible::queryAccessibleInterface(&shown.tree())->tableInterface();
    QVERIFY(table);
    QAccessibleInterface *const update = table->cellAt(3, 0);
    QCOMPARE(update->text(QAccessible::Name), u"0x1"_s);
    QVERIFY(update->state().checkable);
    QVERIFY(update->state().checked);
    QCOMPARE(table->cellAt(3, 1)->text(QAccessible::Name),
             u"Aligned at: 2024-01-01 (Update from 2024-06-01 present)"_s);
}

void QDlgAlignmentCfgTest::aLargerFontGivesAWiderDialog()
{
    const int usual = AlignmentDialogFixture().Dialog.minimumWidth();
    const QFont font = QApplication::font();
    QFont larger = font;
    larger.setPointSize(font.pointSize() * 2);
    QApplication::setFont(larger);
    const int wider = AlignmentDialogFixture().Dialog.minimumWidth();
    QApplication::setFont(font);
    QVERIFY2(wider > usual * 3 / 2, qPrintable(u"%1 and %2"_s.arg(usual).arg(wider)));
}

void QDlgAlignmentCfgTest::theTreeNeverAsksForMoreThanTheScreen()
{
    QVERIFY(WriteStation());
    AlignmentDialogFixture shown;
    shown.button(u"Reset"_s).click();
    const QAbstractItemView &view = shown.tree();
    int contents = 0; // what the fill before gave the columns; the last one is stretched beyond it
    for (const int column : {0, 1})
        contents += std::max(view.sizeHintForColumn(column), shown.tree().header()->sectionSizeHint(column));
    for (int fill = 0; fill < 3; ++fill) {
        shown.button(u"Reset"_s).click();
        QCOMPARE(shown.tree().minimumWidth(), contents + 10); // does not grow
    }
    shown.tree().setColumnWidth(0, 10'000);
    shown.button(u"Reset"_s).click();
    QCOMPARE(shown.tree().minimumWidth(), QGuiApplication::primaryScreen()->availableGeometry().width() - 9);
    const int before = shown.tree().minimumWidth();
    shown.tree().header()->setMinimumSectionSize(1);
    shown.tree().setColumnWidth(0, 20);
    shown.tree().setColumnWidth(1, 20);
    shown.button(u"Reset"_s).click();
    QCOMPARE(shown.tree().minimumWidth(), before); // 100 or less is not applied
}

void QDlgAlignmentCfgTest::theDialogGrowsWithTheTreeSoThatItIsNotCutOff()
{
    // The id is as long as a file can hold it.
    QVERIFY(WriteAlignmentFile(RecorderFile(u"TarnvikDriver_LimeUsb.ad"_s), SdrType::LimeUsb,
                               {{QByteArray(128, 'W'), Day("2024-01-01")}}));
    AlignmentDialogFixture shown;
    shown.button(u"Reset"_s).click();
    QVERIFY(shown.tree().minimumWidth() > shown.Dialog.minimumWidth());
    QTRY_VERIFY(shown.tree().geometry().right() < shown.Dialog.width());
    QVERIFY(shown.tree().width() >= shown.tree().minimumWidth());
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

void QDlgAlignmentCfgTest::closingItNeverEndsTheProgram()
{
    QVERIFY(QGuiApplication::quitOnLastWindowClosed());
    // Closes the dialog in a running application; how often was it taken for the last window?
    const auto countLastWindows = [](QDialog &dialog) {
        const QSignalSpy lastWindowClosed(qApp, &QGuiApplication::lastWindowClosed);
        const auto close = [&dialog] {
            dialog.close();
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        };
        QMetaObject::invokeMethod(&dialog, close, Qt::QueuedConnection);
        QApplication::exec();
        return lastWindowClosed.size();
    };
    QDialog other;
    other.show();
    QCOMPARE(countLastWindows(other), 1);
    AlignmentDialogFixture shown; // the only window, as when the main window is hidden
    QCOMPARE(countLastWindows(shown.Dialog), 0);
}

TARNVIK_TEST_MAIN(QDlgAlignmentCfgTest, QApplication)

#include "QDlgAlignmentCfgTest.moc"
