// SPDX-License-Identifier: MIT
// How the stand-in recorder closes its file when it is asked to end.
#include "tests/recorder_standin/StandIn.h"
#include "tests/support/RecorderFixture.h"
#include "tests/support/SendQuit.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QOperatingSystemVersion>

using namespace Qt::StringLiterals;

using tests::StandIn;

class StandInRecorder_CloseTest : public tests::RecorderFixture
{
    Q_OBJECT

private slots:
    void itClosesItsFileWhenItIsAsked_data();
    void itClosesItsFileWhenItIsAsked();
    void aRequestToTerminateCutsShortWhatTheQuitRequestBegan_data();
    void aRequestToTerminateCutsShortWhatTheQuitRequestBegan();

private:
    /// What was reported after "ready", separated by blanks.
    [[nodiscard]] static QString EventsAfterReady();
    /// Microseconds between two events.
    [[nodiscard]] static qint64 TimeBetween(const QString &first, const QString &second);
};

QString StandInRecorder_CloseTest::EventsAfterReady()
{
    QStringList names;
    const QList<tools::RecorderEvent> events = tools::RecorderReport::events();
    for (const tools::RecorderEvent &event : events)
        names.append(event.Event);
    return names.mid(names.indexOf(u"ready"_s) + 1).join(u' ');
}

qint64 StandInRecorder_CloseTest::TimeBetween(const QString &first, const QString &second)
{
    qint64 begin = 0;
    qint64 end = 0;
    const QList<tools::RecorderEvent> events = tools::RecorderReport::events();
    for (const tools::RecorderEvent &event : events) {
        if (event.Event == first)
            begin = event.Microseconds;
        if (event.Event == second)
            end = event.Microseconds;
    }
    return end - begin;
}

void StandInRecorder_CloseTest::itClosesItsFileWhenItIsAsked_data()
{
    QTest::addColumn<QString>("request");
    QTest::addColumn<int>("quitCloseMs");
    QTest::addColumn<int>("terminateCloseMs");
    QTest::addColumn<int>("expectedMs");
    QTest::newRow("to quit, at once") << "quit-request" << 0 << 5000 << 0;
    QTest::newRow("to quit, and it takes a while") << "quit-request" << 400 << 5000 << 400;
    QTest::newRow("to terminate, at once") << "terminate-request" << 5000 << 0 << 0;
    QTest::newRow("to terminate, and it takes a while") << "terminate-request" << 5000 << 400 << 400;
}

void StandInRecorder_CloseTest::itClosesItsFileWhenItIsAsked()
{
    QFETCH(QString, request);
    QFETCH(int, quitCloseMs);
    QFETCH(int, terminateCloseMs);
    QFETCH(int, expectedMs);
    Report->SetOption("QUIT_CLOSE_MS", QByteArray::number(quitCloseMs));
    Report->SetOption("TERMINATE_CLOSE_MS", QByteArray::number(terminateCloseMs));
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(Report->recorderListens());
    if (request == QLatin1String("quit-request"))
        tests::SendQuit();
    else
        recorder.Process.terminate();
    QVERIFY(recorder.EndsWith(0));
    QCOMPARE(EventsAfterReady(), request + u" closed ends"_s);
    const qint64 took = TimeBetween(request, u"closed"_s);
    QVERIFY2(took >= expectedMs * 1000 && took < 4'000'000, qPrintable(QString::number(took)));
}

void StandInRecorder_CloseTest::aRequestToTerminateCutsShortWhatTheQuitRequestBegan_data()
{
    QTest::addColumn<bool>("ignoresTerminate");
    QTest::addColumn<bool>("closes");
    // A message of Windows waits until the file is closed, and then it is too late.
    const bool windows = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    QTest::newRow("a recorder that goes on when asked to terminate") << true << true;
    QTest::newRow("a recorder that does not") << false << windows;
}

void StandInRecorder_CloseTest::aRequestToTerminateCutsShortWhatTheQuitRequestBegan()
{
    QFETCH(bool, ignoresTerminate);
    QFETCH(bool, closes);
    Report->SetOption("QUIT_CLOSE_MS", "1000");
    Report->SetOption("IGNORE_TERMINATE", ignoresTerminate ? "1" : "0");
    StandIn recorder;
    recorder.Start();
    QTRY_VERIFY(Report->recorderListens());
    tests::SendQuit();
    QTRY_COMPARE(Report->count(u"quit-request"_s), 1);
    recorder.Process.terminate();
    QVERIFY(recorder.EndsWith(closes ? 0 : 2));
    QCOMPARE(Report->count(u"closed"_s), closes ? 1 : 0);
    QCOMPARE(Report->count(u"ends"_s), closes ? 1 : 0);
}

TARNVIK_TEST_MAIN(StandInRecorder_CloseTest, QCoreApplication)

#include "StandInRecorder_CloseTest.moc"
