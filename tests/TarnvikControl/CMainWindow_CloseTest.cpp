// SPDX-License-Identifier: MIT
// Close button and quit command: what they ask, and what ends.
#include "TarnvikControl/CMainWindow.h"

#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"
#include "tools/RecorderReport.h"

#include <QApplication>
#include <QMenu>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QTextEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

using tests::Panel;
using tests::StoredSettings;
using tests::Tray;

class CMainWindow_CloseTest : public tests::MainWindowFixture
{
    Q_OBJECT

private slots:
    void theCloseButtonAsksByDefaultAndAbortKeepsTheWindow_data();
    void theCloseButtonAsksByDefaultAndAbortKeepsTheWindow();
    void theCloseButtonAsksByDefaultAndYesStopsTheRecorderAndEndsTheProgram();
    void withCloseIsMinimizeFalseTheCloseButtonHidesAndADoubleClickOnTheTrayShows();
    void theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot_data();
    void theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot();
    void aWindowThatHidesWhenItIsClosedClosesOnceTheProgramEnds();
    void theQuitCommandAnsweredWithAbortChangesNothing();
    void aSecondQuitWhileTheQuestionIsOpenAsksNoSecondQuestion();
    void aBoxThatClosesWhileTheWindowIsHiddenDoesNotEndTheProgram();
};

void CMainWindow_CloseTest::theCloseButtonAsksByDefaultAndAbortKeepsTheWindow_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::newRow("Abort") << QMessageBox::Abort;
    QTest::newRow("the Escape key") << QMessageBox::NoButton;
}

void CMainWindow_CloseTest::theCloseButtonAsksByDefaultAndAbortKeepsTheWindow()
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
    QCOMPARE(box.Flags & Qt::WindowType_Mask, Qt::Dialog);
    QVERIFY(box.Flags.testFlag(Qt::MSWindowsFixedSizeDialogHint));
    QVERIFY(window.isVisible());
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QVERIFY(!window.close()); // and it asks again
    QCOMPARE(answers.boxes().size(), 2);
}

void CMainWindow_CloseTest::theCloseButtonAsksByDefaultAndYesStopsTheRecorderAndEndsTheProgram()
{
    ObeyOnlyTheQuitRequest();
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
    QVERIFY(StoredSettings().contains(u"geometry"_s));
    QVERIFY(StoredSettings().contains(u"windowState"_s));
}

void CMainWindow_CloseTest::withCloseIsMinimizeFalseTheCloseButtonHidesAndADoubleClickOnTheTrayShows()
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

void CMainWindow_CloseTest::theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot_data()
{
    QTest::addColumn<bool>("closeReallyCloses");
    QTest::addColumn<bool>("visible");
    QTest::newRow("from the open window") << true << true;
    QTest::newRow("from the open window that hides when it is closed") << false << true;
    QTest::newRow("from the tray") << true << false;
    QTest::newRow("from the tray of a window that hides when it is closed") << false << false;
}

void CMainWindow_CloseTest::theQuitCommandAsksOnceAndTheCloseThatFollowsDoesNot()
{
    ObeyOnlyTheQuitRequest();
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
    // The program's end does not change what the user has set.
    QCOMPARE(StoredSettings().value(u"CloseIsMinimize"_s).toBool(), closeReallyCloses);
}

void CMainWindow_CloseTest::aWindowThatHidesWhenItIsClosedClosesOnceTheProgramEnds()
{
    StoredSettings().setValue(u"CloseIsMinimize"_s, false);
    const tests::DialogAnswers answers(QMessageBox::Yes);
    CMainWindow window;
    window.show();
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
    QCOMPARE(QApplication::exec(), 0);
    // What is closed after the end of the event loop needs another one, for its question.
    bool closed = false;
    QTimer::singleShot(0, &window, [&] {
        closed = window.close();
        QCoreApplication::exit(0);
    });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(closed);
    QVERIFY(!window.isVisible());
    QCOMPARE(answers.boxes().size(), 1);
    QCOMPARE(StoredSettings().value(u"CloseIsMinimize"_s).toBool(), false);
}

void CMainWindow_CloseTest::theQuitCommandAnsweredWithAbortChangesNothing()
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

void CMainWindow_CloseTest::aSecondQuitWhileTheQuestionIsOpenAsksNoSecondQuestion()
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

void CMainWindow_CloseTest::aBoxThatClosesWhileTheWindowIsHiddenDoesNotEndTheProgram()
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

TARNVIK_TEST_MAIN(CMainWindow_CloseTest, QApplication)

#include "CMainWindow_CloseTest.moc"
