#include "reference/load_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "reference/drop_plot.h"
#include "run/center_config.h"

namespace bellmark {
namespace {

/// A cell whose load in its own unit is c0 times the volts.
CenterConfig LinearCell(double c0, const char* units = poundForce) {
    CenterConfig center;
    center.ReferenceLoadCellUnits = units;
    center.ReferenceLoadCellCalibrationCoefficients = {c0, 0, 0, 0, 0};
    return center;
}

DropRecord DropOf(const std::vector<float>& volts) {
    DropRecord drop;
    std::copy(volts.begin(), volts.end(), drop.RawVolts.begin());
    drop.NumSamples = static_cast<int>(volts.size());
    return drop;
}

// A made-up block: a pulse (4 x (1 - x))² on a noisy zero. recompute_load_drop.py uses the same formula.
struct Block {
    int samples;
    int start;
    int width;
    double pulse;
    double zero;
    double noise;
    std::int64_t seed;
};

std::vector<float> VoltsOf(const Block& block) {
    std::vector<float> volts;
    std::int64_t seed = block.seed;
    for (int i = 0; i < block.samples; ++i) {
        seed = (seed * 1103515245 + 12345) % 2147483648;
        const double ripple = static_cast<double>(seed / 65536) / 32768 - 0.5;
        const double x = static_cast<double>(i - block.start) / block.width;
        const double shape = x > 0 && x < 1 ? 4 * x * (1 - x) : 0;
        volts.push_back(static_cast<float>(block.zero + block.pulse * (shape * shape) + block.noise * ripple));
    }
    return volts;
}

TEST(LoadAnalysis, AgreesWithAnExactRecomputation) {
    const struct {
        const char* name;
        Block block;
        double shuntMultiplier;
        bool pounds;
        bool english;
        struct {
            int peak, plotStart, plotEnd, zeroStart, zeroEnd, startPulse;
            double riseTime, pounds, kilonewtons, noise, loadAtStart;
        } expected;
    } cases[] = {
#include "tests/reference/load_drop_expected.inc"
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        CenterConfig center;
        center.ReferenceLoadCellCalibrationCoefficients = {4012.37, 1.8312, -0.26471, 0.0118, -0.00049};
        center.ReferenceLoadCellUnits = poundForce;
        if (!test.pounds) {
            center.ReferenceLoadCellCalibrationCoefficients = {17.8478, 0.00814555, -0.00117748, 0.0000524888,
                                                               -0.00000217962};
            center.ReferenceLoadCellUnits = "kN";
        }
        center.ShuntCalibrationMultiplier = test.shuntMultiplier;
        DropRecord drop = DropOf(VoltsOf(test.block));
        const LoadDropFindings findings = AnalyzeLoadSamples(drop, center, test.english);
        const auto& expected = test.expected;
        EXPECT_FALSE(findings.noPulse);
        EXPECT_EQ(drop.PeakIndex, expected.peak);
        EXPECT_EQ(drop.ZeroPlotStart, expected.plotStart);
        EXPECT_EQ(drop.ZeroPlotEnd, expected.plotEnd);
        EXPECT_EQ(drop.ZeroStartIndex, expected.zeroStart);
        EXPECT_EQ(drop.ZeroEndIndex, expected.zeroEnd);
        EXPECT_EQ(drop.StartPulseIndex, expected.startPulse);
        EXPECT_EQ(drop.LoadStartIndex, expected.startPulse);
        EXPECT_EQ(drop.FulcrumIndex, expected.zeroStart);
        EXPECT_EQ(drop.DeflectionFulcrumIndex, expected.zeroEnd);
        // Rounded values agree to the last bit. The others are sums of a few terms and may differ in the last digits.
        EXPECT_EQ(drop.PeakEnglish, expected.pounds);
        EXPECT_EQ(drop.PeakMetric, expected.kilonewtons);
        EXPECT_EQ(findings.loadAtStart, expected.loadAtStart);
        EXPECT_NEAR(drop.RiseTime, expected.riseTime, 1e-12);
        EXPECT_NEAR(findings.noise, expected.noise, 1e-9);
        EXPECT_EQ(drop.ExcessNoise, expected.noise > 80);
        EXPECT_FALSE(findings.peakTooHigh);
    }
}

/// A block of zeros with a triangle that rises by 1 V per sample and has its top at the given sample.
std::vector<float> TriangleAt(int peak, int samples, int rise = 20) {
    std::vector<float> volts(static_cast<std::size_t>(samples));
    for (int i = 0; i < samples; ++i) {
        volts[static_cast<std::size_t>(i)] = static_cast<float>(std::max(rise - std::abs(i - peak), 0));
    }
    return volts;
}

// By hand: 0.1 s, 0.05 s and 0.025 s before the peak are 1500, 750 and 375 samples, 0.033 s after it 495.
TEST(LoadAnalysis, KeepsItsWindowsInsideTheBlock) {
    const struct {
        int peak, samples, plotStart, plotEnd, zeroStart, zeroEnd;
    } cases[] = {
        {700, 3000, 0, 1194, 0, 325},
        {2999, 3000, 1499, 2999, 2249, 2624},
        {14999, 15000, 13499, 14999, 14249, 14624},
        {375, 3000, 0, 869, 0, 0},
        {40, 3000, 0, 534, 0, 0},
        {1500, 15000, 0, 1994, 750, 1125},
        {1501, 15000, 1, 1995, 751, 1126},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.peak);
        DropRecord drop = DropOf(TriangleAt(test.peak, test.samples));
        AnalyzeLoadSamples(drop, LinearCell(100), true);
        EXPECT_EQ(drop.PeakIndex, test.peak);
        EXPECT_EQ(drop.ZeroPlotStart, test.plotStart);
        EXPECT_EQ(drop.ZeroPlotEnd, test.plotEnd);
        EXPECT_EQ(drop.ZeroStartIndex, test.zeroStart);
        EXPECT_EQ(drop.ZeroEndIndex, test.zeroEnd);
        EXPECT_EQ(drop.PeakEnglish, 2000);
        EXPECT_EQ(drop.PeakMetric, 8.896);
    }
}

// By hand: going back from 700, sample 680 is the first at zero. The flat zero does not end the search before the end
// of the zero window, far more than ten samples on, so the start is 680. From there the first four steps without a fall
// end at 684, three after the start.
TEST(LoadAnalysis, StartsAPulseOnAFlatZeroWhereItFirstComesDown) {
    DropRecord drop = DropOf(TriangleAt(700, 3000));
    AnalyzeLoadSamples(drop, LinearCell(100), true);
    EXPECT_EQ(drop.StartPulseIndex, 681);
    EXPECT_NEAR(drop.RiseTime, 19 / 15.0, 1e-12);
}

TEST(LoadAnalysis, TakesTheFirstOfTheLargestLoads) {
    for (const int second : {701, 702, 703, 704, 705, 2999}) {
        auto volts = TriangleAt(700, 3000);
        volts[static_cast<std::size_t>(second)] = 20;
        DropRecord drop = DropOf(volts);
        AnalyzeLoadSamples(drop, LinearCell(100), true);
        EXPECT_EQ(drop.PeakIndex, 700) << second;
    }
}

TEST(LoadAnalysis, KeepsTheLastPeakIndexWhenTheFirstSampleIsTheLargest) {
    for (const float later : {19.5F, 20.0F}) {
        std::vector<float> volts(3000);
        volts[0] = 20;
        volts[2000] = later;
        DropRecord drop = DropOf(volts);
        drop.PeakIndex = 1234;
        AnalyzeLoadSamples(drop, LinearCell(100), true);
        EXPECT_EQ(drop.PeakIndex, 1234) << later;
    }
}

TEST(LoadAnalysis, FlagsNoiseAboveEightyPoundsOnly) {
    for (const auto& [volts, excess] : {std::pair(5.0F, false), {std::nextafter(5.0F, 6.0F), true}}) {
        auto block = TriangleAt(2000, 3000);
        block[1300] = volts;  // inside the zero window, 1250 to 1625: 16 pounds per volt
        DropRecord drop = DropOf(block);
        const auto findings = AnalyzeLoadSamples(drop, LinearCell(16), true);
        EXPECT_EQ(drop.ExcessNoise, excess) << findings.noise;
        EXPECT_EQ(findings.noise, 16.0 * static_cast<double>(volts));
    }
}

TEST(LoadAnalysis, LimitsThePeakByTheUnitOfTheCell) {
    const float limitVolts = 23.5F;  // of 1000 units per volt
    const float aboveLimit = std::nextafter(limitVolts, 24.0F);
    const struct {
        const char* units;
        float volts;
        bool tooHigh;
    } cases[] = {
        {poundForce, limitVolts, false}, {poundForce, aboveLimit, true},
        {"kN", 0.133F, false},      // 29900 pounds: no cell can reach the limit in kN
        {"kN", limitVolts, false},  // 23500 kN
        {"kN", 23.501F, true},
    };
    for (const auto& test : cases) {
        std::vector<float> block(3000);
        for (int i = -20; i <= 20; ++i) {
            block[static_cast<std::size_t>(1000 + i)] = test.volts * static_cast<float>(20 - std::abs(i)) / 20;
        }
        DropRecord drop = DropOf(block);
        const auto findings = AnalyzeLoadSamples(drop, LinearCell(1000, test.units), true);
        EXPECT_EQ(findings.peakTooHigh, test.tooHigh) << test.units << ' ' << test.volts;
        EXPECT_EQ(drop.MaxAbsAccel, test.tooHigh ? drop.Velocity[1000] : 0);
    }
}

TEST(LoadAnalysis, FindsNoPulseWhereThereIsNone) {
    std::vector<float> reversed = TriangleAt(1000, 3000);
    for (float& volts : reversed) volts = -volts;
    const struct {
        const char* name;
        std::vector<float> volts;
    } cases[] = {
        {"empty block", {}},
        {"one sample", {1}},
        {"flat zero", std::vector<float>(3000)},
        {"flat offset", std::vector<float>(3000, 0.5F)},
        {"reversed polarity", reversed},
        {"pulse in the first ten samples", TriangleAt(8, 3000, 8)},
        {"whole block", std::vector<float>(15000, -1)},
    };
    for (const auto& test : cases) {
        DropRecord drop = DropOf(test.volts);
        const auto findings = AnalyzeLoadSamples(drop, LinearCell(100), true);
        EXPECT_TRUE(findings.noPulse) << test.name;
        EXPECT_EQ(drop.PeakEnglish, 0) << test.name;
        EXPECT_EQ(drop.PeakMetric, 0) << test.name;
        EXPECT_EQ(drop.RiseTime, 0) << test.name;
    }
}

TEST(LoadAnalysis, TriggersOnElevenSamplesRunningAboveTheLevel) {
    CenterConfig center = LinearCell(1000);
    center.ShuntCalibrationMultiplier = 2;  // has no effect here
    DropRecord drop;
    drop.TriggerLevel = 800;
    const auto samplesUntilTrigger = [&](const std::vector<double>& volts) {
        drop.TriggerCount = 0;
        for (std::size_t i = 0; i < volts.size(); ++i) {
            if (CheckLoadTrigger(drop, center.ReferenceLoadCellCalibrationCoefficients, volts[i])) return i + 1;
        }
        return std::size_t{0};
    };
    std::vector<double> volts(12, 0.801);
    EXPECT_EQ(samplesUntilTrigger(volts), 11U);
    volts[5] = 0.8;  // a value equal to the level is not above it
    EXPECT_EQ(samplesUntilTrigger(volts), 0U);
    volts.resize(17, 0.801);
    EXPECT_EQ(samplesUntilTrigger(volts), 17U);
    EXPECT_EQ(samplesUntilTrigger(std::vector<double>(20, 0.45)), 0U);
    EXPECT_EQ(drop.LastTriggerValue, 450);
}

TEST(LoadDropPlot, UnzoomedShowsTheWholeBlockButItsFirstSample) {
    const Plot whole = LoadDropPlot(DropOf(std::vector<float>(100)), DropCurve::Acceleration, false, true);
    ASSERT_EQ(whole.series.size(), 1U);
    EXPECT_EQ(whole.series[0].x.size(), 99U);
    EXPECT_DOUBLE_EQ(whole.series[0].x.front(), 1000.0 * 1 / samplesPerSecond);
    EXPECT_DOUBLE_EQ(whole.series[0].x.back(), 1000.0 * 99 / samplesPerSecond);
}

}  // namespace
}  // namespace bellmark
