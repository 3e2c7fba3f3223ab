#pragma once

#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/drop_record.h"

/// The text file of every accelerometer drop. The simulated board reads it back.
namespace bellmark {

/// "Reference2-H3D1.txt": trial, height and drop in hand.
std::string AccelDropFileName(const CalibrationRun& run);

/// Content of an accelerometer drop's file; lines end in CR LF.
std::string AccelDropFileText(const DropRecord& drop, const CalibrationRun& run, const CenterConfig& center,
                              DateTime now);

}  // namespace bellmark
