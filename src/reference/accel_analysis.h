#pragma once

#include <string>

#include "reference/accel_integration.h"
#include "run/drop_record.h"

/// Analysis of an accelerometer drop: pure calculations over the drop record (AASHTO R32).
namespace bellmark {

struct CenterConfig;

/// Acceleration at the accelerometer's voltage, g, by the certificate's polynomial and the day's readings.
double AccelerationOf(const CenterConfig& center, double volts);

/// Sets trigger level, band and noise limit. Call before the captures of a drop.
void ArmAccelTrigger(DropRecord& drop, const CenterConfig& center);

/// The accelerometer's trigger: true once eleven consecutive samples are outside the band of 1 g plus and minus the
/// trigger level. One call per sample. volts: the sample as captured. The initial burst and the daily calibration are
/// captured without a trigger.
bool CheckAccelTrigger(DropRecord& drop, const CenterConfig& center, double volts);

/// Mean and standard deviation of the initial burst in RawVolts, volts: over the 3000 samples from sample 10 on, or as
/// many as a shorter block has.
void MeasureBurst(DropRecord& drop);

/// Faults of the initial burst, the signal at rest before the drop. They are advice only.
struct BurstFindings {
    bool tooHigh = false;   ///< mean more than 0.02 g above 1 g
    bool tooLow = false;    ///< mean more than 0.02 g below 1 g
    bool restless = false;  ///< standard deviation above 0.005 V
    std::string message;    ///< two lines for each fault; empty for a good burst
};

/// Sets BurstAbsAccel from BurstAverage, to 1 g when no burst was captured, and judges the burst.
BurstFindings CheckBurst(DropRecord& drop, const CenterConfig& center);

/// How far the stand seems to be from rest at the end of the block: means over its last 25 ms. After the drop the stand
/// is back in place, so the remainder is drift. A baseline that is wrong by c gives, T after the fulcrum, a velocity c
/// T and a deflection c T² / 2, and makes the peak, t after it, wrong by c t² / 2. The limits are those of a peak that
/// is wrong by 1 micron, 0.3 % of 300 microns: a velocity of 2 T / t² microns/s, a deflection of (T / t)² microns.
struct AccelTail {
    double velocity = 0;    ///< microns/s
    double deflection = 0;  ///< microns
    double velocityLimit = 0;
    double deflectionLimit = 0;
    bool moves = false;  ///< a limit is exceeded; never in a block that ends within 0.1 s of the pulse
};

struct AccelDropFindings {
    bool outOfRange = false;  ///< MinAbsAccel below -4.9 g or MaxAbsAccel above 4.9 g
    /// The block cannot be integrated: it has fewer than 151 samples, a value that is not a finite number, or its pulse
    /// is too near the end to find the drift. The peaks are then -1.
    bool fault = false;
    bool noPulse = false;          ///< nothing in the block would have fired the trigger: the peak is noise
    double noise = 0;              ///< range of the deflection over the 25 ms before the fulcrum, microns
    double deflectionAtStart = 0;  ///< mean just before the pulse, microns

    // Advice, which never blocks a drop
    double vibration = 0;   ///< highest trigger level, g, that the signal before the fulcrum would have fired
    bool vibrates = false;  ///< it is above half the trigger level
    AccelTail tail;
};

/// Converts the block in RawVolts[0..NumSamples] to acceleration, velocity and deflection, and finds fulcrum, peak and
/// start of the pulse. Time of sample i is i / 15000 s. BurstAbsAccel must have been set by CheckBurst. Sets all other
/// accelerometer members of the record.
AccelDropFindings AnalyzeAccelSamples(DropRecord& drop, const CenterConfig& center,
                                      AccelMethod method = AccelMethod::Regression);

}  // namespace bellmark
