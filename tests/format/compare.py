#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Reads alignment files with the reader that was compiled from their description, and compares what it finds with what the
program's library finds.

    compare.py DUMP LEAST

DUMP is the output of AlignmentSamples: a line of JSON for each file. Fails on any difference, and when fewer than LEAST files
could be compared. The compiled module is found through PYTHONPATH."""

import json
import sys

from tarnvik_alignment import TarnvikAlignment


def point(read):
    return [read.frequency, read.attribute,
            [[rate.sample_frequency, rate.attribute, [entry.values for entry in rate.gain_entries]]
             for rate in read.sample_rate_points]]


def content(path):
    """What the compiled reader finds, in the form of the dump."""
    with TarnvikAlignment.from_file(path) as read:
        return {
            "type": int(getattr(read.header.payload.sdr_type, "value", read.header.payload.sdr_type)),
            "tables": [{
                "version": table.payload.version,
                "id": table.payload.hardware_id.hex(),
                "date": str(table.payload.aligned_at),
                "capacity": table.payload.data_set_capacity,
                "dataSets": [[data_set.payload.attributes, data_set.payload.word_1, data_set.payload.word_2,
                              [point(one) for one in data_set.payload.freq_points]]
                             for data_set in table.data_sets],
            } for table in read.tables],
        }


def with_numbers(points):
    """The dump has numbers of 64 bits as texts."""
    return [[int(frequency), attribute, [[int(rate), attr, entries] for rate, attr, entries in rates]]
            for frequency, attribute, rates in points]


def main():
    dump, least = sys.argv[1], int(sys.argv[2])
    compared = tables = data_sets = refused = 0
    with open(dump, encoding="utf-8") as lines:
        for line in lines:
            expected = json.loads(line)
            path, result = expected.pop("file"), expected.pop("result")
            if result != 0:
                refused += 1
                continue
            for table in expected["tables"]:
                table["dataSets"] = [[attributes, word1, word2, with_numbers(points)]
                                     for attributes, word1, word2, points in table["dataSets"]]
            found = content(path)
            if found != expected:
                sys.exit(f"{path}: the description gives\n{found}\nthe library\n{expected}")
            compared += 1
            tables += len(found["tables"])
            data_sets += sum(len(table["dataSets"]) for table in found["tables"])
    print(f"{compared} files with {tables} tables and {data_sets} data sets are read alike; "
          f"the library refuses {refused}")
    if compared < least or data_sets == 0:
        sys.exit(f"at least {least} files were to be compared")


main()
