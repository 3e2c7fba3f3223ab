#pragma once

#include <cstddef>
#include <string>

#include "analysis/analysis.h"
#include "platform/date_time.h"

/// The text report of an accepted relative trial.
namespace bellmark {

struct CalibrationRun;
struct CenterConfig;

/// What a report needs besides run and center.
struct RelativeReportFacts {
    std::string fileName;     ///< of the report itself
    std::string rawFileName;  ///< the FWD's file as the operator chose it
    DateTime now{};
};

/// "<FWD serial> <dd-mm-yyyy> <trial>.RL". Characters that file names cannot hold become "-". trial: index from 0.
std::string RelativeReportName(const CalibrationRun& run, std::size_t trial, DateTime today);

/// The report of an analysed trial, to the column, lines ending in CR LF. trial: index from 0.
std::string PrintReportRel(const CalibrationRun& run, const CenterConfig& center, std::size_t trial,
                           const RelativeReportFacts& facts, const AnalysisWarning& warn);

}  // namespace bellmark
