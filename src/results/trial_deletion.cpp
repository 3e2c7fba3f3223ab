#include "results/trial_deletion.h"

#include "app/interim_store.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/removed_runs.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

namespace {

/// Renumbers the trial whose drops are being taken.
void RenumberTrialInHand(CalibrationRun& run, const TrialFileKind& kind, const TrialMarks& marks) {
    const Procedure procedure = kind.dropPrefix == loadCellTrialFiles.dropPrefix    ? Procedure::LoadCell
                                : kind.dropPrefix == referenceTrialFiles.dropPrefix ? Procedure::Sensors
                                                                                    : Procedure::None;
    if (run.Trial.procedure == procedure && run.Trial.number > 0)
        run.Trial.number = NumberAfterDeletion(run.Trial.number, marks);
}

}  // namespace

bool DeleteTrialsWithFiles(Program& program, const TrialFileKind& kind, const TrialMarks& marks,
                           const std::function<void()>& takeOut) {
    // If the run cannot be saved, nothing is deleted.
    if (!SaveInterimCalibration(program)) return false;
    const Path data = program.InterimFolder();
    FileSystem& files = program.Services.files;
    const Path safeCopy = FreeSafeCopy(files, data);
    DeleteTrialFiles(files, data, safeCopy, kind, marks);
    for (std::size_t t = 0; t < maxTrials; ++t) {
        if (marks[t]) AddToJournal(program, std::string(kind.words) + ' ' + NumberText(t + 1) + " deleted");
    }
    RenumberTrialInHand(program.Run, kind, marks);
    takeOut();
    // Before this save the stored run still has all trials.
    if (SaveInterimCalibration(program)) MoveToRemoved(program, program.Run.InterimFolderName, {safeCopy});
    return true;
}

}  // namespace bellmark
