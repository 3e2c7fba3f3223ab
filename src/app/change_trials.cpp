#include "app/change_trials.h"

#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

bool MayChangeTrials(Program& program, const TrialShape& wanted) {
    CalibrationRun& run = program.Run;
    if (wanted == TrialOfSetup(run).shape) return true;
    if (wanted.englishUnits != run.EnglishUnits && (run.RelTrials > 0 || run.RelTrialInHand)) {
        program.ShowBox(std::string("The relative trials of the sensors are in ") +
                            (run.EnglishUnits ? "mils" : "microns") +
                            ". Delete them in the results before the units are changed.",
                        box::exclamation);
        return false;
    }
    if (run.FlagUnacceptedTrial) {
        program.ShowBox(
            "The trial that waits for its FWD data keeps its units, heights and drops. What you choose here "
            "counts from the next trial on.",
            box::information);
        return true;
    }
    if (run.Trial.DropSequenceIndex == 0) return true;
    const std::string question = NumberText(run.Trial.DropSequenceIndex) + " of the " +
                                 NumberText(run.Trial.shape.Drops()) +
                                 " drops of a trial have been taken, in its own units, heights and drops.\r\nDo you "
                                 "want to change them and repeat the trial from its first drop?";
    const int style = box::yesNo + box::question + box::secondIsDefault;
    if (program.ShowBox(question, style, "Trial in Hand") != Answer::Yes) return false;
    LeaveTrial(run);
    return true;
}

}  // namespace bellmark
