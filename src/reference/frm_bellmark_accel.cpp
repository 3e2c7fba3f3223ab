#include "reference/frm_bellmark_accel.h"

#include <algorithm>

#include "app/daily_calibration.h"
#include "app/program.h"
#include "app/replay.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "reference/hand_button.h"
#include "reference/reference_instrument.h"
#include "run/accel_adjustment.h"
#include "run/trial.h"

namespace bellmark {

namespace {
constexpr Color firstDropOfHeight{255, 224, 192};
constexpr Color furtherDrop{192, 255, 255};
constexpr Color trialComplete{255, 192, 192};
constexpr const char* nextDropPrompt = "When ready to begin this drop, press NEXT.";
constexpr const char* trialCompletePrompt = "When ready to get FWD drop data, press NEXT.";
}  // namespace

frmBellmark_Accel::frmBellmark_Accel(Program& program)
    : Screen(program.Screens, "frmBellmark_Accel", "Collect Data"),
      Header(*this, program.Header),
      DropDataDisplay(*this, program.Run),
      program_(program),
      run_(program.Run) {
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    TimerAccel.Tick = [this] { TimerAccel_Tick(); };
    DropDataDisplay.CellClick = [this](int index) { ReviewDrop(index); };
    SetDefaultButton(&cmdNext);
}

void frmBellmark_Accel::TellWhatIsToBeRepeated() {
    const TrialInHand& left = run_.Trial;
    const TrialInHand trial = TrialOfSetup(run_);
    const bool changed = left.DropSequenceIndex > 0 && left.procedure == trial.procedure && left.number == trial.number;
    const bool wasInterrupted = left.wasInterrupted && left.procedure == trial.procedure;
    if (!changed && !wasInterrupted) return;
    program_.ShowBox((changed ? std::string("Units, heights or drops were changed in the middle of trial ")
                              : std::string("The program ended in the middle of trial ")) +
                         NumberText(trial.number) + ".\r\nAll drops of this trial have to be repeated.",
                     box::information);
}

bool frmBellmark_Accel::OffersResults(int trials, const char* done, const char* review) {
    const Answer answer = program_.ShowBox(NumberText(trials) + done + "\r\n" + review, box::okCancel);
    if (answer != Answer::OK || !program_.Has<ResultsDoor>()) return false;
    program_.The<ResultsDoor>().Open();
    return true;
}

void frmBellmark_Accel::Enter() {
    cmdNext.Enabled = true;
    Show();
    SetFocus(cmdNext);
    PollButton(true);
}

void frmBellmark_Accel::DisableButtons() {
    PollButton(false);
    cmdNext.Enabled = false;
}

void frmBellmark_Accel::Bellmark() {
    EndReplay(program_);
    ComputeAccelAdjustment(program_.Center);
    if (CalibratesSensors(run_) && run_.SensorRefCalComplete) {
        run_.CurrentProcStep = step::sensorsRelative;
        program_.The<CenterRelativeDoor>().Start();
        return;
    }
    // Back from the main menu, or from its checklist, in the middle of a trial: what was accepted stands.
    Header.PageTitle.Caption = TextsOf(run_.CurrentProcedure).pageTitle;
    if (IsTrialInHand(run_)) return Enter();
    if (run_.CurrentProcedure == Procedure::LoadCell) {
        if (run_.LoadCellRefTrials >= 2 && !run_.LoadCellCalComplete &&
            OffersResults(run_.LoadCellRefTrials, "  load cell calibration trials have been completed so far.",
                          "Please review the Load Cell Calibration Results")) {
            return;
        }
    } else {
        const bool pairsAreComplete = run_.RefTrials >= 2 && run_.RefTrials % 2 == 0;
        if (pairsAreComplete &&
            OffersResults(run_.RefTrials, "  reference calibration trials have been completed so far.",
                          "Please review the Reference Calibration Results")) {
            return;
        }
        if (!AccelCalCurrent(program_)) {
            program_.The<FlipCalibrationDoor>().Start();
            return;
        }
    }
    Start();
}

void frmBellmark_Accel::Start() {
    if (!IsTrialInHand(run_) && !AskForRoom(program_)) return;
    if (program_.Has<PrerequisitesDoor>() &&
        !program_.The<PrerequisitesDoor>().PrerequisitesMet(run_.CurrentProcedure)) {
        return;
    }
    if (IsTrialInHand(run_)) return Enter();
    const bool sensors = CalibratesSensors(run_);
    if (!MayGiveUpDrops(
            program_, sensors ? Procedure::LoadCell : Procedure::Sensors,
            sensors ? "when a trial of the deflection sensors begins" : "when a trial of the load cell begins")) {
        program_.The<MainMenuDoor>().Open();
        return;
    }
    TellWhatIsToBeRepeated();
    BeginTrial(run_);
    const TrialShape& shape = run_.Trial.shape;
    DropDataDisplay.CreateResultTable(shape.dropsPerHeight, shape.heights);
    ClearDropData();
    lblTrialNum.Caption = NumberText(run_.Trial.number);
    const InstrumentTexts& texts = TextsOf(run_.CurrentProcedure);
    lblUnits.Caption = shape.englishUnits ? texts.englishUnits : texts.metricUnits;
    ShowDropInHand();
    Enter();
}

void frmBellmark_Accel::ClearDropData() {
    run_.Trial.DropResults = {};
    DropDataDisplay.Clear();
}

void frmBellmark_Accel::ShowDropInHand() {
    const int index = run_.Trial.DropSequenceIndex;
    const bool complete = IsComplete(run_.Trial);
    const DropPlace place = PlaceOf(run_.Trial.shape, index);
    const int drop = place.drop;
    lblLoadNumber.Caption = NumberText(place.height);
    lblDropNumber.Caption = NumberText(drop);
    fraLoadLevel.Visible = !complete;
    fraDropNumber.Visible = !complete;
    lblPrompt.Caption = complete ? trialCompletePrompt : nextDropPrompt;
    SetBackColor(complete ? trialComplete : drop == 1 ? firstDropOfHeight : furtherDrop);
    if (!complete) DropDataDisplay.HighlightCell(index, colors::warning);
    SetFocus(cmdNext);
}

void frmBellmark_Accel::GetResults() {
    DropDataDisplay.ShowResults();
    ShowDropInHand();
}

void frmBellmark_Accel::PollButton(bool poll) {
    if (poll && !run_.ReviewMode) {
        BeginHandButton(program_);
        TimerAccel.Start();
    } else {
        TimerAccel.Stop();
    }
}

void frmBellmark_Accel::TimerAccel_Tick() {
    // The button acts on the screen in front: after an aborted drop that may be the main menu. Behind another screen
    // its channel is not read either, since the reading would disturb that screen's measurement.
    if (Stack().Front() == this && HandButtonWasReleased(program_, TimerAccel)) cmdNext_Click();
}

void frmBellmark_Accel::Activated() {
    if (TimerAccel.IsRunning()) BeginHandButton(program_);
}

void frmBellmark_Accel::cmdNext_Click() {
    PollButton(false);
    run_.ButtonDown = false;
    if (IsComplete(run_.Trial)) {
        program_.The<FWDDataDoor>().Start();
        return;
    }
    if (!AskForRoom(program_)) return;
    if (run_.CurrentProcedure == Procedure::Sensors && !AccelCalCurrent(program_)) {
        program_.Compose(216);
        program_.ShowComposed();
        program_.The<FlipCalibrationDoor>().Start();
        return;
    }
    program_.The<DropDoor>().Start();
}

void frmBellmark_Accel::cmdMainMenu_Click() {
    PollButton(false);
    program_.The<MainMenuDoor>().Open();
}

void frmBellmark_Accel::ReviewDrop(int index) {
    if (index >= run_.Trial.DropSequenceIndex || !AskToReview(program_, index)) return;
    PollButton(false);
    BeginReplay(program_, index, false);
    program_.The<DropDoor>().StartReview();
}

}  // namespace bellmark
