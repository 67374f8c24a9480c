// SPDX-License-Identifier: MIT
// The window's life: panel, tray, close and quit, settings, the recorder's start and stop.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/RecorderNames.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"
#include "tools/RecorderReport.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextEdit>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

using tests::StoredSettings;

namespace {

/// A stretch of the panel's text in one format.
struct Piece
{
    QString Text;
    bool Bold = false;
    bool Underlined = false;
    QColor Colour;

    bool operator==(const Piece &other) const = default;
};

QDebug operator<<(QDebug debug, const Piece &piece)
{
    return debug.nospace() << piece.Text << (piece.Bold ? " bold" : "")
                           << (piece.Underlined ? " underlined" : "") << " " << piece.Colour.name();
}

/// The panel's text in pieces of one format each; line breaks are "\n".
QList<Piece> PiecesOf(const QTextDocument &document)
{
    QList<Piece> pieces;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0 && !pieces.isEmpty())
            pieces.last().Text += u'\n';
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            Piece piece{it.fragment().text(), format.fontWeight() == QFont::Bold, format.fontUnderline(),
                        format.foreground().color()};
            const bool sameFormat = !pieces.isEmpty() && pieces.last().Bold == piece.Bold &&
                                    pieces.last().Underlined == piece.Underlined &&
                                    pieces.last().Colour == piece.Colour;
            if (sameFormat)
                pieces.last().Text += piece.Text;
            else
                pieces.append(piece);
        }
    }
    return pieces;
}

QTextEdit &Panel(const QWidget &window)
{
    return *window.findChild<QTextEdit *>();
}

QSystemTrayIcon &Tray(const QWidget &window)
{
    return *window.findChild<QSystemTrayIcon *>();
}

void ShowMessage(CMainWindow &window, const QString &message)
{
    StructOstrelRecordStatus status;
    status.Message = message;
    QMetaObject::invokeMethod(&window, "Raw_FileChanged", Qt::DirectConnection,
                              Q_ARG(StructOstrelRecordStatus, status));
}

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

const QString PanelStart = u"Program information\n\nStart               : With open GUI\n\n"
                           "TarnvikRecord\n\nProgram status      : "_s;

} // namespace

class CMainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void carriesItsClassInformationAndItsSlotsInOrder();
    void thePanelReads_data();
    void thePanelReads();
    void thePanelIsColouredAndWeighted_data();
    void thePanelIsColouredAndWeighted();
    void thePanelUsesAFixedPitchFontAndIsReadOnly();
    void screenReadersFindThePanel();
    void theRunningRecorderAndItsMessageAreShown();
    void aKilledRecorderIsShownAsStoppedAndRunningAgain();
    void theStatusFileIsEmptyAfterTheStartWhateverItHeldBefore_data();
    void theStatusFileIsEmptyAfterTheStartWhateverItHeldBefore();
    void aRecorderOfAnEarlierRunIsAskedToQuitBeforeTheNewOneStarts();
    void theCloseButtonAsksByDefaultAndAbortKeepsTheWindow_data();
    void theCloseButtonAsksByDefaultAndAbortKeepsTheWindow();
    void theCloseButtonAsksByDefaultAndYesStopsTheRecorderAndEndsTheProgram();
    void withCloseIsMinimizeFalseTheCloseButtonHidesAndADoubleClickOnTheTrayShows();
    void theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot_data();
    void theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot();
    void theQuitCommandAnsweredWithAbortChangesNothing();
    void aSecondQuitWhileTheQuestionIsOpenAsksNoSecondQuestion();
    void aBoxThatClosesWhileTheWindowIsHiddenDoesNotEndTheProgram();
    void theTrayIconIsClicked_data();
    void theTrayIconIsClicked();
    void theTrayMenuHasItsEntries();
    void theTrayMenuMovesTheWindow();
    void geometryIsSavedAtTheEndAndRestored();
    void aNewLanguageRebuildsTrayMenuAndPanel();
    void destroyingTheWindowStopsTheRecorder();

private:
    std::unique_ptr<tools::RecorderReport> Report;
};

void CMainWindowTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
}

void CMainWindowTest::init()
{
    StoredSettings().clear();
    Report = std::make_unique<tools::RecorderReport>();
    Report->setOption("INTERVAL_MS", "0");
}

void CMainWindowTest::cleanup()
{
    Report.reset();
}

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

void CMainWindowTest::thePanelReads_data()
{
    QTest::addColumn<bool>("startHidden");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("expected");
    const QString stopped = PanelStart + u"Stopped\n"_s;
    const QString label = u"Last message        : "_s;
    QTest::newRow("stopped with the message ready") << false << "ready" << stopped + label + "ready\n";
    QTest::newRow("an empty message leaves out the line") << false << "" << stopped;
    QTest::newRow("a message made only of tags leaves out the line") << false << "<GET>" << stopped;
    QTest::newRow("tags known and unknown are removed")
        << false << "<INFO>Started <FOO>now <ERROR>Device lost"
        << stopped + label + "Started now Device lost\n";
    QTest::newRow("following lines are indented by 22 blanks")
        << false << "one\ntwo\nthree"
        << stopped + label + "one\n" + QString(22, u' ') + "two\n" + QString(22, u' ') + "three\n";
    QTest::newRow("a line break at the end is kept") << false << "one\n"
                                                     << stopped + label + "one\n" + QString(22, u' ') + "\n";
    QTest::newRow("placeholders and markup are plain text")
        << false << "100 %1 %2 &amp; > <b" << stopped + label + "100 %1 %2 &amp; > <b\n";
    QTest::newRow("hidden start")
        << true << "ready"
        << QString(stopped + label + "ready\n").replace("With open GUI", "Hide GUI into tray");
}

void CMainWindowTest::thePanelReads()
{
    QFETCH(bool, startHidden);
    QFETCH(QString, message);
    QFETCH(QString, expected);
    StoredSettings().setValue(u"StartHidden"_s, startHidden);
    CMainWindow window; // the recorder's start waits for the event loop
    ShowMessage(window, message);
    QCOMPARE(Panel(window).toPlainText(), expected);
}

void CMainWindowTest::thePanelIsColouredAndWeighted_data()
{
    QTest::addColumn<int>("guiStyle");
    QTest::addColumn<bool>("running");
    QTest::addColumn<QColor>("stateColour");
    QTest::newRow("light and running is dark green") << 1 << true << QColor(Qt::darkGreen);
    QTest::newRow("light and stopped is red") << 1 << false << QColor(Qt::red);
    QTest::newRow("dark and running is green") << 2 << true << QColor(Qt::green);
    QTest::newRow("dark and stopped is red") << 2 << false << QColor(Qt::red);
}

void CMainWindowTest::thePanelIsColouredAndWeighted()
{
    QFETCH(int, guiStyle);
    QFETCH(bool, running);
    QFETCH(QColor, stateColour);
    StoredSettings().setValue(u"GuiStyle"_s, guiStyle);
    CMainWindow window;
    if (running)
        QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    ShowMessage(window, u"ready"_s);
    const QColor text = QApplication::palette().color(QPalette::Text);
    QCOMPARE(text == QColor(Qt::black), guiStyle == 1);
    const QList<Piece> expected = {
        {u"Program information"_s, true, true, text},
        {u"\n\n"_s, false, false, text},
        {u"Start"_s, true, false, text},
        {u"               : With open GUI\n\n"_s, false, false, text},
        {u"TarnvikRecord"_s, true, true, text},
        {u"\n\n"_s, false, false, text},
        {u"Program status"_s, true, false, text},
        {u"      : "_s, false, false, text},
        {running ? u"Running"_s : u"Stopped"_s, true, false, stateColour},
        {u"\n"_s, false, false, text},
        {u"Last message"_s, true, false, text},
        {u"        : ready\n"_s, false, false, text},
    };
    // A line break has no format of its own to be seen, so breaks are compared with the piece before them.
    QList<Piece> joined;
    for (const Piece &piece : expected) {
        if (QString(piece.Text).remove(u'\n').isEmpty())
            joined.last().Text += piece.Text;
        else
            joined.append(piece);
    }
    QCOMPARE(PiecesOf(*Panel(window).document()), joined);
}

void CMainWindowTest::thePanelUsesAFixedPitchFontAndIsReadOnly()
{
    CMainWindow window;
    const QTextEdit &panel = Panel(window);
    QVERIFY(panel.isReadOnly());
    QCOMPARE(window.centralWidget(), &panel);
    QVERIFY(panel.font().fixedPitch());
    QCOMPARE(panel.font().styleHint(), QFont::Monospace);
    const bool hasConsolas = QFontInfo(QFont(u"Consolas"_s)).exactMatch();
    QCOMPARE(panel.font().family(), hasConsolas ? u"Consolas"_s : u"monospace"_s);
}

void CMainWindowTest::screenReadersFindThePanel()
{
    CMainWindow window;
    ShowMessage(window, u"ready"_s);
    QAccessibleInterface *const panel = QAccessible::queryAccessibleInterface(window.centralWidget());
    QCOMPARE(panel->text(QAccessible::Name), u"Program information"_s);
    QVERIFY(panel->state().readOnly);
    QAccessibleTextInterface *const text = panel->textInterface();
    QVERIFY(text);
    QVERIFY(text->text(0, text->characterCount()).contains(u"ready"_s));
}

void CMainWindowTest::theRunningRecorderAndItsMessageAreShown()
{
    Report->setOption("INTERVAL_MS", "100");
    Report->setOption("MESSAGE", "<WORK>Recording 162.400 MHz\n<INFO>second line");
    CMainWindow window;
    QVERIFY(Panel(window).toPlainText().startsWith(PanelStart + u"Stopped\n"_s));
    QTRY_COMPARE(Panel(window).toPlainText(),
                 PanelStart + u"Running\nLast message        : Recording 162.400 MHz\n"_s +
                     QString(22, u' ') + u"second line\n"_s);
}

void CMainWindowTest::aKilledRecorderIsShownAsStoppedAndRunningAgain()
{
    CMainWindow window;
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QTRY_COMPARE(Report->count(u"started"_s), 1);
    bool stoppedShown = false;
    connect(Panel(window).document(), &QTextDocument::contentsChanged, this,
            [&] { stoppedShown = stoppedShown || Panel(window).toPlainText().contains(u"Stopped"_s); });
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    QTRY_VERIFY(stoppedShown);
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QTRY_COMPARE(Report->count(u"started"_s), 2);
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

void CMainWindowTest::theCloseButtonAsksByDefaultAndAbortKeepsTheWindow_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::newRow("Abort") << QMessageBox::Abort;
    QTest::newRow("the Escape key") << QMessageBox::NoButton;
}

void CMainWindowTest::theCloseButtonAsksByDefaultAndAbortKeepsTheWindow()
{
    QFETCH(QMessageBox::StandardButton, answer);
    tests::DialogAnswers answers(answer);
    CMainWindow window;
    window.show();
    QVERIFY(!window.close());
    QCOMPARE(answers.boxes().size(), 1);
    const tests::ShownBox &box = answers.boxes().first();
    QCOMPARE(box.Title, u"Close indication"_s);
    QCOMPARE(box.Text, u"Do you want also to stop the running record?"_s);
    QCOMPARE(box.Icon, QMessageBox::Question);
    QCOMPARE(box.Buttons, QMessageBox::Yes | QMessageBox::Abort);
    QCOMPARE(box.Parent, &window);
    QVERIFY(box.Modal);
    QVERIFY(window.isVisible());
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QVERIFY(!window.close()); // and it asks again
    QCOMPARE(answers.boxes().size(), 2);
}

void CMainWindowTest::theCloseButtonAsksByDefaultAndYesStopsTheRecorderAndEndsTheProgram()
{
    tests::DialogAnswers answers(QMessageBox::Yes);
    CMainWindow window;
    window.show();
    QTRY_VERIFY(Report->recorderListens());
    QTimer::singleShot(0, &window, &QWidget::close);
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(answers.boxes().size(), 1);
    QVERIFY(!window.isVisible());
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QVERIFY(StoredSettings().contains(u"geometry"_s));
    QVERIFY(StoredSettings().contains(u"windowState"_s));
}

void CMainWindowTest::withCloseIsMinimizeFalseTheCloseButtonHidesAndADoubleClickOnTheTrayShows()
{
    StoredSettings().setValue(u"CloseIsMinimize"_s, false);
    const tests::DialogAnswers answers(QMessageBox::Yes);
    CMainWindow window;
    window.show();
    QVERIFY(!window.close());
    QVERIFY(!window.isVisible());
    QVERIFY(Tray(window).isVisible());
    QCoreApplication::processEvents();
    QVERIFY(answers.boxes().isEmpty());
    emit Tray(window).activated(QSystemTrayIcon::DoubleClick);
    QVERIFY(window.isVisible());
}

void CMainWindowTest::theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot_data()
{
    QTest::addColumn<bool>("closeReallyCloses");
    QTest::addColumn<bool>("visible");
    QTest::newRow("from the open window") << true << true;
    QTest::newRow("from the open window that hides when it is closed") << false << true;
    QTest::newRow("from the tray") << true << false;
    QTest::newRow("from the tray of a window that hides when it is closed") << false << false;
}

void CMainWindowTest::theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot()
{
    QFETCH(bool, closeReallyCloses);
    QFETCH(bool, visible);
    StoredSettings().setValue(u"CloseIsMinimize"_s, closeReallyCloses);
    const tests::DialogAnswers answers(QMessageBox::Yes);
    CMainWindow window;
    window.setVisible(visible);
    QTRY_VERIFY(Report->recorderListens());
    QTimer::singleShot(0, &window, [&] { Tray(window).contextMenu()->actions().last()->trigger(); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(answers.boxes().size(), 1);
    QVERIFY(!window.isVisible());
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    // That the program has to end is not what the user has set.
    QCOMPARE(StoredSettings().value(u"CloseIsMinimize"_s).toBool(), closeReallyCloses);
}

void CMainWindowTest::theQuitCommandAnsweredWithAbortChangesNothing()
{
    tests::DialogAnswers answers(QMessageBox::Abort);
    CMainWindow window;
    window.show();
    QTRY_VERIFY(Report->recorderListens());
    Tray(window).contextMenu()->actions().last()->trigger();
    QCOMPARE(answers.boxes().size(), 1);
    QVERIFY(window.isVisible());
    QVERIFY(!window.close());
    QCOMPARE(answers.boxes().size(), 2); // the close still asks
    QVERIFY(Report->recorderListens());
}

void CMainWindowTest::aSecondQuitWhileTheQuestionIsOpenAsksNoSecondQuestion()
{
    CMainWindow window;
    window.show();
    QAction *const quit = Tray(window).contextMenu()->actions().last();
    qsizetype boxes = 0;
    QTimer::singleShot(200, &window, [&] {
        // The tray's menu works while the question is open.
        QTimer::singleShot(200, &window, [&] {
            const QList<QWidget *> widgets = QApplication::topLevelWidgets();
            for (QWidget *widget : widgets) {
                if (qobject_cast<QMessageBox *>(widget) && widget->isVisible()) {
                    ++boxes;
                    widget->close();
                }
            }
        });
        quit->trigger();
    });
    quit->trigger();
    QCOMPARE(boxes, 1);
    QVERIFY(window.isVisible());
}

void CMainWindowTest::aBoxThatClosesWhileTheWindowIsHiddenDoesNotEndTheProgram()
{
    tests::DialogAnswers answers(QMessageBox::Abort);
    CMainWindow window; // never shown: the program was started into the tray
    QSignalSpy lastWindow(qApp, &QGuiApplication::lastWindowClosed);
    bool stillRunning = false;
    QTimer::singleShot(0, &window, [&] {
        Tray(window).contextMenu()->actions().last()->trigger();
        QMessageBox(QMessageBox::Information, u"x"_s, u"y"_s, QMessageBox::Abort).exec();
        QTimer::singleShot(300, &window, [&] { // the quit would have come by now
            stillRunning = true;
            QCoreApplication::exit(7);
        });
    });
    QCOMPARE(QApplication::exec(), 7);
    QVERIFY(stillRunning);
    QCOMPARE(answers.boxes().size(), 2);
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

void CMainWindowTest::aNewLanguageRebuildsTrayMenuAndPanel()
{
    const QString folder = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
    QFile file(QDir::tempPath() + u"/TarnvikControl_xx.qm"_s);
    QVERIFY(file.open(QIODevice::WriteOnly)); // that it exists makes a language menu
    file.close();
    AppTranslation.Init(qApp);
    QDir::setCurrent(folder);
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
        emit AppTranslation.SignalNewTranslation();
        QCoreApplication::processEvents();
        QVERIFY(Panel(window).toPlainText().startsWith(u"*Program information*"_s));
    }
    QVERIFY(file.remove());
    AppTranslation.Init(qApp);
}

void CMainWindowTest::destroyingTheWindowStopsTheRecorder()
{
    {
        const CMainWindow window;
        QTRY_VERIFY(Report->recorderListens());
    }
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
}

TARNVIK_TEST_MAIN(CMainWindowTest, QApplication)

#include "CMainWindowTest.moc"
