#include "reference/frm_prerequisites.h"

#include <cmath>

#include "analysis/limits.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr std::size_t mostItems = 9;
constexpr std::size_t setupItems = 3;          ///< from the top of either list
constexpr std::size_t unbalancedZeroItem = 4;  ///< of the load cell's list; the readings end before its last item
constexpr double zeroLimitVolts = 0.01;
constexpr const char* dateItem = "Verify that the computer's Date and Time are correct.";

/// The step of a procedure after its list is passed.
int StepAfter(Procedure procedure) {
    constexpr int stepsPerProcedure = 10;
    constexpr int afterCheck = 2;
    return static_cast<int>(procedure) * stepsPerProcedure + afterCheck;
}

}  // namespace

frmPrerequisites::frmPrerequisites(Program& program)
    : Screen(program.Screens, "frmPrerequisites", "Prerequisites"), Header(*this, program.Header), program_(program) {
    for (std::size_t i = 0; i < mostItems; ++i) {
        chkPrereq.push_back(std::make_unique<CheckBox>(*this, "chkPrereq(" + NumberText(i) + ')'));
        // Ticking the current item does the same as OK.
        chkPrereq.back()->Click = [this] { cmdOK_Click(); };
    }
    Header.PageTitle.Caption = "Prerequisites";
    cmdChangeTimeDate.Click = [this] { cmdChangeTimeDate_Click(); };
    cmdOK.Click = [this] { cmdOK_Click(); };
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    tmrDateTime.Tick = [this] { ShowClock(); };
}

void frmPrerequisites::ResetPreReq() {
    CalibrationRun& run = program_.Run;
    run.PrereqSetupDone = false;
    run.PrereqZeroDone = false;
    run.PrereqShuntDone = false;
    items_.clear();
    done_ = 0;
    lblReading.Caption = "";
}

bool frmPrerequisites::PrerequisitesMet(Procedure procedure) {
    // The signal conditioner is set up anew when changing between load cell and accelerometer.
    const bool otherInstrument = (procedure == Procedure::LoadCell) != (procedure_ == Procedure::LoadCell);
    if (otherInstrument) ResetPreReq();
    procedure_ = procedure;
    if (IsComplete()) return true;
    if (items_.empty()) items_ = procedure == Procedure::LoadCell ? LoadCellItems() : AccelerometerItems();
    ShowItems();
    Show();
    return false;
}

std::string frmPrerequisites::ShuntPair() const {
    return program_.Center.UseBVoltages ? "B" : "A";
}

std::vector<frmPrerequisites::Item> frmPrerequisites::LoadCellItems() const {
    const std::string plus = '+' + ShuntPair();
    const std::string minus = '-' + ShuntPair();
    const auto hold = [](const std::string& position) {
        return "Push and hold the CAL switch in the " + position + " position, then press OK";
    };
    return {
        ByHand(dateItem),
        ByHand("Verify the Signal Conditioner and the Load Cell have been on and warmed up for " + WarmUpTime()),
        ByHand("Set up Signal Conditioner with Load Cell"),
        ByHand("Be sure the FWD load plate is raised off the Reference Load Cell."),
        {Check::UnbalancedZero, "Unbalanced Zero Reading", "Press OK to read the unbalanced zero."},
        {Check::TrimmedZero, "Zero Reading",
         "Briefly depress the Auto Balance switch to the RESET position, then release it to the ON position, and "
         "adjust "
         "the Trim knob to 0.0 volts."},
        {Check::PlusVoltage, plus + " Reading", hold(plus)},
        {Check::MinusVoltage, minus + " Reading", hold(minus)},
        ByHand("Carefully line up the Reference load cell, lower FWD plate, perform 3 seating drops"),
    };
}

std::vector<frmPrerequisites::Item> frmPrerequisites::AccelerometerItems() const {
    return {
        ByHand(dateItem),
        ByHand("Verify the Signal Conditioner and Accelerometer have been on and warmed up for " + WarmUpTime()),
        ByHand("Set up Signal Conditioner with Accelerometer"),
        ByHand("Place sensors in the stand as shown, lower FWD plate, perform 3 seating drops"),
    };
}

std::string frmPrerequisites::WarmUpTime() const {
    return program_.Run.PrereqPassed ? "10 minutes" : "60 minutes";
}

void frmPrerequisites::ShowItems() {
    for (std::size_t i = 0; i < mostItems; ++i) {
        CheckBox& box = *chkPrereq[i];
        box.Visible = i < items_.size();
        box.Enabled = i == done_;
        box.Value = i < done_;
        box.BackColor = i < done_ ? colors::passed : colors::buttonFace;
        if (i < items_.size()) box.Caption = items_[i].caption + (i < done_ ? items_[i].reading : "");
    }
    const bool complete = IsComplete();
    fraStep.Visible = !complete;
    cmdOK.Enabled = !complete;
    if (!complete) {
        fraStep.Caption = items_[done_].caption;
        lblPrompt.Caption = items_[done_].prompt;
    }
    Button& next = complete ? cmdNext : cmdOK;
    SetDefaultButton(&next);
    SetFocus(next);
    ShowClock();
}

void frmPrerequisites::Activated() {
    ShowClock();
    tmrDateTime.Start();
}

void frmPrerequisites::ShowClock() {
    lblDateTime.Caption = Format(program_.Now(), "mm-dd-yyyy  hh:nn:ss");
}

void frmPrerequisites::cmdChangeTimeDate_Click() {
    try {
        program_.Services.launcher.Start("rundll32.exe", "shell32.dll,Control_RunDLL timedate.cpl");
    } catch (const FileError& error) {
        program_.Log(error.what());
        program_.ShowBox("Please change date and time in the settings of this computer.", box::information);
    }
}

void frmPrerequisites::cmdOK_Click() {
    if (IsComplete()) return;
    if (Passes(items_[done_].check)) FinishItem();
    ShowItems();
}

void frmPrerequisites::FinishItem() {
    CalibrationRun& run = program_.Run;
    const Check finished = items_[done_].check;
    if (finished != Check::ByHand) items_[done_].reading = "  " + lblReading.Caption.Get();
    ++done_;
    run.PrereqSetupDone = done_ >= setupItems;
    if (finished == Check::TrimmedZero) run.PrereqZeroDone = true;
    if (finished == Check::MinusVoltage) run.PrereqShuntDone = true;
    // Not at its last reading, when the switch is still held.
    if (IsComplete() && procedure_ == Procedure::LoadCell) WarnOfShuntSwitch();
}

void frmPrerequisites::ReadSignalConditioner(double simulatedVolts) {
    CalibrationRun& run = program_.Run;
    // The load cell is also read at the accelerometer's channel: the conditioner has one output.
    run.LastReading = run.ReviewMode
                          ? simulatedVolts
                          : static_cast<double>(program_.The<AcquisitionDoor>().OneConversion(run.AccelChannel));
    lblReading.Caption = Format(run.LastReading, "0.000") + " v.";
}

bool frmPrerequisites::Passes(Check check) {
    switch (check) {
        case Check::ByHand:
            return true;
        case Check::UnbalancedZero:
            return UnbalancedZeroPasses();
        case Check::TrimmedZero:
            return TrimmedZeroPasses();
        case Check::PlusVoltage:
            return PlusVoltagePasses();
        case Check::MinusVoltage:
            return MinusVoltagePasses();
    }
    return false;
}

bool frmPrerequisites::UnbalancedZeroPasses() {
    const double stored = program_.Center.ReferenceLoadCellUnbalancedZero;
    ReadSignalConditioner(stored);
    const double reading = program_.Run.LastReading;
    program_.Run.MeasuredUnbalancedZero = reading;
    const double difference = std::abs(stored - reading);
    // Both limits must be reached, though the message says "or".
    const bool farInShare = !ExceedsLimit(0.05, difference / std::abs(stored));
    const bool farInVolts = !ExceedsLimit(0.1, difference);
    if (!farInShare || !farInVolts) return true;
    program_.Compose(210, {reading, stored});
    program_.ShowComposed();
    return false;
}

bool frmPrerequisites::TrimmedZeroPasses() {
    ReadSignalConditioner(0);
    if (!ExceedsLimit(std::abs(program_.Run.LastReading), zeroLimitVolts)) return true;
    program_.Compose(201);
    program_.ShowComposed();
    return false;
}

bool frmPrerequisites::PlusVoltagePasses() {
    ReadSignalConditioner(program_.Center.ReferenceLoadCellPlusVoltage);
    program_.Run.MeasuredPlus = program_.Run.LastReading;
    if (ExceedsLimit(program_.Run.LastReading, 0)) return true;
    program_.Compose(202);
    program_.ShowComposed();
    return false;
}

bool frmPrerequisites::MinusVoltagePasses() {
    ReadSignalConditioner(program_.Center.ReferenceLoadCellMinusVoltage);
    program_.Run.MeasuredMinus = program_.Run.LastReading;
    if (ExceedsLimit(0, program_.Run.LastReading)) return ShuntDifferencePasses();
    program_.Compose(202);
    program_.ShowComposed();
    return false;
}

bool frmPrerequisites::ShuntDifferencePasses() {
    CenterConfig& center = program_.Center;
    const double reference = center.ReferenceLoadCellPlusVoltage - center.ReferenceLoadCellMinusVoltage;
    const double measured = program_.Run.MeasuredPlus.value_or(0) - program_.Run.MeasuredMinus.value_or(0);
    const double error = std::abs(measured - reference);
    if (!ExceedsLimit(error, 0.01) || !ExceedsLimit(error, 0.005 * reference)) {
        if (!program_.Run.ReviewMode && reference != 0) center.ShuntCalibrationMultiplier = measured / reference;
        return true;
    }
    program_.Compose(104, {ShuntPair(), measured, reference, center.ReferenceLoadCellGain});
    if (program_.ShowComposed() == Answer::Yes) {
        done_ = unbalancedZeroItem;
        program_.Run.PrereqZeroDone = false;
    } else {
        Leave();
    }
    return false;
}

void frmPrerequisites::WarnOfShuntSwitch() {
    CalibrationRun& run = program_.Run;
    ReadSignalConditioner(program_.Center.ReferenceLoadCellUnbalancedZero);
    const bool isFar = !ExceedsLimit(zeroLimitVolts, std::abs(run.LastReading));
    if (!isFar || run.LoadCellRefTrials != 0 || run.ShuntWarningShown) return;
    program_.Compose(211, {run.LastReading, ShuntPair()});
    program_.ShowComposed();
    run.ShuntWarningShown = true;
}

void frmPrerequisites::cmdNext_Click() {
    if (!IsComplete()) {
        program_.ShowBox("All prerequisites must be complete before continuing with the current procedure.",
                         box::exclamation);
        return;
    }
    program_.Run.PrereqPassed = true;
    program_.Run.CurrentProcStep = StepAfter(procedure_);
    tmrDateTime.Stop();
    Hide();
    GoOn();
}

void frmPrerequisites::GoOn() {
    // A load cell trial was entered before the list appeared. A sensor trial begins after it.
    if (procedure_ == Procedure::LoadCell) {
        program_.The<CollectionDoor>().Start();
    } else {
        ReturnToProcedure(program_, procedure_);
    }
}

void frmPrerequisites::Leave() {
    tmrDateTime.Stop();
    Hide();
    program_.The<MainMenuDoor>().Open();
}

void frmPrerequisites::cmdMainMenu_Click() {
    Leave();
}

}  // namespace bellmark
