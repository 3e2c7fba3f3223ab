#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "run/center_config.h"
#include "run/drop_record.h"

/// Made-up accelerometer blocks. accel_blocks.py uses the same formulas, so that both get the same volts to the last
/// bit.
namespace bellmark {

struct MadePulse {
    int start;  ///< sample
    int width;  ///< samples
    double microns;
};

/// Starts with a kick, g, and continues as y = c1 y' - c2 y''.
struct MadeRinging {
    int start;
    double c1, c2, kick;
};

struct MadePlateau {
    int start, length;
    double g;
};

struct MadeAccelBlock {
    int samples;
    std::int64_t seed;
    double noise;  ///< g, range
    double drift;  ///< g per second
    std::vector<MadePulse> pulses;
    MadeRinging ringing;
    MadePlateau plateau;
    double level;  ///< trigger level, g
};

/// A deflection of microns x (4 x (1 - x))³, x from 0 to 1 over the width, as acceleration in g.
inline double MadeAcceleration(const MadePulse& pulse, int i) {
    constexpr double gravityPerSample = 15000.0 * 15000.0 / 9806650.0;
    const double x = static_cast<double>(i - pulse.start) / pulse.width;
    if (!(x > 0 && x < 1)) return 0;
    const double s = 4 * x * (1 - x);
    const double slope = 4 - 8 * x;
    const double width = pulse.width;
    return pulse.microns * (24 * s * s - 6 * s * slope * slope) / (width * width) * gravityPerSample;
}

inline std::vector<float> VoltsOf(const MadeAccelBlock& block) {
    constexpr double count = 20.0 / 65536;
    std::vector<float> volts;
    std::int64_t seed = block.seed;
    double last = 0;
    double before = 0;
    for (int i = 0; i < block.samples; ++i) {
        seed = (seed * 1103515245 + 12345) % 2147483648;
        const double ripple = static_cast<double>(seed / 65536) / 32768 - 0.5;
        double g = block.noise * ripple + block.drift * i / 15000;
        for (const MadePulse& pulse : block.pulses) g += MadeAcceleration(pulse, i);
        if (block.ringing.kick != 0 && i >= block.ringing.start) {
            const double y =
                i == block.ringing.start ? block.ringing.kick : block.ringing.c1 * last - block.ringing.c2 * before;
            before = last;
            last = y;
            g += y;
        }
        const bool onPlateau = i >= block.plateau.start && i < block.plateau.start + block.plateau.length;
        if (onPlateau) g += block.plateau.g;
        const double counts = std::nearbyint((2.9707 + 0.4213 * g) / count);
        volts.push_back(static_cast<float>(std::clamp(counts, -32768.0, 32767.0) * count));
    }
    return volts;
}

inline CenterConfig MadeCenter(double level) {
    CenterConfig center;
    center.AccelVoltageOffset = 0.0003;
    center.AccelVoltageSlope = 1.0007;
    center.AccelB = -6.0559;
    center.AccelA1 = 2.3742;
    center.AccelA2 = 0.0012;
    center.AccelA3 = -0.0005;
    center.AccelSensitivity = level;
    return center;
}

inline DropRecord DropOf(const std::vector<float>& volts) {
    DropRecord drop;
    std::copy(volts.begin(), volts.end(), drop.RawVolts.begin());
    drop.NumSamples = static_cast<int>(volts.size());
    return drop;
}

}  // namespace bellmark
