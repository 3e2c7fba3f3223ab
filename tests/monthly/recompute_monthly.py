#!/usr/bin/env python3
"""Monthly calibrations of made readings, in exact fractions and by correction terms: makes monthly_expected.inc. The
test makes the same readings from the same whole numbers. Then the exact critical values: critical_expected.inc."""

from fractions import Fraction
from pathlib import Path

import mpmath

mpmath.mp.dps = 30
DROPS_PER_SET = 5
FOLDER = Path(__file__).parent


class Made:
    """Whole numbers from 0 up to a limit, as the test makes them."""

    def __init__(self, seed):
        self.state = seed

    def below(self, limit):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % limit


def tail(df1, df2, quotient):
    x = mpmath.mpf(df2) / (df1 * quotient + df2)
    return mpmath.betainc(mpmath.mpf(df2) / 2, mpmath.mpf(df1) / 2, 0, x, regularized=True)


def critical_f(df1, df2, alpha):
    return mpmath.findroot(lambda F: tail(df1, df2, F) - alpha, (mpmath.mpf("1.5"), mpmath.mpf(4)), solver="anderson")


def critical_c(groups, size, alpha):
    df = size - 1
    return 1 / (1 + (groups - 1) / critical_f(df, (groups - 1) * df, mpmath.mpf(alpha) / groups))


def real(number):
    return mpmath.mpf(number.numerator) / number.denominator if isinstance(number, Fraction) else mpmath.mpf(number)


def text(number):
    return mpmath.nstr(real(number), 17)


def make_trial(made, case, sensors, offsets):
    """Readings in the last decimal of their unit: 0.001 mils or 0.01 microns."""
    base, noise = (19800, 40) if case % 2 == 1 else (50000, 100)
    noise *= (1, 1, 4, 30)[case % 4]
    sets = [made.below(1 + noise * (case % 3)) for _ in range(sensors)]
    places = [made.below(1 + noise * (case // 3 % 2)) for _ in range(sensors)]
    loose = case % 7
    readings = []
    for s in range(sensors):
        row = []
        for k in range(1, sensors + 1):
            # The position of sensor s + 1 in set k, as the procedure's own recipe fills its map.
            i = s + 1
            place = i - k + 1 if i >= k else sensors - k + 1 + i
            for _ in range(DROPS_PER_SET):
                row.append(base + offsets[s] + sets[k - 1] + places[place - 1]
                           + (made.below(noise) - noise // 2) * (2 if s == loose else 1))
        readings.append(row)
    return readings


def analyse(values, critical):
    n = len(values)
    totals = {"set": [0] * n, "place": [0] * n, "sensor": [0] * n}
    for s, row in enumerate(values):
        for d, value in enumerate(row):
            k = d // DROPS_PER_SET + 1
            place = s + 1 - k + 1 if s + 1 >= k else n - k + 1 + s + 1
            totals["set"][k - 1] += value
            totals["place"][place - 1] += value
            totals["sensor"][s] += value
    grand = sum(totals["sensor"])
    count = DROPS_PER_SET * n * n
    correction = Fraction(grand * grand) / count
    squares = {source: sum(Fraction(t) ** 2 for t in sums) / (DROPS_PER_SET * n) - correction
               for source, sums in totals.items()}
    total = sum(value * value for row in values for value in row) - correction
    degrees = count - 1 - 3 * (n - 1)
    error = (total - sum(squares.values())) / degrees
    quotients = {source: square / (n - 1) / error for source, square in squares.items()}
    means = [Fraction(t) / (DROPS_PER_SET * n) for t in totals["sensor"]]
    variances = [sum((v - mean) ** 2 for v in row) / (len(row) - 1) for row, mean in zip(values, means)]
    return {"squares": squares, "total": total, "degrees": degrees, "error": error, "quotients": quotients,
            "ratios": [Fraction(grand) / count / mean for mean in means], "cochran": max(variances) / sum(variances),
            "worst": variances.index(max(variances)), "significant": [q > critical for q in
                                                                        (quotients["set"], quotients["place"],
                                                                         quotients["sensor"])]}


FIXED_F = {6: "2.5", 7: "2.13885", 8: "2.04037", 9: "1.96278", 10: "1.89971", 11: "1.84719", 12: "1.8026"}
FIXED_C = {7: "0.2326", 9: "0.1792"}


def decide(gains, existing, ratios, trials, replaced):
    """Counts, and the step of a monthly calibration (252: the message asks) and of a replacement."""
    limit = Fraction(3, 1000)
    mean = [sum(g) / trials for g in zip(*gains)]
    counts = [sum(abs(1 - r) > limit for r in ratios), sum(abs(1 - g) > Fraction(2, 100) for g in gains[-1]),
              sum(abs(b - a) >= limit for a, b in zip(*gains)) if trials == 2 else 0,
              sum(abs(m - e) > limit for m, e in zip(mean, existing))]
    if trials == 1:
        return counts, 69 if counts[0] == counts[1] == 0 else 61, 71
    return counts, 252 if counts[2] else 63, 73 if abs(gains[1][replaced] - gains[0][replaced]) < limit else 71


def lines_of(case):
    made = Made(case + 1)
    sensors, unit = 6 + case % 7, 1000 if case % 2 == 1 else 100
    existing = [Fraction(9950 + made.below(100), 10000) for _ in range(sensors)]
    spread = (1, 60, 200, 400, 1500)[case % 5]
    offsets, gains = None, []
    for trial in range(1, 3):
        if trial == 1 or case % 3 == 2:
            offsets = [made.below(spread) for _ in range(sensors)]
        readings = make_trial(made, case, sensors, offsets)
        values = [[Fraction(v, unit) for v in row] for row in readings]
        found = analyse(values, Fraction(FIXED_F[sensors]))
        gains.append([e * r for e, r in zip(existing, found["ratios"])])
        counts, monthly, replacement = decide(gains, existing, found["ratios"], trial, case % sensors)
        squares, quotients = found["squares"], found["quotients"]
        micron_error = mpmath.sqrt(real(found["error"])) * (mpmath.mpf("25.4") if unit == 1000 else 1)
        numbers = [squares["set"], squares["place"], squares["sensor"], found["total"], quotients["set"],
                   quotients["place"], quotients["sensor"], tail(sensors - 1, found["degrees"], real(quotients["set"])),
                   found["ratios"][-1], gains[-1][0], found["cochran"], micron_error]
        critical = Fraction(FIXED_C.get(sensors, 0))
        wholes = [found["degrees"], found["worst"], *map(int, found["significant"]), int(found["cochran"] > critical),
                  *counts, monthly, replacement]
        yield "{" + ", ".join([*map(text, numbers), *map(str, wholes)]) + "},\n"


def main():
    (FOLDER / "monthly_expected.inc").write_text("".join(line for case in range(50) for line in lines_of(case)))
    lines = []
    for sensors in range(6, 13):
        degrees = DROPS_PER_SET * sensors * sensors - 1 - 3 * (sensors - 1)
        values = critical_f(sensors - 1, degrees, mpmath.mpf("0.05")), critical_c(sensors, DROPS_PER_SET * sensors, "0.05")
        lines.append("{" + ", ".join([str(sensors), *map(text, values)]) + "},\n")
    (FOLDER / "critical_expected.inc").write_text("".join(lines))


if __name__ == "__main__":
    main()
