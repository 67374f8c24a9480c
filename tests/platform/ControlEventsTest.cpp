// SPDX-License-Identifier: MIT
// Signals in place of control events. What ends a process is shown by the test running itself again with an
// argument.
#include "platform/ControlEvents.h"
#include "tools/IsolatedFolders.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <future>
#include <thread>

#include <sys/types.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

std::atomic<int> LastType = -1;
std::atomic<int> Calls = 0;
std::atomic<bool> OnOtherThread = false;
std::thread::id MainThread;

bool Handle(std::uint32_t type)
{
    OnOtherThread = std::this_thread::get_id() != MainThread;
    LastType = static_cast<int>(type);
    ++Calls;
    return true;
}

/// Handles the first event only, as the program does.
bool HandleOnce(std::uint32_t /*type*/)
{
    if (Calls++ > 0)
        return false;
    std::fputs("handled", stdout);
    std::fflush(stdout);
    return true;
}

/// What a process does that was started with its standard streams closed: it installs a handler, prints
/// something and sends itself SIGINT. Returns the type of the first event, or -1.
int FirstEventWithClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        close(stream);
    static std::promise<int> first;
    const auto noteFirst = [](std::uint32_t type) {
        if (Calls++ == 0)
            first.set_value(static_cast<int>(type));
        return true;
    };
    if (!platform::InstallControlHandler(noteFirst))
        return -1;
    std::fputs("a log line\n", stdout);
    std::fflush(stdout);
    std::fputs("a log line\n", stderr);
    kill(getpid(), SIGINT);
    const int type = first.get_future().get();
    platform::RemoveControlHandler();
    return type;
}

bool SendSignal(const QProcess &process, int signalNumber)
{
    return kill(static_cast<pid_t>(process.processId()), signalNumber) == 0;
}

} // namespace

class ControlEventsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { platform::RemoveControlHandler(); }
    void aSignalReachesTheHandlerOnAThreadOfItsOwn_data();
    void aSignalReachesTheHandlerOnAThreadOfItsOwn();
    void everySignalIsHandledWhileTheHandlerSaysSo();
    void installFailsWithoutHandlerOrWhenThereIsOneAlready();
    void removeRestoresWhatWasThereAndMayBeCalledTwice();
    void anEventThatIsNotHandledEndsTheProcessByItsSignal_data();
    void anEventThatIsNotHandledEndsTheProcessByItsSignal();
    void childProcessesStartWithTheDefaultActions();
    void whatIsPrintedIntoClosedStreamsIsNotTakenForSignals();
    void exitWhileAHandlerIsInstalledEndsTheProcessWithItsCode();
};

void ControlEventsTest::aSignalReachesTheHandlerOnAThreadOfItsOwn_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::addColumn<int>("type");
    QTest::newRow("SIGINT is Ctrl-C") << SIGINT << 0;
    QTest::newRow("SIGTERM is shutdown") << SIGTERM << 6;
}

void ControlEventsTest::aSignalReachesTheHandlerOnAThreadOfItsOwn()
{
    QFETCH(int, signalNumber);
    QFETCH(int, type);
    LastType = -1;
    OnOtherThread = false;
    QVERIFY(platform::InstallControlHandler(Handle));
    QCOMPARE(kill(getpid(), signalNumber), 0);
    QTRY_COMPARE(LastType.load(), type);
    QVERIFY(OnOtherThread);
}

void ControlEventsTest::everySignalIsHandledWhileTheHandlerSaysSo()
{
    Calls = 0;
    QVERIFY(platform::InstallControlHandler(Handle));
    for (int n = 1; n <= 20; ++n) {
        QCOMPARE(kill(getpid(), n % 2 == 0 ? SIGINT : SIGTERM), 0);
        QTRY_COMPARE(Calls.load(), n);
    }
}

void ControlEventsTest::installFailsWithoutHandlerOrWhenThereIsOneAlready()
{
    QVERIFY(!platform::InstallControlHandler(nullptr));
    QVERIFY(platform::InstallControlHandler(Handle));
    QVERIFY(!platform::InstallControlHandler(Handle));
}

void ControlEventsTest::removeRestoresWhatWasThereAndMayBeCalledTwice()
{
    struct sigaction before = {};
    QCOMPARE(sigaction(SIGINT, nullptr, &before), 0);
    QVERIFY(platform::InstallControlHandler(Handle));
    struct sigaction action = {};
    QCOMPARE(sigaction(SIGINT, nullptr, &action), 0);
    QVERIFY(action.sa_handler != before.sa_handler);
    platform::RemoveControlHandler();
    platform::RemoveControlHandler();
    QCOMPARE(sigaction(SIGINT, nullptr, &action), 0);
    QVERIFY(action.sa_handler == before.sa_handler);
    QVERIFY(platform::InstallControlHandler(Handle));
}

void ControlEventsTest::anEventThatIsNotHandledEndsTheProcessByItsSignal_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::newRow("a second SIGINT") << SIGINT << SIGINT;
    QTest::newRow("SIGTERM after SIGINT") << SIGINT << SIGTERM;
    QTest::newRow("SIGINT after SIGTERM") << SIGTERM << SIGINT;
}

void ControlEventsTest::anEventThatIsNotHandledEndsTheProcessByItsSignal()
{
    QFETCH(int, first);
    QFETCH(int, second);
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), QStringList{u"once"_s});
    QVERIFY(process.waitForReadyRead());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("ready"));
    QVERIFY(SendSignal(process, first));
    QVERIFY(process.waitForReadyRead());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("handled"));
    QVERIFY(SendSignal(process, second));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(process.exitCode(), second); // for a process ended by a signal this is the signal's number
}

void ControlEventsTest::childProcessesStartWithTheDefaultActions()
{
    QVERIFY(platform::InstallControlHandler(Handle));
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), QStringList{u"plain"_s});
    QVERIFY(child.waitForReadyRead());
    QVERIFY(SendSignal(child, SIGTERM));
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    QCOMPARE(child.exitCode(), SIGTERM);
}

void ControlEventsTest::whatIsPrintedIntoClosedStreamsIsNotTakenForSignals()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), QStringList{u"closed streams"_s});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), static_cast<int>(platform::ControlTypeCtrlC));
}

void ControlEventsTest::exitWhileAHandlerIsInstalledEndsTheProcessWithItsCode()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), QStringList{u"exit"_s});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 7);
}

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "exit") == 0)
        std::exit(platform::InstallControlHandler(Handle) ? 7 : 1); // as the toolkit does without a display
    if (argc == 2 && std::strcmp(argv[1], "closed streams") == 0)
        return FirstEventWithClosedStreams();
    const bool once = argc == 2 && std::strcmp(argv[1], "once") == 0;
    if (once || (argc == 2 && std::strcmp(argv[1], "plain") == 0)) {
        if (once && !platform::InstallControlHandler(HandleOnce))
            return 1;
        std::fputs("ready", stdout);
        std::fflush(stdout);
        std::this_thread::sleep_for(std::chrono::minutes(1)); // until the signal ends it
        return 2;
    }
    MainThread = std::this_thread::get_id();
    const tools::IsolatedFolders isolation;
    QCoreApplication application(argc, argv);
    ControlEventsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ControlEventsTest.moc"
