#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "run/calibration_run.h"

/// The peaks that the FWD measured, out of the document of its data file.
namespace bellmark {

class PDDXFile;

struct FWDPeaks {
    bool hasLocations = false;  ///< the document tells of at least one test location
    int dropsInFile = 0;        ///< of the first location; a number other than expected leaves the rest unread
    /// What stands where a peak should be and is none, as "Drop 5: \"abc\"", one for each.
    std::vector<std::string> unreadable;
    /// Sensors of which no gain will come, and why, as "Sensor 3 (D3) shows no deflection in any drop".
    std::vector<std::string> withoutGain;
    std::string unknownUnits;  ///< the unit's word when no rule is known for it, and its values are taken as they stand
    bool unitsAreKnown = true;
};

/// The load as it is stored: kPa and psi times the plate's area, kips as pounds; any other unit unchanged. Area with
/// the program's pi of 3.14159; psi and kip rounded to one decimal, kPa to four (half to even).
/// radius: of the plate, in inches for psi, in radiusUnits ("millimeter" in two spellings, otherwise meters) for kPa.
double StoredLoad(double value, std::string_view loadUnits, double radius, std::string_view radiusUnits);

/// The deflection as it is stored: rounded to two decimals for "mils", otherwise to four.
double StoredDeflection(double value, std::string_view deflectionUnits);

/// Takes the peaks of every device into the trial in hand: drop n of the file is drop n of the reference. Serial
/// numbers and gains that the run does not know yet are taken along; a load cell without any gain gets 1.0, a sensor
/// does not.
FWDPeaks ReadFWDPeaks(const PDDXFile& file, CalibrationRun& run);

/// In what the document says of the FWD differently from the run, as "Serial Number 12 in place of 11"; empty where
/// either is silent.
std::vector<std::string> DifferencesFromRun(const PDDXFile& file, const CalibrationRun& run);

}  // namespace bellmark
