// SPDX-License-Identifier: MIT
// The translation files: complete, and nothing lost that must be the same in every language.
#include "tests/support/TestMain.h"
#include "tests/translations/TsFile.h"

#include <QCoreApplication>
#include <QMap>
#include <QRegularExpression>
#include <QTranslator>

using namespace Qt::StringLiterals;

using tests::Losses;
using tests::ReadTsFile;
using tests::TsMessage;

namespace {

const QString Program = u"TarnvikControl"_s;

QString TsPath(const QString &name, const QString &language)
{
    return QStringLiteral(TRANSLATIONS_FOLDER "/%1_%2.ts").arg(name, language);
}

QMap<QString, TsMessage> ByKey(const QList<TsMessage> &messages)
{
    QMap<QString, TsMessage> byKey;
    for (const TsMessage &message : messages)
        byKey.insert(message.key(), message);
    return byKey;
}

} // namespace

class TranslationFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyTextOfTheSourcesIsTranslated_data();
    void everyTextOfTheSourcesIsTranslated();
    void aLossIsFound_data();
    void aLossIsFound();
    void nothingIsLostInTranslation_data();
    void nothingIsLostInTranslation();
    void theEnglishTextsAreThoseOfTheSources();
    void onlyNamesAndFormatsAreTheSameInGerman();
    void theBuiltFilesHoldTheTranslations_data();
    void theBuiltFilesHoldTheTranslations();
};

void TranslationFilesTest::everyTextOfTheSourcesIsTranslated_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("German") << "de";
    QTest::newRow("English") << "en";
}

void TranslationFilesTest::everyTextOfTheSourcesIsTranslated()
{
    QFETCH(QString, language);
    const QMap<QString, TsMessage> sources = ByKey(ReadTsFile(QStringLiteral(SOURCE_TEXTS)));
    const QMap<QString, TsMessage> translations = ByKey(ReadTsFile(TsPath(Program, language)));
    QVERIFY(sources.size() > 100);
    QStringList untranslated;
    for (auto it = sources.begin(); it != sources.end(); ++it) {
        const TsMessage translation = translations.value(it.key());
        if (!translation.Finished || translation.Translation.isEmpty())
            untranslated.append(it.key());
    }
    QCOMPARE(untranslated.join(u'\n'), QString());
    QStringList noLongerUsed;
    for (auto it = translations.begin(); it != translations.end(); ++it) {
        if (!sources.contains(it.key()))
            noLongerUsed.append(it.key());
    }
    QCOMPARE(noLongerUsed.join(u'\n'), QString());
}

void TranslationFilesTest::aLossIsFound_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");
    QTest::addColumn<QString>("losses");
    QTest::newRow("all is there") << "&Load %1...\n(%2)"
                                  << "%2 &laden (%1)...\n"
                                  << "";
    QTest::newRow("a placeholder is missing") << "From %1 to %2"
                                              << "Von %1"
                                              << "placeholders";
    QTest::newRow("a placeholder is another") << "From %1"
                                              << "Von %2"
                                              << "placeholders";
    QTest::newRow("a placeholder is doubled") << "From %1"
                                              << "Von %1 %1"
                                              << "placeholders";
    QTest::newRow("a line break is missing") << "Error\n%1"
                                             << "Fehler %1"
                                             << "line breaks";
    QTest::newRow("a mnemonic is missing") << "&Quit"
                                           << "Beenden"
                                           << "mnemonics";
    QTest::newRow("a mnemonic too many") << "&Quit"
                                         << "&Be&enden"
                                         << "mnemonics";
    QTest::newRow("a doubled & is no mnemonic") << "Cut && paste"
                                                << "Ausschneiden und einsetzen"
                                                << "";
    QTest::newRow("an entity is no mnemonic") << "a&nbsp;b"
                                              << "ab"
                                              << "";
    QTest::newRow("a tag is missing") << "<b>Qt</b>"
                                      << "<b>Qt"
                                      << "tags, angle brackets";
    QTest::newRow("a link is another") << "<a href=\"x\">x</a>"
                                       << "<a href=\"y\">x</a>"
                                       << "tags";
    QTest::newRow("brackets are missing") << "Error <%1>"
                                          << "Fehler %1"
                                          << "angle brackets";
    QTest::newRow("the ellipsis is missing") << "Save..."
                                             << "Speichern"
                                             << "ellipses";
    QTest::newRow("a file pattern is another") << "A (*.ad);;All (*.*)"
                                               << "A (*.ab);;Alle (*.*)"
                                               << "file patterns";
    QTest::newRow("a blank at the end is missing") << "at "
                                                   << "am"
                                                   << "blanks at the ends";
    QTest::newRow("a blank at the beginning is missing") << " (at"
                                                         << "(am"
                                                         << "blanks at the ends";
    QTest::newRow("the blanks that fill a label may differ") << "   : %1\n"
                                                             << " : %1\n"
                                                             << "";
    QTest::newRow("but the one behind the colon stays") << "   : "
                                                        << " :"
                                                        << "blanks at the ends";
}

void TranslationFilesTest::aLossIsFound()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    QFETCH(QString, losses);
    QCOMPARE(Losses(source, translation).join(u", "_s), losses);
}

void TranslationFilesTest::nothingIsLostInTranslation_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("language");
    QTest::newRow("the program's texts in German") << Program << "de";
    QTest::newRow("the program's texts in English") << Program << "en";
    QTest::newRow("what Qt lacks in German") << "qt"
                                             << "de";
    QTest::newRow("what Qt lacks in English") << "qt"
                                              << "en";
}

void TranslationFilesTest::nothingIsLostInTranslation()
{
    QFETCH(QString, name);
    QFETCH(QString, language);
    const QList<TsMessage> messages = ReadTsFile(TsPath(name, language));
    QVERIFY(!messages.isEmpty());
    QStringList found;
    for (const TsMessage &message : messages) {
        const QStringList losses = Losses(message.Source, message.Translation);
        if (!losses.isEmpty() || !message.Finished)
            found.append(message.key() + u" -> "_s + losses.join(u' '));
    }
    QCOMPARE(found.join(u'\n'), QString());
}

void TranslationFilesTest::theEnglishTextsAreThoseOfTheSources()
{
    for (const QString &name : {Program, u"qt"_s}) {
        const QList<TsMessage> messages = ReadTsFile(TsPath(name, u"en"_s));
        QVERIFY(!messages.isEmpty());
        for (const TsMessage &message : messages)
            QCOMPARE(message.Translation, message.Source);
    }
}

void TranslationFilesTest::onlyNamesAndFormatsAreTheSameInGerman()
{
    QStringList same;
    const QList<TsMessage> messages = ReadTsFile(TsPath(Program, u"de"_s));
    for (const TsMessage &message : messages) {
        static const QRegularExpression letters(u"\\p{L}{2}"_s);
        if (message.Translation == message.Source && letters.match(message.Source).hasMatch())
            same.append(message.Source);
    }
    QCOMPARE(same.join(u' '), u"Tarnvik Start TarnvikRecord SDR"_s);
}

void TranslationFilesTest::theBuiltFilesHoldTheTranslations_data()
{
    nothingIsLostInTranslation_data();
}

void TranslationFilesTest::theBuiltFilesHoldTheTranslations()
{
    QFETCH(QString, name);
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY(
        translator.load(QStringLiteral(LANGUAGES_PARENT_FOLDER "/languages/%1_%2.qm").arg(name, language)));
    QVERIFY(!translator.isEmpty()); // an empty one is not installed
    const QList<TsMessage> messages = ReadTsFile(TsPath(name, language));
    for (const TsMessage &message : messages) {
        const QByteArray comment = message.Comment.toUtf8();
        QCOMPARE(translator.translate(message.Context.toUtf8(), message.Source.toUtf8(),
                                      comment.isEmpty() ? nullptr : comment.constData()),
                 message.Translation);
    }
}

TARNVIK_TEST_MAIN(TranslationFilesTest, QCoreApplication)

#include "TranslationFilesTest.moc"
