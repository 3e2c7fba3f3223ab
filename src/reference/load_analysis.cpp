#include "reference/load_analysis.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "platform/numbers.h"
#include "run/center_config.h"

namespace bellmark {

namespace {

constexpr double poundsOfNoise = 80.0;
constexpr double mostPounds = 23500.0;
constexpr double millisecondsPerSample = 0.06666666666666667;
constexpr int triggerRun = 11;

using Index = std::size_t;

int SamplesIn(double seconds) {
    return static_cast<int>(std::lround(seconds * samplesPerSecond));
}

double LoadOf(const std::array<double, 5>& c, double volts) {
    return volts * (c[0] + volts * (c[1] + volts * (c[2] + volts * (c[3] + volts * c[4]))));
}

void ComputeLoad(DropRecord& drop, const CenterConfig& center) {
    const double multiplier = center.ShuntCalibrationMultiplier;
    const auto coefficients = center.ReferenceLoadCellCalibrationCoefficients;
    const Index count = static_cast<Index>(drop.NumSamples) + 1;
    const float* raw = drop.RawVolts.data();
    double* conditioned = drop.RelAccelG.data();
    double* load = drop.Velocity.data();
    for (Index i = 0; i < count; ++i) {
        const double volts = static_cast<double>(raw[i]) * multiplier;
        conditioned[i] = volts;
        load[i] = LoadOf(coefficients, volts);
    }
    if (center.ReferenceLoadCellUnits == poundForce) return;
    for (Index i = 0; i < count; ++i) load[i] /= kilonewtonsPerPound;
}

/// The first of the largest loads. When no later sample is above sample 0, the index of the last drop is kept; no real
/// pulse peaks there.
void FindPeak(DropRecord& drop) {
    // Four independent maxima let the processor compare four samples at a time; the first equal sample is found
    // afterwards.
    constexpr Index lanes = 4;
    const Index count = static_cast<Index>(std::max(drop.NumSamples, 1));
    const double* load = drop.Velocity.data();
    std::array<double, lanes> largest;
    largest.fill(-std::numeric_limits<double>::infinity());
    Index i = 1;
    for (; i + lanes <= count; i += lanes) {
        for (Index lane = 0; lane < lanes; ++lane) largest[lane] = std::max(largest[lane], load[i + lane]);
    }
    for (; i < count; ++i) largest[0] = std::max(largest[0], load[i]);
    const double maximum = *std::max_element(largest.begin(), largest.end());
    if (maximum > load[0]) drop.PeakIndex = static_cast<int>(std::find(load + 1, load + count, maximum) - load);
}

bool IsPeakTooHigh(double peakPounds, const CenterConfig& center) {
    // For a cell in another unit the limit is divided although the load is already in pounds, so it is never reached.
    const bool inPounds = center.ReferenceLoadCellUnits == poundForce;
    return peakPounds > (inPounds ? mostPounds : mostPounds / kilonewtonsPerPound);
}

void SetWindows(DropRecord& drop) {
    const int peak = drop.PeakIndex;
    drop.ZeroPlotStart = std::max(peak - SamplesIn(0.1), 0);
    drop.ZeroPlotEnd = std::min(peak + SamplesIn(0.033) - 1, drop.NumSamples - 1);
    drop.ZeroStartIndex = std::max(peak - SamplesIn(0.05), 0);
    drop.ZeroEndIndex = std::max(peak - SamplesIn(0.025), drop.ZeroStartIndex);
}

struct ZeroLoad {
    double mean = 0;
    double range = 0;
};

ZeroLoad MeasureZero(const DropRecord& drop) {
    const auto first = drop.Velocity.begin() + drop.ZeroStartIndex;
    const auto last = drop.Velocity.begin() + drop.ZeroEndIndex + 1;
    double sum = 0;
    for (auto load = first; load != last; ++load) sum += *load;
    const auto [least, most] = std::minmax_element(first, last);
    return {sum / static_cast<double>(last - first), std::abs(*most - *least)};
}

void SubtractZero(DropRecord& drop, double mean) {
    const Index count = static_cast<Index>(drop.NumSamples) + 1;
    const double* load = drop.Velocity.data();
    double* zeroed = drop.Displacement.data();
    for (Index i = 0; i < count; ++i) zeroed[i] = load[i] - mean;
}

/// Goes back from the peak to where the load has fallen to the zero.
int SearchBack(const DropRecord& drop, double mean) {
    const auto& load = drop.Velocity;
    const auto& zeroed = drop.Displacement;
    const double peakLoad = load[static_cast<Index>(drop.PeakIndex)];
    const double zeroedPeak = zeroed[static_cast<Index>(drop.PeakIndex)];
    int firstNearZero = 0;
    int run = 0;
    int i = drop.PeakIndex;
    for (; i >= drop.ZeroEndIndex; --i) {
        const auto at = static_cast<Index>(i);
        if (load[at] < mean) break;
        if (firstNearZero == 0 && zeroed[at] / zeroedPeak < 0.001) firstNearZero = i;
        const bool rippleAtZero = 0.01 * (peakLoad - mean) > load[at] - mean && load[at] > load[at + 1];
        run = rippleAtZero ? run + 1 : 0;
        if (run >= 3) break;
    }
    return firstNearZero - i > 10 ? firstNearZero : i;
}

/// Goes forward until the load has risen for four consecutive samples, and back to where the rise began. start: not
/// below 0.
int RefineForward(const DropRecord& drop, int start) {
    const auto& zeroed = drop.Displacement;
    int run = 0;
    int steps = 1;
    for (int i = start + 1; i <= drop.PeakIndex; ++i) {
        const auto at = static_cast<Index>(i);
        if (zeroed[at] - zeroed[at - 1] < 0) {
            run = 0;
        } else {
            if (run > 2) break;
            ++run;
        }
        ++steps;
    }
    return start + steps - 3;
}

void SetNoPulse(DropRecord& drop, LoadDropFindings& findings) {
    findings.noPulse = true;
    drop.StartPulseIndex = drop.PeakIndex;
    drop.RiseTime = 0;
    drop.PeakEnglish = 0;
    drop.PeakMetric = 0;
}

void MeasurePulse(DropRecord& drop, LoadDropFindings& findings, double mean, bool englishUnits) {
    constexpr int samplesBeforeStart = 10;
    const double zeroedPeak = drop.Displacement[static_cast<Index>(drop.PeakIndex)];
    if (zeroedPeak == 0 || !std::isfinite(zeroedPeak)) return SetNoPulse(drop, findings);
    const int roughStart = SearchBack(drop, mean);
    if (roughStart < 0) return SetNoPulse(drop, findings);
    drop.StartPulseIndex = RefineForward(drop, roughStart);
    if (drop.StartPulseIndex < samplesBeforeStart) return SetNoPulse(drop, findings);

    drop.RiseTime = (drop.PeakIndex - drop.StartPulseIndex) * millisecondsPerSample;
    drop.PeakEnglish = Round(zeroedPeak, 1);
    drop.PeakMetric = Round(drop.PeakEnglish * kilonewtonsPerPound, 3);
    double sum = 0;
    for (int k = 1; k <= samplesBeforeStart; ++k)
        sum += drop.Displacement[static_cast<Index>(drop.StartPulseIndex - k)];
    findings.loadAtStart = Round(sum / samplesBeforeStart, englishUnits ? 1 : 3);
}

}  // namespace

LoadDropFindings AnalyzeLoadSamples(DropRecord& drop, const CenterConfig& center, bool englishUnits) {
    LoadDropFindings findings;
    drop.TriggerLevel = center.ReferenceLoadCellSensitivity;
    drop.ZeroNoiseLimit = poundsOfNoise;
    ComputeLoad(drop, center);
    FindPeak(drop);
    const double peak = drop.Velocity[static_cast<Index>(drop.PeakIndex)];
    findings.peakTooHigh = IsPeakTooHigh(peak, center);
    if (findings.peakTooHigh) drop.MaxAbsAccel = peak;
    SetWindows(drop);
    const ZeroLoad zero = MeasureZero(drop);
    findings.noise = zero.range;
    drop.ExcessNoise = zero.range > drop.ZeroNoiseLimit;
    SubtractZero(drop, zero.mean);
    MeasurePulse(drop, findings, zero.mean, englishUnits);
    const double triggerPounds =
        center.ReferenceLoadCellUnits == poundForce ? drop.TriggerLevel : drop.TriggerLevel / kilonewtonsPerPound;
    findings.belowTrigger = drop.PeakEnglish < triggerPounds;
    drop.FulcrumIndex = drop.ZeroStartIndex;
    drop.DeflectionFulcrumIndex = drop.ZeroEndIndex;
    drop.LoadStartIndex = drop.StartPulseIndex;
    return findings;
}

bool CheckLoadTrigger(DropRecord& drop, const std::array<double, 5>& coefficients, double volts) {
    drop.LastTriggerValue = LoadOf(coefficients, volts);
    drop.TriggerCount = drop.LastTriggerValue > drop.TriggerLevel ? drop.TriggerCount + 1 : 0;
    return drop.TriggerCount >= triggerRun;
}

}  // namespace bellmark
