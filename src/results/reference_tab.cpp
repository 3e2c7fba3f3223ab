#include "results/reference_tab.h"

#include "app/center_file.h"
#include "app/daily_calibration.h"
#include "app/doors.h"
#include "app/program.h"
#include "app/workflow.h"
#include "controls/screen.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "relative/relative_analysis.h"
#include "results/pair_deletion.h"
#include "results/publish_run.h"
#include "results/sensor_grids.h"
#include "results/trial_deletion.h"
#include "run/reference_trials.h"
#include "run/trial.h"

namespace bellmark {

namespace {

constexpr int mostTrials = static_cast<int>(maxTrials);
constexpr const char* deleteReference = "Delete Reference Calibrations";
constexpr const char* deleteRelative = "Delete Relative Calibrations";
constexpr const char* answerFirst = "Accept or reject the last trial first: it still waits for its answer.";

void Allow(Button& button, bool allowed, const std::string& whyNot) {
    button.Enabled = allowed;
    button.ToolTip = allowed ? std::string() : whyNot;
    if (!allowed) button.BackColor = colors::buttonFace;
}

}  // namespace

ReferenceTab::ReferenceTab(Screen& screen, Program& program)
    : screen_(screen), Relative(screen, fraRef, program), program_(program), run_(program.Run) {
    txtRefMsg.Locked = true;
    fraDelRefCal.Visible = false;
    fraDelRefCal.DefaultButton = &cmdDelRefOK;
    fraDelRefCal.CancelButton = &cmdDelRefCancel;
    cmdAcceptReference.Click = [this] { cmdAcceptReference_Click(); };
    cmdAdditionalRefTrial.Click = [this] { cmdAdditionalRefTrial_Click(); };
    cmdDelRefCal.Click = [this] { cmdDelRefCal_Click(); };
    cmdDelRefOK.Click = [this] { cmdDelRefOK_Click(); };
    cmdDelRefCancel.Click = [this] { CloseDeletion(); };
    Relative.Changed = [this] {
        ShowStage();
        Changed();
    };
    Relative.WhileWaiting = [this](const auto& work) { WhileWaiting(work); };
}

void ReferenceTab::Evaluate() {
    const int trials = AcceptedReferenceTrials(run_);
    JudgeReferenceTrials(run_, trials);
    fraDelRefCal.Visible = false;
    ShowReferenceGains(grdRefCal, run_, trials);
    txtRefMsg.Text = trials == 0 ? "No reference calibrations have been performed yet." : ReferenceMessages(run_);
    Relative.Evaluate();
    ShowStage();
}

void ReferenceTab::ShowStage() {
    ShowReferenceButtons();
    ShowReferenceAdvice();
    ShowDeletionButton();
    optRef.BackColor = run_.SensorRelCalComplete                        ? colors::complete
                       : run_.SensorRelCalGood || run_.SensorRefCalGood ? colors::suggestedNext
                       : AcceptedReferenceTrials(run_) > 0              ? colors::mustBeUpdated
                                                                        : colors::window;
}

void ReferenceTab::ShowReferenceButtons() {
    const int trials = AcceptedReferenceTrials(run_);
    const bool waits = ProcedureOfUnacceptedTrial(run_) != Procedure::None;
    const std::string accepted = "The reference calibration is accepted.";
    cmdAdditionalRefTrial.Caption = trials == 0       ? "&Perform First Reference Trial"
                                    : trials % 2 == 0 ? "&Perform Two More Reference Trials"
                                                      : "&Perform Reference Trial " + NumberText(trials + 1);
    if (run_.SensorRefCalComplete) {
        for (Button* button : {&cmdAcceptReference, &cmdAdditionalRefTrial}) {
            Allow(*button, false, accepted);
        }
        return;
    }
    Allow(cmdAcceptReference, IsPaired(trials) && !waits,
          waits ? answerFirst : "Reference trials come in pairs: two of them at least.");
    const bool mayBegin = run_.SetupComplete && !run_.LoadCellOnly;
    Allow(cmdAdditionalRefTrial, mayBegin && trials < mostTrials,
          !run_.SetupComplete ? "Available once the set-up is complete."
          : run_.LoadCellOnly ? "The set-up was approved for the load cell only."
                              : "All four trials are done: delete a pair to repeat it.");
}

/// Suggests acceptance of good trials and more trials otherwise.
void ReferenceTab::ShowReferenceAdvice() {
    if (run_.SensorRefCalComplete) return;
    const auto mark = [](Button& button, bool suggested) {
        button.BackColor = suggested && button.Enabled ? colors::suggestedNext : colors::buttonFace;
    };
    // After four trials the operator can only accept or delete.
    const bool acceptIsNext = run_.SensorRefCalGood || AcceptedReferenceTrials(run_) == mostTrials;
    mark(cmdAcceptReference, acceptIsNext);
    mark(cmdAdditionalRefTrial, !acceptIsNext);
}

/// Deletion applies to the open stage: reference trials, later relative trials.
void ReferenceTab::ShowDeletionButton() {
    const bool ofRelative = DeletesRelativeTrials() && run_.RelTrials > 0;
    cmdDelRefCal.Caption = ofRelative ? "&Delete Relative Trials" : "&Delete Reference Trials";
    const bool waits = ProcedureOfUnacceptedTrial(run_) != Procedure::None || run_.RelTrialInHand;
    Allow(cmdDelRefCal, TrialsToDelete() > 0 && !waits && !run_.SensorRelCalComplete,
          run_.SensorRelCalComplete ? "The sensor calibration is accepted."
          : waits                   ? answerFirst
                                    : "There is no trial to delete.");
    cmdDelRefCal.BackColor = colors::buttonFace;
}

int ReferenceTab::TrialsToDelete() const {
    return DeletesRelativeTrials() ? run_.RelTrials : AcceptedReferenceTrials(run_);
}

Button* ReferenceTab::NextStep() {
    if (run_.SensorRefCalComplete) return Relative.NextStep();
    for (Button* button : {&cmdAcceptReference, &cmdAdditionalRefTrial}) {
        if (button->BackColor.Get() == colors::suggestedNext) return button;
    }
    return nullptr;
}

void ReferenceTab::cmdAcceptReference_Click() {
    if (!MayGiveUpDrops(program_, Procedure::Sensors, "when the reference calibration is accepted")) return;
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
    // The file comes first: without it the acceptance would be lost.
    if (program_.Services.files.IsFile(interim))
        WriteKey(program_, interim, "Device Calibration", "SensorRefCalComplete", "True");
    run_.SensorRefCalComplete = true;
    if (run_.Trial.procedure == Procedure::Sensors) LeaveTrial(run_);
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
    const int trials = TrialsToDelete();
    const bool ofRelative = DeletesRelativeTrials();
    fraDelRefCal.Caption = ofRelative ? deleteRelative : deleteReference;
    lblDelRef.Caption = ofRelative
                            ? "Select the Relative Calibration Trials to be Deleted. Then Click OK to continue ..."
                            : "Select the Reference Calibration Trials to be Deleted. Then Click OK to continue ...";
    ChkDelRef[0].Caption = FirstPairCaption(trials);
    ChkDelRef[1].Caption = SecondPairCaption(trials);
    ChkDelRef[1].Visible = trials > 2;
    for (CheckBox& box : ChkDelRef) box.Value = false;
    fraDelRefCal.Visible = true;
    screen_.SetFocus(ChkDelRef[0]);
}

/// The focus returns to the button that opened the frame, so that the next Enter accepts nothing.
void ReferenceTab::CloseDeletion() {
    fraDelRefCal.Visible = false;
    screen_.SetFocus(cmdDelRefCal);
}

void ReferenceTab::cmdDelRefOK_Click() {
    const MarkedPairs marked = MarkPairs(TrialsToDelete(), ChkDelRef[0].Value, ChkDelRef[1].Value);
    CloseDeletion();
    if (marked.words.empty()) return;
    const bool ofRelative = DeletesRelativeTrials();
    const Answer answer = program_.ShowBox("Do you really want to delete " + marked.words + '?',
                                           box::yesNo + box::question + box::secondIsDefault,
                                           ofRelative ? deleteRelative : deleteReference);
    if (answer != Answer::Yes) return;
    WhileWaiting([&] { ofRelative ? DeleteRelativeTrials(marked.marks) : DeleteReferenceTrials(marked.marks); });
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

void ReferenceTab::DeleteRelativeTrials(const TrialMarks& marks) {
    DeleteTrialsWithFiles(program_, relativeTrialFiles, marks, [&] {
        run_.RelTrials = NumberAfterDeletion(run_.RelTrials + 1, marks) - 1;
        for (SensorCalRecord& sensor : run_.Sensor) DeleteTrials(sensor.RelTrial, marks);
        DeleteTrials(run_.RelTrial, marks);
        SetFinalGains(run_);
        Evaluate();
        Changed();
    });
}

}  // namespace bellmark
