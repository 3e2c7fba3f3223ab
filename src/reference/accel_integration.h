#pragma once

#include <vector>

#include "run/drop_record.h"

/// From acceleration to deflection: the fulcrum where the integration starts, the removal of the drift, peak and start
/// of the pulse. The search for a trigger level repeats these steps.
namespace bellmark {

/// Time between two samples in the integrations, seconds: a single-precision constant, not 1/15000. Deflections depend
/// on it in the seventh digit.
inline constexpr double integrationStep = static_cast<double>(6.666667E-05F);

inline constexpr double micronsPerMil = 25.4;

/// Consecutive samples outside the band around 1 g that make a trigger.
inline constexpr int triggerSamples = 11;

/// Ways to place the fulcrum and remove the drift.
enum class AccelMethod {
    Regression,       ///< quiet point before the pulse; drift from a parabola through the motion after it
    VelocityFulcrum,  ///< acceleration and velocity at rest before the pulse; baseline from the initial burst
};

/// How the search of a block for a pulse ended.
struct PulsePlace {
    enum class End {
        Pulse,
        EndOfBlock,  ///< there is no pulse
        OutOfBlock,  ///< the search ran out of samples near the end of the block
    };
    End end = End::EndOfBlock;
    int position = 0;  ///< position of the scan
    int firedAt = 0;   ///< the eleventh sample outside the band
    int fulcrum = 0;   ///< the quiet point before the pulse
};

/// The search of a block for eleven consecutive samples outside the band of 1 g plus and minus a trigger level.
class PulseScan {
  public:
    /// Of AbsAccel[0..NumSamples].
    explicit PulseScan(const DropRecord& drop);

    /// Continues from a position in steps of 5 ms. Does not set the fulcrum.
    PulsePlace Next(int position, double triggerLevel) const;

    /// The highest level, g, that eleven consecutive samples up to an index would have fired.
    double HighestLevelUpTo(int index) const;

  private:
    int lastSample_;
    std::vector<double> levels_;  ///< for sample i the least distance from 1 g of samples i to i + 10, g
};

/// False for a block too short for the windows of a search without a pulse, or with a value that is not a finite
/// number.
bool CanBeIntegrated(const DropRecord& drop);

/// Sets the record to the state before the first round. A round finds a pulse and measures it; another round follows
/// when the pulse was a false trigger.
void BeginRounds(DropRecord& drop);

/// The next pulse after FulcrumIndex, at the record's TriggerLevel. Each round must advance: when the way back from a
/// pulse to a quiet point ends at the last round's fulcrum again, the search continues from the pulse. lastFulcrum:
/// where the way back of the last round ended, -1 in the first round.
PulsePlace FindPulse(const DropRecord& drop, const PulseScan& scan, AccelMethod method, int lastFulcrum);

/// Integrates the block from the fulcrum found, or from 5 ms on in a block without a pulse, and measures the pulse.
/// False when too few samples are left to find the drift.
bool MeasureRound(DropRecord& drop, const PulsePlace& place, AccelMethod method);

/// The measured pulse counts as a false trigger, which a later pulse may follow.
bool IsFalseTrigger(const DropRecord& drop);

/// Fulcrum, integration, removal of the drift and pulse, from AbsAccel[0..NumSamples] and AccelSD25 at the record's
/// TriggerLevel. Returns false, with peaks of -1, when the block cannot be integrated. scan: of the same acceleration.
bool RegressionIntegration(DropRecord& drop, const PulseScan& scan, AccelMethod method = AccelMethod::Regression);

/// Mean deflection just before the pulse, microns: of samples 2 to 4 before its start.
double DeflectionAtStart(const DropRecord& drop);

/// Standard deviation of the last 25 and of the last 100 of AbsAccel[0..NumSamples] at each sample, from running sums.
/// The first samples have too few values before them and are 0.
void FillAccelStdDevs(DropRecord& drop);

}  // namespace bellmark
