// SPDX-License-Identifier: MIT
// The scripts: what they say to wrong arguments, what they leave behind, and how they go along with each
// other.
#include "tests/support/Needs.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// How a script ended, and what it said.
struct Ending
{
    int ExitCode;
    QByteArray Errors;
};

/// Runs the script where it finds no program but those that reading the arguments takes: one that begins its
/// work fails at once.
Ending RunWithoutTools(const QString &script, const QStringList &arguments)
{
    const QTemporaryDir tools;
    for (const QString &tool : {u"bash"_s, u"dirname"_s})
        QFile::link(QStandardPaths::findExecutable(tool), tools.filePath(tool));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, tools.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TARNVIK_SCRIPTS "/") + script, arguments);
    process.waitForFinished(tests::LongPatience);
    return {process.exitCode(), process.readAllStandardError()};
}

/// Programs that stand in for others of the same name: scripts find these first.
class PretendedTools
{
public:
    /// `script` is what the program does, in the shell.
    void Add(const QString &name, const QByteArray &script)
    {
        QFile file(Folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::NewOnly));
        file.write("#!/bin/sh\n" + script + '\n');
        QVERIFY(file.setPermissions(file.permissions() | QFile::ExeOwner));
    }

    /// Starts the command, which finds the variables, too.
    [[nodiscard]] std::unique_ptr<QProcess> Start(const QStringList &command,
                                                  const QMap<QString, QString> &variables = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, Folder.path() + u':' + environment.value(u"PATH"_s));
        for (auto variable = variables.begin(); variable != variables.end(); ++variable)
            environment.insert(variable.key(), variable.value());
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->start(command.first(), command.sliced(1));
        return process;
    }

private:
    QTemporaryDir Folder;
};

/// The next line of what the process prints; empty where it ends without one.
QByteArray NextLine(QProcess &process)
{
    while (!process.canReadLine() && process.waitForReadyRead(tests::LongPatience)) {
    }
    return process.readLine().trimmed();
}

/// Ends what the process reads, waits for its end, and returns its exit code.
int CodeAfterItsInput(QProcess &process)
{
    process.closeWriteChannel();
    return process.waitForFinished(tests::LongPatience) ? process.exitCode() : -1;
}

/// Whether a child of the process waits for a lock of a file (flock).
bool ChildWaitsForLock(qint64 process)
{
    QFile locks(u"/proc/locks"_s);
    QFile children(u"/proc/%1/task/%1/children"_s.arg(process));
    if (!locks.open(QIODevice::ReadOnly) || !children.open(QIODevice::ReadOnly))
        return false;
    const QList<QByteArray> pids = children.readAll().simplified().split(' ');
    const QList<QByteArray> lines = locks.readAll().split('\n');
    return std::ranges::any_of(lines, [&pids](const QByteArray &line) {
        // "7: -> FLOCK ADVISORY WRITE 123 08:01:456 0 EOF"
        const QList<QByteArray> words = line.simplified().split(' ');
        return words.size() > 5 && words[1] == "->" && words[2] == "FLOCK" && pids.contains(words[5]);
    });
}

const QString WineScript = QStringLiteral(TARNVIK_SCRIPTS "/windows/wine");

/// Two desktops as scripts/windows/desktop describes them, each with a Wine that says which one it is on.
class TwoDesktops
{
public:
    /// `wine` is what Wine does after that.
    explicit TwoDesktops(const QByteArray &wine)
    {
        Tools.Add(u"wine"_s, "echo $WINEPREFIX; " + wine);
        Tools.Add(u"x86_64-w64-mingw32-g++-posix"_s, "echo /runtime/libstdc++-6.dll");
        for (const QString &name : {u"first"_s, u"second"_s}) {
            QFile file(Folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("declare -x WINEPREFIX=\"" + name.toUtf8() + "\"\n");
        }
    }

    /// Starts a Windows program on one of the desktops.
    [[nodiscard]] std::unique_ptr<QProcess> StartProgram() const
    {
        return Tools.Start(
            {WineScript, u"program.exe"_s},
            {{u"TARNVIK_DESKTOPS"_s, Folder.filePath(u"first"_s) + u':' + Folder.filePath(u"second"_s)}});
    }

    /// Starts a Windows program where there is only the first, in whose environment everything runs.
    [[nodiscard]] std::unique_ptr<QProcess> StartOnTheOnlyOne() const
    {
        return Tools.Start(
            {WineScript, u"program.exe"_s},
            {{u"TARNVIK_DESKTOPS"_s, Folder.filePath(u"first"_s)}, {u"WINEPREFIX"_s, u"only"_s}});
    }

private:
    PretendedTools Tools;
    QTemporaryDir Folder;
};

} // namespace

class ScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void wrongArgumentsAreToldTheUsage_data();
    void wrongArgumentsAreToldTheUsage();
    void aDesktopThatIsEndedEndsItsCommand_data();
    void aDesktopThatIsEndedEndsItsCommand();
    void eachWindowsProgramHasADesktopToItself();
    void whatAWindowsProgramLeavesRunningDoesNotKeepTheDesktop();
    void withOneDesktopWindowsProgramsShareIt();
    void scriptsThatInstallPackagesWaitForEachOther();
};

void ScriptsTest::wrongArgumentsAreToldTheUsage_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("soak: no minutes") << u"soak"_s << QStringList{u"0"_s};
    QTest::newRow("soak: minutes below zero") << u"soak"_s << QStringList{u"-1"_s};
    QTest::newRow("soak: minutes are no number") << u"soak"_s << QStringList{u"abc"_s};
    QTest::newRow("soak: empty minutes") << u"soak"_s << QStringList{u""_s};
    QTest::newRow("soak: minutes twice") << u"soak"_s << QStringList{u"1"_s, u"2"_s};
    QTest::newRow("soak: a leak of nothing known") << u"soak"_s << QStringList{u"--leak"_s, u"x"_s};
    QTest::newRow("soak: a leak without its kind") << u"soak"_s << QStringList{u"--leak"_s};
    QTest::newRow("soak: a seed without its number") << u"soak"_s << QStringList{u"--seed"_s};
    QTest::newRow("soak: a seed without its number, after the minutes")
        << u"soak"_s << QStringList{u"1"_s, u"--seed"_s};
    QTest::newRow("soak: two systems") << u"soak"_s << QStringList{u"--qt68"_s, u"--windows"_s};
    QTest::newRow("test-qt68: building only, and a test")
        << u"test-qt68"_s << QStringList{u"--only-build"_s, u"-R"_s, u"x"_s};
    QTest::newRow("windows/build: building only, and a test")
        << u"windows/build"_s << QStringList{u"--only-build"_s, u"-R"_s, u"x"_s};
    QTest::newRow("windows/build: no packages, and building only")
        << u"windows/build"_s << QStringList{u"--no-package"_s, u"--only-build"_s};
    QTest::newRow("bench: unknown option") << u"bench"_s << QStringList{u"--x"_s};
    QTest::newRow("bench: one argument too many") << u"bench"_s << QStringList{u"--peers"_s, u"x"_s};
}

void ScriptsTest::wrongArgumentsAreToldTheUsage()
{
    QFETCH(QString, script);
    QFETCH(QStringList, arguments);
    const Ending ending = RunWithoutTools(script, arguments);
    QVERIFY2(ending.Errors.startsWith("error: usage: scripts/" + script.toUtf8()), ending.Errors.constData());
    QCOMPARE(ending.ExitCode, 1);
}

void ScriptsTest::aDesktopThatIsEndedEndsItsCommand_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("by a request to terminate") << SIGTERM;
    QTest::newRow("by the terminal's end") << SIGHUP;
}

void ScriptsTest::aDesktopThatIsEndedEndsItsCommand()
{
    QFETCH(int, signal);
    QProcess desktop;
    desktop.start(QStringLiteral(TARNVIK_SCRIPTS "/on-desktop"),
                  {u"sh"_s, u"-c"_s, u"echo $$; exec sleep 600"_s});
    QVERIFY2(desktop.waitForReadyRead(tests::LongPatience), desktop.readAllStandardError().constData());
    const pid_t command = desktop.readAllStandardOutput().trimmed().toInt();
    QVERIFY(command > 0);

    kill(static_cast<pid_t>(desktop.processId()), signal);
    QVERIFY(desktop.waitForFinished(tests::LongPatience));
    const bool ended = QTest::qWaitFor([command] { return kill(command, 0) != 0; }, tests::Patience);
    if (!ended)
        kill(command, SIGKILL);
    QVERIFY2(ended, "the command goes on");
}

void ScriptsTest::eachWindowsProgramHasADesktopToItself()
{
    const TwoDesktops desktops("cat; exit 3");
    const auto one = desktops.StartProgram();
    QCOMPARE(NextLine(*one), "first"_ba);
    const auto another = desktops.StartProgram();
    QCOMPARE(NextLine(*another), "second"_ba);

    const auto oneTooMany = desktops.StartProgram();
    QCOMPARE(CodeAfterItsInput(*oneTooMany), 1);
    QCOMPARE(oneTooMany->readAllStandardError(), "error: more programs at a time than desktops\n"_ba);
    QCOMPARE(oneTooMany->readAllStandardOutput(), QByteArray());

    QCOMPARE(CodeAfterItsInput(*one), 3); // the program's own
    const auto next = desktops.StartProgram();
    QCOMPARE(NextLine(*next), "first"_ba);
    QCOMPARE(CodeAfterItsInput(*next), 3);
    QCOMPARE(CodeAfterItsInput(*another), 3);
}

void ScriptsTest::whatAWindowsProgramLeavesRunningDoesNotKeepTheDesktop()
{
    const TwoDesktops desktops("sleep 600 >/dev/null 2>&1 & echo $!");
    const auto leaving = desktops.StartProgram();
    QCOMPARE(NextLine(*leaving), "first"_ba);
    const pid_t left = NextLine(*leaving).toInt();
    QVERIFY(left > 0);
    const auto endIt = qScopeGuard([left] { kill(left, SIGKILL); });
    QCOMPARE(CodeAfterItsInput(*leaving), 0);

    const auto next = desktops.StartProgram();
    QCOMPARE(NextLine(*next), "first"_ba);
    const pid_t leftAgain = NextLine(*next).toInt();
    QVERIFY(leftAgain > 0);
    kill(leftAgain, SIGKILL);
    QCOMPARE(CodeAfterItsInput(*next), 0);
}

void ScriptsTest::withOneDesktopWindowsProgramsShareIt()
{
    const TwoDesktops desktops("cat; exit 3");
    const auto one = desktops.StartOnTheOnlyOne();
    QCOMPARE(NextLine(*one), "only"_ba);
    const auto another = desktops.StartOnTheOnlyOne();
    QCOMPARE(NextLine(*another), "only"_ba);
    QCOMPARE(CodeAfterItsInput(*one), 3);
    QCOMPARE(CodeAfterItsInput(*another), 3);
}

void ScriptsTest::scriptsThatInstallPackagesWaitForEachOther()
{
    TARNVIK_NEEDS(QFileInfo::exists(u"/var/lib/dpkg"_s), "how packages are installed on Debian");
    PretendedTools tools;
    tools.Add(u"dpkg-query"_s, "exit 1"); // nothing is installed
    tools.Add(u"sudo"_s, "exec \"$@\"");
    // What an installation starts, a service perhaps, goes on; it must not keep the others waiting.
    tools.Add(u"apt-get"_s, "case $2 in"
                            " update) echo at work; cat;;"
                            " install) sleep 600 >/dev/null 2>&1 & echo \"$! left, $*\" >&2;;"
                            " esac");
    const QStringList install = {
        u"bash"_s, u"-euc"_s,
        u"source \"$0\"/lib.sh; say() { :; }; install_packages something; echo installed"_s,
        QStringLiteral(TARNVIK_SCRIPTS)};

    const auto one = tools.Start(install);
    QCOMPARE(NextLine(*one), "at work"_ba);
    const auto another = tools.Start(install);
    QVERIFY(
        QTest::qWaitFor([&another] { return ChildWaitsForLock(another->processId()); }, tests::LongPatience));
    QCOMPARE(another->readAllStandardOutput(), QByteArray());

    QCOMPARE(CodeAfterItsInput(*one), 0);
    QCOMPARE(one->readAllStandardOutput(), "installed\n"_ba);
    const QByteArray installation = one->readAllStandardError();
    QVERIFY2(installation.endsWith(" something\n"), installation.constData());
    const pid_t left = installation.split(' ').first().toInt();
    QVERIFY(left > 0);
    const auto endIt = qScopeGuard([left] { kill(left, SIGKILL); });

    QCOMPARE(NextLine(*another), "at work"_ba);
    QCOMPARE(CodeAfterItsInput(*another), 0);
    const pid_t leftAgain = another->readAllStandardError().split(' ').first().toInt();
    QVERIFY(leftAgain > 0);
    kill(leftAgain, SIGKILL);
}

TARNVIK_TEST_MAIN(ScriptsTest, QCoreApplication)

#include "ScriptsTest.moc"
