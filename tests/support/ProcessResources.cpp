// SPDX-License-Identifier: MIT
#include "tests/support/ProcessResources.h"

namespace tests {

QDebug operator<<(QDebug debug, const ProcessResources &resources)
{
    return debug.nospace() << "threads " << resources.Threads << ", descriptors " << resources.Descriptors
                           << ", children " << resources.Children;
}

} // namespace tests
