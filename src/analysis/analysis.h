#pragma once

#include <functional>
#include <optional>
#include <span>

/// Statistics of the calibration: plain functions of numbers, with no state.
namespace bellmark {

/// Called for an argument that a routine cannot work with; the routine still returns a number.
using AnalysisWarning = std::function<void(const char* text)>;

/// Probability that an F variable of df1 and df2 degrees of freedom exceeds F: the upper tail, one-sided. An F below
/// 0.0001 gives exactly 1. Good to about seven digits (Press et al., Numerical Recipes, 6.4).
double FProbability(int df1, int df2, double F, const AnalysisWarning& warn);

/// The regularised incomplete beta function I_x(a, b) for a, b > 0. An x outside 0 to 1 warns and gives 0.
double BetaI(double a, double b, double x, const AnalysisWarning& warn);

/// Continued fraction of the incomplete beta function. Warns when it has not converged to 3e-7 after 1000 rounds.
double BetaCF(double a, double b, double x, const AnalysisWarning& warn);

/// Natural logarithm of the gamma function for xx > 0 by the series of Lanczos (SIAM J. Numer. Anal. 1, 1964).
double GammaLn(double xx);

/// Standard deviation of a sample of n values from its sums: sqrt((sumOfSquares - sum² / n) / (n - 1)). 0 where
/// rounding would leave a negative variance, and for fewer than two values.
double StdDev(double sum, double sumOfSquares, int n);

/// The straight line through the origin with the best fit of y = slope x.
struct OriginRegression {
    double slope = 0;
    double r2 = 0;  ///< about the mean of y, though the line is forced through the origin
    double stdErrSlope = 0;
    std::optional<double> axisMax;  ///< round upper end for the axes of a plot; none without a value above 0
};

/// Regression through the origin of the first n values of y on those of x (AASHTO R32, adjustment factor of a sensor).
/// The residual variance has n - 1 degrees of freedom: one parameter is fitted. Without an x other than 0 slope, r2 and
/// standard error are 0; r2 is 0, too, when all y are equal to each other.
/// axisMax looks at elements 1 to n of both lists, where element 0 is the first; elements beyond the lists count as 0.
OriginRegression RegressThroughOrigin(std::span<const double> x, std::span<const double> y, int n);

}  // namespace bellmark
