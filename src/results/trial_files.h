#pragma once

#include <array>

#include "platform/files.h"
#include "run/calibration_run.h"

/// The files of a run's trials: they carry the trial's number in their names.
namespace bellmark {

struct TrialFileKind {
    std::string_view dropPrefix;           ///< of the drops' files: "LoadCell" of "LoadCell2-H3D1.txt"; empty for none
    std::string_view reportExtension;      ///< of the reports' files: "LC" of "8002-123 09-Mar-2012 LC-9.LC2"
    bool isNumberBeforeExtension = false;  ///< as in "8002-123 09-03-2012 2.RL"
};
inline constexpr TrialFileKind loadCellTrialFiles{"LoadCell", "LC"};
inline constexpr TrialFileKind referenceTrialFiles{"Reference", "RF"};
inline constexpr TrialFileKind relativeTrialFiles{"", "RL", true};

/// Which trials are to go, the first at index 0.
using TrialMarks = std::array<bool, maxTrials>;

/// Trials are numbered from 1 without gaps: the number of one that stays, once the marked ones are gone. A trial that
/// is still being collected has the number behind the last and moves up too.
int NumberAfterDeletion(int trial, const TrialMarks& deleted);

/// Takes the files of the marked trials out of the folder and gives those of the others their new numbers. All files
/// are copied to safeCopy first, which the caller removes once the run is saved without the marked trials. Throws
/// FileError; then the folder is as it was, or, where that fails as well, safeCopy holds what it was.
void DeleteTrialFiles(FileSystem& files, const Path& folder, const Path& safeCopy, const TrialFileKind& kind,
                      const TrialMarks& deleted);

/// A folder beside the run's data folder that is free for such a copy: "TempInterimDropData". One that a failed
/// deletion has left is not touched.
Path FreeSafeCopy(const FileSystem& files, const Path& folder);

/// The marked ones taken out of a list of trials; what moves up leaves empty ones behind.
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
