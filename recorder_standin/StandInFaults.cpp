// SPDX-License-Identifier: MIT
#include "recorder_standin/StandInFaults.h"

#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <utility>

namespace {

using Kind = StandInFaults::Kind;

constexpr std::array<std::pair<Kind, const char *>, StandInFaults::KindCount> Kinds = {{
    {Kind::Dies, "dies"},
    {Kind::Crashes, "crashes"},
    {Kind::Hangs, "hangs"},
    {Kind::Floods, "floods"},
    {Kind::Damages, "damages"},
    {Kind::Obeys, "obeys"},
}};

constexpr int StatusIntervalMs = 25;
constexpr int LongestLifeMs = 600; // of most kinds; some end within the recorder's own start
constexpr int LongestObeyMs = 2000;
constexpr int LongestHangMs = 1000;
constexpr int MostFloodLines = 2000;
constexpr int HighestExitCode = 255;

/// What is drawn for a start or a round, which are numbered apart.
enum class Purpose : quint32 { Order, Details };
QRandomGenerator Generator(std::uint32_t seed, Purpose purpose, std::uint32_t number)
{
    const std::array<quint32, 3> numbers = {seed, static_cast<quint32>(purpose), number};
    return QRandomGenerator(numbers.data(), static_cast<qsizetype>(numbers.size()));
}

/// The kind of a start. The six of a round come in an order drawn for this round.
Kind KindOf(std::uint32_t seed, std::uint32_t start)
{
    QRandomGenerator random = Generator(seed, Purpose::Order, start / StandInFaults::KindCount);
    std::array<Kind, StandInFaults::KindCount> order{};
    std::transform(Kinds.begin(), Kinds.end(), order.begin(), [](const auto &kind) { return kind.first; });
    for (int last = StandInFaults::KindCount - 1; last > 0; --last)
        std::swap(order.at(static_cast<std::size_t>(last)),
                  order.at(static_cast<std::size_t>(random.bounded(last + 1))));
    return order.at(start % StandInFaults::KindCount);
}

} // namespace

StandInFaults::Fault StandInFaults::Draw(std::uint32_t seed, std::uint32_t start,
                                         const StandInOptions &options)
{
    Fault fault{KindOf(seed, start), options};
    StandInOptions &changed = fault.Options;
    QRandomGenerator random = Generator(seed, Purpose::Details, start);
    const int lifeMs = random.bounded(LongestLifeMs);
    changed.IntervalMs = StatusIntervalMs;
    switch (fault.FaultKind) {
    case Kind::Dies:
        changed.ExitAfterMs = lifeMs;
        changed.ExitCode = random.bounded(HighestExitCode + 1);
        break;
    case Kind::Crashes:
        changed.CrashAfterMs = lifeMs;
        break;
    case Kind::Hangs:
        changed.HangAfterMs = lifeMs;
        changed.HangMs = random.bounded(LongestHangMs);
        break;
    case Kind::Floods:
        changed.FloodLines = random.bounded(MostFloodLines);
        changed.ExitAfterMs = lifeMs;
        break;
    case Kind::Damages:
        changed.StatusKind = StandInOptions::Status::Damaged;
        changed.ExitAfterMs = lifeMs;
        break;
    case Kind::Obeys:
        changed.ExitAfterMs = random.bounded(LongestObeyMs); // nobody may ask
        break;
    }
    return fault;
}

const char *StandInFaults::NameOf(Kind kind)
{
    const auto *const found =
        std::find_if(Kinds.begin(), Kinds.end(), [kind](const auto &one) { return one.first == kind; });
    return found->second;
}

std::uint32_t StandInFaults::CountStart(const QString &file)
{
    // Each start makes it longer by a byte.
    QFile count(file);
    if (!count.open(QIODevice::WriteOnly | QIODevice::Append))
        return 0;
    const auto before = static_cast<std::uint32_t>(count.size());
    count.putChar('.');
    return before;
}
