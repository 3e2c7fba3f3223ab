#include "results/load_cell_tab.h"

#include "app/center_file.h"
#include "app/doors.h"
#include "app/program.h"
#include "app/workflow.h"
#include "controls/screen.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "results/publish_run.h"
#include "results/trial_deletion.h"
#include "run/center_keys.h"
#include "run/trial.h"

namespace bellmark {

namespace {

constexpr int gridRows = 5;
constexpr int headingRow = 1;
constexpr int gainRow = 2;
constexpr int changeRow = 4;
constexpr int firstTrialColumn = 2;
constexpr int mostTrials = static_cast<int>(maxTrials);

std::string ChangeText(const std::optional<double>& change) {
    return change ? Format(*change, "Percent") : "-";
}

}  // namespace

LoadCellTab::LoadCellTab(Screen& screen, Program& program) : screen_(screen), program_(program), run_(program.Run) {
    fraDelLCTrails.DefaultButton = &cmdDelLCOK;
    fraDelLCTrails.CancelButton = &cmdDelLCCancel;
    txtMsg.Locked = true;
    fraDelLCTrails.Visible = false;
    cmdAcceptLC.Click = [this] { cmdAcceptLC_Click(); };
    cmdLCTrial.Click = [this] { program_.The<MainMenuDoor>().CalibrateLoadCell(); };
    cmdDelLCTrials.Click = [this] { cmdDelLCTrials_Click(); };
    cmdDelLCOK.Click = [this] { cmdDelLCOK_Click(); };
    cmdDelLCCancel.Click = [this] { CloseDeletion(); };
}

std::vector<double> LoadCellTab::Gains() const {
    std::vector<double> gains;
    for (int trial = 0; trial < AcceptedLoadCellTrials(run_); ++trial) {
        gains.push_back(run_.LCTrial.at(static_cast<std::size_t>(trial)).Gain);
    }
    return gains;
}

int LoadCellTab::FinalColumn() const {
    return firstTrialColumn + AcceptedLoadCellTrials(run_);
}

void LoadCellTab::Evaluate() {
    const std::vector<double> gains = Gains();
    const LoadCellEvaluation judged = EvaluateLoadCell(gains, run_.LoadCellInitialGain);
    finalGain_ = judged.finalGain;
    fraDelLCTrails.Visible = false;
    optLoadCell.BackColor = colors::window;
    ShowTrials(gains);
    ShowTrialButtons();
    ShowJudgement(judged);
    ShowAcceptance();
}

Button* LoadCellTab::NextStep() {
    for (Button* button : {&cmdAcceptLC, &cmdLCTrial}) {
        if (button->Enabled && button->BackColor.Get() == colors::suggestedNext) return button;
    }
    return nullptr;
}

void LoadCellTab::ShowTrials(const std::vector<double>& gains) {
    std::vector<std::string> titles{"   Serial   ", "   Initial   "};
    std::vector<std::string> headings{"Number", "Gain"};
    for (std::size_t trial = 1; trial <= gains.size(); ++trial) {
        titles.push_back("    Trial " + NumberText(trial) + "    ");
        headings.push_back("Ref. Gain");
    }
    if (AcceptedLoadCellTrials(run_) >= fewestLoadCellTrials) {
        titles.push_back("    Final    ");
        headings.push_back("  Gain   ");
    }
    grdLoadCell.SetHeadings(titles);
    grdLoadCell.AddRow(headings);
    grdLoadCell.Resize(gridRows, static_cast<int>(titles.size()));
    grdLoadCell.SetCell(gainRow, 0, run_.LoadCellSerialNumber);
    grdLoadCell.SetCell(gainRow, 1, Format(run_.LoadCellInitialGain, "0.000"));
    if (!gains.empty()) grdLoadCell.SetCell(changeRow, 0, "Change");
    int column = firstTrialColumn;
    for (const double gain : gains) {
        grdLoadCell.SetCell(gainRow, column, Format(gain, "0.000"));
        grdLoadCell.SetCell(changeRow, column, ChangeText(GainChange(gain, run_.LoadCellInitialGain)));
        ++column;
    }
}

void LoadCellTab::ShowTrialButtons() {
    const int trials = AcceptedLoadCellTrials(run_);
    cmdLCTrial.Caption =
        trials == 0 ? "&Perform First Load Cell Trial" : "&Perform Load Cell Trial " + NumberText(trials + 1);
    cmdLCTrial.Enabled = run_.SetupComplete && trials < mostTrials;
    cmdLCTrial.ToolTip = !run_.SetupComplete   ? "Available once the set-up is complete."
                         : trials < mostTrials ? ""
                                               : "All four trials are done: delete one to repeat it.";
    // A trial that still waits for its answer already has its number: deleting others would renumber it.
    const bool waits = ProcedureOfUnacceptedTrial(run_) != Procedure::None;
    const std::string answerFirst =
        waits ? "Accept or reject the last trial first: it still waits for its answer." : std::string();
    cmdDelLCTrials.Enabled = trials > 0 && !waits;
    cmdDelLCTrials.ToolTip = answerFirst;
    cmdAcceptLC.Enabled = trials >= fewestLoadCellTrials && !waits;
    cmdAcceptLC.ToolTip = answerFirst;
    cmdDelLCTrials.BackColor = colors::buttonFace;
}

void LoadCellTab::ShowJudgement(const LoadCellEvaluation& judged) {
    const bool enoughTrials = AcceptedLoadCellTrials(run_) >= fewestLoadCellTrials;
    const bool passed = enoughTrials && judged.message.empty();
    const bool trialIsNext = !enoughTrials || !judged.isRepeatable;
    cmdLCTrial.BackColor = trialIsNext ? colors::suggestedNext : colors::buttonFace;
    cmdAcceptLC.BackColor = trialIsNext ? colors::buttonFace : colors::suggestedNext;
    if (enoughTrials) {
        ShowLimits(judged);
        optLoadCell.BackColor = passed ? colors::suggestedNext : colors::mustBeUpdated;
        if (trialIsNext && cmdLCTrial.Enabled) screen_.SetFocus(cmdLCTrial);
    }
    run_.LoadCellCalPassed = passed;
    run_.LoadCellMessage = passed ? "All data checks passed" : judged.message;
    txtMsg.Text = run_.LoadCellMessage;
}

void LoadCellTab::ShowLimits(const LoadCellEvaluation& judged) {
    const auto color = [](bool passed) { return passed ? colors::complete : colors::mustBeUpdated; };
    grdLoadCell.SetCell(gainRow, FinalColumn(), Format(judged.finalGain, "0.0000"));
    grdLoadCell.SetCellColor(gainRow, FinalColumn(), color(judged.isGainWithinLimits));
    grdLoadCell.SetCell(changeRow, FinalColumn(), ChangeText(judged.finalChange));
    grdLoadCell.SetCellColor(changeRow, FinalColumn(), color(judged.isChangeWithinLimit));
}

void LoadCellTab::ShowAcceptance() {
    if (!run_.LoadCellCalComplete) return;
    optLoadCell.BackColor = colors::complete;
    txtMsg.Text = "Load Cell Calibration Complete!\r\n" + txtMsg.Text.Get();
    for (Button* button : {&cmdAcceptLC, &cmdLCTrial, &cmdDelLCTrials}) {
        button->Enabled = false;
        button->ToolTip = "The load cell calibration is accepted.";
        button->BackColor = colors::buttonFace;
    }
}

void LoadCellTab::cmdAcceptLC_Click() {
    if (!MayGiveUpDrops(program_, Procedure::LoadCell, "when the load cell calibration is accepted")) return;
    Evaluate();
    WhileWaiting([this] {
        KeepAcceptedGain();
        if (run_.SensorRelCalComplete) {
            run_.CurrentProcedure = Procedure::Results;
            run_.CurrentProcStep = step::resultsLast;
        } else {
            run_.CurrentProcedure = Procedure::Sensors;
            // Reference trials begin with the prerequisites; the relative calibration does not need them.
            run_.CurrentProcStep = run_.SensorRefCalComplete ? step::sensorsRelative : step::sensorsCheck;
            program_.Header.SetProcedureName(ProcedureTitle(Procedure::Sensors));
        }
        Evaluate();
        grdLoadCell.SetCellColor(gainRow, FinalColumn(), colors::complete);
        Changed();
        PublishRun(program_);
    });
}

void LoadCellTab::KeepAcceptedGain() {
    const std::string today = TodayText(program_);
    const Path interim = program_.Folder() / PathFromText(run_.InterimFileName);
    // The file comes first: without it the acceptance would be lost.
    if (program_.Services.files.IsFile(interim)) {
        constexpr const char* section = "Device Calibration";
        WriteKey(program_, interim, section, "NewLoadCellCalibrationCenterDate", today);
        WriteKey(program_, interim, section, "NewLoadCellCalibrationCenterGain", Format(finalGain_, "0.000"));
    }
    run_.LoadCellCalComplete = true;
    if (run_.Trial.procedure == Procedure::LoadCell) LeaveTrial(run_);
    run_.NewLoadCellCalibrationCenterDate = today;
    run_.NewLoadCellCalibrationCenterGain = ReadNumber(Format(finalGain_, "0.00000000"));
}

void LoadCellTab::cmdDelLCTrials_Click() {
    int trial = 0;
    for (CheckBox& box : ChkDelLC) {
        box.Value = false;
        box.Enabled = trial++ < AcceptedLoadCellTrials(run_);
    }
    fraDelLCTrails.Visible = true;
    screen_.SetFocus(ChkDelLC[0]);
}

std::string LoadCellTab::MarkedTrialsInWords() {
    std::vector<std::string> numbers;
    for (std::size_t trial = 0; trial < maxTrials; ++trial) {
        run_.LoadCellTrialDelete[trial] = ChkDelLC[trial].Value;
        if (ChkDelLC[trial].Value) numbers.push_back(NumberText(trial + 1));
    }
    if (numbers.empty()) return {};
    std::string words = (numbers.size() == 1 ? "Trial " : "Trials ") + numbers.front();
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        words += (i + 1 < numbers.size() ? ", " : "& ") + numbers[i];
    }
    return words;
}

/// The focus returns to the button that opened the frame, so that the next Enter accepts nothing.
void LoadCellTab::CloseDeletion() {
    fraDelLCTrails.Visible = false;
    screen_.SetFocus(cmdDelLCTrials);
}

void LoadCellTab::cmdDelLCOK_Click() {
    const std::string words = MarkedTrialsInWords();
    CloseDeletion();
    if (words.empty()) return;
    const Answer answer =
        program_.ShowBox("Do you really want to delete " + words + '?',
                         box::yesNo + box::question + box::secondIsDefault, "Delete Reference Calibrations");
    if (answer != Answer::Yes) return;
    WhileWaiting([this] { DeleteMarkedTrials(); });
}

void LoadCellTab::DeleteMarkedTrials() {
    DeleteTrialsWithFiles(program_, loadCellTrialFiles, run_.LoadCellTrialDelete, [this] {
        run_.LoadCellRefTrials = NumberAfterDeletion(run_.LoadCellRefTrials + 1, run_.LoadCellTrialDelete) - 1;
        DeleteTrials(run_.LCTrial, run_.LoadCellTrialDelete);
        DeleteTrials(run_.LCTrialShape, run_.LoadCellTrialDelete);
        run_.LoadCellTrialDelete = {};
        Evaluate();
        Changed();
    });
}

}  // namespace bellmark
