// SPDX-License-Identifier: MIT
// The stand-in recorder that is another one at every start.
#include "tests/recorder_standin/StandIn.h"
#include "tests/support/Patience.h"
#include "tests/support/RecorderFixture.h"
#include "tests/support/SendQuit.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

using tests::StandIn;

namespace {

const QStringList Kinds = {u"dies"_s, u"crashes"_s, u"hangs"_s, u"floods"_s, u"damages"_s, u"obeys"_s};

bool IsKind(const tools::RecorderEvent &event)
{
    return Kinds.contains(event.Event);
}

/// The kinds of all starts so far.
QStringList KindsOfStarts()
{
    QStringList kinds;
    const QList<tools::RecorderEvent> events = tools::RecorderReport::events();
    for (const tools::RecorderEvent &event : events) {
        if (IsKind(event))
            kinds.append(event.Event);
    }
    return kinds;
}

QStringList Sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

class StandInRecorder_FaultsTest : public tests::RecorderFixture
{
    Q_OBJECT

private slots:
    void sixStartsAreOneOfEachKindInAnOrderDrawnFromTheNumber();
    void eachKindIsWhatItsNameSays();
    void itHangsAndEndsWithoutAWord();
    void beforeItHangsItWorksAndReportsNoStatus();
    void withoutAReportItIsRefused();

private:
    /// The kinds of so many starts, each killed when its kind is known, counted from the first one.
    static void DrawKinds(const QByteArray &number, int starts, QStringList &kinds);
};

void StandInRecorder_FaultsTest::DrawKinds(const QByteArray &number, int starts, QStringList &kinds)
{
    tools::RecorderReport report;
    report.SetOption("FAULTS", number);
    for (int start = 1; start <= starts; ++start) {
        StandIn recorder;
        recorder.Start();
        QTRY_COMPARE(KindsOfStarts().size(), start);
    }
    kinds = KindsOfStarts();
}

void StandInRecorder_FaultsTest::sixStartsAreOneOfEachKindInAnOrderDrawnFromTheNumber()
{
    QStringList first;
    QStringList again;
    QStringList other;
    DrawKinds("7", 12, first);
    DrawKinds("7", 12, again);
    DrawKinds("0", 12, other);
    QCOMPARE(Sorted(first.mid(0, 6)), Sorted(Kinds));
    QCOMPARE(Sorted(first.mid(6)), Sorted(Kinds));
    QVERIFY(first.mid(0, 6) != first.mid(6)); // each six are drawn anew
    QCOMPARE(again, first);
    QVERIFY(other != first);
}

void StandInRecorder_FaultsTest::eachKindIsWhatItsNameSays()
{
    Report->SetOption("FAULTS", "4");
    for (qsizetype start = 0; start < Kinds.size(); ++start) {
        StandIn recorder;
        recorder.Start();
        QTRY_COMPARE(KindsOfStarts().size(), start + 1);
        const QString kind = KindsOfStarts().last();
        const qint64 process = Report->lastProcess(u"started"_s); // it may have ended already
        const bool asked = kind == u"obeys"_s;
        if (asked) {
            QTRY_VERIFY(
                Report->recorderListens(process)); // with this number it does so for more than a second
            tests::SendQuit();
        }
        QTRY_COMPARE_WITH_TIMEOUT(recorder.Process.state(), QProcess::NotRunning, tests::Patience);
        recorder.Collect();
        const bool crashed = recorder.Process.exitStatus() == QProcess::CrashExit ||
                             (kind == u"crashes"_s && recorder.Process.exitCode() == 3); // as some on Windows
        QCOMPARE(crashed, kind == u"crashes"_s);
        QCOMPARE(Report->count(u"ends"_s, process), kind == u"crashes"_s || kind == u"hangs"_s ? 0 : 1);
        QCOMPARE(Report->count(u"closed"_s, process), asked ? 1 : 0);
        QVERIFY(kind != u"floods"_s ||
                recorder.standardLines().filter(u"as fast as it is taken"_s).size() > 1);
        QVERIFY2(Report->count(u"status"_s, process) > 0, qPrintable(kind));
        QCOMPARE(tests::ReadStatus().Message.isEmpty(), kind == u"damages"_s);
    }
    QCOMPARE(Sorted(KindsOfStarts()), Sorted(Kinds));
}

void StandInRecorder_FaultsTest::itHangsAndEndsWithoutAWord()
{
    Report->SetOption("INTERVAL_MS", "0");
    Report->SetOption("HANG_AFTER_MS", "0");
    Report->SetOption("HANG_MS", "2000");
    StandIn recorder;
    recorder.Start();
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    recorder.Process.terminate();
    QVERIFY(recorder.EndsWith(2));
    const QList<tools::RecorderEvent> events = Report->events();
    QVERIFY(QDeadlineTimer::current().deadlineNSecs() / 1000 - events.first().Microseconds >= 1'900'000);
    QCOMPARE(Report->count(u"closed"_s) + Report->count(u"ends"_s), 0);
}

void StandInRecorder_FaultsTest::beforeItHangsItWorksAndReportsNoStatus()
{
    Report->SetOption("INTERVAL_MS", "10");
    Report->SetOption("HANG_AFTER_MS", "3600000");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(recorder.HasPrinted(u"stand-in: status 2 written"_s));
    QTRY_VERIFY(Report->recorderListens(Report->lastProcess(u"started"_s)));
    tests::SendQuit();
    QVERIFY(recorder.EndsWith(0));
    QCOMPARE(Report->count(u"closed"_s), 1);
    QCOMPARE(Report->count(u"status"_s), 0); // that is for recorders with faults
}

void StandInRecorder_FaultsTest::withoutAReportItIsRefused()
{
    Report->SetOption("FAULTS", "0");
    Report->SetOption("REPORT", "");
    StandIn recorder;
    recorder.Start();
    QVERIFY(recorder.EndsWith(64));
    QCOMPARE(recorder.errorLines(),
             QStringList{u"TarnvikRecord (stand-in): TARNVIK_STANDIN_FAULTS makes no sense"_s});
}

TARNVIK_TEST_MAIN(StandInRecorder_FaultsTest, QCoreApplication)

#include "StandInRecorder_FaultsTest.moc"
