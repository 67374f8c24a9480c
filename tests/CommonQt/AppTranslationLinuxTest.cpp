// SPDX-License-Identifier: MIT
// The languages of the user interface as the environment names them.
#include "tests/CommonQt/TranslationFolder.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>

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

    const QStringList both{QStringLiteral("de"), QStringLiteral("en")};
    QTest::newRow("the first language wins over the second, also by its bare code")
        << QStringLiteral("de_AT:en_US") << both << QStringLiteral("text=German");
    QTest::newRow("the second language is taken when there is no file for the first")
        << QStringLiteral("fr_FR:de_AT") << both << QStringLiteral("text=German");
    QTest::newRow("no file for any of the languages")
        << QStringLiteral("fr_FR:it_IT") << QStringList{QStringLiteral("de")}
        << QStringLiteral("text=language");
}

void AppTranslationLinuxTest::theSystemsLanguagesDecide()
{
    QFETCH(const QString, languages);
    QFETCH(const QStringList, codes);
    QFETCH(const QString, text);
    const tests::TranslationFolder folder;
    QVERIFY(folder.isValid());
    for (const QString &code : codes) {
        const QString translation =
            code == QLatin1String("de") ? QStringLiteral("german") : QStringLiteral("english");
        QVERIFY(folder.add(translation, QStringLiteral("program/languages/TarnvikControl_%1.qm").arg(code)));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LC_ALL"));
    environment.remove(QStringLiteral("LC_MESSAGES"));
    environment.insert(QStringLiteral("LANG"), languages.section(u':', 0, 0) + QStringLiteral(".UTF-8"));
    environment.insert(QStringLiteral("LANGUAGE"), languages);
    const auto output = folder.run({QStringLiteral("init"), QStringLiteral("print")}, environment);
    QCOMPARE(output.ExitCode, 0);
    QVERIFY2(output.Lines.contains(text), qPrintable(output.Lines.join(u'\n')));
}

TARNVIK_TEST_MAIN(AppTranslationLinuxTest, QCoreApplication)
#include "AppTranslationLinuxTest.moc"
