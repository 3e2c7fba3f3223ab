#pragma once

#include <cstddef>
#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The text report that is kept of every trial, one for each device.
namespace bellmark {

/// What a report tells beside run and center.
struct TrialReportFacts {
    std::string fileName;     ///< of the report itself
    std::string rawFileName;  ///< the FWD's file as the operator chose it
    DateTime now{};
    double airTemperature = 0;  ///< degrees Celsius
};

/// "<FWD serial> <dd-mmm-yyyy> <device serial>.LC<trial>", or ".RF<trial>" for a sensor. What a file name cannot hold
/// becomes "-".
std::string TrialReportName(const CalibrationRun& run, std::size_t device, DateTime today);

/// The report of a device, to the column, lines ending in CR LF. It is a function of the trial in hand as it is
/// counted.
std::string TrialReportText(const CalibrationRun& run, const CenterConfig& center, std::size_t device,
                            const TrialReportFacts& facts);

}  // namespace bellmark
