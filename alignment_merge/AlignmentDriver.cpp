// SPDX-License-Identifier: MIT
#include "alignment_merge/AlignmentDriver.h"

#include "alignment/SdrType.h"

#include <algorithm>
#include <cstddef>

using namespace Qt::StringLiterals;

namespace {

// Not translated: the way back from the name counts its letters.
const QString UnknownDriver = u"Driver"_s;

bool IsListed(int sdrType)
{
    return sdrType >= 0 && static_cast<std::size_t>(sdrType) < AlignDriverNames.size();
}

} // namespace

QString AlignmentDriverName(int sdrType)
{
    return IsListed(sdrType) ? QString::fromLatin1(AlignDriverNames.at(static_cast<std::size_t>(sdrType)))
                             : u"%1 %2"_s.arg(UnknownDriver).arg(sdrType);
}

int AlignmentDriverType(const QString &driverName)
{
    const auto *const listed =
        std::find_if(AlignDriverNames.begin() + 1, AlignDriverNames.end(),
                     [&](const char *name) { return driverName == QLatin1String(name); });
    if (listed != AlignDriverNames.end())
        return static_cast<int>(listed - AlignDriverNames.begin());
    return std::max(driverName.mid(UnknownDriver.size() + 1).toInt(), 0); // 0 also when it is no number
}

QString AlignmentDriverFileName(int sdrType)
{
    return IsListed(sdrType) ? QString::fromLatin1(AlignDriverFileNames.at(static_cast<std::size_t>(sdrType)))
                             : QString();
}

QString AlignmentDriverFilePattern()
{
    return u"TarnvikDriver_*.ad"_s;
}
