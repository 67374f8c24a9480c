# SPDX-License-Identifier: MIT
"""Holds the JSON of TarnvikAlign against its schema. See scripts/check-json.

    check_json.py PROGRAM SCHEMA FOLDER

FOLDER holds alignment files, and gets one more.
"""
import copy
import json
import pathlib
import subprocess
import sys

import jsonschema

PROGRAM, SCHEMA, FOLDER = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
EXACT = {"2^53+1": 2**53 + 1, "2^63": 2**63, "2^64-1": 2**64 - 1}


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *map(str, arguments)], check=True, capture_output=True, **options).stdout


def validated(text, validator):
    document = json.loads(text)
    validator.validate(document)
    return document


def check_samples(validator):
    """Each file: export and list agree with the schema, and import makes the file again. Returns one document."""
    types, tables, points, last = set(), 0, 0, None
    for file in sorted(FOLDER.iterdir()):
        exported = run("export", file)
        document = validated(exported, validator)
        listed = validated(run("list", "--json", file), validator)
        assert [table["id"] for table in listed["tables"]] == [table["id"] for table in document["tables"]], file
        assert run("import", "-", "--output", "-", input=exported) == file.read_bytes(), file
        types.add(document["sdrType"])
        tables += len(document["tables"])
        for table in document["tables"]:
            for data_set in table["dataSets"]:
                points += len(data_set["freqPoints"])
                if any(point["sampleRatePoints"] for point in data_set["freqPoints"]):
                    last = document
    assert types == {1, 2, 3, 4}, types
    assert points > 1000 and last is not None, points
    print(f"   {tables} tables of {len(types)} receiver types, {points} frequency points: as the schema has them")
    return last


def members(value, path=()):
    """The path of each member of each object."""
    children = value.items() if isinstance(value, dict) else enumerate(value[:1]) if isinstance(value, list) else ()
    for name, child in children:
        if isinstance(value, dict):
            yield (*path, name)
        yield from members(child, (*path, name))


def check_refusals(document, validator):
    """A member that is missing, is of another type or is unknown is refused: the schema says something."""
    count = 0
    for *path, name in set(members(document)):
        for change in ("missing", "other type", "unknown"):
            changed = copy.deepcopy(document)
            place = changed
            for step in path:
                place = place[step]
            if change == "missing" and name in ("id", "idHex"):  # one of them is wanted
                place.pop("id", None)
                place.pop("idHex", None)
            elif change == "missing" and name not in ("driver", "date") and (path, name) != (["tables", 0], "sdrType"):
                del place[name]
            elif change == "other type":
                place[name] = None
            elif change == "unknown":
                place["unknown"] = place[name]
            else:
                continue
            assert not validator.is_valid(changed), (path, name, change)
            count += 1
    assert count > 40, count
    print(f"   {count} faulty documents: refused")


def check_numbers(validator):
    """64 bits come through JSON unharmed, for Python and for jq."""
    for name, number in EXACT.items():
        text = str(number)
        document = {
            "format": "tarnvik-align/tables", "version": "1.0", "sdrType": 3,
            "tables": [{
                "id": "1", "alignedAt": text, "dataSetCapacity": 1,
                "dataSets": [{
                    "attr": [0, 1, 2, 255], "word": [0, 65535],
                    "freqPoints": [{"frequency": text, "attr": 255, "sampleRatePoints": [
                        {"sampleFrequency": text, "attr": 2**32 - 1, "gainEntries": [[0, 1, 2, 65535]]}]}]}]}]}
        validator.validate(document)
        file = FOLDER / "numbers.ad"
        run("import", "-", "--output", file, input=json.dumps(document).encode())
        exported = run("export", file)
        table = validated(exported, validator)["tables"][0]
        point = table["dataSets"][0]["freqPoints"][0]
        read = [table["alignedAt"], point["frequency"], point["sampleRatePoints"][0]["sampleFrequency"]]
        assert [int(value) for value in read] == [number] * 3, (name, read)
        assert point["sampleRatePoints"][0]["attr"] == 2**32 - 1
        filter_ = ".tables[0] | .alignedAt, (.dataSets[0].freqPoints[0] | .frequency, .sampleRatePoints[0].sampleFrequency)"
        by_jq = subprocess.run(["jq", "-r", filter_], input=exported, check=True, capture_output=True).stdout.split()
        assert by_jq == [text.encode()] * 3, (name, by_jq)
        print(f"   {name}: {text} by Python and by jq")


def main():
    schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    assert schema["$id"].endswith(":1.0"), schema["$id"]
    validator = jsonschema.Draft202012Validator(schema)
    document = check_samples(validator)
    assert schema["$id"].rpartition(":")[2] == document["version"]
    check_refusals(document, validator)
    check_numbers(validator)


main()
