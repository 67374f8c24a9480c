// SPDX-License-Identifier: MIT
// Import into the alignment dialog: by button, by drop, with the file dialogs and message boxes.
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "tests/TarnvikControl/AnsweredDialogFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

using tests::ImportFile;
using tests::Rtl;

class QDlgAlignmentCfg_FilesTest : public tests::AnsweredDialogFixture
{
    Q_OBJECT

private slots:
    void init();

    void theImportDialogStartsOnTheDesktopThenWhereTheLastImportWas();
    void severalFilesAreImportedAtOnce();
    void theNextImportStartsWhereTheFirstFileWas();
    void cancellingTheFileDialogLeavesTheTreeAndItsCheckMarks();
    void theErrorsOfAnImportAreOneWarning();

    void aDraggedFileIsAcceptedByItsName_data();
    void aDraggedFileIsAcceptedByItsName();
    void whatCanOnlyBeMovedIsIgnored();
    void dataWithoutUrlsIsIgnored();
    void ofSeveralDroppedFilesTheAlignmentFilesAreImported();

private:
    /// Gives the dialog an event as it is: the application would deliver a drop only after a drag that was
    /// accepted.
    void Send(QEvent &event);
    Qt::DropAction Drop(QMimeData &data);
};

void QDlgAlignmentCfg_FilesTest::init()
{
    QVERIFY(QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)));
    AnsweredDialogFixture::init();
}

void QDlgAlignmentCfg_FilesTest::Send(QEvent &event)
{
    QObject &dialog = Shown->Dialog;
    dialog.event(&event);
}

Qt::DropAction QDlgAlignmentCfg_FilesTest::Drop(QMimeData &data)
{
    QDropEvent event(QPointF(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::ShiftModifier); // which proposes to move
    event.setDropAction(Qt::MoveAction);
    const qsizetype boxes = Answers->boxes().size();
    Send(event);
    if (Answers->boxes().size() != boxes)
        QTest::qFail("whoever drags waits for a message box", __FILE__, __LINE__);
    QCoreApplication::sendPostedEvents(&Shown->Dialog); // the import follows the drop
    return event.dropAction();
}

void QDlgAlignmentCfg_FilesTest::theImportDialogStartsOnTheDesktopThenWhereTheLastImportWas()
{
    Files->SetFiles({ImportFile(u"r.ad"_s)});
    Shown->button(u"Import..."_s).click();
    Files->SetCancel();
    Shown->button(u"Import..."_s).click();
    QCOMPARE(Files->offers().size(), 2);
    for (const tests::OfferedFiles &offer : Files->offers()) {
        QCOMPARE(offer.Title, u"Choose alignment file for importing"_s);
        QCOMPARE(offer.Filters, tests::FileFilters);
        QCOMPARE(offer.AcceptMode, QFileDialog::AcceptOpen);
        QCOMPARE(offer.FileMode, QFileDialog::ExistingFiles);
        QCOMPARE(offer.Parent, &Shown->Dialog);
    }
    QCOMPARE(QFileInfo(Files->offers().first().Folder),
             QFileInfo(QStandardPaths::standardLocations(QStandardPaths::DesktopLocation).first()));
    QCOMPARE(QFileInfo(Files->offers().last().Folder), QFileInfo(ImportFile(QString()).chopped(1)));
    QCOMPARE(Shown->item(Rtl, u"0x1"_s)->text(1),
             u"Aligned at: 2024-01-01 (Update from 2024-06-01 present)"_s);
    QVERIFY(Answers->boxes().isEmpty());
}

void QDlgAlignmentCfg_FilesTest::severalFilesAreImportedAtOnce()
{
    Files->SetFiles({ImportFile(u"r.ad"_s), ImportFile(u"a.ad"_s)});
    Shown->button(u"Import..."_s).click();
    QVERIFY(Shown->item(u"AirSpy"_s, u"0x9"_s));
    QCOMPARE(Shown->item(Rtl, u"0x1"_s)->checkState(0), Qt::Checked);
}

void QDlgAlignmentCfg_FilesTest::theNextImportStartsWhereTheFirstFileWas()
{
    Shown->Dialog.Slot_Button_Import({ImportFile(u"r.ad"_s), tests::RecorderFile(tests::RtlFile)});
    Shown->button(u"Import..."_s).click();
    QCOMPARE(Files->offers().size(), 1);
    QCOMPARE(QFileInfo(Files->offers().first().Folder), QFileInfo(ImportFile(QString()).chopped(1)));
}

void QDlgAlignmentCfg_FilesTest::cancellingTheFileDialogLeavesTheTreeAndItsCheckMarks()
{
    Shown->Dialog.Slot_Button_Import({ImportFile(u"r.ad"_s)});
    Shown->item(Rtl, u"0x1"_s)->setCheckState(0, Qt::Unchecked);
    const QTreeWidgetItem *const item = Shown->item(Rtl, u"0x1"_s);
    const QStringList before = Shown->lines();
    Shown->button(u"Import..."_s).click();
    QCOMPARE(Files->offers().size(), 1);
    QCOMPARE(Shown->lines(), before);
    QCOMPARE(Shown->item(Rtl, u"0x1"_s), item); // not even filled anew
}

void QDlgAlignmentCfg_FilesTest::theErrorsOfAnImportAreOneWarning()
{
    QVERIFY(tests::WriteFileBytes(ImportFile(u"bad.ad"_s), "rubbish"));
    Shown->Dialog.Slot_Button_Import(
        {ImportFile(u"bad.ad"_s), ImportFile(u"r.ad"_s), ImportFile(u"missing.ad"_s)});
    QCOMPARE(Answers->boxes().size(), 1);
    const tests::ShownBox &box = Answers->boxes().first();
    QCOMPARE(box.Title, u"Importing alignment data"_s);
    QCOMPARE(box.Text, u"Error while loding:\nbad.ad: Version Missmatched\nmissing.ad: File Error"_s);
    QCOMPARE(box.Icon, QMessageBox::Warning);
    QCOMPARE(box.Buttons, QMessageBox::Ok);
    QCOMPARE(box.Parent, nullptr);
    QCOMPARE(Shown->item(Rtl, u"0x1"_s)->checkState(0), Qt::Checked); // what was read stays
}

void QDlgAlignmentCfg_FilesTest::aDraggedFileIsAcceptedByItsName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("an alignment file") << "/data/a.ad" << true;
    QTest::newRow("a.ad.txt: anywhere after the first character") << "/data/a.ad.txt" << true;
    QTest::newRow("only in the folder's name") << "/data.ad/a.txt" << true;
    QTest::newRow("upper-case AD") << "/data/a.AD" << false;
    QTest::newRow("starts with .ad") << ".ad" << false;
    QTest::newRow("starts with .ad and holds it again") << ".ad/b.ad" << true;
    QTest::newRow("another file") << "/data/a.txt" << false;
}

void QDlgAlignmentCfg_FilesTest::aDraggedFileIsAcceptedByItsName()
{
    QFETCH(QString, path);
    QFETCH(bool, accepted);
    QMimeData data;
    data.setUrls({QUrl(u"https://example.org/x.ad"_s), QUrl::fromLocalFile(path)});
    QDragEnterEvent event(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                          Qt::ShiftModifier);
    QCOMPARE(event.proposedAction(), Qt::MoveAction);
    event.setAccepted(!accepted);
    Send(event);
    QCOMPARE(event.isAccepted(), accepted);
    if (accepted)
        QCOMPARE(event.dropAction(), Qt::CopyAction); // nobody may delete the files
    Drop(data);                                       // no such file is there, so an import would tell
    QCOMPARE(Answers->boxes().size(), accepted ? 1 : 0);
}

void QDlgAlignmentCfg_FilesTest::whatCanOnlyBeMovedIsIgnored()
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(ImportFile(u"r.ad"_s))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::MoveAction, &data, Qt::LeftButton, {});
    Send(enter);
    QVERIFY(!enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::MoveAction, &data, Qt::LeftButton, {});
    Send(drop);
    QVERIFY(!drop.isAccepted());
}

void QDlgAlignmentCfg_FilesTest::dataWithoutUrlsIsIgnored()
{
    QMimeData data;
    data.setText(u"a.ad"_s);
    QDragEnterEvent event(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    Send(event);
    QVERIFY(!event.isAccepted());
    Drop(data);
    QVERIFY(Answers->boxes().isEmpty());
    QVERIFY(Files->offers().isEmpty());
}

void QDlgAlignmentCfg_FilesTest::ofSeveralDroppedFilesTheAlignmentFilesAreImported()
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/data/readme.txt"_s), QUrl::fromLocalFile(ImportFile(u"r.ad"_s)),
                  QUrl::fromLocalFile(ImportFile(u"a.ad"_s))});
    QCOMPARE(Drop(data), Qt::CopyAction); // nobody may delete the files
    QVERIFY(Answers->boxes().isEmpty());
    QCOMPARE(Shown->item(Rtl, u"0x1"_s)->checkState(0), Qt::Checked);
    QVERIFY(Shown->item(u"AirSpy"_s, u"0x9"_s));
}

TARNVIK_TEST_MAIN(QDlgAlignmentCfg_FilesTest, QApplication)

#include "QDlgAlignmentCfg_FilesTest.moc"
