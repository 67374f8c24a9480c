// SPDX-License-Identifier: MIT
// The handler writes to the streams of its process, so each test runs this program again, with the argument
// "child" and the name of what the child is to log, and reads the child's two channels through pipes.
#include "TarnvikControl/LogHandler.h"

#include "tools/IsolatedFolders.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int ChildExitCode = 7; // tells an ordinary end from every other
constexpr int UnknownName = 98;
constexpr int NoInput = 99;
constexpr int Threads = 4;
constexpr int LinesPerThread = 500;

const QString Letters = u"größe 12 µs, 你好 😀"_s;

// --- The child

/// Calls the handler as Qt does, with a context that must appear nowhere.
void Handle(QtMsgType type, const QString &message)
{
    const QMessageLogContext context("SecretFile.cpp", 4711, "SecretFunction()", "SecretCategory");
    ConsoleMessageHandler(type, context, message);
}

void LogFromThreads()
{
    std::vector<std::thread> threads;
    threads.reserve(Threads);
    for (int thread = 0; thread < Threads; ++thread) {
        threads.emplace_back([thread] {
            for (int line = 0; line < LinesPerThread; ++line) {
                const QString text = u"thread %1 line %2 %3"_s.arg(thread).arg(line).arg(Letters);
                Handle(QtInfoMsg, text);
                Handle(QtWarningMsg, text);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

/// Logs and then waits for a line on its standard input: what the test sees before it sends one was written
/// while the process ran.
void LogAndWait(QtMsgType type)
{
    Handle(type, u"at once"_s);
    std::array<char, 16> line = {};
    if (!std::fgets(line.data(), static_cast<int>(line.size()), stdin))
        std::exit(NoInput);
}

/// Texts that are logged on both channels; the tests' rows bear the same names.
struct Text
{
    const char *Name;
    QString Content;
};
const std::vector<Text> Texts = {
    {"letters beyond ASCII", Letters},
    {"percent signs are no format", u"100 %s %n %1"_s},
    {"an empty text", QString()},
    {"several lines get one beginning", u"one\ntwo"_s},
    {"a million letters", QString(1'000'000, u'x')},
};

struct Action
{
    const char *Name;
    void (*Log)();
};
const std::vector<Action> Actions = {
    {"debug", [] { qDebug("disk full"); }},
    {"info", [] { qInfo("disk full"); }},
    {"warning", [] { qWarning("disk full"); }},
    {"critical", [] { qCritical("disk full"); }},
    {"fatal does not end the process", [] { Handle(QtFatalMsg, u"disk full"_s); }},
    {"any other type", [] { Handle(static_cast<QtMsgType>(7), u"disk full"_s); }},
    {"every type",
     [] {
         for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg, QtFatalMsg})
             Handle(type, u"text"_s);
     }},
    {"threads", LogFromThreads},
    {"a debug line", [] { LogAndWait(QtDebugMsg); }},
    {"an info line", [] { LogAndWait(QtInfoMsg); }},
    {"a warning", [] { LogAndWait(QtWarningMsg); }},
    {"qFatal", [] { qFatal("disk full"); }},
};

int RunChild(const char *name)
{
    qInstallMessageHandler(ConsoleMessageHandler);
    for (const Action &action : Actions) {
        if (std::strcmp(action.Name, name) == 0) {
            action.Log();
            return ChildExitCode;
        }
    }
    for (const Text &text : Texts) {
        if (std::strcmp(text.Name, name) == 0) {
            Handle(QtInfoMsg, text.Content);
            Handle(QtWarningMsg, text.Content);
            return ChildExitCode;
        }
    }
    return UnknownName;
}

// --- The test

struct Output
{
    QByteArray Standard;
    QByteArray Error;
};

/// The line ends of the system's text streams become "\n".
QByteArray WithPlainLineEnds(QByteArray text)
{
    return text.replace("\r\n", "\n");
}

void StartChild(QProcess &child, const QString &what)
{
    child.start(QCoreApplication::applicationFilePath(), QStringList{u"child"_s, what});
}

/// Runs the child to its end, which must be an ordinary one.
Output RunToEnd(const QString &what)
{
    QProcess child;
    StartChild(child, what);
    if (!child.waitForFinished() || child.exitStatus() != QProcess::NormalExit ||
        child.exitCode() != ChildExitCode) {
        const QByteArray error = "the child did not end as it should: " + child.errorString().toUtf8();
        return {error, error};
    }
    return {WithPlainLineEnds(child.readAllStandardOutput()),
            WithPlainLineEnds(child.readAllStandardError())};
}

/// Takes the beginning off that every line on the error channel has; the time must lie between the two.
/// Something else when the beginning is wrong.
QByteArray WithoutBeginning(const QByteArray &line, const QDateTime &earliest, const QDateTime &latest)
{
    for (QDateTime time = earliest; time <= latest.addSecs(1); time = time.addSecs(1)) {
        const QByteArray beginning = "TarnvikControl " + time.toString(u"hh:mm:ss"_s).toLatin1() + ": ";
        if (line.startsWith(beginning))
            return line.mid(beginning.size());
    }
    return "wrong beginning: " + line;
}

} // namespace

class LogHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void eachTypeHasItsChannelAndFormat_data();
    void eachTypeHasItsChannelAndFormat();
    void theTextIsWrittenAsItIs_data();
    void theTextIsWrittenAsItIs();
    void theTimeIsTheLocalTimeAsTwoDigitsEach();
    void nothingOfTheContextIsPrinted();
    void aLineReachesAPipeBeforeTheProcessEnds_data();
    void aLineReachesAPipeBeforeTheProcessEnds();
    void linesOfSeveralThreadsStayWhole();
    void qFatalIsWrittenBeforeQtEndsTheProcess();
};

void LogHandlerTest::eachTypeHasItsChannelAndFormat_data()
{
    QTest::addColumn<bool>("toError");
    QTest::newRow("debug") << false;
    QTest::newRow("info") << false;
    QTest::newRow("warning") << true;
    QTest::newRow("critical") << true;
    QTest::newRow("fatal does not end the process") << true;
    QTest::newRow("any other type") << true;
}

void LogHandlerTest::eachTypeHasItsChannelAndFormat()
{
    QFETCH(bool, toError);
    const QDateTime before = QDateTime::currentDateTime();
    const Output output = RunToEnd(QString::fromLatin1(QTest::currentDataTag()));
    const QDateTime after = QDateTime::currentDateTime();
    if (toError) {
        QCOMPARE(output.Standard, QByteArray());
        QCOMPARE(WithoutBeginning(output.Error, before, after), QByteArray("disk full\n"));
    } else {
        QCOMPARE(output.Standard, QByteArray("disk full\n"));
        QCOMPARE(output.Error, QByteArray());
    }
}

void LogHandlerTest::theTextIsWrittenAsItIs_data()
{
    QTest::addColumn<QString>("text");
    for (const Text &text : Texts)
        QTest::newRow(text.Name) << text.Content;
}

void LogHandlerTest::theTextIsWrittenAsItIs()
{
    QFETCH(QString, text);
    const QDateTime before = QDateTime::currentDateTime();
    const Output output = RunToEnd(QString::fromLatin1(QTest::currentDataTag()));
    const QDateTime after = QDateTime::currentDateTime();
    const QByteArray line = text.toLocal8Bit() + '\n';
    QVERIFY2(output.Standard == line, output.Standard.left(200).constData());
    const QByteArray error = WithoutBeginning(output.Error, before, after);
    QVERIFY2(error == line, error.left(200).constData());
}

void LogHandlerTest::theTimeIsTheLocalTimeAsTwoDigitsEach()
{
    // main() sets a time zone that differs from UTC where the environment decides on it.
    const QDateTime before = QDateTime::currentDateTime();
    const Output output = RunToEnd(u"warning"_s);
    const QDateTime after = QDateTime::currentDateTime();
    static const QRegularExpression format(
        u"\\ATarnvikControl ([0-9]{2}:[0-9]{2}:[0-9]{2}): disk full\n\\z"_s);
    const QRegularExpressionMatch match = format.match(QString::fromLocal8Bit(output.Error));
    QVERIFY2(match.hasMatch(), output.Error.constData());
    const QTime time = QTime::fromString(match.captured(1), u"hh:mm:ss"_s);
    QVERIFY(time.isValid());
    constexpr int secondsOfDay = 24 * 60 * 60; // the run may go over midnight
    const int sinceStart = (before.time().secsTo(time) + secondsOfDay + 1) % secondsOfDay - 1;
    QVERIFY2(sinceStart >= -1 && sinceStart <= before.secsTo(after) + 1, output.Error.constData());
}

void LogHandlerTest::nothingOfTheContextIsPrinted()
{
    const Output output = RunToEnd(u"every type"_s);
    QCOMPARE(output.Standard, QByteArray("text\ntext\n"));
    QCOMPARE(output.Error.count('\n'), 3);
    QVERIFY2(!output.Error.contains("Secret") && !output.Error.contains("4711"), output.Error.constData());
}

void LogHandlerTest::aLineReachesAPipeBeforeTheProcessEnds_data()
{
    QTest::addColumn<QProcess::ProcessChannel>("channel");
    QTest::newRow("a debug line") << QProcess::StandardOutput;
    QTest::newRow("an info line") << QProcess::StandardOutput;
    QTest::newRow("a warning") << QProcess::StandardError;
}

void LogHandlerTest::aLineReachesAPipeBeforeTheProcessEnds()
{
    QFETCH(QProcess::ProcessChannel, channel);
    QProcess child;
    child.setReadChannel(channel);
    StartChild(child, QString::fromLatin1(QTest::currentDataTag()));
    QTRY_VERIFY(child.canReadLine());
    QCOMPARE(child.state(), QProcess::Running);
    QVERIFY(WithPlainLineEnds(child.readAll()).endsWith("at once\n"));
    child.write("go on\n");
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitCode(), ChildExitCode);
}

void LogHandlerTest::linesOfSeveralThreadsStayWhole()
{
    const QDateTime before = QDateTime::currentDateTime();
    const Output output = RunToEnd(u"threads"_s);
    const QDateTime after = QDateTime::currentDateTime();
    QList<QByteArray> expected;
    for (int thread = 0; thread < Threads; ++thread) {
        for (int line = 0; line < LinesPerThread; ++line)
            expected.append(u"thread %1 line %2 %3"_s.arg(thread).arg(line).arg(Letters).toLocal8Bit());
    }
    expected.append(QByteArray()); // behind the last line's end
    std::sort(expected.begin(), expected.end());

    QList<QByteArray> standard = output.Standard.split('\n');
    std::sort(standard.begin(), standard.end());
    QCOMPARE(standard, expected);

    QList<QByteArray> error = output.Error.split('\n');
    for (QByteArray &line : error) {
        if (!line.isEmpty())
            line = WithoutBeginning(line, before, after);
    }
    std::sort(error.begin(), error.end());
    QCOMPARE(error, expected);
}

void LogHandlerTest::qFatalIsWrittenBeforeQtEndsTheProcess()
{
    QProcess child;
    const QDateTime before = QDateTime::currentDateTime();
    StartChild(child, u"qFatal"_s);
    QVERIFY(child.waitForFinished());
    QVERIFY(child.exitStatus() == QProcess::CrashExit || child.exitCode() != ChildExitCode);
    const QByteArray error = WithPlainLineEnds(child.readAllStandardError());
    QCOMPARE(WithoutBeginning(error, before, QDateTime::currentDateTime()), QByteArray("disk full\n"));
}

int main(int argc, char **argv)
{
    qputenv("TZ", "TST-05:30");
    if (argc == 3 && std::strcmp(argv[1], "child") == 0)
        return RunChild(argv[2]);
    const tools::IsolatedFolders isolation;
    const QCoreApplication application(argc, argv);
    LogHandlerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "LogHandlerTest.moc"
