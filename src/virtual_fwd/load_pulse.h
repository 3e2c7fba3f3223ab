#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "run/drop_record.h"

/// A physical model of one FWD drop on the reference load cell, as the data acquisition board would see it.
namespace bellmark::virtual_fwd {

/// Faults of a drop.
enum class Spoil { None, NoiseInZero, SecondPulse, Clipped, TooHigh, NoPulse, Reversed, Hum50, Hum60 };
std::optional<Spoil> SpoilNamed(
    std::string_view name);  ///< "noise", "second", "clipped", "high", "none", "reversed", "hum50", "hum60"

struct LoadCellModel {
    /// Load = c0 V + c1 V² + c2 V³ + c3 V⁴ + c4 V⁵, pounds.
    std::array<double, 5> coefficients{};
    double zeroPounds = 0;       ///< reading without load: the balanced bridge is never quite at zero
    double conditionerGain = 1;  ///< actual gain of the signal conditioner today, as a share of the nominal one
};

struct PulseModel {
    double peakPounds = 0;       ///< of the force above the zero
    double startSeconds = 0.25;  ///< when the mass meets the plate
    double widthSeconds = 0.027;
    double noisePounds = 0;           ///< standard deviation of the sensor's noise
    double driftPoundsPerSecond = 0;  ///< slow drift of the zero
    double humPounds = 5;             ///< amplitude of mains hum; only used for the faults with hum
    Spoil spoil = Spoil::None;
};

/// Force above the zero at a moment, pounds: a squared half sine, and the rebounds of the mass, each lower than the
/// last.
double ForceAt(const PulseModel& pulse, double seconds);

/// Reading above the zero at a moment, pounds: the force with noise, drift, hum and the fault of the drop.
double ReadingAt(const PulseModel& pulse, double seconds, Random& random);

/// Volts at which the load cell's polynomial gives a load, by Newton's method to the last digit; the polynomial must be
/// rising.
double VoltsFor(const std::array<double, 5>& coefficients, double pounds);

/// One second at 15000 samples per second, or its first samples, quantised to 16 bits over ±10 V.
std::vector<float> CaptureVolts(const LoadCellModel& cell, const PulseModel& pulse, Random& random,
                                int samples = samplesPerSecond);

/// A voltage after conversion by the board: 16 bits over ±10 V.
float QuantisedVolts(double volts);

/// Standard normal deviate (Box and Muller 1958).
double Gaussian(Random& random);

}  // namespace bellmark::virtual_fwd
