#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The rule of a soak run, on made-up series: an hour with a sample a minute, unless a test says otherwise."""
import contextlib
import io
import math
import pathlib
import random
import tempfile
import unittest

import verdict
from verdict import LIMITS, Limit, TooFewSamples, grows, straight_line

HOUR = [60 * minute for minute in range(61)]
A_DAY = verdict.SECONDS_OF_DAY
LIMIT = Limit(a_day=24, at_least=0.5)


def judged(values, seconds=HOUR, limit=LIMIT):
    return grows(straight_line(seconds, values), limit)


class VerdictTest(unittest.TestCase):
    def test_a_constant_does_not_grow(self):
        line = straight_line(HOUR, [7] * 61)
        self.assertEqual((line.first, line.last, line.a_day, line.significance), (7, 7, 0, 0))
        self.assertFalse(grows(line, LIMIT))

    def test_a_line_is_found_as_it_was_drawn(self):
        line = straight_line(HOUR, [100 + 48 * second / A_DAY for second in HOUR])
        self.assertAlmostEqual(line.a_day, 48)
        self.assertAlmostEqual(line.first, 100 + 48 * 900 / A_DAY)
        self.assertAlmostEqual(line.last, 102)
        self.assertTrue(grows(line, LIMIT))

    def test_only_what_is_above_the_limit_grows(self):
        for a_day, expected in ((23.9, False), (24.1, True)):
            with self.subTest(a_day=a_day):
                self.assertEqual(judged([a_day * second / A_DAY for second in HOUR]), expected)

    def test_only_what_could_be_seen_in_one_sample_grows(self):
        for at_least, expected in ((1.4, True), (1.6, False)):  # 48 a day are 1.5 in three quarters of an hour
            with self.subTest(at_least=at_least):
                self.assertEqual(
                    judged([48 * second / A_DAY for second in HOUR], limit=Limit(24, at_least)), expected
                )

    def test_caches_may_fill_in_a_short_run(self):
        limit = Limit(24, 1, at_least_when_young=4)
        for minutes, growth, expected in ((29, 3.9, False), (29, 4.1, True), (30, 3.9, True), (30, 0.9, False)):
            with self.subTest(minutes=minutes, growth=growth):
                seconds = list(range(0, 60 * minutes + 1, 30))
                rate = growth / (0.75 * seconds[-1])
                self.assertEqual(judged([rate * second for second in seconds], seconds, limit), expected)

    def test_what_shrinks_does_not_grow(self):
        self.assertFalse(judged([-480 * second / A_DAY for second in HOUR]))

    def test_what_grows_in_the_warm_up_only_does_not_grow(self):
        self.assertFalse(judged([min(second, 899) for second in HOUR]))
        self.assertTrue(judged([min(second, 1800) for second in HOUR]))

    def test_chance_does_not_grow(self):
        # 1,000 series of nothing but noise, whose line rises by more than the limit in half of them.
        found = 0
        for seed in range(1000):
            noise = random.Random(seed)
            found += judged([noise.gauss(0, 20) for _ in HOUR])
        self.assertLess(found, 15)

    def test_a_slow_wave_is_no_growth(self):
        # Neighbours resemble each other: taken for samples of their own they would seem to prove a trend.
        self.assertFalse(judged([30 * math.sin(second / 250) for second in HOUR]))

    def test_a_saw_tooth_is_no_growth(self):
        self.assertFalse(judged([minute % 13 for minute in range(61)]))

    def test_a_leak_is_found_in_noise(self):
        for seed in range(100):
            noise = random.Random(seed)
            with self.subTest(seed=seed):
                self.assertTrue(judged([480 * second / A_DAY + noise.gauss(0, 2) for second in HOUR]))

    def test_a_single_step_late_in_the_run_is_no_line(self):
        self.assertFalse(judged([0] * 58 + [3] * 3))

    def test_two_samples_for_each_stretch_are_needed(self):
        seconds = list(range(26))  # the warm-up ends at 6.25: 19 are behind it
        with self.assertRaises(TooFewSamples):
            straight_line(seconds, seconds)
        straight_line(list(range(27)), list(range(27)))

    def test_every_limit_can_be_missed_and_kept(self):
        for name, limit in LIMITS.items():
            with self.subTest(name=name):
                # As fast as it takes to be seen in three quarters of an hour.
                rate = 1.1 * max(limit.a_day, limit.at_least * A_DAY / 2700)
                self.assertTrue(judged([rate * second / A_DAY for second in HOUR], limit=limit))
                self.assertFalse(judged([0.9 * limit.a_day * second / A_DAY for second in HOUR], limit=limit))


class FileTest(unittest.TestCase):
    def judge(self, **columns):
        columns = {"seconds": HOUR, **{name: [0] * 61 for name in LIMITS}, **columns}
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "samples.tsv")
            rows = [columns.keys(), *zip(*columns.values())]
            path.write_text("".join("\t".join(map(str, row)) + "\n" for row in rows), encoding="utf-8")
            with contextlib.redirect_stdout(io.StringIO()):
                return verdict.main(path)

    def test_a_quiet_run_passes(self):
        self.assertEqual(self.judge(), 0)

    def test_one_column_that_grows_fails_the_run(self):
        for name in LIMITS:
            with self.subTest(name=name):
                self.assertEqual(self.judge(**{name: [1000 * minute for minute in range(61)]}), 1)

    def test_a_column_without_values_is_left_out(self):
        self.assertEqual(self.judge(semaphores=["NaN"] * 61), 0)

    def test_a_value_that_is_missing_now_and_then_is_an_error(self):
        with self.assertRaises(ValueError):
            self.judge(semaphores=[0] * 60 + [""])
        self.assertRaises(ValueError, self.judge, semaphores=[0] * 60 + ["NaN"])


if __name__ == "__main__":
    unittest.main()
