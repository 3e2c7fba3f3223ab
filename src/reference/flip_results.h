#pragma once

#include <array>
#include <span>
#include <string>

#include "platform/date_time.h"

/// Results of the accelerometer's flip and their limits: pure calculations (AASHTO R32).
namespace bellmark {

enum class FlipPosition { Plus1G, Minus1G, FlipPlus1G };

/// The reading of one position.
struct FlipReading {
    DateTime time{};
    double average = 0;  ///< volts
    double stdDev = 0;   ///< volts
};

struct FlipMeasurement {
    std::array<FlipReading, 3> readings;  ///< by FlipPosition
    double startTemperature = 0;          ///< degrees Celsius
    double endTemperature = 0;

    FlipReading& Of(FlipPosition position) { return readings[static_cast<std::size_t>(position)]; }
    const FlipReading& Of(FlipPosition position) const { return readings[static_cast<std::size_t>(position)]; }
};

/// Mean and standard deviation of a block, volts.
FlipReading ReadingOf(std::span<const float> volts, DateTime now);

/// The fault, in words, for which a reading ends the test; empty for a good one.
std::string ReadingFault(FlipPosition position, const FlipReading& reading);

/// (Plus1G - Minus1G) / 2, volts per g.
double NewSlope(const FlipMeasurement& measured);
/// (Plus1G + Minus1G) / 2, volts.
double NewOffset(const FlipMeasurement& measured);
/// Time between the first two readings.
double ElapsedSeconds(const FlipMeasurement& measured);

/// The calibration that the new one is compared with.
struct FlipComparison {
    double slope = 0;   ///< volts per g
    double offset = 0;  ///< volts
};

enum class FlipBand { Good, Caution, Out };

/// A row of the result panel.
struct FlipCheck {
    FlipBand band = FlipBand::Good;
    std::string text;
};

struct FlipChecks {
    FlipCheck slope;
    FlipCheck offset;
    FlipCheck temperature;
    FlipCheck elapsed;
    FlipCheck drift;
    bool AllGood() const;
};

/// Limits: slope within 0.25 % good, within 1 % caution; offset within 0.01 V good, within 0.02 V caution; -15 °C up to
/// below 55 °C; less than 9 s between the first two readings; temperature within 0.5 °C from start to end.
FlipChecks CheckFlip(const FlipMeasurement& measured, const FlipComparison& comparison);

}  // namespace bellmark
