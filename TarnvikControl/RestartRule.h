// SPDX-License-Identifier: MIT
// When a process that ended is started again.
#pragma once

#include <QProcess>

#include <chrono>
#include <cstdint>
#include <optional>

/// Decides when a process is started again: at once after its first end, then after pauses of 5, 10, 15, 20
/// and 25 s, then always after 30 s. Once the process has run for 10 s the series begins anew. A start that
/// fails is an end like any other.
///
/// The rule knows neither clock nor process: it is told what happened and answers how long to wait for the
/// next event.
class RestartRule
{
public:
    enum class Event {
        StateChanged, ///< the process may have started or ended
        WaitIsOver,   ///< the time of the last decision is up
    };

    struct Decision
    {
        bool StartNow = false;
        /// How long to wait for the next event; nothing: without limit.
        std::optional<std::chrono::seconds> Wait;
    };

    /// What to do after the event. `state` is that of the process now, `ends` is how many times it has ended
    /// in all: one event may stand for several changes of state, and one change may be told twice.
    [[nodiscard]] Decision DecideOn(Event event, QProcess::ProcessState state, std::uint32_t ends);

private:
    [[nodiscard]] bool StartsAfterEnd();

    std::chrono::seconds Pause{0}; // after the next end
    std::optional<std::chrono::seconds> Wait;
    std::uint32_t AnsweredEnds = 0;
};
