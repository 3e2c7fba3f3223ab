#include "reference/frm_flip_calibration.h"

#include "app/board_error.h"
#include "app/center_file.h"
#include "app/daily_calibration.h"
#include "app/interim_store.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/accel_adjustment.h"
#include "run/center_keys.h"

namespace bellmark {

namespace {

constexpr const char* uprightPrompt = "Hold accelerometer upright and still.";
constexpr const char* upsideDownPrompt = "Flip Accelerometer Upside Down";
constexpr const char* rightSideUpPrompt = "Flip Accelerometer Right Side Up";
constexpr const char* readyPrompt = "Get ready to flip accelerometer.";
constexpr const char* recordingPrompt = "Hold accelerometer steady.\r\nRecording data.";
constexpr const char* logHeading = "  Time      Avg.   Std.Dev.";

constexpr int stepsAtStart = 3;
constexpr int seconds = 10;
/// Less than the nine seconds allowed between the first two readings.
constexpr int secondsToTurnOver = 8;
constexpr int warningFrom = 5;  ///< seconds before the end of a position
constexpr int recordingFrom = 2;
constexpr int turningSeconds = 3;  ///< time that the simulated accelerometer takes to turn

constexpr Color goodColor{128, 255, 128};

Color ColorOf(FlipBand band) {
    switch (band) {
        case FlipBand::Good:
            return goodColor;
        case FlipBand::Caution:
            return colors::warning;
        case FlipBand::Out:
            break;
    }
    return colors::mustBeUpdated;
}

FlipPosition PositionAfter(int step) {
    if (step <= 3) return FlipPosition::Plus1G;
    return step == 4 ? FlipPosition::Minus1G : FlipPosition::FlipPlus1G;
}

}  // namespace

frmFlipCalibration::frmFlipCalibration(Program& program)
    : Screen(program.Screens, "frmFlipCalibration", "Daily Calibration of Reference Accelerometer"),
      Header(*this, program.Header),
      program_(program) {
    Header.PageTitle.Caption = "Daily Calibration of Reference Accelerometer";
    for (TextBox* box :
         {&txtSerial, &txtExistSlope, &txtExistOffset, &txtSlope, &txtOffset, &txtTemperature, &txtPrompt, &txtLog}) {
        box->Locked = true;
    }
    chkSound.Value = true;
    cmdStart.Click = [this] { cmdStart_Click(); };
    cmdAbort.Click = [this] { cmdAbort_Click(); };
    cmdAccept.Click = [this] { cmdAccept_Click(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    cmdRepeat.Click = [this] { cmdRepeat_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    tmrFlip.Tick = [this] { tmrFlip_Tick(); };
}

void frmFlipCalibration::Start() {
    if (tmrFlip.IsRunning()) StopTest("Flip calibration canceled by operator.");
    const CenterConfig& center = program_.Center;
    comparison_ = {center.AccelNewSlopeFactor,
                   (center.AccelDailyCalibrationPlus1GVoltage + center.AccelDailyCalibrationMinus1GVoltage) / 2};
    ShowStored();
    Show();
    ShowButtons(&cmdStart);
}

void frmFlipCalibration::ShowStored() {
    const CenterConfig& center = program_.Center;
    tmrFlip.Stop();
    inHand_ = false;
    txtSerial.Text = center.AccelerometerSerialNumber;
    txtExistSlope.Text = Format(comparison_.slope, "#0.0000");
    txtExistOffset.Text = Format(comparison_.offset, "0.0000");
    txtSlope.Text = "";
    txtOffset.Text = "";
    txtTemperature.Text = Format(center.AccelDailyCalibrationTemp, "#0.0") +
                          (center.AccelDailyCalibrationTemperatureUnit == "Celsius" ? " \u00B0C" : " \u00B0F");
    txtPrompt.Text = "Hit ENTER key or Start button to begin calibration.";
    txtLog.Text = "";
    lblCountdown.Caption = "";
    fraResult.Visible = false;
}

/// suggested: the most likely next button; nullptr while the test is running.
void frmFlipCalibration::ShowButtons(Button* suggested) {
    const bool running = suggested == nullptr;
    program_.The<MainFrameDoor>().SetMeasuring(running);
    cmdAbort.Enabled = running;
    cmdStart.Enabled = !running && !inHand_;
    for (Button* button : {&cmdAccept, &cmdReject, &cmdRepeat}) button->Enabled = inHand_;
    for (Button* button : {&cmdStart, &cmdAccept, &cmdRepeat}) {
        button->BackColor = button == suggested ? colors::suggestedNext : colors::buttonFace;
    }
    Button& next = running ? cmdAbort : *suggested;
    // An accidental Enter must not end the test.
    SetDefaultButton(running ? nullptr : &next);
    SetFocus(running ? static_cast<Control&>(txtPrompt) : next);
}

void frmFlipCalibration::cmdStart_Click() {
    CalibrationRun& run = program_.Run;
    run.CurrentProcStep = step::flipRunning;
    // The board delivers its block at once, without waiting for a pulse.
    run.BurstCapture = true;
    calibrationStep_ = 0;
    recording_ = false;
    measured_ = {};
    ShowStored();
    txtLog.Text = logHeading;
    ShowButtons(nullptr);
    for (int step = 0; step < stepsAtStart; ++step) TakeNextStep();
}

/// A board that cannot be read ends the test with its reason.
void frmFlipCalibration::TakeNextStep() {
    try {
        NextStep();
    } catch (const BoardError& error) {
        program_.Log(error.what());
        StopTest(error.what());
    }
}

void frmFlipCalibration::NextStep() {
    switch (calibrationStep_++) {
        case 0:
            fraResult.Visible = false;
            lblCountdown.Caption = "";
            break;
        case 1:
            txtPrompt.Text = uprightPrompt;
            break;
        case 2:
            measured_.startTemperature = ReadTemperature(program_);
            BeginPosition(uprightPrompt, seconds);
            tmrFlip.Start();
            break;
        case 3:
            if (!Judge(FlipPosition::Plus1G)) return;
            BeginPosition(upsideDownPrompt, secondsToTurnOver);
            break;
        case 4:
            if (!Judge(FlipPosition::Minus1G)) return;
            BeginPosition(rightSideUpPrompt, seconds);
            break;
        case 5:
            if (!Judge(FlipPosition::FlipPlus1G)) return;
            program_.The<AcquisitionDoor>().AbortAcquisition();
            ComputeResults();
            break;
        default:
            break;
    }
}

void frmFlipCalibration::BeginPosition(const char* prompt, int countdown) {
    constexpr int warningHertz = 880;
    constexpr int warningMilliseconds = 200;
    countdown_ = countdown;
    txtPrompt.Text = prompt;
    lblCountdown.Caption = NumberText(countdown_);
    if (calibrationStep_ > 3) Beep(warningHertz, warningMilliseconds);
}

void frmFlipCalibration::tmrFlip_Tick() {
    constexpr int warningHertz = 880;
    constexpr int warningMilliseconds = 200;
    constexpr int recordingHertz = 330;
    constexpr int recordingMilliseconds = 300;
    // A late board is awaited at the end of the position.
    if (countdown_ > 0) --countdown_;
    lblCountdown.Caption = NumberText(countdown_);
    PlayBoard();
    auto& acquisition = program_.The<AcquisitionDoor>();
    const bool isTurnedAfterwards = calibrationStep_ < 5;
    if (countdown_ <= warningFrom && countdown_ > recordingFrom && isTurnedAfterwards) {
        txtPrompt.Text = readyPrompt;
        Beep(warningHertz, warningMilliseconds);
    } else if (countdown_ == recordingFrom) {
        txtPrompt.Text = recordingPrompt;
        Beep(recordingHertz, recordingMilliseconds);
        acquisition.CaptureBlock(program_.Run.AccelChannel);
        recording_ = true;
    } else if (recording_ && !acquisition.CaptureProblem().empty()) {
        StopTest(acquisition.CaptureProblem());
    } else if (countdown_ == 0 && recording_ && acquisition.BlockCaptured()) {
        recording_ = false;
        TakeNextStep();
    }
}

/// The simulated board delivers the stored voltage of the position with a little noise, and arbitrary values while the
/// accelerometer is turned.
void frmFlipCalibration::PlayBoard() {
    if (!program_.Run.ReviewMode) return;
    const CenterConfig& center = program_.Center;
    const FlipPosition position = PositionAfter(calibrationStep_);
    // A center whose accelerometer was never turned back has no third voltage.
    const bool knowsThird = center.AccelDailyCalibrationPlus1GFlipVoltage != 0;
    const double volts = position == FlipPosition::Minus1G ? center.AccelDailyCalibrationMinus1GVoltage
                         : position == FlipPosition::FlipPlus1G && knowsThird
                             ? center.AccelDailyCalibrationPlus1GFlipVoltage
                             : center.AccelDailyCalibrationPlus1GVoltage;
    const int length = position == FlipPosition::Minus1G ? secondsToTurnOver : seconds;
    const bool turning = position != FlipPosition::Plus1G && countdown_ > length - turningSeconds;
    const bool halfWay = countdown_ % 2 == 0;
    auto& board = program_.The<SimulatorDoor>();
    if (turning) {
        board.SetRandom(halfWay ? 0.0F : static_cast<float>(volts / 2), halfWay ? 0.5F : 0.4F);
    } else {
        board.SetRandom(static_cast<float>(volts), halfWay ? 0.0014F : 0.002F);
    }
}

void frmFlipCalibration::GetAccelData(FlipReading& reading) {
    std::vector<float> volts(sampleCapacity);
    int count = 0;
    program_.The<AcquisitionDoor>().GetResultsVolts(volts, count);
    reading = ReadingOf(std::span(volts).first(static_cast<std::size_t>(count)), program_.Now());
    txtLog.Text = txtLog.Text.Get() + "\r\n" + Format(reading.time, "hh:mm:ss") + ",  " +
                  Format(reading.average, "#0.0000") + ",  " + Format(reading.stdDev, "#0.0000");
}

/// Takes the reading of a position. False when it ends the test.
bool frmFlipCalibration::Judge(FlipPosition position) {
    FlipReading& reading = measured_.Of(position);
    GetAccelData(reading);
    const std::string fault = ReadingFault(position, reading);
    if (fault.empty()) return true;
    StopTest(fault);
    return false;
}

void frmFlipCalibration::StopTest(const std::string& reason) {
    tmrFlip.Stop();
    recording_ = false;
    program_.Run.BurstCapture = false;
    program_.The<AcquisitionDoor>().AbortAcquisition();
    lblCountdown.Caption = "";
    txtPrompt.Text = reason;
    inHand_ = false;
    ShowButtons(&cmdStart);
}

void frmFlipCalibration::ComputeResults() {
    tmrFlip.Stop();
    CalibrationRun& run = program_.Run;
    run.BurstCapture = false;
    measured_.endTemperature = ReadTemperature(program_);
    const FlipChecks checks = CheckFlip(measured_, comparison_);
    txtSlope.Text = Format(NewSlope(measured_), "#0.0000");
    txtOffset.Text = Format(NewOffset(measured_), "0.0000");
    txtTemperature.Text = Format(measured_.endTemperature, "#0.0") + " \u00B0C";
    ShowResult(lblSlopeChange, checks.slope);
    ShowResult(lblOffsetChange, checks.offset);
    ShowResult(lblTemperatureCheck, checks.temperature);
    ShowResult(lblElapsed, checks.elapsed);
    ShowResult(lblDrift, checks.drift);
    const bool passed = checks.AllGood();
    lblOK.Caption =
        passed ? "All Data Checks Passed" : "Check Results! One or more acceptance criteria needs to be reviewed.";
    lblOK.BackColor = passed ? goodColor : colors::mustBeUpdated;
    fraResult.Visible = true;
    lblCountdown.Caption = "";
    txtPrompt.Text = passed ? "Accept the calibration." : "Look at the results, then accept, repeat or reject.";
    run.CurrentProcStep = step::flipMeasured;
    inHand_ = true;
    ShowButtons(passed ? &cmdAccept : &cmdRepeat);
}

void frmFlipCalibration::ShowResult(Label& row, const FlipCheck& check) {
    row.Caption = check.text;
    row.BackColor = ColorOf(check.band);
}

void frmFlipCalibration::cmdAbort_Click() {
    StopTest("Flip calibration canceled by operator.");
    program_.Run.CurrentProcStep = step::flipEntered;
}

void frmFlipCalibration::cmdAccept_Click() {
    SaveFlipData();
    ComputeAccelAdjustment(program_.Center);
    program_.The<MainMenuDoor>().MarkAccelerometer();
    // Procedures that need a calibration of today are now available.
    program_.The<SetupDoor>().AllowCalibration();
    GoBack();
    if (program_.Run.InterimCalOpen) SaveInterimCalibration(program_);
}

/// The file is written first: what cannot be stored is not accepted.
void frmFlipCalibration::SaveFlipData() {
    const CenterConfig before = program_.Center;
    CenterConfig& center = program_.Center;
    const auto& [plus, minus, flipped] = measured_.readings;
    const DateTime now = program_.Now();
    center.AccelDailyCalibrationPlus1GVoltage = plus.average;
    center.AccelDailyCalibrationMinus1GVoltage = minus.average;
    center.AccelDailyCalibrationPlus1GFlipVoltage = flipped.average;
    center.AccelDailyCalibrationPlus1GStdDev = plus.stdDev;
    center.AccelDailyCalibrationMinus1GStdDev = minus.stdDev;
    center.AccelDailyCalibrationPlus1GFlipStdDev = flipped.stdDev;
    center.AccelDailyCalibrationDate = now;
    center.AccelDailyCalibrationTime = now;
    const bool celsius = center.AccelDailyCalibrationTemperatureUnit != "Fahrenheit";
    center.AccelDailyCalibrationTemp =
        celsius ? measured_.endTemperature : CelsiusToFahrenheit(measured_.endTemperature);
    if (celsius) center.AccelDailyCalibrationTemperatureUnit = "Celsius";
    center.AccelNewSlopeFactor = NewSlope(measured_);
    try {
        // Simulated readings must not stay as the machine's own after the review.
        if (program_.Run.ReviewMode) KeepCenterConfiguration(program_);
        // The center's own file comes last: after any failure it still holds the former calibration.
        if (!program_.Run.InterimFolderName.empty()) WriteFlipData(program_, RunCenterConfig(program_));
        WriteFlipData(program_, MasterCenterConfig(program_));
    } catch (...) {
        program_.Center = before;
        throw;
    }
}

void frmFlipCalibration::cmdReject_Click() {
    const Answer answer = program_.ShowBox(
        "Do you really want to Reject the acceleromter calibration?\r\n"
        "If you click yes, you will lose the data from this calibration.",
        box::yesNo + box::question + box::secondIsDefault, "Return to Main Menu");
    if (answer == Answer::Yes) GoBack();
}

void frmFlipCalibration::cmdRepeat_Click() {
    const Answer answer = program_.ShowBox(
        "Do you want to use the calibration values just collected for comparison?\r\n"
        "Yes - will use the calibration values just collected.\r\n"
        "No - will use the original values stored with the Configuration file.",
        box::yesNoCancel + box::question, "Repeat Acceleromter Calibration");
    if (answer == Answer::Cancel) return;
    const FlipComparison justCollected{NewSlope(measured_), NewOffset(measured_)};
    Start();
    if (answer != Answer::Yes) return;
    comparison_ = justCollected;
    ShowStored();
    ShowButtons(&cmdStart);
}

void frmFlipCalibration::GoBack() {
    CalibrationRun& run = program_.Run;
    inHand_ = false;
    Hide();
    switch (run.CurrentProcedure) {
        case Procedure::Setup:
            run.CurrentProcStep = step::setupCenter;
            break;
        case Procedure::TriggerLevel:
            run.CurrentProcStep = step::triggerFinished;
            break;
        case Procedure::Sensors:
            run.CurrentProcStep = step::sensorsTrial;
            break;
        default:
            run.CurrentProcedure = Procedure::Flip;
            run.CurrentProcStep = step::flipAccepted;
            break;
    }
    ReturnToProcedure(program_, run.CurrentProcedure);
    EndStepOfFlip();
}

/// The flip's own steps lead nowhere in a procedure that it is only a part of. In a set-up that is only edited, the
/// step of a new one would make a resumed run an unfinished set-up.
void frmFlipCalibration::EndStepOfFlip() {
    CalibrationRun& run = program_.Run;
    const bool isOfFlip = step::flipEntered <= run.CurrentProcStep && run.CurrentProcStep <= step::flipAccepted;
    if (run.CurrentProcedure == Procedure::Sensors && isOfFlip) run.CurrentProcStep = step::sensorsTrial;
    if (run.CurrentProcedure == Procedure::Setup && !run.ProgramStarted) run.CurrentProcStep = step::editSetup;
}

void frmFlipCalibration::Left() {
    // A test behind another screen stops.
    if (tmrFlip.IsRunning()) {
        StopTest("Flip calibration canceled by operator.");
        program_.Run.CurrentProcStep = step::flipEntered;
    }
    EndStepOfFlip();
}

void frmFlipCalibration::cmdMainMenu_Click() {
    Hide();
    program_.The<MainMenuDoor>().Open();
}

void frmFlipCalibration::Beep(int hertz, int milliseconds) {
    if (chkSound.Value) program_.Services.sound.Beep(hertz, std::chrono::milliseconds(milliseconds));
}

}  // namespace bellmark
