// SPDX-License-Identifier: MIT
// What may happen to a recorder, drawn by chance.
#pragma once

#include "recorder_standin/StandInOptions.h"

#include <QString>

#include <cstdint>

/// A recorder whose every start is another one: it ends, crashes, hangs, floods, writes damaged status files,
/// or works until it is asked to quit. Seed and number of the start tell which one it is and for how long;
/// six starts in a row have one of each kind.
class StandInFaults
{
public:
    enum class Kind { Dies, Crashes, Hangs, Floods, Damages, Obeys };
    static constexpr int KindCount = 6;

    struct Fault
    {
        Kind FaultKind;
        StandInOptions Options; ///< those given, changed for this kind
    };

    /// The fault of a start; the first one has the number 0.
    [[nodiscard]] static Fault Draw(std::uint32_t seed, std::uint32_t start, const StandInOptions &options);

    /// "dies", "crashes" and so on, for the report.
    [[nodiscard]] static const char *NameOf(Kind kind);

    /// The number of this start: how many there were before, by the file in which they are counted. It is
    /// made when there is none. Starts at the same time may get the same number.
    [[nodiscard]] static std::uint32_t CountStart(const QString &file);
};
