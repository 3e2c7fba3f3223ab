#pragma once

#include <string>

#include "app/calibration_run.h"

namespace bellmark {

class PDDXFile;

/// The make that a name tells of; nothing changes when it tells of none. A later maker in the name wins.
void SetManufacturerByName(CalibrationRun& run, const std::string& deviceName);

/// Takes what an FWD's configuration document tells of it into the run: name, model, serial numbers, load cell, sensors
/// and their gains as they are in the FWD now. Sensors beyond the twelve that a run can hold are left out.
void TakeFWDConfiguration(CalibrationRun& run, const PDDXFile& document);

}  // namespace bellmark
