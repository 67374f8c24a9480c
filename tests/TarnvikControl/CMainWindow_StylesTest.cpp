// SPDX-License-Identifier: MIT
// The styles of the user interface: which one the program starts with and what the menu entries do.
#include "TarnvikControl/CMainWindow.h"

#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QStyle>
#include <QStyleFactory>
#include <QTextEdit>

#include <limits>

using namespace Qt::StringLiterals;

using tests::CheckedStyles;
using tests::MenuEntry;
using tests::StoredSettings;

namespace {

const QString Windows = u"Windows"_s;
const QString Fusion = u"Fusion"_s;
const QString Windows11 = u"windows11"_s;

/// The lists of style names that systems have.
const QStringList FusionOnly = {Windows, Fusion};
const QStringList Windows11Only = {Windows, Windows11};
const QStringList Both = {Fusion, Windows11, Windows};

const QString GuiStyle = u"GuiStyle"_s;

QStringList GivenStyles;

bool IsDark()
{
    return QApplication::palette().color(QPalette::Base).lightness() < 128;
}

} // namespace

class CMainWindow_StylesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void theStoredStyleIsAppliedAtTheStart_data();
    void theStoredStyleIsAppliedAtTheStart();
    void withoutTheStoredStyleTheFirstFileEntryIsTriggeredAtTheStart_data();
    void withoutTheStoredStyleTheFirstFileEntryIsTriggeredAtTheStart();
    void aStyleEntrySetsStoresAndMarks_data();
    void aStyleEntrySetsStoresAndMarks();
    void theDefaultStyleIsTheBestThatThereIs_data();
    void theDefaultStyleIsTheBestThatThereIs();
    void aStyleThatVanishedOnlyRefreshesThePanel_data();
    void aStyleThatVanishedOnlyRefreshesThePanel();
    void aToggleAppliesTheStoredStyleAgain_data();
    void aToggleAppliesTheStoredStyleAgain();
};

void CMainWindow_StylesTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    qputenv("TARNVIK_STANDIN_INTERVAL_MS", "0");
    QVERIFY(QStyleFactory::keys().contains(Windows11)); // if need be, the test's own
}

void CMainWindow_StylesTest::init()
{
    StoredSettings().clear();
    GivenStyles = FusionOnly;
    CMainWindow::StyleNames = [] { return GivenStyles; };
    QApplication::setStyle(Windows); // none of those that a test expects
}

void CMainWindow_StylesTest::theStoredStyleIsAppliedAtTheStart_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<int>("guiStyle"); // applied, stored and marked
    QTest::addColumn<QString>("style");
    const QString fusion = u"fusion"_s;
    QTest::newRow("nothing stored is the default style") << QVariant() << FusionOnly << 0 << fusion;
    QTest::newRow("nothing stored, with both") << QVariant() << Both << 0 << Windows11;
    QTest::newRow("a text is the default style") << QVariant("dark") << FusionOnly << 0 << fusion;
    QTest::newRow("0 is the default style") << QVariant(0) << FusionOnly << 0 << fusion;
    QTest::newRow("0 with windows11 only") << QVariant(0) << Windows11Only << 0 << Windows11;
    QTest::newRow("0 with both is windows11") << QVariant(0) << Both << 0 << Windows11;
    QTest::newRow("1 is light Fusion") << QVariant(1) << FusionOnly << 1 << fusion;
    QTest::newRow("1 with both") << QVariant(1) << Both << 1 << fusion;
    QTest::newRow("2 is dark Fusion") << QVariant(2) << FusionOnly << 2 << fusion;
    QTest::newRow("2 with both") << QVariant(2) << Both << 2 << fusion;
    QTest::newRow("3 is light Windows 11") << QVariant(3) << Windows11Only << 3 << Windows11;
    QTest::newRow("3 with both") << QVariant(3) << Both << 3 << Windows11;
    QTest::newRow("4 is dark Windows 11") << QVariant(4) << Windows11Only << 4 << Windows11;
    QTest::newRow("4 with both") << QVariant(4) << Both << 4 << Windows11;
    QTest::newRow("5 counts as 4") << QVariant(5) << Both << 4 << Windows11;
    QTest::newRow("99 counts as 4") << QVariant(99) << Windows11Only << 4 << Windows11;
    QTest::newRow("the greatest number counts as 4")
        << QVariant(std::numeric_limits<int>::max()) << Both << 4 << Windows11;
    QTest::newRow("a negative number is the default style") << QVariant(-1) << FusionOnly << 0 << fusion;
    QTest::newRow("a negative number, with both") << QVariant(-99) << Both << 0 << Windows11;
}

void CMainWindow_StylesTest::theStoredStyleIsAppliedAtTheStart()
{
    QFETCH(QVariant, stored);
    QFETCH(QStringList, styles);
    QFETCH(int, guiStyle);
    QFETCH(QString, style);
    GivenStyles = styles;
    if (stored.isValid())
        StoredSettings().setValue(GuiStyle, stored);
    const CMainWindow window;
    QCOMPARE(StoredSettings().value(GuiStyle).toString(), QString::number(guiStyle));
    QCOMPARE(CheckedStyles(window), QString::number(guiStyle));
    QCOMPARE(QApplication::style()->name(), style);
    QCOMPARE(IsDark(), guiStyle == 2 || guiStyle == 4);
}

void CMainWindow_StylesTest::withoutTheStoredStyleTheFirstFileEntryIsTriggeredAtTheStart_data()
{
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("no known style, nothing stored") << QStringList{Windows} << QVariant();
    QTest::newRow("no known style, the default style stored") << QStringList{Windows} << QVariant(0);
    QTest::newRow("no known style, a Fusion style stored") << QStringList{Windows} << QVariant(1);
    QTest::newRow("no style at all") << QStringList{} << QVariant(4);
    QTest::newRow("light Fusion stored where only windows11 is there") << Windows11Only << QVariant(1);
    QTest::newRow("dark Fusion stored where only windows11 is there") << Windows11Only << QVariant(2);
    QTest::newRow("light Windows 11 stored where only Fusion is there") << FusionOnly << QVariant(3);
    QTest::newRow("dark Windows 11 stored where only Fusion is there") << FusionOnly << QVariant(4);
    QTest::newRow("a value above 4 counts as 4") << FusionOnly << QVariant(99);
}

void CMainWindow_StylesTest::withoutTheStoredStyleTheFirstFileEntryIsTriggeredAtTheStart()
{
    QFETCH(QStringList, styles);
    QFETCH(QVariant, stored);
    GivenStyles = styles;
    if (stored.isValid())
        StoredSettings().setValue(GuiStyle, stored);
    const tests::DialogAnswers answers(QMessageBox::Ok);
    const CMainWindow window;
    QCOMPARE(answers.boxes().size(), 1);
    QCOMPARE(answers.boxes().first().Text, u"No 'record path' in configuration file found!"_s);
    QCOMPARE(StoredSettings().value(GuiStyle).toString(), stored.toString());
    QCOMPARE(CheckedStyles(window), QString());
    QCOMPARE(QApplication::style()->name(), u"windows"_s); // as before
}

void CMainWindow_StylesTest::aStyleEntrySetsStoresAndMarks_data()
{
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<QString>("before"); // the entry that was chosen before, of the other shade
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("guiStyle");
    QTest::addColumn<QString>("style");
    const QString fusion = u"fusion"_s;
    const QString standard = u"View in default style"_s;
    const QString lightFusion = u"View in light Fusion style"_s;
    const QString darkFusion = u"View in dark Fusion style"_s;
    const QString light11 = u"View in light Windows 11 style"_s;
    const QString dark11 = u"View in dark Windows 11 style"_s;
    QTest::newRow("default, with Fusion only") << FusionOnly << darkFusion << standard << 0 << fusion;
    QTest::newRow("default, with windows11 only") << Windows11Only << dark11 << standard << 0 << Windows11;
    QTest::newRow("default, with both") << Both << darkFusion << standard << 0 << Windows11;
    QTest::newRow("light Fusion") << FusionOnly << darkFusion << lightFusion << 1 << fusion;
    QTest::newRow("light Fusion, with both") << Both << dark11 << lightFusion << 1 << fusion;
    QTest::newRow("dark Fusion") << FusionOnly << lightFusion << darkFusion << 2 << fusion;
    QTest::newRow("dark Fusion, with both") << Both << light11 << darkFusion << 2 << fusion;
    QTest::newRow("light Windows 11") << Windows11Only << dark11 << light11 << 3 << Windows11;
    QTest::newRow("light Windows 11, with both") << Both << darkFusion << light11 << 3 << Windows11;
    QTest::newRow("dark Windows 11") << Windows11Only << light11 << dark11 << 4 << Windows11;
    QTest::newRow("dark Windows 11, with both") << Both << lightFusion << dark11 << 4 << Windows11;
}

void CMainWindow_StylesTest::aStyleEntrySetsStoresAndMarks()
{
    QFETCH(QStringList, styles);
    QFETCH(QString, before);
    QFETCH(QString, entry);
    QFETCH(int, guiStyle);
    QFETCH(QString, style);
    GivenStyles = styles;
    const CMainWindow window;
    MenuEntry(window, before)->trigger();
    for (int i = 0; i < 2; ++i) { // chosen again it stays checked
        MenuEntry(window, entry)->trigger();
        QCOMPARE(StoredSettings().value(GuiStyle).toString(), QString::number(guiStyle));
        QCOMPARE(CheckedStyles(window), QString::number(guiStyle));
        QCOMPARE(QApplication::style()->name(), style);
        QCOMPARE(IsDark(), guiStyle == 2 || guiStyle == 4);
    }
}

void CMainWindow_StylesTest::theDefaultStyleIsTheBestThatThereIs_data()
{
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<QString>("before"); // the style set before
    QTest::addColumn<QString>("style");
    QTest::newRow("windows11 before Fusion") << QStringList{Windows11, Fusion} << Windows << Windows11;
    QTest::newRow("windows11 behind Fusion") << QStringList{Fusion, Windows11} << Windows << Windows11;
    QTest::newRow("windows11 at the end") << Windows11Only << Windows << Windows11;
    QTest::newRow("Fusion at the end") << FusionOnly << Windows << u"fusion"_s;
    QTest::newRow("the first one where both are missing")
        << QStringList{Windows, u"other"_s} << Fusion << u"windows"_s;
    QTest::newRow("the one there was where there is none") << QStringList{} << Windows << u"windows"_s;
}

void CMainWindow_StylesTest::theDefaultStyleIsTheBestThatThereIs()
{
    QFETCH(QStringList, styles);
    QFETCH(QString, before);
    QFETCH(QString, style);
    const CMainWindow window;
    MenuEntry(window, u"View in dark Fusion style"_s)->trigger();
    GivenStyles = styles; // from now on
    QApplication::setStyle(before);
    MenuEntry(window, u"View in default style"_s)->trigger();
    QCOMPARE(QApplication::style()->name(), style);
    QCOMPARE(StoredSettings().value(GuiStyle).toString(), u"0"_s);
    QCOMPARE(CheckedStyles(window), u"0"_s);
    QVERIFY(!IsDark());
}

void CMainWindow_StylesTest::aStyleThatVanishedOnlyRefreshesThePanel_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QStringList>("styles"); // left
    QTest::newRow("light Fusion") << "View in light Fusion style" << Windows11Only;
    QTest::newRow("dark Fusion") << "View in dark Fusion style" << Windows11Only;
    QTest::newRow("light Windows 11") << "View in light Windows 11 style" << FusionOnly;
    QTest::newRow("dark Windows 11") << "View in dark Windows 11 style" << FusionOnly;
    QTest::newRow("no style is left") << "View in dark Fusion style" << QStringList{};
}

void CMainWindow_StylesTest::aStyleThatVanishedOnlyRefreshesThePanel()
{
    QFETCH(QString, entry);
    QFETCH(QStringList, styles);
    GivenStyles = Both;
    const CMainWindow window;
    StoredSettings().setValue(GuiStyle, u"as it was"_s);
    GivenStyles = styles;
    QApplication::setStyle(Windows);
    const QPalette palette = QApplication::palette();
    auto &panel = *window.findChild<QTextEdit *>();
    panel.clear();
    MenuEntry(window, entry)->trigger();
    QVERIFY(panel.toPlainText().startsWith(u"Program information\n"_s));
    QCOMPARE(StoredSettings().value(GuiStyle).toString(), u"as it was"_s);
    QCOMPARE(QApplication::style()->name(), u"windows"_s);
    QCOMPARE(QApplication::palette(), palette);
}

void CMainWindow_StylesTest::aToggleAppliesTheStoredStyleAgain_data()
{
    QTest::addColumn<QString>("toggle");
    QTest::newRow("hide when close") << "Hide when close";
    QTest::newRow("start with hidden GUI") << "Start with hidden GUI";
}

void CMainWindow_StylesTest::aToggleAppliesTheStoredStyleAgain()
{
    QFETCH(QString, toggle);
    GivenStyles = Both;
    const CMainWindow window;
    StoredSettings().setValue(GuiStyle, 2);
    MenuEntry(window, toggle)->trigger();
    QCOMPARE(QApplication::style()->name(), u"fusion"_s);
    QVERIFY(IsDark());
    QCOMPARE(CheckedStyles(window), u"2"_s);
}

TARNVIK_TEST_MAIN(CMainWindow_StylesTest, QApplication)

#include "CMainWindow_StylesTest.moc"
