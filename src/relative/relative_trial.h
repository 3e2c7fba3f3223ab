#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "run/calibration_run.h"

/// The life of a relative trial: it is begun, read from the FWD's file, and accepted or rejected. Until it is accepted
/// its numbers stand behind those of the accepted trials, at index RelTrials, and it is not counted.
namespace bellmark {

/// "sensor 3"
std::string SensorWords(const CalibrationRun& run, std::size_t sensor);

/// Whether one more trial fits into the run.
inline bool HasRoomForRelativeTrial(const CalibrationRun& run) {
    return run.RelTrials < static_cast<int>(maxTrials);
}

/// Begins an empty trial and discards the one in hand. Each sensor gets its usual place in the stand: in ascending
/// order in odd trials, in descending order in even ones, so that no place favours a sensor.
void BeginRelativeTrial(CalibrationRun& run);

/// Counts the trial in hand, four at most, and sets each sensor's final gain to the mean of its gains.
void CountRelativeTrial(CalibrationRun& run);

/// Adds a line for each doubt about the readings of the trial in hand: what the file has in place of a number, its
/// units, and each accepted trial that it repeats to the last digit, as when the same file was read twice.
void AddDoubtsAboutReadings(const CalibrationRun& run, std::vector<std::string>& doubts);

/// One line for each sensor of the trial in hand without a gain or without a deflection: it has no result.
std::vector<std::string> SensorsWithoutResult(const CalibrationRun& run);

/// One line for each doubt about the trial in hand: those sensors and readings, a wrong number of drops, stand
/// positions missing or given twice. Empty for a trial that may be used.
std::vector<std::string> DoubtsAboutTrial(const CalibrationRun& run);

/// Whether the stand position of a sensor in the trial in hand is missing or given to another one, too.
bool IsPositionDoubtful(const CalibrationRun& run, std::size_t sensor);

}  // namespace bellmark
