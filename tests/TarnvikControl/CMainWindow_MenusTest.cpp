// SPDX-License-Identifier: MIT
// The window's menu bar and the marks in it.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QTextEdit>
#include <QTimer>

using tests::MenuEntry;
using tests::StoredSettings;

namespace {

QStringList GivenStyles;

/// One line per entry: "menu|text|tip|shortcut|checkable", separators as "menu|-", submenus as "menu|text >".
QStringList MenuTable(const CMainWindow &window)
{
    QStringList table;
    const QList<QAction *> titles = window.menuBar()->actions();
    for (const QAction *title : titles) {
        const QList<QAction *> entries = title->menu()->actions();
        for (const QAction *entry : entries) {
            QString line = title->text() + u'|';
            if (entry->isSeparator())
                line += u'-';
            else if (entry->menu())
                line += entry->text() + QStringLiteral(" >");
            else
                line += QStringList{entry->text(), entry->statusTip(), entry->shortcut().toString(),
                                    entry->isCheckable() ? QStringLiteral("checkable") : QString()}
                            .join(u'|');
            table.append(line);
        }
    }
    return table;
}

const QStringList FileMenu = {
    QStringLiteral("File|Open record file folder|Open drawer with record files|Ctrl+R|"),
    QStringLiteral("File|Create record file folder link on Desktop|"
                   "Create symblic link on desktop to record files drawer||"),
    QStringLiteral("File|Open settings folder...|Open drawer with settings|Ctrl+D|"),
    QStringLiteral("File|-"),
    QStringLiteral("File|Hide|Hide|Ctrl+H|"),
    QStringLiteral("File|Quit|Quit|Ctrl+Q|"),
};
const QStringList AlignmentMenu = {
    QStringLiteral("Alignment|Show...|Show alignement table for SDRs|Ctrl+S|"),
};
const QStringList ViewMenuStart = {
    QStringLiteral("View|Save Windows|Save size and state of windows||"),
    QStringLiteral("View|Restore Windows|Restore size and state of windows||"),
    QStringLiteral("View|-"),
    QStringLiteral("View|Hide when close|Close button minimized into tray||checkable"),
    QStringLiteral("View|Start with hidden GUI|Start minimized into tray||checkable"),
    QStringLiteral("View|-"),
};
const QStringList Language = {QStringLiteral("View|Language >"), QStringLiteral("View|-")};
const QStringList Guide = {QStringLiteral("View|Open User Guide|Open User Guide|Ctrl+H|"),
                           QStringLiteral("View|-")};
const QStringList DefaultStyleEntry = {
    QStringLiteral("View|-"),
    QStringLiteral("View|View in default style|Default windows style for GUI||checkable"),
};
const QStringList FusionEntries = {
    QStringLiteral("View|View in light Fusion style|Light Fusion style for GUI||checkable"),
    QStringLiteral("View|View in dark Fusion style|Dark Fusion style for GUI||checkable"),
};
const QStringList Windows11Entries = {
    QStringLiteral("View|View in light Windows 11 style|Light Windows 11 style for GUI||checkable"),
    QStringLiteral("View|View in dark Windows 11 style|Dark Windows 11 style for GUI||checkable"),
};
const QStringList StylesEnd = {QStringLiteral("View|-")};
const QStringList About = {
    QStringLiteral("View|About Qt...|About Qt...||"),
    QStringLiteral("View|About TarnvikControl...|About...||"),
};

} // namespace

class CMainWindow_MenusTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void theMenuBarHasItsEntries_data();
    void theMenuBarHasItsEntries();
    void aMissingTranslationFileLeavesOutTheLanguageMenu();
    void theMenuIsBuiltAnewWithoutLeftovers();
    void theTwoTogglesShowWhatIsStored_data();
    void theTwoTogglesShowWhatIsStored();
    void theTogglesInvertStoreAndMark();
    void thePanelsStartLineFollowsItsToggleAtOnce();
    void theAmbiguousCtrlHTriggersNeitherEntry();
    void theOtherShortcutsTriggerTheirEntries();
};

void CMainWindow_MenusTest::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillane GmbH"));
    QCoreApplication::setApplicationName(QStringLiteral("TarnvikControl"));
    qputenv("TARNVIK_STANDIN_INTERVAL_MS", "0");
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
}

void CMainWindow_MenusTest::init()
{
    StoredSettings().clear();
    // On Windows other tests write there too.
    QDir(QTarnvikBasic::GetRecorderFile(QString())).removeRecursively();
    GivenStyles = QStringList{QStringLiteral("Windows"), QStringLiteral("Fusion")};
    CMainWindow::StyleNames = [] { return GivenStyles; };
    QFile::remove(QDir::tempPath() + QStringLiteral("/TarnvikControl_de.qm"));
    AppTranslation.Init(qApp);
}

void CMainWindow_MenusTest::theMenuBarHasItsEntries_data()
{
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<bool>("language");
    QTest::addColumn<QStringList>("expected");
    const QString windows = QStringLiteral("Windows");
    const QString fusion = QStringLiteral("Fusion");
    const QString windows11 = QStringLiteral("windows11");
    QTest::newRow("without the windows11 style: default and the two Fusion entries only")
        << QStringList{windows, fusion} << false
        << FileMenu + AlignmentMenu + ViewMenuStart + Guide + DefaultStyleEntry + FusionEntries + StylesEnd +
               About;
    QTest::newRow("with both styles")
        << QStringList{windows11, fusion} << false
        << FileMenu + AlignmentMenu + ViewMenuStart + Guide + DefaultStyleEntry + FusionEntries +
               Windows11Entries + StylesEnd + About;
    QTest::newRow("with windows11 only") << QStringList{windows11, windows} << false
                                         << FileMenu + AlignmentMenu + ViewMenuStart + Guide +
                                                DefaultStyleEntry + Windows11Entries + StylesEnd + About;
    QTest::newRow("with neither: no style entries at all")
        << QStringList{windows} << false << FileMenu + AlignmentMenu + ViewMenuStart + Guide + About;
    QTest::newRow("style names in another case do not count")
        << QStringList{QStringLiteral("fusion"), QStringLiteral("Windows11")} << false
        << FileMenu + AlignmentMenu + ViewMenuStart + Guide + About;
    QTest::newRow("with a language") << QStringList{fusion} << true
                                     << FileMenu + AlignmentMenu + ViewMenuStart + Language + Guide +
                                            DefaultStyleEntry + FusionEntries + StylesEnd + About;
}

void CMainWindow_MenusTest::theMenuBarHasItsEntries()
{
    QFETCH(QStringList, styles);
    QFETCH(bool, language);
    QFETCH(QStringList, expected);
    GivenStyles = styles;
    if (language) {
        QFile file(QDir::tempPath() + QStringLiteral("/TarnvikControl_de.qm"));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const tests::DialogAnswers answers(QMessageBox::Ok); // without styles the first entry warns
    const CMainWindow window;
    QCOMPARE(MenuTable(window), expected);
    if (language) {
        QStringList codes;
        const QList<QAction *> entries = MenuEntry(window, QStringLiteral("Language"))->menu()->actions();
        for (const QAction *entry : entries)
            codes.append(entry->text());
        QCOMPARE(codes, (QStringList{QStringLiteral("en"), QStringLiteral("de")}));
    }
}

void CMainWindow_MenusTest::aMissingTranslationFileLeavesOutTheLanguageMenu()
{
    const CMainWindow window;
    QVERIFY(!MenuEntry(window, QStringLiteral("Language")));
}

void CMainWindow_MenusTest::theMenuIsBuiltAnewWithoutLeftovers()
{
    CMainWindow window;
    const QStringList before = MenuTable(window);
    const auto count = [&window] { return window.findChildren<QAction *>().size(); };
    QMetaObject::invokeMethod(&window, "Raw_SlotNewTranslation");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const qsizetype actions = count();
    for (int i = 0; i < 20; ++i) {
        QMetaObject::invokeMethod(&window, "Raw_SlotNewTranslation");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QCOMPARE(count(), actions);
    QCOMPARE(MenuTable(window), before);
}

void CMainWindow_MenusTest::theTwoTogglesShowWhatIsStored_data()
{
    QTest::addColumn<QVariant>("closeIsMinimize");
    QTest::addColumn<QVariant>("startHidden");
    QTest::addColumn<bool>("hideWhenCloseChecked");
    QTest::addColumn<bool>("startHiddenChecked");
    QTest::newRow("nothing stored") << QVariant() << QVariant() << false << false;
    QTest::newRow("true and true") << QVariant(true) << QVariant(true) << false << true;
    QTest::newRow("false and false") << QVariant(false) << QVariant(false) << true << false;
}

void CMainWindow_MenusTest::theTwoTogglesShowWhatIsStored()
{
    QFETCH(QVariant, closeIsMinimize);
    QFETCH(QVariant, startHidden);
    QFETCH(bool, hideWhenCloseChecked);
    QFETCH(bool, startHiddenChecked);
    if (closeIsMinimize.isValid())
        StoredSettings().setValue(QStringLiteral("CloseIsMinimize"), closeIsMinimize);
    if (startHidden.isValid())
        StoredSettings().setValue(QStringLiteral("StartHidden"), startHidden);
    const CMainWindow window;
    QCOMPARE(MenuEntry(window, QStringLiteral("Hide when close"))->isChecked(), hideWhenCloseChecked);
    QCOMPARE(MenuEntry(window, QStringLiteral("Start with hidden GUI"))->isChecked(), startHiddenChecked);
}

void CMainWindow_MenusTest::theTogglesInvertStoreAndMark()
{
    CMainWindow window;
    QAction *const hideWhenClose = MenuEntry(window, QStringLiteral("Hide when close"));
    QAction *const startHidden = MenuEntry(window, QStringLiteral("Start with hidden GUI"));
    for (const bool hide : {true, false}) {
        hideWhenClose->trigger();
        QCOMPARE(hideWhenClose->isChecked(), hide);
        QCOMPARE(StoredSettings().value(QStringLiteral("CloseIsMinimize")).toBool(), !hide);
    }
    for (const bool hidden : {true, false}) {
        startHidden->trigger();
        QCOMPARE(startHidden->isChecked(), hidden);
        QCOMPARE(StoredSettings().value(QStringLiteral("StartHidden")).toBool(), hidden);
    }
    hideWhenClose->trigger();
    window.show();
    QVERIFY(!window.close()); // it hides, without a question
    QVERIFY(!window.isVisible());
}

void CMainWindow_MenusTest::thePanelsStartLineFollowsItsToggleAtOnce()
{
    const CMainWindow window;
    const auto startLine = [&window] {
        return window.findChild<QTextEdit *>()->toPlainText().section(u'\n', 2, 2);
    };
    const QString open = QStringLiteral("Start               : With open GUI");
    const QString hidden = QStringLiteral("Start               : Hide GUI into tray");
    QCOMPARE(startLine(), open);
    QAction *const toggle = MenuEntry(window, QStringLiteral("Start with hidden GUI"));
    toggle->trigger();
    QCOMPARE(startLine(), hidden);
    toggle->trigger();
    QCOMPARE(startLine(), open);
}

void CMainWindow_MenusTest::theAmbiguousCtrlHTriggersNeitherEntry()
{
    const tests::DialogAnswers answers(QMessageBox::Ok);
    CMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_H, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_H, Qt::ControlModifier);
    QVERIFY(window.isVisible());
    QVERIFY(answers.boxes().isEmpty()); // no guide is there, so opening it would tell
}

void CMainWindow_MenusTest::theOtherShortcutsTriggerTheirEntries()
{
    tests::DialogAnswers answers(QMessageBox::Ok);
    CMainWindow window;
    window.show();
    const auto press = [&window](Qt::Key key) {
        window.activateWindow(); // a box that was answered had the focus
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, key, Qt::ControlModifier);
    };
    press(Qt::Key_R);
    QCOMPARE(answers.boxes().size(), 1);
    QCOMPARE(answers.boxes().last().Text, QStringLiteral("No 'record path' in configuration file found!"));
    press(Qt::Key_D);
    QCOMPARE(answers.boxes().size(), 2);
    QVERIFY(answers.boxes().last().Text.startsWith(QStringLiteral("Drawer does not exists!")));
    bool shown = false;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, &window, [&shown] {
        if (auto *const dialog = qobject_cast<QDlgAlignmentCfg *>(QApplication::activeModalWidget())) {
            shown = true;
            dialog->reject();
        }
    });
    closer.start(5);
    press(Qt::Key_S);
    QVERIFY(shown);
    answers.setAnswer(QMessageBox::Abort);
    press(Qt::Key_Q);
    QCOMPARE(answers.boxes().size(), 3);
    QCOMPARE(answers.boxes().last().Title, QStringLiteral("Close indication"));
}

TARNVIK_TEST_MAIN(CMainWindow_MenusTest, QApplication)

#include "CMainWindow_MenusTest.moc"
