#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "run/calibration_run.h"

/// The readings of relative trials, from the document of the FWD's data file.
namespace bellmark {

class FWDDocument;
class PDDXFile;

/// The number in a field of a drop: field 0 is the load, field s + 1 the sensor of index s. What is no number, or one
/// far above what any FWD measures, counts as 0 and is told in a line as "Drop 5, sensor 3: \"abc\"". drop: its number
/// in the trial, from 1.
double NumberOfDrop(const CalibrationRun& run, const std::vector<std::string>& fields, std::size_t field,
                    long long drop, std::vector<std::string>& unreadable);

/// A line when the file's word for the unit of its loads or deflections is missing, unknown or not the run's unit.
std::optional<std::string> DoubtAboutLoadUnits(const std::string& loadUnits, bool englishUnits);
std::optional<std::string> DoubtAboutDeflectionUnits(const std::string& deflectionUnits, bool englishUnits);

/// The reading as it would have been with the gain found in the reference calibration: times interim over initial gain,
/// rounded half to even to four decimals for mils, two for microns. Without an initial gain it is 0.
double NormalisedReading(double reading, double interimGain, double initialGain, bool englishUnits);

/// Takes the drops of all sensors as those of the trial in hand, numbered through all test locations; there must be
/// room for it. Missing drops are 0, those after the 50th are ignored. Serial numbers and initial gains that the run
/// lacks are taken, too. rawFileName: the FWD's file as the operator chose it. Gives the number of drops in the file,
/// which is test locations times the drops of the first one; a file without drops changes nothing.
long long ReadRelativeTrial(const PDDXFile& file, CalibrationRun& run, const std::string& rawFileName);

}  // namespace bellmark
