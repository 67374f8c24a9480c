// SPDX-License-Identifier: MIT
// The window's menu bar and the marks in it.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "TarnvikControl/WindowHiding.h"
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

using namespace Qt::StringLiterals;

using tests::MenuEntry;
using tests::StoredSettings;

namespace {

QStringList GivenStyles;

/// One line per entry: "menu|text|tip|shortcut|checkable", separators as "menu|-", submenus as "menu|text >".
QStringList ShownMenuTable(const CMainWindow &window)
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
                line += entry->text() + u" >"_s;
            else
                line += QStringList{entry->text(), entry->statusTip(), entry->shortcut().toString(),
                                    entry->isCheckable() ? u"checkable"_s : QString()}
                            .join(u'|');
            table.append(line);
        }
    }
    return table;
}

const QStringList FileMenu = {
    u"File|Open record file folder|Open drawer with record files|Ctrl+R|"_s,
    u"File|Create record file folder link on Desktop|"
    "Create symblic link on desktop to record files drawer||"_s,
    u"File|Open settings folder...|Open drawer with settings|Ctrl+D|"_s,
    u"File|-"_s,
    u"File|Hide|Hide|Ctrl+H|"_s,
    u"File|Quit|Quit|Ctrl+Q|"_s,
};
const QStringList AlignmentMenu = {
    u"Alignment|Show...|Show alignement table for SDRs|Ctrl+S|"_s,
};
const QStringList ViewMenuStart = {
    u"View|Save Windows|Save size and state of windows||"_s,
    u"View|Restore Windows|Restore size and state of windows||"_s,
    u"View|-"_s,
    u"View|Hide when close|Close button minimized into tray||checkable"_s,
    u"View|Start with hidden GUI|Start minimized into tray||checkable"_s,
    u"View|-"_s,
};
const QStringList Language = {u"View|Language >"_s, u"View|-"_s};
const QStringList Guide = {u"View|Open User Guide|Open User Guide|Ctrl+H|"_s, u"View|-"_s};
const QStringList DefaultStyleEntry = {
    u"View|-"_s,
    u"View|View in default style|Default windows style for GUI||checkable"_s,
};
const QStringList FusionEntries = {
    u"View|View in light Fusion style|Light Fusion style for GUI||checkable"_s,
    u"View|View in dark Fusion style|Dark Fusion style for GUI||checkable"_s,
};
const QStringList Windows11Entries = {
    u"View|View in light Windows 11 style|Light Windows 11 style for GUI||checkable"_s,
    u"View|View in dark Windows 11 style|Dark Windows 11 style for GUI||checkable"_s,
};
const QStringList StylesEnd = {u"View|-"_s};
const QStringList About = {
    u"View|About Qt...|About Qt...||"_s,
    u"View|About TarnvikControl...|About...||"_s,
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
    HasTray = [] { return true; };
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    qputenv("TARNVIK_STANDIN_INTERVAL_MS", "0");
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
}

void CMainWindow_MenusTest::init()
{
    StoredSettings().clear();
    // On Windows other tests write there too.
    QDir(QTarnvikBasic::GetRecorderFile(QString())).removeRecursively();
    GivenStyles = QStringList{u"Windows"_s, u"Fusion"_s};
    CMainWindow::StyleNames = [] { return GivenStyles; };
    QFile::remove(QDir::tempPath() + u"/TarnvikControl_de.qm"_s);
    AppTranslation.Init(qApp);
}

void CMainWindow_MenusTest::theMenuBarHasItsEntries_data()
{
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<bool>("language");
    QTest::addColumn<QStringList>("expected");
    const QString windows = u"Windows"_s;
    const QString fusion = u"Fusion"_s;
    const QString windows11 = u"windows11"_s;
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
        << QStringList{u"fusion"_s, u"Windows11"_s} << false
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
        QFile file(QDir::tempPath() + u"/TarnvikControl_de.qm"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const tests::DialogAnswers answers(QMessageBox::Ok); // without styles the first entry warns
    const CMainWindow window;
    QCOMPARE(ShownMenuTable(window), expected);
    if (language) {
        QStringList codes;
        const QList<QAction *> entries = MenuEntry(window, u"Language"_s)->menu()->actions();
        for (const QAction *entry : entries)
            codes.append(entry->text());
        QCOMPARE(codes, (QStringList{u"en"_s, u"de"_s}));
    }
}

void CMainWindow_MenusTest::aMissingTranslationFileLeavesOutTheLanguageMenu()
{
    const CMainWindow window;
    QVERIFY(!MenuEntry(window, u"Language"_s));
}

void CMainWindow_MenusTest::theMenuIsBuiltAnewWithoutLeftovers()
{
    CMainWindow window;
    const QStringList before = ShownMenuTable(window);
    const auto count = [&window] { return window.findChildren<QAction *>().size(); };
    QMetaObject::invokeMethod(&window, "Raw_SlotNewTranslation");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const qsizetype actions = count();
    for (int i = 0; i < 20; ++i) {
        QMetaObject::invokeMethod(&window, "Raw_SlotNewTranslation");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QCOMPARE(count(), actions);
    QCOMPARE(ShownMenuTable(window), before);
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
        StoredSettings().setValue(u"CloseIsMinimize"_s, closeIsMinimize);
    if (startHidden.isValid())
        StoredSettings().setValue(u"StartHidden"_s, startHidden);
    const CMainWindow window;
    QCOMPARE(MenuEntry(window, u"Hide when close"_s)->isChecked(), hideWhenCloseChecked);
    QCOMPARE(MenuEntry(window, u"Start with hidden GUI"_s)->isChecked(), startHiddenChecked);
}

void CMainWindow_MenusTest::theTogglesInvertStoreAndMark()
{
    CMainWindow window;
    QAction *const hideWhenClose = MenuEntry(window, u"Hide when close"_s);
    QAction *const startHidden = MenuEntry(window, u"Start with hidden GUI"_s);
    for (const bool hide : {true, false}) {
        hideWhenClose->trigger();
        QCOMPARE(hideWhenClose->isChecked(), hide);
        QCOMPARE(StoredSettings().value(u"CloseIsMinimize"_s).toBool(), !hide);
    }
    for (const bool hidden : {true, false}) {
        startHidden->trigger();
        QCOMPARE(startHidden->isChecked(), hidden);
        QCOMPARE(StoredSettings().value(u"StartHidden"_s).toBool(), hidden);
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
    const QString open = u"Start               : With open GUI"_s;
    const QString hidden = u"Start               : Hide GUI into tray"_s;
    QCOMPARE(startLine(), open);
    QAction *const toggle = MenuEntry(window, u"Start with hidden GUI"_s);
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
    QCOMPARE(answers.boxes().last().Text, u"No 'record path' in configuration file found!"_s);
    press(Qt::Key_D);
    QCOMPARE(answers.boxes().size(), 2);
    QVERIFY(answers.boxes().last().Text.startsWith(u"Drawer does not exists!"_s));
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
    answers.SetAnswer(QMessageBox::Abort);
    press(Qt::Key_Q);
    QCOMPARE(answers.boxes().size(), 3);
    QCOMPARE(answers.boxes().last().Title, u"Close indication"_s);
}

TARNVIK_TEST_MAIN(CMainWindow_MenusTest, QApplication)

#include "CMainWindow_MenusTest.moc"
