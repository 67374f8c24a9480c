// SPDX-License-Identifier: MIT
// The whole program as a process on the desktop, with the stand-in recorder beside it.
#include "tests/TarnvikControl/Station.h"
#include "tests/support/Patience.h"
#include "tests/support/WindowsDesktop_windows.h"
#include "tools/IsolatedFolders.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScopeGuard>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

using tests::Station;

namespace {

const QLatin1String OpenerArgument("--open");
const QString Key = u"HKEY_CURRENT_USER\\Software\\Quillane\\TarnvikControl"_s;

DWORD ProcessId(const Station &station)
{
    return static_cast<DWORD>(station.Process.processId());
}

HWND Window(const Station &station)
{
    return tests::OnlyWindow(tests::Title, ProcessId(station));
}

/// True when the debug console is there and set up.
bool ConsoleOpen(const Station &station)
{
    return tests::ConsoleText(ProcessId(station)).startsWith(u"Debug console open:\n"_s);
}

} // namespace

class TarnvikControlWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theRecorderAndItsMessageAreShown();
    void theVersionIsTheFirstLine();
    void aKilledRecorderIsRunningAgainWithinASecond();
    void aSecondInstanceTellsSoAndEndsWithMinus1();
    void theInstanceAfterAKilledOneStarts();
    void quitStopsTheRecorderByTheSemaphoreAloneAndEndsWithinASecond();
    void theSettingsLieInTheUsersRegistry();
    void aRecorderThatIgnoresTheSemaphoreIsAskedToTerminate();
    void aRecorderThatIgnoresEverythingIsKilledAfter5s();
    void aRecorderSurvivesACrashAndIsAskedToQuitAtTheNextStart();
    void theShowCommandDecidesUnlessTheStartIsHidden_data();
    void theShowCommandDecidesUnlessTheStartIsHidden();
    void theDebugConsoleIsOpened_data();
    void theDebugConsoleIsOpened();
    void theConsoleShowsTheLogInItsFormat();
    void aClickIntoTheConsoleDoesNotStopTheProgram();
    void ctrlCInTheDebugConsoleEndsWith0AndStopsTheRecorder();
    void theGuideIsOpenedFromAFolderLikeProgramFiles();

private:
    std::unique_ptr<tools::RecorderReport> Report;
};

void TarnvikControlWindowsTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    QSettings(Key, QSettings::NativeFormat).clear();
}

void TarnvikControlWindowsTest::cleanup()
{
    Report.reset();
}

void TarnvikControlWindowsTest::theRecorderAndItsMessageAreShown()
{
    Report->SetOption("MESSAGE", "<WORK>Recording <INFO>162.400 MHz\nFile 1 of 4");
    Station station;
    station.Start();
    const QString expected = u"Program information\n\nStart               : With open GUI\n\n"
                             "TarnvikRecord\n\nProgram status      : Running\n"
                             "Last message        : Recording 162.400 MHz\n"_s +
                             QString(22, u' ') + u"File 1 of 4\n"_s;
    QTRY_COMPARE_WITH_TIMEOUT(station.panelText(), expected, tests::Patience);
    QTRY_VERIFY(station.output().contains(u"\nstand-in: status 1 written\n"_s));
}

void TarnvikControlWindowsTest::theVersionIsTheFirstLine()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.output().contains(u'\n'), tests::Patience);
    QCOMPARE(station.output().section(u'\n', 0, 0), QStringLiteral("TarnvikControl " VERSION_TEXT));
}

void TarnvikControlWindowsTest::aKilledRecorderIsRunningAgainWithinASecond()
{
    Report->SetOption("INTERVAL_MS", "0");
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
    QTRY_VERIFY(station.panelText().contains(u"Running"_s));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    while (Report->count(u"started"_s) < 2 && timer.elapsed() < 5000)
        QTest::qWait(1);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    // The next end is followed by a pause: now the panel can be seen to say so.
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    QTRY_VERIFY(station.panelText().contains(u"Stopped"_s));
    QTRY_VERIFY_WITH_TIMEOUT(station.panelText().contains(u"Running"_s), 8000);
}

void TarnvikControlWindowsTest::aSecondInstanceTellsSoAndEndsWithMinus1()
{
    Station first;
    first.Start();
    QTRY_VERIFY_WITH_TIMEOUT(first.shows() && Report->recorderListens(), tests::Patience);
    Station second;
    second.Start();
    QTRY_VERIFY_WITH_TIMEOUT(second.shows(u"Error..."_s), tests::Patience);
    QVERIFY(!second.shows());
    QVERIFY(tests::Press(tests::OnlyWindow(u"Error..."_s, ProcessId(second)), 0, VK_RETURN));
    QVERIFY(second.endedWith(-1));
    QCOMPARE(second.output().section(u'\n', 1),
             u"TarnvikControl: Error an instance is already running...\n"_s);
    const QRegularExpression line(u"^TarnvikControl \\d\\d:\\d\\d:\\d\\d: TarnvikControl: Error -1!$"_s,
                                  QRegularExpression::MultilineOption);
    QVERIFY2(line.match(second.errorOutput()).hasMatch(), qPrintable(second.errorOutput()));
    QCOMPARE(Report->count(u"started"_s), 1);
    QVERIFY(Report->recorderListens()); // the first one's recorder was not asked to quit
}

void TarnvikControlWindowsTest::theInstanceAfterAKilledOneStarts()
{
    Station station;
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"started"_s), 1, tests::Patience);
    station.Process.kill();
    QVERIFY(station.Process.waitForFinished());
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"started"_s), 2, tests::Patience);
}

void TarnvikControlWindowsTest::quitStopsTheRecorderByTheSemaphoreAloneAndEndsWithinASecond()
{
    Report->SetOption("IGNORE_TERMINATE", "1"); // it comes together with the quit request
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows() && Report->recorderListens(), tests::Patience);
    QVERIFY(station.Quit());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(station.endedWith(0));
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    QVERIFY(!tools::IsAlive(Report->lastProcess(u"started"_s)));
}

void TarnvikControlWindowsTest::theSettingsLieInTheUsersRegistry()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows() && Report->recorderListens(), tests::Patience);
    QVERIFY(station.Quit());
    QVERIFY(station.endedWith(0));
    QStringList keys = QSettings(Key, QSettings::NativeFormat).childKeys();
    keys.sort();
    QCOMPARE(keys.join(u' '), u"GuiStyle geometry windowState"_s);
}

void TarnvikControlWindowsTest::aRecorderThatIgnoresTheSemaphoreIsAskedToTerminate()
{
    Report->SetOption("IGNORE_QUIT", "1");
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows() && Report->count(u"ready"_s) == 1, tests::Patience);
    QVERIFY(station.Quit());
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 0);
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
}

void TarnvikControlWindowsTest::aRecorderThatIgnoresEverythingIsKilledAfter5s()
{
    Report->SetOption("IGNORE_QUIT", "1");
    Report->SetOption("IGNORE_TERMINATE", "1");
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows() && Report->count(u"ready"_s) == 1, tests::Patience);
    const qint64 recorder = Report->lastProcess(u"started"_s);
    QVERIFY(station.Quit());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(station.endedWith(0));
    QVERIFY2(timer.elapsed() >= 4500 && timer.elapsed() < 7000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!tools::IsAlive(recorder));
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 0);
}

void TarnvikControlWindowsTest::aRecorderSurvivesACrashAndIsAskedToQuitAtTheNextStart()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens(), tests::Patience);
    const qint64 recorder = Report->lastProcess(u"started"_s);
    station.Process.kill();
    QVERIFY(station.Process.waitForFinished());
    QVERIFY(Report->recorderListens(recorder));
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"ends"_s, recorder), 1, tests::Patience);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    QTRY_VERIFY(Report->recorderListens());
    QCOMPARE(Report->count(u"quit-request"_s), 1); // it did not reach the new one
}

void TarnvikControlWindowsTest::theShowCommandDecidesUnlessTheStartIsHidden_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<bool>("startHidden");
    QTest::addColumn<QString>("shown");
    QTest::newRow("show normal") << SW_SHOWNORMAL << false << "normal";
    QTest::newRow("show minimised") << SW_SHOWMINIMIZED << false << "minimised";
    QTest::newRow("show maximised") << SW_SHOWMAXIMIZED << false << "maximised";
    QTest::newRow("show hides, on purpose") << SW_SHOW << false << "hidden";
    QTest::newRow("minimise") << SW_MINIMIZE << false << "minimised";
    QTest::newRow("default") << SW_SHOWDEFAULT << false << "normal";
    QTest::newRow("hidden start, show normal") << SW_SHOWNORMAL << true << "hidden";
    QTest::newRow("hidden start, show maximised") << SW_SHOWMAXIMIZED << true << "hidden";
}

void TarnvikControlWindowsTest::theShowCommandDecidesUnlessTheStartIsHidden()
{
    QFETCH(int, command);
    QFETCH(bool, startHidden);
    QFETCH(QString, shown);
    QSettings(Key, QSettings::NativeFormat).setValue(u"StartHidden"_s, startHidden);
    Station station;
    station.Process.setCreateProcessArgumentsModifier([command](QProcess::CreateProcessArguments *arguments) {
        arguments->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
        arguments->startupInfo->wShowWindow = static_cast<WORD>(command);
    });
    station.Start();
    // The second status is written long after the start.
    QTRY_VERIFY_WITH_TIMEOUT(station.output().contains(u"status 2 written"_s), tests::Patience);
    const HWND window = Window(station);
    QString state = u"hidden"_s;
    if (window && IsIconic(window) != FALSE)
        state = u"minimised"_s;
    else if (window && IsZoomed(window) != FALSE)
        state = u"maximised"_s;
    else if (window)
        state = u"normal"_s;
    QCOMPARE(state, shown);
}

void TarnvikControlWindowsTest::theDebugConsoleIsOpened_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("opened");
    QTest::newRow("--DEBUG as the first argument") << "--DEBUG" << true;
    QTest::newRow("--DEBUG as the first argument, others following") << "--DEBUG a b c d e" << true;
    QTest::newRow("--DEBUG as the second argument behind another one") << "a --DEBUG" << false;
    QTest::newRow("--debug in another case") << "--debug" << false;
    QTest::newRow("no argument") << "" << false;
}

void TarnvikControlWindowsTest::theDebugConsoleIsOpened()
{
    QFETCH(QString, arguments);
    QFETCH(bool, opened);
    Station station;
    station.Start(arguments.split(u' ', Qt::SkipEmptyParts));
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    if (opened)
        QTRY_VERIFY2(ConsoleOpen(station), qPrintable(tests::ConsoleText(ProcessId(station))));
    else
        QCOMPARE(tests::ConsoleText(ProcessId(station)), QString());
    QVERIFY(!station.output().contains(u"Debug console open:"_s)); // it goes to the console
}

void TarnvikControlWindowsTest::theConsoleShowsTheLogInItsFormat()
{
    Station station;
    station.Start({u"--DEBUG"_s});
    QTRY_VERIFY_WITH_TIMEOUT(
        tests::ConsoleText(ProcessId(station)).contains(u"\nstand-in: status 2 written\n"_s),
        tests::Patience);
    // Ctrl+H belongs to two entries, which the toolkit warns of.
    QVERIFY(tests::Press(Window(station), VK_CONTROL, 'H'));
    const QRegularExpression warning(u"^TarnvikControl \\d\\d:\\d\\d:\\d\\d: .*Ctrl\\+H$"_s,
                                     QRegularExpression::MultilineOption);
    QTRY_VERIFY2(warning.match(tests::ConsoleText(ProcessId(station))).hasMatch(),
                 qPrintable(tests::ConsoleText(ProcessId(station))));
}

void TarnvikControlWindowsTest::ctrlCInTheDebugConsoleEndsWith0AndStopsTheRecorder()
{
    Report->SetOption("IGNORE_TERMINATE", "1"); // it comes together with the quit request
    Station station;
    station.Start({u"--DEBUG"_s});
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows() && ConsoleOpen(station),
                             tests::Patience);
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QVERIFY(!tools::IsAlive(Report->lastProcess(u"started"_s)));
}

void TarnvikControlWindowsTest::aClickIntoTheConsoleDoesNotStopTheProgram()
{
    Station station;
    station.Start({u"--DEBUG"_s});
    QTRY_VERIFY_WITH_TIMEOUT(ConsoleOpen(station), tests::Patience);
    const DWORD mode = tests::ConsoleInputMode(ProcessId(station));
    QVERIFY(mode != 0);
    QCOMPARE(mode & ENABLE_QUICK_EDIT_MODE, 0U); // the mode in which a click selects, and who writes waits
}

void TarnvikControlWindowsTest::theGuideIsOpenedFromAFolderLikeProgramFiles()
{
    // This program takes the place of the one that opens such files, and writes down what it was given.
    const QTemporaryDir folder;
    const QString record = folder.filePath(u"opened"_s);
    QSettings classes(u"HKEY_CLASSES_ROOT"_s, QSettings::NativeFormat);
    const QString type = u"TarnvikControlWindowsTest"_s;
    classes.setValue(u".pdf/."_s, type);
    classes.setValue(type + u"/shell/open/command/."_s,
                     u'"' + QDir::toNativeSeparators(QCoreApplication::applicationFilePath()) + u"\" "_s +
                         OpenerArgument + u" \""_s + QDir::toNativeSeparators(record) + u"\" \"%1\""_s);
    classes.sync();
    const auto remove = qScopeGuard([&] {
        classes.remove(u".pdf"_s);
        classes.remove(type);
    });
    Station station(tests::RecorderName(), u"Program Files ä"_s);
    const QString guide = station.path(u"Tarnvik_EN.pdf"_s);
    QFile file(guide);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("%PDF-1.4\n%%EOF\n") > 0);
    file.close();
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(station.shows() && Report->recorderListens(), tests::Patience);
    // The fifth entry of the third menu; without translations there is no menu of languages.
    QVERIFY(tests::Press(Window(station), 0, VK_MENU));
    for (const int key : {VK_RIGHT, VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN})
        QVERIFY(tests::Press(static_cast<WORD>(key)));
    const auto opened = [&record] {
        QFile written(record);
        return written.open(QIODevice::ReadOnly) ? QString::fromUtf8(written.readAll()) : QString();
    };
    // A drive's letter may be a small one.
    QTRY_COMPARE(QDir::fromNativeSeparators(opened()).toLower(), guide.toLower());
    QVERIFY(station.Quit());
    QVERIFY(station.endedWith(0));
}

int main(int argc, char **argv)
{
    if (argc == 4 && QLatin1String(argv[1]) == OpenerArgument) {
        const QCoreApplication application(argc, argv);
        QSaveFile record(QCoreApplication::arguments().at(2));
        return record.open(QIODevice::WriteOnly) &&
                       record.write(QCoreApplication::arguments().at(3).toUtf8()) > 0 && record.commit()
                   ? 0
                   : 1;
    }
    const tools::IsolatedFolders isolation(tools::IsolatedFolders::Settings::Users);
    const QCoreApplication application(argc, argv);
    TarnvikControlWindowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TarnvikControlWindowsTest.moc"
