#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The rule of a soak run, on made-up series: an hour with a sample a minute, unless a test says otherwise."""
import contextlib
import io
import math
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import unittest

import verdict
from verdict import LIMITS, Limit, Line, TooFewSamples, grows, straight_line

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

    def test_significance_is_that_of_the_stretches_with_eight_degrees_of_freedom(self):
        # Two samples to a stretch. The ten means lie on a line, off it by what adds up to nothing and is no slope: the
        # slope of 1 a stretch has the error sqrt(8 / 8 / 82.5). What is before the warm-up's end, and where the
        # clock stood at the begin, do not matter.
        off = (1, -1, 1, -1, 0, 0, -1, 1, -1, 1)
        values = [1000] * 7 + [stretch + off[stretch] + sample for stretch in range(10) for sample in (-1, 1)]
        line = straight_line(list(range(10_000, 10_027)), values)
        self.assertAlmostEqual(line.significance, math.sqrt(82.5))
        self.assertAlmostEqual(line.a_day, A_DAY / 2)
        self.assertAlmostEqual(line.first, -0.25)
        self.assertAlmostEqual(line.last, 9.25)
        self.assertEqual(line.seconds, 26)

    def test_a_line_without_noise_is_as_significant_as_can_be(self):
        self.assertEqual(straight_line(HOUR, HOUR).significance, math.inf)
        self.assertEqual(straight_line(HOUR, [-second for second in HOUR]).significance, -math.inf)

    def test_more_than_the_limit_at_least_the_rise_and_more_than_chance_are_needed(self):
        for rise, a_day, significance, expected in (
            (0.5, 24.1, 3.37, True),
            (0.49, 24.1, 3.37, False),
            (0.5, 24, 3.37, False),
            (0.5, 24.1, 3.36, False),
        ):
            with self.subTest(rise=rise, a_day=a_day, significance=significance):
                self.assertEqual(grows(Line(0, rise, a_day, significance, 3600), LIMIT), expected)

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
        for end, when_young, growth, expected in (
            (1499, 4, 3.9, False),
            (1499, 4, 4.1, True),
            (1499, 0, 0.9, False),
            (1499, 0, 1.1, True),
            (1500, 4, 3.9, True),
            (1500, 4, 0.9, False),
        ):
            with self.subTest(end=end, when_young=when_young, growth=growth):
                seconds = [end * sample / 60 for sample in range(61)]
                rate = growth / (0.75 * end)
                limit = Limit(24, 1, at_least_when_young=when_young)
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
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = pathlib.Path(folder.name, "samples.tsv")

    def write(self, **columns):
        """A quiet run, but for these columns; None: the column is not there."""
        columns = {"seconds": HOUR, **{name: [0] * 61 for name in LIMITS}, **columns}
        columns = {name: values for name, values in columns.items() if values is not None}
        rows = [columns.keys(), *zip(*columns.values())]
        self.path.write_text("".join("\t".join(map(str, row)) + "\n" for row in rows), encoding="utf-8")

    def judge(self, **columns):
        """Exit code, and what is printed for each limit."""
        self.write(**columns)
        with contextlib.redirect_stdout(io.StringIO()) as output:
            code = verdict.main(self.path)
        lines = [line.split(maxsplit=1) for line in output.getvalue().splitlines()[1:]]
        return code, dict(lines)

    def test_a_quiet_run_passes(self):
        code, lines = self.judge()
        self.assertEqual(code, 0)
        self.assertEqual(list(lines), list(LIMITS))
        self.assertNotIn("GROWS", "".join(lines.values()))

    def test_one_column_that_grows_fails_the_run(self):
        for name in LIMITS:
            with self.subTest(name=name):
                code, lines = self.judge(**{name: [1000 * minute for minute in range(61)]})
                self.assertEqual(code, 1)
                self.assertEqual([name for name, line in lines.items() if line.endswith("GROWS")], [name])

    def test_the_numbers_of_a_line_are_printed(self):
        # One a second without noise: no number is large enough for what it is significant by.
        _, lines = self.judge(threads=HOUR, children=[-second for second in HOUR])
        self.assertEqual(lines["threads"].split(), ["900.0", "3600.0", "86400.0", "24", "999.0", "GROWS"])
        self.assertEqual(lines["children"].split(), ["-900.0", "-3600.0", "-86400.0", "24", "-999.0"])

    def test_a_column_without_values_is_left_out(self):
        code, lines = self.judge(semaphores=["NaN"] * 61)
        self.assertEqual(code, 0)
        self.assertEqual(lines["semaphores"], "not to be had on this system")

    def test_a_column_that_is_not_there_is_an_error(self):
        self.assertRaisesRegex(ValueError, "no column semaphores", self.judge, semaphores=None)

    def test_a_value_that_is_missing_now_and_then_is_an_error(self):
        self.assertRaisesRegex(ValueError, "semaphores is not", self.judge, semaphores=[0] * 60 + [""])
        self.assertRaises(ValueError, self.judge, semaphores=[0] * 60 + ["NaN"])

    def test_every_count_of_the_run_has_its_limit(self):
        drive = pathlib.Path(verdict.__file__).with_name("drive").read_text(encoding="utf-8")
        columns = re.search(r"^columns=\((.*)\)$", drive, re.MULTILINE)[1].split()
        self.assertEqual(columns, ["seconds", "ends", "changes", *LIMITS])

    def test_the_command_ends_with_the_verdict(self):
        few = {name: [0] * 26 for name in LIMITS}
        for code, error, columns in (
            (0, "", {}),
            (1, "", {"threads": HOUR}),
            (2, "error: 19 samples behind the warm-up; 20 are needed\n", {"seconds": list(range(26)), **few}),
            (2, "error: there is no column seconds\n", {"seconds": None}),
        ):
            with self.subTest(columns=columns):
                self.write(**columns)
                command = [sys.executable, "-B", verdict.__file__, self.path]
                ended = subprocess.run(command, capture_output=True, text=True)
                self.assertEqual((ended.returncode, ended.stderr), (code, error))


if __name__ == "__main__":
    unittest.main()
