#include "app/frm_main_menu.h"

#include "app/app_main.h"
#include "app/daily_calibration.h"
#include "app/monthly_run.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/numbers.h"
#include "run/paths.h"

namespace bellmark {

namespace {

std::string TrialsDone(int count, const std::string& kind) {
    if (count == 0) return "No Trials Done";
    return NumberText(count) + ' ' + kind + (count == 1 ? "Trial Done" : "Trials Done");
}

/// Relative trials come in pairs; the results judge a finished pair.
bool IsRelativePairToJudge(const CalibrationRun& run) {
    return run.RelTrials >= 2 && run.RelTrials % 2 == 0 && !run.SensorRelCalComplete;
}

}  // namespace

frmMainMenu::frmMainMenu(Program& program)
    : Screen(program.Screens, "frmMainMenu", "Main Menu"), Header(*this, program.Header), program_(program) {
    for (TextBox* status : {&txtLoadCellStatus, &txtSensorStatus, &txtCertStatus, &txtMonthlyStatus})
        status->Locked = true;
    cmdCalAccelerometer.Click = [this] { cmdCalAccelerometer_Click(); };
    cmdCalLoadCell.Click = [this] { cmdCalLoadCell_Click(); };
    cmdRefCalDefAccel.Click = [this] { cmdRefCalDefAccel_Click(); };
    cmdEditSetup.Click = [this] { cmdEditSetup_Click(); };
    cmdFWDDoc.Click = [this] { program_.The<ResultsDoor>().Open(); };
    cmdRelativeCal.Click = [this] {
        if (BeginMonthlyRun(program_)) program_.The<RelativeDoor>().SetupMonthly();
    };
    cmdContinue.Click = [this] { ReturnToProcedure(program_, program_.Run.CurrentProcedure); };
    cmdStartForm.Click = [this] { LeaveMonthlyRun(program_); };
    cmdFerrylinker.Click = [this] {
        program_.Services.launcher.Start(ActualPath(program_.Services.files, program_.Folder() / converterName), "");
    };
    cmdQuit.Click = [this] { QuitApplication(program_); };

    cmdCalAccelerometer.Enabled = program_.Has<FlipCalibrationDoor>();
    cmdFWDDoc.Enabled = program_.Has<ResultsDoor>();
    cmdRelativeCal.Enabled = program_.Has<RelativeDoor>();
    AllowProcedures(false, false);
}

void frmMainMenu::Open() {
    // Showing a screen that is already in front raises no event, but the run may have changed.
    if (Stack().Front() == this) {
        Activated();
    } else {
        Show();
    }
}

void frmMainMenu::Activated() {
    ShowHeaderLabels();
    const bool monthly = program_.Run.MonthlyCalibration;
    fraAnnual.Visible = !monthly;
    fraMonthly.Visible = monthly;
    cmdEditSetup.Visible = !monthly;
    if (monthly) return ShowMonthly();
    if (program_.Has<ResultsDoor>()) program_.The<ResultsDoor>().Recompute();
    AllowWhatNeedsARun();
    cmdRelativeCal.BackColor = colors::buttonFace;
    MarkAccelerometer();
    ShowLoadCellStatus();
    ShowSensorStatus();
    ShowCertificateStatus();
    SuggestNextStep();
}

/// Without a run in hand there is nothing to set up, measure or show.
void frmMainMenu::AllowWhatNeedsARun() {
    const bool isInHand = program_.Run.IsInHand;
    cmdEditSetup.Enabled = isInHand;
    cmdCalAccelerometer.Enabled = isInHand && program_.Has<FlipCalibrationDoor>();
    cmdFWDDoc.Enabled = isInHand && program_.Has<ResultsDoor>();
    program_.The<MainFrameDoor>().AllowWhatNeedsARun(isInHand);
}

void frmMainMenu::ShowHeaderLabels() {
    const CalibrationRun& run = program_.Run;
    lblBoardName.Caption = run.ReviewMode ? "Review Mode" : "DAQ Board: " + Header.BoardName.Caption.Get();
    lblBoardName.Visible = !run.MonthlyCalibration;
    lblFWDOwner.Caption = "FWD Owner: " + run.DeviceOwner;
    lblFWDOwner.Visible = !run.DeviceOwner.empty();
    lblFWDName.Caption = "FWD Name: " + run.DeviceName;
    lblFWDName.Visible = !run.DeviceName.empty();
}

void frmMainMenu::ShowMonthly() {
    const CalibrationRun& run = program_.Run;
    const bool isUnderWay = IsMonthlyRunUnderWay(run);
    const std::string what = IsReplacement(run) ? "Replacement of a Sensor" : "Monthly Relative Calibration";
    std::string status = what + "\r\n" + TrialsDone(run.RelTrials, "");
    if (run.RelTrialInHand) status += "\r\nOne trial is read and not accepted yet";
    if (!isUnderWay && run.RelTrials > 0) status += "\r\nFinished";
    txtMonthlyStatus.Text = status;
    // A set-up whose trial was rejected can be gone on with, too.
    const bool mayGoOn = isUnderWay || (run.CurrentProcedure != Procedure::None && run.RelTrials == 0);
    cmdContinue.Visible = mayGoOn;
    Button& next = mayGoOn ? cmdContinue : run.RelTrials > 0 ? cmdStartForm : cmdRelativeCal;
    for (Button* button : {&cmdContinue, &cmdStartForm, &cmdRelativeCal})
        button->BackColor = button == &next ? colors::suggestedNext : colors::buttonFace;
    SetDefaultButton(&next);
    SetFocus(next);
}

void frmMainMenu::MarkAccelerometer() {
    cmdCalAccelerometer.BackColor = AccelCalCurrent(program_) ? colors::complete : colors::mustBeUpdated;
}

void frmMainMenu::ShowLoadCellStatus() {
    const CalibrationRun& run = program_.Run;
    std::string status = TrialsDone(run.LoadCellRefTrials, "");
    Color color = colors::mustBeUpdated;
    if (run.LoadCellCalPassed) {
        status += "\r\nPassed All Criteria";
        color = colors::suggestedNext;
    }
    if (run.LoadCellCalComplete) {
        status += "\r\nCalibration Accepted";
        color = colors::complete;
    }
    txtLoadCellStatus.Text = status;
    cmdCalLoadCell.BackColor = color;
}

void frmMainMenu::ShowSensorStatus() {
    const CalibrationRun& run = program_.Run;
    std::string status = TrialsDone(run.RefTrials, "Ref. ");
    Color color = colors::mustBeUpdated;
    if (run.SensorRefCalGood) status += "\r\nRef. Cals Good";
    if (run.SensorRefCalComplete) status += "\r\nRef. Cal Accepted";
    if (run.RelTrials > 0) status += "\r\n" + TrialsDone(run.RelTrials, "Rel. ");
    // A second trial of the pair is due.
    if (run.RelTrials % 2 == 1) color = colors::suggestedNext;
    if (run.SensorRelCalGood) {
        status += "\r\nRel. Cals Good";
        color = colors::suggestedNext;
    }
    if (run.SensorRelCalComplete) {
        status += "\r\nCalibration Accepted";
        color = colors::complete;
    }
    txtSensorStatus.Text = status;
    txtSensorStatus.BackColor = run.SensorRelCalComplete ? colors::complete : colors::window;
    cmdRefCalDefAccel.BackColor = color;
}

void frmMainMenu::ShowCertificateStatus() {
    const bool complete = program_.Run.CertificationComplete;
    txtCertStatus.Text = complete ? "Certification Complete" : "Still need to produce Final Certificate";
    cmdFWDDoc.BackColor = complete                              ? colors::complete
                          : IsRelativePairToJudge(program_.Run) ? colors::suggestedNext
                                                                : colors::mustBeUpdated;
}

void frmMainMenu::AllowProcedures(bool loadCell, bool sensors) {
    cmdCalLoadCell.Enabled = loadCell;
    cmdRefCalDefAccel.Enabled = sensors;
    const char* unfinished = "The set-up is not complete.";
    cmdCalLoadCell.ToolTip = loadCell ? "" : unfinished;
    cmdRefCalDefAccel.ToolTip = sensors                     ? ""
                                : !loadCell                 ? unfinished
                                : program_.Run.LoadCellOnly ? "The set-up was approved for the load cell only."
                                                            : "The accelerometer must be calibrated first.";
    SuggestNextStep();
}

void frmMainMenu::SuggestNextStep() {
    Button& next = NextStep();
    SetDefaultButton(&next);
    SetFocus(next);
}

Button& frmMainMenu::NextStep() {
    const CalibrationRun& run = program_.Run;
    if (!run.IsInHand) return cmdQuit;
    if (!cmdCalLoadCell.Enabled) return cmdEditSetup;
    if (IsRelativePairToJudge(run) && cmdFWDDoc.Enabled) return cmdFWDDoc;
    if (!run.LoadCellCalComplete) return cmdCalLoadCell;
    return cmdRefCalDefAccel.Enabled && !run.SensorRelCalComplete ? cmdRefCalDefAccel : cmdFWDDoc;
}

void frmMainMenu::ResetPrerequisites() {
    if (program_.Has<PrerequisitesDoor>()) program_.The<PrerequisitesDoor>().ResetPreReq();
}

void frmMainMenu::cmdCalAccelerometer_Click() {
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::Flip));
    program_.Run.CurrentProcedure = Procedure::Flip;
    if (program_.Run.CurrentProcStep != step::flipRunning) program_.Run.CurrentProcStep = step::flipEntered;
    program_.The<FlipCalibrationDoor>().Start();
}

void frmMainMenu::cmdCalLoadCell_Click() {
    CalibrationRun& run = program_.Run;
    if (run.LoadCellCalComplete || EnterUnacceptedTrial(program_)) return;
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::LoadCell));
    run.CurrentProcedure = Procedure::LoadCell;
    if (run.CurrentProcStep != step::loadCellTrial) {
        run.CurrentProcStep = step::loadCellTrialStarts;
        ResetPrerequisites();
    }
    program_.The<CollectionDoor>().Bellmark();
}

void frmMainMenu::cmdRefCalDefAccel_Click() {
    CalibrationRun& run = program_.Run;
    if (run.SensorRelCalComplete || EnterUnacceptedTrial(program_)) return;
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::Sensors));
    run.CurrentProcStep = SensorStep(run.RefTrials, run.SensorRefCalComplete);
    // Reference trials need the prerequisites; the relative calibration does not.
    if (run.CurrentProcedure != Procedure::Sensors && run.CurrentProcStep != step::sensorsRelative)
        run.CurrentProcStep = step::sensorsCheck;
    run.CurrentProcedure = Procedure::Sensors;
    if (run.CurrentProcStep < step::sensorsTrial) ResetPrerequisites();
    ReturnToProcedure(program_, run.CurrentProcedure);
}

void frmMainMenu::cmdEditSetup_Click() {
    if (!program_.Run.IsInHand) return;
    auto& setup = program_.The<SetupDoor>();
    setup.RefreshFromRun();
    program_.Run.CurrentProcedure = Procedure::Setup;
    // A set-up that is not finished keeps its step: it is not an edit yet.
    if (!program_.Run.ProgramStarted) program_.Run.CurrentProcStep = step::editSetup;
    setup.Open();
    // An approval from before the program ended must be given again.
    if (!program_.Run.CenterApproved) setup.OpenCenterPage();
}

}  // namespace bellmark
