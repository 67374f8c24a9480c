// SPDX-License-Identifier: MIT
// The show commands, and the control handler. The handler acts once in a process, so each of its tests runs
// this program again, with the argument "child", the scenario and the control types to call it with.
#include "TarnvikControl/StartUp.h"

#include "TarnvikControl/LogHandler.h"
#include "tools/IsolatedFolders.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstring>
#include <thread>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// --- The child

constexpr int LoopWasNotLeft = 42;

/// Calls the handler with each type and prints what it returned. As the system does, on a thread of its own.
void CallHandler(const QStringList &types)
{
    std::thread([&types] {
        for (const QString &type : types)
            std::printf("%s: %s\n", qPrintable(type),
                        CtrlCException(type.toUInt()) ? "handled" : "not handled");
    }).join();
    // Ends a loop that nothing else ends.
    if (QCoreApplication *const application = QCoreApplication::instance())
        QTimer::singleShot(1s, application, [] { QCoreApplication::exit(LoopWasNotLeft); });
}

int RunChild(int argc, char **argv)
{
    qInstallMessageHandler(ConsoleMessageHandler);
    const QByteArray scenario = argv[2];
    QStringList types;
    for (int i = 3; i < argc; ++i)
        types.append(QString::fromLatin1(argv[i]));
    if (scenario == "no application") {
        CallHandler(types);
        return 0;
    }
    QCoreApplication application(argc, argv);
    if (scenario == "before the loop")
        CallHandler(types);
    else
        QTimer::singleShot(0, &application, [&types] { CallHandler(types); });
    if (scenario == "twice, the second while the loop ends")
        QObject::connect(&application, &QCoreApplication::aboutToQuit, &application,
                         [] { CallHandler({u"0"_s}); });
    return QCoreApplication::exec();
}

// --- The test

struct Result
{
    int ExitCode = -1;
    QStringList Lines;
};

Result RunScenario(const QString &scenario, const QStringList &types)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), QStringList{u"child"_s, scenario} + types);
    if (!child.waitForFinished() || child.exitStatus() != QProcess::NormalExit)
        return {-1, {child.errorString()}};
    QString output = QString::fromLocal8Bit(child.readAllStandardOutput());
    output.remove(u'\r');
    return {child.exitCode(), output.split(u'\n', Qt::SkipEmptyParts)};
}

} // namespace

class StartUpTest : public QObject
{
    Q_OBJECT

private slots:
    void theShowCommand_data();
    void theShowCommand();
    void showNormalKeepsAWindowMaximisedThatWasRestoredSo();

    void theControlHandler_data();
    void theControlHandler();
    void theControlHandlerWithoutApplicationObject_data();
    void theControlHandlerWithoutApplicationObject();
    void aRequestBeforeTheEventLoopBeginsEndsItAtOnce();
    void aSecondCtrlCWhileTheEventLoopIsStillEndingIsNotHandled();
};

void StartUpTest::theShowCommand_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<Qt::WindowStates>("state");
    const Qt::WindowStates normal = Qt::WindowNoState;
    const Qt::WindowStates minimised = Qt::WindowMinimized;
    const Qt::WindowStates maximised = Qt::WindowMaximized;
    QTest::newRow("1 (show normal) shows") << 1 << true << normal;
    QTest::newRow("2 (show minimised) shows minimised") << 2 << true << minimised;
    QTest::newRow("3 (show maximised) shows maximised") << 3 << true << maximised;
    QTest::newRow("6 (minimise) shows minimised") << 6 << true << minimised;
    QTest::newRow("10 (show default) shows") << 10 << true << normal;
    QTest::newRow("0 (hide) hides") << 0 << false << normal;
    QTest::newRow("4 (show without activation) hides") << 4 << false << normal;
    QTest::newRow("show command 5 starts with the window hidden") << 5 << false << normal;
    QTest::newRow("7 (minimise without activation) hides") << 7 << false << normal;
    QTest::newRow("8 (show as it is) hides") << 8 << false << normal;
    QTest::newRow("9 (restore) hides") << 9 << false << normal;
    QTest::newRow("11 (force minimise) hides") << 11 << false << normal;
    QTest::newRow("-1 hides") << -1 << false << normal;
    QTest::newRow("99 hides") << 99 << false << normal;
}

void StartUpTest::theShowCommand()
{
    QFETCH(int, command);
    QFETCH(bool, visible);
    QFETCH(Qt::WindowStates, state);
    QWidget window;
    ApplyShowCommand(window, command);
    QCOMPARE(window.isVisible(), visible);
    QCOMPARE(window.windowState(), state);

    QWidget shownBefore;
    shownBefore.show();
    ApplyShowCommand(shownBefore, command);
    QCOMPARE(shownBefore.isVisible(), visible);
    QCOMPARE(shownBefore.windowState(), state);
}

void StartUpTest::showNormalKeepsAWindowMaximisedThatWasRestoredSo()
{
    QWidget window;
    window.setWindowState(Qt::WindowMaximized);
    ApplyShowCommand(window, 1);
    QVERIFY(window.isVisible());
    QVERIFY(window.isMaximized());
}

void StartUpTest::theControlHandler_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<QStringList>("results");
    QTest::addColumn<int>("exitCode");
    const QStringList handled = {"handled"};
    const QStringList notHandled = {"not handled"};
    QTest::newRow("0 (Ctrl-C) ends the event loop") << QStringList{"0"} << handled << 0;
    QTest::newRow("6 (system shutdown) ends the event loop") << QStringList{"6"} << handled << 0;
    QTest::newRow("1 (Ctrl-Break) is not handled") << QStringList{"1"} << notHandled << LoopWasNotLeft;
    QTest::newRow("2 (window close) is not handled") << QStringList{"2"} << notHandled << LoopWasNotLeft;
    QTest::newRow("5 (log-off) is not handled") << QStringList{"5"} << notHandled << LoopWasNotLeft;
    QTest::newRow("an unknown type is not handled")
        << QStringList{"4294967295"} << notHandled << LoopWasNotLeft;
    QTest::newRow("a second Ctrl-C is not handled") << QStringList{"0", "0"} << handled + notHandled << 0;
    QTest::newRow("a shutdown after a Ctrl-C is not handled")
        << QStringList{"0", "6"} << handled + notHandled << 0;
    QTest::newRow("a Ctrl-C after a shutdown is not handled")
        << QStringList{"6", "0"} << handled + notHandled << 0;
    QTest::newRow("a type that is not handled does not count")
        << QStringList{"1", "5", "0", "0"} << notHandled + notHandled + handled + notHandled << 0;
}

void StartUpTest::theControlHandler()
{
    QFETCH(QStringList, types);
    QFETCH(QStringList, results);
    QFETCH(int, exitCode);
    const Result result = RunScenario(u"in the loop"_s, types);
    QStringList expected;
    for (qsizetype i = 0; i < types.size(); ++i)
        expected += {u"CtrlCException"_s, types[i] + u": "_s + results[i]};
    QCOMPARE(result.Lines, expected);
    QCOMPARE(result.ExitCode, exitCode);
}

void StartUpTest::theControlHandlerWithoutApplicationObject_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<QStringList>("lines");
    const QString log = u"CtrlCException"_s;
    QTest::newRow("the first is handled, the second is not")
        << QStringList{"0", "0"} << QStringList{log, "0: handled", log, "0: not handled"};
    QTest::newRow("a shutdown is handled") << QStringList{"6"} << QStringList{log, "6: handled"};
    QTest::newRow("any other type is not") << QStringList{"2"} << QStringList{log, "2: not handled"};
}

void StartUpTest::theControlHandlerWithoutApplicationObject()
{
    QFETCH(QStringList, types);
    QFETCH(QStringList, lines);
    const Result result = RunScenario(u"no application"_s, types);
    QCOMPARE(result.Lines, lines);
    QCOMPARE(result.ExitCode, 0);
}

void StartUpTest::aRequestBeforeTheEventLoopBeginsEndsItAtOnce()
{
    const Result result = RunScenario(u"before the loop"_s, {"0"});
    QCOMPARE(result.Lines, QStringList({"CtrlCException", "0: handled"}));
    QCOMPARE(result.ExitCode, 0);
}

void StartUpTest::aSecondCtrlCWhileTheEventLoopIsStillEndingIsNotHandled()
{
    const Result result = RunScenario(u"twice, the second while the loop ends"_s, {"0"});
    QCOMPARE(result.Lines, QStringList({"CtrlCException", "0: handled", "CtrlCException", "0: not handled"}));
    QCOMPARE(result.ExitCode, 0);
}

int main(int argc, char **argv)
{
    if (argc >= 3 && std::strcmp(argv[1], "child") == 0)
        return RunChild(argc, argv);
    const tools::IsolatedFolders isolation;
    const QApplication application(argc, argv);
    StartUpTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "StartUpTest.moc"
