// SPDX-License-Identifier: MIT
// How the alignment dialog is laid out, and how it is used with keyboard, screen reader and other fonts.
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "tests/TarnvikControl/AlignmentDialogFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLibraryInfo>
#include <QScreen>
#include <QSignalSpy>
#include <QVersionNumber>

#include <algorithm>

using namespace Qt::StringLiterals;

using tests::AlignmentDialogFixture;
using tests::Day;
using tests::RecorderFile;
using tests::Rtl;
using tests::RtlFile;
using tests::StationLines;
using tests::VersionsFile;
using tests::WriteAlignmentFile;
using tests::WriteStationWithVersions;

namespace {

/// How screen readers name a line with a check box. Qt tells them its state itself from 6.8 on.
QString NameOf(const QString &hardwareId, bool isChecked)
{
    if (QLibraryInfo::version() >= QVersionNumber(6, 8))
        return hardwareId;
    return hardwareId + (isChecked ? u", checked"_s : u", not checked"_s);
}

} // namespace

class QDlgAlignmentCfg_UseTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(AlignmentDialogFixture::PrepareFolders()); }

    void theLayoutHasItsLines();
    void quitAndEscapeRejectAndSaveNothing();
    void theDialogIsUsableWithTheKeyboardAlone();
    void enterNeverDropsTheImports();
    void screenReadersFindNamesAndDescriptions();
    void aLargerFontGivesAWiderDialog();
    void theTreeNeverAsksForMoreThanTheScreen();
    void theDialogGrowsWithTheTreeSoThatItIsNotCutOff();
    void closingItNeverEndsTheProgram();
};

void QDlgAlignmentCfg_UseTest::theLayoutHasItsLines()
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

void QDlgAlignmentCfg_UseTest::quitAndEscapeRejectAndSaveNothing()
{
    QVERIFY(WriteStationWithVersions());
    const QByteArray before = tests::FileBytes(RecorderFile(RtlFile));
    const tests::DialogAnswers answers(QMessageBox::Yes);
    for (const bool escape : {false, true}) {
        AlignmentDialogFixture shown;
        shown.Dialog.Slot_Button_Import(VersionsFile());
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

void QDlgAlignmentCfg_UseTest::theDialogIsUsableWithTheKeyboardAlone()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(VersionsFile());
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

void QDlgAlignmentCfg_UseTest::enterNeverDropsTheImports()
{
    QVERIFY(WriteStationWithVersions());
    tests::DialogAnswers answers(QMessageBox::No);
    AlignmentDialogFixture shown;
    QVERIFY(shown.button(u"Save..."_s).isDefault());
    QTest::keyClick(&shown.tree(), Qt::Key_Return);
    QCOMPARE(answers.boxes().size(), 2); // it is "Save...", which asks about both drivers
    QVERIFY(shown.Dialog.isVisible());
    QCOMPARE(shown.lines(), StationLines);
}

void QDlgAlignmentCfg_UseTest::screenReadersFindNamesAndDescriptions()
{
    QVERIFY(WriteStationWithVersions());
    AlignmentDialogFixture shown;
    shown.Dialog.Slot_Button_Import(VersionsFile());
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
    QCOMPARE(update->text(QAccessible::Name), NameOf(u"0x1"_s, true));
    QVERIFY(update->state().checkable);
    QVERIFY(update->state().checked);
    QVERIFY(!update->state().expanded);
    QAccessibleInterface *const unchanged = table->cellAt(1, 0); // has no check box
    QCOMPARE(unchanged->text(QAccessible::Name), u"0x1"_s);
    QVERIFY(!unchanged->state().expanded);
    QVERIFY(table->cellAt(0, 0)->state().expanded); // a driver
    shown.item(Rtl, u"0x1"_s)->setCheckState(0, Qt::Unchecked);
    QCOMPARE(update->text(QAccessible::Name), NameOf(u"0x1"_s, false));
    QVERIFY(!update->state().checked);
    QCOMPARE(table->cellAt(3, 1)->text(QAccessible::Name),
             u"Aligned at: 2024-01-01 (Update from 2024-06-01 present)"_s);
}

void QDlgAlignmentCfg_UseTest::aLargerFontGivesAWiderDialog()
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

void QDlgAlignmentCfg_UseTest::theTreeNeverAsksForMoreThanTheScreen()
{
    QVERIFY(WriteStationWithVersions());
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

void QDlgAlignmentCfg_UseTest::theDialogGrowsWithTheTreeSoThatItIsNotCutOff()
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

void QDlgAlignmentCfg_UseTest::closingItNeverEndsTheProgram()
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

TARNVIK_TEST_MAIN(QDlgAlignmentCfg_UseTest, QApplication)

#include "QDlgAlignmentCfg_UseTest.moc"
