#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Judges a soak run: does anything grow that must not?

    soak/verdict.py SAMPLES.tsv        prints a line for each column; exit code 1 when one grows, 2 when nobody can say

A straight line is fitted to each column behind the warm-up. A column grows when its line rises by more than the column's
limit a day, and by at least as much behind the warm-up as samples may be off, and when that is no chance: samples that lie
close together resemble each other, so the means of ten stretches stand for them, and the slope through these has to be more
than 3.36 times its standard error (one chance in 200: Student's t with 8 degrees of freedom).
"""
import math
import sys
from dataclasses import dataclass

WARM_UP = 0.25  # of the run's time
STRETCHES = 10
SIGNIFICANT = 3.36
SECONDS_OF_DAY = 86_400
YOUNG = 25 * 60  # seconds; away from the lengths that people ask for, as a run's last sample is not to the second


@dataclass(frozen=True)
class Limit:
    a_day: float
    at_least: float  # behind the warm-up
    at_least_when_young: float = 0  # the same for a short run, in which caches still fill


LIMITS = {
    "memory_kB": Limit(24 * 1024, 1024, at_least_when_young=4096),
    "descriptors": Limit(24, 2),
    "threads": Limit(24, 2),
    "children": Limit(24, 1),
    "x_resources": Limit(240, 20),
    "semaphores": Limit(24, 1),
    "temporary_files": Limit(24, 2),
}


@dataclass(frozen=True)
class Line:
    first: float  # on the line, at the first sample behind the warm-up
    last: float
    a_day: float
    significance: float  # slope in standard errors
    seconds: float  # of the whole run


class TooFewSamples(ValueError):
    """Not even two samples for each stretch."""


def straight_line(seconds, values):
    """The least-squares line through the means of the stretches."""
    begin = seconds[0] + WARM_UP * (seconds[-1] - seconds[0])
    points = [point for point in zip(seconds, values) if point[0] >= begin]
    if len(points) < 2 * STRETCHES:
        raise TooFewSamples(f"{len(points)} samples behind the warm-up; {2 * STRETCHES} are needed")
    edges = [len(points) * i // STRETCHES for i in range(STRETCHES + 1)]
    stretches = [points[a:b] for a, b in zip(edges, edges[1:])]
    xs = [sum(x for x, _ in stretch) / len(stretch) for stretch in stretches]
    ys = [sum(y for _, y in stretch) / len(stretch) for stretch in stretches]
    mean_x, mean_y = sum(xs) / STRETCHES, sum(ys) / STRETCHES
    spread = sum((x - mean_x) ** 2 for x in xs)
    slope = sum((x - mean_x) * (y - mean_y) for x, y in zip(xs, ys)) / spread
    rest = sum((y - mean_y - slope * (x - mean_x)) ** 2 for x, y in zip(xs, ys))
    error = math.sqrt(rest / (STRETCHES - 2) / spread)
    significance = slope / error if error > 0 else math.copysign(math.inf, slope) if slope else 0.0
    return Line(
        mean_y + slope * (points[0][0] - mean_x),
        mean_y + slope * (points[-1][0] - mean_x),
        slope * SECONDS_OF_DAY,
        significance,
        seconds[-1] - seconds[0],
    )


def grows(line, limit):
    at_least = max(limit.at_least, limit.at_least_when_young) if line.seconds < YOUNG else limit.at_least
    return line.a_day > limit.a_day and line.last - line.first >= at_least and line.significance > SIGNIFICANT


def read_samples(path):
    """The columns by name; one without a single number (NaN) is None. Each that has a limit must be there."""
    with open(path, encoding="utf-8") as file:
        names, *rows = [row.rstrip("\n").split("\t") for row in file]
    columns = {}
    for index, name in enumerate(names):
        try:
            values = [float(row[index]) for row in rows]
        except (IndexError, ValueError):
            raise ValueError(f"{name} is not a number everywhere") from None
        missing = sum(map(math.isnan, values))
        if 0 < missing < len(values):
            raise ValueError(f"{name} is missing {missing} times")
        columns[name] = None if missing else values
    for name in ("seconds", *LIMITS):
        if name not in columns:
            raise ValueError(f"there is no column {name}")
    return columns


def main(path):
    columns = read_samples(path)
    seconds = columns.pop("seconds")
    bad = False
    print(f"{'':17}{'from':>10}{'to':>10}{'a day':>12}{'limit':>9}{'t':>8}")
    for name, limit in LIMITS.items():
        if columns[name] is None:
            print(f"{name:17} not to be had on this system")
            continue
        line = straight_line(seconds, columns[name])
        bad_one = grows(line, limit)
        bad = bad or bad_one
        print(
            f"{name:17}{line.first:10.1f}{line.last:10.1f}{line.a_day:12.1f}{limit.a_day:9.0f}"
            f"{max(-999.0, min(line.significance, 999.0)):8.1f}{'  GROWS' if bad_one else ''}"
        )
    return 1 if bad else 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1]))
    except ValueError as error:
        print(f"error: {error}", file=sys.stderr)
        sys.exit(2)
