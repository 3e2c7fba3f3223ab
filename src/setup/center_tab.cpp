#include "setup/center_tab.h"

#include <stdexcept>

#include "app/center_file.h"
#include "app/daily_calibration.h"
#include "app/doors.h"
#include "app/program.h"
#include "app/save_pddx.h"
#include "controls/screen.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "run/stored_values.h"
#include "setup/folder_tree.h"
#include "tables/table.h"

namespace bellmark {

namespace {
constexpr const char* changeCaption = "&Change Calibration Center Config";
constexpr const char* saveCaption = "&Save Calibration Center Config";
constexpr std::chrono::days longestLoadCellAge{365};
constexpr double longestAccelerometerAge = 480;  // minutes

/// Why the accelerometer's last calibration does not hold.
const char* AccelerometerFault(const Program& program) {
    if (!AccelWasCalibratedToday(program)) return "the last one is not of today";
    if (MinutesSinceAccelCal(program) > longestAccelerometerAge) return "the last one is more than 8 hours old";
    return "since the last one the temperature has changed by more than 5 °C";
}

}  // namespace

CenterTab::CenterTab(Screen& screen, Program& program)
    : screen_(screen), program_(program), cells_(CenterCells(*this)) {
    LockCells(true);
    fraCalCentersID.Visible = false;
    cmdWriteCalCenter.Caption = changeCaption;
    for (Button& button : cmdAccelCalButton) {
        button.Enabled = program_.Has<FlipCalibrationDoor>();
        button.Click = [this] { program_.The<FlipCalibrationDoor>().Start(); };
    }
    cmdWriteCalCenter.Click = [this] { cmdWriteCalCenter_Click(); };
    cmdApproveBellmarkCenter.Click = [this] { cmdApproveBellmarkCenter_Click(); };
    cmdLoadCellOnly[0].Click = [this] {
        program_.Run.LoadCellOnly = true;
        CalCenterOptions();
    };
    cmdLoadCellOnly[1].Click = [this] { CalCenterOptions(); };
    txtRefLoadCellCalDate.Click = [this] {
        if (!LoadCellIsLate()) return;
        program_.Compose(112, {program_.Center.ReferenceLoadCellCalibrationDate});
        program_.ShowComposed();
    };
    txtCalCenter.Leave = [this] { StoreText(txtCalCenter, program_.Center.CalibrationCenter, "CalibrationCenter"); };
    txtCenterOperator.Leave = [this] {
        StoreText(txtCenterOperator, program_.Center.CalibrationCenterOperator, "CalibrationCenterOperator");
    };
    cmdSelectCenter.Click = [this] { cmdSelectCenter_Click(); };
    grdCalCenters.CellDoubleClick = [this](int row, int) { grdCalCenters_DoubleClick(row); };
    cmdShowLC.Click = [this] {
        fraCalCentersID.Visible = false;
        fraLoadCell.Visible = true;
    };
    cmdShowAccel.Click = [this] {
        fraCalCentersID.Visible = false;
        fraAccelerometer.Visible = true;
    };
    cmdCloseLC.Click = [this] { fraLoadCell.Visible = false; };
    cmdCloseAcc.Click = [this] { fraAccelerometer.Visible = false; };
    cmdCloseCalCenters.Click = [this] { fraCalCentersID.Visible = false; };
}

CenterTab::~CenterTab() = default;

void CenterTab::CalCenterOptions() {
    if (program_.Run.ReviewMode) {
        cmdReadCalCenter.ToolTip =
            "Read in the BellmarkCenterConfig.ini file to be used. The existing BellmarkCenterConfig.ini will be "
            "restored when Bellmark closes.";
        cmdReadCalCenter.BackColor = colors::warning;
    } else {
        cmdReadCalCenter.ToolTip = "Read in the updated BellmarkCenterConfig.ini file.";
        cmdReadCalCenter.Caption = "&Update FWD Cal Center Configuration";
        cmdReadCalCenter.BackColor = colors::buttonFace;
    }
    const bool accelerometerIsCurrent = IsAccelCalibrationCurrent(program_);
    FrameCalCenterUpdate();
    MarkAccelerometer(accelerometerIsCurrent);
    MarkOperator();
    ShowMissing(accelerometerIsCurrent);
    const bool known = program_.Center.IsKnown;
    const bool complete = known && HasOperator() && (accelerometerIsCurrent || program_.Run.LoadCellOnly);
    optCalCenter.BackColor = complete ? colors::complete : colors::mustBeUpdated;
    cmdApproveBellmarkCenter.Enabled = complete && !editing_;
    // Without a center file nothing may be written.
    cmdWriteCalCenter.Enabled = known;
    for (TextBox* cell : {&txtCalCenter, &txtCenterOperator}) cell->Locked = !known;
    cmdApproveBellmarkCenter.ToolTip = complete ? "Click to confirm FWD Calibration Center information."
                                                : "All orange cells must be updated before continuing.";
    // While cells are edited, the keyboard moves from cell to cell.
    if (!editing_) screen_.SetFocus(complete ? cmdApproveBellmarkCenter : cmdAccelCalButton[1]);
    AllowCalibration();
}

void CenterTab::ShowMissing(bool accelerometerIsCurrent) {
    std::string missing;
    if (!program_.Center.IsKnown) missing = "the configuration of the calibration center";
    if (program_.Center.IsKnown && !HasOperator()) missing = "the operator's name";
    if (!accelerometerIsCurrent && !program_.Run.LoadCellOnly) {
        if (!missing.empty()) missing += ", ";
        missing += std::string("a calibration of the accelerometer (") + AccelerometerFault(program_) +
                   "; Load Cell Only goes on without)";
    }
    std::string text = missing.empty() ? std::string() : "Still missing: " + missing + ". ";
    if (LoadCellIsLate()) text += "The calibration of the reference load cell is more than a year old. ";
    if (editing_) text += "The changes are not saved yet. ";
    lblCenterMissing.Caption = std::string(Trim(text));
}

bool CenterTab::HasOperator() const {
    return !Trim(txtCenterOperator.Text.Get()).empty();
}

void CenterTab::FrameCalCenterUpdate() {
    for (const CenterCell& cell : cells_) {
        if (!editing_ || !cell.take) cell.box->Text = cell.shown(program_.Center);
    }
    ShowVoltageCaptions();
    MarkLoadCellDate();
}

void CenterTab::ShowVoltageCaptions() {
    const std::string pair = program_.Center.UseBVoltages ? "B" : "A";
    Label2[0].Caption = "+" + pair + " Voltage:";
    Label2[1].Caption = "-" + pair + " Voltage:";
}

bool CenterTab::LoadCellIsLate() const {
    return DayOf(program_.Now()) - DayOf(program_.Center.ReferenceLoadCellCalibrationDate) > longestLoadCellAge;
}

void CenterTab::MarkLoadCellDate() {
    const bool late = LoadCellIsLate();
    txtRefLoadCellCalDate.BackColor = late ? colors::warning : colors::window;
    cmdLoadCellOnly[1].BackColor = late ? colors::warning : colors::window;
    txtRefLoadCellCalDate.ToolTip =
        late ? "Reference Load Cell Calibration Out of Date. Click cell for more information." : "";
}

void CenterTab::MarkAccelerometer(bool isCurrent) {
    const Color color = isCurrent ? colors::window : colors::mustBeUpdated;
    for (TextBox* cell : {&txtDailyDate, &txtDailyTime, &txtDailyP1GDC, &txtDailyM1GDC, &txtFieldGravity, &txtDailyTemp,
                          &txtDailyTempUnit, &txtSlopeFactor}) {
        cell->BackColor = color;
    }
    for (Button& button : cmdAccelCalButton) {
        button.BackColor = color;
        button.ToolTip = isCurrent ? "" : "Accelerometer must be calibrated before continuing.";
    }
}

void CenterTab::MarkOperator() {
    const bool missing = !HasOperator();
    txtCenterOperator.BackColor = missing ? colors::mustBeUpdated : colors::window;
    txtCenterOperator.ToolTip = missing ? "An FWD Calibration Center Operator Name is required before continuing." : "";
    if (missing) screen_.SetFocus(txtCenterOperator);
}

void CenterTab::LockCells(bool locked) {
    for (const CenterCell& cell : cells_) cell.box->Locked = !cell.take || (locked && cell.lockedWhileShowing);
}

void CenterTab::UpdateCalCenter() {
    CenterConfig changed = program_.Center;
    for (const CenterCell& cell : cells_) {
        // A cell shows fewer digits than its value has: only cells changed by the operator are taken.
        const std::string& text = cell.box->Text.Get();
        if (!cell.take || text == cell.shown(program_.Center)) continue;
        try {
            cell.take(changed, std::string(Trim(text)));
        } catch (const std::invalid_argument& error) {
            screen_.SetFocus(*cell.box);
            throw std::invalid_argument(cell.name + ": " + error.what());
        }
    }
    program_.Center = changed;
}

void CenterTab::cmdWriteCalCenter_Click() {
    if (!editing_) {
        // A notice rather than a question: the only answer is to save.
        program_.ShowBox("Do you really want to update the FWD Calibration Center Information?", box::exclamation);
    } else {
        UpdateCalCenter();
        const Path path = FileToSave();
        WriteCenterDataToPDDX(program_, path);
        // The document is as it was read; changed cells get into the file with the next approval.
        SavePDDX(program_, *program_.CenterDocument, path);
    }
    editing_ = !editing_;
    LockCells(!editing_);
    cmdWriteCalCenter.Caption = editing_ ? saveCaption : changeCaption;
    Editing(editing_);
    CalCenterOptions();
}

void CenterTab::cmdSelectCenter_Click() {
    const Table centers = ReadCenterTable(program_.Services.files, program_.Folder());
    grdCalCenters.SetHeadings({centers.columns[0], centers.columns[1]});
    for (const auto& row : centers.rows) grdCalCenters.AddRow({row[0], row[1]});
    fraLoadCell.Visible = false;
    fraAccelerometer.Visible = false;
    fraCalCentersID.Visible = true;
    if (!centers.problem.empty()) program_.ShowBox(centers.problem, box::exclamation);
}

void CenterTab::grdCalCenters_DoubleClick(int row) {
    if (row < grdCalCenters.FixedRows()) return;
    if (const auto problem = UnstorableCharacter(grdCalCenters.Cell(row, 1)); !problem.empty()) {
        program_.ShowBox("This name cannot be used: " + problem + '.', box::exclamation);
        return;
    }
    constexpr int greatestId = 32767;
    program_.Center.CalCenterIDCode = StoredWhole(grdCalCenters.Cell(row, 0), -greatestId, greatestId);
    program_.Center.CalibrationCenter = grdCalCenters.Cell(row, 1);
    txtCenterID.Text = Format(program_.Center.CalCenterIDCode, "00");
    txtCalCenter.Text = program_.Center.CalibrationCenter;
}

Path CenterTab::FileToSave() const {
    const Path named = PathFromText(program_.Center.FileName);
    // A file from another machine names a folder of that machine.
    return program_.Services.files.IsFolder(named.parent_path()) ? named : RunCenterConfig(program_);
}

void CenterTab::cmdApproveBellmarkCenter_Click() {
    const bool review = program_.Run.ReviewMode;
    WriteCenterDataToPDDX(program_, review ? RunCenterConfig(program_) : MasterCenterConfig(program_));
    if (!review) ForgetKeptConfiguration(program_);
    Approved();
}

void CenterTab::StoreText(const TextBox& box, std::string& member, const char* key) {
    member = box.Text;
    program_.CenterDocument->Sections(centerSection).Elements(key).SetValue(member);
    WriteKey(program_, RunCenterConfig(program_), centerSection, key, member);
    CalCenterOptions();
}

}  // namespace bellmark
