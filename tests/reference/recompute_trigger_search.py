#!/usr/bin/env python3
"""Recomputes the search for a trigger level independently of the program: a separate analysis for every level.

    python3 tests/reference/recompute_trigger_search.py

writes trigger_search_expected.inc beside itself, which trigger_search_test.cpp compares with. Needs only Python's
standard library. It takes minutes.
"""

import random

import recompute_accel_drop as analysis
from accel_blocks import Block, volts_of

SHAPES = random.Random(4)


def digits(low, high, places=4):
    return round(SHAPES.uniform(low, high), places)


def made(pulses, noise=0.006, ringing=analysis.NO_RINGING, plateau=analysis.NO_PLATEAU, level=0.06, samples=6000):
    return Block(samples, SHAPES.randrange(1, 2**31), noise, 0.0, pulses, ringing, plateau, level)


def pulse(least=150, most=1500):
    return (SHAPES.randrange(1500, 2500), SHAPES.randrange(375, 526), digits(least, most, 1))


def cases():
    result = []
    many = lambda name, count, make: result.extend((name, make()) for _ in range(count))
    many("clean", 12, lambda: made([pulse()], noise=0.0))
    many("noisy", 24, lambda: made([pulse()], noise=digits(0.002, 0.03)))
    many("any level in force", 20, lambda: made([pulse()], level=digits(0.03, 1.5, 2)))
    many("ringing before", 12, lambda: made([pulse()], ringing=analysis.ring(SHAPES.randrange(300, 1200), digits(20, 80), digits(0.05, 0.5), 0.03), level=0.3))
    many("false trigger before", 12, lambda: made([(SHAPES.randrange(400, 1000), 8, 48), pulse()], level=0.3))
    many("plateau before", 10, lambda: made([pulse()], plateau=(SHAPES.randrange(300, 1200), SHAPES.randrange(12, 300), digits(0.05, 0.4)), level=0.3))
    many("two pulses", 8, lambda: made(sorted([pulse(), (SHAPES.randrange(2600, 3600), 400, digits(100, 900, 1))]), level=0.1))
    many("no pulse", 4, lambda: made([], noise=digits(0.01, 0.1)))
    return result


def search(block):
    volts = volts_of(block)
    drop = analysis.Drop(volts, block.level)
    drop.measure()
    saved = (drop.peak_index, drop.rise_time, drop.peak_metric)
    lower, upper, found = 0.05, 2.0, False
    good_levels, t = "", 0.0
    for _ in range(100):
        t += 0.02
        replay = analysis.Drop(volts, t)
        replay.measure()
        near = abs(replay.peak_index - saved[0]) < 15 and abs(replay.rise_time - saved[1]) <= 0.1 + 1e-9
        good = not replay.fault and near and abs(replay.peak_metric - saved[2]) <= 1.0 + 1e-9
        good_levels += "01"[good]
        if good and not found:
            lower, found = t, True
        elif good:
            upper = t
        else:
            upper = t - 0.02
            if t > block.level:
                break
    return [lower, upper, round((lower + (upper - lower) / 2) * 100) / 100], good_levels


def write_expectations():
    lines = ["// Written by recompute_trigger_search.py.\n"]
    for name, block in cases():
        band, good_levels = search(block)
        lines.append("{" + f'"{name}", {analysis.exactly(block)}, {{{", ".join(map(repr, band))}}}, "{good_levels}"' + "},\n")
    (analysis.FOLDER / "trigger_search_expected.inc").write_text("".join(lines))


if __name__ == "__main__":
    write_expectations()
