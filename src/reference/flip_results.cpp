#include "reference/flip_results.h"

#include <chrono>
#include <cmath>

#include "analysis/analysis.h"
#include "analysis/limits.h"
#include "platform/format.h"

namespace bellmark {

namespace {

constexpr double largestDeviation = 0.02;  // volts

FlipBand BandOf(double value, double good, double caution) {
    if (!ExceedsLimit(value, good)) return FlipBand::Good;
    return ExceedsLimit(value, caution) ? FlipBand::Out : FlipBand::Caution;
}

const char* NameOf(FlipPosition position) {
    switch (position) {
        case FlipPosition::Plus1G:
            return "+1g";
        case FlipPosition::Minus1G:
            return "-1g";
        case FlipPosition::FlipPlus1G:
            break;
    }
    return "Flip +1g";
}

std::string SignFault(FlipPosition position) {
    switch (position) {
        case FlipPosition::Plus1G:
            return "Recording of +1g voltage shows the accelerometer was upside down.";
        case FlipPosition::Minus1G:
            return "Recording of -1g voltage shows the accelerometer was not flipped.";
        case FlipPosition::FlipPlus1G:
            break;
    }
    return "Recording of Flip +1g voltage shows the accelerometer was not flipped.";
}

FlipCheck CheckSlope(const FlipMeasurement& measured, double former) {
    // Without a former slope that can be one, every change is too large.
    if (former <= 0) return {FlipBand::Out, "-"};
    const double change = std::abs(NewSlope(measured) - former) / former;
    return {BandOf(change, 0.0025, 0.01), Format(change, "percent")};
}

FlipCheck CheckOffset(const FlipMeasurement& measured, double former) {
    const double change = std::abs(NewOffset(measured) - former);
    return {BandOf(change, 0.01, 0.02), Format(change, "0.0000")};
}

FlipCheck CheckTemperature(double degrees) {
    if (ExceedsLimit(-15.0, degrees)) return {FlipBand::Out, "Too cold (less than -15\u00B0C)"};
    if (!ExceedsLimit(55.0, degrees)) return {FlipBand::Out, "Too hot (more than 55\u00B0C)"};
    return {FlipBand::Good, "OK"};
}

FlipCheck CheckElapsed(double seconds) {
    const std::string shown = Format(seconds, "#0.0");
    if (!ExceedsLimit(9.0, seconds)) return {FlipBand::Out, shown + "  Too long"};
    return {FlipBand::Good, shown + "  OK"};
}

FlipCheck CheckDrift(const FlipMeasurement& measured) {
    const double drift = std::abs(measured.endTemperature - measured.startTemperature);
    if (!ExceedsLimit(drift, 0.5)) return {FlipBand::Good, "OK"};
    return {FlipBand::Out, "Temperature change during calibration was " + Format(drift, "#0.0") +
                               "\u00B0C\r\nCalibration should be repeated."};
}

}  // namespace

FlipReading ReadingOf(std::span<const float> volts, DateTime now) {
    double sum = 0;
    double sumOfSquares = 0;
    for (const float sample : volts) {
        const auto value = static_cast<double>(sample);
        sum += value;
        sumOfSquares += value * value;
    }
    const int count = static_cast<int>(volts.size());
    return {now, count > 0 ? sum / count : 0, StdDev(sum, sumOfSquares, count)};
}

std::string ReadingFault(FlipPosition position, const FlipReading& reading) {
    // A value that is not a number is as unusable as a restless reading.
    const bool isRestless = !std::isfinite(reading.stdDev) || ExceedsLimit(reading.stdDev, largestDeviation);
    if (isRestless) {
        return std::string("Standard Deviation of ") + NameOf(position) + " is too large.(Should be less than " +
               Format(largestDeviation, "0.00") + ")\r\nRepeat Calibration.";
    }
    const bool upsideDown = position == FlipPosition::Minus1G ? !(reading.average < 0) : reading.average < 0;
    return upsideDown ? SignFault(position) + "\r\nRepeat Calibration." : std::string();
}

double NewSlope(const FlipMeasurement& measured) {
    return (measured.Of(FlipPosition::Plus1G).average - measured.Of(FlipPosition::Minus1G).average) / 2;
}

double NewOffset(const FlipMeasurement& measured) {
    return (measured.Of(FlipPosition::Plus1G).average + measured.Of(FlipPosition::Minus1G).average) / 2;
}

double ElapsedSeconds(const FlipMeasurement& measured) {
    const auto elapsed = measured.Of(FlipPosition::Minus1G).time - measured.Of(FlipPosition::Plus1G).time;
    return std::chrono::duration<double>(elapsed).count();
}

bool FlipChecks::AllGood() const {
    for (const FlipCheck* check : {&slope, &offset, &temperature, &elapsed, &drift}) {
        if (check->band != FlipBand::Good) return false;
    }
    return true;
}

FlipChecks CheckFlip(const FlipMeasurement& measured, const FlipComparison& comparison) {
    return {CheckSlope(measured, comparison.slope), CheckOffset(measured, comparison.offset),
            CheckTemperature(measured.endTemperature), CheckElapsed(ElapsedSeconds(measured)), CheckDrift(measured)};
}

}  // namespace bellmark
