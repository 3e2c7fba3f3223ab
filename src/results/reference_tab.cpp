#include "results/reference_tab.h"

#include "app/center_file.h"
#include "app/daily_calibration.h"
#include "app/doors.h"
#include "app/program.h"
#include "app/workflow.h"
#include "controls/screen.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "results/pair_deletion.h"
#include "results/publish_run.h"
#include "results/sensor_grids.h"
#include "results/trial_deletion.h"
#include "run/reference_trials.h"

namespace bellmark {

namespace {

constexpr int mostTrials = static_cast<int>(maxTrials);

void Allow(Button& button, bool allowed, const std::string& whyNot) {
    button.Enabled = allowed;
    button.ToolTip = allowed ? std::string() : whyNot;
    if (!allowed) button.BackColor = colors::buttonFace;
}

}  // namespace

ReferenceTab::ReferenceTab(Screen& screen, Program& program) : screen_(screen), program_(program), run_(program.Run) {
    txtRefMsg.Locked = true;
    txtRelMsg.Locked = true;
    fraDelRefCal.Visible = false;
    fraDelRefCal.DefaultButton = &cmdDelRefOK;
    fraDelRefCal.CancelButton = &cmdDelRefCancel;
    cmdAcceptReference.Click = [this] { cmdAcceptReference_Click(); };
    cmdAdditionalRefTrial.Click = [this] { cmdAdditionalRefTrial_Click(); };
    cmdDelRefCal.Click = [this] { cmdDelRefCal_Click(); };
    cmdDelRefOK.Click = [this] { cmdDelRefOK_Click(); };
    cmdDelRefCancel.Click = [this] { CloseDeletion(); };
    for (Button* button : {&cmdReviewSensors, &cmdAdditionalRelCal}) {
        button->Enabled = false;
        button->ToolTip = "This program cannot compare deflection sensors yet.";
    }
}

void ReferenceTab::Evaluate() {
    const int trials = AcceptedReferenceTrials(run_);
    JudgeReferenceTrials(run_, trials);
    fraDelRefCal.Visible = false;
    optRef.BackColor = colors::window;
    ShowReferenceGains(grdRefCal, run_, trials);
    txtRefMsg.Text = trials == 0 ? "No reference calibrations have been performed yet." : ReferenceMessages(run_);
    ShowReferenceButtons();
    ShowReferenceAdvice();
    ShowRelativeGrid();
}

void ReferenceTab::ShowReferenceButtons() {
    const int trials = AcceptedReferenceTrials(run_);
    const bool waits = ProcedureOfUnacceptedTrial(run_) != Procedure::None;
    const std::string answerFirst = "Accept or reject the last trial first: it still waits for its answer.";
    const std::string accepted = "The reference calibration is accepted.";
    cmdAdditionalRefTrial.Caption = trials == 0       ? "&Perform First Reference Trial"
                                    : trials % 2 == 0 ? "&Perform Two More Reference Trials"
                                                      : "&Perform Reference Trial " + NumberText(trials + 1);
    cmdDelRefCal.Caption = "&Delete Reference Trials";
    if (run_.SensorRefCalComplete) {
        for (Button* button : {&cmdAcceptReference, &cmdAdditionalRefTrial, &cmdDelRefCal}) {
            Allow(*button, false, accepted);
        }
        return;
    }
    Allow(cmdAcceptReference, IsPaired(trials) && !waits,
          waits ? answerFirst : "Reference trials come in pairs: two of them at least.");
    const bool mayBegin = run_.SetupComplete && !run_.LoadCellOnly && OffersSensorCalibration(program_);
    Allow(cmdAdditionalRefTrial, mayBegin && trials < mostTrials,
          !run_.SetupComplete   ? "Available once the set-up is complete."
          : run_.LoadCellOnly   ? "The set-up was approved for the load cell only."
          : trials < mostTrials ? "This program cannot calibrate deflection sensors yet."
                                : "All four trials are done: delete a pair to repeat it.");
    Allow(cmdDelRefCal, trials > 0 && !waits, trials > 0 ? answerFirst : "There is no trial to delete.");
}

/// Good trials are to be accepted; others call for more.
void ReferenceTab::ShowReferenceAdvice() {
    if (run_.SensorRefCalComplete) return;
    const auto mark = [](Button& button, bool suggested) {
        button.BackColor = suggested && button.Enabled ? colors::suggestedNext : colors::buttonFace;
    };
    // After four trials there is nothing left but to accept or to delete.
    const bool acceptIsNext = run_.SensorRefCalGood || AcceptedReferenceTrials(run_) == mostTrials;
    mark(cmdAcceptReference, acceptIsNext);
    mark(cmdAdditionalRefTrial, !acceptIsNext);
    cmdDelRefCal.BackColor = colors::buttonFace;
    if (AcceptedReferenceTrials(run_) == 0) return;
    optRef.BackColor = run_.SensorRefCalGood ? colors::suggestedNext : colors::mustBeUpdated;
}

void ReferenceTab::ShowRelativeGrid() {
    cmdAdditionalRelCal.Caption = "&Perform First Relative Trial";
    grdRelCal.SetHeadings({"            ", " Calculated ", "   Overall   "});
    grdRelCal.AddRow({"No.", " Final Gain ", " % Change "});
    txtRelMsg.Text = run_.RelTrials == 0
                         ? "No relative calibrations have been performed yet."
                         : "This run holds relative trials of the sensors; this program cannot judge them yet.";
}

void ReferenceTab::cmdAcceptReference_Click() {
    cmdAdditionalRefTrial.Enabled = false;
    WhileWaiting([this] {
        KeepReferenceAcceptance();
        Evaluate();
        Changed();
        PublishRun(program_);
    });
    program_.Compose(12);
    program_.ShowComposed();
    program_.The<MainMenuDoor>().CalibrateSensors();
}

void ReferenceTab::KeepReferenceAcceptance() {
    const Path interim = program_.Folder() / PathFromText(run_.InterimFileName);
    // First the file: what cannot be kept is not accepted.
    if (program_.Services.files.IsFile(interim))
        WriteKey(program_, interim, "Device Calibration", "SensorRefCalComplete", "True");
    run_.SensorRefCalComplete = true;
}

bool ReferenceTab::AskForPair() const {
    const int trials = AcceptedReferenceTrials(run_);
    if (trials % 2 == 1) return true;
    return program_.ShowBox(trials == 0 ? "Do you want to perform the first 2 Reference Calibration Trials?"
                                        : "Do you want to perform 2 additional Reference Calibration Trials?",
                            box::yesNo + box::question, "Start New Reference Calibraion Trial Pair") == Answer::Yes;
}

void ReferenceTab::cmdAdditionalRefTrial_Click() {
    if (EnterUnacceptedTrial(program_) || !AskForPair()) return;
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::Sensors));
    const bool isEntered = run_.CurrentProcedure != Procedure::Sensors;
    run_.CurrentProcedure = Procedure::Sensors;
    run_.CurrentProcStep = isEntered ? step::sensorsCheck : step::sensorsTrial;
    if (isEntered && program_.Has<PrerequisitesDoor>()) program_.The<PrerequisitesDoor>().ResetPreReq();
    run_.SensorRefCalGood = false;
    if (IsAccelCalibrationCurrent(program_)) {
        ReturnToProcedure(program_, Procedure::Sensors);
    } else {
        program_.The<FlipCalibrationDoor>().Start();
    }
}

void ReferenceTab::cmdDelRefCal_Click() {
    const int trials = AcceptedReferenceTrials(run_);
    fraDelRefCal.Caption = "Delete Reference Calibrations";
    lblDelRef.Caption = "Select the Reference Calibration Trials to be Deleted. Then Click OK to continue ...";
    ChkDelRef[0].Caption = FirstPairCaption(trials);
    ChkDelRef[1].Caption = SecondPairCaption(trials);
    ChkDelRef[1].Visible = trials > 2;
    for (CheckBox& box : ChkDelRef) box.Value = false;
    fraDelRefCal.Visible = true;
    screen_.SetFocus(ChkDelRef[0]);
}

/// The keyboard goes back to where the frame was opened: nothing that is accepted lies below the next Enter.
void ReferenceTab::CloseDeletion() {
    fraDelRefCal.Visible = false;
    screen_.SetFocus(cmdDelRefCal);
}

void ReferenceTab::cmdDelRefOK_Click() {
    const MarkedPairs marked = MarkPairs(AcceptedReferenceTrials(run_), ChkDelRef[0].Value, ChkDelRef[1].Value);
    CloseDeletion();
    if (marked.words.empty()) return;
    const Answer answer = program_.ShowBox("Do you really want to delete " + marked.words + '?',
                                           box::yesNo + box::question, "Delete Reference Calibrations");
    if (answer != Answer::Yes) return;
    WhileWaiting([&] { DeleteReferenceTrials(marked.marks); });
}

void ReferenceTab::DeleteReferenceTrials(const TrialMarks& marks) {
    DeleteTrialsWithFiles(program_, referenceTrialFiles, marks, [&] {
        run_.RefTrials = NumberAfterDeletion(run_.RefTrials + 1, marks) - 1;
        for (SensorCalRecord& sensor : run_.Sensor) DeleteTrials(sensor.RefTrial, marks);
        DeleteTrials(run_.RefTrialShape, marks);
        Evaluate();
        Changed();
    });
}

}  // namespace bellmark
