// SPDX-License-Identifier: MIT
#include "CommonQt/AppTranslation.h"
#include "tests/CommonQt/TranslationFolder.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QMetaClassInfo>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

QString SampleText()
{
    return QCoreApplication::translate("Sample", "language");
}

/// The menu's entries as "text|data", with "|checked" behind the checked ones.
QStringList Entries(const QMenu &menu)
{
    QStringList entries;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        entries.append(action->text() + u'|' + action->data().toString() +
                       (action->isChecked() ? QStringLiteral("|checked") : QString()));
    }
    return entries;
}

} // namespace

class AppTranslationTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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

    void collectsTheCodes_data();
    void collectsTheCodes();
    void marksTheCurrentLanguage_data();
    void marksTheCurrentLanguage();
    void choosingAnEntrySwitchesTheLanguage();
    void choosingEnglishWithoutAFileShowsTheSourceTexts();
    void theMenuOwnsItsEntriesAndTheirGroup();

private:
    bool AddToWorkingFolder(const QString &translation, const QString &fileName)
    {
        return Folder->add(translation, QStringLiteral("working/%1").arg(fileName));
    }

    std::unique_ptr<tests::TranslationFolder> Folder;
    QString StartFolder;
    QLocale StartLocale;
};

void AppTranslationTest::init()
{
    QCoreApplication::setApplicationName(QStringLiteral("TarnvikControl"));
    StartLocale = QLocale();
    StartFolder = QDir::currentPath();
    Folder = std::make_unique<tests::TranslationFolder>();
    QVERIFY(Folder->isValid());
    QVERIFY(QDir::setCurrent(Folder->path(QStringLiteral("working"))));
}

void AppTranslationTest::cleanup()
{
    QLocale::setDefault(StartLocale);
    QVERIFY(QDir::setCurrent(StartFolder));
    Folder.reset();
}

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
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    CAppTranslation translation;
    QSignalSpy spy(&translation, &CAppTranslation::SignalNewTranslation);
    QMenu menu;
    QAction action;
    action.setData(QStringLiteral("de"));
    translation.LoadLanguage(QLocale(QStringLiteral("de")));
    translation.FillLanguageMenu(&menu);
    translation.SlotLanguageChanged(&action);
    translation.UnloadTranslators();
    QCOMPARE(translation.CountLanguages(), 0);
    QCOMPARE(translation.CurrentLanguage(), -1);
    QCOMPARE(SampleText(), QStringLiteral("language"));
    QVERIFY(menu.isEmpty());
    QVERIFY(menu.findChildren<QActionGroup *>().isEmpty());
    QCOMPARE(spy.size(), 0);
    QCOMPARE(QLocale(), StartLocale);
}

void AppTranslationTest::withoutApplicationNothingIsDone()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QLocale::setDefault(QLocale(QStringLiteral("de")));
    CAppTranslation translation;
    translation.Init(nullptr);
    QCOMPARE(SampleText(), QStringLiteral("language"));
    QCOMPARE(translation.CountLanguages(), 0);
}

void AppTranslationTest::searchesTheProgramsAndTheWorkingFolder_data()
{
    QTest::addColumn<QStringList>("files"); // translation, blank, path
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("expected");

    const QString german = QString::number(QLocale::German);
    const QString english = QString::number(QLocale::English);
    const QString german1 = QStringLiteral("german program/languages/TarnvikControl_de.qm");
    const QString german2 = QStringLiteral("german program/TarnvikControl_de.qm");
    const QString german3 = QStringLiteral("german working/languages/TarnvikControl_de.qm");
    const QString german4 = QStringLiteral("german working/TarnvikControl_de.qm");
    const QString austrian2 = QStringLiteral("austrian program/TarnvikControl_de.qm");
    const QString austrian3 = QStringLiteral("austrian working/languages/TarnvikControl_de.qm");
    const QString austrian4 = QStringLiteral("austrian working/TarnvikControl_de.qm");
    const QString english1 = QStringLiteral("english program/languages/TarnvikControl_en.qm");
    const auto expect = [](int count, const QString &language, const char *text,
                           std::initializer_list<const char *> entries) {
        QStringList lines{QStringLiteral("count=%1").arg(count), QStringLiteral("language=%1").arg(language),
                          QStringLiteral("text=%1").arg(QLatin1String(text))};
        for (const char *entry : entries)
            lines.append(QStringLiteral("entry=%1").arg(QLatin1String(entry)));
        return lines;
    };
    const QStringList onlyGerman = expect(1, german, "German", {"Englisch|en|-", "de|de|checked"});

    QTest::newRow("files for de and en beside the program: two entries and no extra English entry")
        << QStringList{german1, english1} << QStringLiteral("de_DE")
        << expect(2, german, "German", {"de|de|checked", "en|en|-"});
    QTest::newRow("files for de and en, English system")
        << QStringList{german1, english1} << QStringLiteral("en_GB")
        << expect(2, english, "English", {"de|de|-", "en|en|checked"});
    QTest::newRow("only a file for de: the English entry, its text translated from en, then de")
        << QStringList{german1} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("only a file for de, English system: the English entry is checked")
        << QStringList{german1} << QStringLiteral("en_US")
        << expect(1, english, "language", {"en|en|checked", "de|de|-"});
    QTest::newRow("no matching file: no languages")
        << QStringList{QStringLiteral("german program/languages/Other_de.qm"),
                       QStringLiteral("german working/TarnvikControl.qm")}
        << QStringLiteral("de_DE") << expect(0, german, "language", {"en|en|checked"});
    QTest::newRow("a file in both the program folder and the working folder counts once")
        << QStringList{german2, german4} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("files in all four folders count once")
        << QStringList{german1, german2, german3, german4} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("languages beside the program comes first")
        << QStringList{german1, austrian2, austrian3, austrian4} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("then the program's folder")
        << QStringList{german2, austrian3, austrian4} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("then languages in the working folder")
        << QStringList{german3, austrian4} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("then the working folder") << QStringList{german4} << QStringLiteral("de_DE") << onlyGerman;
    QTest::newRow("a better code in a later folder wins over a lesser one in an earlier folder")
        << QStringList{german1, QStringLiteral("austrian working/TarnvikControl_de-AT.qm")}
        << QStringLiteral("de_AT")
        << expect(2, german, "Austrian", {"Englisch|en|-", "de|de|checked", "de-AT|de-AT|-"});
}

void AppTranslationTest::searchesTheProgramsAndTheWorkingFolder()
{
    QFETCH(const QStringList, files);
    QFETCH(const QString, locale);
    QFETCH(const QStringList, expected);
    for (const QString &file : files)
        QVERIFY(Folder->add(file.section(u' ', 0, 0), file.section(u' ', 1)));
    const auto output = Folder->run({QStringLiteral("locale=") + locale, QStringLiteral("init"),
                                     QStringLiteral("print"), QStringLiteral("unload")});
    QCOMPARE(output.Errors, QString());
    QCOMPARE(output.ExitCode, 0);
    QCOMPARE(output.Lines, expected);
}

void AppTranslationTest::theGlobalObjectOutlivesTheApplicationQuietly_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString locale = QStringLiteral("locale=de");
    const QString init = QStringLiteral("init");
    const QString unload = QStringLiteral("unload");
    QTest::newRow("no application object is ever made") << QStringList{QStringLiteral("no-application")};
    QTest::newRow("never initialised") << QStringList();
    QTest::newRow("unloaded before the application goes") << QStringList{locale, init, unload};
    QTest::newRow("still loaded when the application goes") << QStringList{locale, init};
    QTest::newRow("unloaded twice") << QStringList{locale, init, unload, unload};
    QTest::newRow("initialised twice") << QStringList{locale, init, init};
}

void AppTranslationTest::theGlobalObjectOutlivesTheApplicationQuietly()
{
    QFETCH(const QStringList, arguments);
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    const auto output = Folder->run(arguments);
    QCOMPARE(output.Errors, QString());
    QCOMPARE(output.ExitCode, 0);
}

void AppTranslationTest::triesTheLocalesCodesInOrder_data()
{
    QTest::addColumn<QStringList>("files"); // translation, blank, code
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    const QString austria = QStringLiteral("de_AT");
    const QString german = QStringLiteral("German");
    const QString austrian = QStringLiteral("Austrian");
    QTest::newRow("de-AT with a file for de only: de is installed")
        << QStringList{QStringLiteral("german de")} << austria << german;
    QTest::newRow("de-AT with files for de and de-AT: de-AT is installed")
        << QStringList{QStringLiteral("german de"), QStringLiteral("austrian de-AT")} << austria << austrian;
    QTest::newRow("de-AT with files for de and en: de is installed")
        << QStringList{QStringLiteral("german de"), QStringLiteral("english en")} << austria << german;
    QTest::newRow("de finds the file for de-DE")
        << QStringList{QStringLiteral("german de-DE")} << QStringLiteral("de") << german;
    QTest::newRow("de-AT does not take the file for de-DE")
        << QStringList{QStringLiteral("german de-DE")} << austria << QStringLiteral("language");
    QTest::newRow("an underscore in the code is not tried")
        << QStringList{QStringLiteral("austrian de_AT")} << austria << QStringLiteral("language");
    QTest::newRow("a language code of three letters has no shorter form")
        << QStringList{QStringLiteral("german gs")} << QStringLiteral("gsw_CH") << QStringLiteral("language");
}

void AppTranslationTest::triesTheLocalesCodesInOrder()
{
    QFETCH(const QStringList, files);
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    for (const QString &file : files) {
        QVERIFY(AddToWorkingFolder(file.section(u' ', 0, 0),
                                   QStringLiteral("TarnvikControl_%1.qm").arg(file.section(u' ', 1))));
    }
    QLocale::setDefault(QLocale(locale));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), text);
    QCOMPARE(translation.CurrentLanguage(), int(QLocale(locale).language()));
}

void AppTranslationTest::aFileThatDoesNotLoadIsPassedOver_data()
{
    QTest::addColumn<QString>("broken");
    QTest::addColumn<QString>("good");
    QTest::addColumn<QString>("text");
    const QString de = QStringLiteral("TarnvikControl_de.qm");
    const QString german = QStringLiteral("German");
    QTest::newRow("the next folder's file is taken") << QStringLiteral("languages/") + de << de << german;
    QTest::newRow("the next code's file is taken")
        << QStringLiteral("TarnvikControl_de-AT.qm") << de << german;
    QTest::newRow("no file of a similar name is taken")
        << de << QStringLiteral("TarnvikControl.qm") << QStringLiteral("language");
    QTest::newRow("no file of a longer name is taken")
        << de << de + QStringLiteral(".qm") << QStringLiteral("language");
}

void AppTranslationTest::aFileThatDoesNotLoadIsPassedOver()
{
    QFETCH(const QString, broken);
    QFETCH(const QString, good);
    QFETCH(const QString, text);
    QVERIFY(Folder->addBroken(QStringLiteral("working/") + broken));
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), good));
    QVERIFY(QDir().mkpath(QStringLiteral("TarnvikControl_de-Latn-AT.qm"))); // a folder does not load either
    QLocale::setDefault(QLocale(QStringLiteral("de_AT")));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), text);
}

void AppTranslationTest::qtsOwnTranslationsAreInstalledBesideTheApplications()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("qt_german"), QStringLiteral("languages/qt_de.qm")));
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QLocale::setDefault(QLocale(QStringLiteral("de_AT")));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(QCoreApplication::translate("QtSample", "language"), QStringLiteral("German"));
    QCOMPARE(SampleText(), QStringLiteral("German"));
    QCOMPARE(translation.CountLanguages(), 1); // Qt's file does not count
}

void AppTranslationTest::theCLocaleInstallsNothing()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_C.qm")));
    QVERIFY(AddToWorkingFolder(QStringLiteral("english"), QStringLiteral("TarnvikControl_en.qm")));
    QLocale::setDefault(QLocale::c());
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), QStringLiteral("language"));
    QCOMPARE(translation.CurrentLanguage(), int(QLocale::C));
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QCOMPARE(Entries(menu), QStringList({QStringLiteral("C|C"), QStringLiteral("en|en")}));
}

void AppTranslationTest::anotherLanguageReplacesTheFirst()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QVERIFY(AddToWorkingFolder(QStringLiteral("english"), QStringLiteral("TarnvikControl_en.qm")));
    CAppTranslation translation;
    translation.Init(qApp);
    translation.LoadLanguage(QLocale(QStringLiteral("de")));
    QCOMPARE(SampleText(), QStringLiteral("German"));
    translation.LoadLanguage(QLocale(QStringLiteral("en")));
    QCOMPARE(SampleText(), QStringLiteral("English"));
    translation.LoadLanguage(QLocale(QStringLiteral("fr")));
    QCOMPARE(SampleText(), QStringLiteral("language"));
    QCOMPARE(translation.CurrentLanguage(), int(QLocale::French));
}

void AppTranslationTest::unloadingRemovesEverything()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QLocale::setDefault(QLocale(QStringLiteral("de")));
    {
        CAppTranslation translation;
        translation.Init(qApp);
        QCOMPARE(SampleText(), QStringLiteral("German"));
        translation.UnloadTranslators();
        QCOMPARE(SampleText(), QStringLiteral("language"));
        QCOMPARE(translation.CurrentLanguage(), -1);
        QMenu menu;
        translation.FillLanguageMenu(&menu);
        QCOMPARE(Entries(menu), QStringList({QStringLiteral("en|en|checked"), QStringLiteral("de|de")}));
        translation.LoadLanguage(QLocale());
        QCOMPARE(SampleText(), QStringLiteral("German"));
    }
    QCOMPARE(SampleText(), QStringLiteral("language")); // removed with the object
}

void AppTranslationTest::collectsTheCodes_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("codes");
    const QString english = QStringLiteral("en");
    QTest::newRow("in the order of the names")
        << QStringList{QStringLiteral("_pl"), QStringLiteral("_de")}
        << QStringList{english, QStringLiteral("de"), QStringLiteral("pl")};
    QTest::newRow("a code with underscore stays whole")
        << QStringList{QStringLiteral("_zh_TW")} << QStringList{english, QStringLiteral("zh_TW")};
    QTest::newRow("only the last suffix is cut")
        << QStringList{QStringLiteral("_de.old")} << QStringList{english, QStringLiteral("de.old")};
    QTest::newRow("a regional English stands for English")
        << QStringList{QStringLiteral("_de"), QStringLiteral("_en-GB")}
        << QStringList{QStringLiteral("de"), QStringLiteral("en-GB")};
    QTest::newRow("English in upper case stands for English")
        << QStringList{QStringLiteral("_EN")} << QStringList{QStringLiteral("EN")};
    QTest::newRow("a name without underscore is no language")
        << QStringList{QStringLiteral("-de"), QString()} << QStringList{english};
}

void AppTranslationTest::collectsTheCodes()
{
    QFETCH(const QStringList, names);
    QFETCH(const QStringList, codes);
    for (const QString &name : names)
        QVERIFY(
            AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl%1.qm").arg(name)));
    QVERIFY(QDir().mkpath(QStringLiteral("TarnvikControl_fr.qm"))); // a folder is no file
    CAppTranslation translation;
    translation.Init(qApp);
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QStringList data;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        QVERIFY(action->isCheckable());
        data.append(action->data().toString());
    }
    QCOMPARE(data, codes);
    const bool extraEnglish = codes.first() == QLatin1String("en");
    QCOMPARE(translation.CountLanguages(), int(codes.size()) - (extraEnglish ? 1 : 0));
}

void AppTranslationTest::marksTheCurrentLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("entries");
    const QString de = QStringLiteral("de|de");
    const QString marked = QStringLiteral("|checked");
    const QString broken = QStringLiteral("pl|pl");
    const QString english = QStringLiteral("Englisch|en"); // German texts
    const QString source = QStringLiteral("en|en");
    QTest::newRow("German") << QStringLiteral("de_CH") << QStringList{english, de + marked, broken};
    QTest::newRow("English") << QStringLiteral("en_US") << QStringList{source + marked, de, broken};
    QTest::newRow("a language without file shows English")
        << QStringLiteral("fr_FR") << QStringList{source + marked, de, broken};
    QTest::newRow("of English and a language whose file does not load only that is marked")
        << QStringLiteral("pl_PL") << QStringList{source, de, broken + marked};
}

void AppTranslationTest::marksTheCurrentLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, entries);
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QVERIFY(Folder->addBroken(QStringLiteral("working/TarnvikControl_pl.qm")));
    CAppTranslation translation;
    translation.Init(qApp);
    translation.LoadLanguage(QLocale(locale));
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QCOMPARE(Entries(menu), entries);
}

void AppTranslationTest::choosingAnEntrySwitchesTheLanguage()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QVERIFY(AddToWorkingFolder(QStringLiteral("english"), QStringLiteral("TarnvikControl_en.qm")));
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    CAppTranslation translation;
    translation.Init(qApp);
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QCOMPARE(Entries(menu), QStringList({QStringLiteral("de|de"), QStringLiteral("en|en|checked")}));

    QString textAtTheSignal;
    QLocale localeAtTheSignal;
    connect(&translation, &CAppTranslation::SignalNewTranslation, this, [&] {
        textAtTheSignal = SampleText();
        localeAtTheSignal = QLocale();
    });
    QSignalSpy spy(&translation, &CAppTranslation::SignalNewTranslation);
    menu.actions().constFirst()->trigger();
    QCOMPARE(spy.size(), 1);
    QCOMPARE(textAtTheSignal, QStringLiteral("German"));
    QCOMPARE(localeAtTheSignal, QLocale(QStringLiteral("de")));
    QCOMPARE(translation.CurrentLanguage(), int(QLocale::German));
    QCOMPARE(Entries(menu), QStringList({QStringLiteral("de|de|checked"), QStringLiteral("en|en")}));

    translation.SlotLanguageChanged(nullptr);
    QCOMPARE(spy.size(), 1);
}

void AppTranslationTest::choosingEnglishWithoutAFileShowsTheSourceTexts()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), QStringLiteral("German"));
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    menu.actions().constFirst()->trigger();
    QCOMPARE(SampleText(), QStringLiteral("language"));
    QCOMPARE(translation.CurrentLanguage(), int(QLocale::English));
    QCOMPARE(QLocale().language(), QLocale::English);
}

void AppTranslationTest::theMenuOwnsItsEntriesAndTheirGroup()
{
    QVERIFY(AddToWorkingFolder(QStringLiteral("german"), QStringLiteral("TarnvikControl_de.qm")));
    CAppTranslation translation;
    translation.Init(qApp);
    auto menu = std::make_unique<QMenu>();
    translation.FillLanguageMenu(nullptr);
    translation.FillLanguageMenu(menu.get());
    QCOMPARE(menu->actions().size(), 2);
    const QPointer<QAction> action = menu->actions().constFirst();
    const QPointer<QActionGroup> group = action->actionGroup();
    QVERIFY(group);
    QVERIFY(group->isExclusive());
    QCOMPARE(group->actions(), menu->actions());
    menu.reset();
    QVERIFY(!action);
    QVERIFY(!group);
}

TARNVIK_TEST_MAIN(AppTranslationTest, QApplication)
#include "AppTranslationTest.moc"
