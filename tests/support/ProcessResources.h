// SPDX-License-Identifier: MIT
// What this process holds of the system.
#pragma once

#include <QDebug>

namespace tests {

struct ProcessResources
{
    qsizetype Threads = 0;
    qsizetype Descriptors = 0; ///< open files, pipes and the like
    qsizetype Children = 0;    ///< child processes, those that ended and were not collected included

    /// Counts now.
    static ProcessResources Count();

    /// True when there is more of anything than in `other`. Less is no leak: the system's own thread pools
    /// shrink.
    [[nodiscard]] bool exceeds(const ProcessResources &other) const
    {
        return Threads > other.Threads || Descriptors > other.Descriptors || Children > other.Children;
    }

    bool operator==(const ProcessResources &) const = default;
};

QDebug operator<<(QDebug debug, const ProcessResources &resources);

} // namespace tests
