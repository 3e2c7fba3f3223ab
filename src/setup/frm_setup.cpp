#include "setup/frm_setup.h"

#include "app/app_main.h"
#include "app/center_file.h"
#include "app/daily_calibration.h"
#include "app/fwd_configuration.h"
#include "app/interim_store.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "run/paths.h"
#include "run/run_document.h"
#include "run/stored_values.h"

namespace bellmark {

frmSetup::frmSetup(Program& program)
    : Screen(program.Screens, "frmSetup", "Setup and Configuration"),
      Header(*this, program.Header),
      Center(*this, program),
      FWD(*this, program),
      DataAcq(*this, program),
      General(*this, program),
      program_(program) {
    FWD.optFWD.Enabled = false;
    General.optGeneral.Enabled = false;
    Center.optCalCenter.Click = [this] { OpenCenterPage(); };
    FWD.optFWD.Click = [this] {
        tabs_.Show(FWD.optFWD);
        FWD.optFWDClick();
    };
    FWD.DataFolderChosen = [this](const Path& folder) { DataAcq.SetFolders(PathText(folder)); };
    FWD.Checked = [this](bool complete) {
        cmdNext.Enabled = complete;
        cmdNext.BackColor = complete ? colors::suggestedNext : colors::buttonFace;
        AllowCalibration();
    };
    FWD.Stored = [this] { SaveWhatIsKnown(); };
    DataAcq.optDataAcq.Click = [this] { tabs_.Show(DataAcq.optDataAcq); };
    General.optGeneral.Click = [this] {
        General.ShowSequence();
        DataAcq.ShowChannels();
        tabs_.Show(General.optGeneral);
        General.ShowComment();
        AllowCalibration();
    };
    Center.cmdReadCalCenter.Click = [this] { ReadCalCenter(); };
    Center.AllowCalibration = [this] { AllowCalibration(); };
    Center.Approved = [this] { CenterApproved(); };
    Center.Editing = [this](bool editing) { EditCenter(editing); };
    General.SequenceApproved = [this] {
        cmdNext.Enabled = true;
        cmdNext.BackColor = colors::suggestedNext;
        SetFocus(cmdNext);
    };
    FWD.ConfigurationRead = [this] {
        if (cmdNext.Enabled) SetFocus(cmdNext);
    };
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    tabs_.Show(Center.optCalCenter);
    Center.FrameCalCenterUpdate();
}

void frmSetup::Activated() {
    General.ShowTrigger();
}

void frmSetup::BeginRun() {
    FWD.optFWD.Enabled = false;
    General.optGeneral.Enabled = false;
    General.BeginRun();
    // The FWD's tab enables this when it is complete.
    cmdNext.Enabled = false;
    cmdNext.BackColor = colors::buttonFace;
    FWD.BeginRun();
    RefreshFromRun();
}

void frmSetup::EditCenter(bool editing) {
    if (editing) nextWasEnabled_ = cmdNext.Enabled;
    SetEnabled({&FWD.optFWD, &DataAcq.optDataAcq, &General.optGeneral, &cmdMainMenu}, !editing);
    cmdNext.Enabled = !editing && nextWasEnabled_;
}

void frmSetup::SaveWhatIsKnown() {
    if (program_.Run.ProgramStarted) SaveInterimCalibration(program_);
}

void frmSetup::RefreshFromRun() {
    if (program_.Run.SetupComplete) {
        // Completed pages can be edited from now on.
        FWD.optFWD.Enabled = true;
        General.optGeneral.Enabled = true;
        cmdNext.Enabled = true;
    }
    General.ShowUnits();
    General.ShowSequence();
    General.ShowTrigger();
    General.ShowComment();
    General.ShowAutoPrint();
    DataAcq.ShowChannels();
    DataAcq.ShowTransferFolder();
    DataAcq.ShowSimDataFolder();
    Center.FrameCalCenterUpdate();
}

void frmSetup::OpenCenterPage() {
    tabs_.Show(Center.optCalCenter);
    Center.CalCenterOptions();
}

void frmSetup::OpenPage(int step) {
    Show();
    if (step == 11) OpenCenterPage();
    if (step == 12) FWD.optFWD.Click();
    if (step == 13) General.optGeneral.Click();
}

void frmSetup::ReturnFromMeasurement() {
    Show();
    General.optGeneral.Choose();
    General.optGeneral.Click();
    General.fraTestSequence.Visible = true;
    SuggestWhatIsNotMeasured();
}

void frmSetup::TriggerLevelMeasured() {
    General.ShowMeasuredTrigger();
    if (program_.Run.ProgramStarted) {
        program_.Run.TriggerLevelSet = true;
        cmdNext.Enabled = true;
    }
    if (program_.Run.InterimCalOpen) SaveInterimCalibration(program_);
    ReturnFromMeasurement();
}

void frmSetup::NumberOfDropsMeasured() {
    CalibrationRun& run = program_.Run;
    run.NumberDropsSet = true;
    run.LoadCellOnly = false;
    General.ShowMeasuredDrops();
    if (run.ProgramStarted && run.TriggerLevelSet) cmdNext.Enabled = true;
    if (run.InterimCalOpen) SaveInterimCalibration(program_);
    ReturnFromMeasurement();
}

void frmSetup::SuggestWhatIsNotMeasured() {
    const CalibrationRun& run = program_.Run;
    const bool isApproved = run.NumberDropsSet && (run.TriggerLevelSet || run.LoadCellOnly);
    cmdNext.BackColor = cmdNext.Enabled && isApproved ? colors::suggestedNext : colors::buttonFace;
    SetFocus(isApproved ? cmdNext : run.TriggerLevelSet ? General.cmdNumberDrops : General.cmdTriggerLevel);
}

void frmSetup::SetReviewChoices(bool reviewMode) {
    // Simulated drops are for a machine without a board.
    DataAcq.txtSimDataLocation.Enabled = reviewMode;
    DataAcq.cmdBrowseData.Enabled = reviewMode;
}

void frmSetup::ShowCenter() {
    Center.ShowVoltageCaptions();
    General.ShowUnits();
    General.ShowPlainTrigger();
    DataAcq.ShowTransferFolder();
    General.ShowComment();
}

bool frmSetup::ReadCalCenter() {
    CalibrationRun& run = program_.Run;
    if (!run.ReviewMode) {
        // The answer has no effect here.
        program_.Compose(101);
        program_.ShowComposed();
    }
    const auto chosen = program_.Services.dialogs.OpenFile({"", "FWD Cal. Center Files|*.ini", program_.Folder(), ""});
    if (!chosen) return false;
    const Path path = program_.Services.startDirectory / *chosen;
    if (run.ReviewMode) {
        KeepCenterConfiguration(program_);
        if (!StartNewCalibration(program_)) return false;
    }
    if (!ReadCalCenterFromFolderOf(path)) return false;
    OpenCenterPage();
    AllowCalibration();
    const FileSystem& files = program_.Services.files;
    const Path interim = ActualPath(files, program_.SimDataFolder() / interimCopyName);
    const bool hasStarted = run.ReviewMode && run.ProgramStarted;
    if (hasStarted && files.IsFile(interim)) ReviewDataRestore(interim);
    return true;
}

bool frmSetup::ReadCalCenterFromFolderOf(const Path& configuration) {
    const Path path = program_.Services.startDirectory / configuration;
    if (!ReadCenterConfiguration(program_, path)) return false;
    DataAcq.SetFolders(PathText(path.parent_path()));
    ShowCenter();
    return true;
}

void frmSetup::AllowCalibration() {
    const CalibrationRun& run = program_.Run;
    const bool loadCell = run.SetupComplete;
    // Without the accelerometer's own calibration its drops cannot be measured either.
    const bool sensors = run.SetupComplete && !run.LoadCellOnly && IsAccelCalibrationCurrent(program_);
    program_.The<MainMenuDoor>().AllowProcedures(loadCell, sensors);
    program_.The<MainFrameDoor>().AllowProcedures(loadCell, sensors);
}

bool frmSetup::ReadRunForReview(const Path& path) {
    CalibrationRun& run = program_.Run;
    if (!program_.Services.files.IsFile(path)) return false;
    const ProfileStrings strings(ReadTextFile(program_.Services.files, path));
    ReadFWDConfiguration(program_, strings, FWDReading::Resumed);
    ReadSequenceKeys(strings, run);
    run.EnglishUnits = StoredBoolean(strings.Get(centerSection, "EnglishUnits"));
    run.SensorStand = StoredWhole(strings.Get(centerSection, "SensorStand"), 0, 32767);
    run.Manufacturer = static_cast<Make>(StoredWhole(strings.Get("Device Information", "Manufacturer"), 0, 3));
    run.DeviceOwner = strings.Get("Device Information", "DeviceOwner");
    const std::string comment = strings.Get("Device Calibration", "CalibrationComment");
    for (std::size_t i = 0; i < program_.Center.Notes.size(); ++i) {
        program_.Center.Notes[i] = GetListField(static_cast<int>(i) + 1, comment);
    }
    return true;
}

void frmSetup::ReviewDataRestore(const Path& path) {
    CalibrationRun& run = program_.Run;
    run.ReviewFromInterim = true;
    const FileSystem& files = program_.Services.files;
    if (ReadCenterConfiguration(program_, ActualPath(files, path.parent_path() / centerConfigName))) ShowCenter();
    if (ReadRunForReview(path)) run.SetupComplete = true;
    program_.Header.SetFWDOwnerName(run.DeviceOwner);
    program_.Header.SetFWDNameCtrl(run.DeviceName);
    run.TriggerLevelSet = false;
    run.NumberDropsSet = false;
    run.ProgramStarted = false;
    RefreshFromRun();
    FWD.optFWDClick();
    OpenCenterPage();
    AllowCalibration();
}

void frmSetup::CenterApproved() {
    // Changing the center's cells has opened the tabs, too, but has not led through them.
    const bool isFirstApproval = !FWD.optFWD.Enabled || (program_.Run.ProgramStarted && !program_.Run.CenterApproved);
    program_.Run.CenterApproved = true;
    if (isFirstApproval && program_.Run.ProgramStarted) FWD.ShowForNewRun();
    Center.optCalCenter.BackColor = colors::complete;
    FWD.optFWD.Enabled = true;
    General.optGeneral.Enabled = true;
    if (isFirstApproval) {
        FWD.optFWD.Choose();
        FWD.optFWD.Click();
        SetFocus(FWD.cboFWDMfg);
    } else {
        General.optGeneral.Click();
    }
}

void frmSetup::AskForSequence() {
    program_.Run.CurrentProcStep = step::setupEnds;
    SaveInterimCalibration(program_);
    General.optGeneral.Enabled = true;
    General.optGeneral.Choose();
    General.optGeneral.Click();
    General.fraTestSequence.Visible = true;
    cmdNext.Enabled = false;
    cmdNext.BackColor = colors::buttonFace;
    SetFocus(General.cmdNumberDrops);
}

void frmSetup::EndSetup(Procedure procedure, int step, const char* header) {
    CalibrationRun& run = program_.Run;
    run.SetupComplete = true;
    run.ProgramStarted = false;
    run.NewCalibration = false;
    run.CurrentProcedure = procedure;
    run.CurrentProcStep = step;
    program_.Header.SetProcedureName(header);
    General.optGeneral.Enabled = true;
    // Saved with the new step, so that a restart goes on there.
    SaveInterimCalibration(program_);
    AllowCalibration();
    program_.The<MainMenuDoor>().Open();
}

void frmSetup::cmdNext_Click() {
    const CalibrationRun& run = program_.Run;
    if (run.CurrentProcedure != Procedure::Setup) return cmdMainMenu_Click();
    if (run.ProgramStarted && !run.CenterApproved) {
        OpenCenterPage();
    } else if (!run.SetupComplete && !FWD.CheckFWDData()) {
        FWD.optFWD.Choose();
        FWD.optFWD.Click();
    } else if (!run.ProgramStarted) {
        EndSetup(Procedure::None, step::none, "");
    } else if (!run.NumberDropsSet) {
        AskForSequence();
        if (!run.TriggerLevelSet) SetFocus(run.LoadCellOnly ? General.cmdApproveCalSeq : General.cmdTriggerLevel);
        AllowCalibration();
    } else if (run.TriggerLevelSet && !run.LoadCellOnly) {
        EndSetup(Procedure::Sensors, step::sensorsTrialStarts, "FWD Deflection Sensor Calibration");
    } else {
        EndSetup(Procedure::LoadCell, step::loadCellTrialStarts, "FWD Load Cell Calibration");
    }
}

void frmSetup::cmdMainMenu_Click() {
    AllowCalibration();
    // Once an owner is chosen, there is a run to resume, though its set-up is not complete.
    if (program_.Run.InterimCalOpen) SaveWhatIsKnown();
    if (program_.Run.SetupComplete) {
        General.optGeneral.Choose();
        General.optGeneral.Click();
    }
    program_.The<MainMenuDoor>().Open();
}

}  // namespace bellmark
