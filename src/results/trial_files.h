#pragma once

#include <array>

#include "platform/files.h"
#include "run/calibration_run.h"

/// The files of a run's trials. Their names contain the trial's number.
namespace bellmark {

struct TrialFileKind {
    std::string_view dropPrefix;       ///< of the drops' files: "LoadCell" of "LoadCell2-H3D1.txt"; empty for none
    std::string_view reportExtension;  ///< of the reports' files: "LC" of "8002-123 09-Mar-2012 LC-9.LC2"
    std::string_view words;
    bool isNumberBeforeExtension = false;  ///< as in "8002-123 09-03-2012 2.RL"
};
inline constexpr TrialFileKind loadCellTrialFiles{"LoadCell", "LC", "Load cell trial"};
inline constexpr TrialFileKind referenceTrialFiles{"Reference", "RF", "Sensor reference trial"};
inline constexpr TrialFileKind relativeTrialFiles{"", "RL", "Relative trial", true};

/// Whether a file of that name is a drop of a load cell or reference trial.
bool IsDropFile(const std::string& name);

/// The trials to be deleted, the first at index 0.
using TrialMarks = std::array<bool, maxTrials>;

/// The new number of a trial that stays once the marked ones are deleted: trials are numbered from 1 without gaps. A
/// trial still being collected has the number after the last, and moves up, too.
int NumberAfterDeletion(int trial, const TrialMarks& deleted);

/// Deletes the files of the marked trials from the folder and renumbers the files of the others. First copies all files
/// to safeCopy, which the caller removes once the run is saved without the marked trials. Throws FileError; the folder
/// is restored then, or, if that fails as well, safeCopy holds its former files.
void DeleteTrialFiles(FileSystem& files, const Path& folder, const Path& safeCopy, const TrialFileKind& kind,
                      const TrialMarks& deleted);

/// A free folder name beside the run's data folder for such a copy: "TempInterimDropData". A folder left by a failed
/// deletion is not touched.
Path FreeSafeCopy(const FileSystem& files, const Path& folder);

/// Removes the marked trials from a list; empty ones fill up its end.
template <class Trial>
void DeleteTrials(std::array<Trial, maxTrials>& trials, const TrialMarks& deleted) {
    std::array<Trial, maxTrials> kept{};
    std::size_t count = 0;
    for (std::size_t t = 0; t < maxTrials; ++t) {
        if (!deleted[t]) kept[count++] = trials[t];
    }
    trials = kept;
}

}  // namespace bellmark
