// SPDX-License-Identifier: MIT
// "Quit", chosen in the tray while the start shows a box: before there is an event loop that could be ended.
#include "TarnvikControl/StartUp.h"

#include "TarnvikControl/CMainWindow.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tools/IsolatedFolders.h"
#include "tools/RecorderReport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A style without an entry in the menus: the start opens the folder of the records instead, and complains
/// that there is none.
constexpr int StyleWithoutEntry = 3;

constexpr int EndedByTheUser = 42;

/// Who sits before the program while it starts: chooses "Quit" when a box comes, and ends the program when
/// its window comes.
class User
{
public:
    explicit User(QMessageBox::StandardButton answer) : Answer(answer)
    {
        QObject::connect(&Eyes, &QTimer::timeout, &Eyes, [this] { Look(); });
        Eyes.start(5);
    }

    QStringList Boxes; ///< titles, in the order in which they came
    bool SawWindow = false;
    int CaretFlashTime = -1;     ///< milliseconds, when the window came
    int PixmapCacheLimit = -1;   ///< KB, when the window came
    bool StartBoxStayed = false; ///< was open after the question was answered

private:
    void Look()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (const QWidget *const window : windows) {
            if (qobject_cast<const CMainWindow *>(window) && window->isVisible()) {
                SawWindow = true;
                CaretFlashTime = QApplication::cursorFlashTime();
                PixmapCacheLimit = QPixmapCache::cacheLimit();
                QCoreApplication::exit(EndedByTheUser);
                return;
            }
        }
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible() || box == Known)
            return;
        Boxes.append(box->windowTitle());
        if (QAbstractButton *const button = box->button(Answer)) {
            button->click();
            return;
        }
        Known = box;
        QTimer::singleShot(0, box, [this, box] { Quit(*box); }); // apart, so that the eyes stay open
    }

    void Quit(QMessageBox &startBox)
    {
        const auto *const tray = startBox.parentWidget()->findChild<QSystemTrayIcon *>();
        tray->contextMenu()->actions().last()->trigger();
        StartBoxStayed = startBox.isVisible();
        startBox.close();
    }

    QMessageBox::StandardButton Answer;
    QPointer<QMessageBox> Known;
    QTimer Eyes;
};

QMessageBox::StandardButton NextAnswer = QMessageBox::NoButton;
std::unique_ptr<User> TheUser;

void SitDown()
{
    TheUser = std::make_unique<User>(NextAnswer);
}

QStringList FusionOnly()
{
    return {CMainWindow::Fusion};
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(SitDown)

class StartUp_QuitTest : public QObject
{
    Q_OBJECT

private slots:
    void quitWhileTheStartShowsABox_data();
    void quitWhileTheStartShowsABox();
};

void StartUp_QuitTest::quitWhileTheStartShowsABox_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("Yes ends the program") << QMessageBox::Yes << 0;
    QTest::newRow("Abort lets it start") << QMessageBox::Abort << EndedByTheUser;
}

void StartUp_QuitTest::quitWhileTheStartShowsABox()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(int, exitCode);
    const tools::RecorderReport report;
    tests::StoredSettings().setValue(u"GuiStyle"_s, StyleWithoutEntry);
    CMainWindow::StyleNames = FusionOnly;
    NextAnswer = answer;
    QCOMPARE(RunControl({"TarnvikControl"}, ShowNormal, false), exitCode);
    QCOMPARE(TheUser->Boxes, QStringList({u"Error"_s, u"Close indication"_s})); // the question came once
    const bool ends = answer == QMessageBox::Yes;
    QCOMPARE(TheUser->StartBoxStayed, !ends);
    QCOMPARE(TheUser->SawWindow, !ends);
    if (ends) {
        QCOMPARE(report.count(u"started"_s), 0); // no recorder for a program that ends
    } else {
        QCOMPARE(TheUser->CaretFlashTime, 0);   // a caret that blinks would wake an idle program
        QCOMPARE(TheUser->PixmapCacheLimit, 0); // or each file dialog would leave something behind
    }
}

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    StartUp_QuitTest test; // the program makes the application object
    return QTest::qExec(&test, argc, argv);
}

#include "StartUp_QuitTest.moc"
