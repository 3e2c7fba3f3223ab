#include "reference/accel_integration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "platform/numbers.h"
#include "run/accel_adjustment.h"

namespace bellmark {

namespace {

using Index = std::size_t;

constexpr int scanStep = 75;  ///< 5 ms
constexpr int searchedForPeak = 1500;
constexpr int leastBlock = 151;  ///< two steps and their end: needed by the windows of a block without a pulse
constexpr double falseTriggerMicrons = 50.0;
constexpr double micronsPerMeter = 1000000;
constexpr double quietStdDev = 0.02;  ///< g
constexpr double millisecondsPerSample = 0.06666666666666667;

Index At(int index) {
    return static_cast<Index>(index);
}

double Microns(double g) {
    return g * standardGravity * micronsPerMeter;
}

/// Time from the fulcrum, in the unit of the fits.
double Milliseconds(int samples) {
    return samples * integrationStep * 1000;
}

double Least(double a, double b) {
    return a < b ? a : b;
}

template <Index step>
void LeastWithStep(std::vector<double>& values) {
    double* value = values.data();
    const Index count = values.size();
    for (Index i = 0; i + step < count; ++i) value[i] = Least(value[i], value[i + step]);
}

// Moving standard deviations

/// Sum of the last values, and of their squares.
struct RunningSums {
    double sum = 0;
    double squares = 0;

    void Add(double value) {
        sum += value;
        squares += value * value;
    }
    void Remove(double value) {
        sum -= value;
        squares -= value * value;
    }
};

/// The sums of this many values are taken before their roots, so that the processor can take the roots in parallel.
constexpr Index sumsAtATime = 500;

struct SumsOfChunk {
    std::array<double, sumsAtATime> sum;
    std::array<double, sumsAtATime> squares;

    void Put(Index i, const RunningSums& sums) {
        sum[i] = sums.sum;
        squares[i] = sums.squares;
    }
};

// Four roots at a time instead of two, where the processor can. The results are the same: each operation is rounded
// separately.
#if defined(__x86_64__) && defined(__linux__)
[[gnu::target_clones("avx2", "default")]]
#endif
void StdDevsOf(const SumsOfChunk& sums, double* stdDevs, Index count, int window) {
    const double perFreedom = 1.0 / (window - 1);
    for (Index i = 0; i < count; ++i) {
        const double variance = (sums.squares[i] - sums.sum[i] * sums.sum[i] / window) * perFreedom;
        stdDevs[i] = std::sqrt(variance > 0 ? variance : 0);
    }
}

/// Standard deviations of each window's last values. One loop for all windows: each sum waits for its last addition,
/// and the processor does the other sums meanwhile.
template <int... window>
void MovingStdDevs(const double* values, Index count, std::array<double*, sizeof...(window)> stdDevs) {
    constexpr std::array<int, sizeof...(window)> windows{window...};
    std::array<RunningSums, sizeof...(window)> sums;
    std::array<SumsOfChunk, sizeof...(window)> chunks;
    for (Index from = 0; from < count; from += sumsAtATime) {
        const Index length = std::min(sumsAtATime, count - from);
        for (Index i = 0; i < length; ++i) {
            for (Index w = 0; w < windows.size(); ++w) {
                const Index before = static_cast<Index>(windows[w]) - 1;
                sums[w].Add(values[from + i]);
                chunks[w].Put(i, sums[w]);
                if (from + i >= before) sums[w].Remove(values[from + i - before]);
            }
        }
        for (Index w = 0; w < windows.size(); ++w) StdDevsOf(chunks[w], stdDevs[w] + from, length, windows[w]);
    }
    // Too few values before these samples.
    for (Index w = 0; w < windows.size(); ++w)
        std::fill_n(stdDevs[w], std::min(static_cast<Index>(windows[w]) - 1, count), 0.0);
}

// Fulcrum

/// Half of the 75 samples of a step, ties to even.
int HalfAStepBefore(int position) {
    return static_cast<int>(std::nearbyint(position - scanStep / 2.0));
}

PulsePlace OutOfBlock(PulsePlace place) {
    place.end = PulsePlace::End::OutOfBlock;
    return place;
}

/// Goes back from half a step before the pulse to a sample where the acceleration is quiet and falling.
int QuietPointBefore(const DropRecord& drop, int position) {
    const int from = HalfAStepBefore(position);
    const int windowStart = std::max(from - scanStep, 0);
    for (int i = from; i >= std::max(windowStart, 1); --i) {
        if (drop.AccelSD25[At(i)] < quietStdDev && drop.AbsAccel[At(i - 1)] < drop.AbsAccel[At(i)]) return i;
    }
    return windowStart;
}

/// The second of three consecutive samples at rest, going down from an index; index 0 or below finds nothing.
template <class Rests>
int ThreeAtRest(int from, int to, int otherwise, const Rests& rests) {
    int run = 0;
    for (int i = from; i >= to; --i) {
        run = rests(At(i)) ? run + 1 : 0;
        if (run == 3) return i + 1;
    }
    return otherwise;
}

/// Goes back from the pulse to a sample with the acceleration of the initial burst.
int BurstPointBefore(const DropRecord& drop, const PulsePlace& place) {
    constexpr double rest = 0.03;  // g
    constexpr int searched = 150;
    int fulcrum = place.position;
    for (int j = place.firedAt; j >= place.position - scanStep; --j) {
        if (drop.AccelSD25[At(j)] >= quietStdDev || drop.AbsAccel[At(j)] - drop.BurstAbsAccel <= -rest) continue;
        fulcrum = j;
        break;
    }
    return ThreeAtRest(place.firedAt, std::max(place.firedAt - searched, 1), fulcrum,
                       [&](Index i) { return std::abs(drop.AbsAccel[i] - drop.BurstAbsAccel) < rest; });
}

void SetWindows(DropRecord& drop, const PulsePlace& place, AccelMethod method) {
    if (place.end == PulsePlace::End::EndOfBlock) {
        drop.NoFulcrum = true;
        drop.FulcrumIndex = scanStep;
        drop.WindowStart = 0;
        drop.DeflectionFulcrumIndex = 2 * scanStep;
        drop.WindowEnd = scanStep + searchedForPeak;
    } else {
        drop.FulcrumIndex = place.fulcrum;
        drop.WindowStart = std::max(place.fulcrum - scanStep, 0);
        drop.DeflectionFulcrumIndex = method == AccelMethod::Regression ? place.position + scanStep : place.firedAt;
        drop.WindowEnd = place.position + searchedForPeak;
    }
    drop.WindowEnd = std::min(drop.WindowEnd, drop.NumSamples - 1);
}

// Integration

void ComputeRelAccel(DropRecord& drop) {
    const double* g = drop.AbsAccel.data();
    double* relative = drop.RelAccelG.data();
    double* microns = drop.RelAccelMicrons.data();
    const double baseline = drop.BaselineAccel;
    for (int i = 0; i <= drop.NumSamples; ++i) {
        relative[i] = g[i] - baseline;
        microns[i] = Microns(relative[i]);
    }
}

/// Sample 0 is not part of the sum for the velocity, but each integration subtracts the offsets from its value.
void TakeOffsetsOffFirstSample(DropRecord& drop) {
    if (drop.FulcrumIndex > 0) drop.Velocity[0] = drop.Velocity[0] - drop.VelocityOffset - drop.VelocityTrim;
}

/// Velocity and deflection from the fulcrum on. Negative acceleration is downward; the deflection is positive downward.
/// Both are in one loop: each sum waits for its last addition, and the processor does the other meanwhile.
void Integrate(DropRecord& drop) {
    ComputeRelAccel(drop);
    const double* a = drop.RelAccelMicrons.data();
    const auto velocityStep = [&](int i) { return (a[i + 1] + a[i]) * integrationStep / 2; };
    double* v = drop.Velocity.data();
    double* d = drop.Displacement.data();
    const auto deflectionStep = [&](int i) { return (v[i + 1] + v[i]) * integrationStep / 2; };
    const double offset = drop.VelocityOffset;
    const double trim = drop.VelocityTrim;
    const int fulcrum = drop.FulcrumIndex;
    const int last = drop.NumSamples - 1;

    v[fulcrum] = -offset - trim;
    d[fulcrum] = 0;
    double velocity = 0;  // without the offsets
    double deflection = 0;
    for (int i = fulcrum - 1; i >= 1; --i) {
        velocity -= velocityStep(i);
        v[i] = velocity - offset - trim;
        d[i] = deflection += deflectionStep(i);
    }
    TakeOffsetsOffFirstSample(drop);

    // The forward steps use samples i and i + 1, one ahead of the backward steps. Peak and drift removal are tuned to
    // this.
    velocity = velocityStep(fulcrum + 1);
    v[fulcrum + 1] = velocity - offset - trim;
    deflection = 0;
    for (int i = fulcrum + 2; i <= last; ++i) {
        velocity += velocityStep(i);
        v[i] = velocity - offset - trim;
        d[i - 1] = deflection -= deflectionStep(i - 1);
    }
    d[last] = deflection - deflectionStep(last);
}

/// The drift that velocity and deflection were integrated with.
struct Drift {
    explicit Drift(const DropRecord& drop)
        : accel(Microns(drop.BaselineAccel)), velocity(drop.VelocityOffset + drop.VelocityTrim) {}
    double accel;     ///< microns/s²
    double velocity;  ///< microns/s
};

/// The change of velocity and deflection, k samples from the fulcrum, by another drift. Another baseline adds a
/// straight line to the velocity and a parabola to the deflection, another offset a constant and a straight line. The
/// result equals a new integration, five times faster.
class DriftChange {
  public:
    DriftChange(const Drift& before, const Drift& now)
        : line_((now.accel - before.accel) * integrationStep), offset_(now.velocity - before.velocity) {}

    double Velocity(double k) const { return -(line_ * k + offset_); }
    double DeflectionBefore(double k) const { return integrationStep * (line_ / 2 * (k * k) + offset_ * k); }
    /// After the fulcrum, where the sums are one sample ahead.
    double DeflectionBehind(double k) const { return integrationStep * (line_ / 2 * (k * (k + 2)) + offset_ * k); }

  private:
    double line_;    ///< of the velocity, microns/s per sample
    double offset_;  ///< microns/s
};

/// Changes velocity and deflection from a former drift to that of the record.
void IntegrateChange(DropRecord& drop, const Drift& before) {
    const DriftChange change(before, Drift(drop));
    const int fulcrum = drop.FulcrumIndex;
    const int last = drop.NumSamples - 1;
    double* v = drop.Velocity.data();
    double* d = drop.Displacement.data();
    for (int i = 1; i <= last; ++i) v[i] += change.Velocity(i - fulcrum);
    for (int i = 1; i < fulcrum; ++i) d[i] += change.DeflectionBefore(i - fulcrum);
    for (int i = fulcrum + 1; i < last; ++i) d[i] += change.DeflectionBehind(i - fulcrum);
    // The last step of the deflection uses a velocity that no step computes.
    d[last] = d[last - 1] - (v[last + 1] + v[last]) * integrationStep / 2;
    if (fulcrum == 0) v[0] += change.Velocity(0);
}

double MeanAccel(const DropRecord& drop, int first, int last) {
    double sum = 0;
    for (int i = first; i <= last; ++i) sum += drop.AbsAccel[At(i)];
    return sum / (last - first + 1);
}

// Drift

/// Fit of y = a1 x + a2 x² through the origin by least squares.
struct Parabola {
    double x2 = 0, x3 = 0, x4 = 0, xy = 0, x2y = 0;
    int count = 0;

    void Add(double x, double y) {
        const double square = x * x;
        x2 += square;
        x3 += square * x;
        x4 += square * square;
        xy += x * y;
        x2y += square * y;
        ++count;
    }
};

/// Removes the fitted drift from baseline and velocity. False when a single sample leaves the fit undetermined.
bool RemoveDrift(DropRecord& drop, const Parabola& fit) {
    if (fit.count == 0) return true;
    if (fit.count == 1) return false;
    const double ratio = fit.x2 / fit.x3;
    const double a2 = (fit.xy - fit.x2y * ratio) / (fit.x3 - fit.x4 * ratio);
    const double a1 = (fit.x2y - a2 * fit.x4) / fit.x3;
    drop.BaselineAccel -= 2 * a2 / standardGravity;
    // With this sign the drift grows; the trim before the fulcrum removes it again.
    drop.VelocityOffset += a1 * 1000;
    return true;
}

/// First pass: every sample to the end of the block.
bool RemoveDriftOfAll(DropRecord& drop) {
    Parabola fit;
    for (int i = drop.DeflectionFulcrumIndex + searchedForPeak; i <= drop.NumSamples; ++i)
        fit.Add(Milliseconds(i - drop.FulcrumIndex), drop.Displacement[At(i)]);
    return RemoveDrift(drop, fit);
}

/// Second pass: leaves out the rebounds of the mass.
bool RemoveDriftAtRest(DropRecord& drop) {
    constexpr double restVelocity = 10000.0;  // microns/s
    constexpr double restDeflection = 400.0;  // microns
    constexpr int restSamples = 10;
    Parabola fit;
    int run = 0;
    for (int i = drop.DeflectionFulcrumIndex + searchedForPeak; i <= drop.NumSamples; ++i) {
        const double deflection = drop.Displacement[At(i)];
        const bool moves = std::abs(drop.Velocity[At(i)]) >= restVelocity || std::abs(deflection) >= restDeflection;
        run = moves ? 0 : run + 1;
        if (run > restSamples) fit.Add(Milliseconds(i - drop.FulcrumIndex), deflection);
    }
    return RemoveDrift(drop, fit);
}

/// Removes the slope of the deflection in the 10 ms before the fulcrum. before: the drift it was integrated with.
void TrimVelocity(DropRecord& drop, const Drift& before) {
    constexpr int trimmed = 150;
    const DriftChange change(before, Drift(drop));
    const int fulcrum = drop.FulcrumIndex;
    double sumXY = 0;
    double sumXX = 0;
    for (int i = std::max(fulcrum - trimmed, 0); i <= fulcrum; ++i) {
        const double x = Milliseconds(i - fulcrum);
        const double y = drop.Displacement[At(i)] + (i > 0 ? change.DeflectionBefore(i - fulcrum) : 0);
        sumXY += x * y;
        sumXX += x * x;
    }
    if (sumXX != 0) drop.VelocityTrim -= sumXY / sumXX * 1000;
}

bool IntegrateByRegression(DropRecord& drop) {
    drop.PreFulcrumAverage = MeanAccel(drop, drop.WindowStart, drop.FulcrumIndex);
    drop.BaselineAccel = drop.PreFulcrumAverage;
    Integrate(drop);
    Drift integrated(drop);
    if (!RemoveDriftOfAll(drop)) return false;
    TakeOffsetsOffFirstSample(drop);
    IntegrateChange(drop, integrated);
    integrated = Drift(drop);
    if (!RemoveDriftAtRest(drop)) return false;
    TakeOffsetsOffFirstSample(drop);
    TrimVelocity(drop, integrated);
    TakeOffsetsOffFirstSample(drop);
    IntegrateChange(drop, integrated);
    return true;
}

/// Moves the fulcrum back to where the velocity is at rest, and integrates from there.
void IntegrateFromRest(DropRecord& drop) {
    constexpr int searched = 375;            // 25 ms
    constexpr double quietVelocity = 150.0;  // microns/s
    constexpr double fallingVelocity = -300.0;
    constexpr double restVelocity = 30.0;
    drop.PreFulcrumAverage = MeanAccel(drop, drop.WindowStart, drop.FulcrumIndex);
    drop.BaselineAccel = drop.BurstAbsAccel;
    Integrate(drop);
    MovingStdDevs<25>(drop.Velocity.data(), At(drop.NumSamples), {drop.VelocitySD25.data()});
    const int to = std::max(drop.FulcrumIndex - searched, 1);
    for (int j = drop.FulcrumIndex; j >= to; --j) {
        if (drop.VelocitySD25[At(j)] >= quietVelocity || drop.Velocity[At(j)] <= fallingVelocity) continue;
        drop.FulcrumIndex = j;
        break;
    }
    drop.FulcrumIndex = ThreeAtRest(drop.FulcrumIndex, to, drop.FulcrumIndex,
                                    [&](Index i) { return std::abs(drop.Velocity[i]) < restVelocity; });
    Integrate(drop);
}

// Pulse

int FirstRise(const DropRecord& drop) {
    constexpr double riseMicrons = 0.5;
    for (int i = drop.FulcrumIndex; i < drop.WindowEnd; ++i) {
        if (i > 0 && drop.Displacement[At(i)] > riseMicrons) return i;
    }
    return 0;
}

void FindPeak(DropRecord& drop) {
    drop.PeakMetric = 0;
    drop.PeakEnglish = 0;
    for (int i = drop.DeflectionFulcrumIndex; i <= drop.WindowEnd; ++i) {
        const double deflection = drop.Displacement[At(i)];
        // Compared with the rounded peak: a later sample within the rounding can become the peak.
        if (!(deflection > drop.PeakMetric)) continue;
        drop.PeakMetric = Round(deflection, 1);
        drop.PeakEnglish = Round(deflection / micronsPerMil, 3);
        drop.PeakIndex = i;
    }
}

/// Goes back from the peak to where the deflection has fallen to that at the fulcrum.
int SearchBack(const DropRecord& drop, AccelMethod method) {
    const auto& d = drop.Displacement;
    const double reference = d[At(drop.DeflectionFulcrumReading)];
    const double height = d[At(drop.PeakIndex)] - reference;
    int run = 0;
    int i = drop.PeakIndex;
    for (; i >= drop.FulcrumIndex; --i) {
        const double deflection = d[At(i)];
        const double next = d[At(i + 1)];
        if (deflection < reference) break;
        const bool flat = method == AccelMethod::Regression && std::abs(deflection - next) < 0.05;
        const bool counts = deflection - reference < 0.01 * height && (flat || deflection > next);
        run = counts ? run + 1 : 0;
        if (run >= 3) break;
    }
    return std::max(i, 0);
}

/// Goes forward until the deflection has risen for six consecutive samples, and back to where the rise began.
int RefineForward(const DropRecord& drop, int start) {
    const auto& d = drop.Displacement;
    int run = 0;
    int steps = 1;
    for (int i = start + 1; i <= drop.PeakIndex; ++i) {
        if (d[At(i)] < d[At(i - 1)] && d[At(i)] > 0) {
            run = 0;
        } else {
            if (run > 5) break;
            ++run;
        }
        ++steps;
    }
    return std::max(start + steps - 5, 0);
}

void MeasurePulse(DropRecord& drop, AccelMethod method) {
    drop.VelocityFulcrumReading = drop.FulcrumIndex;
    drop.DeflectionFulcrumReading = drop.FulcrumIndex;
    if (const int rise = FirstRise(drop); rise != 0) drop.DeflectionFulcrumIndex = rise;
    FindPeak(drop);
    drop.StartPulseIndex = RefineForward(drop, SearchBack(drop, method));
    drop.FirstRiseIndex = drop.StartPulseIndex;
    drop.RiseTime = (drop.PeakIndex - drop.StartPulseIndex) * millisecondsPerSample;
}

}  // namespace

PulseScan::PulseScan(const DropRecord& drop) : lastSample_(drop.NumSamples), levels_(At(drop.NumSamples) + 1) {
    for (Index i = 0; i < levels_.size(); ++i) levels_[i] = std::abs(drop.AbsAccel[i] - 1.0);
    // The minimum of 2, 4 and 8 samples from i on, each replacing the one before. Two overlapping eights cover eleven.
    LeastWithStep<1>(levels_);
    LeastWithStep<2>(levels_);
    LeastWithStep<4>(levels_);
    LeastWithStep<3>(levels_);
}

PulsePlace PulseScan::Next(int position, double triggerLevel) const {
    PulsePlace place;
    for (;;) {
        position += scanStep;
        place.position = position;
        // Samples before the window do not count towards the eleven.
        const int windowEnd = std::min(position + scanStep, lastSample_);
        for (int i = position - scanStep + triggerSamples - 1; i <= windowEnd; ++i) {
            if (!(levels_[At(i - triggerSamples + 1)] > triggerLevel)) continue;
            place.end = PulsePlace::End::Pulse;
            place.firedAt = i;
            return place;
        }
        if (position + scanStep > lastSample_) return OutOfBlock(place);
        if (lastSample_ - 2 * scanStep < position) {
            place.end = PulsePlace::End::EndOfBlock;
            return place;
        }
    }
}

double PulseScan::HighestLevelUpTo(int index) const {
    double highest = 0;
    for (int i = triggerSamples - 1; i <= index; ++i) highest = std::max(highest, levels_[At(i - triggerSamples + 1)]);
    return highest;
}

bool CanBeIntegrated(const DropRecord& drop) {
    if (drop.NumSamples < leastBlock) return false;
    const auto first = drop.AbsAccel.begin();
    return std::all_of(first, first + drop.NumSamples + 1, [](double g) { return std::isfinite(g); });
}

void BeginRounds(DropRecord& drop) {
    drop.NoFulcrum = false;
    for (double* value : {&drop.PeakMetric, &drop.PeakEnglish, &drop.RiseTime, &drop.BaselineAccel,
                          &drop.PreFulcrumAverage, &drop.VelocityOffset, &drop.VelocityTrim})
        *value = 0;
    for (int* index :
         {&drop.FulcrumIndex, &drop.DeflectionFulcrumIndex, &drop.WindowStart, &drop.WindowEnd, &drop.PeakIndex,
          &drop.StartPulseIndex, &drop.FirstRiseIndex, &drop.VelocityFulcrumReading, &drop.DeflectionFulcrumReading})
        *index = 0;
}

PulsePlace FindPulse(const DropRecord& drop, const PulseScan& scan, AccelMethod method, int lastFulcrum) {
    int position = drop.FulcrumIndex;
    for (;;) {
        PulsePlace place = scan.Next(position, drop.TriggerLevel);
        if (place.end != PulsePlace::End::Pulse) return place;
        if (HalfAStepBefore(place.position) > drop.NumSamples) return OutOfBlock(place);
        place.fulcrum =
            method == AccelMethod::Regression ? QuietPointBefore(drop, place.position) : BurstPointBefore(drop, place);
        // An integration needs at least two samples after the fulcrum.
        if (place.fulcrum > drop.NumSamples - 2) return OutOfBlock(place);
        if (place.fulcrum > lastFulcrum) return place;
        position = place.position;
    }
}

bool MeasureRound(DropRecord& drop, const PulsePlace& place, AccelMethod method) {
    if (place.end == PulsePlace::End::OutOfBlock) return false;
    SetWindows(drop, place, method);
    if (method == AccelMethod::VelocityFulcrum) {
        IntegrateFromRest(drop);
    } else if (!IntegrateByRegression(drop)) {
        return false;
    }
    MeasurePulse(drop, method);
    return true;
}

bool IsFalseTrigger(const DropRecord& drop) {
    return drop.PeakMetric < falseTriggerMicrons && !drop.NoFulcrum;
}

bool RegressionIntegration(DropRecord& drop, const PulseScan& scan, AccelMethod method) {
    BeginRounds(drop);
    bool measured = CanBeIntegrated(drop);
    if (measured) {
        int lastFulcrum = -1;
        do {
            const PulsePlace place = FindPulse(drop, scan, method, lastFulcrum);
            lastFulcrum = place.fulcrum;
            measured = MeasureRound(drop, place, method);
        } while (measured && IsFalseTrigger(drop));
    }
    ComputeRelAccel(drop);
    if (!measured) drop.PeakMetric = drop.PeakEnglish = -1.0;
    return measured;
}

double DeflectionAtStart(const DropRecord& drop) {
    double sum = 0;
    for (int back = 2; back <= 4; ++back) sum += drop.Displacement[At(std::max(drop.FirstRiseIndex - back, 0))];
    return sum / 3;
}

void FillAccelStdDevs(DropRecord& drop) {
    MovingStdDevs<25, 100>(drop.AbsAccel.data(), At(drop.NumSamples) + 1,
                           {drop.AccelSD25.data(), drop.AccelSD100.data()});
}

}  // namespace bellmark
