#!/usr/bin/env python3
"""Annual relative calibrations of made readings, in exact fractions and by the correction term: makes
relative_expected.inc. The test makes the same readings from the same whole numbers."""

from fractions import Fraction

import mpmath

mpmath.mp.dps = 30
SETS, DROPS_PER_SET = 8, 5
DROPS = SETS * DROPS_PER_SET


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


def text(number):
    return mpmath.nstr(mpmath.mpf(number.numerator) / number.denominator if isinstance(number, Fraction) else number, 17)


def make_case(made, case):
    """Sensors, trials, interim gains in ten thousandths, readings in the last decimal of their unit, and by how many
    millionths each final gain is then made wrong."""
    english = case % 2 == 1
    sensors, trials = 2 + case % 11, 4 if case % 5 == 4 else 2
    base, noise = (198000, 300) if english else (50000, 90)
    # From no effect at all to one that nobody could miss.
    spread = 1 + noise * (case % 5) // 6
    gains = [9800 + made.below(400) for _ in range(sensors)]
    offsets = [made.below(spread) for _ in range(sensors)]
    readings = []
    for _ in range(trials):
        drifts = [made.below(spread) for _ in range(SETS)]
        readings.append([[base + offsets[s] + drifts[d // DROPS_PER_SET] + made.below(noise) for d in range(DROPS)]
                         for s in range(sensors)])
    shifts = [made.below(200) - 100 for _ in range(sensors)]
    return english, sensors, trials, gains, readings, shifts


def two_way(values):
    """Sums of squares of sets, sensors and all, by the correction term."""
    sensors = len(values)
    total = sum(sum(row) for row in values)
    correction = total * total / (sensors * DROPS)
    of_all = sum(value * value for row in values for value in row) - correction
    of_sensors = sum(sum(row) ** 2 for row in values) / DROPS - correction
    of_sets = Fraction(0)
    for first in range(0, DROPS, DROPS_PER_SET):
        of_sets += sum(sum(row[first:first + DROPS_PER_SET]) for row in values) ** 2
    of_sets = of_sets / (DROPS_PER_SET * sensors) - correction
    return of_sets, of_sensors, of_all


def mean_and_deviation(values):
    mean = sum(values) / len(values)
    variance = sum((value - mean) ** 2 for value in values) / (len(values) - 1)
    return mean, mpmath.sqrt(mpmath.mpf(variance.numerator) / variance.denominator)


def final(values, gains, shifts, sensors, trials):
    averages = [[sum(values[t][s]) / DROPS for s in range(sensors)] for t in range(trials)]
    trial_averages = [sum(averages[t]) / sensors for t in range(trials)]
    finals = [sum(gains[s] * trial_averages[t] / averages[t][s] for t in range(trials)) / trials
              for s in range(sensors)]
    scales = [finals[s] * (1 + Fraction(shifts[s], 1000000)) / gains[s] for s in range(sensors)]
    grand = sum(trial_averages) / trials
    # Rounded as the program rounds: what is scaled in double precision, to even.
    of_all = sum((Fraction(round(float(value) * float(scales[s]) * 100), 100) - grand) ** 2
                 for t in range(trials) for s in range(sensors) for value in values[t][s])
    of_trials = sum((grand - average) ** 2 for average in trial_averages) * DROPS * sensors
    of_sensors = sum((sum(averages[t][s] * scales[s] for t in range(trials)) / trials - grand) ** 2
                     for s in range(sensors)) * DROPS * trials
    places = {}
    for t in range(trials):
        for s in range(sensors):
            places.setdefault(s + 1 if t % 2 == 0 else sensors - s, []).append(averages[t][s] * scales[s])
    of_positions = sum((sum(found) / len(found) - grand) ** 2 * 4 * len(found)
                       for place, found in places.items() if place <= 10)
    error = of_all - of_trials - of_sensors - of_positions
    degrees = DROPS * sensors * trials - 1 - (trials - 1) - 2 * (sensors - 1) - 7
    quotient = (of_sensors / (sensors - 1)) / (error / degrees)
    quotient = mpmath.mpf(quotient.numerator) / quotient.denominator
    probability = tail(sensors - 1, degrees, quotient) if quotient >= mpmath.mpf("0.0001") else mpmath.mpf(1)
    return finals, of_all, of_trials, of_sensors, of_positions, quotient, probability


def main():
    with open("relative_expected.inc", "w", encoding="ascii") as expected:
        for case in range(50):
            english, sensors, trials, gains, readings, shifts = make_case(Made(case + 1), case)
            unit = 10000 if english else 100
            values = [[[Fraction(reading, unit) for reading in row] for row in trial] for trial in readings]
            of_sets, of_sensors, of_all = two_way(values[0])
            error_degrees = DROPS * sensors - 1 - 7 - (sensors - 1)
            error = (of_all - of_sets - of_sensors) / error_degrees
            quotients = [mpmath.mpf((q := of / df / error).numerator) / q.denominator
                         for of, df in ((of_sets, 7), (of_sensors, sensors - 1))]
            chances = [tail(df, DROPS * sensors - 1, quotient)
                       for df, quotient in zip((7, sensors - 1), quotients)]
            exact_gains = [Fraction(gain, 10000) for gain in gains]
            finals, *rest = final(values, exact_gains, shifts, sensors, trials)
            all_values = [value for row in values[0] for value in row]
            last_set = [value for row in values[0] for value in row[-DROPS_PER_SET:]]
            groups = [*mean_and_deviation(values[0][-1]), *mean_and_deviation(last_set), *mean_and_deviation(all_values)]
            chi_squared = groups[4] ** 2 * DROPS * sensors / sensors**2
            numbers = [*groups, chi_squared, of_sets, of_sensors, of_all, *quotients, *chances, finals[0], *rest]
            expected.write("{" + ", ".join(text(number) for number in numbers) + "},\n")


main()
