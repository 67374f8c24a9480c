// SPDX-License-Identifier: MIT
// Setting the runner up, what it logs of the output, and its hooks.
#include "TarnvikControl/QAsyncWatchExec.h"

#include "tests/TarnvikControl/RunnerTestTools.h"
#include "tests/support/MessageLog.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QMetaClassInfo>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using tests::HookCalls;
using tests::RecordHook;
using tests::ScriptedProgram;
using tests::Timeline;

namespace {

void EmptyProgram(void * /*context*/, QString &program, QString & /*folder*/, QStringList & /*arguments*/)
{
    program.clear();
}

void ChangeEverything(void *context, QString &program, QString &workingDirectory, QStringList &arguments)
{
    program = ScriptedProgram;
    workingDirectory = *static_cast<QString *>(context);
    arguments = QStringList{u"out:changed"_s, u"wait"_s};
}

/// The context is a list of the starts' arguments, from which each start takes its own.
void TakeNextArguments(void *context, QString & /*program*/, QString & /*workingDirectory*/,
                       QStringList &arguments)
{
    arguments = static_cast<QList<QStringList> *>(context)->takeFirst();
}

} // namespace

class QAsyncWatchExecTest : public tests::RunnerTest
{
    Q_OBJECT

private slots:
    void carriesItsClassInformation();
    void aCopyIsAFreshRunnerWithTheSameParent();
    void startWithoutProgramFails();
    void stopBeforeStartDoesNothing();
    void aLoopThatNothingWasSetUpForAsksForNoStart();
    void startRunsTheProgramAndReportsEachState();
    void theWorkingFolderIsTheProgramsOwnUnlessGiven_data();
    void theWorkingFolderIsTheProgramsOwnUnlessGiven();
    void outputIsLoggedWithoutLineBreaks_data();
    void outputIsLoggedWithoutLineBreaks();
    void aLetterThatArrivesInTwoPiecesIsNotDamaged();
    void halfALetterAtTheEndDoesNotReachTheNextStart_data();
    void halfALetterAtTheEndDoesNotReachTheNextStart();
    void longOutputIsLoggedWhole();
    void theStartHookIsCalledOnTheGuiThreadAndChangesWhatIsStarted();
    void aStartHookThatEmptiesTheProgramCountsAsAnEnd();
    void theStopHookGetsItsContextAndWhatItChangesCountsForTheNextStart();
};

void QAsyncWatchExecTest::carriesItsClassInformation()
{
    const QMetaObject &metaObject = QAsyncWatchExec::staticMetaObject;
    QCOMPARE(metaObject.classInfo(metaObject.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QCOMPARE(metaObject.classInfo(metaObject.indexOfClassInfo("Status")).value(), "Development");
}

void QAsyncWatchExecTest::aCopyIsAFreshRunnerWithTheSameParent()
{
    QObject parent;
    auto *original = new QAsyncWatchExec;
    original->setParent(&parent);
    original->Program = ScriptedProgram;
    original->StopHook = RecordHook;
    const QAsyncWatchExec copy(*original);
    QCOMPARE(copy.parent(), &parent);
    QVERIFY(copy.Program.isEmpty());
    QVERIFY(!copy.StopHook);
    QVERIFY(!copy.isRunning());
    QVERIFY(QMetaType::fromType<QAsyncWatchExec>().isValid());
}

void QAsyncWatchExecTest::startWithoutProgramFails()
{
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    QVERIFY(!runner.Start());
    QVERIFY(!runner.isRunning());
    QVERIFY(!runner.isProcessRunning());
    QVERIFY(log.messages().isEmpty());
}

void QAsyncWatchExecTest::stopBeforeStartDoesNothing()
{
    QAsyncWatchExec runner;
    runner.StopHook = RecordHook;
    runner.Program = ScriptedProgram;
    runner.Stop();
    QVERIFY(HookCalls.isEmpty());
}

void QAsyncWatchExecTest::aLoopThatNothingWasSetUpForAsksForNoStart()
{
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    QSignalSpy asked(&runner, SIGNAL(Signal_Start()));
    runner.start(); // the thread's own, which everybody can call
    QVERIFY(runner.wait(tests::Patience));
    QCOMPARE(asked.size(), 0);
}

void QAsyncWatchExecTest::startRunsTheProgramAndReportsEachState()
{
    QAsyncWatchExec runner;
    QSignalSpy states(&runner, SIGNAL(stateChanged(int)));
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"wait"_s};
    QVERIFY(runner.Start());
    QVERIFY(runner.isRunning());
    QTRY_COMPARE(states.count(), 2);
    QCOMPARE(states.at(0).at(0).toInt(), static_cast<int>(QProcess::Starting));
    QCOMPARE(states.at(1).at(0).toInt(), static_cast<int>(QProcess::Running));
    QVERIFY(runner.isProcessRunning());
    runner.Stop();
    QVERIFY(!runner.isProcessRunning());
    QVERIFY(!runner.isRunning());
}

void QAsyncWatchExecTest::theWorkingFolderIsTheProgramsOwnUnlessGiven_data()
{
    QTest::addColumn<bool>("given");
    QTest::newRow("not given") << false;
    QTest::newRow("given") << true;
}

void QAsyncWatchExecTest::theWorkingFolderIsTheProgramsOwnUnlessGiven()
{
    QFETCH(bool, given);
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    const auto restore = qScopeGuard([&before] { QDir::setCurrent(before); });
    QVERIFY(QDir::setCurrent(QDir::rootPath())); // neither of the two
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"folder"_s, u"wait"_s};
    runner.StartHook = RecordHook;
    if (given)
        runner.WorkingDirectory = folder.path();
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.messages().size(), 1);
    const QString expected = given ? folder.path() : QCoreApplication::applicationDirPath();
    QCOMPARE(HookCalls.at(0).WorkingDirectory, expected);
    QCOMPARE(QDir(log.messages().at(0).Text).canonicalPath(), QDir(expected).canonicalPath());
}

void QAsyncWatchExecTest::outputIsLoggedWithoutLineBreaks_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("logged");
    QTest::newRow("two lines with carriage return and line feed in one chunk")
        << "out:first line\\r\\nsecond line\\r\\n"
        << "first linesecond line";
    QTest::newRow("the same on the error channel") << "err:first line\\r\\nsecond line\\r\\n"
                                                   << "first linesecond line";
    QTest::newRow("line feeds only") << "out:a\\nb\\n\\nc"
                                     << "abc";
    QTest::newRow("letters beyond ASCII")
        << QString::fromUtf8("out:grüße 你好\\n") << QString::fromUtf8("grüße 你好");
    QTest::newRow("tags and placeholders are plain text") << "out:<ERROR> %1 100 %s\\n"
                                                          << "<ERROR> %1 100 %s";
    QTest::newRow("quotes and backslashes stay as they are") << "out:say \"hello\" \\t"
                                                             << "say \"hello\" \\t";
    QTest::newRow("blanks at both ends stay") << "out:  x  \\n"
                                              << "  x  ";
}

void QAsyncWatchExecTest::outputIsLoggedWithoutLineBreaks()
{
    QFETCH(QString, step);
    QFETCH(QString, logged);
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{step, u"wait"_s};
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.messages().size(), 1);
    QCOMPARE(log.messages().at(0).Type, QtInfoMsg);
    QCOMPARE(log.messages().at(0).Text, logged);
}

void QAsyncWatchExecTest::aLetterThatArrivesInTwoPiecesIsNotDamaged()
{
    // More than the pipe takes at once, in letters of three bytes: the pipe's end cuts some.
    const tests::MessageLog log;
    const QString text(60000, QChar(0x4F60));
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{QString::fromUtf8("many:60000:你"), u"wait"_s};
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.texts(QtInfoMsg).join(QString()).size(), text.size());
    QCOMPARE(log.texts(QtInfoMsg).join(QString()), text);
}

void QAsyncWatchExecTest::halfALetterAtTheEndDoesNotReachTheNextStart_data()
{
    QTest::addColumn<QString>("channel");
    QTest::newRow("output") << u"out:"_s;
    QTest::newRow("errors") << u"err:"_s;
}

void QAsyncWatchExecTest::halfALetterAtTheEndDoesNotReachTheNextStart()
{
    QFETCH(QString, channel);
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Second = 10ms;
    runner.Program = ScriptedProgram;
    QList<QStringList> starts = {{channel + u"first\\h"_s}, {channel + u"second"_s, u"wait"_s}};
    runner.StartHook = TakeNextArguments;
    runner.StartHookContext = &starts;
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.texts(QtInfoMsg), QStringList({u"first"_s, u"second"_s}));
}

void QAsyncWatchExecTest::longOutputIsLoggedWhole()
{
    constexpr int lines = 100000;
    Report->SetOption("FLOOD_LINES", QByteArray::number(lines));
    qsizetype expected = 0;
    for (int line = 1; line <= lines; ++line)
        expected += QString::fromUtf8("stand-in: line %1 of %2, as fast as it is taken; grüße, 你好")
                        .arg(line)
                        .arg(lines)
                        .size();
    const tests::MessageLog log;
    QAsyncWatchExec runner;
    runner.Program = tools::StandInProgram();
    QVERIFY(runner.Start());
    const auto loggedSize = [&log] {
        qsizetype size = 0;
        const QList<tests::MessageLog::Message> messages = log.messages();
        for (const auto &message : messages)
            size += message.Text.size();
        return size;
    };
    QTRY_COMPARE_WITH_TIMEOUT(loggedSize(), expected, tests::LongPatience);
}

void QAsyncWatchExecTest::theStartHookIsCalledOnTheGuiThreadAndChangesWhatIsStarted()
{
    const tests::MessageLog log;
    QString folder = QDir::tempPath();
    QAsyncWatchExec runner;
    runner.Program = u"/does/not/exist"_s;
    runner.StartHook = RecordHook;
    runner.StartHookContext = &folder;
    QVERIFY(runner.Start());
    QTRY_COMPARE(HookCalls.size(), 2); // the first start and the one after its end
    QCOMPARE(HookCalls.at(0).Context, &folder);
    QCOMPARE(HookCalls.at(0).Program, u"/does/not/exist"_s);
    QCOMPARE(HookCalls.at(0).Thread, QThread::currentThread());
    runner.StartHook = ChangeEverything;
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.isProcessRunning());
    QTRY_COMPARE(log.texts(QtInfoMsg), QStringList{u"changed"_s});
    QCOMPARE(runner.WorkingDirectory, folder);
}

void QAsyncWatchExecTest::aStartHookThatEmptiesTheProgramCountsAsAnEnd()
{
    const tests::MessageLog log; // the process complains about the empty name
    QAsyncWatchExec runner;
    runner.Second = 10ms;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"wait"_s};
    runner.StartHook = EmptyProgram;
    const Timeline timeline(runner);
    QVERIFY(runner.Start());
    QTRY_VERIFY(timeline.startCount() >= 4);
    runner.StartHook = nullptr;
    runner.Program = ScriptedProgram;
    QTRY_VERIFY(runner.isProcessRunning());
}

void QAsyncWatchExecTest::theStopHookGetsItsContextAndWhatItChangesCountsForTheNextStart()
{
    const tests::MessageLog log;
    QString folder = QDir::tempPath();
    QAsyncWatchExec runner;
    runner.Program = ScriptedProgram;
    runner.Arguments = QStringList{u"wait"_s};
    runner.StopHook = RecordHook;
    runner.StopHookContext = &folder;
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.isProcessRunning());
    runner.Stop();
    QCOMPARE(HookCalls.size(), 1);
    QCOMPARE(HookCalls.at(0).Context, &folder);
    QCOMPARE(HookCalls.at(0).Program, ScriptedProgram);
    QCOMPARE(HookCalls.at(0).Arguments, QStringList{u"wait"_s});
    QVERIFY(runner.Start());
    QTRY_VERIFY(runner.isProcessRunning());
    runner.StopHook = ChangeEverything;
    runner.Stop();
    QVERIFY(log.texts(QtInfoMsg).isEmpty());
    QVERIFY(runner.Start());
    QTRY_COMPARE(log.texts(QtInfoMsg), QStringList{u"changed"_s});
}

TARNVIK_TEST_MAIN(QAsyncWatchExecTest, QCoreApplication)

#include "QAsyncWatchExecTest.moc"
