#!/usr/bin/env python3
"""Recomputes accelerometer drops independently of the program: a second implementation of the whole analysis.

    python3 tests/reference/recompute_accel_drop.py

writes accel_drop_expected.inc and Reference2-H3D1.txt beside itself, which accel_analysis_test.cpp and
accel_drop_file_test.cpp compare with. Needs only Python's standard library. Every pass over the block follows the procedure,
with whole lists and without shortcuts: it takes a minute.
"""

import math
import random
from itertools import accumulate
from pathlib import Path

import accel_blocks
from accel_blocks import Block, acceleration, single, volts_of

FOLDER = Path(__file__).parent
DT = single(6.666667e-05)
G = 9.80665
MILLISECONDS = 0.06666666666666667


class Fault(Exception):
    """The block cannot be integrated."""


def moving_std_dev(values, window):
    total = squares = 0.0
    result = []
    for i, value in enumerate(values):
        total += value
        squares += value * value
        if i < window - 1:
            result.append(0.0)
            continue
        variance = (squares - total * total / window) / (window - 1)
        result.append(math.sqrt(variance) if variance > 0 else 0.0)
        leaving = values[i - window + 1]
        total -= leaving
        squares -= leaving * leaving
    return result


def half_even(value, places):
    """value times a power of ten, rounded to a whole number, divided by the same power."""
    return round(value * 10**places) / 10**places


class Drop:
    """One block: its data, and the results of one round after the other."""

    def __init__(self, volts, level, burst=1.0):
        self.n = len(volts)
        # The element after the block is 0 V in a fresh record.
        self.abs_accel = [acceleration(v) for v in volts + [0.0]]
        self.sd25 = moving_std_dev(self.abs_accel, 25)
        self.level = level
        self.burst = burst
        self.velocity = [0.0] * (self.n + 1)
        self.deflection = [0.0] * (self.n + 1)

    def integrate(self):
        n, f = self.n, self.fulcrum
        self.rel_g = [a - self.baseline for a in self.abs_accel]
        self.rel = a = [g * G * 1000000 for g in self.rel_g]
        steps = [(p + q) * DT / 2 for p, q in zip(a[1:], a)]  # from sample i to i + 1
        back = list(accumulate([0.0] + [-s for s in reversed(steps[1:f])]))  # samples f to 1
        ahead = list(accumulate([0.0] + steps[f + 1 : n]))  # samples f to n - 1
        v = self.velocity[:1] + back[:0:-1] + ahead if f else ahead
        v = [value - self.offset - self.trim for value in v] + self.velocity[n:]
        steps = [(p + q) * DT / 2 for p, q in zip(v[1:], v)]
        back = list(accumulate([0.0] + steps[f - 1 : 0 : -1])) if f else [0.0]
        ahead = list(accumulate([0.0] + [-s for s in steps[f + 1 : n]]))
        first = self.deflection[:1] if f else []
        self.deflection = first + back[:0:-1] + ahead + self.deflection[n:]
        self.velocity = v

    def scan(self):
        """Position of the scan and sample at which a pulse is found, or None."""
        while True:
            self.fulcrum += 75
            start, run = self.fulcrum - 75, 0
            for i in range(start, self.fulcrum + 75 + 1):
                if i > self.n:
                    raise Fault
                run = 0 if abs(self.abs_accel[i] - 1.0) <= self.level else run + 1
                if run > 10:
                    return self.fulcrum, i
            if self.n - 150 < self.fulcrum:
                return None

    def quiet_point(self, position):
        start_from = round(position - 37.5)
        start = start_from - 75
        for i in range(start_from, max(start, 1) - 1, -1):
            if self.sd25[i] < 0.02 and self.abs_accel[i - 1] < self.abs_accel[i]:
                return i
        return max(start, 0)

    def burst_point(self, position, fired):
        a = self.abs_accel
        found = next((j for j in range(fired, position - 76, -1) if self.sd25[j] < 0.02 and a[j] - self.burst > -0.03), position)
        for j in range(fired, max(fired - 150, 1) + 1, -1):
            if all(abs(a[j - k] - self.burst) < 0.03 for k in range(3)):
                return j - 1
        return found

    def find_pulse(self, regression):
        """Each round must advance: a fulcrum not after the last round's is skipped."""
        while True:
            found = self.scan()
            if found is None:
                self.no_fulcrum = True
                self.fulcrum, self.window_start, self.deflection_fulcrum, end = 75, 0, 150, 1575
                break
            position, fired = found
            if round(position - 37.5) > self.n:
                raise Fault
            end = position + 1500
            fulcrum = self.quiet_point(position) if regression else self.burst_point(position, fired)
            if fulcrum > self.n - 2:
                raise Fault  # nothing is left to integrate
            if fulcrum > self.last_fulcrum:
                self.last_fulcrum = self.fulcrum = fulcrum
                self.window_start = max(fulcrum - 75, 0)
                self.deflection_fulcrum = position + 75 if regression else fired
                break
        self.window_end = min(end, self.n - 1)

    def fit_drift(self, second):
        first = self.deflection_fulcrum + 1500
        xs, ys, run = [], [], 0
        for i in range(first, self.n + 1):
            v, d = self.velocity[i], self.deflection[i]
            run = 0 if abs(v) >= 10000.0 or abs(d) >= 400.0 else run + 1
            if not second or run > 10:
                xs.append((i - self.fulcrum) * DT * 1000)
                ys.append(d)
        if not xs:
            return
        if len(xs) == 1:
            raise Fault  # the determinant is zero
        # One after the other, as in the procedure: with few samples the fit depends on the last digits of the sums.
        x2 = x3 = x4 = xy = x2y = 0.0
        for x, y in zip(xs, ys):
            square = x * x
            x2 += square
            x3 += square * x
            x4 += square * square
            xy += x * y
            x2y += square * y
        # With samples close together in time, line and parabola differ only in the last digits of the sums.
        self.lost = max(self.lost, x3 * x3 / (x4 * x2 - x3 * x3))
        a2 = (xy - x2y * x2 / x3) / (x3 - x4 * x2 / x3)
        a1 = (x2y - a2 * x4) / x3
        self.baseline -= 2 * a2 / 9.80665
        self.offset += a1 * 1000

    def fit_before_fulcrum(self):
        window = range(max(self.fulcrum - 150, 0), self.fulcrum + 1)
        xs = [(i - self.fulcrum) * DT * 1000 for i in window]
        squares = math.fsum(x * x for x in xs)
        if squares:
            self.trim -= math.fsum(x * self.deflection[i] for x, i in zip(xs, window)) / squares * 1000

    def integrate_round(self):
        self.baseline = self.pre_fulcrum
        self.integrate()
        for second in (False, True):
            self.fit_drift(second)
            self.integrate()
        self.fit_before_fulcrum()
        self.integrate()

    def integrate_from_rest(self):
        self.baseline = self.burst
        self.integrate()
        v, lowest = self.velocity, max(self.fulcrum - 375, 1)
        sd = moving_std_dev(v[: self.n], 25)
        self.fulcrum = next((j for j in range(self.fulcrum, lowest - 1, -1) if sd[j] < 150.0 and v[j] > -300.0), self.fulcrum)
        for j in range(self.fulcrum, lowest + 1, -1):
            if all(abs(v[j - k]) < 30.0 for k in range(3)):
                self.fulcrum = j - 1
                break
        self.integrate()

    def find_peak(self):
        d = self.deflection
        rise = next((i for i in range(max(self.fulcrum, 1), self.window_end) if d[i] > 0.5), None)
        if rise is not None:
            self.deflection_fulcrum = rise
        self.peak_metric = self.peak_english = 0.0
        for i in range(self.deflection_fulcrum, self.window_end + 1):
            if d[i] > self.peak_metric:
                self.peak_metric, self.peak_english = half_even(d[i], 1), half_even(d[i] / 25.4, 3)
                self.peak_index = i

    def find_start(self, regression):
        d, peak = self.deflection, self.peak_index
        reference = d[self.fulcrum]
        height = d[peak] - reference
        i, run = peak, 0
        while i >= self.fulcrum and d[i] >= reference:
            low = d[i] - reference < 0.01 * height
            flat = regression and abs(d[i] - d[i + 1]) < 0.05
            run = run + 1 if low and (flat or d[i] > d[i + 1]) else 0
            if run >= 3:
                break
            i -= 1
        i = max(i, 0)
        steps, run = 1, 0
        for k in range(i + 1, peak + 1):
            if d[k] < d[k - 1] and d[k] > 0:
                run = 0
            elif run > 5:
                break
            else:
                run += 1
            steps += 1
        self.start = max(i + steps - 5, 0)
        self.rise_time = (peak - self.start) * MILLISECONDS

    def measure(self, regression=True):
        self.fulcrum = self.deflection_fulcrum = self.window_start = self.window_end = self.start = self.peak_index = 0
        self.offset = self.trim = self.peak_metric = self.peak_english = 0.0
        self.baseline = self.pre_fulcrum = self.rise_time = 0.0
        self.rel = self.rel_g = [0.0]
        self.no_fulcrum = self.fault = False
        self.last_fulcrum = -1
        self.lost = 0.0
        try:
            if self.n < 151:
                raise Fault
            while self.peak_metric < 50.0 and not self.no_fulcrum:
                self.find_pulse(regression)
                window = self.abs_accel[self.window_start : self.fulcrum + 1]
                self.pre_fulcrum = math.fsum(window) / len(window)
                self.integrate_round() if regression else self.integrate_from_rest()
                self.find_peak()
                self.find_start(regression)
        except Fault:
            self.fault = True
            self.fulcrum = max(self.last_fulcrum, 0)  # the scan ran ahead of it
            self.peak_metric = self.peak_english = -1.0

    def noise(self):
        window = self.deflection[max(self.fulcrum - 375, 0) : self.fulcrum + 1]
        return max(window) - min(window)

    def vibration(self):
        """The largest of the least distances from 1 g of eleven consecutive samples, up to the fulcrum."""
        away = [abs(a - 1.0) for a in self.abs_accel[: self.fulcrum + 1]]
        return max((min(away[i - 10 : i + 1]) for i in range(10, len(away))), default=0.0)


def checksum(values):
    return math.fsum(value * ((i * 7919) % 1000 / 1000 - 0.5) for i, value in enumerate(values))


def expectation(block, regression, burst):
    drop = Drop(volts_of(block), block.level, burst)
    drop.measure(regression)
    d = drop.deflection
    samples = drop.abs_accel[:-1]
    indexes = [drop.fulcrum, drop.deflection_fulcrum, drop.window_start, drop.window_end, drop.start, drop.peak_index]
    flags = [drop.fault, drop.no_fulcrum, drop.noise() > 4.0, max(samples) > 4.9 or min(samples) < -4.9]
    flags.append(drop.vibration() > block.level / 2)
    rounded = [drop.peak_metric, drop.peak_english]
    at_start = sum(d[max(drop.start - k, 0)] for k in (2, 3, 4)) / 3
    values = [drop.rise_time, drop.baseline, drop.pre_fulcrum, drop.offset, drop.trim, drop.noise(), at_start]
    values += [min(samples + [0.0]), max(samples + [0.0]), drop.vibration()]
    histories = [drop.abs_accel, drop.rel, drop.velocity, d, drop.sd25, moving_std_dev(drop.abs_accel, 100)]
    sums = [[max(map(abs, history)), checksum(history)] for history in histories]
    return max(1, round(drop.lost / 1e4)), indexes, flags, rounded, values, sums


SHAPES = random.Random(1)
NO_RINGING = (0, 0.0, 0.0, 0.0)
NO_PLATEAU = (0, 0, 0.0)


def digits(low, high, places=4):
    return round(SHAPES.uniform(low, high), places)


def pulse(start=None, least=150, most=1500):
    start = SHAPES.randrange(3000, 5000) if start is None else start
    return (start, SHAPES.randrange(375, 526), digits(least, most, 1))


def with_rebounds(first):
    start, width, microns = first
    return [first, (start + 3100, width, round(0.35 * microns, 1)), (start + 5400, width, round(0.12 * microns, 1))]


def block(pulses, samples=15000, noise=0.006, drift=0.0, ringing=NO_RINGING, plateau=NO_PLATEAU, level=0.06):
    return Block(samples, SHAPES.randrange(1, 2**31), noise, drift, pulses, ringing, plateau, level)


def ring(start, hertz, g, seconds=0.05):
    c1, c2 = accel_blocks.damped(hertz, seconds)
    return (start, c1, c2, round(g * math.sin(2 * math.pi * hertz / 15000), 6))


def plateau_case(length, level):
    """The given number of samples at 1.06 g, separate from a pulse that follows."""
    start = SHAPES.randrange(1000, 2000)
    return block(with_rebounds(pulse()), noise=0.0, plateau=(start, length, 0.06), level=level)


def ends_at_fit(rest):
    """A block that ends the given number of samples after the start of the fit of the drift."""
    whole = block([pulse(3000, 500)], noise=0.004)
    drop = Drop(volts_of(whole), whole.level)
    drop.fulcrum = 0
    return whole._replace(samples=drop.scan()[0] + 75 + 1500 + rest)


def regression_cases():
    cases = []
    many = lambda name, count, make: cases.extend((name, make()) for _ in range(count))
    many("clean", 20, lambda: block(with_rebounds(pulse()), noise=0.0))
    many("noisy", 30, lambda: block(with_rebounds(pulse()), noise=digits(0.003, 0.03)))
    many("drifting", 26, lambda: block(with_rebounds(pulse()), drift=digits(-0.03, 0.03)))
    many("ringing after the pulse", 14, lambda: block(with_rebounds(pulse(4000)), ringing=ring(4200, digits(20, 90), 0.3)))
    many("ringing before", 14, lambda: block(with_rebounds(pulse(4000)), ringing=ring(digits(1000, 3800, None), digits(15, 90), digits(0.03, 0.4))))
    many("no pulse", 16, lambda: block([], noise=digits(0.0, 0.05), drift=digits(-0.02, 0.02)))
    many("pulse at the start", 16, lambda: block([pulse(SHAPES.randrange(-150, 400))]))
    many("pulse at the end", 20, lambda: block([pulse(SHAPES.randrange(12000, 15000))], noise=0.004))
    many("two pulses", 16, lambda: block(sorted([pulse(), pulse(SHAPES.randrange(5000, 9000))])))
    many("false trigger before", 12, lambda: block([pulse(SHAPES.randrange(500, 2500), 8, 48), *with_rebounds(pulse())]))
    many("many false triggers", 6, lambda: block(with_rebounds(pulse()), ringing=ring(500, 120, 0.2, 0.3), level=0.05))
    many("beyond the range", 4, lambda: block([pulse(least=2500, most=4000)]))
    many("short", 8, lambda: block([pulse(SHAPES.randrange(400, 1200))], samples=SHAPES.randrange(1500, 4000)))
    many("very short", 4, lambda: block([], samples=SHAPES.randrange(151, 400)))
    for length, level in ((10, 0.05), (11, 0.05), (12, 0.05), (11, 0.07)):
        many(f"{length} samples at the trigger", 2, lambda: plateau_case(length, level))
    many("unquiet to the end", 4, lambda: block([], noise=digits(2.0, 4.0), samples=SHAPES.randrange(2000, 4000)))
    many("late false trigger", 4, lambda: block([pulse(SHAPES.randrange(14700, 14990), 8, 48)]))
    for rest in (-1, 0, 1, 2, 11, 12, 13):
        many("the fit's first samples", 1, lambda: ends_at_fit(rest))
    cases.append(("151 samples", block([], samples=151)))
    cases.append(("150 samples", block([], samples=150)))
    return cases


def literal(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, (list, tuple)):
        return "{" + ", ".join(map(literal, value)) + "}"
    return repr(value) if isinstance(value, (int, str)) else f"{value:.13g}"


def exactly(made):
    """All digits, so that both sides make the same block."""
    return repr(tuple(made)).replace("(", "{").replace(")", "}").replace("[", "{").replace("]", "}").replace(",}", "}")


def write_expectations():
    lines = ["// Written by recompute_accel_drop.py.\n"]
    cases = [(name, made, True, 1.0) for name, made in regression_cases()]
    chosen = [case for case in cases if case[0] in ("clean", "noisy", "drifting", "two pulses", "no pulse", "false trigger before")]
    cases += [(name, made, False, digits(0.998, 1.002)) for name, made, _, _ in chosen[::5]]
    for name, made, regression, burst in cases:
        found = expectation(made, regression, burst)
        lines.append("{" + f'"{name}", {exactly(made)}, {literal(regression)}, {burst!r}, ' + ", ".join(map(literal, found)) + "},\n")
    (FOLDER / "accel_drop_expected.inc").write_text("".join(lines))


def padded(text, column):
    return text.ljust(column - 1)


def write_drop_file():
    """The file of a block of four samples, with an acceleration of 2 V - 1 and made-up histories."""
    heading = """Sensor Reference Calibration
FWD Owner = Straßenamt
FWD Name = FWD-101
FWD Serial Number = 8002-101
Date & Time = 09-Mar-2012, 14:05:09
FWD Calibration Center Code = 7
FWD Calibration Center = Sample Center

Reference2-H3D1.txt
Accelerometer Serial Number = ACC-311
Accelerometer Reference Calibration Date = 8/22/2011
Cert. +G DC (V)=2.9713
Cert. -G DC (V)=2.1287
B(g) = -6.0531, A1(g/V) = 2.3734, A2(g/V^2) = 0.00012, A3(g/V^3) = -1E-05
Accelerometer Daily Calibration Date and Time = 08-Mar-2012 07:03:59
Daily +G DC (V)=2.9705
Daily -G DC (V)=2.1279

Peak Value (mils) = 19.701
Peak Value (microns) = 500.4
Trigger Reading = 2
Trigger Data TimeStamp = 14:05:08
Velocity Fulcrum Reading = 1
Defelection Fulcrum Reading = 1
Start Pulse Reading = 2
Peak Sample Number = 4
Pulse Rise Time (mSec) = 16.2

Initial Burst Average (volts) = 2.9704
Initial Burst Std.Dev (volts) = 0.00081
Initial Burst TimeStamp = 14:04:51
Initial Burst Abs.Acceleration (g) = 0.999763
Average Accel 25 mSec prior to fulcrum (g) = 1.000124

"""
    lines = heading.split("\n")[:-1]
    title = padded(padded(padded("Sample,", 9) + "Time(sec),", 22) + "Volts,", 36) + "Acceleration(g),"
    title = padded(padded(title, 53) + "Rel.Accel.(µm/sec²),", 70) + "Velocity(µm/sec),"
    lines.append(padded(title, 86) + "Displacement(µm)")
    rows = [(2.9704, 0.0, 0.0), (2.9101, 11.0, 0.0), (-2.5, 123456.7, 0.53), (10.0, -98765.4321, 500.44)]
    for i, (volts, velocity, displacement) in enumerate(rows):
        volts = single(volts)
        g = 2 * volts - 1
        row = padded(padded(f"{i + 1},", 9) + f"{i * DT:.4E},", 22) + f"{volts:.4E},"
        row = padded(padded(row, 36) + f"{g:.4E},", 53) + f"{g * 9806650 - 1:.4E}"
        if i > 1:
            row = padded(padded(row + ",", 70) + f"{velocity:.4E},", 86) + f"{displacement:.4E}"
        lines.append(row)
    (FOLDER / "Reference2-H3D1.txt").write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


if __name__ == "__main__":
    write_expectations()
    write_drop_file()
