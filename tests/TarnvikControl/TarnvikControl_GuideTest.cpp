// SPDX-License-Identifier: MIT
// The whole program opens its user guide from the menu, in the language that it speaks.
#include "tests/TarnvikControl/Station.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

using tests::OnlyWindow;
using tests::Station;
using tests::Title;
using tests::VirtualDesktop;

namespace {

const QString GermanGuide = u"Tarnvik_DE.pdf"_s;
const QString EnglishGuide = u"Tarnvik_EN.pdf"_s;

bool WriteFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// Takes the place of the system's opener: the programs that find it in their PATH have what they open
/// written down.
class RecordingOpener
{
public:
    [[nodiscard]] bool install(QProcessEnvironment &environment) const
    {
        const QString opener = Folder.filePath(u"xdg-open"_s);
        // Complete at once, so that nobody reads half a list.
        const QByteArray script = "#!/bin/sh\nprintf '%s\\n' \"$@\" >'" + QFile::encodeName(record()) +
                                  ".new' && mv '" + QFile::encodeName(record()) + ".new' '" +
                                  QFile::encodeName(record()) + "'\n";
        environment.insert(u"PATH"_s, Folder.path() + u':' + environment.value(u"PATH"_s));
        return WriteFile(opener, script) &&
               QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    /// The arguments of the last call, one a line; empty before it.
    [[nodiscard]] QString opened() const
    {
        QFile file(record());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private:
    [[nodiscard]] QString record() const { return Folder.filePath(u"opened"_s); }

    QTemporaryDir Folder{u"/tmp/tarnvik-opener-XXXXXX"_s};
};

/// Chooses the menu's entry: the sixth of the third menu, behind windows, close and start, languages.
bool ChooseTheGuide()
{
    QStringList keys = {u"Alt_L"_s, u"Right"_s, u"Right"_s};
    keys += QStringList(6, u"Down"_s);
    return VirtualDesktop::Press(OnlyWindow(Title), keys + QStringList{u"Return"_s});
}

} // namespace

class TarnvikControl_GuideTest : public QObject
{
    Q_OBJECT

private slots:
    void theMenuOpensTheGuideInTheProgramsLanguage_data();
    void theMenuOpensTheGuideInTheProgramsLanguage();
    void theGuideIsOpenedFromAnyFolder_data();
    void theGuideIsOpenedFromAnyFolder();
};

void TarnvikControl_GuideTest::theMenuOpensTheGuideInTheProgramsLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("guides"); // that lie beside the program
    QTest::addColumn<QString>("expected");
    const QStringList both = {GermanGuide, EnglishGuide};
    QTest::newRow("the German program opens the German guide") << "de_DE.UTF-8" << both << GermanGuide;
    QTest::newRow("the English program opens the English guide") << "en_GB.UTF-8" << both << EnglishGuide;
    QTest::newRow("a program without a language opens the English guide") << "C" << both << EnglishGuide;
    QTest::newRow("without a German guide the German program opens the English one")
        << "de_DE.UTF-8" << QStringList{EnglishGuide} << EnglishGuide;
}

void TarnvikControl_GuideTest::theMenuOpensTheGuideInTheProgramsLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QStringList, guides);
    QFETCH(QString, expected);
    Station station;
    QVERIFY(tests::PutTranslationsBeside(station));
    for (const QString &guide : std::as_const(guides))
        QVERIFY(WriteFile(station.path(guide), "%PDF-1.4\n%%EOF\n"));
    const RecordingOpener opener;
    QProcessEnvironment environment = tests::SystemIn(locale);
    QVERIFY(opener.install(environment));
    station.Process.setProcessEnvironment(environment);
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows(), tests::Patience);

    QVERIFY(ChooseTheGuide());
    const QUrl url = QUrl::fromLocalFile(station.path(expected)); // the folder's path has a blank
    QTRY_COMPARE(opener.opened(), QString::fromLatin1(url.toEncoded()) + u'\n');
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControl_GuideTest::theGuideIsOpenedFromAnyFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("blanks") << "Program Files";
    QTest::newRow("umlauts") << "Übung";
    QTest::newRow("another script") << "станция";
    QTest::newRow("a percent sign") << "100%";
    QTest::newRow("what begins a query") << "which?";
    QTest::newRow("what begins a fragment") << "station #1";
    QTest::newRow("both") << "a?b#c?d";
    QTest::newRow("a colon") << "c:d";
    QTest::newRow("brackets and quotation marks") << "[a] {b} \"c\" 'd' \\";
}

void TarnvikControl_GuideTest::theGuideIsOpenedFromAnyFolder()
{
    QFETCH(QString, folder);
    Station station(tests::RecorderName(), folder);
    QVERIFY(tests::PutTranslationsBeside(station)); // the menu is the same everywhere
    const QString guide = station.path(EnglishGuide);
    QVERIFY(WriteFile(guide, "%PDF-1.4\n%%EOF\n"));
    const RecordingOpener opener;
    QProcessEnvironment environment = tests::SystemIn(u"C"_s);
    QVERIFY(opener.install(environment));
    station.Process.setProcessEnvironment(environment);
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows(), tests::Patience);
    QVERIFY(ChooseTheGuide());
    QTRY_COMPARE(opener.opened(), QString::fromLatin1(QUrl::fromLocalFile(guide).toEncoded()) + u'\n');
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_GuideTest)
#include "TarnvikControl_GuideTest.moc"
