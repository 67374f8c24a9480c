// SPDX-License-Identifier: MIT
// The scripts: what they say to wrong arguments, and what they leave behind.
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

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

} // namespace

class ScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void wrongArgumentsAreToldTheUsage_data();
    void wrongArgumentsAreToldTheUsage();
    void aDesktopThatIsEndedEndsItsCommand_data();
    void aDesktopThatIsEndedEndsItsCommand();
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

TARNVIK_TEST_MAIN(ScriptsTest, QCoreApplication)

#include "ScriptsTest.moc"
