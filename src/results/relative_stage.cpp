#include "results/relative_stage.h"

#include <algorithm>
#include <cmath>

#include "analysis/variance_table.h"
#include "app/analysis_warning.h"
#include "app/center_file.h"
#include "app/doors.h"
#include "app/program.h"
#include "app/variance_grid.h"
#include "app/workflow.h"
#include "controls/screen.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "relative/relative_analysis.h"
#include "results/publish_run.h"
#include "results/sensor_evaluation.h"
#include "results/sensor_grids.h"
#include "run/reference_trials.h"

namespace bellmark {

namespace {

constexpr int mostTrials = static_cast<int>(maxTrials);
constexpr const char* gainPicture = "0.00000000";

VarianceTable TableOf(const FinalRelativeAnalysis& analysis) {
    const auto meanSquare = [](double sum, int degrees) {
        return degrees > 0 ? std::optional(sum / degrees) : std::nullopt;
    };
    const auto errorSquare = meanSquare(analysis.SSError, analysis.errorDegrees);
    const auto probability = analysis.F ? std::optional(analysis.P) : std::nullopt;
    VarianceTable table;
    table.rows = {{"Trials", analysis.SSTrials, {}, {}, {}, {}},
                  {"Sensors", analysis.SSSensors, analysis.sensorDegrees,
                   meanSquare(analysis.SSSensors, analysis.sensorDegrees), analysis.F, probability},
                  {"Positions", analysis.SSPositions, {}, {}, {}, {}},
                  {"Error", analysis.SSError, analysis.errorDegrees, errorSquare, {}, {}},
                  {"Total", analysis.SSTotal, {}, {}, {}, {}}};
    table.standardError = std::sqrt(std::max(errorSquare.value_or(0), 0.0));
    return table;
}

}  // namespace

RelativeStage::RelativeStage(Screen& screen, Frame& fraRef, Program& program)
    : screen_(screen), fraRef_(fraRef), program_(program), run_(program.Run) {
    txtRelMsg.Locked = true;
    fraANOVA.Visible = false;
    fraANOVA.DefaultButton = &cmdAcceptSensors;
    fraANOVA.CancelButton = &cmdCloseANOVA;
    fraANOVA.ToolTip =
        "The final gains are made so that the sensors agree: this analysis nearly always finds that they do.";
    cmdReviewSensors.Click = [this] { Accept(); };
    cmdAcceptSensors.Click = [this] { cmdAcceptSensors_Click(); };
    cmdCloseANOVA.Click = [this] {
        ShowFinalAnalysis(false);
        screen_.SetFocus(cmdShowANOVA);
    };
    cmdShowANOVA.Click = [this] { cmdShowANOVA_Click(); };
    cmdAdditionalRelCal.Click = [this] { cmdAdditionalRelCal_Click(); };
    cmdReject.Click = [this] { program_.The<MainMenuDoor>().CalibrateSensors(); };
}

void RelativeStage::Evaluate() {
    ShowFinalAnalysis(false);
    run_.SensorRelCalGood = false;
    run_.SensorRelMessage.clear();
    std::string text = run_.SensorRelCalComplete ? "\r\nSensor Calibration Completed!\r\n" : "";
    if (run_.RelTrials == 0) {
        text = "No relative calibrations have been performed yet.";
        ShowRelativeGains(grdRelCal, run_, nullptr);
    } else if (!IsPaired(run_.RelTrials)) {
        text += "Missing calibration; a calibration must be done for each stand position.";
        ShowRelativeGains(grdRelCal, run_, nullptr);
    } else {
        const SensorEvaluation judged = EvaluateSensors(run_);
        text += judged.limits;
        ShowANOVAFinal(text);
        run_.SensorRelMessage = judged.message;
        run_.SensorRelCalGood = true;
        text += judged.message;
        ShowRelativeGains(grdRelCal, run_, &judged);
    }
    txtRelMsg.Text = text;
    ShowButtons();
}

void RelativeStage::ShowANOVAFinal(std::string& message) {
    const auto analysis = AnalyseAllTrials(run_, WarnInBox(program_));
    if (!analysis) return;
    message += std::string(analysis->verdict) + "\r\n";
    ShowVarianceTable(grdANOVA, TableOf(*analysis), {{"", "Sum of Squares", "DOF", "MSE", "F", "P"}, "Std Error"});
    lblANOVA.Caption = std::string(analysis->verdict) + ", P = " + Format(analysis->P, "0%");
}

void RelativeStage::ShowButtons() {
    const int trials = run_.RelTrials;
    const bool isOpen = run_.SensorRefCalComplete && !run_.SensorRelCalComplete;
    const std::string why = run_.SensorRelCalComplete ? "The sensor calibration is accepted."
                                                      : "Available once the reference calibration is accepted.";
    const auto allow = [&](Button& button, bool allowed, const std::string& whyNot) {
        button.Enabled = allowed;
        button.ToolTip = allowed ? std::string() : whyNot;
        button.BackColor = colors::buttonFace;
    };
    cmdAdditionalRelCal.Caption = trials == 0   ? "&Perform First Relative Trial"
                                  : trials == 2 ? "&Perform Two More Relative Trials"
                                                : "&Perform Relative Trial " + NumberText(trials + 1);
    allow(cmdAdditionalRelCal, isOpen && trials < mostTrials,
          isOpen ? "All four trials are done: delete a pair to repeat it." : why);
    const bool waits = run_.RelTrialInHand.has_value();
    allow(cmdReviewSensors, isOpen && IsPaired(trials) && !waits,
          !isOpen ? why
          : waits ? "A relative trial was read: accept or reject it first."
                  : "Relative trials come in pairs: two of them at least.");
    allow(cmdShowANOVA, IsPaired(trials), "Relative trials come in pairs: two of them at least.");
    cmdAcceptSensors.Caption = cmdReviewSensors.Enabled ? "&Accept" : "&Close";
    cmdReject.Visible = isOpen;
    if (Button* next = NextStep()) next->BackColor = colors::suggestedNext;
}

Button* RelativeStage::NextStep() {
    if (cmdReviewSensors.Enabled) return &cmdReviewSensors;
    return cmdAdditionalRelCal.Enabled ? &cmdAdditionalRelCal : nullptr;
}

void RelativeStage::cmdAdditionalRelCal_Click() {
    if (EnterUnacceptedTrial(program_)) return;
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::Sensors));
    program_.The<CenterRelativeDoor>().BeginTrial();
}

/// Shows the analysis in place of the trials.
void RelativeStage::ShowFinalAnalysis(bool shown) {
    fraANOVA.Visible = shown;
    SetVisible({&grdRelCal, &txtRelMsg, &cmdReviewSensors, &cmdAdditionalRelCal, &cmdShowANOVA}, !shown);
}

void RelativeStage::cmdShowANOVA_Click() {
    ShowFinalAnalysis(true);
    screen_.SetFocus(cmdAcceptSensors);
}

void RelativeStage::cmdAcceptSensors_Click() {
    ShowFinalAnalysis(false);
    if (cmdReviewSensors.Enabled) {
        Accept();
    } else {
        screen_.SetFocus(cmdShowANOVA);
    }
}

void RelativeStage::Accept() {
    WhileWaiting([this] {
        KeepFinalGains();
        run_.CurrentProcedure = run_.LoadCellCalComplete ? Procedure::Results : Procedure::LoadCell;
        run_.CurrentProcStep = run_.LoadCellCalComplete ? step::resultsReference : step::loadCellTrialStarts;
        program_.Header.SetProcedureName(ProcedureTitle(run_.CurrentProcedure));
        Evaluate();
        Changed();
        PublishRun(program_);
    });
}

void RelativeStage::KeepFinalGains() {
    std::string gains;
    std::vector<double> rounded;
    for (int s = 0; s < run_.NumberSensors; ++s) {
        const std::string text = Format(run_.Sensor.at(static_cast<std::size_t>(s)).FinalGain, gainPicture);
        gains += (s == 0 ? "" : ", ") + text;
        rounded.push_back(ReadNumber(text));
    }
    const Path interim = program_.Folder() / PathFromText(run_.InterimFileName);
    // The file comes first: without it the acceptance would be lost.
    if (program_.Services.files.IsFile(interim)) {
        constexpr const char* section = "Device Calibration";
        WriteKey(program_, interim, section, "NewSensorCalibrationCenterDate", TodayText(program_));
        WriteKey(program_, interim, section, "NewSensorCalibrationCenterGain", gains);
        WriteKey(program_, interim, section, "SensorRelCalComplete", "True");
    }
    for (std::size_t s = 0; s < rounded.size(); ++s) run_.Sensor[s].FinalGain = rounded[s];
    run_.SensorRelCalComplete = true;
}

}  // namespace bellmark
