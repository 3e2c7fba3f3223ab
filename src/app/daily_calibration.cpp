#include "app/daily_calibration.h"

#include <cmath>

#include "analysis/limits.h"
#include "app/board_error.h"
#include "app/doors.h"
#include "app/program.h"
#include "run/accel_adjustment.h"

namespace bellmark {

double ReadTemperature(Program& program) {
    const CenterConfig& center = program.Center;
    if (!program.Run.ReviewMode) {
        // The sensor gives 10 mV per degree.
        return program.The<AcquisitionDoor>().OneConversion(program.Run.TempChannel) * 100.0;
    }
    const double stored = center.AccelDailyCalibrationTemp + 0.1 * program.Services.random.Next();
    return center.AccelDailyCalibrationTemperatureUnit == "Celsius" ? stored : FahrenheitToCelsius(stored);
}

double MinutesSinceAccelCal(const Program& program) {
    const CenterConfig& center = program.Center;
    const DateTime calibrated = DayOf(center.AccelDailyCalibrationDate) + TimeOfDay(center.AccelDailyCalibrationTime);
    const auto minutesOf = [](DateTime moment) { return std::chrono::floor<std::chrono::minutes>(moment); };
    return static_cast<double>((minutesOf(program.Now()) - minutesOf(calibrated)).count());
}

bool AccelCalCurrent(Program& program) {
    constexpr double longestMinutes = 480;
    constexpr double largestDegrees = 5.0;
    double calibratedAt = program.Center.AccelDailyCalibrationTemp;
    if (program.Center.AccelDailyCalibrationTemperatureUnit == "Fahrenheit") {
        calibratedAt = FahrenheitToCelsius(calibratedAt);
    }
    if (MinutesSinceAccelCal(program) > longestMinutes) return false;
    try {
        return !ExceedsLimit(std::abs(ReadTemperature(program) - calibratedAt), largestDegrees);
    } catch (const BoardError& error) {
        // Without the temperature the calibration counts as lapsed; whoever measures is told why.
        program.Log(error.what());
        return false;
    }
}

bool AccelWasCalibratedToday(const Program& program) {
    return DayOf(program.Center.AccelDailyCalibrationDate) == DayOf(program.Now());
}

bool IsAccelCalibrationCurrent(Program& program) {
    return AccelCalCurrent(program) && AccelWasCalibratedToday(program);
}

}  // namespace bellmark
