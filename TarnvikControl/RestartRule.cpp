// SPDX-License-Identifier: MIT
#include "TarnvikControl/RestartRule.h"

#include <algorithm>

using std::chrono::seconds;

namespace {

constexpr seconds PauseStep{5};
constexpr seconds LongestPause{30};
constexpr seconds SettledAfter{10};

} // namespace

RestartRule::Decision RestartRule::DecideOn(Event event, QProcess::ProcessState state, std::uint32_t ends)
{
    bool startNow = false;
    if (state == QProcess::Starting) {
        // Nothing is known yet; the next change of state tells.
    } else if (event == Event::WaitIsOver) {
        startNow = state == QProcess::NotRunning;
        if (state == QProcess::Running)
            Pause = seconds(0);
        Wait.reset();
    } else if (state == QProcess::Running) {
        Wait = Pause > seconds(0) ? std::optional(SettledAfter) : std::nullopt;
    } else if (ends != AnsweredEnds) {
        // Two quick changes of state can be told twice for one end; it is answered once.
        AnsweredEnds = ends;
        startNow = StartsAfterEnd();
    }
    return {startNow, Wait};
}

bool RestartRule::StartsAfterEnd()
{
    const bool atOnce = Pause == seconds(0);
    Wait = atOnce ? std::nullopt : std::optional(Pause);
    Pause = std::min(Pause + PauseStep, LongestPause);
    return atOnce;
}
