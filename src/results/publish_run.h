#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/files.h"

/// Publishes a run's results in the tree of owners and FWDs: one dated folder below the FWD's.
namespace bellmark {

class Program;

/// Name of the PDDX document of a run, in its data folder and in its dated folder.
inline constexpr const char* calibrationDocumentName = "BellmarkCalibration.ddx";

/// "09-Mar-2012", as in the outputs and the names of their files.
std::string TodayText(const Program& program);

/// Creates today's dated folder as the run's output folder; the name of a review's folder begins with "Sim". Deletes
/// the folder of an earlier day: it held the same run. Throws std::runtime_error while the FWD's folder is unknown, and
/// FileError.
void OpenOutputFolder(Program& program);

/// Writes the run's document to a path, which it also records. False, after a box, when that fails.
bool WriteRunDocument(Program& program, const Path& path);

/// The same for the FWD. The file in its place may be the FWD's own: its earlier calibrations stay in it, unless it has
/// the serial number of another FWD.
bool WriteDocumentForFWD(Program& program, const Path& path);

/// Takes a file's copy and its bytes.
using TakeCopied = std::function<void(const Path& copy, std::string_view bytes)>;

/// Copies the run's data folder into its output folder and replaces older files. take: called with each file, whether
/// it had to be copied or was there already. Throws FileError.
void CopyTrialData(Program& program, const TakeCopied& take = {});

/// Called by each acceptance. Saves the run and copies its files to its dated folder. The run is saved even when the
/// folder cannot be created. Throws as OpenOutputFolder does.
void PublishRun(Program& program);

}  // namespace bellmark
