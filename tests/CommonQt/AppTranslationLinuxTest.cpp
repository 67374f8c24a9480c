// SPDX-License-Identifier: MIT
// The languages of the user interface as the environment names them.
#include "tests/CommonQt/TranslationFolder.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class AppTranslationLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void theSystemsLanguagesDecide_data();
    void theSystemsLanguagesDecide();
};

void AppTranslationLinuxTest::theSystemsLanguagesDecide_data()
{
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<QString>("text");

    const QStringList both{u"de"_s, u"en"_s};
    QTest::newRow("the first language wins over the second, also by its bare code")
        << u"de_AT:en_US"_s << both << u"text=German"_s;
    QTest::newRow("the second language is taken when there is no file for the first")
        << u"fr_FR:de_AT"_s << both << u"text=German"_s;
    QTest::newRow("no file for any of the languages")
        << u"fr_FR:it_IT"_s << QStringList{u"de"_s} << u"text=language"_s;
}

void AppTranslationLinuxTest::theSystemsLanguagesDecide()
{
    QFETCH(const QString, languages);
    QFETCH(const QStringList, codes);
    QFETCH(const QString, text);
    const tests::TranslationFolder folder;
    QVERIFY(folder.isValid());
    for (const QString &code : codes) {
        const QString translation = code == QLatin1String("de") ? u"german"_s : u"english"_s;
        QVERIFY(folder.Add(translation, u"program/languages/TarnvikControl_%1.qm"_s.arg(code)));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"LC_ALL"_s);
    environment.remove(u"LC_MESSAGES"_s);
    environment.insert(u"LANG"_s, languages.section(u':', 0, 0) + u".UTF-8"_s);
    environment.insert(u"LANGUAGE"_s, languages);
    const auto output = folder.Run({u"init"_s, u"print"_s}, environment);
    QCOMPARE(output.ExitCode, 0);
    QVERIFY2(output.Lines.contains(text), qPrintable(output.Lines.join(u'\n')));
}

TARNVIK_TEST_MAIN(AppTranslationLinuxTest, QCoreApplication)
#include "AppTranslationLinuxTest.moc"
