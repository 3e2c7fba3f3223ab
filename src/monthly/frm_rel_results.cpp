#include "monthly/frm_rel_results.h"

#include "app/analysis_warning.h"
#include "app/interim_store.h"
#include "app/monthly_run.h"
#include "app/print_if_asked.h"
#include "app/program.h"
#include "app/save_text.h"
#include "app/variance_grid.h"
#include "app/workflow.h"
#include "fwd/fwd_intake.h"
#include "monthly/monthly_report.h"
#include "monthly/rotation_plan.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "relative/relative_boxes.h"
#include "relative/relative_trial.h"

namespace bellmark {

namespace {

constexpr int headingRows = 2;
constexpr std::size_t firstTrialColumn = 3;

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\r\n") + line;
    return text;
}

const char* YesOrNo(bool isYes) {
    return isYes ? "YES" : " NO";
}

}  // namespace

frmRelResults::frmRelResults(Program& program)
    : Screen(program.Screens, "frmRelResults", "Relative Calibration Results"),
      Header(*this, program.Header),
      program_(program),
      run_(program.Run) {
    for (TextBox* box : {&txtResults, &txtResultsAnova, &txtStandardError[0], &txtStandardError[1]}) box->Locked = true;
    fraANOVA.Visible = false;
    cboReplacedSensor.Click = [this] { cboReplacedSensor_Click(); };
    chkANOVA.Click = [this] { chkANOVA_Click(); };
    cmdBack.Click = [this] { cmdBack_Click(); };
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    cmdShowPlot.Click = [this] { cmdShowPlot_Click(); };
    cmdMainMenu.Click = [this] { program_.The<MainMenuDoor>().Open(); };
}

// ---- entries

bool frmRelResults::Start() {
    if (!ReadDropData()) return false;
    run_.CurrentProcStep = IsReplacement(run_) ? step::replacementTrial : step::monthlyTrial;
    plotWasShown_ = false;
    chkANOVA.Value = false;
    chkANOVA_Click();
    Open();
    TellAboutReading();
    TellReplacedGain();
    return true;
}

void frmRelResults::Open() {
    ShowResults();
    Show();
    ShowStage();
}

void frmRelResults::OpenNext() {
    Open();
    cmdNext_Click();
}

// ---- the FWD's file

bool frmRelResults::ReadDropData() {
    MonthlyReading reading = ReadMonthlyTrial(*program_.RunDocument, run_, PathText(run_.MonthlyDataFile.filename()));
    if (reading.problem != MonthlyProblem::None) {
        TellProblem(reading.problem, reading.sensors);
        return false;
    }
    reading_ = std::move(reading);
    analysis_ = AnalyseMonthlyTrial(run_, Trials(), analysis_.critical.CochranCritical, WarnInBox(program_));
    return true;
}

void frmRelResults::TellProblem(MonthlyProblem problem, int sensors) {
    switch (problem) {
        case MonthlyProblem::None:
            return;
        case MonthlyProblem::NoSensors:
            program_.Compose(250);
            program_.ShowComposed();
            return;
        case MonthlyProblem::WrongDropCount:
            program_.Compose(251);
            program_.ShowComposed();
            return;
        case MonthlyProblem::TooManySensors:
            program_.ShowBox("The file lists " + NumberText(sensors) + " sensors. The stand holds " +
                                 NumberText(maxSensors) + " at most.",
                             box::exclamation);
            return;
        case MonthlyProblem::OtherSensorCount:
            program_.ShowBox("The file lists " + NumberText(sensors) + " sensors, the trials before had " +
                                 NumberText(run_.NumberSensors) + ".\r\nPlease choose the file of this trial.",
                             box::exclamation);
            return;
        case MonthlyProblem::NoRoom:
            program_.ShowBox("All four trials are done.", box::information);
            return;
    }
}

void frmRelResults::TellAboutReading() {
    TellAboutFile(program_);
    if (reading_.otherGains.empty()) return;
    program_.ShowBox("The file has other gains than the first trial, whose gains are used:\r\n" +
                         ListedLines(reading_.otherGains) + "Please check the data file.",
                     box::exclamation);
}

/// Message 172, for a replacement.
void frmRelResults::TellReplacedGain() {
    if (!IsReplacement(run_)) return;
    const auto text = ReplaceSensorCheck(run_, Trials(), run_.ReplacedSensor);
    if (!text) return;
    run_.MessageParameters[1] = *text;
    program_.Compose(172);
    program_.ShowComposed();
}

// ---- what is shown

/// Number of trials with the one that is shown, which is the last of them.
int frmRelResults::Trials() const {
    return run_.RelTrials + (run_.RelTrialInHand ? 1 : 0);
}

MonthlyFacts frmRelResults::Facts() const {
    return {run_, analysis_, counts_, Trials(), plotWasShown_, run_.ReplacedSensor};
}

void frmRelResults::ShowResults() {
    counts_ = CountMonthlySensors(run_, Trials());
    const std::string what =
        IsReplacement(run_) ? "Replace a Sensor - Trial " : "Monthly Relative Calibration - Trial ";
    Header.PageTitle.Caption = what + NumberText(Trials());
    lblTrial.Caption = "Trial " + NumberText(Trials());
    lblFile.Caption = PathText(run_.MonthlyDataFile.filename());
    ShowReplacedSensor();
    ShowMeans();
    ShowStandardError();
    ShowTexts();
}

void frmRelResults::ShowReplacedSensor() {
    fraReplaced.Visible = IsReplacement(run_);
    std::vector<std::string> sensors;
    for (std::size_t s = 0; s < counts_.sensors.size(); ++s)
        sensors.push_back(RotatedSensorLabel(run_, s) + "  " + run_.Sensor.at(s).SerialNumber);
    cboReplacedSensor.Items = sensors;
    cboReplacedSensor.ListIndex = run_.ReplacedSensor ? static_cast<int>(*run_.ReplacedSensor) : -1;
    cboReplacedSensor.BackColor = run_.ReplacedSensor ? colors::window : colors::mustBeUpdated;
    // The trials accepted so far were judged by this sensor.
    cboReplacedSensor.Enabled = run_.RelTrialInHand && run_.RelTrials == 0;
}

void frmRelResults::ShowMeans() {
    std::vector<std::string> headings{"  Sensor   ", "  Serial   ", "    Existing   "};
    std::vector<std::string> second{"Number", "Number", "Gain Factor"};
    for (int trial = 1; trial <= Trials(); ++trial) {
        for (const char* what : {"Means Ratio", "Relative Gain"}) {
            headings.push_back("          Trial " + NumberText(trial));
            second.emplace_back(what);
        }
    }
    headings.insert(headings.end(), {"   Calculated   ", " Out of Limit ", " Out of Limit"});
    second.insert(second.end(), {"Relative Gain", "Tolerance", "2% Range"});
    grdMeans.SetHeadings(headings);
    grdMeans.AddRow(second);
    for (std::size_t s = 0; s < counts_.sensors.size(); ++s) {
        grdMeans.AddRow(MeansRow(s));
        ColorMeans(s);
    }
}

std::vector<std::string> frmRelResults::MeansRow(std::size_t sensor) const {
    const SensorCalRecord& record = run_.Sensor.at(sensor);
    const MonthlySensor& found = counts_.sensors[sensor];
    std::vector<std::string> row{NumberText(ShownSensorNumber(run_, static_cast<int>(sensor))), record.SerialNumber,
                                 Format(record.InitialGain, "0.000")};
    for (std::size_t trial = 0; trial < static_cast<std::size_t>(Trials()); ++trial) {
        row.push_back(Format(record.RelTrial.at(trial).AdjFactor, "0.0000"));
        row.push_back(Format(record.RelTrial.at(trial).Gain, "0.000"));
    }
    row.push_back(Format(found.meanGain, "0.000"));
    row.emplace_back(YesOrNo(found.isOutOfTolerance));
    row.emplace_back(YesOrNo(found.isOutOf2Percent));
    return row;
}

void frmRelResults::ColorMeans(std::size_t sensor) {
    const MonthlySensor& found = counts_.sensors[sensor];
    const int row = headingRows + static_cast<int>(sensor);
    const int last = grdMeans.Columns() - 1;
    const auto mark = [&](int column, const char* why) {
        grdMeans.SetCellColor(row, column, colors::mustBeUpdated);
        grdMeans.SetCellToolTip(row, column, why);
    };
    if (found.isOutOfTolerance) mark(last - 1, "The means ratio is off 1 by more than 0.003.");
    if (found.isOutOf2Percent) mark(last, "The relative gain is off 1 by more than 0.02.");
    constexpr int gainOfSecondTrial = firstTrialColumn + 3;
    if (found.trialsDiffer) mark(gainOfSecondTrial, "The gains of the two trials differ by 0.003 or more.");
}

void frmRelResults::ShowStandardError() {
    const StandardErrorInUnits& error = analysis_.standardError;
    const Color color = error.isTooLarge ? colors::mustBeUpdated : colors::complete;
    ShowStandardErrorBoxes(txtStandardError, UnitLabel, error, run_.EnglishUnits,
                           analysis_.CochranExceeded ? colors::warning : color);
    ShowVarianceTable(
        grdANOVA, analysis_.table,
        {{"              ", " Sum of Squares ", " Degrees of Freedom ", "   MSE    ", "     F     ", "      P      "},
         "Std. Error",
         color});
}

void frmRelResults::ShowTexts() {
    const MonthlyFacts facts = Facts();
    txtResults.Text = Lines(IsReplacement(run_) ? ReplaceAdvice(facts) : MonthlyAdvice(facts));
    txtResultsAnova.Text = Lines(AnovaText(facts));
    lblCritical.Caption = Lines(ExactCriticalText(run_, analysis_));
}

// ---- what comes next

/// A trial is accepted only after a look at all of its drops.
bool frmRelResults::MayAccept() const {
    const bool wasLookedAt =
        run_.CurrentProcStep == step::monthlyAnalysis || run_.CurrentProcStep == step::replacementAnalysis;
    return run_.RelTrialInHand && wasLookedAt && (!IsReplacement(run_) || run_.ReplacedSensor);
}

void frmRelResults::ShowStage() {
    const bool isInHand = run_.RelTrialInHand.has_value();
    const bool lacksSensor = isInHand && IsReplacement(run_) && !run_.ReplacedSensor;
    cmdNext.Caption = isInHand ? "&Accept" : "&Next";
    cmdNext.Enabled = !isInHand || MayAccept();
    cmdNext.ToolTip = cmdNext.Enabled ? ""
                      : lacksSensor   ? "The replaced sensor is not chosen."
                                      : "Look at the plot first, and go on from there with NEXT.";
    SetEnabled({&cmdBack, &cmdReject}, isInHand);
    Button* next = cmdNext.Enabled ? &cmdNext : lacksSensor ? nullptr : &cmdShowPlot;
    const auto mark = [next](Button& button) {
        button.BackColor = &button == next ? colors::suggestedNext : colors::buttonFace;
    };
    mark(cmdNext);
    mark(cmdShowPlot);
    lblNextStep.Caption = Prompt();
    SetDefaultButton(next);
    if (next) return SetFocus(*next);
    SetFocus(cboReplacedSensor);
}

std::string frmRelResults::Prompt() const {
    if (run_.RelTrialInHand) {
        if (IsReplacement(run_) && !run_.ReplacedSensor) return "Choose the sensor that was replaced.";
        if (analysis_.standardError.isTooLarge)
            return "The standard error is above 3 microns: SHOW PLOT tells why; REJECT the trial.";
        return MayAccept() ? "Read the advice, then ACCEPT the trial or reject it." : "Look at all drops: SHOW PLOT.";
    }
    switch (run_.CurrentProcStep) {
        case step::monthlyNext:
            return "Both trials are accepted. Read the advice, then write the final gains: NEXT.";
        case step::replacementNext:
            return "The trials are accepted. Read the advice, then write the final gain: NEXT.";
        default:
            return "The calibration is finished: NEXT goes to the main menu.";
    }
}

void frmRelResults::cboReplacedSensor_Click() {
    run_.ReplacedSensor = static_cast<std::size_t>(cboReplacedSensor.ListIndex.Get());
    ShowResults();
    ShowStage();
    TellReplacedGain();
}

void frmRelResults::chkANOVA_Click() {
    const bool shows = chkANOVA.Value;
    fraANOVA.Visible = shows;
    grdMeans.Visible = !shows;
    chkANOVA.Caption = shows ? "Close AN&OVA" : "Show AN&OVA";
}

void frmRelResults::cmdBack_Click() {
    ReturnToMonthlyTrial(program_);
}

void frmRelResults::cmdShowPlot_Click() {
    plotWasShown_ = true;
    program_.The<CenterRelPlotDoor>().DrawRelativePlot();
}

void frmRelResults::cmdReject_Click() {
    const Answer repeat =
        AskToRepeatTrial(program_, IsReplacement(run_) ? "replace sensor" : "monthly relative calibration");
    if (repeat == Answer::Cancel) return;
    BeginRelativeTrial(run_);
    ReturnToMonthlyTrial(program_);
    if (repeat == Answer::No) program_.The<MainMenuDoor>().Open();
}

void frmRelResults::cmdNext_Click() {
    switch (run_.CurrentProcStep) {
        case step::monthlyAnalysis:
        case step::replacementAnalysis:
            return AcceptTrial();
        case step::monthlyNext:
            return FinishMonthly();
        case step::replacementNext:
            return FinishReplacement();
        default:
            return ReturnToProcedure(program_, run_.CurrentProcedure);
    }
}

void frmRelResults::AcceptTrial() {
    if (!AcceptsDoubts(program_, DoubtsAboutMonthlyTrial(run_))) return;
    // The report first: when it cannot be written, the trial still waits for its answer.
    const Path path = MonthlyReportPath(run_.MonthlyDataFile, run_.CurrentProcedure, Trials(), program_.Now());
    if (!WriteReport(path, OutputToFile(Facts(), reading_, run_.MonthlyDataFile))) return;
    CountRelativeTrial(run_);
    TakeDecision();
}

bool frmRelResults::WriteReport(const Path& path, const std::string& text) {
    try {
        SaveText(program_, path, text);
    } catch (const std::exception& error) {
        program_.Log(error.what());
        program_.ShowBox("The report cannot be written:\r\n" + PathText(path) +
                             "\r\nNothing is lost. Make the folder writable and try again, or copy the FWD's file to "
                             "another folder and read it there.",
                         box::exclamation);
        return false;
    }
    PrintIfAsked(program_, path);
    return true;
}

void frmRelResults::TakeDecision() {
    const MonthlyDecision decision = RelativeCalibrationStatus(run_, run_.ReplacedSensor);
    if (decision.step) run_.CurrentProcStep = *decision.step;
    if (decision.asksForTwoNewTrials) {
        // The advice on both trials is behind the box.
        run_.CurrentProcStep = step::monthlyNext;
        Open();
        program_.Compose(252);
        if (program_.ShowComposed() == Answer::OK) {
            run_.RelTrials = 0;
            run_.CurrentProcStep = step::monthlyTrial;
        }
    }
    const bool needsTrial =
        run_.CurrentProcStep == step::monthlyTrial || run_.CurrentProcStep == step::replacementTrial;
    if (needsTrial) return ReturnToProcedure(program_, run_.CurrentProcedure);
    Open();
}

void frmRelResults::FinishMonthly() {
    const Path path = MonthlyFinalPath(run_.MonthlyDataFile, run_.CurrentProcedure, program_.Now());
    if (!WriteReport(path, OutputFinalField(Facts(), reading_, run_.MonthlyDataFile))) return;
    program_.Compose(counts_.OutOfTolerance == 0 ? 170 : 171);
    program_.ShowComposed();
    run_.CurrentProcStep = step::monthlyFinished;
    SaveInterimCalibration(program_);
    ReturnToProcedure(program_, run_.CurrentProcedure);
}

void frmRelResults::FinishReplacement() {
    const Path path = MonthlyFinalPath(run_.MonthlyDataFile, run_.CurrentProcedure, program_.Now());
    if (!WriteReport(path, OutputFinalReplace(Facts(), reading_, run_.MonthlyDataFile))) return;
    run_.MessageParameters[1] = FinalReplacementText(run_, *run_.ReplacedSensor);
    program_.Compose(173);
    program_.ShowComposed();
    run_.CurrentProcStep = step::replacementFinished;
    ReturnToProcedure(program_, run_.CurrentProcedure);
}

}  // namespace bellmark
