#include "reference/frm_bellmark_accel.h"

#include <algorithm>

#include "app/daily_calibration.h"
#include "app/program.h"
#include "app/replay.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "reference/drop_file.h"
#include "reference/hand_button.h"
#include "run/accel_adjustment.h"

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

frmBellmark_Accel::Trial frmBellmark_Accel::TrialOfRun() const {
    const int done = run_.CurrentProcedure == 5 ? run_.LoadCellRefTrials : run_.RefTrials;
    return {run_.CurrentProcedure, done + 1, run_.NumberLoadLevels, run_.NumberDropsPerLoadLevel, run_.EnglishUnits};
}

bool frmBellmark_Accel::TrialIsInHand() const {
    return run_.DropSequenceIndex > 0 && inGrid_ == TrialOfRun();
}

void frmBellmark_Accel::TellWhatIsToBeRepeated() {
    const Trial trial = TrialOfRun();
    const bool changed =
        run_.DropSequenceIndex > 0 && inGrid_.procedure == trial.procedure && inGrid_.number == trial.number;
    const bool isFirstSinceStart = inGrid_.procedure == 0;
    const bool wasInterrupted =
        isFirstSinceStart && trial.procedure == 5 &&
        !ListFilesWithPrefix(program_.Services.files, program_.InterimFolder(), LoadTrialFilePrefix(run_)).empty();
    if (!changed && !wasInterrupted) return;
    program_.ShowBox((changed ? std::string("Units, heights or drops were changed in the middle of trial ")
                              : std::string("The program ended in the middle of trial ")) +
                         NumberText(trial.number) + ".\r\nAll drops of this trial have to be repeated.",
                     box::information);
}

bool frmBellmark_Accel::GoesToResults(int trials, const char* done, const char* review) {
    const Answer answer = program_.ShowBox(NumberText(trials) + done + "\r\n" + review, box::okCancel);
    if (answer != Answer::OK || !program_.Has<ResultsDoor>()) return false;
    program_.The<ResultsDoor>().Open();
    return true;
}

void frmBellmark_Accel::GoOnWithTrial() {
    // Back from the main menu, or from its checklist, in the middle of a trial: what was accepted stands.
    Enter();
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
    ComputeAccelAdjustment(program_.Center);
    if (TrialIsInHand()) {
        GoOnWithTrial();
        return;
    }
    run_.DropNoiseFlags = {};
    if (run_.CurrentProcedure == 5) {
        Header.PageTitle.Caption = "Collect Data Using Reference Load Cell";
        if (run_.LoadCellRefTrials >= 2 && !run_.LoadCellCalComplete &&
            GoesToResults(run_.LoadCellRefTrials, "  load cell calibration trials have been completed so far.",
                          "Please review the Load Cell Calibration Results")) {
            return;
        }
    } else {
        Header.PageTitle.Caption = "Collect Data Using Accelerometer";
        if (run_.RefTrials >= 2 && run_.RefTrials % 2 == 0 &&
            GoesToResults(run_.RefTrials, "  reference calibration trials have been completed so far.",
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
    if (!TrialIsInHand() && !HasRoomForTrial(program_)) return;
    if (program_.Has<PrerequisitesDoor>() &&
        !program_.The<PrerequisitesDoor>().PrerequisitesMet(run_.CurrentProcedure)) {
        return;
    }
    if (TrialIsInHand()) {
        GoOnWithTrial();
        return;
    }
    TellWhatIsToBeRepeated();
    DropDataDisplay.CreateResultTable(run_.NumberDropsPerLoadLevel, run_.NumberLoadLevels);
    run_.TotalDrops = DropsInTrial(run_);
    ClearDropData();
    run_.DropSequenceIndex = 0;
    inGrid_ = TrialOfRun();
    const bool loadCell = run_.CurrentProcedure == 5;
    lblTrialNum.Caption = NumberText(inGrid_.number);
    if (loadCell) {
        lblUnits.Caption = run_.EnglishUnits ? "(Drop data are in pound-force)" : "(Drop data are in kilo-Newtons)";
    } else {
        lblUnits.Caption = run_.EnglishUnits ? "(Drop data are in mils)" : "(Drop data are in microns)";
    }
    ShowDropInHand();
    Enter();
}

void frmBellmark_Accel::ClearDropData() {
    run_.DropResults = {};
    DropDataDisplay.Clear();
}

void frmBellmark_Accel::ShowDropInHand() {
    const int index = run_.DropSequenceIndex;
    const bool complete = index >= run_.TotalDrops;
    const int drop = DropInHeight(index, run_.NumberDropsPerLoadLevel) + 1;
    lblLoadNumber.Caption = NumberText(HeightOfDrop(index, run_.NumberDropsPerLoadLevel) + 1);
    lblDropNumber.Caption = NumberText(drop);
    fraLoadLevel.Visible = !complete;
    fraDropNumber.Visible = !complete;
    lblPrompt.Caption = complete ? trialCompletePrompt : nextDropPrompt;
    SetBackColor(complete ? trialComplete : drop == 1 ? firstDropOfHeight : furtherDrop);
    if (!complete) DropDataDisplay.HighlightCell(index, colors::warning);
    SetFocus(cmdNext);
}

void frmBellmark_Accel::GetResults() {
    run_.TrialReview = false;
    if (run_.ReplayMode) {
        EndReplay(program_);
        ShowDropInHand();
        return;
    }
    const int index = run_.DropSequenceIndex;
    const bool storable = index >= 0 && index < static_cast<int>(maxDrops);
    if (storable) {
        const auto slot = static_cast<std::size_t>(index);
        DropDataDisplay.ShowExcessNoise(index, run_.DropNoiseFlags[slot]);
        DropDataDisplay.ShowResult(index, run_.DropResults[slot]);
    }
    ++run_.DropSequenceIndex;
    if (storable) {
        const auto taken = static_cast<std::size_t>(run_.DropSequenceIndex);
        DropDataDisplay.ShowStatistics(std::span(run_.DropResults).first(taken), false);
    }
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
    // The button speaks to the screen in front: after an aborted drop that may be the main menu. From behind another
    // screen its channel is not read either, or the reading would fall into what that screen measures.
    if (Stack().Front() == this && HandButtonWasReleased(program_)) cmdNext_Click();
}

void frmBellmark_Accel::Activated() {
    if (TimerAccel.IsRunning()) BeginHandButton(program_);
}

void frmBellmark_Accel::cmdNext_Click() {
    PollButton(false);
    run_.ButtonDown = false;
    if (run_.DropSequenceIndex >= run_.TotalDrops) {
        program_.The<FWDDataDoor>().Start();
        return;
    }
    if (!HasRoomForTrial(program_)) return;
    if (run_.CurrentProcedure == 4 && !AccelCalCurrent(program_)) {
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
    if (index >= run_.DropSequenceIndex ||
        DropDataDisplay.txtData[static_cast<std::size_t>(index)]->Text.Get().empty()) {
        return;
    }
    if (!WantsToReview(program_, index)) return;
    PollButton(false);
    BeginReplay(program_, index);
    program_.The<DropDoor>().StartReview();
}

}  // namespace bellmark
