#pragma once

#include <string>

#include "platform/files.h"

/// A run's results in the tree of owners and FWDs: one dated folder below the FWD's.
namespace bellmark {

class Program;

/// Name of the PDDX document of a run, in its data folder and in its dated folder.
inline constexpr const char* calibrationDocumentName = "BellmarkCalibration.ddx";

/// "09-Mar-2012": as it stands in the outputs and in the names of their files.
std::string TodayText(const Program& program);

/// Makes the dated folder of today the run's output folder; a review's begins with "Sim". The one of an earlier day is
/// deleted: it held the same run. Throws std::runtime_error while the FWD's folder is not known, and FileError.
void OpenOutputFolder(Program& program);

/// Writes the run's document under a path, naming itself. False, after a box, when that fails.
bool WriteRunDocument(Program& program, const Path& path);

/// The same for the FWD. The file in its place may be the FWD's own: its earlier calibrations stay in it, unless it has
/// the serial number of another FWD.
bool WriteDocumentForFWD(Program& program, const Path& path);

/// Copies the run's data folder into its output folder, over what is there. Throws FileError.
void CopyTrialData(Program& program);

/// What each acceptance does: the run is saved, and what there is of it so far lies in its dated folder. The run is
/// saved even when the folder cannot be made. Throws as OpenOutputFolder does.
void PublishRun(Program& program);

}  // namespace bellmark
