#include "analysis/analysis.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace bellmark {
namespace {

void FailOnWarning(const char* text) {
    ADD_FAILURE() << text;
}

struct TailCase {
    int df1;
    int df2;
    double F;
    double expected;
};

// Computed to 30 digits by recompute_f_probability.py.
constexpr TailCase tails[] = {
#include "f_probability_expected.inc"
};

TEST(Analysis, FProbabilityOverAllDegreesOfFreedom) {
    double worst = 0;
    for (const TailCase& tail : tails) {
        const double found = FProbability(tail.df1, tail.df2, tail.F, FailOnWarning);
        worst = std::max(worst, std::abs(found - tail.expected));
        EXPECT_NEAR(found, tail.expected, 2e-7) << tail.df1 << ' ' << tail.df2 << ' ' << tail.F;
    }
    RecordProperty("largest error", std::to_string(worst));
    EXPECT_EQ(FProbability(6, 200, 0.00009, FailOnWarning), 1);
    EXPECT_LT(FProbability(6, 200, 0.0001, FailOnWarning), 1) << "goes through the series";
}

TEST(Analysis, BadArgumentsWarnAndGiveANumber) {
    std::vector<std::string> warnings;
    const auto warn = [&](const char* text) { warnings.emplace_back(text); };
    EXPECT_EQ(BetaI(2, 3, -0.001, warn), 0);
    EXPECT_EQ(BetaI(2, 3, 1.001, warn), 0);
    EXPECT_EQ(warnings, std::vector<std::string>(2, "Bad x in incomplete beta function - terminating"));
    EXPECT_EQ(BetaI(2, 3, 0, warn), 0);
    EXPECT_EQ(BetaI(2, 3, 1, warn), 1);
    warnings.clear();
    // The continued fraction needs about sqrt(max(a, b)) rounds.
    EXPECT_TRUE(std::isfinite(BetaCF(1e9, 1e9, 0.5, warn)));
    EXPECT_EQ(warnings, std::vector<std::string>{"a or b too big or itmax too small in betacf"});
}

TEST(Analysis, GammaAndDeviation) {
    EXPECT_NEAR(GammaLn(1), 0, 1e-9);
    EXPECT_NEAR(GammaLn(5), std::log(24.0), 1e-8);
    EXPECT_NEAR(GammaLn(0.5), std::log(std::sqrt(3.14159265358979)), 1e-8);
    // 2, 4, 4, 4, 5, 5, 7, 9 have the sum 40 and the sum of squares 232: the variance is 32 / 7.
    EXPECT_NEAR(StdDev(40, 232, 8), 2.138089935299395, 1e-15);
    EXPECT_EQ(StdDev(2, 1, 2), 0) << "what rounding leaves below zero";
    EXPECT_EQ(StdDev(5, 25, 1), 0);
    EXPECT_EQ(StdDev(0, 0, 0), 0);
}

// NIST Statistical Reference Datasets, linear regression without intercept, certified values:
// NoInt1 and NoInt2 (https://www.itl.nist.gov/div898/strd/lls/lls.shtml).
TEST(Analysis, RegressionReproducesTheCertifiedDatasets) {
    struct Dataset {
        std::vector<double> x, y;
        double slope, standardError;
    };
    const Dataset datasets[] = {
        {{60, 61, 62, 63, 64, 65, 66, 67, 68, 69, 70},
         {130, 131, 132, 133, 134, 135, 136, 137, 138, 139, 140},
         2.07438016528926,
         0.165289256198347E-01},
        {{4, 5, 6}, {3, 4, 4}, 0.727272727272727, 0.420827318078432E-01},
    };
    for (const auto& [x, y, slope, standardError] : datasets) {
        const OriginRegression found = RegressThroughOrigin(x, y, static_cast<int>(x.size()));
        EXPECT_NEAR(found.slope / slope, 1, 1e-12);
        EXPECT_NEAR(found.stdErrSlope / standardError, 1, 1e-12);
    }
}

TEST(Analysis, RegressionAtItsEdges) {
    const std::array<double, 4> peaks{6000, 9000, 12000, 16000};
    const OriginRegression same = RegressThroughOrigin(peaks, peaks, 4);
    EXPECT_EQ(same.slope, 1);
    EXPECT_EQ(same.r2, 1);
    EXPECT_EQ(same.stdErrSlope, 0);
    EXPECT_EQ(same.axisMax, 20000);

    const std::array<double, 4> nothing{};
    const OriginRegression none = RegressThroughOrigin(nothing, peaks, 4);
    EXPECT_EQ(none.slope, 0);
    EXPECT_EQ(none.r2, 0);
    EXPECT_EQ(none.stdErrSlope, 0);

    // r2 is about the mean of y: SSE is 14 - 100/14, n times it over the total of 6 is 24/7.
    const std::array<double, 3> x{3, 2, 1};
    const std::array<double, 3> y{1, 2, 3};
    EXPECT_NEAR(RegressThroughOrigin(x, y, 3).r2, 1 - 24.0 / 7, 1e-12);
    EXPECT_EQ(RegressThroughOrigin(x, std::array<double, 3>{2, 2, 2}, 3).r2, 0);

    // The axes ignore element 0 and count the one after the last.
    const std::array<double, 4> first{9000, 300, 200, 450};
    EXPECT_EQ(RegressThroughOrigin(first, first, 3).axisMax, 500);
    EXPECT_EQ(RegressThroughOrigin(first, first, 2).axisMax, 400);
    EXPECT_EQ(RegressThroughOrigin(nothing, nothing, 4).axisMax, std::nullopt);
}

}  // namespace
}  // namespace bellmark
