#include "monthly/frm_relative.h"

#include <algorithm>
#include <utility>

#include "app/monthly_run.h"
#include "app/program.h"
#include "fwd/fwd_document.h"
#include "fwd/fwd_intake.h"
#include "monthly/rotation_plan.h"
#include "pddx/mod_pddx_read.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "relative/relative_trial.h"

namespace bellmark {

namespace {

constexpr int fewestSensors = 6;

/// Of the dialog for the FWD's file, by maker.
constexpr const char* fileFilters[] = {
    "F20 or F25 Files|*.F**|PDDX Files|*.ddx|All files|*.*",
    "HW_INI.TXT File|*.TXT|*.TST File|*.TST|PDDX Files|*.ddx|All files|*.*",
    "SetUp.Par Files|*.Par|DAT files|*.dat|CFG files|*.cfg|PDDX Files|*.ddx|All files|*.*",
    "FVO.INI File|*.INI|PDDX Files|*.ddx|All files|*.*",
};

std::vector<std::string> SensorCounts() {
    std::vector<std::string> counts;
    for (int count = fewestSensors; count <= static_cast<int>(maxSensors); ++count) counts.push_back(NumberText(count));
    return counts;
}

}  // namespace

frmRelative::frmRelative(Program& program)
    : Screen(program.Screens, "frmRelative", "Monthly Relative Calibration"),
      Header(*this, program.Header),
      program_(program),
      run_(program.Run) {
    txtFilename.Locked = true;
    cboFWDMfgR.Items = {"Dynatest", "Carl Bro", "JILS", "KUAB"};
    cboNumSensorsR.Items = SensorCounts();
    optMonthlyRelative.Click = [this] { SwitchTo(Procedure::MonthlyRelative); };
    optMonthlyReplace.Click = [this] { SwitchTo(Procedure::SensorReplacement); };
    cboFWDMfgR.Click = [this] { cboFWDMfgR_Click(); };
    cboNumSensorsR.Click = [this] { cboNumSensorsR_Click(); };
    cboSensorTypeR.Click = [this] { cboSensorTypeR_Click(); };
    optEnglish.Click = [this] { optUnits_Click(); };
    optMetric.Click = [this] { optUnits_Click(); };
    optAutoPrint[0].Click = [this] { run_.AutoPrint = true; };
    optAutoPrint[1].Click = [this] { run_.AutoPrint = false; };
    grdSerialNum.CellClick = [this](int row, int) { grdSerialNum_Click(row); };
    grdSerialNum.CellEdit = [this](int row, int column, const std::string& text) {
        grdSerialNum_CellEdit(row, column, text);
    };
    msfgRelTest.CellClick = [this](int, int column) {
        shownSet_ = static_cast<std::size_t>(std::max(column - 1, 0));
        ShowRotationGrid(SensorCount(run_));
    };
    cmdBrowse.Click = [this] { cmdBrowse_Click(); };
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdMainMenu.Click = [this] { program_.The<MainMenuDoor>().Open(); };
}

// ---- entries

void frmRelative::Start() {
    run_.MonthlyCalibration = true;
    HideMainmenuItems();
    optMonthlyRelative.Drop();
    optMonthlyReplace.Drop();
    SetEnabled({&optMonthlyRelative, &optMonthlyReplace}, true);
    run_.CurrentProcedure = Procedure::None;
    run_.CurrentProcStep = step::none;
    BeginTrial();
    Header.PageTitle.Caption = Title();
    SetVisible({&fraGeophone, &lblSetUpSensors, &msfgRelTest, &pctGeoStand, &cmdNext, &cmdBrowse, &fraFile}, false);
    Show();
    ShowStage();
}

void frmRelative::SetupMonthly() {
    optMonthlyRelative.Choose();
    EnterTrial(Procedure::MonthlyRelative);
}

void frmRelative::SetupGeophone() {
    optMonthlyReplace.Choose();
    EnterTrial(Procedure::SensorReplacement);
}

/// The annual calibration has no part in a monthly run.
void frmRelative::HideMainmenuItems() {
    program_.The<MainFrameDoor>().AllowWhatNeedsARun(false);
    program_.The<MainFrameDoor>().AllowProcedures(false, false);
}

void frmRelative::EnterTrial(Procedure procedure) {
    run_.MonthlyCalibration = true;
    HideMainmenuItems();
    // A trial that was read and not answered is still there.
    if (!run_.RelTrialInHand) BeginTrial();
    ShowTrial(procedure);
}

/// The file and its serial numbers stay.
void frmRelative::SwitchTo(Procedure procedure) {
    BeginRelativeTrial(run_);
    ShowTrial(procedure);
}

void frmRelative::ShowTrial(Procedure procedure) {
    const bool replaces = procedure == Procedure::SensorReplacement;
    run_.CurrentProcedure = procedure;
    const int trialStep = replaces ? step::replacementTrial : step::monthlyTrial;
    const bool isBegun = run_.RelTrials > 0 || run_.RelTrialInHand || run_.CurrentProcStep == trialStep;
    run_.CurrentProcStep = isBegun ? trialStep : replaces ? step::replacementSetup : step::monthlySetup;
    Header.PageTitle.Caption = (replaces ? "Replace a Sensor - Trial " : "Monthly Relative Calibration - Trial ") +
                               NumberText(run_.RelTrials + 1);
    SetVisible({&fraGeophone, &lblSetUpSensors, &msfgRelTest, &pctGeoStand, &cmdNext, &cmdBrowse, &fraFile}, true);
    ShowSensors();
    Show();
    ShowStage();
}

// ---- the sensors

/// Trials can be compared only when they are of the same sensors.
bool frmRelative::MayChangeSensors() const {
    return run_.RelTrials == 0;
}

/// The trial begins before its drops.
void frmRelative::BeginTrial() {
    BeginRelativeTrial(run_);
    fileIsRead_ = false;
    shownSet_ = 0;
    run_.MonthlyDataFile.clear();
}

void frmRelative::cboFWDMfgR_Click() {
    run_.Manufacturer = static_cast<Make>(cboFWDMfgR.ListIndex.Get());
    run_.SensorType = 0;
    BeginTrial();
    ShowSensors();
    ShowStage();
}

void frmRelative::cboNumSensorsR_Click() {
    run_.NumberSensors = cboNumSensorsR.ListIndex + fewestSensors;
    if (run_.ReplacedSensor && *run_.ReplacedSensor >= SensorCount(run_)) run_.ReplacedSensor.reset();
    BeginTrial();
    ShowSensors();
    ShowStage();
}

void frmRelative::cboSensorTypeR_Click() {
    run_.SensorType = cboSensorTypeR.ListIndex;
}

void frmRelative::optUnits_Click() {
    run_.EnglishUnits = optEnglish.IsChosen();
    // What was read in other units does not count; the file is read again.
    BeginRelativeTrial(run_);
    ShowRotationGrid(SensorCount(run_));
}

void frmRelative::ShowSensors() {
    const bool kuab = run_.Manufacturer == Make::Kuab;
    cboFWDMfgR.ListIndex = static_cast<int>(run_.Manufacturer);
    const int index = run_.NumberSensors - fewestSensors;
    cboNumSensorsR.ListIndex = index < static_cast<int>(cboNumSensorsR.Items.Get().size()) ? std::max(index, -1) : -1;
    cboSensorTypeR.Items =
        kuab ? std::vector<std::string>{"Geophone", "Seismometer"} : std::vector<std::string>{"Geophone"};
    cboSensorTypeR.ListIndex = kuab ? run_.SensorType : 0;
    (run_.EnglishUnits ? optEnglish : optMetric).Choose();
    optAutoPrint[run_.AutoPrint ? 0 : 1].Choose();
    const bool mayChange = MayChangeSensors();
    SetEnabled({&cboFWDMfgR, &cboNumSensorsR, &cboSensorTypeR, &optEnglish, &optMetric}, mayChange);
    SetEnabled({&optMonthlyRelative, &optMonthlyReplace}, mayChange);
    ShowSerialNumbers();
    ShowRotationGrid(SensorCount(run_));
}

void frmRelative::ShowSerialNumbers() {
    const bool replaces = IsReplacement(run_);
    grdSerialNum.SetHeadings({"", "   Serial Number   "});
    for (std::size_t s = 0; s < SensorCount(run_); ++s) {
        const int row = static_cast<int>(s) + 1;
        const bool isReplaced = replaces && run_.ReplacedSensor == s;
        grdSerialNum.AddRow({RotatedSensorLabel(run_, s), run_.Sensor.at(s).SerialNumber});
        grdSerialNum.SetEditable(row, 1, MayChangeSensors());
        grdSerialNum.SetCellColor(row, 1,
                                  isReplaced                         ? colors::passed
                                  : replaces && !run_.ReplacedSensor ? colors::suggestedNext
                                                                     : colors::window);
        grdSerialNum.SetCellToolTip(row, 1, isReplaced ? "This sensor was replaced." : "");
    }
}

void frmRelative::ShowRotationGrid(std::size_t numberOfSensors) {
    shownSet_ = std::min(shownSet_, std::max<std::size_t>(numberOfSensors, 1) - 1);
    lblSetUpSensors.Caption = RotationInstructions(numberOfSensors, run_.EnglishUnits);
    ShowRotation(msfgRelTest, run_, numberOfSensors);
    pctGeoStand.Draw(StandPicture(run_, numberOfSensors, shownSet_));
}

void frmRelative::grdSerialNum_Click(int row) {
    // The replaced sensor is the same in all trials.
    if (!IsReplacement(run_) || row < 1 || run_.RelTrials > 0) return;
    run_.ReplacedSensor = static_cast<std::size_t>(row - 1);
    ShowSerialNumbers();
    ShowStage();
}

void frmRelative::grdSerialNum_CellEdit(int row, int, const std::string& text) {
    if (text.find(',') != std::string::npos) {
        program_.ShowBox("A serial number cannot hold a comma: the files list serial numbers between commas.",
                         box::exclamation);
        return;
    }
    run_.Sensor.at(static_cast<std::size_t>(row - 1)).SerialNumber = Trim(text);
    ShowSerialNumbers();
}

// ---- what comes next

frmRelative::Stage frmRelative::StageNow() const {
    if (run_.CurrentProcedure == Procedure::None) return Stage::Kind;
    if (IsReplacement(run_) && !run_.ReplacedSensor) return Stage::Mark;
    return fileIsRead_ ? Stage::Next : Stage::Browse;
}

void frmRelative::ShowStage() {
    const Stage stage = StageNow();
    txtFilename.Text = PathText(run_.MonthlyDataFile.filename());
    cmdNext.Enabled = fileIsRead_;
    Button* next = stage == Stage::Browse ? &cmdBrowse : stage == Stage::Next ? &cmdNext : nullptr;
    const auto mark = [next](Button& button) {
        button.BackColor = &button == next ? colors::suggestedNext : colors::buttonFace;
    };
    mark(cmdBrowse);
    mark(cmdNext);
    lblNextStep.Caption = Prompt(stage);
    SetDefaultButton(next);
    if (next) return SetFocus(*next);
    if (stage == Stage::Kind) return SetFocus(optMonthlyRelative);
    SetFocus(grdSerialNum);
}

const char* frmRelative::Prompt(Stage stage) const {
    switch (stage) {
        case Stage::Kind:
            return "Choose what is to be done: compare all sensors, or calibrate one that was replaced.";
        case Stage::Mark:
            return "Click the sensor that was replaced in the list of serial numbers.";
        case Stage::Browse:
            return MayChangeSensors()
                       ? "Check make, sensors and units. Make the drops as shown, and choose the file that "
                         "the FWD wrote: BROWSE."
                       : "Make the drops of this trial, and choose the file that the FWD wrote: BROWSE.";
        case Stage::Next:
            return "Check the serial numbers, then have the drops analysed: NEXT.";
    }
    return "";
}

// ---- the FWD's file

void frmRelative::cmdBrowse_Click() {
    const char* filter = fileFilters[static_cast<std::size_t>(run_.Manufacturer)];
    const auto file = AskForFWDFile(program_, {"Read Relative Drop Data", filter, false, false});
    if (!file || file->told) return;
    TakeFile(*file);
}

void frmRelative::TakeFile(const FWDFile& file) {
    // A document that was not to be replaced is read as it is.
    Path path = file.document;
    if (!file.isReady) path = Path(file.chosen).replace_extension(".ddx");
    auto document = std::make_unique<PDDXFile>();
    const PDDXReadResult read = ReadPDDXFile(program_.Services.files, path, *document, false);
    if (!read.readable) {
        program_.ShowBox("Couldn't open: " + PathText(path), box::exclamation);
        return;
    }
    // The first file tells which FWD it is.
    if (run_.RelTrials > 0 && !MayUseDocument(program_, *document)) return;
    // The trial read before is replaced.
    BeginRelativeTrial(run_);
    if (run_.RelTrials == 0) ReadFWDConfiguration(*document, read.numberOfSensors);
    program_.RunDocument = std::move(document);
    fileIsRead_ = true;
    run_.MonthlyDataFile = file.chosen;
    ShowSensors();
    ShowStage();
}

void frmRelative::ReadFWDConfiguration(const PDDXFile& document, std::optional<int> sensors) {
    const FWDDocument fwd(document);
    const int chosen = run_.NumberSensors;
    if (sensors) run_.NumberSensors = *sensors;
    run_.DeviceSerialNumber = fwd.DeviceSerialNumber();
    const bool takesSerials = MayTakeSerialNumbers(fwd);
    for (std::size_t s = 0; s < maxSensors; ++s) {
        const std::string listed = std::exchange(run_.Sensor[s], {}).SerialNumber;
        if (s >= SensorCount(run_)) continue;
        const std::string inFile = fwd.SensorSerialNumber(static_cast<int>(s) + 1);
        run_.Sensor[s].SerialNumber = takesSerials && !inFile.empty() ? inFile : listed;
    }
    if (run_.ReplacedSensor && *run_.ReplacedSensor >= SensorCount(run_)) run_.ReplacedSensor.reset();
    if (run_.NumberSensors != chosen) TellOtherNumber(chosen);
}

/// The operator may have typed or corrected serial numbers.
bool frmRelative::MayTakeSerialNumbers(const FWDDocument& fwd) {
    std::string differences;
    for (std::size_t s = 0; s < SensorCount(run_); ++s) {
        const std::string& listed = run_.Sensor[s].SerialNumber;
        const std::string inFile = fwd.SensorSerialNumber(static_cast<int>(s) + 1);
        if (listed.empty() || inFile.empty() || listed == inFile) continue;
        differences += RotatedSensorLabel(run_, s) + ": " + inFile + " in place of " + listed + "\r\n";
    }
    if (differences.empty()) return true;
    return program_.ShowBox("The file has other serial numbers than the list:\r\n" + differences +
                                "Do you want to take those of the file?",
                            box::yesNo + box::question) == Answer::Yes;
}

void frmRelative::TellOtherNumber(int chosen) {
    program_.ShowBox("The file lists " + NumberText(run_.NumberSensors) + " sensors, chosen were " +
                         NumberText(chosen) +
                         ".\r\nThe grid now shows the rotation of the file's sensors. If they were rotated in another "
                         "way, the trial must be repeated.",
                     box::exclamation);
}

void frmRelative::cmdNext_Click() {
    if (program_.The<RelativeResultsDoor>().Start()) return;
    // Another file can be read, and the sensors changed.
    BeginTrial();
    run_.NumberSensors = std::clamp(run_.NumberSensors, fewestSensors, static_cast<int>(maxSensors));
    ShowSensors();
    ShowStage();
}

}  // namespace bellmark
