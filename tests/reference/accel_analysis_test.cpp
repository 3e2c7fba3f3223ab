#include "reference/accel_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include "run/accel_adjustment.h"
#include "tests/reference/made_accel_block.h"

namespace bellmark {
namespace {

/// The results of recompute_accel_drop.py for a block.
struct Expected {
    const char* name;
    MadeAccelBlock block;
    bool regression;
    double burst;   ///< g
    int tolerance;  ///< above 1 where the drift is fitted to few close samples, which loses digits
    struct {
        int fulcrum, deflectionFulcrum, windowStart, windowEnd, start, peak;
    } indexes;
    struct {
        bool fault, noFulcrum, excessNoise, outOfRange, vibrates;
    } flags;
    struct {
        double metric, english;
    } peaks;
    struct {
        double riseTime, baseline, preFulcrum, offset, trim, noise, atStart, least, most, vibration;
    } values;
    struct History {
        double largest, checksum;
    };
    struct {
        History accel, relative, velocity, displacement, stdDev25, stdDev100;
    } histories;
};

double Checksum(const std::vector<double>& values, int count) {
    double sum = 0;
    for (int i = 0; i < count; ++i) sum += values[static_cast<std::size_t>(i)] * ((i * 7919) % 1000 / 1000.0 - 0.5);
    return sum;
}

void ExpectHistory(const std::vector<double>& values, const Expected::History& expected, int count, double share,
                   const char* what) {
    double largest = 0;
    for (int i = 0; i < count; ++i) largest = std::max(largest, std::abs(values[static_cast<std::size_t>(i)]));
    const double tolerance = share * expected.largest;
    EXPECT_NEAR(largest, expected.largest, tolerance) << what;
    EXPECT_NEAR(Checksum(values, count), expected.checksum, tolerance) << what;
}

void ExpectRecord(const DropRecord& drop, const AccelDropFindings& findings, const Expected& expected) {
    EXPECT_EQ(findings.fault, expected.flags.fault);
    EXPECT_EQ(drop.NoFulcrum, expected.flags.noFulcrum);
    EXPECT_EQ(drop.ExcessNoise, expected.flags.excessNoise);
    EXPECT_EQ(findings.outOfRange, expected.flags.outOfRange);
    EXPECT_EQ(findings.vibrates, expected.flags.vibrates);
    EXPECT_EQ(drop.FulcrumIndex, expected.indexes.fulcrum);
    EXPECT_EQ(drop.DeflectionFulcrumIndex, expected.indexes.deflectionFulcrum);
    EXPECT_EQ(drop.WindowStart, expected.indexes.windowStart);
    EXPECT_EQ(drop.WindowEnd, expected.indexes.windowEnd);
    EXPECT_EQ(drop.StartPulseIndex, expected.indexes.start);
    EXPECT_EQ(drop.FirstRiseIndex, expected.indexes.start);
    EXPECT_EQ(drop.PeakIndex, expected.indexes.peak);
    EXPECT_EQ(drop.ZeroEndIndex, expected.indexes.fulcrum);
    EXPECT_EQ(drop.ZeroStartIndex, std::max(expected.indexes.fulcrum - 375, 0));
    // Rounded values agree to the last bit.
    EXPECT_EQ(drop.PeakMetric, expected.peaks.metric);
    EXPECT_EQ(drop.PeakEnglish, expected.peaks.english);
    // The other values are in the table with 13 digits.
    EXPECT_NEAR(drop.RiseTime, expected.values.riseTime, 1e-10);
    EXPECT_NEAR(drop.MinAbsAccel, expected.values.least, 1e-11);
    EXPECT_NEAR(drop.MaxAbsAccel, expected.values.most, 1e-11);
    EXPECT_NEAR(findings.vibration, expected.values.vibration, 1e-11);
    EXPECT_NEAR(drop.BaselineAccel, expected.values.baseline, 1e-11 * expected.tolerance);
    EXPECT_NEAR(drop.PreFulcrumAverage, expected.values.preFulcrum, 1e-11);
    const double share = 1e-9 * expected.tolerance;
    const double micronsASecond = share * std::max(expected.histories.velocity.largest, 1.0);
    EXPECT_NEAR(drop.VelocityOffset, expected.values.offset, micronsASecond);
    EXPECT_NEAR(drop.VelocityTrim, expected.values.trim, micronsASecond);
    const double microns = share * std::max(expected.histories.displacement.largest, 1.0);
    EXPECT_NEAR(findings.noise, expected.values.noise, microns);
    EXPECT_NEAR(findings.deflectionAtStart, expected.values.atStart, microns);
}

void ExpectHistories(const DropRecord& drop, const Expected& expected) {
    const int count = drop.NumSamples + 1;
    const double share = 1e-9 * expected.tolerance;
    ExpectHistory(drop.AbsAccel, expected.histories.accel, count, share, "AbsAccel");
    ExpectHistory(drop.RelAccelMicrons, expected.histories.relative, count, share, "RelAccelMicrons");
    ExpectHistory(drop.Velocity, expected.histories.velocity, count, share, "Velocity");
    ExpectHistory(drop.Displacement, expected.histories.displacement, count, share, "Displacement");
    ExpectHistory(drop.AccelSD25, expected.histories.stdDev25, count, share, "AccelSD25");
    ExpectHistory(drop.AccelSD100, expected.histories.stdDev100, count, share, "AccelSD100");
}

TEST(AccelAnalysis, AgreesWithASecondImplementation) {
    const Expected cases[] = {
#include "tests/reference/accel_drop_expected.inc"
    };
    // One record for all blocks: nothing of the drop before may remain.
    DropRecord drop;
    for (const Expected& expected : cases) {
        SCOPED_TRACE(expected.name);
        const auto volts = VoltsOf(expected.block);
        std::fill(drop.RawVolts.begin(), drop.RawVolts.end(), 0.0F);
        std::copy(volts.begin(), volts.end(), drop.RawVolts.begin());
        drop.NumSamples = expected.block.samples;
        drop.BurstAbsAccel = expected.burst;
        const auto method = expected.regression ? AccelMethod::Regression : AccelMethod::VelocityFulcrum;
        const auto findings = AnalyzeAccelSamples(drop, MadeCenter(expected.block.level), method);
        ExpectRecord(drop, findings, expected);
        if (!expected.flags.fault) ExpectHistories(drop, expected);
    }
}

/// A linear accelerometer: 1 V is 1 g.
CenterConfig VoltIsG(double level = 0.06) {
    CenterConfig center;
    center.AccelVoltageSlope = 1;
    center.AccelA1 = 1;
    center.AccelSensitivity = level;
    return center;
}

MadeAccelBlock PulseOf(double microns) {
    return {15000, 3, 0.004, 0, {{3600, 450, microns}}, {}, {}, 0.06};
}

std::vector<float> Alternating() {
    std::vector<float> volts(15000, 10);
    for (std::size_t i = 0; i < volts.size(); i += 2) volts[i] = -10;
    return volts;
}

TEST(AccelAnalysis, BlocksWithoutMeaningAreFaultsOrWithoutPulse) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    enum Outcome { Fault, NoPulse, Pulse };
    const auto level = [](std::size_t samples, float volts) { return std::vector<float>(samples, volts); };
    const auto with = [&](std::size_t at, float value) {
        auto volts = level(15000, 1);
        volts[at] = value;
        return volts;
    };
    const struct {
        const char* name;
        std::vector<float> volts;
        Outcome outcome;
    } cases[] = {
        {"no sample", {}, Fault},
        {"one sample", {1}, Fault},
        {"150 samples", level(150, 1), Fault},
        {"151 samples", level(151, 1), NoPulse},
        {"1 g all the time", level(15000, 1), NoPulse},
        {"0 g all the time", level(15000, 0), Fault},
        {"from end to end of the range", Alternating(), Pulse},
        {"no number", with(7000, nan), Fault},
        {"no number at the start", with(0, nan), Fault},
        {"infinite at the end", with(14999, infinity), Fault},
        {"largest number", with(9000, std::numeric_limits<float>::max()), NoPulse},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        // Values left by a good drop must not remain.
        DropRecord drop = DropOf(VoltsOf(PulseOf(500)));
        AnalyzeAccelSamples(drop, MadeCenter(0.06));
        EXPECT_NEAR(drop.PeakMetric, 500, 3);
        std::fill(drop.RawVolts.begin(), drop.RawVolts.end(), 0.0F);
        std::copy(test.volts.begin(), test.volts.end(), drop.RawVolts.begin());
        drop.NumSamples = static_cast<int>(test.volts.size());
        const auto findings = AnalyzeAccelSamples(drop, VoltIsG());
        EXPECT_EQ(findings.fault, test.outcome == Fault);
        EXPECT_EQ(findings.noPulse, test.outcome == NoPulse);
        EXPECT_EQ(drop.PeakMetric == -1 && drop.PeakEnglish == -1, test.outcome == Fault);
        EXPECT_LE(drop.FulcrumIndex, drop.NumSamples);
        EXPECT_LE(drop.PeakIndex, drop.NumSamples);
    }
}

TEST(AccelAnalysis, NoDeflectionIsNoPeak) {
    DropRecord drop = DropOf(std::vector<float>(15000, 1));
    drop.RawVolts[15000] = 1;  // the drift's fit uses the sample after the block too
    AnalyzeAccelSamples(drop, VoltIsG());
    EXPECT_EQ(drop.Displacement[1000], 0);
    EXPECT_EQ(drop.PeakIndex, 0);
    EXPECT_EQ(drop.PeakMetric, 0);
    EXPECT_EQ(drop.FulcrumIndex, 75);
}

TEST(AccelAnalysis, FiresOnElevenSamplesRunningOutsideTheBand) {
    CenterConfig center = VoltIsG(0.05);
    DropRecord drop;
    const auto samplesUntilTrigger = [&](const std::vector<double>& volts) {
        ArmAccelTrigger(drop, center);
        for (std::size_t i = 0; i < volts.size(); ++i) {
            if (CheckAccelTrigger(drop, center, volts[i])) return i + 1;
        }
        return std::size_t{0};
    };
    std::vector<double> volts(12, 1.06);
    EXPECT_EQ(samplesUntilTrigger(volts), 11U);
    EXPECT_EQ(drop.LastTriggerValue, 1.06);
    volts[4] = 0.94;  // below the band counts like above it
    EXPECT_EQ(samplesUntilTrigger(volts), 11U);
    volts[4] = drop.UpperTrigger;  // the band includes its edge
    EXPECT_EQ(samplesUntilTrigger(volts), 0U);
    volts[4] = drop.LowerTrigger;
    volts.resize(16, 1.06);
    EXPECT_EQ(samplesUntilTrigger(volts), 16U);
}

TEST(AccelAnalysis, RangeIsLeftBeyondTheLimitAlone) {
    const struct {
        float volts;
        bool outOfRange;
    } cases[] = {{4.75F, false}, {5.0F, true}, {-4.75F, false}, {-5.0F, true}};
    for (const auto& test : cases) {
        std::vector<float> block(3000, 1);
        block[2000] = test.volts;
        DropRecord drop = DropOf(block);
        drop.RawVolts[3000] = -9;  // after the block: not a sample
        EXPECT_EQ(AnalyzeAccelSamples(drop, VoltIsG()).outOfRange, test.outOfRange) << test.volts;
    }
    // Exactly 4.9 g: 4.75 V with an offset of 0.15 V, whose sum is the double next to 4.9 or 4.9 itself.
    CenterConfig center = VoltIsG();
    center.AccelVoltageOffset = 4.9 - 4.75;
    DropRecord drop = DropOf(std::vector<float>(3000, 0.85F));
    drop.RawVolts[2000] = 4.75F;
    const auto findings = AnalyzeAccelSamples(drop, center);
    EXPECT_EQ(drop.MaxAbsAccel, 4.9);
    EXPECT_FALSE(findings.outOfRange);
}

TEST(AccelBurst, IsMeasuredAndJudged) {
    DropRecord drop;
    // 3000 samples from sample 10 on: half of them 0.004 V above and half below the mean.
    std::fill(drop.RawVolts.begin(), drop.RawVolts.end(), 7.0F);
    for (std::size_t i = 10; i < 3010; ++i) drop.RawVolts[i] = i % 2 == 0 ? 1.03125F : 1.015625F;
    drop.NumSamples = 15000;
    MeasureBurst(drop);
    EXPECT_DOUBLE_EQ(drop.BurstAverage, 1.0234375);
    EXPECT_NEAR(drop.BurstStdDev, 0.0078125 * std::sqrt(3000 / 2999.0), 1e-9);
    const BurstFindings findings = CheckBurst(drop, VoltIsG());
    EXPECT_EQ(drop.BurstAbsAccel, 1.0234375);
    EXPECT_EQ(findings.message,
              "Average Initial Burst more than 1.02 g! \nAverage Initial Burst Reading: 1.023g\n"
              "Initial Burst Standard Deviations more than 0.005 V! \n"
              "Average Initial Burst Std. Deviation: 0.0078V\n");

    const struct {
        double average, stdDev;
        bool high, low, restless;
    } cases[] = {
        {0, 0, false, false, false},  // no burst was captured
        {1.02, 0.005, false, false, false}, {1.0201, 0, true, false, false},
        {0.98, 0.0051, false, false, true}, {0.9799, 0, false, true, false},
    };
    for (const auto& test : cases) {
        drop.BurstAverage = test.average;
        drop.BurstStdDev = test.stdDev;
        const BurstFindings found = CheckBurst(drop, VoltIsG());
        EXPECT_EQ(std::tuple(found.tooHigh, found.tooLow, found.restless),
                  std::tuple(test.high, test.low, test.restless))
            << test.average;
        EXPECT_EQ(found.message.empty(), !test.high && !test.low && !test.restless);
    }
    drop.NumSamples = 10;
    MeasureBurst(drop);
    EXPECT_EQ(drop.BurstAverage, 0);
    CheckBurst(drop, VoltIsG());
    EXPECT_EQ(drop.BurstAbsAccel, 1);
}

TEST(AccelAnalysis, TailOfADriftingDropMoves) {
    for (const double drift : {0.0, 0.0005, 0.01}) {
        MadeAccelBlock block = PulseOf(500);
        block.drift = drift;
        DropRecord drop = DropOf(VoltsOf(block));
        EXPECT_EQ(AnalyzeAccelSamples(drop, MadeCenter(0.06)).tail.moves, drift == 0.01) << drift;
    }
}

TEST(AccelAdjustment, CertificateVoltagesAreOneGUpAndDown) {
    CenterConfig center;
    center.AccelRefPlus1GDC = 2.9713;
    center.AccelRefMinus1GDC = 2.1287;
    center.AccelRefCalibrationCoefficients = {-6.0527, 2.3734, 0.0123, -0.0021};
    for (const double change : {-0.05, 0.0, 0.02}) {
        center.AccelDailyCalibrationPlus1GVoltage = 2.9713 + change;
        center.AccelDailyCalibrationMinus1GVoltage = 2.1287 + 1.7 * change;
        ComputeAccelAdjustment(center);
        const auto polynomial = [&](double v) {
            return center.AccelB + v * (center.AccelA1 + v * (center.AccelA2 + v * center.AccelA3));
        };
        EXPECT_NEAR(polynomial(center.AccelRefPlus1GDC), 1, 1e-12);
        EXPECT_NEAR(polynomial(center.AccelRefMinus1GDC), -1, 1e-12);
    }
    // Without a change since the certificate, the analysis uses the certificate's voltages unchanged.
    center.AccelDailyCalibrationPlus1GVoltage = center.AccelRefPlus1GDC;
    center.AccelDailyCalibrationMinus1GVoltage = center.AccelRefMinus1GDC;
    ComputeAccelAdjustment(center);
    EXPECT_NEAR(AccelerationOf(center, center.AccelRefPlus1GDC), 1, 1e-12);
    EXPECT_NEAR(AccelerationOf(center, center.AccelRefMinus1GDC), -1, 1e-12);
}

}  // namespace
}  // namespace bellmark
