#pragma once

#include <vector>

#include "run/drop_record.h"

/// From acceleration to deflection: the fulcrum at which the integration is anchored, the removal of the drift, peak
/// and start of the pulse. The steps of the analysis that the search for a trigger level repeats.
namespace bellmark {

/// Time between two samples as the integrations take it, seconds: a single-precision constant, not 1/15000. Deflections
/// depend on it in the seventh digit.
inline constexpr double integrationStep = static_cast<double>(6.666667E-05F);

inline constexpr double micronsPerMil = 25.4;

/// Samples outside the band around 1 g, one after the other, that make a trigger.
inline constexpr int triggerSamples = 11;

/// How the fulcrum is placed and the drift removed.
enum class AccelMethod {
    Regression,       ///< quiet point before the pulse; drift from a parabola through the motion after it
    VelocityFulcrum,  ///< where acceleration and velocity rest before the pulse; baseline from the initial burst
};

/// Where the search of a block for a pulse ended.
struct PulsePlace {
    enum class End {
        Pulse,
        EndOfBlock,  ///< there is no pulse
        OutOfBlock,  ///< the search went on so near the end of the block that it ran out of samples
    };
    End end = End::EndOfBlock;
    int position = 0;  ///< where the scan stood
    int firedAt = 0;   ///< the eleventh sample outside the band
    int fulcrum = 0;   ///< the quiet point before the pulse
};

/// The search of a block for eleven samples running outside the band of 1 g plus and minus a trigger level.
class PulseScan {
  public:
    /// Of AbsAccel[0..NumSamples].
    explicit PulseScan(const DropRecord& drop);

    /// Goes on from a position in steps of 5 ms. Leaves the fulcrum open.
    PulsePlace Next(int position, double triggerLevel) const;

    /// The highest level, g, at which eleven samples running up to an index would have fired.
    double HighestLevelUpTo(int index) const;

  private:
    int lastSample_;
    std::vector<double> levels_;  ///< of sample i the least distance from 1 g of samples i to i + 10, g
};

/// A block too short for the windows of a search without a pulse, or with a value that is no finite number, cannot be
/// integrated.
bool CanBeIntegrated(const DropRecord& drop);

/// Sets the record to what the first round begins with. A round finds a pulse and measures it; another follows when the
/// pulse was a false trigger.
void BeginRounds(DropRecord& drop);

/// The next pulse behind FulcrumIndex, at the record's TriggerLevel. A round must move on: the way back from a pulse to
/// a quiet point can end at the last round's fulcrum again; then the search goes on from the pulse.
/// lastFulcrum: where the way back of the last round ended, -1 in the first round.
PulsePlace FindPulse(const DropRecord& drop, const PulseScan& scan, AccelMethod method, int lastFulcrum);

/// Integrates the block from the fulcrum of the place found, or from 5 ms on in a block without a pulse, and measures
/// the pulse. Returns false when too few samples are left to tell the drift.
bool MeasureRound(DropRecord& drop, const PulsePlace& place, AccelMethod method);

/// What was measured is taken for a false trigger, which a later pulse may follow.
bool IsFalseTrigger(const DropRecord& drop);

/// Fulcrum, integration, removal of the drift and pulse, from AbsAccel[0..NumSamples] and AccelSD25 at the record's
/// TriggerLevel. Returns false, and leaves peaks of -1, when the block cannot be integrated.
/// scan: of the same acceleration.
bool RegressionIntegration(DropRecord& drop, const PulseScan& scan, AccelMethod method = AccelMethod::Regression);

/// Mean deflection just before the pulse, microns: of samples 2 to 4 before its start.
double DeflectionAtStart(const DropRecord& drop);

/// Standard deviation of the last 25 and of the last 100 of AbsAccel[0..NumSamples] at each sample, from running sums.
/// The first, for want of values, are 0.
void FillAccelStdDevs(DropRecord& drop);

}  // namespace bellmark
