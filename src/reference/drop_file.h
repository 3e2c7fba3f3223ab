#pragma once

#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/drop_record.h"

/// The text file that is kept of every drop. The simulated board reads it back.
namespace bellmark {

/// "LoadCell2-H3D1.txt": trial, height and drop in hand.
std::string LoadDropFileName(const CalibrationRun& run);

/// What the file names of all drops of the trial in hand begin with: "LoadCell2-H".
std::string LoadTrialFilePrefix(const CalibrationRun& run);

/// Content of a load cell drop's file, lines end in CR LF.
std::string LoadDropFileText(const DropRecord& drop, const CalibrationRun& run, const CenterConfig& center,
                             DateTime now);

}  // namespace bellmark
