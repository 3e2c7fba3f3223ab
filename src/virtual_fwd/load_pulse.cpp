#include "virtual_fwd/load_pulse.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "run/drop_record.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr double fullScaleVolts = 10.0;
constexpr double voltsPerCount = 2 * fullScaleVolts / 65536;

double HalfSineSquared(double seconds, double width) {
    if (seconds <= 0 || seconds >= width) return 0;
    const double sine = std::sin(std::numbers::pi * seconds / width);
    return sine * sine;
}

/// The zero window is 25 to 50 ms before the peak: a disturbance of it comes just before the pulse.
double NoiseInZero(const PulseModel& pulse, double seconds, Random& random) {
    const double beforePulse = pulse.startSeconds - seconds;
    const bool disturbed = pulse.spoil == Spoil::NoiseInZero && beforePulse > 0 && beforePulse < 0.06;
    return disturbed ? 60 * Gaussian(random) : 0;
}

double Hum(const PulseModel& pulse, double seconds) {
    if (pulse.spoil != Spoil::Hum50 && pulse.spoil != Spoil::Hum60) return 0;
    const double hertz = pulse.spoil == Spoil::Hum50 ? 50 : 60;
    return pulse.humPounds * std::sin(2 * std::numbers::pi * hertz * seconds);
}

double PeakPounds(const PulseModel& pulse) {
    switch (pulse.spoil) {
        case Spoil::TooHigh:
            return 26000;  // above the range of the reference load cell
        case Spoil::Clipped:
            return 60000;  // above the range of the board
        case Spoil::NoPulse:
            return 0;
        case Spoil::Reversed:
            return -pulse.peakPounds;
        default:
            return pulse.peakPounds;
    }
}

}  // namespace

std::optional<Spoil> SpoilNamed(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, Spoil>, 8> names{{{"noise", Spoil::NoiseInZero},
                                                                       {"second", Spoil::SecondPulse},
                                                                       {"clipped", Spoil::Clipped},
                                                                       {"high", Spoil::TooHigh},
                                                                       {"none", Spoil::NoPulse},
                                                                       {"reversed", Spoil::Reversed},
                                                                       {"hum50", Spoil::Hum50},
                                                                       {"hum60", Spoil::Hum60}}};
    for (const auto& [known, spoil] : names) {
        if (known == name) return spoil;
    }
    return {};
}

double ForceAt(const PulseModel& pulse, double seconds) {
    struct Rebound {
        double delaySeconds;
        double share;
    };
    constexpr std::array<Rebound, 3> blows{{{0, 1}, {0.21, 0.38}, {0.36, 0.14}}};
    const double since = seconds - pulse.startSeconds;
    double share = 0;
    for (const auto& blow : blows) share += blow.share * HalfSineSquared(since - blow.delaySeconds, pulse.widthSeconds);
    // A mass that was not caught strikes again almost as hard.
    if (pulse.spoil == Spoil::SecondPulse) share += 0.9 * HalfSineSquared(since - 0.08, pulse.widthSeconds);
    return PeakPounds(pulse) * share;
}

double VoltsFor(const std::array<double, 5>& c, double pounds) {
    double volts = pounds / c[0];
    for (int step = 0; step < 50; ++step) {
        const double load = volts * (c[0] + volts * (c[1] + volts * (c[2] + volts * (c[3] + volts * c[4]))));
        const double slope = c[0] + volts * (2 * c[1] + volts * (3 * c[2] + volts * (4 * c[3] + volts * 5 * c[4])));
        const double next = volts - (load - pounds) / slope;
        if (next == volts) break;
        volts = next;
    }
    return volts;
}

float QuantisedVolts(double volts) {
    const double count = std::nearbyint(volts / voltsPerCount);
    return static_cast<float>(std::clamp(count, -32768.0, 32767.0) * voltsPerCount);
}

double Gaussian(Random& random) {
    const double radius = std::sqrt(-2 * std::log(1 - random.Next()));
    return radius * std::cos(2 * std::numbers::pi * random.Next());
}

double ReadingAt(const PulseModel& pulse, double seconds, Random& random) {
    // One after the other: the compiler must not choose the order of the random numbers.
    const double noise = pulse.noisePounds * Gaussian(random);
    const double noiseInZero = NoiseInZero(pulse, seconds, random);
    return ForceAt(pulse, seconds) + pulse.driftPoundsPerSecond * seconds + Hum(pulse, seconds) + noise + noiseInZero;
}

std::vector<float> CaptureVolts(const LoadCellModel& cell, const PulseModel& pulse, Random& random, int samples) {
    std::vector<float> volts;
    volts.reserve(static_cast<std::size_t>(samples));
    for (int i = 0; i < samples; ++i) {
        const double pounds = ReadingAt(pulse, static_cast<double>(i) / samplesPerSecond, random);
        volts.push_back(QuantisedVolts(VoltsFor(cell.coefficients, pounds + cell.zeroPounds) * cell.conditionerGain));
    }
    return volts;
}

}  // namespace bellmark::virtual_fwd
