// SPDX-License-Identifier: MIT
// The window's life: the recorder's start and stop, tray and geometry.
#include "TarnvikControl/CMainWindow.h"

#include "Common_Files/RecorderNames.h"
#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"
#include "tools/RecorderReport.h"

#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMetaMethod>
#include <QProcess>
#include <QScopeGuard>
#include <QSystemTrayIcon>
#include <QTextEdit>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using tests::Panel;
using tests::Tray;

namespace {

/// Watches a window: when that has appeared, another one gets the keyboard.
class TakesItBack : public QObject
{
public:
    explicit TakesItBack(QWidget &other) : Other(other) {}
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::ShowToParent) // the last that comes of it
            Other.activateWindow();
        return false;
    }

private:
    QWidget &Other;
};

} // namespace

class CMainWindowTest : public tests::MainWindowFixture
{
    Q_OBJECT

private slots:
    void carriesItsClassInformationAndItsSlotsInOrder();
    void theStatusFileIsEmptyAfterTheStartWhateverItHeldBefore_data();
    void theStatusFileIsEmptyAfterTheStartWhateverItHeldBefore();
    void aRecorderOfAnEarlierRunIsAskedToQuitBeforeTheNewOneStarts();
    void theTrayIconIsClicked_data();
    void theTrayIconIsClicked();
    void severalClicksOnTheTrayIconSwitch_data();
    void severalClicksOnTheTrayIconSwitch();
    void aClickOnTheTrayIconActivatesTheWindow_data();
    void aClickOnTheTrayIconActivatesTheWindow();
    void theTrayShowsThePicturesOfTheProgram();
    void theTrayMenuHasItsEntries();
    void theTrayMenuMovesTheWindow();
    void geometryIsSavedAtTheEndAndRestored();
    void theRecordersPausesAreCountedInTheWindowsSecond();
    void destroyingTheWindowStopsTheRecorder();
};

void CMainWindowTest::carriesItsClassInformationAndItsSlotsInOrder()
{
    const QMetaObject &metaObject = CMainWindow::staticMetaObject;
    QCOMPARE(metaObject.classInfo(metaObject.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QCOMPARE(metaObject.classInfo(metaObject.indexOfClassInfo("Status")).value(), "Development");
    QStringList slotNames;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        QCOMPARE(metaObject.method(i).access(), QMetaMethod::Protected);
        slotNames.append(QString::fromLatin1(metaObject.method(i).name()));
    }
    QCOMPARE(slotNames.join(u' '),
             u"Raw_SlotAboutToQuit Raw_SlotNewTranslation Raw_Menu_File_OpenDrawer_Record "
             "Raw_Menu_File_CreateDrawerLink Raw_Menu_File_OpenDrawer_Settings Raw_Menu_File_Hide "
             "Raw_Menu_File_QuitApp Raw_Menu_Align_Show Raw_Menu_View_SaveWindow Raw_Menu_View_RestoreWindow "
             "Raw_Menu_View_Close2Hide "
             "Raw_Menu_View_Start2Hide Raw_Menu_View_AboutQt Raw_Menu_View_AboutPrg Raw_Menu_View_OpenReadMe "
             "Raw_Menu_View_WindowStyle Raw_Menu_View_LightFusionStyle Raw_Menu_View_DarkFusionStyle "
             "Raw_Menu_View_LightWindows11Style Raw_Menu_View_DarkWindows11Style Raw_TrayIconActivated "
             "Raw_FileChanged Raw_RunStateChanged"_s);
}

void CMainWindowTest::theStatusFileIsEmptyAfterTheStartWhateverItHeldBefore_data()
{
    QTest::addColumn<bool>("existed");
    QTest::newRow("a status of an earlier run") << true;
    QTest::newRow("no file") << false;
}

void CMainWindowTest::theStatusFileIsEmptyAfterTheStartWhateverItHeldBefore()
{
    QFETCH(bool, existed);
    QFile file(RecorderStatusFile());
    file.remove();
    if (existed) {
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[General]\nSequenceNr=7\nMessage=old\n");
        file.close();
    }
    CMainWindow window;
    QVERIFY(file.exists());
    QCOMPARE(file.size(), 0);
    QVERIFY(!Panel(window).toPlainText().contains(u"old"_s));
}

void CMainWindowTest::aRecorderOfAnEarlierRunIsAskedToQuitBeforeTheNewOneStarts()
{
    QProcess old;
    old.start(tools::StandInProgram(), QStringList());
    QTRY_VERIFY(Report->recorderListens());
    const qint64 oldProcess = old.processId();
    const CMainWindow window;
    QVERIFY(old.waitForFinished());
    QCOMPARE(old.exitCode(), 0);
    QCOMPARE(Report->count(u"quit-request"_s, oldProcess), 1);
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    QStringList order;
    const QList<tools::RecorderEvent> events = Report->events();
    for (const tools::RecorderEvent &event : events) {
        if (event.Event == QLatin1String("quit-request") || event.Event == QLatin1String("started"))
            order.append(event.Event);
    }
    QCOMPARE(order.join(u' '), u"started quit-request started"_s);
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QTRY_VERIFY(Report->recorderListens());
    QCOMPARE(Report->count(u"quit-request"_s), 1);
}

void CMainWindowTest::theTrayIconIsClicked_data()
{
    QTest::addColumn<QSystemTrayIcon::ActivationReason>("reason");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("single click hides the open window") << QSystemTrayIcon::Trigger << "open"
                                                        << "hidden";
    QTest::newRow("single click shows the hidden window") << QSystemTrayIcon::Trigger << "hidden"
                                                          << "open";
    QTest::newRow("single click hides the minimised window") << QSystemTrayIcon::Trigger << "minimised"
                                                             << "hidden";
    QTest::newRow("single click restores the window that was minimised and hidden")
        << QSystemTrayIcon::Trigger << "minimised and hidden"
        << "open";
    QTest::newRow("single click shows the window that was maximised and hidden maximised")
        << QSystemTrayIcon::Trigger << "maximised and hidden"
        << "maximised";
    QTest::newRow("double click hides the open window") << QSystemTrayIcon::DoubleClick << "open"
                                                        << "hidden";
    QTest::newRow("double click shows the hidden window") << QSystemTrayIcon::DoubleClick << "hidden"
                                                          << "open";
    QTest::newRow("middle click shows the hidden window") << QSystemTrayIcon::MiddleClick << "hidden"
                                                          << "open";
    QTest::newRow("middle click leaves the open window open") << QSystemTrayIcon::MiddleClick << "open"
                                                              << "open";
    QTest::newRow("middle click restores the maximised window") << QSystemTrayIcon::MiddleClick << "maximised"
                                                                << "open";
    QTest::newRow("context click leaves the open window") << QSystemTrayIcon::Context << "open"
                                                          << "open";
    QTest::newRow("context click leaves the hidden window") << QSystemTrayIcon::Context << "hidden"
                                                            << "hidden";
    QTest::newRow("an unknown click leaves the hidden window") << QSystemTrayIcon::Unknown << "hidden"
                                                               << "hidden";
}

void CMainWindowTest::theTrayIconIsClicked()
{
    QFETCH(QSystemTrayIcon::ActivationReason, reason);
    QFETCH(QString, before);
    QFETCH(QString, after);
    CMainWindow window;
    if (before.startsWith(QLatin1String("open")))
        window.show();
    else if (before.startsWith(QLatin1String("minimised")))
        window.showMinimized();
    else if (before.startsWith(QLatin1String("maximised")))
        window.showMaximized();
    if (before.endsWith(QLatin1String("hidden")))
        window.hide();
    emit Tray(window).activated(reason);
    QCOMPARE(window.isVisible(), after != QLatin1String("hidden"));
    if (window.isVisible()) {
        QVERIFY(!window.isMinimized());
        QCOMPARE(window.isMaximized(), after == QLatin1String("maximised"));
    }
}

void CMainWindowTest::severalClicksOnTheTrayIconSwitch_data()
{
    using Clicks = QList<QSystemTrayIcon::ActivationReason>;
    QTest::addColumn<Clicks>("clicks");
    QTest::addColumn<int>("interval"); // for a double click, milliseconds
    QTest::addColumn<int>("switches");
    const auto single = QSystemTrayIcon::Trigger;
    const auto second = QSystemTrayIcon::DoubleClick;
    QTest::newRow("a double click once") << Clicks{single, second} << 60'000 << 1;
    QTest::newRow("three clicks in a row twice") << Clicks{single, second, single} << 60'000 << 2;
    QTest::newRow("two double clicks twice") << Clicks{single, second, single, second} << 60'000 << 2;
    QTest::newRow("two single clicks twice") << Clicks{single, single} << 60'000 << 2;
    QTest::newRow("a double click that comes alone once") << Clicks{second} << 60'000 << 1;
    QTest::newRow("two that come alone twice") << Clicks{second, second} << 60'000 << 2;
    QTest::newRow("one that comes alone behind a whole one twice")
        << Clicks{single, second, second} << 60'000 << 2;
    QTest::newRow("one that comes alone later than the interval twice") << Clicks{single, second} << 0 << 2;
}

void CMainWindowTest::severalClicksOnTheTrayIconSwitch()
{
    QFETCH(QList<QSystemTrayIcon::ActivationReason>, clicks);
    QFETCH(int, interval);
    QFETCH(int, switches);
    const int usual = QApplication::doubleClickInterval();
    const auto reset = qScopeGuard([usual] { QApplication::setDoubleClickInterval(usual); });
    QApplication::setDoubleClickInterval(interval);
    for (const bool shown : {false, true}) {
        CMainWindow window;
        window.setVisible(shown);
        for (const QSystemTrayIcon::ActivationReason click : std::as_const(clicks))
            emit Tray(window).activated(click);
        QCOMPARE(window.isVisible(), switches % 2 == 0 ? shown : !shown);
    }
}

void CMainWindowTest::aClickOnTheTrayIconActivatesTheWindow_data()
{
    QTest::addColumn<QSystemTrayIcon::ActivationReason>("reason");
    QTest::addColumn<QString>("before");
    QTest::newRow("a click on that of a hidden window") << QSystemTrayIcon::Trigger << "hidden";
    QTest::newRow("a double click on that of a hidden window") << QSystemTrayIcon::DoubleClick << "hidden";
    QTest::newRow("a click on that of a window that was minimised and hidden")
        << QSystemTrayIcon::Trigger << "minimised and hidden";
    QTest::newRow("a middle click on that of a hidden window") << QSystemTrayIcon::MiddleClick << "hidden";
    QTest::newRow("a middle click on that of an open window") << QSystemTrayIcon::MiddleClick << "open";
}

void CMainWindowTest::aClickOnTheTrayIconActivatesTheWindow()
{
    QFETCH(QSystemTrayIcon::ActivationReason, reason);
    QFETCH(QString, before);
    CMainWindow window;
    if (before == QLatin1String("open"))
        window.show();
    else if (before.startsWith(QLatin1String("minimised")))
        window.setWindowState(Qt::WindowMinimized);
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    // Not every desktop gives the keyboard to a window only because it appears. On this one it goes back.
    TakesItBack back(other);
    window.installEventFilter(&back);
    emit Tray(window).activated(reason);
    QTRY_VERIFY(window.isActiveWindow());
}

void CMainWindowTest::theTrayShowsThePicturesOfTheProgram()
{
    QPixmap picture(32, 32);
    picture.fill(Qt::magenta);
    const auto reset = qScopeGuard([] { QApplication::setWindowIcon(QIcon()); });
    QApplication::setWindowIcon(picture);
    const CMainWindow window;
    QCOMPARE(Tray(window).icon().pixmap(32, 32).toImage().pixelColor(16, 16), QColor(Qt::magenta));
}

void CMainWindowTest::theTrayMenuHasItsEntries()
{
    const CMainWindow window;
    QStringList texts;
    const QList<QAction *> actions = Tray(window).contextMenu()->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? u"-"_s : action->text());
    QCOMPARE(texts.join(u'|'), u"Mi&nimize|Ma&ximize|&Restore|-|&Quit"_s);
    QVERIFY(Tray(window).isVisible());
}

void CMainWindowTest::theTrayMenuMovesTheWindow()
{
    CMainWindow window;
    window.show();
    const QList<QAction *> actions = Tray(window).contextMenu()->actions();
    actions.at(1)->trigger();
    QVERIFY(window.isMaximized());
    actions.at(2)->trigger();
    QVERIFY(window.isVisible() && !window.isMaximized());
    actions.at(0)->trigger();
    QVERIFY(!window.isVisible());
    actions.at(2)->trigger();
    QVERIFY(window.isVisible());
}

void CMainWindowTest::geometryIsSavedAtTheEndAndRestored()
{
    QRect geometry;
    {
        CMainWindow window;
        window.show();
        window.setGeometry(40, 60, 333, 222);
        QCoreApplication::processEvents();
        geometry = window.geometry();
        QMetaObject::invokeMethod(&window, "Raw_SlotAboutToQuit");
    }
    CMainWindow window;
    window.show();
    QCOMPARE(window.geometry(), geometry);
}

void CMainWindowTest::theRecordersPausesAreCountedInTheWindowsSecond()
{
    QCOMPARE(CMainWindow::PauseSecond, 1000ms); // unless someone puts another one there
    const QScopeGuard restore([] { CMainWindow::PauseSecond = 1000ms; });
    CMainWindow::PauseSecond = 300ms;
    Report->SetOption("EXIT_AFTER_MS", "0");
    const CMainWindow window;
    QTRY_VERIFY_WITH_TIMEOUT(Report->count(u"started"_s) >= 3, tests::Patience);
    const QList<tools::RecorderEvent> events = Report->events();
    QList<qint64> ends;
    QList<qint64> starts;
    for (const tools::RecorderEvent &event : events) {
        if (event.Event == QLatin1String("ends"))
            ends.append(event.Microseconds);
        if (event.Event == QLatin1String("started"))
            starts.append(event.Microseconds);
    }
    const std::chrono::microseconds pause(starts.at(2) - ends.at(1));
    QVERIFY(pause >= 5 * 300ms); // the second one is of five seconds
    QVERIFY(pause < 5s);
}

void CMainWindowTest::destroyingTheWindowStopsTheRecorder()
{
    ObeyOnlyTheQuitRequest();
    {
        const CMainWindow window;
        QTRY_VERIFY(Report->recorderListens());
    }
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
}

TARNVIK_TEST_MAIN(CMainWindowTest, QApplication)

#include "CMainWindowTest.moc"
