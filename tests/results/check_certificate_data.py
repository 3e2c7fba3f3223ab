"""Checks the certificate's data of a dated folder: check_certificate_data.py SCHEMA FOLDER

The JSON file must fit the schema, name every other file of the folder with its length and digest, and tell what follows
from the peaks and readings in the folder's record: gains, standard errors, verdicts, computed here once more.
"""

import hashlib
import json
import math
import os
import sys
from glob import glob

import jsonschema


def read_record(path):
    keys = {}
    with open(path, encoding="cp1252") as file:
        for line in file:
            key, separator, value = line.strip().partition("=")
            if separator:
                keys.setdefault(key.strip(), value.strip())
    return keys


def numbers(keys, name):
    return [float(field) for field in keys[name].split(",")]


def mean(values):
    return math.fsum(values) / len(values)


def same(found, expected, what, tolerance=1e-9):
    assert abs(found - expected) <= tolerance * max(1, abs(expected)), f"{what}: {found}, not {expected}"


def verdict(is_passed):
    return "passed" if is_passed else "failed"


def check_regression(trial, reference, readings, as_found, what):
    """Slope of reference on readings through the origin; its standard error with n - 1 degrees of freedom."""
    squares = math.fsum(x * x for x in readings)
    slope = math.fsum(x * y for x, y in zip(readings, reference)) / squares
    rest = math.fsum((y - slope * x) ** 2 for x, y in zip(readings, reference))
    error = math.sqrt(rest / (len(readings) - 1) / squares)
    same(trial["adjustmentFactor"], slope, what)
    same(trial["gain"], as_found * slope, what)
    same(trial["standardError"], error, what)
    assert error > 1e-6 and trial["verdict"] == verdict(error < 0.00205), what


def check_load_cell(data, keys):
    for number, trial in enumerate(data["trials"], 1):
        peaks = [numbers(keys, f"LCTrial{number}{name}") for name in ("RefDropData", "DropData")]
        check_regression(trial, *peaks, data["asFoundGain"], f"load cell, trial {number}")
        assert trial["trial"] == number and trial["heights"] * trial["dropsPerHeight"] == len(peaks[0])
    gains = [trial["gain"] for trial in data["trials"]]
    check_final(data, gains, (0.98, 1.02), "load cell")
    assert len(gains) == 2 and data["verdicts"]["spread"] == verdict(abs(gains[0] - gains[1]) <= 0.003)


def check_final(data, gains, limits, what):
    same(data["asLeftGain"], mean(gains), what, 6e-9)
    change = data["asLeftGain"] / data["asFoundGain"] - 1
    same(data["change"], change, what)
    assert data["verdicts"]["gain"] == verdict(limits[0] <= data["asLeftGain"] <= limits[1]), what
    assert data["verdicts"]["change"] == verdict(abs(change) <= 0.01), what


def relative_std_error(readings):
    """Two-way analysis of variance of sensors and sets of five drops: the root of the error's mean square."""
    sensors = len(readings)
    grand = mean([x for row in readings for x in row])
    sets = [mean([x for row in readings for x in row[first : first + 5]]) for first in range(0, 40, 5)]
    error = math.fsum(
        (x - mean(row) - sets[drop // 5] + grand) ** 2 for row in readings for drop, x in enumerate(row)
    )
    return grand, math.sqrt(error / (40 * sensors - 1 - 7 - (sensors - 1)))


def check_sensors(data, keys, limits):
    sensors = data["sensors"]
    trials = len(data["referenceTrials"])
    for number in range(1, trials + 1):
        reference = numbers(keys, f"SensorRefTrial{number}RefDropData")
        for s, sensor in enumerate(sensors, 1):
            readings = numbers(keys, f"SensorRefTrial{number}Sensor{s}DropData")
            trial = sensor["referenceTrials"][number - 1]
            check_regression(trial, reference, readings, sensor["asFoundGain"], f"sensor {s}, trial {number}")
    for number, trial in enumerate(data["relativeTrials"], 1):
        readings = [numbers(keys, f"SensorRelTrial{number}Sensor{s}DropData") for s in range(1, len(sensors) + 1)]
        grand, error = relative_std_error(readings)
        same(trial["mean"]["value"], grand, "relative mean")
        same(trial["standardError"]["value"], error, "relative standard error")
        assert trial["verdict"] == verdict(error <= 3) and trial["standardError"]["unit"] == "micron"
        for sensor, row in zip(sensors, readings):
            own = sensor["relativeTrials"][number - 1]
            same(own["mean"]["value"], mean(row), "mean")
            same(own["standardDeviation"]["value"], math.sqrt(math.fsum((x - mean(row)) ** 2 for x in row) / 39), "s")
            same(own["meansRatio"], grand / mean(row), "ratio")
            same(own["gain"], sensor["interimGain"] * grand / mean(row), "relative gain")
    for s, sensor in enumerate(sensors):
        same(sensor["interimGain"], mean([trial["gain"] for trial in sensor["referenceTrials"]]), "interim gain")
        check_final(sensor, [trial["gain"] for trial in sensor["relativeTrials"]], limits, f"sensor {s}")
        both_fail = set(list(sensor["verdicts"].values())[:2]) == {"failed"}
        assert sensor["verdicts"]["all"] == verdict(not both_fail)
        assert sensor["serialNumber"] == keys["SensorSerialNumbers"].split(", ")[s]
        places = [trial["standPosition"] for trial in sensor["relativeTrials"]]
        assert places == [int(numbers(keys, f"SensorRelTrial{t + 1}Position")[s]) for t in range(trials)]
    failing = any(sensor["verdicts"]["all"] == "failed" for sensor in sensors)
    assert data["verdicts"]["final"] == verdict(not failing)


def check_files(data, folder, own):
    present = {os.path.relpath(os.path.join(where, name), folder).replace(os.sep, "/")
               for where, _, names in os.walk(folder) for name in names}
    listed = [file["name"] for file in data["files"]]
    assert set(listed) == present - {own} and len(listed) == len(set(listed)), f"{listed}, there are {present}"
    for file in data["files"]:
        with open(os.path.join(folder, file["name"]), "rb") as stream:
            content = stream.read()
        assert len(content) == file["bytes"], file["name"]
        assert hashlib.sha256(content).hexdigest() == file["sha256"], f"{file['name']} was changed"


def main():
    schema_path, folder = sys.argv[1:]
    with open(schema_path, encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    (path,) = glob(os.path.join(folder, "*.json"))
    with open(path, encoding="utf-8") as file:
        data = json.load(file)
    jsonschema.Draft202012Validator(schema).validate(data)
    check_files(data, folder, os.path.basename(path))
    (record,) = glob(os.path.join(folder, "BellmarkCalibrationRecord*.ddx"))
    keys = read_record(record)
    limits = (10.1, 11.5) if data["device"]["manufacturer"] == "Carlbro" else (0.98, 1.02)
    if data["loadCell"]:
        check_load_cell(data["loadCell"], keys)
    if data["deflectionSensors"]:
        check_sensors(data["deflectionSensors"], keys, limits)


try:
    main()
except (AssertionError, KeyError, jsonschema.ValidationError) as problem:
    sys.exit(f"{type(problem).__name__}: {problem}")
