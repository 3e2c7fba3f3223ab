#!/usr/bin/env python3
"""Made gains over the years, their place on the axis of years, and the slope of the line of least squares in exact
fractions: makes gain_trend_expected.inc."""

import datetime
import random
from fractions import Fraction

MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()


def years(day):
    """The year and the part of it that has passed."""
    start, end = datetime.date(day.year, 1, 1), datetime.date(day.year + 1, 1, 1)
    return day.year + Fraction((day - start).days, (end - start).days)


def change_per_year(points):
    """Slope of the normal equations as a fraction of the mean, a year being 365.25 days."""
    n = len(points)
    x = [Fraction(4 * day.toordinal(), 1461) for day, _ in points]
    y = [gain for _, gain in points]
    sx, sy = sum(x), sum(y)
    slope = (n * sum(a * b for a, b in zip(x, y)) - sx * sy) / (n * sum(a * a for a in x) - sx * sx)
    return slope / (sy / n)


def main():
    made = random.Random(20120309)
    lines = []
    for case in range(12):
        count = 2 + case * case // 4
        scale = 10000 if case % 3 else 108000
        days = sorted(made.sample(range(datetime.date(1980, 1, 1).toordinal(), datetime.date(2012, 3, 9).toordinal()), count))
        points = [(datetime.date.fromordinal(day), Fraction(scale + made.randint(-200, 200) + case * i, 10000))
                  for i, day in enumerate(days)]
        text = ";".join(f"{d.day:02}-{MONTHS[d.month - 1]}-{d.year}={float(g):.4f}" for d, g in points)
        last = float(years(points[-1][0]))
        lines.append(f'{{"{text}", {last!r}, {float(change_per_year(points))!r}}},\n')
    with open("gain_trend_expected.inc", "w", encoding="ascii") as file:
        file.writelines(lines)


main()
