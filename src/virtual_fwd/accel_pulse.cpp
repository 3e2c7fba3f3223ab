#include "virtual_fwd/accel_pulse.h"

#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "reference/accel_analysis.h"
#include "run/accel_adjustment.h"
#include "virtual_fwd/load_pulse.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr double smoothingSeconds = 0.004;
constexpr double micronsPerMeter = 1e6;
constexpr double pi = std::numbers::pi;

/// Integral of a squared half sine of height 1 from its start to the given time, seconds.
double HalfSineSquaredUpTo(double seconds, double width) {
    if (seconds <= 0) return 0;
    if (seconds >= width) return width / 2;
    return seconds / 2 - width / (4 * pi) * std::sin(2 * pi * seconds / width);
}

/// The squared half sine as a moving average over the preceding time, with a peak of 1.
double SmoothPulse(double seconds, double width) {
    if (seconds <= 0 || seconds >= width + smoothingSeconds) return 0;
    const double area = HalfSineSquaredUpTo(seconds, width) - HalfSineSquaredUpTo(seconds - smoothingSeconds, width);
    const double flattened = width / (2 * pi * smoothingSeconds) * std::sin(pi * smoothingSeconds / width);
    return area / smoothingSeconds / (0.5 + flattened);
}

/// A swell of a vibration that begins and ends at rest.
double Swell(double seconds, double length, double hertz) {
    if (seconds <= 0 || seconds >= length) return 0;
    const double envelope = std::sin(pi * seconds / length);
    return envelope * envelope * std::sin(2 * pi * hertz * seconds);
}

/// A vibration that starts smoothly and decays, with a largest amplitude of about 1.
double DyingAway(double seconds, double hertz, double lifetime) {
    if (seconds <= 0) return 0;
    const double life = seconds / lifetime;
    return life * life * life * std::exp(3 - life) / 27 * std::sin(2 * pi * hertz * seconds);
}

double Disturbance(const AccelPulseModel& pulse, double seconds) {
    const double since = seconds - pulse.startSeconds;
    switch (pulse.spoil) {
        case AccelSpoil::Vibration: {
            constexpr double hertz = 30;
            const double swing = 2 * pulse.triggerLevel * standardGravity / std::pow(2 * pi * hertz, 2);
            return micronsPerMeter * swing * Swell(since + 0.2, 0.12, hertz);
        }
        case AccelSpoil::Motion:
            return 12 * Swell(since + 0.05, 0.05, 40);
        case AccelSpoil::Ringing:
            return 0.05 * pulse.peakMicrons * DyingAway(since, 25, 0.06);
        default:
            return 0;
    }
}

double Drift(const AccelPulseModel& pulse, double seconds) {
    constexpr double fastDrift = 0.015;
    return seconds * (pulse.spoil == AccelSpoil::Drift ? fastDrift : pulse.driftVoltsPerSecond);
}

template <class VoltsAt>
std::vector<float> Capture(int samples, const VoltsAt& voltsAt) {
    std::vector<float> volts;
    volts.reserve(static_cast<std::size_t>(samples));
    for (int i = 0; i < samples; ++i)
        volts.push_back(QuantisedVolts(voltsAt(static_cast<double>(i) / samplesPerSecond)));
    return volts;
}

}  // namespace

std::optional<AccelSpoil> AccelSpoilNamed(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, AccelSpoil>, 7> names{{{"vibration", AccelSpoil::Vibration},
                                                                            {"motion", AccelSpoil::Motion},
                                                                            {"drift", AccelSpoil::Drift},
                                                                            {"ringing", AccelSpoil::Ringing},
                                                                            {"high", AccelSpoil::TooHigh},
                                                                            {"none", AccelSpoil::NoPulse},
                                                                            {"restless", AccelSpoil::Restless}}};
    for (const auto& [known, spoil] : names) {
        if (known == name) return spoil;
    }
    return {};
}

double TruePeakMicrons(const AccelPulseModel& pulse) {
    if (pulse.spoil == AccelSpoil::NoPulse) return 0;
    return pulse.spoil == AccelSpoil::TooHigh ? 4000 : pulse.peakMicrons;
}

double DeflectionAt(const AccelPulseModel& pulse, double seconds) {
    constexpr std::array<std::pair<double, double>, 3> blows{{{0, 1}, {0.21, 0.38}, {0.36, 0.14}}};  // seconds, share
    const double since = seconds - pulse.startSeconds;
    double share = 0;
    for (const auto& [delay, part] : blows) share += part * SmoothPulse(since - delay, pulse.widthSeconds);
    return TruePeakMicrons(pulse) * share + Disturbance(pulse, seconds);
}

double AccelerationAt(const AccelPulseModel& pulse, double seconds) {
    // Over so short a time, the second difference equals the second derivative to 0.0001 microns of deflection.
    constexpr double step = 1e-5;
    const double difference =
        DeflectionAt(pulse, seconds + step) - 2 * DeflectionAt(pulse, seconds) + DeflectionAt(pulse, seconds - step);
    return 1 - difference / (step * step) / (standardGravity * micronsPerMeter);
}

double AccelVoltsFor(const CenterConfig& center, double g) {
    const double slope = center.AccelVoltageSlope;
    double volts = (g - center.AccelB) / center.AccelA1 / slope - center.AccelVoltageOffset;
    double before = volts;
    for (int step = 0; step < 50; ++step) {
        const double w = (volts + center.AccelVoltageOffset) * slope;
        const double rise = slope * (center.AccelA1 + w * (2 * center.AccelA2 + w * 3 * center.AccelA3));
        const double next = volts - (AccelerationOf(center, volts) - g) / rise;
        // The last digit may alternate between two values.
        if (next == volts || next == before) break;
        before = std::exchange(volts, next);
    }
    return volts;
}

std::vector<float> CaptureAccelVolts(const CenterConfig& center, const AccelPulseModel& pulse, Random& random) {
    const double atRest = AccelVoltsFor(center, 1);
    return Capture(samplesPerSecond, [&](double seconds) {
        const double noise = pulse.noiseVolts * Gaussian(random);
        const double g = AccelerationAt(pulse, seconds);
        return (g == 1 ? atRest : AccelVoltsFor(center, g)) + Drift(pulse, seconds) + noise;
    });
}

std::vector<float> CaptureAccelBurst(const CenterConfig& center, const AccelPulseModel& pulse, Random& random) {
    constexpr int samples = 3010;
    constexpr double restlessVolts = 0.008;
    const double noise = pulse.spoil == AccelSpoil::Restless ? restlessVolts : pulse.noiseVolts;
    const double atRest = AccelVoltsFor(center, 1);
    return Capture(samples, [&](double) { return atRest + noise * Gaussian(random); });
}

std::vector<float> CaptureHeldAccel(const CenterConfig& center, double g, double noiseVolts, Random& random) {
    const double held = AccelVoltsFor(center, g);
    return Capture(samplesPerSecond, [&](double) { return held + noiseVolts * Gaussian(random); });
}

}  // namespace bellmark::virtual_fwd
