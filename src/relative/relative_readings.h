#pragma once

#include <string>
#include <vector>

#include "run/calibration_run.h"

/// The readings of an annual relative trial, from the document of the FWD's data file.
namespace bellmark {

class FWDDocument;
class PDDXFile;

struct RelativeReadings {
    long long dropsInFile = 0;  ///< test locations times the drops of the first one
    /// Fields that are not readings, such as "Drop 5, sensor 3: \"abc\"". They count as 0.
    std::vector<std::string> unreadable;
    std::string deflectionUnits;  ///< as the file has them
};

/// Whether the word means the run's unit of deflection.
enum class UnitAgreement { Agrees, Differs, Unknown };
UnitAgreement AgreementOfUnits(const std::string& deflectionUnits, bool englishUnits);

/// The reading as it would have been with the gain found in the reference calibration: times interim over initial gain,
/// rounded half to even to four decimals for mils, two for microns. Without an initial gain it is 0.
double NormalisedReading(double reading, double interimGain, double initialGain, bool englishUnits);

/// Stores the readings of all sensors in the trial in hand; there must be room for it. Drops are numbered through all
/// test locations. Missing drops are 0, those after the 50th are ignored. Serial numbers and initial gains that the run
/// lacks are taken, too. A file without drops changes nothing.
RelativeReadings ReadRelativeTrial(const PDDXFile& file, CalibrationRun& run);

}  // namespace bellmark
