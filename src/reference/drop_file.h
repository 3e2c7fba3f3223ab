#pragma once

#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/drop_record.h"

/// The text file of every load cell drop. The simulated board reads it back.
namespace bellmark {

/// Name of the file of the load cell drop in hand.
std::string LoadDropFileName(const CalibrationRun& run);

/// Content of a load cell drop's file; lines end in CR LF.
std::string LoadDropFileText(const DropRecord& drop, const CalibrationRun& run, const CenterConfig& center,
                             DateTime now);

}  // namespace bellmark
