#pragma once

/// Critical values at the 5 % level for a monthly trial. Decisions hang on the fixed ones alone; the exact ones advise.
namespace bellmark {

/// A source is significant above F, the largest variance above CochranCritical.
struct CriticalValues {
    double F = 0;
    double CochranCritical = 0;
};

/// The procedure's table of F for 6 to 12 sensors, which holds Cochran's C for 7 and 9 sensors alone; with 6, 8, 10, 11
/// and 12 it stays as it was before. Any other number takes the row of 9.
/// cochranBefore: of the last trial on this screen, 0 for the first.
CriticalValues FixedCriticalValues(int sensors, double cochranBefore);

/// The F that chance exceeds with the probability alpha. Good to 1e-9 relative; throws std::domain_error for degrees of
/// freedom below 1 and for an alpha outside 0 to 1.
double ExactCriticalF(int df1, int df2, double alpha = 0.05);

/// The C that the largest of some variances exceeds by chance with the probability alpha or a little less, each out of
/// as many readings: 1 / (1 + (k - 1) / F(alpha / k; n - 1, (k - 1)(n - 1))) (Cochran 1941; 't Lam, Technometrics 52,
/// 2010). Throws std::domain_error for fewer than two groups or readings.
double ExactCriticalC(int groups, int readingsInGroup, double alpha = 0.05);

/// Exact values of a trial: F for each source against the error, C for as many sensors. sensors: 2 or more.
CriticalValues ExactCriticalValues(int sensors, int dropsPerSet);

/// Whether a fixed value is off by more than its rounding, 0.0005.
bool DiffersFromExact(double fixed, double exact);

}  // namespace bellmark
