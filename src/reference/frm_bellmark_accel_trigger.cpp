#include "reference/frm_bellmark_accel_trigger.h"

#include <algorithm>
#include <utility>

#include "app/center_file.h"
#include "app/change_trials.h"
#include "app/program.h"
#include "app/workflow.h"
#include "controls/enter_key.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "reference/accel_integration.h"
#include "reference/drop_plot.h"
#include "reference/hand_button.h"
#include "run/center_keys.h"

namespace bellmark {

namespace {

constexpr double handStep = 0.05;     ///< g, for a change of the level by hand
constexpr double highestLevel = 2.0;  ///< g

constexpr const char* startTip = "Click to Start DAQ Baord. Then drop FWD to get data";
constexpr const char* tooEarlyTip = "Trigger too small (click to increase Current Trigger by 0.05 g)";
constexpr const char* tooLateTip = "Trigger too large (click to decrease Current Trigger by 0.05 g)";
constexpr const char* noTriggerTip = "No Trigger (click to stop DAQ, decrease Current Trigger by 0.05)";
constexpr const char* lateTriggerTip = "Late Trigger (click to decrease Current Trigger by 0.05)";
constexpr const char* calculateTip = "Click to caclulated trigger in middle of possible range";
constexpr const char* acceptDropTip = "Accept data from FWD drop";

}  // namespace

frmBellmark_AccelTrigger::frmBellmark_AccelTrigger(Program& program)
    : Screen(program.Screens, "frmBellmark_AccelTrigger", "Determine Calibration Setup Values"),
      Header(*this, program.Header),
      program_(program),
      instrument_(program) {
    Header.PageTitle.Caption = "Determine Calibration Setup Values";
    fraMessage.Visible = false;
    fraMessage.DefaultButton = &cmdErrOK;
    txtError.Locked = true;
    cmdCancel.ToolTip = "Returns to Setup Screen";
    cmdMainMenu.ToolTip = "Returns to Main Menu";
    lblUpperTrigger.ToolTip = "Maximum trigger to provide same peak deflection and pulse length";
    lblLowerTrigger.ToolTip = "Minimum trigger to provide same peak deflection and pulse length";
    lblNewTrigger.ToolTip = "Caclulated trigger (average of upper and lower trigger)";
    for (OptionButton* option : {&optAcceleration, &optVelocity, &optDeflection})
        option->Click = [this] { PlotResponseCurve(); };
    chkZoom.Click = [this] { chkZoom_Click(); };
    lblCurrentTrigger.Click = [this] { TakeLevel(program_.Center.AccelSensitivity); };
    lblNewTrigger.Click = [this] { TakeLevel(band_->newTrigger); };
    cmdErrOK.Click = [this] { cmdErrOK_Click(); };
    cmdStart.Click = [this] { cmdStart_Click(); };
    cmdAccept.Click = [this] { cmdAccept_Click(); };
    cmdTooEarly.Click = [this] { cmdTooEarly_Click(); };
    cmdNoTrigger.Click = [this] { cmdNoTrigger_Click(); };
    cmdCancel.Click = [this] { cmdCancel_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    cmdSaveLevels.Click = [this] { cmdSaveLevels_Click(); };
    TimerDrop.Tick = [this] { TimerDrop_Tick(); };
}

bool frmBellmark_AccelTrigger::MeasuresTrigger() const {
    return program_.Run.CurrentProcedure == Procedure::TriggerLevel;
}

void frmBellmark_AccelTrigger::LoadStart() {
    BeginMeasurement();
    program_.Run.CurrentHeightIndex = 1;
    fraTrigger.Visible = true;
    SetVisible({&cmdTooEarly, &cmdNoTrigger}, true);
    cmdTooEarly.ToolTip = tooEarlyTip;
    cmdNoTrigger.ToolTip = tooLateTip;
    cmdAccept.Caption = "&Calculate";
    cmdAccept.ToolTip = calculateTip;
    lblTask.Caption = "Trigger level: lowest height";
    ShowPanel(5);
}

void frmBellmark_AccelTrigger::NumDropsStart(int drop) {
    CalibrationRun& run = program_.Run;
    dropCountMode_ = static_cast<DropCountMode>(std::clamp(drop, 1, 3));
    if (dropCountMode_ == DropCountMode::Computing) return ComputeNumberOfDrops();
    BeginMeasurement();
    fraTrigger.Visible = false;
    SetVisible({&cmdTooEarly, &cmdNoTrigger}, true);
    cmdAccept.ToolTip = acceptDropTip;
    if (dropCountMode_ == DropCountMode::HighDrop) {
        run.CurrentHeightIndex = run.NumberLoadLevels;
        cmdAccept.Caption = "&Accept";
        lblTask.Caption = "High drop: height " + NumberText(run.CurrentHeightIndex);
        ShowPanel(6);
        cmdStart.BackColor = colors::suggestedNext;
    } else {
        run.CurrentHeightIndex = 1;
        cmdAccept.Caption = "&Calculate";
        lblTask.Caption = "Low drop: height 1";
        ShowPanel(7);
    }
}

/// Start of both measurements: nothing measured, the keyboard on the panel with the instructions.
void frmBellmark_AccelTrigger::BeginMeasurement() {
    program_.Run.CurrentDropIndex = 1;
    TimerDrop.Stop();
    ClearResults();
    SetEnabled({&cmdAccept, &cmdTooEarly, &cmdNoTrigger}, false);
    SetEnabled({&cmdStart, &cmdCancel}, true);
    cmdStart.Caption = MeasuresTrigger() ? "&Start" : "Start";
    cmdStart.ToolTip = startTip;
    cmdNoTrigger.Caption = "No Trigger";
    SetState("Start, then drop", colors::buttonFace);
    Show();
}

void frmBellmark_AccelTrigger::ClearResults() {
    for (Label* label : {&lblPeakValue, &lblRiseTime, &lblCurrentTrigger}) label->Caption = "";
    lblPeakUnit.Caption = program_.Run.EnglishUnits ? "mils" : "microns";
    lblCurrentTrigger.Enabled = false;
    SetVisible({&chkZoom, &Frame1}, false);
    picDropResponse.Clear();
    ForgetProposal();
}

void frmBellmark_AccelTrigger::ForgetProposal() {
    band_.reset();
    for (Label* label : {&lblNewTrigger, &lblUpperTrigger, &lblLowerTrigger}) label->Caption = "";
    lblNewTrigger.Enabled = false;
    SetVisible({&grdLevels, &cmdSaveLevels}, false);
}

void frmBellmark_AccelTrigger::ShowPanel(int code) {
    program_.Compose(code);
    panelHelp_ = helpPage::firstMessage + code;
    lblMessageTitle.Caption = program_.Run.MessageTitle;
    txtError.Text = program_.Run.MessageText;
    fraMessage.Visible = true;
    program_.Run.ErrorPanelOpen = true;
    Suggest(&cmdErrOK);
}

void frmBellmark_AccelTrigger::cmdErrOK_Click() {
    fraMessage.Visible = false;
    program_.Run.ErrorPanelOpen = false;
    Suggest(&cmdStart);
}

/// next: the most likely button; nullptr while a drop is awaited.
void frmBellmark_AccelTrigger::Suggest(Button* next) {
    for (Button* button : {&cmdStart, &cmdAccept})
        button->BackColor = button == next ? colors::suggestedNext : colors::buttonFace;
    // An accidental Enter must not end the wait for the drop.
    SetDefaultButton(next);
    SetFocus(next ? static_cast<Control&>(*next) : picDropResponse);
}

void frmBellmark_AccelTrigger::SetState(const std::string& words, Color color) {
    lblState.Caption = words;
    SetBackColor(color);
}

void frmBellmark_AccelTrigger::Start() {
    PrepareDrop();
    program_.Run.DropAborted = false;
    const double levelBefore = program_.Center.AccelSensitivity;
    const auto verdict = instrument_.Measure(
        {[this] { SetState("Ready: drop now", colors::complete); }, [this] { SetState("Captured", colors::warning); }});
    if (verdict) {
        ShowDrop(*verdict);
        return;
    }
    SetEnabled({&cmdStart, &cmdCancel}, true);
    cmdNoTrigger.Enabled = false;
    // What "No Trigger" has said stays.
    if (program_.Center.AccelSensitivity == levelBefore) SetState("No drop was captured: start again", colors::warning);
    Suggest(&cmdStart);
}

void frmBellmark_AccelTrigger::PrepareDrop() {
    // The button's channel must not be converted during an acquisition.
    TimerDrop.Stop();
    fraMessage.Visible = false;
    program_.Run.ErrorPanelOpen = false;
    ClearResults();
    SetEnabled({&cmdStart, &cmdAccept, &cmdTooEarly}, false);
    SetVisible({&cmdTooEarly, &cmdNoTrigger}, true);
    cmdNoTrigger.Enabled = true;
    cmdNoTrigger.Caption = "No Trigger";
    cmdNoTrigger.ToolTip = noTriggerTip;
    cmdTooEarly.ToolTip = tooEarlyTip;
    cmdStart.Caption = "ReStart";
    if (MeasuresTrigger()) cmdAccept.Caption = "&Calculate";
    SetState("Wait: the initial burst", colors::buttonFace);
    Suggest(nullptr);
}

void frmBellmark_AccelTrigger::ShowDrop(const DropVerdict& verdict) {
    const DropRecord& drop = program_.Drop;
    ShowCurrentTrigger("");
    lblPeakValue.Caption =
        NumberText(program_.Run.EnglishUnits ? Round(drop.PeakMetric / micronsPerMil, 2) : Round(drop.PeakMetric, 1));
    lblRiseTime.Caption = NumberText(Round(drop.RiseTime, 1));
    chkZoom.Value = true;
    chkZoom.Caption = "&Zoomed In";
    SetVisible({&chkZoom, &Frame1}, true);
    optDeflection.Choose();
    PlotResponseCurve();
    SetState(verdict.advice.empty() ? "Captured" : verdict.advice, colors::warning);
    SetEnabled({&cmdStart, &cmdCancel}, true);
    AllowAnswers(verdict.hasPeak);
    for (const NumberedMessage& message : verdict.boxes) {
        program_.Compose(message.code, message.values);
        program_.ShowComposed(box::critical + box::helpButton);
    }
    if (program_.Run.ReviewMode) return;
    BeginHandButton(program_);
    TimerDrop.Start();
}

/// A drop without a pulse gives no result; it is repeated.
void frmBellmark_AccelTrigger::AllowAnswers(bool hasPeak) {
    const DropRecord& drop = program_.Drop;
    cmdAccept.Enabled = hasPeak;
    SetEnabled({&cmdTooEarly, &cmdNoTrigger}, MeasuresTrigger());
    if (MeasuresTrigger()) {
        cmdAccept.Caption = "&Calculate";
        cmdNoTrigger.Caption = "Late Trigger";
        cmdNoTrigger.ToolTip = lateTriggerTip;
        lblCurrentTrigger.Enabled = true;
    } else {
        cmdAccept.Caption = "&Accept";
        (dropCountMode_ == DropCountMode::HighDrop ? highDropPeak_ : lowDropPeak_) = drop.PeakMetric;
    }
    Suggest(hasPeak ? &cmdAccept : &cmdStart);
}

void frmBellmark_AccelTrigger::ShowCurrentTrigger(const char* picture) {
    const double level = program_.Center.AccelSensitivity;
    lblCurrentTrigger.Caption = *picture ? Format(level, picture) : NumberText(level);
}

void frmBellmark_AccelTrigger::PlotResponseCurve() {
    const DropCurve curve = optAcceleration.IsChosen() ? DropCurve::Acceleration
                            : optVelocity.IsChosen()   ? DropCurve::Velocity
                                                       : DropCurve::Deflection;
    Plot plot = instrument_.PlotOf(curve, chkZoom.Value);
    if (band_ && curve == DropCurve::Acceleration) AddTriggerBand(plot);
    picDropResponse.Draw(std::move(plot));
}

/// The levels are around 1 g, the curve around the baseline.
void frmBellmark_AccelTrigger::AddTriggerBand(Plot& plot) const {
    const double restsAt = 1 - program_.Drop.BaselineAccel;
    for (const double side : {1.0, -1.0}) {
        const double nearer = restsAt + side * band_->lowerBound;
        const double farther = restsAt + side * band_->upperBound;
        const PlotBand band{std::min(nearer, farther), std::max(nearer, farther), restsAt + side * band_->newTrigger};
        plot.vertical.lowest = std::min(plot.vertical.lowest, band.lowest);
        plot.vertical.highest = std::max(plot.vertical.highest, band.highest);
        plot.bands.push_back(band);
    }
}

void frmBellmark_AccelTrigger::chkZoom_Click() {
    chkZoom.Caption = chkZoom.Value ? "&Zoomed In" : "Un&zoomed";
    PlotResponseCurve();
}

void frmBellmark_AccelTrigger::cmdAccept_Click() {
    if (!MeasuresTrigger()) {
        cmdAccept.Enabled = false;
        NumDropsStart(static_cast<int>(dropCountMode_) + 1);
    } else if (band_) {
        TakeLevel(band_->newTrigger);
    } else {
        Determine_Trigger();
    }
}

void frmBellmark_AccelTrigger::Determine_Trigger() {
    DropRecord& drop = program_.Drop;
    band_ = DetermineTrigger(drop);
    // The plot shows the level proposed.
    drop.TriggerLevel = band_->newTrigger;
    RegressionIntegration(drop, PulseScan(drop));
    lblNewTrigger.Caption = NumberText(band_->newTrigger);
    lblUpperTrigger.Caption = NumberText(Round(band_->upperBound, 2));
    lblLowerTrigger.Caption = NumberText(Round(band_->lowerBound, 2));
    lblNewTrigger.Enabled = true;
    ShowLevels();
    optAcceleration.Choose();
    PlotResponseCurve();
    cmdAccept.Caption = "&Accept";
    SetVisible({&cmdNoTrigger, &cmdTooEarly}, false);
    cmdStart.Enabled = true;
    SetState("Proposed: " + NumberText(band_->newTrigger) + " g", colors::warning);
    Suggest(&cmdAccept);
}

void frmBellmark_AccelTrigger::ShowLevels() {
    const bool english = program_.Run.EnglishUnits;
    grdLevels.SetHeadings({"Level (g)", english ? "Peak (mils)" : "Peak (microns)", "Rise time (ms)", "Good"});
    for (const TriggerLevelResult& result : band_->levels) {
        const double peak = english ? Round(result.peakMicrons / micronsPerMil, 2) : Round(result.peakMicrons, 1);
        const bool computed = result.peakMicrons >= 0;
        grdLevels.AddRow({Format(result.level, "0.00"), computed ? NumberText(peak) : "",
                          computed ? Format(result.riseTime, "0.0") : "", result.good ? "yes" : "no"});
    }
    SetVisible({&grdLevels, &cmdSaveLevels}, true);
}

void frmBellmark_AccelTrigger::cmdSaveLevels_Click() {
    const auto path =
        program_.Services.dialogs.SaveFile({"Save Table", "Table|*.csv", program_.Folder(), "TriggerLevels.csv"});
    if (!path) return;
    std::string text = "Level (g),Peak (microns),Rise time (ms),Good\r\n";
    for (const TriggerLevelResult& result : band_->levels) {
        text += Format(result.level, "0.00") + ',' + NumberText(result.peakMicrons) + ',' +
                Format(result.riseTime, "0.0000") + ',' + (result.good ? "yes" : "no") + "\r\n";
    }
    ReplaceTextFile(program_.Services.files, program_.Services.startDirectory / *path, text);
}

void frmBellmark_AccelTrigger::SetLevelByHand(double level) {
    constexpr int places = 10;
    // Sums of hundredths carry rounding errors, and the level is written to a file in full.
    program_.Center.AccelSensitivity = Round(level, places);
    ShowCurrentTrigger("0.00");
    cmdAccept.Enabled = false;
    TimerDrop.Stop();
    if (cmdStart.Enabled) Suggest(&cmdStart);
}

void frmBellmark_AccelTrigger::cmdTooEarly_Click() {
    SetLevelByHand(std::min(program_.Center.AccelSensitivity + handStep, highestLevel));
    SetState("Level raised: start again", colors::warning);
}

void frmBellmark_AccelTrigger::cmdNoTrigger_Click() {
    SetLevelByHand(std::max(program_.Center.AccelSensitivity - handStep, 0.0));
    StopMeasuring();
    // The labels of the level are hidden where the drops are counted.
    SetState("Level lowered to " + Format(program_.Center.AccelSensitivity, "0.00") + " g: start again",
             colors::warning);
}

/// Ends the wait for a drop, and the polling of the hand button.
void frmBellmark_AccelTrigger::StopMeasuring() {
    CalibrationRun& run = program_.Run;
    run.DropAborted = true;
    TimerDrop.Stop();
    run.ButtonDown = false;
    if (!run.ReviewMode) program_.The<AcquisitionDoor>().AbortAcquisition();
}

/// The file is written first: what cannot be stored is not accepted.
void frmBellmark_AccelTrigger::TakeLevel(double level) {
    // Results from simulated drops must not stay as the machine's own after the review.
    if (program_.Run.ReviewMode) KeepCenterConfiguration(program_);
    WriteKey(program_, MasterCenterConfig(program_), centerSection, "AccelSensitivity", NumberText(level));
    if (!program_.Run.InterimFolderName.empty())
        WriteKey(program_, RunCenterConfig(program_), centerSection, "AccelSensitivity", NumberText(level));
    program_.Center.AccelSensitivity = level;
    levelInForce_ = level;
    GoBackToSetup();
    program_.The<SetupDoor>().TriggerLevelMeasured();
}

void frmBellmark_AccelTrigger::ComputeNumberOfDrops() {
    CalibrationRun& run = program_.Run;
    const auto drops = MinimumNumberOfDrops(highDropPeak_, lowDropPeak_, run.NumberLoadLevels);
    if (!drops) {
        program_.Compose(203);
        program_.ShowComposed();
        GoBackToSetup();
        program_.The<SetupDoor>().ReturnFromMeasurement();
        return;
    }
    // The message inserts the number of the run.
    const int before = std::exchange(run.NumberDropsPerLoadLevel, *drops);
    program_.Compose(10);
    const Answer answer = program_.ShowComposed();
    run.NumberDropsPerLoadLevel = before;
    if (answer == Answer::Cancel) {
        dropCountMode_ = DropCountMode::HighDrop;
        ReturnToProcedure(program_, run.CurrentProcedure);
        return;
    }
    const bool taken = MayChangeTrials(program_, {run.NumberLoadLevels, *drops, run.EnglishUnits});
    if (taken) run.NumberDropsPerLoadLevel = *drops;
    GoBackToSetup();
    auto& setup = program_.The<SetupDoor>();
    taken ? setup.NumberOfDropsMeasured() : setup.ReturnFromMeasurement();
}

/// The set-up continues where it was left for the measurement.
void frmBellmark_AccelTrigger::GoBackToSetup() {
    CalibrationRun& run = program_.Run;
    StopMeasuring();
    Hide();
    run.CurrentProcedure = Procedure::Setup;
    run.CurrentProcStep = run.ProgramStarted ? step::setupEnds : step::editSetup;
    program_.Header.SetProcedureName("");
}

void frmBellmark_AccelTrigger::cmdCancel_Click() {
    GoBackToSetup();
    program_.The<SetupDoor>().ReturnFromMeasurement();
}

void frmBellmark_AccelTrigger::cmdMainMenu_Click() {
    GoBackToSetup();
    program_.The<MainMenuDoor>().Open();
}

void frmBellmark_AccelTrigger::TimerDrop_Tick() {
    if (Stack().Front() != this || !HandButtonWasReleased(program_, TimerDrop)) return;
    if (fraMessage.Visible) {
        cmdErrOK_Click();
    } else if (Button* next = ButtonOfEnter(*this, Focus())) {
        next->UserClick();
    }
}

void frmBellmark_AccelTrigger::Activated() {
    levelInForce_ = program_.Center.AccelSensitivity;
    if (TimerDrop.IsRunning()) BeginHandButton(program_);
    if (!lblCurrentTrigger.Caption.Get().empty()) ShowCurrentTrigger("");
}

/// When the screen is left, a level that was only tried is dropped.
void frmBellmark_AccelTrigger::Left() {
    if (program_.Run.AcquisitionActive) StopMeasuring();
    program_.Center.AccelSensitivity = levelInForce_;
}

}  // namespace bellmark
