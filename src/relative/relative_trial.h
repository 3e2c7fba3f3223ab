#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "run/calibration_run.h"

/// The life of a relative trial: it is begun, read from the FWD's file, and accepted or rejected. Until it is accepted
/// its numbers stand behind those of the accepted trials, at index RelTrials, and it is not counted.
namespace bellmark {

/// Whether one more trial fits into the run.
inline bool HasRoomForRelativeTrial(const CalibrationRun& run) {
    return run.RelTrials < static_cast<int>(maxTrials);
}

/// Begins an empty trial; what was in hand is lost. Each sensor gets its usual place in the stand: in their order in
/// odd trials, turned round in even ones, so that no place favours a sensor.
void BeginRelativeTrial(CalibrationRun& run);

/// Counts the trial in hand, four at most, and gives each sensor the mean of its gains as final gain.
void CountRelativeTrial(CalibrationRun& run);

/// The accepted trials whose readings the trial in hand repeats to the last digit, a line each: the same file was read
/// twice.
std::vector<std::string> TrialsRepeated(const CalibrationRun& run);

/// Sensors of the trial in hand of which nothing can be said, a line each: without a gain or without a deflection.
std::vector<std::string> SensorsWithoutResult(const CalibrationRun& run);

/// All that makes the trial in hand doubtful, a line each: those sensors, a wrong number of drops, stand positions that
/// are missing or given twice. Empty for a trial that may be used.
std::vector<std::string> DoubtsAboutTrial(const CalibrationRun& run);

/// Whether the stand position of a sensor in the trial in hand is missing or given to another one, too.
bool IsPositionDoubtful(const CalibrationRun& run, std::size_t sensor);

}  // namespace bellmark
