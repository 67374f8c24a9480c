// SPDX-License-Identifier: MIT
// Which translation files are found and installed, and when they go.
#include "CommonQt/AppTranslation.h"
#include "tests/CommonQt/AppTranslationFixture.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QMetaClassInfo>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using tests::Entries;
using tests::SampleText;

class AppTranslationTest : public tests::AppTranslationFixture
{
    Q_OBJECT

private slots:
    void theClassCarriesItsInformation();
    void beforeInitNothingIsDone();
    void withoutApplicationNothingIsDone();

    void searchesTheProgramsAndTheWorkingFolder_data();
    void searchesTheProgramsAndTheWorkingFolder();
    void theGlobalObjectOutlivesTheApplicationQuietly_data();
    void theGlobalObjectOutlivesTheApplicationQuietly();

    void triesTheLocalesCodesInOrder_data();
    void triesTheLocalesCodesInOrder();
    void aFileThatDoesNotLoadIsPassedOver_data();
    void aFileThatDoesNotLoadIsPassedOver();
    void qtsOwnTranslationsAreInstalledBesideTheApplications();
    void theCLocaleInstallsNothing();
    void anotherLanguageReplacesTheFirst();
    void unloadingRemovesEverything();
};

void AppTranslationTest::theClassCarriesItsInformation()
{
    const QMetaObject &meta = CAppTranslation::staticMetaObject;
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Status")).value(), "Development");
    QVERIFY(meta.indexOfSignal("SignalNewTranslation()") >= 0);
    QVERIFY(meta.indexOfSlot("SlotLanguageChanged(QAction*)") >= 0);
}

void AppTranslationTest::beforeInitNothingIsDone()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    CAppTranslation translation;
    QSignalSpy spy(&translation, &CAppTranslation::SignalNewTranslation);
    QMenu menu;
    QAction action;
    action.setData(u"de"_s);
    translation.LoadLanguage(QLocale(u"de"_s));
    translation.FillLanguageMenu(&menu);
    translation.SlotLanguageChanged(&action);
    translation.UnloadTranslators();
    QCOMPARE(translation.CountLanguages(), 0);
    QCOMPARE(translation.currentLanguage(), -1);
    QCOMPARE(SampleText(), u"language"_s);
    QVERIFY(menu.isEmpty());
    QVERIFY(menu.findChildren<QActionGroup *>().isEmpty());
    QCOMPARE(spy.size(), 0);
    QCOMPARE(QLocale(), StartLocale);
}

void AppTranslationTest::withoutApplicationNothingIsDone()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QLocale::setDefault(QLocale(u"de"_s));
    CAppTranslation translation;
    translation.Init(nullptr);
    QCOMPARE(SampleText(), u"language"_s);
    QCOMPARE(translation.CountLanguages(), 0);
}

void AppTranslationTest::searchesTheProgramsAndTheWorkingFolder_data()
{
    QTest::addColumn<QStringList>("files"); // translation, blank, path
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("expected");

    const QString german = QString::number(QLocale::German);
    const QString english = QString::number(QLocale::English);
    const QString german1 = u"german program/languages/TarnvikControl_de.qm"_s;
    const QString german2 = u"german program/TarnvikControl_de.qm"_s;
    const QString german3 = u"german working/languages/TarnvikControl_de.qm"_s;
    const QString german4 = u"german working/TarnvikControl_de.qm"_s;
    const QString austrian2 = u"austrian program/TarnvikControl_de.qm"_s;
    const QString austrian3 = u"austrian working/languages/TarnvikControl_de.qm"_s;
    const QString austrian4 = u"austrian working/TarnvikControl_de.qm"_s;
    const QString english1 = u"english program/languages/TarnvikControl_en.qm"_s;
    const auto expect = [](int count, const QString &language, const char *text,
                           std::initializer_list<const char *> entries) {
        QStringList lines{u"count=%1"_s.arg(count), u"language=%1"_s.arg(language),
                          u"text=%1"_s.arg(QLatin1String(text))};
        for (const char *entry : entries)
            lines.append(u"entry=%1"_s.arg(QLatin1String(entry)));
        return lines;
    };
    const QStringList onlyGerman = expect(1, german, "German", {"Englisch|en|-", "de|de|checked"});

    QTest::newRow("files for de and en beside the program: two entries and no extra English entry")
        << QStringList{german1, english1} << u"de_DE"_s
        << expect(2, german, "German", {"de|de|checked", "en|en|-"});
    QTest::newRow("files for de and en, English system")
        << QStringList{german1, english1} << u"en_GB"_s
        << expect(2, english, "English", {"de|de|-", "en|en|checked"});
    QTest::newRow("only a file for de: the English entry, its text translated from en, then de")
        << QStringList{german1} << u"de_DE"_s << onlyGerman;
    QTest::newRow("only a file for de, English system: the English entry is checked")
        << QStringList{german1} << u"en_US"_s << expect(1, english, "language", {"en|en|checked", "de|de|-"});
    QTest::newRow("no matching file: no languages")
        << QStringList{u"german program/languages/Other_de.qm"_s, u"german working/TarnvikControl.qm"_s}
        << u"de_DE"_s << expect(0, german, "language", {"en|en|checked"});
    QTest::newRow("a file in both the program folder and the working folder counts once")
        << QStringList{german2, german4} << u"de_DE"_s << onlyGerman;
    QTest::newRow("files in all four folders count once")
        << QStringList{german1, german2, german3, german4} << u"de_DE"_s << onlyGerman;
    QTest::newRow("languages beside the program comes first")
        << QStringList{german1, austrian2, austrian3, austrian4} << u"de_DE"_s << onlyGerman;
    QTest::newRow("then the program's folder")
        << QStringList{german2, austrian3, austrian4} << u"de_DE"_s << onlyGerman;
    QTest::newRow("then languages in the working folder")
        << QStringList{german3, austrian4} << u"de_DE"_s << onlyGerman;
    QTest::newRow("then the working folder") << QStringList{german4} << u"de_DE"_s << onlyGerman;
    QTest::newRow("a better code in a later folder wins over a lesser one in an earlier folder")
        << QStringList{german1, u"austrian working/TarnvikControl_de-AT.qm"_s} << u"de_AT"_s
        << expect(2, german, "Austrian", {"Englisch|en|-", "de|de|checked", "de-AT|de-AT|-"});
}

void AppTranslationTest::searchesTheProgramsAndTheWorkingFolder()
{
    QFETCH(const QStringList, files);
    QFETCH(const QString, locale);
    QFETCH(const QStringList, expected);
    for (const QString &file : files)
        QVERIFY(Folder->Add(file.section(u' ', 0, 0), file.section(u' ', 1)));
    const auto output = Folder->Run({u"locale="_s + locale, u"init"_s, u"print"_s, u"unload"_s});
    QCOMPARE(output.Errors, QString());
    QCOMPARE(output.ExitCode, 0);
    QCOMPARE(output.Lines, expected);
}

void AppTranslationTest::theGlobalObjectOutlivesTheApplicationQuietly_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString locale = u"locale=de"_s;
    const QString init = u"init"_s;
    const QString unload = u"unload"_s;
    QTest::newRow("no application object is ever made") << QStringList{u"no-application"_s};
    QTest::newRow("never initialised") << QStringList();
    QTest::newRow("unloaded before the application goes") << QStringList{locale, init, unload};
    QTest::newRow("still loaded when the application goes") << QStringList{locale, init};
    QTest::newRow("unloaded twice") << QStringList{locale, init, unload, unload};
    QTest::newRow("initialised twice") << QStringList{locale, init, init};
}

void AppTranslationTest::theGlobalObjectOutlivesTheApplicationQuietly()
{
    QFETCH(const QStringList, arguments);
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    const auto output = Folder->Run(arguments);
    QCOMPARE(output.Errors, QString());
    QCOMPARE(output.ExitCode, 0);
}

void AppTranslationTest::triesTheLocalesCodesInOrder_data()
{
    QTest::addColumn<QStringList>("files"); // translation, blank, code
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    const QString austria = u"de_AT"_s;
    const QString german = u"German"_s;
    const QString austrian = u"Austrian"_s;
    QTest::newRow("de-AT with a file for de only: de is installed")
        << QStringList{u"german de"_s} << austria << german;
    QTest::newRow("de-AT with files for de and de-AT: de-AT is installed")
        << QStringList{u"german de"_s, u"austrian de-AT"_s} << austria << austrian;
    QTest::newRow("de-AT with files for de and en: de is installed")
        << QStringList{u"german de"_s, u"english en"_s} << austria << german;
    QTest::newRow("de finds the file for de-DE") << QStringList{u"german de-DE"_s} << u"de"_s << german;
    QTest::newRow("de-AT does not take the file for de-DE")
        << QStringList{u"german de-DE"_s} << austria << u"language"_s;
    QTest::newRow("an underscore in the code is not tried")
        << QStringList{u"austrian de_AT"_s} << austria << u"language"_s;
    QTest::newRow("a language code of three letters has no shorter form")
        << QStringList{u"german gs"_s} << u"gsw_CH"_s << u"language"_s;
}

void AppTranslationTest::triesTheLocalesCodesInOrder()
{
    QFETCH(const QStringList, files);
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    for (const QString &file : files) {
        QVERIFY(AddToWorkingFolder(file.section(u' ', 0, 0),
                                   u"TarnvikControl_%1.qm"_s.arg(file.section(u' ', 1))));
    }
    QLocale::setDefault(QLocale(locale));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), text);
    QCOMPARE(translation.currentLanguage(), int(QLocale(locale).language()));
}

void AppTranslationTest::aFileThatDoesNotLoadIsPassedOver_data()
{
    QTest::addColumn<QString>("broken");
    QTest::addColumn<QString>("good");
    QTest::addColumn<QString>("text");
    const QString de = u"TarnvikControl_de.qm"_s;
    const QString german = u"German"_s;
    QTest::newRow("the next folder's file is taken") << u"languages/"_s + de << de << german;
    QTest::newRow("the next code's file is taken") << u"TarnvikControl_de-AT.qm"_s << de << german;
    QTest::newRow("no file of a similar name is taken") << de << u"TarnvikControl.qm"_s << u"language"_s;
    QTest::newRow("no file of a longer name is taken") << de << de + u".qm"_s << u"language"_s;
}

void AppTranslationTest::aFileThatDoesNotLoadIsPassedOver()
{
    QFETCH(const QString, broken);
    QFETCH(const QString, good);
    QFETCH(const QString, text);
    QVERIFY(Folder->AddBroken(u"working/"_s + broken));
    QVERIFY(AddToWorkingFolder(u"german"_s, good));
    QVERIFY(QDir().mkpath(u"TarnvikControl_de-Latn-AT.qm"_s)); // a folder does not load either
    QLocale::setDefault(QLocale(u"de_AT"_s));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), text);
}

void AppTranslationTest::qtsOwnTranslationsAreInstalledBesideTheApplications()
{
    QVERIFY(AddToWorkingFolder(u"qt_german"_s, u"languages/qt_de.qm"_s));
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QLocale::setDefault(QLocale(u"de_AT"_s));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(QCoreApplication::translate("QtSample", "language"), u"German"_s);
    QCOMPARE(SampleText(), u"German"_s);
    QCOMPARE(translation.CountLanguages(), 1); // Qt's file does not count
}

void AppTranslationTest::theCLocaleInstallsNothing()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_C.qm"_s));
    QVERIFY(AddToWorkingFolder(u"english"_s, u"TarnvikControl_en.qm"_s));
    QLocale::setDefault(QLocale::c());
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), u"language"_s);
    QCOMPARE(translation.currentLanguage(), int(QLocale::C));
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QCOMPARE(Entries(menu), QStringList({u"C|C"_s, u"en|en"_s}));
}

void AppTranslationTest::anotherLanguageReplacesTheFirst()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QVERIFY(AddToWorkingFolder(u"english"_s, u"TarnvikControl_en.qm"_s));
    CAppTranslation translation;
    translation.Init(qApp);
    translation.LoadLanguage(QLocale(u"de"_s));
    QCOMPARE(SampleText(), u"German"_s);
    translation.LoadLanguage(QLocale(u"en"_s));
    QCOMPARE(SampleText(), u"English"_s);
    translation.LoadLanguage(QLocale(u"fr"_s));
    QCOMPARE(SampleText(), u"language"_s);
    QCOMPARE(translation.currentLanguage(), int(QLocale::French));
}

void AppTranslationTest::unloadingRemovesEverything()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QLocale::setDefault(QLocale(u"de"_s));
    {
        CAppTranslation translation;
        translation.Init(qApp);
        QCOMPARE(SampleText(), u"German"_s);
        translation.UnloadTranslators();
        QCOMPARE(SampleText(), u"language"_s);
        QCOMPARE(translation.currentLanguage(), -1);
        QMenu menu;
        translation.FillLanguageMenu(&menu);
        QCOMPARE(Entries(menu), QStringList({u"en|en|checked"_s, u"de|de"_s}));
        translation.LoadLanguage(QLocale());
        QCOMPARE(SampleText(), u"German"_s);
    }
    QCOMPARE(SampleText(), u"language"_s); // removed with the object
}

TARNVIK_TEST_MAIN(AppTranslationTest, QApplication)
#include "AppTranslationTest.moc"
