// SPDX-License-Identifier: MIT
// The language menu: its entries, which one is marked, and what choosing one does.
#include "CommonQt/AppTranslation.h"
#include "tests/CommonQt/AppTranslationFixture.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

using tests::Entries;
using tests::SampleText;

class AppTranslation_MenuTest : public tests::AppTranslationFixture
{
    Q_OBJECT

private slots:
    void collectsTheCodes_data();
    void collectsTheCodes();
    void marksTheCurrentLanguage_data();
    void marksTheCurrentLanguage();
    void choosingAnEntrySwitchesTheLanguage();
    void choosingEnglishWithoutAFileShowsTheSourceTexts();
    void theMenuOwnsItsEntriesAndTheirGroup();
};

void AppTranslation_MenuTest::collectsTheCodes_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("codes");
    const QString english = u"en"_s;
    QTest::newRow("in the order of the names")
        << QStringList{u"_pl"_s, u"_de"_s} << QStringList{english, u"de"_s, u"pl"_s};
    QTest::newRow("a code with underscore stays whole")
        << QStringList{u"_zh_TW"_s} << QStringList{english, u"zh_TW"_s};
    QTest::newRow("only the last suffix is cut")
        << QStringList{u"_de.old"_s} << QStringList{english, u"de.old"_s};
    QTest::newRow("a regional English stands for English")
        << QStringList{u"_de"_s, u"_en-GB"_s} << QStringList{u"de"_s, u"en-GB"_s};
    QTest::newRow("English in upper case stands for English")
        << QStringList{u"_EN"_s} << QStringList{u"EN"_s};
    QTest::newRow("a name without underscore is no language")
        << QStringList{u"-de"_s, QString()} << QStringList{english};
}

void AppTranslation_MenuTest::collectsTheCodes()
{
    QFETCH(const QStringList, names);
    QFETCH(const QStringList, codes);
    for (const QString &name : names)
        QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl%1.qm"_s.arg(name)));
    QVERIFY(QDir().mkpath(u"TarnvikControl_fr.qm"_s)); // a folder is no file
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

void AppTranslation_MenuTest::marksTheCurrentLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("entries");
    const QString de = u"de|de"_s;
    const QString marked = u"|checked"_s;
    const QString broken = u"pl|pl"_s;
    const QString english = u"Englisch|en"_s; // German texts
    const QString source = u"en|en"_s;
    QTest::newRow("German") << u"de_CH"_s << QStringList{english, de + marked, broken};
    QTest::newRow("English") << u"en_US"_s << QStringList{source + marked, de, broken};
    QTest::newRow("a language without file shows English")
        << u"fr_FR"_s << QStringList{source + marked, de, broken};
    QTest::newRow("of English and a language whose file does not load only that is marked")
        << u"pl_PL"_s << QStringList{source, de, broken + marked};
}

void AppTranslation_MenuTest::marksTheCurrentLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, entries);
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QVERIFY(Folder->AddBroken(u"working/TarnvikControl_pl.qm"_s));
    CAppTranslation translation;
    translation.Init(qApp);
    translation.LoadLanguage(QLocale(locale));
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QCOMPARE(Entries(menu), entries);
}

void AppTranslation_MenuTest::choosingAnEntrySwitchesTheLanguage()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QVERIFY(AddToWorkingFolder(u"english"_s, u"TarnvikControl_en.qm"_s));
    QLocale::setDefault(QLocale(u"en_US"_s));
    CAppTranslation translation;
    translation.Init(qApp);
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    QCOMPARE(Entries(menu), QStringList({u"de|de"_s, u"en|en|checked"_s}));

    QString textAtTheSignal;
    QLocale localeAtTheSignal;
    connect(&translation, &CAppTranslation::SignalNewTranslation, this, [&] {
        textAtTheSignal = SampleText();
        localeAtTheSignal = QLocale();
    });
    QSignalSpy spy(&translation, &CAppTranslation::SignalNewTranslation);
    menu.actions().constFirst()->trigger();
    QCOMPARE(spy.size(), 1);
    QCOMPARE(textAtTheSignal, u"German"_s);
    QCOMPARE(localeAtTheSignal, QLocale(u"de"_s));
    QCOMPARE(translation.currentLanguage(), int(QLocale::German));
    QCOMPARE(Entries(menu), QStringList({u"de|de|checked"_s, u"en|en"_s}));

    translation.SlotLanguageChanged(nullptr);
    QCOMPARE(spy.size(), 1);
}

void AppTranslation_MenuTest::choosingEnglishWithoutAFileShowsTheSourceTexts()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
    QLocale::setDefault(QLocale(u"de_DE"_s));
    CAppTranslation translation;
    translation.Init(qApp);
    QCOMPARE(SampleText(), u"German"_s);
    QMenu menu;
    translation.FillLanguageMenu(&menu);
    menu.actions().constFirst()->trigger();
    QCOMPARE(SampleText(), u"language"_s);
    QCOMPARE(translation.currentLanguage(), int(QLocale::English));
    QCOMPARE(QLocale().language(), QLocale::English);
}

void AppTranslation_MenuTest::theMenuOwnsItsEntriesAndTheirGroup()
{
    QVERIFY(AddToWorkingFolder(u"german"_s, u"TarnvikControl_de.qm"_s));
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

TARNVIK_TEST_MAIN(AppTranslation_MenuTest, QApplication)
#include "AppTranslation_MenuTest.moc"
