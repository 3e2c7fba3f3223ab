#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "run/center_config.h"
#include "run/drop_record.h"

/// A physical model of one FWD drop on the reference accelerometer in the sensor stand, as the data acquisition board
/// would see it.
namespace bellmark::virtual_fwd {

/// Faults of an accelerometer drop.
enum class AccelSpoil {
    None,
    Vibration,  ///< twice the trigger level, long before the pulse
    Motion,     ///< of the stand in the last 50 ms before the pulse
    Drift,      ///< of the offset, 15 mV per second
    Ringing,    ///< of the ground after the pulse
    TooHigh,    ///< beyond the range of the accelerometer
    NoPulse,
    Restless,  ///< initial burst
};

/// "vibration", "motion", "drift", "ringing", "high", "none", "restless"
std::optional<AccelSpoil> AccelSpoilNamed(std::string_view name);

struct AccelPulseModel {
    double peakMicrons = 0;      ///< of the downward deflection
    double startSeconds = 0.25;  ///< when the stand begins to move
    double widthSeconds = 0.03;
    double noiseVolts = 0;           ///< standard deviation of the sensor's noise
    double driftVoltsPerSecond = 0;  ///< of its offset
    double triggerLevel = 0.06;      ///< g, to which a vibration is compared
    AccelSpoil spoil = AccelSpoil::None;
};

/// Downward deflection of the stand at a moment, microns: a squared half sine, smoothed over 4 ms so that the
/// acceleration does not jump, and the rebounds of the mass, each lower than the last, with the fault of the drop
/// included.
double DeflectionAt(const AccelPulseModel& pulse, double seconds);

/// The largest deflection of the drop itself, microns: the value that a calibration is to find.
double TruePeakMicrons(const AccelPulseModel& pulse);

/// Acceleration that the accelerometer shows, g: 1 at rest and upright, changed by the stand's motion.
double AccelerationAt(const AccelPulseModel& pulse, double seconds);

/// Voltage of an acceleration: the inverse of AccelerationOf to the last digit, by Newton's method. The polynomial must
/// be rising. center: after ComputeAccelAdjustment.
double AccelVoltsFor(const CenterConfig& center, double g);

/// One second at 15000 samples per second, quantised to 16 bits over ±10 V.
std::vector<float> CaptureAccelVolts(const CenterConfig& center, const AccelPulseModel& pulse, Random& random);

/// The initial burst before the drop, long enough for its measurement.
std::vector<float> CaptureAccelBurst(const CenterConfig& center, const AccelPulseModel& pulse, Random& random);

/// The accelerometer held still, as in its daily calibration: upright at 1 g, upside down at -1 g.
std::vector<float> CaptureHeldAccel(const CenterConfig& center, double g, double noiseVolts, Random& random);

}  // namespace bellmark::virtual_fwd
