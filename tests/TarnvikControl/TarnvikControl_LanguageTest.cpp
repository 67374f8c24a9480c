// SPDX-License-Identifier: MIT
// The whole program with the built translations beside it, on systems in several languages.
#include "tests/TarnvikControl/Station.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

using namespace Qt::StringLiterals;

using tests::OnlyWindow;
using tests::PutTranslationsBeside;
using tests::Station;
using tests::SystemIn;
using tests::VirtualDesktop;

namespace {

const QString GermanPanel =
    u"Programminformationen\n\nStart               : Mit geöffnetem Fenster\n\nTarnvikRecord\n\n"
    "Programmstatus      : Läuft\nLetzte Meldung      : ready\n"_s;
const QString EnglishPanel =
    u"Program information\n\nStart               : With open GUI\n\nTarnvikRecord\n\n"
    "Program status      : Running\nLast message        : ready\n"_s;

} // namespace

class TarnvikControl_LanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void theProgramSpeaksTheSystemsLanguage_data();
    void theProgramSpeaksTheSystemsLanguage();
    void aSecondInstanceIsRefusedInTheSystemsLanguage();
};

void TarnvikControl_LanguageTest::theProgramSpeaksTheSystemsLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("yes");
    const QString german = u"Programm beenden"_s;
    const QString english = u"Close indication"_s;
    QTest::newRow("Germany") << "de_DE.UTF-8"
                             << "" << GermanPanel << german << "alt+j";
    QTest::newRow("Austria") << "de_AT.UTF-8"
                             << "" << GermanPanel << german << "alt+j";
    QTest::newRow("a language without a translation, German second")
        << "fr_FR.UTF-8"
        << "fr:de" << GermanPanel << german << "alt+j";
    QTest::newRow("English first, German second") << "en_GB.UTF-8"
                                                  << "en_GB:en:de" << EnglishPanel << english << "alt+y";
    QTest::newRow("a language without a translation") << "fr_FR.UTF-8"
                                                      << "" << EnglishPanel << english << "alt+y";
    QTest::newRow("no language") << "C"
                                 << "de" << EnglishPanel << english << "alt+y";
}

void TarnvikControl_LanguageTest::theProgramSpeaksTheSystemsLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, languages);
    QFETCH(QString, panel);
    QFETCH(QString, question);
    QFETCH(QString, yes);
    tools::RecorderReport report;
    report.SetOption("MESSAGE", "ready");
    Station station;
    QVERIFY(PutTranslationsBeside(station));
    station.Process.setProcessEnvironment(SystemIn(locale, languages));
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(station.panelText(), panel, tests::Patience);
    QVERIFY(VirtualDesktop::Press(OnlyWindow(tests::Title), {u"ctrl+q"_s}));
    QTRY_VERIFY(station.shows(question));
    QVERIFY(VirtualDesktop::Press(OnlyWindow(question), {yes})); // the mnemonic is Qt's
    QVERIFY(station.endedWith(0));
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControl_LanguageTest::aSecondInstanceIsRefusedInTheSystemsLanguage()
{
    const tools::RecorderReport report;
    const QString refusal = u"Fehler..."_s;
    Station first;
    first.Start();
    QTRY_VERIFY_WITH_TIMEOUT(first.shows(), tests::Patience);
    Station second;
    QVERIFY(PutTranslationsBeside(second));
    second.Process.setProcessEnvironment(SystemIn(u"de_DE.UTF-8"_s));
    second.Start();
    QTRY_VERIFY_WITH_TIMEOUT(second.shows(refusal), tests::Patience);
    QVERIFY(VirtualDesktop::Press(OnlyWindow(refusal), {u"Return"_s}));
    QVERIFY(second.endedWith(255)); // -1 as an exit code of eight bits
    QCOMPARE(second.output().section(u'\n', 1), u"TarnvikControl: Fehler: Das Programm läuft bereits...\n"_s);
    QVERIFY(second.errorOutput().endsWith(u": TarnvikControl: Fehler -1!\n"_s));
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_LanguageTest)

#include "TarnvikControl_LanguageTest.moc"
