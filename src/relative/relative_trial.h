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

/// One line for each accepted trial that the trial in hand repeats to the last digit: the same file was read twice.
std::vector<std::string> TrialsRepeated(const CalibrationRun& run);

/// One line for each sensor of the trial in hand without a gain or without a deflection: it has no result.
std::vector<std::string> SensorsWithoutResult(const CalibrationRun& run);

/// One line for each doubt about the trial in hand: those sensors, a wrong number of drops, stand positions missing or
/// given twice. Empty for a trial that may be used.
std::vector<std::string> DoubtsAboutTrial(const CalibrationRun& run);

/// Whether the stand position of a sensor in the trial in hand is missing or given to another one, too.
bool IsPositionDoubtful(const CalibrationRun& run, std::size_t sensor);

}  // namespace bellmark
