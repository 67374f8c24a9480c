// SPDX-License-Identifier: MIT
#include "benchmarks/TimeTable.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>

namespace {

/// Quantile of sorted values, linear between the two nearest (Hyndman and Fan, type 7).
double Quantile(const std::vector<double> &sorted, double fraction)
{
    const double position = fraction * static_cast<double>(sorted.size() - 1);
    const auto lower = static_cast<std::size_t>(std::floor(position));
    const std::size_t upper = std::min(lower + 1, sorted.size() - 1);
    return sorted[lower] + (position - static_cast<double>(lower)) * (sorted[upper] - sorted[lower]);
}

} // namespace

void PrintTimesHeader()
{
    std::printf("%-46s %8s %8s %8s %8s\n", "", "median", "minimum", "maximum", "spread");
}

void PrintTimes(const char *name, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-46s %8.1f %8.1f %8.1f %8.1f\n", name, Quantile(times, 0.5), times.front(), times.back(),
                Quantile(times, 0.75) - Quantile(times, 0.25));
}
