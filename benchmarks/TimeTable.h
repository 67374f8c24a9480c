// SPDX-License-Identifier: MIT
// How benchmark programs print repeated measurements.
#pragma once

#include <vector>

/// Prints what the columns of PrintTimes are.
void PrintTimesHeader();

/// Prints median, minimum, maximum and interquartile range of times in milliseconds; there must be one.
void PrintTimes(const char *name, std::vector<double> times);
