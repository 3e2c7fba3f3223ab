#!/usr/bin/env python3
"""Upper tail of the F distribution to 30 digits, by mpmath: makes f_probability_expected.inc."""

import mpmath

mpmath.mp.dps = 30
degrees = [1, 2, 3, 6, 11, 40, 120, 277, 500]
quotients = ["0.001", "0.03", "0.4", "0.95", "1", "1.3", "2.5", "10", "100", "1000"]

with open("f_probability_expected.inc", "w", encoding="ascii") as expected:
    for df1 in degrees:
        for df2 in degrees:
            for quotient in quotients:
                x = mpmath.mpf(df2) / (df1 * mpmath.mpf(quotient) + df2)
                tail = mpmath.betainc(mpmath.mpf(df2) / 2, mpmath.mpf(df1) / 2, 0, x, regularized=True)
                expected.write(f"{{{df1}, {df2}, {quotient}, {mpmath.nstr(tail if tail > 1e-300 else 0, 17)}}},\n")
