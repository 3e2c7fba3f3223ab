#!/usr/bin/env python3
"""Recomputes load cell drops independently of the program, in exact rational numbers and with another search.

    python3 tests/reference/recompute_load_drop.py

writes load_drop_expected.inc and LoadCell2-H3D2.txt beside itself, which load_analysis_test.cpp and drop_file_test.cpp
compare with. Needs only Python's standard library. The blocks are made by a formula of sums, products and one
generator of whole numbers, which the test repeats: both get the same single-precision volts to the last bit.
"""

import struct
from fractions import Fraction
from pathlib import Path

KN_PER_POUND = Fraction("0.0044482")
FOLDER = Path(__file__).parent


def single(value):
    return struct.unpack("f", struct.pack("f", value))[0]


def block(samples, start, width, pulse, zero, noise, seed):
    """Volts of a pulse (4 x (1 - x))², x from 0 to 1 over the width, on a noisy zero."""
    volts = []
    for i in range(samples):
        seed = (seed * 1103515245 + 12345) % 2**31
        ripple = (seed // 65536) / 32768 - 0.5
        x = (i - start) / width
        shape = 4 * x * (1 - x) if 0 < x < 1 else 0.0
        volts.append(single(zero + pulse * (shape * shape) + noise * ripple))
    return volts


def rounded(value, places):
    """Rounds half to even, exactly."""
    return Fraction(round(value * 10**places), 10**places)


def analyse(volts, coefficients, multiplier, pounds, english):
    n = len(volts)
    load = []
    for v in volts + [0.0]:  # the element behind the block, which a fresh record holds as 0
        v = Fraction(v) * Fraction(multiplier)
        load.append(sum(Fraction(c) * v ** (k + 1) for k, c in enumerate(coefficients)) / (1 if pounds else KN_PER_POUND))
    peak = load.index(max(load[:n]))
    zero_start = max(peak - 750, 0)
    zero_end = max(peak - 375, zero_start)
    window = load[zero_start : zero_end + 1]
    mean = sum(window) / len(window)
    zeroed = [f - mean for f in load]

    # Where a search back from the peak ends: the last sample below the zero, or the last of three falling ripples within a
    # hundredth of the peak, whichever comes first on the way.
    def ripple(i):
        return zeroed[i] < zeroed[peak] / 100 and load[i] > load[i + 1]

    below = [i for i in range(zero_end, peak + 1) if load[i] < mean]
    ripples = [i for i in range(zero_end, peak - 1) if ripple(i) and ripple(i + 1) and ripple(i + 2)]
    stop = max(below + ripples + [zero_end - 1])
    near_zero = [i for i in range(max(stop, zero_end), peak + 1) if zeroed[i] / zeroed[peak] < Fraction(1, 1000)]
    if stop in below and stop in near_zero:
        near_zero.remove(stop)
    rough = max(near_zero, default=0)
    if rough - stop <= 10:
        rough = stop

    # The pulse starts at the first of four consecutive steps without a fall.
    rises = [i for i in range(rough + 4, peak + 1) if all(load[k] >= load[k - 1] for k in range(i - 3, i + 1))]
    start = rises[0] - 3 if rises else peak - 2
    pounds_peak = rounded(zeroed[peak], 1)
    at_start = sum(zeroed[start - 10 : start]) / 10
    return {
        "peakIndex": peak,
        "plotStart": max(peak - 1500, 0),
        "plotEnd": min(peak + 494, n - 1),
        "zeroStart": zero_start,
        "zeroEnd": zero_end,
        "startPulse": start,
        "riseTime": float(Fraction(peak - start, 15)),
        "pounds": float(pounds_peak),
        "kilonewtons": float(rounded(pounds_peak * KN_PER_POUND, 3)),
        "noise": float(max(window) - min(window)),
        "loadAtStart": float(rounded(at_start, 1 if english else 3)),
    }


CELL = [4012.37, 1.8312, -0.26471, 0.0118, -0.00049]
METRIC_CELL = [17.8478, 0.00814555, -0.00117748, 0.0000524888, -0.00000217962]

# name, block, shunt multiplier, pounds, English units
CASES = [
    ("strong pulse", (15000, 3600, 420, 2.25, 0.0031, 0.0012, 1), 1.002, True, True),
    ("the same shown in kN", (15000, 3600, 420, 2.25, 0.0031, 0.0012, 1), 1.002, True, False),
    ("cell in kN", (15000, 3600, 420, 2.25, 0.0031, 0.0012, 1), 1.002, False, False),
    ("amplified a hundredth less", (15000, 3600, 420, 2.25, 0.0031, 0.0012, 1), 0.99, True, True),
    ("small pulse on a restless zero", (15000, 5200, 390, 0.31, -0.02, 0.009, 7), 1.0, True, True),
    ("noise above the limit", (15000, 5200, 390, 1.5, 0.01, 0.03, 3), 1.0, True, True),
    ("long slow pulse", (15000, 8000, 2400, 2.9, 0.0, 0.002, 11), 1.0, True, True),
    ("pulse at the end of a short block", (3000, 2600, 800, 2.0, 0.005, 0.001, 5), 1.0, True, True),
    ("pulse soon after the start", (3000, 60, 420, 2.0, 0.005, 0.001, 9), 1.0, True, True),
]


def write_expectations():
    lines = ["// Written by recompute_load_drop.py.\n"]
    for name, parameters, multiplier, pounds, english in CASES:
        found = analyse(block(*parameters), CELL if pounds else METRIC_CELL, multiplier, pounds, english)
        texts = [f'"{name}"', "{" + ", ".join(map(repr, parameters)) + "}", repr(multiplier)]
        texts += ["true" if flag else "false" for flag in (pounds, english)]
        texts += ["{" + ", ".join(repr(value) for value in found.values()) + "}"]
        lines.append("{" + ", ".join(texts) + "},\n")
    (FOLDER / "load_drop_expected.inc").write_text("".join(lines))


def padded(text, column):
    return text.ljust(column - 1)


def write_drop_file():
    """The file of a block of five samples, with one coefficient: load = 1000 V, shunt multiplier 1, zero of 2 pounds."""
    heading = """Load Cell Calibration
FWD Owner = Sample Road Agency
FWD Name = FWD-101
FWD Serial Number = 8002-101
Date & Time = 09-Mar-2012, 14:05:09
FWD Calibration Center Code = 7
FWD Calibration Center = Sample Center

LoadCell2-H3D2.txt
Reference Load Cell = RLC-07
Reference Load Cell Calibration Date = 11/3/2011
Reference Load Cell Calibration Units = pound-force
Reference Load Cell Gain = 5.00
Reference Load Cell Calibration Coefficients = 1000, 1.5, -0.25, 1E-05, -0.00049

Peak Value (pounds) = 9012.5
Peak Value (kN) = 40.089
End of Zero Period Reading Number = 3
Start Pulse Reading Number = 2
Peak Reading Number = 5
Pulse Rise Time (mSec) = 0.1
Daily Shunt Multiplier = 1.002

"""
    lines = heading.split("\n")[:-1]
    title = padded("Sample,", 10) + "Time (sec),"
    title = padded(padded(padded(title, 22) + "Volts,", 36) + "Total Load (lbs),", 53) + "Zeroed Load (lbs)"
    lines.append(title)
    step = single(6.666667e-05)
    for i, volts in enumerate([0.002, -0.0015, 0.0, 1.25, 9.0145]):
        volts = single(volts)
        load = 1000 * volts
        row = padded(padded(f"{i + 1},", 9) + f"{i * step:.4E},", 22) + f"{volts:.4E},"
        lines.append(padded(padded(row, 36) + f"{load:.7E},", 53) + f"{load - 2:.7E}")
    (FOLDER / "LoadCell2-H3D2.txt").write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


if __name__ == "__main__":
    write_expectations()
    write_drop_file()
