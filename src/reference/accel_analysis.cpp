#include "reference/accel_analysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "analysis/analysis.h"
#include "analysis/limits.h"
#include "platform/format.h"
#include "run/center_config.h"

namespace bellmark {

namespace {

constexpr double micronsOfNoise = 4.0;
constexpr double mostG = 4.9;

using Index = std::size_t;

/// The conversion with its coefficients loaded once for a whole block.
class Conversion {
  public:
    explicit Conversion(const CenterConfig& center)
        : offset_(center.AccelVoltageOffset),
          slope_(center.AccelVoltageSlope),
          b_(center.AccelB),
          a1_(center.AccelA1),
          a2_(center.AccelA2),
          a3_(center.AccelA3) {}

    double operator()(double volts) const {
        const double w = (volts + offset_) * slope_;
        return w * w * a2_ + w * w * w * a3_ + a1_ * w + b_;
    }

  private:
    double offset_, slope_, b_, a1_, a2_, a3_;
};

void ConvertSamples(DropRecord& drop, const CenterConfig& center) {
    const Conversion accelerationOf(center);
    const Index count = static_cast<Index>(drop.NumSamples) + 1;
    const float* raw = drop.RawVolts.data();
    double* g = drop.AbsAccel.data();
    for (Index i = 0; i < count; ++i) g[i] = accelerationOf(static_cast<double>(raw[i]));
    FillAccelStdDevs(drop);
}

/// The element after the block is no sample: it is converted, but does not count for the extremes.
void FindExtremes(DropRecord& drop) {
    // Four values at a time, so that the processor works on them in parallel.
    constexpr Index lanes = 4;
    std::array<double, lanes> least{};
    std::array<double, lanes> most{};
    const double* g = drop.AbsAccel.data();
    const Index count = static_cast<Index>(drop.NumSamples);
    const auto look = [&](Index lane, double value) {
        least[lane] = value < least[lane] ? value : least[lane];
        most[lane] = value > most[lane] ? value : most[lane];
    };
    Index i = 0;
    for (; i + lanes <= count; i += lanes) {
        for (Index lane = 0; lane < lanes; ++lane) look(lane, g[i + lane]);
    }
    for (; i < count; ++i) look(0, g[i]);
    drop.MinAbsAccel = *std::min_element(least.begin(), least.end());
    drop.MaxAbsAccel = *std::max_element(most.begin(), most.end());
}

/// Clears the values that the integration does not set: the first and the last sample, and all of a block that cannot
/// be integrated.
void ClearHistories(DropRecord& drop) {
    for (auto* history : {&drop.Velocity, &drop.Displacement})
        std::fill_n(history->begin(), static_cast<Index>(drop.NumSamples) + 1, 0.0);
}

/// Range of the deflection before the fulcrum, microns.
double MeasureNoise(DropRecord& drop) {
    constexpr int window = 375;  // 25 ms
    drop.ZeroStartIndex = std::max(drop.FulcrumIndex - window, 0);
    drop.ZeroEndIndex = drop.FulcrumIndex;
    const auto begin = drop.Displacement.begin();
    const auto [least, most] = std::minmax_element(begin + drop.ZeroStartIndex, begin + drop.ZeroEndIndex + 1);
    return std::abs(*most - *least);
}

AccelTail MeasureTail(const DropRecord& drop) {
    constexpr int length = 375;  // 25 ms
    // The deflection of the last sample uses a velocity that is not computed.
    const int end = drop.NumSamples - 1;
    const int first = end - length;
    AccelTail tail;
    const bool hasPulse = !drop.NoFulcrum && drop.PeakIndex > drop.FulcrumIndex;
    if (!hasPulse || first <= drop.WindowEnd) return tail;
    for (int i = first; i < end; ++i) {
        tail.velocity += drop.Velocity[static_cast<Index>(i)] / length;
        tail.deflection += drop.Displacement[static_cast<Index>(i)] / length;
    }
    const double toTail = (first + length / 2.0 - drop.FulcrumIndex) * integrationStep;
    const double toPeak = (drop.PeakIndex - drop.FulcrumIndex) * integrationStep;
    tail.velocityLimit = 2 * toTail / (toPeak * toPeak);
    tail.deflectionLimit = toTail * toTail / (toPeak * toPeak);
    tail.moves = std::abs(tail.velocity) > tail.velocityLimit || std::abs(tail.deflection) > tail.deflectionLimit;
    return tail;
}

}  // namespace

double AccelerationOf(const CenterConfig& center, double volts) {
    return Conversion(center)(volts);
}

void ArmAccelTrigger(DropRecord& drop, const CenterConfig& center) {
    drop.TriggerLevel = center.AccelSensitivity;
    drop.UpperTrigger = 1 + drop.TriggerLevel;
    drop.LowerTrigger = 1 - drop.TriggerLevel;
    drop.TriggerCount = 0;
    drop.ZeroNoiseLimit = micronsOfNoise;
}

bool CheckAccelTrigger(DropRecord& drop, const CenterConfig& center, double volts) {
    drop.LastTriggerValue = AccelerationOf(center, volts);
    const bool inBand = drop.LastTriggerValue <= drop.UpperTrigger && drop.LastTriggerValue >= drop.LowerTrigger;
    drop.TriggerCount = inBand ? 0 : drop.TriggerCount + 1;
    return drop.TriggerCount >= triggerSamples;
}

void MeasureBurst(DropRecord& drop) {
    constexpr int first = 10;
    constexpr int length = 3000;
    const int end = std::min(first + length, drop.NumSamples);
    double sum = 0;
    double sumOfSquares = 0;
    for (int i = first; i < end; ++i) {
        const double volts = static_cast<double>(drop.RawVolts[static_cast<Index>(i)]);
        sum += volts;
        sumOfSquares += volts * volts;
    }
    const int count = std::max(end - first, 0);
    drop.BurstAverage = count > 0 ? sum / count : 0;
    drop.BurstStdDev = StdDev(sum, sumOfSquares, count);
}

BurstFindings CheckBurst(DropRecord& drop, const CenterConfig& center) {
    constexpr double mostOff = 0.02;      // g
    constexpr double mostStdDev = 0.005;  // V
    drop.BurstAbsAccel = drop.BurstAverage == 0 ? 1.0 : AccelerationOf(center, drop.BurstAverage);

    BurstFindings findings;
    findings.tooHigh = ExceedsLimit(drop.BurstAbsAccel - 1, mostOff);
    findings.tooLow = ExceedsLimit(1 - drop.BurstAbsAccel, mostOff);
    findings.restless = ExceedsLimit(drop.BurstStdDev, mostStdDev);
    const auto tellAverage = [&](const char* direction, double limit) {
        findings.message += std::string("Average Initial Burst ") + direction + " than " + Format(limit, "0.00") +
                            " g! \nAverage Initial Burst Reading: " + Format(drop.BurstAbsAccel, "0.000") + "g\n";
    };
    if (findings.tooHigh) tellAverage("more", 1 + mostOff);
    if (findings.tooLow) tellAverage("less", 1 - mostOff);
    if (findings.restless) {
        findings.message += "Initial Burst Standard Deviations more than " + Format(mostStdDev, "0.000") +
                            " V! \nAverage Initial Burst Std. Deviation: " + Format(drop.BurstStdDev, "0.0000") + "V\n";
    }
    return findings;
}

AccelDropFindings AnalyzeAccelSamples(DropRecord& drop, const CenterConfig& center, AccelMethod method) {
    AccelDropFindings findings;
    ArmAccelTrigger(drop, center);
    ConvertSamples(drop, center);
    FindExtremes(drop);
    findings.outOfRange = drop.MinAbsAccel < -mostG || drop.MaxAbsAccel > mostG;
    ClearHistories(drop);
    const PulseScan scan(drop);
    findings.fault = !RegressionIntegration(drop, scan, method);
    findings.noPulse = drop.NoFulcrum;
    findings.noise = MeasureNoise(drop);
    drop.ExcessNoise = findings.noise > drop.ZeroNoiseLimit;
    findings.deflectionAtStart = DeflectionAtStart(drop);
    findings.vibration = scan.HighestLevelUpTo(drop.FulcrumIndex);
    findings.vibrates = findings.vibration > drop.TriggerLevel / 2;
    if (!findings.fault) findings.tail = MeasureTail(drop);
    return findings;
}

}  // namespace bellmark
