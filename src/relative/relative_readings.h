#pragma once

#include <cstddef>
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

/// The readings of an annual trial.
struct RelativeReadings {
    long long dropsInFile = 0;  ///< test locations times the drops of the first one
    /// Fields that are not readings, such as "Drop 5, sensor 3: \"abc\"". They count as 0.
    std::vector<std::string> unreadable;
    std::string deflectionUnits;  ///< as the file has them
};

/// What is doubtful about the file's word for the unit of its deflections; empty when it is the run's unit.
std::string DoubtAboutUnits(const std::string& deflectionUnits, bool englishUnits);

/// The reading as it would have been with the gain found in the reference calibration: times interim over initial gain,
/// rounded half to even to four decimals for mils, two for microns. Without an initial gain it is 0.
double NormalisedReading(double reading, double interimGain, double initialGain, bool englishUnits);

/// Stores the readings of all sensors in the trial in hand; there must be room for it. Drops are numbered through all
/// test locations. Missing drops are 0, those after the 50th are ignored. Serial numbers and initial gains that the run
/// lacks are taken, too. A file without drops changes nothing.
RelativeReadings ReadRelativeTrial(const PDDXFile& file, CalibrationRun& run);

}  // namespace bellmark
