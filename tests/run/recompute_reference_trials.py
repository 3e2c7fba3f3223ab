#!/usr/bin/env python3
"""Statistics of the sensors' reference trials over 50 made-up runs, in exact fractions, for reference_trials_test.cpp.

Writes reference_trials_expected.inc. The test has the same generator of the runs, so that only the results
have to be kept.
"""
import math
from fractions import Fraction
from pathlib import Path

state = 20120309


def share():
    """A number from 0 to 1, a multiple of 2^-31."""
    global state
    state = (state * 1103515245 + 12345) % 2**31
    return state / 2**31


def deviation(values):
    """Sample standard deviation."""
    mean = sum(values) / len(values)
    return math.sqrt(sum((v - mean) ** 2 for v in values) / (len(values) - 1))


def run(number):
    sensors = 5 + number % 8
    trials = 4 if number % 3 == 2 else 2
    scale = 10.8 if number % 5 == 4 else 1.0
    initial, gains, factors = [], [], []
    for _ in range(sensors):
        initial.append(Fraction(scale * (0.98 + 0.04 * share())))
        row = [scale * (0.98 + 0.04 * share()) for _ in range(trials)]
        gains.append([Fraction(g) for g in row])
        factors.append([Fraction(g / scale) for g in row])
    old = sum(initial) / sensors
    averages = [sum(g[t] for g in gains) / sensors for t in range(trials)]
    means = [sum(g) / trials for g in gains]
    differences = [sum(g[t + 1] - g[t] for t in range(0, trials, 2)) / (trials // 2) for g in gains]
    interim = sum(means) / sensors
    last = trials - 1
    return [
        sum((a - old) / old for a in averages) / trials,
        sum(differences),
        math.sqrt(sum(d * d for d in differences) / sensors),
        sum(f[last] for f in factors) / sensors,
        averages[last],
        deviation([g[last] for g in gains]),
        (averages[last] - old) / old,
        interim,
        deviation(means),
        (interim - old) / old,
        means[-1],
        (means[-1] - initial[-1]) / initial[-1],
        differences[-1],
        deviation(gains[-1]),
    ]


lines = ["{" + ", ".join(repr(float(v)) for v in run(n)) + "}," for n in range(50)]
Path(__file__).with_name("reference_trials_expected.inc").write_text("\n".join(lines) + "\n")
