#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "run/calibration_run.h"

/// The FWD's measured peaks, read from the document of its data file.
namespace bellmark {

class FWDDocument;
class PDDXFile;

struct FWDPeaks {
    bool hasLocations = false;  ///< the document has at least one test location
    int dropsInFile = 0;        ///< of the first location; the rest is read only when this is the expected number
    /// Texts in place of peaks that are not numbers, as "Drop 5: \"abc\"", one for each.
    std::vector<std::string> unreadable;
    /// Sensors without a gain, and why, as "Sensor 3 (D3) shows no deflection in any drop".
    std::vector<std::string> withoutGain;
    std::string unknownUnits;  ///< an unknown unit, whose values are taken unconverted
    bool unitsAreKnown = true;
};

/// Whether a file's word for a unit means the English one (pounds, mils; psi and kips are stored as pounds) or the
/// metric one (kN, microns; kPa is stored as kN). Nothing for a word that is not known.
std::optional<bool> IsEnglishLoad(std::string_view loadUnits);
std::optional<bool> IsEnglishDeflection(std::string_view deflectionUnits);

/// The stored load: kPa and psi times the plate's area, kips as pounds; any other unit unchanged. Area with the
/// program's pi of 3.14159; psi and kip rounded to one decimal, kPa to four (half to even). radius: of the plate, in
/// inches for psi, in radiusUnits ("millimeter" in two spellings, otherwise meters) for kPa.
double StoredLoad(double value, std::string_view loadUnits, double radius, std::string_view radiusUnits);

/// The stored deflection: rounded to two decimals for "mils", otherwise to four.
double StoredDeflection(double value, std::string_view deflectionUnits);

/// Takes a sensor's serial number and initial gain from the document where the run does not know them yet. index: from
/// 0. A sensor without any gain gets none.
void FillSensor(const FWDDocument& document, CalibrationRun& run, std::size_t index);

/// Takes the peaks of every device into the trial in hand: drop n of the file is drop n of the reference. Serial
/// numbers and gains that the run lacks are taken too; a load cell without any gain gets 1.0, a sensor does not.
FWDPeaks ReadFWDPeaks(const PDDXFile& file, CalibrationRun& run);

/// Differences between the document's FWD and the run's, as "Serial Number 12 in place of 11"; a value missing from
/// either is no difference.
std::vector<std::string> DifferencesFromRun(const PDDXFile& file, const CalibrationRun& run);

}  // namespace bellmark
