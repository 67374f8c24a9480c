// SPDX-License-Identifier: MIT
// Import into the alignment dialog: by button, by drop, with the file dialogs and message boxes.
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "tests/TarnvikControl/AlignmentDialogFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/FileDialogAnswers.h"
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

#include <memory>

using tests::AlignmentDialogFixture;
using tests::ImportFile;
using tests::Rtl;

class QDlgAlignmentCfg_FilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theImportDialogStartsOnTheDesktopThenWhereTheLastImportWas();
    void severalFilesAreImportedAtOnce();
    void cancellingTheFileDialogLeavesTheTreeAndItsCheckMarks();
    void theErrorsOfAnImportAreOneWarning();

    void aDraggedFileIsAcceptedByItsName_data();
    void aDraggedFileIsAcceptedByItsName();
    void dataWithoutUrlsIsIgnored();
    void ofSeveralDroppedFilesTheAlignmentFilesAreImported();

private:
    /// Gives the dialog an event as it is: the application would deliver a drop only after a drag that was
    /// accepted.
    void send(QEvent &event);
    Qt::DropAction drop(QMimeData &data);

    std::unique_ptr<AlignmentDialogFixture> Shown;
    std::unique_ptr<tests::DialogAnswers> Answers;
    std::unique_ptr<tests::FileDialogAnswers> Files;
};

void QDlgAlignmentCfg_FilesTest::init()
{
    QVERIFY(AlignmentDialogFixture::prepareFolders());
    QVERIFY(QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)));
    QVERIFY(tests::WriteStationWithImports());
    Answers = std::make_unique<tests::DialogAnswers>(QMessageBox::Yes);
    Files = std::make_unique<tests::FileDialogAnswers>();
    Shown = std::make_unique<AlignmentDialogFixture>();
}

void QDlgAlignmentCfg_FilesTest::cleanup()
{
    Shown.reset();
    Files.reset();
    Answers.reset();
}

void QDlgAlignmentCfg_FilesTest::send(QEvent &event)
{
    QObject &dialog = Shown->Dialog;
    dialog.event(&event);
}

Qt::DropAction QDlgAlignmentCfg_FilesTest::drop(QMimeData &data)
{
    QDropEvent event(QPointF(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    event.setDropAction(Qt::MoveAction);
    const qsizetype boxes = Answers->boxes().size();
    send(event);
    if (Answers->boxes().size() != boxes)
        QTest::qFail("whoever drags waits for a message box", __FILE__, __LINE__);
    QCoreApplication::sendPostedEvents(&Shown->Dialog); // the import follows the drop
    return event.dropAction();
}

void QDlgAlignmentCfg_FilesTest::theImportDialogStartsOnTheDesktopThenWhereTheLastImportWas()
{
    Files->setFiles({ImportFile(QStringLiteral("r.ad"))});
    Shown->button(QStringLiteral("Import...")).click();
    Files->setCancel();
    Shown->button(QStringLiteral("Import...")).click();
    QCOMPARE(Files->offers().size(), 2);
    for (const tests::OfferedFiles &offer : Files->offers()) {
        QCOMPARE(offer.Title, QStringLiteral("Choose alignment file for importing"));
        QCOMPARE(offer.Filters, tests::FileFilters);
        QCOMPARE(offer.AcceptMode, QFileDialog::AcceptOpen);
        QCOMPARE(offer.FileMode, QFileDialog::ExistingFiles);
        QCOMPARE(offer.Parent, &Shown->Dialog);
    }
    QCOMPARE(QFileInfo(Files->offers().first().Folder),
             QFileInfo(QStandardPaths::standardLocations(QStandardPaths::DesktopLocation).first()));
    QCOMPARE(QFileInfo(Files->offers().last().Folder), QFileInfo(ImportFile(QString()).chopped(1)));
    QCOMPARE(Shown->item(Rtl, QStringLiteral("0x1"))->text(1),
             QStringLiteral("Aligned at: 2024-01-01 (Update from 2024-06-01 present)"));
    QVERIFY(Answers->boxes().isEmpty());
}

void QDlgAlignmentCfg_FilesTest::severalFilesAreImportedAtOnce()
{
    Files->setFiles({ImportFile(QStringLiteral("r.ad")), ImportFile(QStringLiteral("a.ad"))});
    Shown->button(QStringLiteral("Import...")).click();
    QVERIFY(Shown->item(QStringLiteral("AirSpy"), QStringLiteral("0x9")));
    QCOMPARE(Shown->item(Rtl, QStringLiteral("0x1"))->checkState(0), Qt::Checked);
}

void QDlgAlignmentCfg_FilesTest::cancellingTheFileDialogLeavesTheTreeAndItsCheckMarks()
{
    Shown->Dialog.Slot_Button_Import({ImportFile(QStringLiteral("r.ad"))});
    Shown->item(Rtl, QStringLiteral("0x1"))->setCheckState(0, Qt::Unchecked);
    const QTreeWidgetItem *const item = Shown->item(Rtl, QStringLiteral("0x1"));
    const QStringList before = Shown->lines();
    Shown->button(QStringLiteral("Import...")).click();
    QCOMPARE(Files->offers().size(), 1);
    QCOMPARE(Shown->lines(), before);
    QCOMPARE(Shown->item(Rtl, QStringLiteral("0x1")), item); // not even filled anew
}

void QDlgAlignmentCfg_FilesTest::theErrorsOfAnImportAreOneWarning()
{
    QVERIFY(tests::WriteFileBytes(ImportFile(QStringLiteral("bad.ad")), "rubbish"));
    Shown->Dialog.Slot_Button_Import({ImportFile(QStringLiteral("bad.ad")),
                                      ImportFile(QStringLiteral("r.ad")),
                                      ImportFile(QStringLiteral("missing.ad"))});
    QCOMPARE(Answers->boxes().size(), 1);
    const tests::ShownBox &box = Answers->boxes().first();
    QCOMPARE(box.Title, QStringLiteral("Importing alignment data"));
    QCOMPARE(box.Text,
             QStringLiteral("Error while loding:\nbad.ad: Version Missmatched\nmissing.ad: File Error"));
    QCOMPARE(box.Icon, QMessageBox::Warning);
    QCOMPARE(box.Buttons, QMessageBox::Ok);
    QCOMPARE(box.Parent, nullptr);
    QCOMPARE(Shown->item(Rtl, QStringLiteral("0x1"))->checkState(0), Qt::Checked); // what was read stays
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
    data.setUrls({QUrl(QStringLiteral("https://example.org/x.ad")), QUrl::fromLocalFile(path)});
    QDragEnterEvent event(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    event.setAccepted(!accepted);
    send(event);
    QCOMPARE(event.isAccepted(), accepted);
    drop(data); // no such file is there, so an import would tell
    QCOMPARE(Answers->boxes().size(), accepted ? 1 : 0);
}

void QDlgAlignmentCfg_FilesTest::dataWithoutUrlsIsIgnored()
{
    QMimeData data;
    data.setText(QStringLiteral("a.ad"));
    QDragEnterEvent event(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    send(event);
    QVERIFY(!event.isAccepted());
    drop(data);
    QVERIFY(Answers->boxes().isEmpty());
    QVERIFY(Files->offers().isEmpty());
}

void QDlgAlignmentCfg_FilesTest::ofSeveralDroppedFilesTheAlignmentFilesAreImported()
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/data/readme.txt")),
                  QUrl::fromLocalFile(ImportFile(QStringLiteral("r.ad"))),
                  QUrl::fromLocalFile(ImportFile(QStringLiteral("a.ad")))});
    QCOMPARE(drop(data), Qt::CopyAction); // nobody may delete the files
    QVERIFY(Answers->boxes().isEmpty());
    QCOMPARE(Shown->item(Rtl, QStringLiteral("0x1"))->checkState(0), Qt::Checked);
    QVERIFY(Shown->item(QStringLiteral("AirSpy"), QStringLiteral("0x9")));
}

TARNVIK_TEST_MAIN(QDlgAlignmentCfg_FilesTest, QApplication)

#include "QDlgAlignmentCfg_FilesTest.moc"
