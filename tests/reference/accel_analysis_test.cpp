#include "reference/accel_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "run/accel_adjustment.h"
#include "tests/reference/made_accel_block.h"

namespace bellmark {
namespace {

/// What recompute_accel_drop.py found of a block.
struct Expected {
    const char* name;
    MadeAccelBlock block;
    bool regression;
    double burst;   ///< g
    int tolerance;  ///< above 1 where few samples close together fix the drift: by so much more digits are lost
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
    // The others stand in the table with 13 digits.
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
    // One record for all: nothing of the drop before may show.
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

}  // namespace
}  // namespace bellmark
