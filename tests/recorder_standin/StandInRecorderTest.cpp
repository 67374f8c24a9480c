// SPDX-License-Identifier: MIT
// The stand-in recorder as its users see it: a process, its environment, its channels and its files.
#include "tests/recorder_standin/StandIn.h"
#include "tests/support/Patience.h"
#include "tests/support/SendQuit.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSet>
#include <QSignalSpy>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;

using tests::ReadStatus;
using tests::SendQuit;
using tests::StandIn;

namespace {

constexpr int Never = 1'000'000; // milliseconds; longer than any test

qint64 SteadyMicroseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

QString StatusLine(quint32 sequenceNr)
{
    return u"stand-in: status %1 written"_s.arg(sequenceNr);
}

} // namespace

class StandInRecorderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theStatusFileHoldsAllFourValues();
    void aMessageOfOnesOwnIsReadBackAsItWasGiven_data();
    void aMessageOfOnesOwnIsReadBackAsItWasGiven();
    void theSequenceNumberRisesByOneWithEachChange();
    void withoutMessageOfOnesOwnTheBuiltInOnesFollowEachOther();
    void theFileIsRewrittenInPlaceSoThatAWatcherKeepsReporting();
    void theDefaultIntervalIsASecond();
    void withInterval0ItStaysSilent();
    void withStatusNoneNoFileIsWritten();
    void aDamagedFileCannotBeRead();
    void aHugeFileHas64MiB();
    void bothOutputChannelsAreUsed();
    void itEndsByItselfWithACode_data();
    void itEndsByItselfWithACode();
    void itCrashes();
    void itEndsOnTheQuitRequest();
    void itGoesOnWhenItIsToIgnoreTheQuitRequest();
    void itEndsWhenAskedToTerminate();
    void itGoesOnWhenItIsToIgnoreTheRequestToTerminate();
    void aFloodArrivesWholeAndInOrder();
    void theReportTellsTimeProcessAndEvents();
    void withoutReportFileNothingIsReported();
    void aValueThatMakesNoSenseIsRefused_data();
    void aValueThatMakesNoSenseIsRefused();

private:
    std::unique_ptr<tools::RecorderReport> Report;
};

void StandInRecorderTest::init()
{
    QFile::remove(RecorderStatusFile());
    Report = std::make_unique<tools::RecorderReport>();
}

void StandInRecorderTest::cleanup()
{
    Report.reset();
}

void StandInRecorderTest::theStatusFileHoldsAllFourValues()
{
    Report->SetOption("INTERVAL_MS", QByteArray::number(Never));
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(1)));
    const tests::StandInStatus status = ReadStatus();
    QCOMPARE(status.SequenceNr, 1U);
    QCOMPARE(status.LastAction, 1);
    QCOMPARE(status.LastActionResult, 0);
    QCOMPARE(status.Message, u"<INFO>Recorder started"_s);
}

void StandInRecorderTest::aMessageOfOnesOwnIsReadBackAsItWasGiven_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("plain") << "Recording";
    QTest::newRow("tags") << "<WARNING><GET>Time";
    QTest::newRow("a comma is no list") << "one, two, three";
    QTest::newRow("quotes, semicolons and backslashes") << "say \"yes\"; C:\\records\\new; 50 %";
    QTest::newRow("several lines") << "one\ntwo\n\nfour";
    QTest::newRow("letters beyond ASCII") << u"größe 12 µs, 你好 😀"_s;
    QTest::newRow("blanks at both ends") << "  inside  ";
}

void StandInRecorderTest::aMessageOfOnesOwnIsReadBackAsItWasGiven()
{
    QFETCH(QString, message);
    Report->SetOption("INTERVAL_MS", QByteArray::number(Never));
    Report->SetOption("MESSAGE", message.toLocal8Bit());
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(1)));
    QCOMPARE(ReadStatus().Message, message);
}

void StandInRecorderTest::theSequenceNumberRisesByOneWithEachChange()
{
    Report->SetOption("INTERVAL_MS", "20");
    Report->SetOption("EXIT_AFTER_MS", "500");
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(0));
    const QStringList lines = recorder.standardLines();
    QVERIFY(lines.size() > 5);
    for (qsizetype i = 0; i < lines.size(); ++i)
        QCOMPARE(lines[i], StatusLine(static_cast<quint32>(i + 1)));
    QCOMPARE(ReadStatus().SequenceNr, static_cast<quint32>(lines.size()));
}

void StandInRecorderTest::withoutMessageOfOnesOwnTheBuiltInOnesFollowEachOther()
{
    Report->SetOption("INTERVAL_MS", "50");
    StandIn recorder;
    recorder.Start();
    QSet<QString> messages;
    bool multiLine = false;
    const auto read = [&] {
        const QString message = ReadStatus().Message;
        if (!message.isEmpty())
            messages.insert(message);
        multiLine = multiLine || message.count(u'\n') >= 2;
        return messages.size() >= 5 && multiLine;
    };
    QTRY_VERIFY_WITH_TIMEOUT(read(), tests::Patience);
    for (const QString &message : std::as_const(messages))
        QVERIFY2(message.startsWith(u'<'), qPrintable(message));
}

void StandInRecorderTest::theFileIsRewrittenInPlaceSoThatAWatcherKeepsReporting()
{
    QFile file(RecorderStatusFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QFileSystemWatcher watcher({RecorderStatusFile()});
    QCOMPARE(watcher.files(), QStringList{RecorderStatusFile()});
    QSignalSpy changes(&watcher, &QFileSystemWatcher::fileChanged);
    Report->SetOption("INTERVAL_MS", "50");
    StandIn recorder;
    recorder.Start();
    for (const quint32 sequenceNr : {2U, 4U, 6U, 8U}) {
        QTRY_VERIFY(recorder.HasPrinted(StatusLine(sequenceNr)));
        changes.clear();
        QTRY_VERIFY(!changes.isEmpty());
        QCOMPARE(watcher.files(), QStringList{RecorderStatusFile()});
    }
}

void StandInRecorderTest::theDefaultIntervalIsASecond()
{
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(1)));
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(recorder.HasPrinted(StatusLine(2)), tests::Patience);
    // Generous: a busy machine may show us the first line late.
    QVERIFY2(timer.elapsed() > 500, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(timer.elapsed() < 5'000, qPrintable(QString::number(timer.elapsed())));
}

void StandInRecorderTest::withInterval0ItStaysSilent()
{
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("EXIT_AFTER_MS", "1500");
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(0));
    QCOMPARE(recorder.standardLines(), QStringList());
    QCOMPARE(recorder.errorLines(), QStringList());
    QVERIFY(!QFile::exists(RecorderStatusFile()));
}

void StandInRecorderTest::withStatusNoneNoFileIsWritten()
{
    Report->SetOption("INTERVAL_MS", "20");
    Report->SetOption("STATUS", "none");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(5)));
    QVERIFY(!QFile::exists(RecorderStatusFile()));
}

void StandInRecorderTest::aDamagedFileCannotBeRead()
{
    Report->SetOption("INTERVAL_MS", QByteArray::number(Never));
    Report->SetOption("STATUS", "damaged");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(1)));
    QVERIFY(QFileInfo(RecorderStatusFile()).size() > 0);
    const QSettings status(RecorderStatusFile(), QSettings::IniFormat);
    // The first access to a key notices the errors.
    QCOMPARE(status.value(u"Message"_s).toString(), QString());
    QCOMPARE(status.status(), QSettings::FormatError);
}

void StandInRecorderTest::aHugeFileHas64MiB()
{
    Report->SetOption("INTERVAL_MS", QByteArray::number(Never));
    Report->SetOption("STATUS", "huge");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY_WITH_TIMEOUT(recorder.HasPrinted(StatusLine(1)), tests::Patience);
    QFile file(RecorderStatusFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.size() >= 64 * 1024 * 1024);
    QCOMPARE(file.read(10), QByteArray("Message=xx"));
    QVERIFY(file.remove());
}

void StandInRecorderTest::bothOutputChannelsAreUsed()
{
    Report->SetOption("INTERVAL_MS", "20");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(10)));
    const auto errorLines = [&recorder] {
        recorder.Collect();
        return recorder.errorLines();
    };
    const QString line = u"stand-in: a line on the error channel, %1"_s;
    QTRY_VERIFY(errorLines().size() >= 2);
    QCOMPARE(errorLines().mid(0, 2), QStringList({line.arg(5), line.arg(10)}));
}

void StandInRecorderTest::itEndsByItselfWithACode_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("0 unless a code is given") << QByteArray() << 0;
    QTest::newRow("7") << QByteArray("7") << 7;
    QTest::newRow("255") << QByteArray("255") << 255;
}

void StandInRecorderTest::itEndsByItselfWithACode()
{
    QFETCH(QByteArray, code);
    QFETCH(int, exitCode);
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("EXIT_AFTER_MS", "300");
    if (!code.isEmpty())
        Report->SetOption("EXIT_CODE", code);
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(exitCode));
    const QList<tools::RecorderEvent> events = Report->events();
    QCOMPARE(events.size(), 3);
    QCOMPARE(events[0].Event, u"started"_s);
    QCOMPARE(events[1].Event, u"ready"_s);
    QCOMPARE(events[2].Event, u"ends"_s);
    QVERIFY(events[2].Microseconds - events[0].Microseconds >= 280'000); // a coarse timer may be 5 % early
}

void StandInRecorderTest::itCrashes()
{
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("CRASH_AFTER_MS", "100");
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.Process.waitForFinished());
    // Some Windows run-time libraries end an aborted program with exit code 3.
    QVERIFY(recorder.Process.exitStatus() == QProcess::CrashExit || recorder.Process.exitCode() == 3);
    QCOMPARE(Report->count(u"ready"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 0);
}

void StandInRecorderTest::itEndsOnTheQuitRequest()
{
    Report->SetOption("INTERVAL_MS", QByteArray::number(Never));
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(Report->recorderListens());
    SendQuit();
    QVERIFY(recorder.EndsWith(0));
    QCOMPARE(recorder.standardLines().last(), u"stand-in: asked to quit"_s);
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
}

void StandInRecorderTest::itGoesOnWhenItIsToIgnoreTheQuitRequest()
{
    Report->SetOption("INTERVAL_MS", "50");
    Report->SetOption("IGNORE_QUIT", "1");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(1)));
    SendQuit();
    const auto after = static_cast<quint32>(recorder.standardLines().size() + 10);
    QTRY_VERIFY(recorder.HasPrinted(StatusLine(after)));
    QCOMPARE(recorder.Process.state(), QProcess::Running);
    QCOMPARE(Report->count(u"quit-request"_s), 0);
}

void StandInRecorderTest::itEndsWhenAskedToTerminate()
{
    Report->SetOption("INTERVAL_MS", "30");
    StandIn recorder;
    recorder.Start();
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    recorder.Process.terminate();
    QVERIFY(recorder.EndsWith(0));
    QCOMPARE(Report->count(u"terminate-request"_s), 1);
    QCOMPARE(Report->count(u"ends"_s), 1);
    QCOMPARE(Report->count(u"quit-request"_s), 0);
}

void StandInRecorderTest::itGoesOnWhenItIsToIgnoreTheRequestToTerminate()
{
    Report->SetOption("IGNORE_TERMINATE", "1");
    Report->SetOption("INTERVAL_MS", "30");
    StandIn recorder;
    recorder.Start();
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    for (int request = 1; request <= 3; ++request) {
        recorder.Process.terminate();
        QTRY_COMPARE(Report->count(u"terminate-request"_s), request);
        recorder.Collect();
        const qsizetype next = recorder.standardLines().size() + 3;
        QTRY_VERIFY(recorder.HasPrinted(u"stand-in: status %1 written"_s.arg(next)));
    }
    QCOMPARE(recorder.Process.state(), QProcess::Running);
    QCOMPARE(Report->count(u"ends"_s), 0);
}

void StandInRecorderTest::aFloodArrivesWholeAndInOrder()
{
    constexpr int lineCount = 20'000;
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("EXIT_AFTER_MS", "100");
    Report->SetOption("FLOOD_LINES", QByteArray::number(lineCount));
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(0));
    const QStringList lines = recorder.standardLines();
    QCOMPARE(lines.size(), lineCount);
    for (int i = 0; i < lineCount; ++i)
        QCOMPARE(lines[i],
                 u"stand-in: line %1 of %2, as fast as it is taken; grüße, 你好"_s.arg(i + 1).arg(lineCount));
}

void StandInRecorderTest::theReportTellsTimeProcessAndEvents()
{
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("EXIT_AFTER_MS", "50");
    // Two that listen share the semaphore: the first one to end would wake the other.
    Report->SetOption("IGNORE_QUIT", "1");
    const qint64 before = SteadyMicroseconds();
    StandIn first;
    first.Start();
    QVERIFY(first.Process.waitForStarted());
    const qint64 firstProcess = first.Process.processId();
    StandIn second;
    second.Start();
    QVERIFY(second.Process.waitForStarted());
    const qint64 secondProcess = second.Process.processId();
    QVERIFY(first.EndsWith(0));
    QVERIFY(second.EndsWith(0));
    const qint64 after = SteadyMicroseconds();
    for (const qint64 process : {firstProcess, secondProcess}) {
        qint64 last = before;
        QStringList names;
        const QList<tools::RecorderEvent> events = Report->events();
        for (const tools::RecorderEvent &event : events) {
            if (event.ProcessId != process)
                continue;
            names.append(event.Event);
            QVERIFY(event.Microseconds >= last);
            last = event.Microseconds;
        }
        QVERIFY(last <= after);
        QCOMPARE(names, QStringList({"started", "ready", "ends"}));
    }
    QCOMPARE(Report->events().size(), 6);
}

void StandInRecorderTest::withoutReportFileNothingIsReported()
{
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("EXIT_AFTER_MS", "0");
    Report->SetOption("REPORT", "");
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(0));
    QVERIFY(!QFile::exists(Report->file()));
}

void StandInRecorderTest::aValueThatMakesNoSenseIsRefused_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<QByteArray>("value");
    const auto row = [](const char *option, const char *value) {
        QTest::addRow("%s = \"%s\"", option, value) << QByteArray(option) << QByteArray(value);
    };
    for (const char *option :
         {"INTERVAL_MS", "EXIT_AFTER_MS", "EXIT_CODE", "CRASH_AFTER_MS", "FLOOD_LINES", "HANG_AFTER_MS",
          "HANG_MS", "FAULTS", "IGNORE_QUIT", "IGNORE_TERMINATE", "QUIT_CLOSE_MS", "TERMINATE_CLOSE_MS"}) {
        row(option, "-1");
        row(option, "many");
        row(option, "1.5");
        row(option, "99999999999");
    }
    row("IGNORE_QUIT", "2");
    row("IGNORE_TERMINATE", "yes");
    row("EXIT_CODE", "256");
    row("STATUS", "broken");
    row("STATUS", "VALID");
}

void StandInRecorderTest::aValueThatMakesNoSenseIsRefused()
{
    QFETCH(QByteArray, option);
    QFETCH(QByteArray, value);
    Report->SetOption(option.constData(), value);
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(64));
    QCOMPARE(recorder.errorLines(),
             QStringList{u"TarnvikRecord (stand-in): TARNVIK_STANDIN_%1 makes no sense"_s.arg(
                 QString::fromLatin1(option))});
    QCOMPARE(recorder.standardLines(), QStringList());
    QCOMPARE(Report->events().size(), 0);
    QVERIFY(!QFile::exists(RecorderStatusFile()));
}

TARNVIK_TEST_MAIN(StandInRecorderTest, QCoreApplication)

#include "StandInRecorderTest.moc"
