#include "analysis/analysis.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace bellmark {

double FProbability(int df1, int df2, double F, const AnalysisWarning& warn) {
    if (F < 0.0001) return 1;
    const double x = df2 / (df1 * F + df2);
    return BetaI(df2 / 2.0, df1 / 2.0, x, warn);
}

double BetaI(double a, double b, double x, const AnalysisWarning& warn) {
    if (!(x >= 0 && x <= 1)) {
        warn("Bad x in incomplete beta function - terminating");
        return 0;
    }
    double factor = 0;
    if (x > 0 && x < 1) {
        factor = std::exp(GammaLn(a + b) - GammaLn(a) - GammaLn(b) + a * std::log(x) + b * std::log(1 - x));
    }
    if (x < (a + 1) / (a + b + 2)) return factor * BetaCF(a, b, x, warn) / a;
    return 1 - factor * BetaCF(b, a, 1 - x, warn) / b;
}

double BetaCF(double a, double b, double x, const AnalysisWarning& warn) {
    constexpr int rounds = 1000;
    constexpr double precision = 3e-07;
    const double qab = a + b, qap = a + 1, qam = a - 1;
    double am = 1, bm = 1, az = 1, bz = 1 - qab * x / qap;
    for (int m = 1; m <= rounds; ++m) {
        const double tem = 2.0 * m;
        const double even = (b - m) * m * x / ((a + tem) * (qam + tem));
        const double ap = az + even * am;
        const double bp = bz + even * bm;
        const double odd = -(m + a) * (m + qab) * x / ((a + tem) * (qap + tem));
        const double app = ap + odd * az;
        const double bpp = bp + odd * bz;
        const double before = az;
        am = ap / bpp;
        bm = bp / bpp;
        az = app / bpp;
        bz = 1;
        if (std::abs(az - before) < precision * std::abs(az)) return az;
    }
    warn("a or b too big or itmax too small in betacf");
    return az;
}

double GammaLn(double xx) {
    constexpr std::array coefficients{76.18009173,  -86.50532033,  24.01409822,
                                      -1.231739516, 0.00120858003, -0.00000536382};
    constexpr double rootOfTwoPi = 2.50662827465;
    double x = xx - 1;
    const double base = x + 5.5;
    const double exponent = (x + 0.5) * std::log(base) - base;
    double series = 1;
    for (const double coefficient : coefficients) {
        x += 1;
        series += coefficient / x;
    }
    return exponent + std::log(rootOfTwoPi * series);
}

double StdDev(double sum, double sumOfSquares, int n) {
    if (n < 2) return 0;
    const double variance = (sumOfSquares - sum * sum / n) / (n - 1);
    return variance > 0 ? std::sqrt(variance) : 0;
}

namespace {

/// Largest of elements 1 to n; the list may be shorter.
double LargestFromSecond(std::span<const double> values, std::size_t n) {
    double largest = values.size() > 1 && n >= 1 ? values[1] : 0;
    for (std::size_t i = 2; i <= n; ++i) largest = std::max(largest, i < values.size() ? values[i] : 0);
    return largest;
}

std::optional<double> AxisMax(double largest) {
    if (!(largest > 0)) return std::nullopt;
    const double step = std::pow(10, std::floor(std::log10(largest)));
    return step * (std::trunc(largest / step) + 1);
}

}  // namespace

OriginRegression RegressThroughOrigin(std::span<const double> x, std::span<const double> y, int n) {
    const auto count = std::min({static_cast<std::size_t>(std::max(n, 0)), x.size(), y.size()});
    double sumXX = 0, sumY = 0, sumYY = 0, sumXY = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sumXX += x[i] * x[i];
        sumY += y[i];
        sumYY += y[i] * y[i];
        sumXY += x[i] * y[i];
    }
    OriginRegression result;
    result.axisMax = AxisMax(std::max(LargestFromSecond(x, count), LargestFromSecond(y, count)));
    if (!(sumXX > 0)) return result;
    result.slope = sumXY / sumXX;
    double residualSquares = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double residual = y[i] - result.slope * x[i];
        residualSquares += residual * residual;
    }
    const auto size = static_cast<double>(count);
    const double total = size * sumYY - sumY * sumY;
    if (total != 0) result.r2 = 1 - size * residualSquares / total;
    if (count > 1) result.stdErrSlope = std::sqrt(residualSquares / (size - 1) / sumXX);
    return result;
}

}  // namespace bellmark
