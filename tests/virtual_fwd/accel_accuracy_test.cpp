// How close the reference accelerometer's peaks come to the true deflections of the stand, starting from the volts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "reference/accel_analysis.h"
#include "run/accel_adjustment.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {
namespace {

CenterConfig Today() {
    CenterConfig center = VirtualCenter(false, MakeDateTime(2012, 3, 9));
    ComputeAccelAdjustment(center);
    return center;
}

struct AnalysedDrop {
    DropRecord record;
    AccelDropFindings findings;
};

AnalysedDrop Analysed(const AccelPulseModel& pulse, Random& random) {
    static const CenterConfig center = Today();
    AnalysedDrop drop;
    const auto volts = CaptureAccelVolts(center, pulse, random);
    std::copy(volts.begin(), volts.end(), drop.record.RawVolts.begin());
    drop.record.NumSamples = static_cast<int>(volts.size());
    drop.findings = AnalyzeAccelSamples(drop.record, center);
    return drop;
}

/// A drop within the usual range: 150 to 1500 microns, 25 to 35 ms.
AccelPulseModel AnyPulse(Random& random) {
    AccelPulseModel pulse;
    pulse.peakMicrons = 150 + 1350 * random.Next();
    pulse.startSeconds = 0.24 + 0.02 * random.Next();
    pulse.widthSeconds = 0.025 + 0.01 * random.Next();
    return pulse;
}

TEST(AccelAccuracy, WithoutNoiseOnlyTheResolutionIsInTheWay) {
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        Random random(seed);
        const AccelPulseModel pulse = AnyPulse(random);
        EXPECT_NEAR(Analysed(pulse, random).record.PeakMetric, pulse.peakMicrons, 0.001 * pulse.peakMicrons);
    }
}

TEST(AccelAccuracy, WithNoiseAndDriftThePeakIsFound) {
    constexpr int drops = 200;
    double mean = 0;
    double worst = 0;
    for (std::uint64_t seed = 1; seed <= drops; ++seed) {
        Random random(seed);
        AccelPulseModel pulse = AnyPulse(random);
        pulse.noiseVolts = 0.0008;
        pulse.driftVoltsPerSecond = RandomSign(random) * 0.0004;
        const AnalysedDrop drop = Analysed(pulse, random);
        const double error = drop.record.PeakMetric / pulse.peakMicrons - 1;
        mean += error / drops;
        if (pulse.peakMicrons > 300) worst = std::max(worst, std::abs(error));
        EXPECT_FALSE(drop.record.ExcessNoise) << seed;
        EXPECT_FALSE(drop.findings.vibrates) << seed;
        EXPECT_FALSE(drop.findings.tail.moves) << seed;
    }
    std::cout << "noise of 0.8 mV, drift of 0.4 mV/s, " << drops << " drops: mean error of the deflection "
              << 100 * mean << " %, worst above 300 microns " << 100 * worst << " %\n";
    EXPECT_LE(std::abs(mean), 0.001);
    EXPECT_LE(worst, 0.005);
}

TEST(AccelAccuracy, WhatRuinsADropIsSeen) {
    struct Seen {
        bool noise, range, noPulse, fault;
        auto operator<=>(const Seen&) const = default;
    };
    const struct {
        const char* name;
        Seen seen;
        bool isRight;  ///< the peak is the true one
    } cases[] = {
        {"vibration", {true, false, false, false}, false}, {"motion", {true, false, false, false}, false},
        {"drift", {true, false, false, false}, false},     {"ringing", {false, false, false, false}, true},
        {"high", {false, true, false, false}, true},       {"none", {false, false, true, false}, false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        AccelPulseModel pulse;
        pulse.peakMicrons = 400;
        pulse.noiseVolts = 0.0008;
        pulse.spoil = AccelSpoilNamed(test.name).value();
        Random random(3);
        const auto [record, findings] = Analysed(pulse, random);
        EXPECT_EQ((Seen{record.ExcessNoise, findings.outOfRange, findings.noPulse, findings.fault}), test.seen);
        const double error = std::abs(record.PeakMetric - TruePeakMicrons(pulse)) / 400;
        EXPECT_EQ(error < 0.005, test.isRight) << error;
    }
    EXPECT_FALSE(AccelSpoilNamed("noise"));
}

TEST(AccelAccuracy, VoltsAreTheExactInverseOfTheConversion) {
    const CenterConfig center = Today();
    for (double g = -5; g <= 5; g += 0.37) EXPECT_NEAR(AccelerationOf(center, AccelVoltsFor(center, g)), g, 1e-14);
    // The daily voltages are those of the accelerometer held still.
    EXPECT_NEAR(AccelVoltsFor(center, 1), center.AccelDailyCalibrationPlus1GVoltage, 1e-12);
    EXPECT_NEAR(AccelVoltsFor(center, -1), center.AccelDailyCalibrationMinus1GVoltage, 1e-12);
    Random random(1);
    const auto held = CaptureHeldAccel(center, -1, 0.001, random);
    double mean = 0;
    for (const float volts : held) mean += static_cast<double>(volts) / static_cast<double>(held.size());
    EXPECT_NEAR(mean, center.AccelDailyCalibrationMinus1GVoltage, 0.0001);
}

}  // namespace
}  // namespace bellmark::virtual_fwd
