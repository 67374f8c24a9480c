// SPDX-License-Identifier: MIT
// Saving from the alignment dialog: real files, and the questions, file dialogs and warnings that a user
// meets.
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "tests/TarnvikControl/AnsweredDialogFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <functional>

using namespace Qt::StringLiterals;

using tests::AirSpy;
using tests::AirspyFile;
using tests::AlignmentDialogFixture;
using tests::FileBytes;
using tests::ImportFile;
using tests::RecorderFile;
using tests::Rtl;
using tests::RtlFile;
using tests::TableBytes;
using tests::WriteAlignmentFile;
using tests::WriteFileBytes;

namespace {

const QString RtlImport = u"r.ad"_s;
const QString AirspyImport = u"a.ad"_s;

/// The title of the file dialog, and of its question whether to replace a file.
const QString ExportTitle = u"Choose alignment file for exporting"_s;
const QString ErrorTitle = u"Export alignment data"_s;

QString QuestionTitle(const QString &driver)
{
    return u"Update %1 alignment."_s.arg(driver);
}

/// All files of the recorder and all files to be imported, by path.
QMap<QString, QByteArray> AllFiles()
{
    QMap<QString, QByteArray> files;
    for (const QString &folder : {AlignmentDialogFixture::recorderFolder(), ImportFile(QString())}) {
        QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            files.insert(path, FileBytes(path));
        }
    }
    return files;
}

/// Turns one bit in the middle of a file over.
bool Damage(const QString &path)
{
    QByteArray bytes = FileBytes(path);
    if (bytes.isEmpty())
        return false;
    const qsizetype middle = bytes.size() / 2;
    bytes[middle] = static_cast<char>(bytes[middle] ^ 1);
    return WriteFileBytes(path, bytes);
}

/// Dates a file back to a year in which nothing wrote it.
bool MakeOld(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite) &&
           file.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(12, 0)), QFileDevice::FileModificationTime);
}

bool WasWritten(const QString &path)
{
    return QFileInfo(path).lastModified().date().year() > 2001;
}

} // namespace

class QDlgAlignmentCfg_SaveTest : public tests::AnsweredDialogFixture
{
    Q_OBJECT

private slots:
    void theSaveDialogOffersTheDriversFile();
    void anOlderVersionCheckedByTheUserReplacesTheNewer();
    void twoCheckedTablesOfOneImportedFileAreBothTaken();
    void aCheckedTableGoesIntoAFileThatLostItsTables();

    void withNothingCheckedTheUserIsAsked_data();
    void withNothingCheckedTheUserIsAsked();
    void yesToNoChangesWritesTheFileUnchanged_data();
    void yesToNoChangesWritesTheFileUnchanged();
    void aDriverWithoutAFileGetsWhatIsChecked_data();
    void aDriverWithoutAFileGetsWhatIsChecked();

    void aCancelledFileDialogSkipsTheDriver();
    void afterACancelledFileDialogTheNextDriverIsWritten();
    void noToReplacingTheFileAsksForAnotherOne();
    void aSecondSaveWorksFromTheSameCheckMarks();

    void anErrorIsAWarningAndNothingIsWritten_data();
    void anErrorIsAWarningAndNothingIsWritten();
    void anErrorInTheSecondDriverLeavesTheFirstWritten_data();
    void anErrorInTheSecondDriverLeavesTheFirstWritten();
    void anErrorInTheFirstDriverEndsTheRun();

private:
    void Import(const QStringList &names);
    void Save() { Shown->button(u"Save..."_s).click(); }
    void SetChecked(const QString &hardwareId, bool checked);
    [[nodiscard]] QStringList titles() const;
};

void QDlgAlignmentCfg_SaveTest::Import(const QStringList &names)
{
    QStringList files;
    for (const QString &name : names)
        files.append(ImportFile(name));
    Shown->Dialog.Slot_Button_Import(files);
}

void QDlgAlignmentCfg_SaveTest::SetChecked(const QString &hardwareId, bool checked)
{
    Shown->item(Rtl, hardwareId)->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
}

/// The message boxes' titles so far.
QStringList QDlgAlignmentCfg_SaveTest::titles() const
{
    QStringList titles;
    for (const tests::ShownBox &box : Answers->boxes())
        titles.append(box.Title);
    return titles;
}

void QDlgAlignmentCfg_SaveTest::theSaveDialogOffersTheDriversFile()
{
    const auto before = TableBytes(RecorderFile(RtlFile));
    Import({RtlImport});
    Answers->SetAnswer(QMessageBox::No); // for the driver without changes
    const QString copy = ImportFile(u"copy.ad"_s);
    Files->SetFiles({copy});
    Save();
    QCOMPARE(Files->offers().size(), 1);
    const tests::OfferedFiles &offer = Files->offers().first();
    QCOMPARE(offer.Title, ExportTitle);
    QCOMPARE(QFileInfo(offer.Folder), QFileInfo(AlignmentDialogFixture::recorderFolder()));
    QCOMPARE(offer.File, RtlFile);
    QCOMPARE(offer.Filters, tests::FileFilters);
    QCOMPARE(offer.AcceptMode, QFileDialog::AcceptSave);
    QCOMPARE(offer.Parent, &Shown->Dialog);
    const auto after = TableBytes(copy);
    QCOMPARE(after["0x1"], TableBytes(ImportFile(RtlImport))["0x1"]);
    QCOMPARE(after["0x2"], before["0x2"]);
    QCOMPARE(TableBytes(RecorderFile(RtlFile)), before);
}

void QDlgAlignmentCfg_SaveTest::anOlderVersionCheckedByTheUserReplacesTheNewer()
{
    const auto before = TableBytes(RecorderFile(RtlFile));
    Import({RtlImport});
    SetChecked(u"0x1"_s, false);
    SetChecked(u"0x2"_s, true);
    Files->SetTakeOffer();
    Save();
    const auto after = TableBytes(RecorderFile(RtlFile));
    QCOMPARE(after["0x1"], before["0x1"]);
    QCOMPARE(after["0x2"], TableBytes(ImportFile(RtlImport))["0x2"]);
}

void QDlgAlignmentCfg_SaveTest::twoCheckedTablesOfOneImportedFileAreBothTaken()
{
    Import({RtlImport});
    SetChecked(u"0x2"_s, true); // beside 0x1, which is checked by itself
    Answers->SetAnswerTo(QuestionTitle(AirSpy), QMessageBox::No);
    Files->SetTakeOffer();
    Save();
    QCOMPARE(Files->offers().size(), 1);
    QCOMPARE(titles(), (QStringList{QuestionTitle(AirSpy), ExportTitle}));
    QCOMPARE(TableBytes(RecorderFile(RtlFile)), TableBytes(ImportFile(RtlImport)));
}

void QDlgAlignmentCfg_SaveTest::aCheckedTableGoesIntoAFileThatLostItsTables()
{
    Import({RtlImport});
    QVERIFY(WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr, {}));
    Answers->SetAnswerTo(QuestionTitle(AirSpy), QMessageBox::No);
    Files->SetTakeOffer();
    Save();
    const auto after = TableBytes(RecorderFile(RtlFile));
    QCOMPARE(after.keys(), QList<QByteArray>{"0x1"});
    QCOMPARE(after["0x1"], TableBytes(ImportFile(RtlImport))["0x1"]);
}

void QDlgAlignmentCfg_SaveTest::withNothingCheckedTheUserIsAsked_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("yes leads to the file dialog") << int(QMessageBox::Yes);
    QTest::newRow("no skips the driver") << int(QMessageBox::No);
    QTest::newRow("Escape is a no") << int(QMessageBox::NoButton);
}

void QDlgAlignmentCfg_SaveTest::withNothingCheckedTheUserIsAsked()
{
    QFETCH(int, answer);
    Answers->SetAnswer(static_cast<QMessageBox::StandardButton>(answer));
    Save(); // the file dialogs are cancelled
    QCOMPARE(Answers->boxes().size(), 2);
    QStringList drivers = {AirSpy, Rtl};
    for (const tests::ShownBox &box : Answers->boxes()) {
        const QString driver = drivers.takeFirst();
        QCOMPARE(box.Title, QuestionTitle(driver));
        QCOMPARE(box.Text, u"No changes for the %1 driver.\nDo you still want to save?"_s.arg(driver));
        QCOMPARE(box.Icon, QMessageBox::Information);
        QCOMPARE(box.Buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(box.Parent, nullptr);
    }
    QCOMPARE(Files->offers().size(), answer == QMessageBox::Yes ? 2 : 0);
}

void QDlgAlignmentCfg_SaveTest::yesToNoChangesWritesTheFileUnchanged_data()
{
    QTest::addColumn<int>("toFirst");
    QTest::addColumn<int>("toSecond");
    QTest::newRow("yes for both drivers") << int(QMessageBox::Yes) << int(QMessageBox::Yes);
    QTest::newRow("yes, then no") << int(QMessageBox::Yes) << int(QMessageBox::No);
    QTest::newRow("no, then yes") << int(QMessageBox::No) << int(QMessageBox::Yes);
    QTest::newRow("Escape, then yes") << int(QMessageBox::NoButton) << int(QMessageBox::Yes);
}

void QDlgAlignmentCfg_SaveTest::yesToNoChangesWritesTheFileUnchanged()
{
    QFETCH(int, toFirst);
    QFETCH(int, toSecond);
    const auto before = AllFiles();
    QCOMPARE(before.size(), 4);
    QVERIFY(MakeOld(RecorderFile(AirspyFile)) && !WasWritten(RecorderFile(AirspyFile)));
    QVERIFY(MakeOld(RecorderFile(RtlFile)) && !WasWritten(RecorderFile(RtlFile)));
    Answers->SetAnswerTo(QuestionTitle(AirSpy), static_cast<QMessageBox::StandardButton>(toFirst));
    Answers->SetAnswerTo(QuestionTitle(Rtl), static_cast<QMessageBox::StandardButton>(toSecond));
    Files->SetTakeOffer();
    Save();
    QStringList expected = {QuestionTitle(AirSpy)};
    if (toFirst == QMessageBox::Yes)
        expected.append(ExportTitle); // replace the file?
    expected.append(QuestionTitle(Rtl));
    if (toSecond == QMessageBox::Yes)
        expected.append(ExportTitle);
    QCOMPARE(titles(), expected); // and no warning
    QCOMPARE(WasWritten(RecorderFile(AirspyFile)), toFirst == QMessageBox::Yes);
    QCOMPARE(WasWritten(RecorderFile(RtlFile)), toSecond == QMessageBox::Yes);
    QCOMPARE(AllFiles(), before);
}

void QDlgAlignmentCfg_SaveTest::aDriverWithoutAFileGetsWhatIsChecked_data()
{
    QTest::addColumn<bool>("checked");
    QTest::newRow("checked: the file is made") << true;
    QTest::newRow("unchecked: nothing is asked, none is made") << false;
}

void QDlgAlignmentCfg_SaveTest::aDriverWithoutAFileGetsWhatIsChecked()
{
    QFETCH(bool, checked);
    QVERIFY(QFile::remove(RecorderFile(AirspyFile)));
    Shown->button(u"Reset"_s).click();
    QVERIFY(!Shown->lines().contains(AirSpy));
    Import({AirspyImport});
    QTreeWidgetItem *const item = Shown->item(AirSpy, u"0x9"_s);
    QVERIFY(item);
    item->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
    auto expected = AllFiles();
    if (checked)
        expected.insert(RecorderFile(AirspyFile), FileBytes(ImportFile(AirspyImport)));
    Answers->SetAnswerTo(QuestionTitle(Rtl), QMessageBox::No);
    Files->SetTakeOffer();
    Save();
    QVERIFY(!titles().contains(QuestionTitle(AirSpy)));
    QCOMPARE(Files->offers().size(), checked ? 1 : 0);
    if (checked) {
        QCOMPARE(QFileInfo(Files->offers().first().Folder),
                 QFileInfo(AlignmentDialogFixture::recorderFolder()));
        QCOMPARE(Files->offers().first().File, AirspyFile);
    }
    QCOMPARE(AllFiles(), expected);
}

void QDlgAlignmentCfg_SaveTest::aCancelledFileDialogSkipsTheDriver()
{
    const auto before = AllFiles();
    Import({RtlImport});
    Answers->SetAnswer(QMessageBox::No);
    Save();
    QCOMPARE(Files->offers().size(), 1);
    QCOMPARE(AllFiles(), before);
    QCOMPARE(titles(), QStringList(QuestionTitle(AirSpy))); // no warning
}

void QDlgAlignmentCfg_SaveTest::afterACancelledFileDialogTheNextDriverIsWritten()
{
    const QByteArray airspy = FileBytes(RecorderFile(AirspyFile));
    Import({RtlImport, AirspyImport});
    Files->SetTakeOffer();
    Files->SetCancelNext();
    Save();
    QCOMPARE(Files->offers().size(), 2);
    QCOMPARE(Files->offers().first().File, AirspyFile);
    QCOMPARE(Files->offers().last().File, RtlFile);
    QCOMPARE(FileBytes(RecorderFile(AirspyFile)), airspy);
    QCOMPARE(TableBytes(RecorderFile(RtlFile))["0x1"], TableBytes(ImportFile(RtlImport))["0x1"]);
    QCOMPARE(titles(), QStringList(ExportTitle)); // no warning
}

void QDlgAlignmentCfg_SaveTest::noToReplacingTheFileAsksForAnotherOne()
{
    auto expected = AllFiles();
    expected.insert(ImportFile(u"other.ad"_s), FileBytes(RecorderFile(RtlFile)));
    Answers->SetAnswerTo(QuestionTitle(AirSpy), QMessageBox::No);
    Answers->SetAnswerTo(ExportTitle, QMessageBox::No);
    Files->SetFiles({ImportFile(u"other.ad"_s)});
    Files->SetTakeOfferNext();
    Save();
    QCOMPARE(titles(), (QStringList{QuestionTitle(AirSpy), QuestionTitle(Rtl), ExportTitle}));
    QCOMPARE(AllFiles(), expected);
}

void QDlgAlignmentCfg_SaveTest::aSecondSaveWorksFromTheSameCheckMarks()
{
    const QByteArray before = FileBytes(RecorderFile(RtlFile));
    Import({RtlImport});
    SetChecked(u"0x2"_s, true);
    const QStringList lines = Shown->lines();
    Answers->SetAnswerTo(QuestionTitle(AirSpy), QMessageBox::No);
    Files->SetTakeOffer();
    Save();
    QCOMPARE(Shown->lines(), lines); // not filled anew
    const QByteArray once = FileBytes(RecorderFile(RtlFile));
    QVERIFY(once != before);
    const QList<AlignmentRow> rows = Shown->Dialog.rows();
    // Back to the beginning, or a second save that does nothing would look the same.
    QVERIFY(WriteFileBytes(RecorderFile(RtlFile), before));
    Save();
    QCOMPARE(FileBytes(RecorderFile(RtlFile)), once);
    const QStringList asked = {QuestionTitle(AirSpy), ExportTitle};
    QCOMPARE(titles(), asked + asked);
    QCOMPARE(Files->offers().size(), 2);
    for (const tests::OfferedFiles &offer : Files->offers()) {
        QCOMPARE(QFileInfo(offer.Folder), QFileInfo(AlignmentDialogFixture::recorderFolder()));
        QCOMPARE(offer.File, RtlFile);
    }
    QVERIFY(Shown->Dialog.rows() == rows);
    QCOMPARE(Shown->lines(), lines);
}

using Situation = std::function<bool(tests::FileDialogAnswers &)>;

void QDlgAlignmentCfg_SaveTest::anErrorIsAWarningAndNothingIsWritten_data()
{
    QTest::addColumn<Situation>("arrange"); // what happens between the import and the save
    QTest::addColumn<bool>("checked");      // whether a table is taken over
    QTest::addColumn<int>("fileDialogs");
    QTest::addColumn<QString>("message");
    const auto newRow = [](const char *name, bool checked, int fileDialogs, const char *message,
                           const Situation &arrange) {
        QTest::newRow(name) << arrange << checked << fileDialogs << QString::fromLatin1(message);
    };
    newRow("the driver's file is damaged", true, 0, "File CRC check failed",
           [](auto &) { return Damage(RecorderFile(RtlFile)); });
    newRow("the driver's file is damaged and to be written unchanged", false, 0, "File CRC check failed",
           [](auto &) { return Damage(RecorderFile(RtlFile)); });
    newRow("the driver's file is no alignment file", true, 0, "Version Missmatched",
           [](auto &) { return WriteFileBytes(RecorderFile(RtlFile), "rubbish"); });
    newRow("a folder stands where the driver's file was", true, 0, "File Error", [](auto &) {
        return QFile::remove(RecorderFile(RtlFile)) && QDir().mkpath(RecorderFile(RtlFile));
    });
    newRow("the imported file has gone", true, 0, "File Error",
           [](auto &) { return QFile::remove(ImportFile(RtlImport)); });
    newRow("the imported file is damaged by now", true, 0, "File CRC check failed",
           [](auto &) { return Damage(ImportFile(RtlImport)); });
    newRow("the imported file is of another SDR type by now", true, 0, "AlignTable has the wrong SdrType",
           [](auto &) {
               return WriteAlignmentFile(ImportFile(RtlImport), SdrType::LimeUsb, {{"0x1", 1}});
           });
    newRow("the driver's file lost its tables", false, 1, "Aligntable-List is emptpy, nothing to save",
           [](tests::FileDialogAnswers &files) {
               files.SetTakeOffer();
               return WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr, {});
           });
    newRow("the chosen file is in a folder that is missing", true, 1, "File Error",
           [](tests::FileDialogAnswers &files) {
               files.SetFiles({ImportFile(u"missing/copy.ad"_s)});
               return true;
           });
    newRow("the chosen file is below a file", true, 1, "File Error", [](tests::FileDialogAnswers &files) {
        files.SetFiles({ImportFile(AirspyImport) + u"/copy.ad"_s});
        return true;
    });
}

void QDlgAlignmentCfg_SaveTest::anErrorIsAWarningAndNothingIsWritten()
{
    QFETCH(Situation, arrange);
    QFETCH(bool, checked);
    QFETCH(int, fileDialogs);
    QFETCH(QString, message);
    Import({RtlImport});
    SetChecked(u"0x1"_s, checked);
    QVERIFY(arrange(*Files));
    const auto before = AllFiles();
    Answers->SetAnswerTo(QuestionTitle(AirSpy), QMessageBox::No);
    Save();
    QCOMPARE(titles().count(ErrorTitle), 1);
    const tests::ShownBox &box = Answers->boxes().last();
    QCOMPARE(box.Title, ErrorTitle);
    QCOMPARE(box.Text, u"Error while exporting:\n"_s + message);
    QCOMPARE(box.Icon, QMessageBox::Warning);
    QCOMPARE(box.Buttons, QMessageBox::Ok);
    QCOMPARE(box.Parent, nullptr);
    QCOMPARE(titles().contains(QuestionTitle(Rtl)), !checked);
    QCOMPARE(Files->offers().size(), fileDialogs);
    QCOMPARE(AllFiles(), before);
}

void QDlgAlignmentCfg_SaveTest::anErrorInTheSecondDriverLeavesTheFirstWritten_data()
{
    QTest::addColumn<Situation>("arrange");
    QTest::addColumn<QString>("message");
    QTest::newRow("its file is damaged")
        << Situation([](auto &) { return Damage(RecorderFile(RtlFile)); }) << "File CRC check failed";
    QTest::newRow("its imported file has gone")
        << Situation([](auto &) { return QFile::remove(ImportFile(RtlImport)); }) << "File Error";
}

void QDlgAlignmentCfg_SaveTest::anErrorInTheSecondDriverLeavesTheFirstWritten()
{
    QFETCH(Situation, arrange);
    QFETCH(QString, message);
    Import({RtlImport, AirspyImport});
    QVERIFY(arrange(*Files));
    auto tables = TableBytes(RecorderFile(AirspyFile));
    tables.insert("0x9", TableBytes(ImportFile(AirspyImport))["0x9"]);
    const QByteArray rtl = FileBytes(RecorderFile(RtlFile));
    Files->SetTakeOffer();
    Save();
    QCOMPARE(titles(), (QStringList{ExportTitle, ErrorTitle}));
    QCOMPARE(Answers->boxes().last().Text, u"Error while exporting:\n"_s + message);
    QCOMPARE(TableBytes(RecorderFile(AirspyFile)), tables);
    QCOMPARE(FileBytes(RecorderFile(RtlFile)), rtl);
}

void QDlgAlignmentCfg_SaveTest::anErrorInTheFirstDriverEndsTheRun()
{
    Import({RtlImport, AirspyImport});
    QVERIFY(Damage(RecorderFile(AirspyFile)));
    const auto before = AllFiles();
    Files->SetTakeOffer();
    Save();
    QCOMPARE(titles(), QStringList(ErrorTitle));
    QVERIFY(Files->offers().isEmpty());
    QCOMPARE(AllFiles(), before);
}

TARNVIK_TEST_MAIN(QDlgAlignmentCfg_SaveTest, QApplication)

#include "QDlgAlignmentCfg_SaveTest.moc"
