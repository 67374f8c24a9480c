// SPDX-License-Identifier: MIT
// The whole program where its surroundings are missing or go away: standard streams, the display.
#include "Common_Files/OstrelRecordStatus.h"
#include "Common_Files/RecorderNames.h"
#include "tests/TarnvikControl/Station.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

using tests::Station;
using tests::Title;

namespace {

/// Both ends of a standard output that takes nothing more, because nobody reads it; they are closed with the
/// object.
class StuckOutput
{
public:
    /// A pipe that is full.
    static StuckOutput Pipe()
    {
        std::array<int, 2> ends = {-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
            return {-1, -1};
        while (write(ends[1], "\n", 1) == 1) {
        }
        return {ends[0], fcntl(ends[1], F_SETFL, 0) == 0 ? ends[1] : -1};
    }
    /// A terminal whose user has pressed Ctrl-S.
    static StuckOutput Terminal()
    {
        const int user = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (user == -1 || grantpt(user) != 0 || unlockpt(user) != 0)
            return {user, -1};
        const int program = open(ptsname(user), O_RDWR | O_NOCTTY | O_CLOEXEC);
        return {user, tcflow(program, TCOOFF) == 0 ? program : -1};
    }
    ~StuckOutput()
    {
        close(ReadEnd);
        close(WriteEnd);
    }
    Q_DISABLE_COPY_MOVE(StuckOutput)

    const int ReadEnd;
    const int WriteEnd; // -1: it could not be made

private:
    StuckOutput(int readEnd, int writeEnd) : ReadEnd(readEnd), WriteEnd(writeEnd) {}
};

} // namespace

class TarnvikControl_EndTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void withStandardStreamsClosedItRunsUntilItIsAskedToEnd_data();
    void withStandardStreamsClosedItRunsUntilItIsAskedToEnd();
    void whileNobodyReadsItsOutputItDoesWhatItIsAskedTo_data();
    void whileNobodyReadsItsOutputItDoesWhatItIsAskedTo();
    void theLossOfTheDisplayEndsItWith1AndTheNextStartTakesTheRecorderOver();
    void withoutScreenItRunsWithoutAWarning_data();
    void withoutScreenItRunsWithoutAWarning();

private:
    std::unique_ptr<tools::RecorderReport> Report;
};

void TarnvikControl_EndTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    QSettings(u"Quillane"_s, Title).clear();
    QFile::remove(RecorderStatusFile()); // of the recorder before, which had counted further
}

void TarnvikControl_EndTest::cleanup()
{
    Report.reset();
}

void TarnvikControl_EndTest::withStandardStreamsClosedItRunsUntilItIsAskedToEnd_data()
{
    QTest::addColumn<QList<int>>("closed");
    QTest::newRow("standard input") << QList<int>{STDIN_FILENO};
    QTest::newRow("standard output") << QList<int>{STDOUT_FILENO};
    QTest::newRow("standard output and standard error") << QList<int>{STDOUT_FILENO, STDERR_FILENO};
    QTest::newRow("all") << QList<int>{STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
}

void TarnvikControl_EndTest::withStandardStreamsClosedItRunsUntilItIsAskedToEnd()
{
    QFETCH(QList<int>, closed);
    Report->SetOption("INTERVAL_MS", "50"); // each is a log line
    Station station;
    station.Process.setChildProcessModifier([&closed] {
        for (const int stream : std::as_const(closed))
            close(stream);
    });
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    // Not on something of its own, which the programs that it starts would not inherit.
    for (const int stream : std::as_const(closed)) {
        const QString link = u"/proc/%1/fd/%2"_s.arg(station.Process.processId()).arg(stream);
        QCOMPARE(QFile::symLinkTarget(link), u"/dev/null"_s);
    }
    // Ctrl+H belongs to two entries, which the toolkit warns of on standard error.
    QVERIFY(tests::VirtualDesktop::Press(tests::OnlyWindow(Title), {u"ctrl+h"_s}));
    auto statuses = [last = quint32{0}]() mutable {
        StructOstrelRecordStatus status;
        if (QOstrelRecordStatus::ReadStatusFile(RecorderStatusFile(), status)) // else it is being written
            last = status.SequenceNr;
        return last;
    };
    QTRY_VERIFY(statuses() > 0);
    const quint32 before = statuses();
    QTRY_VERIFY_WITH_TIMEOUT(statuses() > before + 20 || station.Process.state() != QProcess::Running,
                             tests::Patience);
    QVERIFY(station.shows());
    QCOMPARE(Report->count(u"started"_s), 1);
    QVERIFY(station.Signal(SIGINT));
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
}

void TarnvikControl_EndTest::whileNobodyReadsItsOutputItDoesWhatItIsAskedTo_data()
{
    QTest::addColumn<bool>("isTerminal");
    QTest::addColumn<bool>("bySignal");
    QTest::newRow("a full pipe, quit by the keyboard") << false << false;
    QTest::newRow("a full pipe, ended by a signal") << false << true;
    QTest::newRow("a stopped terminal, quit by the keyboard") << true << false;
    QTest::newRow("a stopped terminal, ended by a signal") << true << true;
}

void TarnvikControl_EndTest::whileNobodyReadsItsOutputItDoesWhatItIsAskedTo()
{
    QFETCH(bool, isTerminal);
    QFETCH(bool, bySignal);
    Report->SetOption("INTERVAL_MS", "50");   // each is a log line
    Report->SetOption("FLOOD_LINES", "3000"); // more than a pipe holds at once
    const StuckOutput output = isTerminal ? StuckOutput::Terminal() : StuckOutput::Pipe();
    QVERIFY(output.WriteEnd != -1);
    Station station;
    station.Process.setChildProcessModifier([&output] { dup2(output.WriteEnd, STDOUT_FILENO); });
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    QTRY_VERIFY_WITH_TIMEOUT(station.panelText().contains(u"Running"_s), tests::Patience);
    QVERIFY(bySignal ? station.Signal(SIGTERM) : station.Quit());
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
}

void TarnvikControl_EndTest::withoutScreenItRunsWithoutAWarning_data()
{
    QTest::addColumn<QString>("home");
    QTest::newRow("as a service of a user") << QDir::homePath();
    QTest::newRow("without rights to a home directory") << u"/proc/none"_s;
}

void TarnvikControl_EndTest::withoutScreenItRunsWithoutAWarning()
{
    QFETCH(QString, home);
    Station station;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : {u"DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s})
        environment.remove(variable);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"HOME"_s, home);
    if (home != QDir::homePath()) {
        environment.insert(u"XDG_CONFIG_HOME"_s, home + u"/.config"_s);
        environment.insert(u"XDG_CACHE_HOME"_s, home + u"/.cache"_s);
    }
    const QTemporaryDir runtime;
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    station.Process.setProcessEnvironment(environment);
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.output().contains(u"status 2"_s),
                             tests::Patience);
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControl_EndTest::theLossOfTheDisplayEndsItWith1AndTheNextStartTakesTheRecorderOver()
{
    QProcess display;
    display.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s});
    QVERIFY(display.waitForReadyRead(tests::Patience));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, u':' + QString::fromLatin1(display.readAllStandardOutput()).trimmed());
    Station station;
    station.Process.setProcessEnvironment(environment);
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.output().contains(u"status 2"_s),
                             tests::Patience);
    const qint64 recorder = Report->lastProcess(u"started"_s);
    display.terminate();
    QVERIFY(station.endedWith(1));
    const QRegularExpression line(u"^TarnvikControl \\d\\d:\\d\\d:\\d\\d: [^\n]*X11[^\n]*\n$"_s);
    QVERIFY2(line.match(station.errorOutput()).hasMatch(), qPrintable(station.errorOutput()));
    QVERIFY(display.waitForFinished(tests::Patience));
    QVERIFY(Report->recorderListens());
    QCOMPARE(Report->lastProcess(u"started"_s), recorder);

    station.Process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    station.Start();
    QTRY_COMPARE_WITH_TIMEOUT(Report->count(u"ends"_s, recorder), 1, tests::Patience);
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    QTRY_VERIFY(station.shows() && Report->recorderListens());
    QCOMPARE(Report->count(u"quit-request"_s), 1); // it did not reach the new one
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_EndTest)
#include "TarnvikControl_EndTest.moc"
