// SPDX-License-Identifier: MIT
// The program's window, the alignment dialog and all they open, in the languages that are built: switched by
// the menu, with the built files.
#include "CommonQt/AppTranslation.h"
#include "Common_Files/Version.h"
#include "TarnvikControl/CMainWindow.h"
#include "tests/TarnvikControl/AlignmentDialogFixture.h"
#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/TarnvikControl/ModalReader.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/ShownTexts.h"
#include "tests/support/TestMain.h"
#include "tests/translations/KnownTexts.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QMenuBar>
#include <QScrollBar>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTextEdit>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

using tests::AlignmentDialogFixture;
using tests::Day;
using tests::KnownTexts;
using tests::ModalReader;
using tests::Panel;
using tests::Tray;
using tests::WriteAlignmentFile;
using tests::WriteRecordPath;

namespace {

const QString German = u"de"_s;
const QString English = u"en"_s;
const QString Message = u"162.400 MHz\n250 kS/s"_s;

/// Is asked for a text only when no installed translation has it, and remembers it.
class Untranslated : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/,
                      int /*n*/) const override
    {
        Texts.append(QString::fromUtf8(context) + u": "_s + QString::fromUtf8(text));
        return QString();
    }

    mutable QStringList Texts;
};

/// All that can be the same in every language because it is no language.
void AddData(KnownTexts &texts)
{
    for (const char *pattern : {
             "TarnvikControl( V[\\d.]*)?", // the program's name
             "\\(C\\) Quillane GmbH",      //
             "de|en",                      // the languages
             "LimeUsb|RTL-SDR",            // receivers
             "0x[0-9A-F]+",                // hardware ids
             "\\d{4}-\\d\\d-\\d\\d",       // dates
             "[A-Za-z_]+\\.ad: .*",        // a file's name, then a message that is read by itself
             "/.*|[A-Z]:[/\\\\].*",        // paths
             "tarnvik tëst .*|Desktop|TarnvikRecord|tmp", // folders
             "TarnvikDriver_[A-Za-z]+\\.ad",              // files
             "\\d+\\.\\d+(\\.\\d+)?",                     // Qt's version
             "\\d{4}|qt\\.io(/licensing)?",               // what Qt's own box fills in
         })
        texts.AddData(QString::fromUtf8(pattern));
}

QString Tr(const char *text)
{
    return QCoreApplication::translate("CMainWindow", text);
}

QAction *EntryIn(const QList<QAction *> &entries, const QString &text)
{
    for (QAction *entry : entries) {
        if (entry->text() == text)
            return entry;
        if (entry->menu() == nullptr)
            continue;
        if (QAction *const found = EntryIn(entry->menu()->actions(), text))
            return found;
    }
    return nullptr;
}

bool Trigger(const CMainWindow &window, const QString &text)
{
    QAction *const entry = EntryIn(window.menuBar()->actions(), text);
    if (entry != nullptr)
        entry->trigger();
    return entry != nullptr;
}

/// Chooses a language in the menu as a user does, and waits until the window has followed.
bool Choose(CMainWindow &window, const QString &code)
{
    const QTextEdit *const before = window.findChild<QTextEdit *>();
    return Trigger(window, code) && QTest::qWaitFor([&] {
               return window.findChild<QTextEdit *>() != before &&
                      AppTranslation.currentLanguage() == QLocale(code).language();
           });
}

/// How the language calls the key in shortcuts.
QString ControlKey(const QString &language)
{
    return language == German ? u"Strg"_s : u"Ctrl"_s;
}

/// The texts that are neither of the language nor data, one per line.
QString Foreign(const QStringList &texts, const QString &language)
{
    KnownTexts known(language);
    AddData(known);
    known.AddData(u"%1\\+[A-Z]"_s.arg(ControlKey(language)));
    return texts.isEmpty() ? u"no texts at all"_s : known.unknown(texts).join(u"\n"_s);
}

} // namespace

class LanguageSwitchTest : public QObject
{
    Q_OBJECT

public slots:
    void Open(const QUrl & /*url*/) {}

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void theMenuOffersTheBuiltLanguages();
    void theWindowFollowsTheLanguageThereAndBack();
    void thePanelsColonsLineUp_data();
    void thePanelsColonsLineUp();
    void shortcutsAreShownInTheLanguage_data();
    void shortcutsAreShownInTheLanguage();
    void everythingThatTheWindowOpensSpeaksTheLanguage_data();
    void everythingThatTheWindowOpensSpeaksTheLanguage();
    void theAlignmentDialogSpeaksTheLanguage_data();
    void theAlignmentDialogSpeaksTheLanguage();
    void theStandardButtonsAreGerman_data();
    void theStandardButtonsAreGerman();
    void inEnglishQtsTextsComeFromTheEnglishFile();

private:
    void AddLanguageRows();
    void MakeWindow();

    std::unique_ptr<Untranslated> Leftovers;
    std::unique_ptr<CMainWindow> Window;
};

void LanguageSwitchTest::initTestCase()
{
    QVERIFY(AlignmentDialogFixture::PrepareFolders());
    QCoreApplication::setApplicationVersion(u"2025.12.1.1"_s);
    PackedVersion = LowestVersion;
    qputenv("TARNVIK_STANDIN_INTERVAL_MS", "0");
    QVERIFY(QDir::setCurrent(QStringLiteral(LANGUAGES_PARENT_FOLDER)));
    QDesktopServices::setUrlHandler(u"file"_s, this, "Open");
    const KnownTexts german(German);
    QVERIFY(german.knows(u"Datei"_s));
    QVERIFY(german.knows(u"Rückgängig"_s));
    QVERIFY(!german.knows(u"File"_s));
    QVERIFY(!german.knows(u"Abort"_s));
}

void LanguageSwitchTest::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(u"file"_s);
}

void LanguageSwitchTest::init()
{
    QVERIFY(AlignmentDialogFixture::PrepareFolders());
    tests::StoredSettings().clear();
    // The translator that is installed first is asked last.
    Leftovers = std::make_unique<Untranslated>();
    QCoreApplication::installTranslator(Leftovers.get());
    AppTranslation.Init(qApp);
}

void LanguageSwitchTest::MakeWindow()
{
    Window = std::make_unique<CMainWindow>();
    Window->show();
}

void LanguageSwitchTest::cleanup()
{
    Window.reset();
    AppTranslation.UnloadTranslators();
    Leftovers.reset();
    QLocale::setDefault(QLocale::c());
}

void LanguageSwitchTest::AddLanguageRows()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("German") << German;
    QTest::newRow("English") << English;
}

void LanguageSwitchTest::theMenuOffersTheBuiltLanguages()
{
    MakeWindow();
    const QAction *const language = EntryIn(Window->menuBar()->actions(), u"Language"_s);
    QVERIFY(language);
    QStringList codes;
    const QList<QAction *> entries = language->menu()->actions();
    for (const QAction *entry : entries)
        codes.append(entry->text());
    QCOMPARE(codes, (QStringList{German, English}));
}

void LanguageSwitchTest::theWindowFollowsTheLanguageThereAndBack()
{
    MakeWindow();
    for (const QString &language : {German, English, German, English}) {
        QVERIFY(Choose(*Window, language));
        QCOMPARE(Foreign(tests::ShownTexts(*Window), language), QString());
        const QMenu *const tray = Tray(*Window).contextMenu();
        QCOMPARE(tests::ShownTexts(*tray).contains(u"&Beenden"_s), language == German);
        QCOMPARE(Foreign(tests::ShownTexts(*tray), language), QString());
        QCOMPARE(tests::MnemonicCollisions(*tray).join(u'\n'), QString());
        QCOMPARE(tests::MnemonicCollisions(*Window).join(u'\n'), QString());
        QVERIFY(EntryIn(Window->menuBar()->actions(), language)->isChecked());
        for (QWidget *widget :
             {Panel(*Window).viewport(), static_cast<QWidget *>(Panel(*Window).verticalScrollBar()),
              static_cast<QWidget *>(Panel(*Window).horizontalScrollBar())}) {
            const tests::ContextMenuTexts menu = tests::ReadContextMenu(*widget);
            QCOMPARE(Foreign(menu.Texts, language), QString());
            QCOMPARE(menu.Collisions.join(u'\n'), QString());
        }
    }
}

void LanguageSwitchTest::thePanelsColonsLineUp_data()
{
    AddLanguageRows();
}

void LanguageSwitchTest::thePanelsColonsLineUp()
{
    QFETCH(QString, language);
    MakeWindow();
    QVERIFY(Choose(*Window, language));
    tests::ShowMessage(*Window, Message);
    QTRY_VERIFY(Panel(*Window).toPlainText().contains(Tr("Running")));
    const QStringList lines = Panel(*Window).toPlainText().split(u'\n');
    const QStringList labels = {Tr("Start"), Tr("Program status"), Tr("Last message")};
    int found = 0;
    for (const QString &line : lines) {
        for (const QString &label : labels) {
            if (!line.startsWith(label))
                continue;
            ++found;
            QCOMPARE(line.indexOf(u": "_s), 20); // column 21
        }
    }
    QCOMPARE(found, 3);
    QCOMPARE(lines.at(lines.size() - 3).indexOf(u"162"_s), 22);
    QCOMPARE(lines.at(lines.size() - 2), QString(22, u' ') + u"250 kS/s"_s);
    if (language == German)
        QCOMPARE(lines.first(), u"Programminformationen"_s);
}

void LanguageSwitchTest::shortcutsAreShownInTheLanguage_data()
{
    AddLanguageRows();
}

void LanguageSwitchTest::shortcutsAreShownInTheLanguage()
{
    QFETCH(QString, language);
    MakeWindow();
    QVERIFY(Choose(*Window, language));
    const QMenu &file = *Window->menuBar()->actions().first()->menu();
    QCOMPARE(tests::ShownShortcuts(file).join(u' '), u"%1+R %1+D %1+H %1+Q"_s.arg(ControlKey(language)));
}

void LanguageSwitchTest::everythingThatTheWindowOpensSpeaksTheLanguage_data()
{
    AddLanguageRows();
}

void LanguageSwitchTest::everythingThatTheWindowOpensSpeaksTheLanguage()
{
    QFETCH(QString, language);
    MakeWindow();
    QVERIFY(Choose(*Window, language == German ? English : German));
    QVERIFY(Choose(*Window, language));
    Leftovers->Texts.clear();
    ModalReader reader;
    const auto titlesAfter = [&](const char *entry) {
        const qsizetype before = reader.titles().size();
        return Trigger(*Window, Tr(entry)) ? reader.titles().mid(before) : QStringList{"no entry"};
    };
    const QString error = Tr("Error");
    // Nothing is there: no record path, no settings folder, no guide.
    QVERIFY(QDir(AlignmentDialogFixture::recorderFolder()).removeRecursively());
    QCOMPARE(titlesAfter("Open record file folder"), QStringList{error});
    QCOMPARE(titlesAfter("Create record file folder link on Desktop"), QStringList{error});
    QCOMPARE(titlesAfter("Open settings folder..."), QStringList{error});
    QCOMPARE(titlesAfter("Open User Guide"), QStringList{Tr("File Error")});
    // A record path without a folder, then a link that exists.
    QVERIFY(AlignmentDialogFixture::PrepareFolders());
    WriteRecordPath(u"/no/such/folder"_s);
    QCOMPARE(titlesAfter("Open record file folder"), QStringList{error});
    WriteRecordPath(QDir::tempPath());
    QVERIFY(QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)));
    (void)titlesAfter("Create record file folder link on Desktop");
    QCOMPARE(titlesAfter("Create record file folder link on Desktop"), QStringList{error});
    reader.SetAnswer(QMessageBox::Abort);
    QCOMPARE(titlesAfter("Quit"), QStringList{Tr("Close indication")});
    QCOMPARE(titlesAfter("About Qt..."), QStringList{u"TarnvikControl"_s});
    const qsizetype before = reader.titles().size();
    QVERIFY(Trigger(*Window, Tr("About %1...").arg(u"TarnvikControl"_s)));
    QCOMPARE(reader.titles().size(), before + 1);

    QCOMPARE(Foreign(reader.texts(), language), QString());
    QCOMPARE(reader.collisions().join(u'\n'), QString());
    QCOMPARE(reader.cutOff().join(u'\n'), QString());
    if (language == German)
        QCOMPARE(Leftovers->Texts.join(u'\n'), QString());
}

void LanguageSwitchTest::theAlignmentDialogSpeaksTheLanguage_data()
{
    AddLanguageRows();
}

void LanguageSwitchTest::theAlignmentDialogSpeaksTheLanguage()
{
    QFETCH(QString, language);
    MakeWindow();
    const QString importFile = tests::ImportFile(u"import.ad"_s);
    const QString damagedFile = tests::ImportFile(u"damaged.ad"_s);
    QVERIFY(WriteAlignmentFile(
        tests::RecorderFile(u"TarnvikDriver_LimeUsb.ad"_s), SdrType::LimeUsb,
        {{"0x1", Day("2024-03-01")}, {"0x2", Day("2024-03-01")}, {"0x3", Day("2024-03-01")}}));
    QVERIFY(WriteAlignmentFile(tests::RecorderFile(u"TarnvikDriver_RtlSdr.ad"_s), SdrType::RtlSdr,
                               {{"0x5", Day("2024-03-01")}}));
    QVERIFY(WriteAlignmentFile(
        importFile, SdrType::LimeUsb,
        {{"0x1", Day("2024-04-01")}, {"0x2", Day("2024-02-01")}, {"0x4", Day("2024-04-01")}}));
    QVERIFY(tests::WriteFileBytes(damagedFile, "damaged"));
    QVERIFY(Choose(*Window, language == German ? English : German));
    QVERIFY(Choose(*Window, language));
    Leftovers->Texts.clear();
    const auto tr = [](const char *text) { return QCoreApplication::translate("QDlgAlignmentCfg", text); };

    ModalReader reader;
    AlignmentDialogFixture fixture;
    fixture.Dialog.Slot_Button_Import({importFile, damagedFile});
    QCOMPARE(reader.titles(), QStringList{tr("Importing alignment data")});
    QCOMPARE(Foreign(tests::ShownTexts(fixture.Dialog), language), QString());
    QCOMPARE(tests::MnemonicCollisions(fixture.Dialog).join(u'\n'), QString());
    QCOMPARE(tests::CutOffTexts(fixture.Dialog).join(u'\n'), QString());
    const QString shown = fixture.lines().join(u'\n');
    for (const char *text :
         {"Aligned at: %1", "Aligned at: %1 (New in data-base)", "Aligned at: %1 (Old data from %2 present)",
          "Aligned at: %1 (Update from %2 present)"}) {
        const QString begin = tr(text).section(u" %2"_s, 0, 0);
        QVERIFY2(shown.contains(begin.section(u"%1"_s, 1)), text);
    }
    fixture.button(tr("Import...")).click(); // the file dialog is cancelled
    QCOMPARE(reader.titles().last(), tr("Choose alignment file for importing"));
    // The file to be exported exists: a question follows, and a second dialog after the No.
    reader.AcceptNextFileDialog();
    reader.SetAnswer(QMessageBox::Yes);
    fixture.button(tr("Save...")).click();
    QCOMPARE(reader.titles().size(), 6);
    QCOMPARE(reader.titles().at(4), tr("Update %1 alignment.").arg(u"RTL-SDR"_s));
    // A source that is gone cannot be exported.
    QVERIFY(QFile::remove(importFile));
    fixture.button(tr("Save...")).click();
    QCOMPARE(reader.titles().last(), tr("Export alignment data"));

    QCOMPARE(Foreign(reader.texts(), language), QString());
    QCOMPARE(reader.collisions().join(u'\n'), QString());
    QCOMPARE(reader.cutOff().join(u'\n'), QString());
    if (language == German)
        QCOMPARE(Leftovers->Texts.join(u'\n'), QString());
}

void LanguageSwitchTest::theStandardButtonsAreGerman_data()
{
    QTest::addColumn<QDialogButtonBox::StandardButton>("button");
    QTest::addColumn<QString>("text");
    QTest::newRow("OK") << QDialogButtonBox::Ok << "OK";
    QTest::newRow("Cancel") << QDialogButtonBox::Cancel << "Abbrechen";
    QTest::newRow("Yes") << QDialogButtonBox::Yes << "&Ja";
    QTest::newRow("No") << QDialogButtonBox::No << "&Nein";
    QTest::newRow("Yes to all") << QDialogButtonBox::YesToAll << "Ja, &alle";
    QTest::newRow("No to all") << QDialogButtonBox::NoToAll << "N&ein, keine";
    QTest::newRow("Save") << QDialogButtonBox::Save << "Speichern";
    QTest::newRow("Save all") << QDialogButtonBox::SaveAll << "Alles speichern";
    QTest::newRow("Open") << QDialogButtonBox::Open << "Öffnen";
    QTest::newRow("Close") << QDialogButtonBox::Close << "Schließen";
    QTest::newRow("Abort") << QDialogButtonBox::Abort << "Abbrechen";
    QTest::newRow("Retry") << QDialogButtonBox::Retry << "Wiederholen";
    QTest::newRow("Ignore") << QDialogButtonBox::Ignore << "Ignorieren";
    QTest::newRow("Discard") << QDialogButtonBox::Discard << "Verwerfen";
    QTest::newRow("Apply") << QDialogButtonBox::Apply << "Anwenden";
    QTest::newRow("Reset") << QDialogButtonBox::Reset << "Zurücksetzen";
    QTest::newRow("Restore defaults") << QDialogButtonBox::RestoreDefaults << "Voreinstellungen";
    QTest::newRow("Help") << QDialogButtonBox::Help << "Hilfe";
}

void LanguageSwitchTest::theStandardButtonsAreGerman()
{
    QFETCH(QDialogButtonBox::StandardButton, button);
    QFETCH(QString, text);
    AppTranslation.LoadLanguage(QLocale(German));
    const QDialogButtonBox box(button);
    QCOMPARE(box.button(button)->text(), text);
}

void LanguageSwitchTest::inEnglishQtsTextsComeFromTheEnglishFile()
{
    AppTranslation.LoadLanguage(QLocale(English));
    // Without the file the search would go on to the user's next language, German for example.
    Leftovers->Texts.clear();
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Abort"), u"Abort"_s);
    QCOMPARE(Leftovers->Texts.join(u'\n'), QString());
}

TARNVIK_TEST_MAIN(LanguageSwitchTest, QApplication)

#include "LanguageSwitchTest.moc"
