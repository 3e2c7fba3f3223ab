#pragma once

#include <string>
#include <vector>

#include "platform/files.h"
#include "run/center_config.h"

/// Whole trials regressed again, from the drops in a dated folder and the FWD's peaks in the record beside them.
namespace bellmark {

/// A device in a reference trial. Gains are those of a record: FWDs keep four decimals of the initial one.
struct TrialResult {
    Path record;
    std::string problem;       ///< why there is no gain
    std::string serialNumber;  ///< of the FWD
    int sensor = 0;            ///< number of the sensor as operators know it counted from 1; 0 for the load cell
    int number = 0;            ///< of the trial, from 1; 0 for a record that cannot be read
    int drops = 0;
    double initialGain = 0;
    double gain = 0;        ///< with the peaks of the reference as they are analysed now
    double storedGain = 0;  ///< in the record
    double adjustmentFactor = 0;
    double standardError = 0;
    double largestPeakDifference = 0;  ///< of a drop's peak now from that in the record, in the trial's unit
};

/// Whether a file is the record of a finished calibration: "BellmarkCalibrationRecord 09-Mar-2012.ddx".
bool IsRecordName(std::string_view name);

/// All trials of a record, those of the load cell first. Never throws for a file: a result tells the problem.
std::vector<TrialResult> AnalyseTrials(const FileSystem& files, const Path& record, const CenterConfig& center);

}  // namespace bellmark
