#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The text report of every trial, one for each device.
namespace bellmark {

/// Contents of a report besides run and center.
struct TrialReportFacts {
    std::string fileName;     ///< of the report itself
    std::string rawFileName;  ///< the FWD's file as the operator chose it
    DateTime now{};
    std::optional<double> airTemperature;  ///< degrees Celsius; nothing when it cannot be read
};

/// "<FWD serial> <dd-mmm-yyyy> <device serial>.LC<trial>", or ".RF<trial>" for a sensor. Characters that a file name
/// cannot hold become "-".
std::string TrialReportName(const CalibrationRun& run, std::size_t device, DateTime today);

/// The report of a device, in fixed columns, lines ending in CR LF. It depends only on the counted trial in hand.
std::string TrialReportText(const CalibrationRun& run, const CenterConfig& center, std::size_t device,
                            const TrialReportFacts& facts);

}  // namespace bellmark
