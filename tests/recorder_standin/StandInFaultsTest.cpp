// SPDX-License-Identifier: MIT
// What is drawn for each start, without starting any.
#include "recorder_standin/StandInFaults.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Kind = StandInFaults::Kind;

constexpr std::uint32_t Seed = 4;
constexpr std::uint32_t Rounds = 100;
constexpr std::uint32_t Starts = Rounds * StandInFaults::KindCount;

/// The smallest and the largest of the values drawn.
struct Span
{
    int Least = std::numeric_limits<int>::max();
    int Most = -1;

    void Add(int value)
    {
        Least = std::min(Least, value);
        Most = std::max(Most, value);
    }
    /// Whether the values lie in 0 to below, and nearly fill it.
    [[nodiscard]] bool fills(int below) const
    {
        return Least >= 0 && Least < below / 10 && Most < below && Most >= below - below / 10;
    }
};

/// Settings that no fault changes.
StandInOptions Given()
{
    StandInOptions options;
    options.ReportFile = u"report"_s;
    options.Message = u"message"_s;
    options.IgnoreQuit = true;
    options.IgnoreTerminate = true;
    options.QuitCloseMs = 11;
    options.TerminateCloseMs = 12;
    options.Faults = Seed;
    return options;
}

} // namespace

class StandInFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void eachKindComesAtEachPlaceOfARound();
    void eachStartEndsInOneWayAfterATimeOfItsOwn();
    void whatAKindDoesBesidesIsDrawnAnewForEachStart();
    void whatIsNoPartOfAFaultStaysAsGiven();
    void startsAreCountedInAFile();
};

void StandInFaultsTest::eachKindComesAtEachPlaceOfARound()
{
    std::set<std::pair<std::uint32_t, Kind>> seen;
    for (std::uint32_t start = 0; start < Starts; ++start)
        seen.insert({start % StandInFaults::KindCount, StandInFaults::Draw(Seed, start, {}).FaultKind});
    QCOMPARE(seen.size(), std::size_t{StandInFaults::KindCount * StandInFaults::KindCount});
}

void StandInFaultsTest::eachStartEndsInOneWayAfterATimeOfItsOwn()
{
    QMap<Kind, Span> lives;
    for (std::uint32_t start = 0; start < Starts; ++start) {
        const auto [kind, options] = StandInFaults::Draw(Seed, start, {});
        const bool crashes = kind == Kind::Crashes;
        const bool hangs = kind == Kind::Hangs;
        QCOMPARE(options.CrashAfterMs >= 0, crashes);
        QCOMPARE(options.HangAfterMs >= 0, hangs);
        QCOMPARE(options.ExitAfterMs >= 0, !crashes && !hangs);
        lives[kind].Add(std::max({options.CrashAfterMs, options.HangAfterMs, options.ExitAfterMs}));
    }
    for (auto life = lives.cbegin(); life != lives.cend(); ++life)
        QVERIFY2(life->fills(life.key() == Kind::Obeys ? 2000 : 600), StandInFaults::NameOf(life.key()));
}

void StandInFaultsTest::whatAKindDoesBesidesIsDrawnAnewForEachStart()
{
    Span exitCodes;
    Span hangs;
    Span floods;
    for (std::uint32_t start = 0; start < Starts; ++start) {
        const auto [kind, options] = StandInFaults::Draw(Seed, start, {});
        const bool damages = kind == Kind::Damages;
        QCOMPARE(options.StatusKind == StandInOptions::Status::Damaged, damages);
        if (kind == Kind::Dies)
            exitCodes.Add(options.ExitCode);
        else
            QCOMPARE(options.ExitCode, 0);
        if (kind == Kind::Hangs)
            hangs.Add(options.HangMs);
        else
            QCOMPARE(options.HangMs, 0);
        if (kind == Kind::Floods)
            floods.Add(options.FloodLines);
        else
            QCOMPARE(options.FloodLines, 0);
    }
    QVERIFY(exitCodes.fills(256));
    QVERIFY(hangs.fills(1000));
    QVERIFY(floods.fills(2000));
}

void StandInFaultsTest::whatIsNoPartOfAFaultStaysAsGiven()
{
    const StandInOptions given = Given();
    for (std::uint32_t start = 0; start < StandInFaults::KindCount; ++start) {
        const StandInOptions options = StandInFaults::Draw(Seed, start, given).Options;
        QCOMPARE(options.ReportFile, given.ReportFile);
        QCOMPARE(options.Message, given.Message);
        QVERIFY(options.IgnoreQuit && options.IgnoreTerminate);
        QCOMPARE(options.QuitCloseMs, given.QuitCloseMs);
        QCOMPARE(options.TerminateCloseMs, given.TerminateCloseMs);
        QCOMPARE(options.Faults, given.Faults);
        QCOMPARE(options.IntervalMs, 25);
    }
}

void StandInFaultsTest::startsAreCountedInAFile()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"starts"_s);
    for (std::uint32_t start = 0; start < 3; ++start)
        QCOMPARE(StandInFaults::CountStart(file), start);
    QCOMPARE(StandInFaults::CountStart(folder.path()), 0U); // no file
}

TARNVIK_TEST_MAIN(StandInFaultsTest, QCoreApplication)

#include "StandInFaultsTest.moc"
