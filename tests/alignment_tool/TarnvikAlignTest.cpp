// SPDX-License-Identifier: MIT
// What all commands of the command-line program share: help, wrong usage, language, lost output.
#include "Common_Files/Version.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

class TarnvikAlignTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void helpNamesEveryCommand();
    void theVersionIsThatOfTheProgram();
    void theHelpOfACommandBeginsWithAnExample_data();
    void theHelpOfACommandBeginsWithAnExample();
    void wrongUsageIsOneLineAndExitCode2_data();
    void wrongUsageIsOneLineAndExitCode2();
#ifdef Q_OS_LINUX // Windows takes the language from the user's settings, not from the environment
    void itSpeaksTheLanguageOfTheSystem();
    void outputThatIsLostIsAnError_data();
    void outputThatIsLostIsAnError();
    void aFileThatIsLostIsAnError();
    void errorsAndOutputComeInTheirOrder();
#endif
};

void TarnvikAlignTest::helpNamesEveryCommand()
{
    const tests::ToolRun run = Run({u"--help"_s});
    QCOMPARE(run.ExitCode, 0);
    QCOMPARE(run.Errors, QByteArray());
    for (const char *command :
         {"  list ", "  show ", "  verify ", "  diff ", "  merge ", "  remove ", "  export ", "  import "})
        QVERIFY2(run.Output.contains(command), command);
}

void TarnvikAlignTest::theVersionIsThatOfTheProgram()
{
    const tests::ToolRun run = Run({u"--version"_s});
    QCOMPARE(run.Output,
             "TarnvikAlign " + VersionText(PackVersion(platform::ReadProductVersion())).toUtf8() + '\n');
    QCOMPARE(run.ExitCode, 0);
}

void TarnvikAlignTest::theHelpOfACommandBeginsWithAnExample_data()
{
    QTest::addColumn<QString>("command");
    for (const char *command : {"list", "show", "verify", "diff", "merge", "remove", "export", "import"})
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TarnvikAlignTest::theHelpOfACommandBeginsWithAnExample()
{
    QFETCH(QString, command);
    const tests::ToolRun run = Run({command, u"--help"_s});
    QCOMPARE(run.ExitCode, 0);
    QVERIFY2(run.Output.startsWith("Example: TarnvikAlign " + command.toLatin1() + ' '),
             run.Output.constData());
    QVERIFY2(run.Output.contains("\nUsage: TarnvikAlign " + command.toLatin1() + " [options] "),
             run.Output.constData());
}

void TarnvikAlignTest::wrongUsageIsOneLineAndExitCode2_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no command") << QStringList()
                                << QByteArray("TarnvikAlign: which command?; see \"TarnvikAlign --help\"\n");
    QTest::newRow("an unknown command")
        << QStringList{u"li\x1Bst"_s}
        << QByteArray("TarnvikAlign: there is no command \"li\\x1Bst\"; see \"TarnvikAlign --help\"\n");
    QTest::newRow("an unknown option")
        << QStringList{u"list"_s, u"--colour"_s}
        << QByteArray("TarnvikAlign: Unknown option 'colour'; see \"TarnvikAlign list --help\"\n");
}

void TarnvikAlignTest::wrongUsageIsOneLineAndExitCode2()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, message);
    const tests::ToolRun run = Run(arguments);
    QCOMPARE(run.Errors, message);
    QCOMPARE(run.Output, QByteArray());
    QCOMPARE(run.ExitCode, 2);
}

#ifdef Q_OS_LINUX
void TarnvikAlignTest::itSpeaksTheLanguageOfTheSystem()
{
    const tests::ToolRun run = Run({u"--help"_s}, {}, {u"LC_ALL=de_DE.UTF-8"_s, u"LANGUAGE=de"_s});
    QVERIFY2(run.Output.startsWith("Aufruf: TarnvikAlign"), run.Output.constData());
}

void TarnvikAlignTest::outputThatIsLostIsAnError_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::newRow("a full disk") << u">/dev/full"_s;
    QTest::newRow("a closed pipe") << u"| true"_s;
    QTest::newRow("a closed standard output") << u">&-"_s;
}

void TarnvikAlignTest::outputThatIsLostIsAnError()
{
    QFETCH(QString, redirection);
    QList<tests::FileTable> tables; // more than a buffer and a pipe hold
    for (int i = 0; i < 2000; ++i)
        tables.append({QByteArray::number(i), 1});
    QVERIFY(tests::WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, tables));
    QProcess shell;
    shell.setWorkingDirectory(Folder->path());
    shell.start(u"bash"_s, {u"-c"_s, u"set -o pipefail; \"%1\" list a.ad %2"_s.arg(
                                         QStringLiteral(ALIGNMENT_TOOL), redirection)});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitCode(), 3);
    QCOMPARE(shell.readAllStandardError(),
             QByteArray(
                 "TarnvikAlign: standard output cannot be written; is the disk full, or the reader gone?\n"));
}

void TarnvikAlignTest::aFileThatIsLostIsAnError()
{
    QVERIFY(tests::WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}, {"2", 1}}));
    QProcess shell;
    shell.setWorkingDirectory(Folder->path());
    shell.start(u"bash"_s, {u"-c"_s, u"\"%1\" remove a.ad --id 1 --output - >/dev/full"_s.arg(
                                         QStringLiteral(ALIGNMENT_TOOL))});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.readAllStandardError(), QByteArray("TarnvikAlign: File Error\n"));
    QCOMPARE(shell.exitCode(), 3);
}

void TarnvikAlignTest::errorsAndOutputComeInTheirOrder()
{
    QVERIFY(tests::WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 1}}));
    QProcess shell;
    shell.setWorkingDirectory(Folder->path());
    shell.start(u"bash"_s,
                {u"-c"_s, u"\"%1\" verify a.ad no.ad a.ad 2>&1"_s.arg(QStringLiteral(ALIGNMENT_TOOL))});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.readAllStandardOutput(),
             QByteArray("a.ad: ok, 1 table\n"
                        "TarnvikAlign: no.ad: there is no such file; check the name\n"
                        "a.ad: ok, 1 table\n"));
}
#endif

TARNVIK_TEST_MAIN(TarnvikAlignTest, QCoreApplication)

#include "TarnvikAlignTest.moc"
