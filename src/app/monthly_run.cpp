#include "app/monthly_run.h"

#include "app/app_main.h"
#include "app/doors.h"
#include "app/interim_store.h"
#include "app/program.h"
#include "app/replay.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

bool OperatorGivesUp(Program& program, const std::string& lost) {
    return program.ShowBox(lost + "\r\nDo you want to go on?", box::yesNo + box::question + box::secondIsDefault,
                           "Trial in Hand") == Answer::Yes;
}

bool MayGiveUpMonthlyTrials(Program& program) {
    const CalibrationRun& run = program.Run;
    if (!IsMonthlyRunUnderWay(run)) return true;
    const std::string what = IsReplacement(run) ? "sensor replacement" : "monthly relative calibration";
    const int trials = run.RelTrials + (run.RelTrialInHand ? 1 : 0);
    return OperatorGivesUp(program, "The " + what + " is not finished. Its " +
                                        (trials == 1 ? "trial is" : NumberText(trials) + " trials are") +
                                        " given up; reports that were written stay.");
}

/// The store of the run in hand keeps all of it but what belongs to a trial that was not accepted.
bool MayLeaveRunInHand(Program& program) {
    const CalibrationRun& run = program.Run;
    const std::string when = "when a monthly calibration begins";
    if (run.MonthlyCalibration) return MayGiveUpMonthlyTrials(program);
    if (!MayGiveUpDrops(program, Procedure::LoadCell, when) || !MayGiveUpDrops(program, Procedure::Sensors, when))
        return false;
    return !run.RelTrialInHand || OperatorGivesUp(program, "A relative trial is in hand. It is given up " + when +
                                                               "; its file can be read again.");
}

/// A store that was not opened or made in this run holds another run.
bool HasStore(const CalibrationRun& run) {
    return run.IsInHand && run.StoreIsOfThisSitting && !run.InterimFileName.empty();
}

/// The record is that of a program just started; no store belongs to it.
void ForgetRun(Program& program) {
    LeaveInterimStore(program);
    BeginFreshRun(program);
    program.Run.ProgramStarted = false;
    program.Run.IsInHand = false;
    program.Header.SetFWDOwnerName("");
    program.Header.SetFWDNameCtrl("");
    program.Header.SetProcedureName("");
    program.The<MainFrameDoor>().AllowWhatNeedsARun(false);
    program.The<MainFrameDoor>().AllowProcedures(false, false);
    program.The<MainMenuDoor>().AllowProcedures(false, false);
}

}  // namespace

bool BeginMonthlyRun(Program& program) {
    if (!MayLeaveRunInHand(program)) return false;
    // A drop that is looked at again has brought the center's values of its own time.
    EndReplay(program);
    if (HasStore(program.Run) && !SaveInterimCalibration(program)) return false;
    ForgetRun(program);
    program.Run.MonthlyCalibration = true;
    program.Run.RelTrials = 0;
    program.Header.SetRunName("Monthly Cal");
    program.Header.SetProcedureName("FWD Monthly Relative Calibration");
    return true;
}

bool LeaveMonthlyRun(Program& program) {
    if (!MayGiveUpMonthlyTrials(program)) return false;
    ForgetRun(program);
    program.The<StartFormDoor>().ShowStart();
    return true;
}

bool MayQuitMonthlyRun(Program& program) {
    return MayGiveUpMonthlyTrials(program);
}

bool IsMonthlyRunUnderWay(const CalibrationRun& run) {
    const bool isFinished =
        run.CurrentProcStep == step::monthlyFinished || run.CurrentProcStep == step::replacementFinished;
    return run.MonthlyCalibration && !isFinished && (run.RelTrials > 0 || run.RelTrialInHand);
}

void ReturnToMonthlyTrial(Program& program) {
    auto& door = program.The<RelativeDoor>();
    if (IsReplacement(program.Run)) {
        door.SetupGeophone();
    } else {
        door.SetupMonthly();
    }
}

bool IsReplacement(const CalibrationRun& run) {
    return run.CurrentProcedure == Procedure::SensorReplacement;
}

}  // namespace bellmark
