#pragma once

#include <cstddef>
#include <string>

#include "monthly/monthly_texts.h"
#include "platform/date_time.h"
#include "platform/files.h"
#include "run/procedure.h"

/// The text reports of monthly trials and replacements, which stand beside the FWD's data file. Fixed columns, lines
/// ending in CR LF.
namespace bellmark {

struct MonthlyReading;

/// "<base>_<dd-mmm-yyyy>.MC<trial>" in the folder of the FWD's file, ".SC<trial>" for a replacement. trial: from 1.
Path MonthlyReportPath(const Path& dataFile, Procedure procedure, int trial, DateTime today);
/// The same of the final report, ".MFG" and ".SFG".
Path MonthlyFinalPath(const Path& dataFile, Procedure procedure, DateTime today);

/// The report of an accepted trial, in four pages. dataFile: the FWD's file as the operator chose it.
std::string OutputToFile(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile);

/// The final gains of a monthly calibration: both trials and their mean.
std::string OutputFinalField(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile);

/// The final gain of a replaced sensor: all its trials, their mean and standard deviation. facts must tell the sensor.
std::string OutputFinalReplace(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile);

}  // namespace bellmark
