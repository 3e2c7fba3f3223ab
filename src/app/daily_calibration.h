#pragma once

/// Whether the accelerometer's calibration of the day still holds.
namespace bellmark {

class Program;

/// Temperature at the accelerometer now, in degrees Celsius: from the board, or near the stored one when there is none.
double ReadTemperature(Program& program);

/// Whole minutes from the accelerometer's daily calibration until now.
double MinutesSinceAccelCal(const Program& program);

/// The accelerometer's daily calibration still holds: at most 480 minutes old and at most 5.0 °C away (AASHTO R32).
bool AccelCalCurrent(Program& program);

bool AccelWasCalibratedToday(const Program& program);

/// The calibration holds and is of today. Required by a set-up and by another trial started from the results.
bool IsAccelCalibrationCurrent(Program& program);

}  // namespace bellmark
