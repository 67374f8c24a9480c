// SPDX-License-Identifier: MIT
// What another language changes in the window, and what stays. The texts themselves: LanguageSwitchTest.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QStyleFactory>
#include <QSystemTrayIcon>
#include <QTextEdit>
#include <QTranslator>

using namespace Qt::StringLiterals;

using tests::MenuEntry;
using tests::Panel;
using tests::ShowMessage;
using tests::StoredSettings;
using tests::Tray;

namespace {

/// Translates every text into itself between two stars, so that a rebuilt part shows that it was rebuilt.
class StarTranslator : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/,
                      int /*n*/) const override
    {
        return qstrcmp(context, "CMainWindow") == 0 ? u"*%1*"_s.arg(QString::fromUtf8(text)) : QString();
    }
};

/// Announces another language and waits until the window has followed.
bool SwitchLanguage(const CMainWindow &window)
{
    const QPointer<QTextEdit> before = &Panel(window);
    emit AppTranslation.SignalNewTranslation();
    return QTest::qWaitFor([&before] { return before.isNull(); });
}

/// What has the keyboard in the window as soon as the window itself has it.
enum class Keyboard { Panel, MenuBar, Nothing };

void GiveKeyboard(const CMainWindow &window, Keyboard holder)
{
    if (holder == Keyboard::Panel)
        Panel(window).setFocus();
    else if (holder == Keyboard::MenuBar)
        window.menuBar()->setFocus();
    else if (window.focusWidget())
        window.focusWidget()->clearFocus();
}

CMainWindow *Resized = nullptr; // while a rebuild changes the window's place

} // namespace

class CMainWindow_LanguageTest : public tests::MainWindowFixture
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void aNewLanguageRebuildsTrayMenuAndPanel();
    void thePanelHasTheKeyboardAgainIfItHadItBefore_data();
    void thePanelHasTheKeyboardAgainIfItHadItBefore();
    void theCheckMarksStay_data();
    void theCheckMarksStay();
    void sizeAndPositionStay();
};

void CMainWindow_LanguageTest::initTestCase()
{
    MainWindowFixture::initTestCase();
    const QString folder = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
    QFile file(QDir::tempPath() + u"/TarnvikControl_xx.qm"_s);
    QVERIFY(file.open(QIODevice::WriteOnly)); // a language menu needs no more than a file
    AppTranslation.Init(qApp);
    QDir::setCurrent(folder);
}

void CMainWindow_LanguageTest::cleanup()
{
    CMainWindow::StyleNames = QStyleFactory::keys;
    MainWindowFixture::cleanup();
}

void CMainWindow_LanguageTest::aNewLanguageRebuildsTrayMenuAndPanel()
{
    CMainWindow window;
    window.show();
    window.resize(400, 300);
    ShowMessage(window, u"one\ntwo"_s);
    StarTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QPointer<QTextEdit> oldPanel = &Panel(window);
    const QPointer<QSystemTrayIcon> oldTray = &Tray(window);
    emit AppTranslation.SignalNewTranslation();
    QVERIFY(oldPanel); // queued
    QTRY_VERIFY(!oldPanel);
    QVERIFY(!oldTray);
    QCOMPARE(window.size(), QSize(400, 300));
    QCOMPARE(Tray(window).contextMenu()->actions().first()->text(), u"*Mi&nimize*"_s);
    QVERIFY(Panel(window).toPlainText().startsWith(u"*Program information*\n\n*Start*"_s));
    // The indent of the following lines is a text too.
    QVERIFY(Panel(window).toPlainText().contains(u"one*\n                      *two"_s));
    QVERIFY(SwitchLanguage(window));
    QVERIFY(Panel(window).toPlainText().startsWith(u"*Program information*"_s));
}

void CMainWindow_LanguageTest::thePanelHasTheKeyboardAgainIfItHadItBefore_data()
{
    QTest::addColumn<Keyboard>("holder");
    QTest::addColumn<bool>("shown");
    QTest::newRow("the panel had it") << Keyboard::Panel << true;
    QTest::newRow("the panel of a hidden window had it") << Keyboard::Panel << false;
    QTest::newRow("the menu bar had it") << Keyboard::MenuBar << true;
    QTest::newRow("nothing had it") << Keyboard::Nothing << true;
}

void CMainWindow_LanguageTest::thePanelHasTheKeyboardAgainIfItHadItBefore()
{
    QFETCH(Keyboard, holder);
    QFETCH(bool, shown);
    CMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    GiveKeyboard(window, holder);
    QCOMPARE(Panel(window).hasFocus(), holder == Keyboard::Panel);
    if (!shown)
        window.hide();
    QVERIFY(SwitchLanguage(window));
    QCOMPARE(window.focusWidget() == &Panel(window), holder == Keyboard::Panel);
    QCOMPARE(Panel(window).hasFocus(), shown && holder == Keyboard::Panel);
}

void CMainWindow_LanguageTest::theCheckMarksStay_data()
{
    QTest::addColumn<bool>("hideWhenClose");
    QTest::addColumn<bool>("startHidden");
    QTest::addColumn<QString>("style");
    QTest::newRow("none but the default style") << false << false << "0";
    QTest::newRow("hide when close") << true << false << "1";
    QTest::newRow("start hidden") << false << true << "2";
    QTest::newRow("both") << true << true << "2";
}

void CMainWindow_LanguageTest::theCheckMarksStay()
{
    QFETCH(bool, hideWhenClose);
    QFETCH(bool, startHidden);
    QFETCH(QString, style);
    StoredSettings().setValue(u"CloseIsMinimize"_s, !hideWhenClose);
    StoredSettings().setValue(u"StartHidden"_s, startHidden);
    StoredSettings().setValue(u"GuiStyle"_s, style);
    const CMainWindow window;
    const QPointer<QAction> before = MenuEntry(window, u"Hide when close"_s);
    QVERIFY(SwitchLanguage(window));
    QTRY_VERIFY(!before); // what is looked at belongs to the new menu
    QCOMPARE(MenuEntry(window, u"Hide when close"_s)->isChecked(), hideWhenClose);
    QCOMPARE(MenuEntry(window, u"Start with hidden GUI"_s)->isChecked(), startHidden);
    QCOMPARE(tests::CheckedStyles(window), style);
}

void CMainWindow_LanguageTest::sizeAndPositionStay()
{
    CMainWindow window;
    window.show();
    window.setGeometry(20, 30, 300, 200);
    MenuEntry(window, u"Save Windows"_s)->trigger(); // another place than the present one
    const QRect place(60, 70, 400, 250);
    window.setGeometry(place);
    QCOMPARE(window.geometry(), place);
    // As a text or a style that needs more room would, the rebuild itself changes the window.
    Resized = &window;
    CMainWindow::StyleNames = [] {
        Resized->setGeometry(0, 0, 500, 350);
        return QStyleFactory::keys();
    };
    QVERIFY(SwitchLanguage(window));
    QCOMPARE(window.geometry(), place);
}

TARNVIK_TEST_MAIN(CMainWindow_LanguageTest, QApplication)

#include "CMainWindow_LanguageTest.moc"
