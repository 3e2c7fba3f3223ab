#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "controls/controls.h"
#include "platform/files.h"
#include "setup/center_cells.h"

namespace bellmark {

class PDDXFile;
class Program;

/// The tab of frmSetup with the center and its reference equipment. It shows the program's CenterConfig, lets the
/// operator change it, and can be approved when it is complete and current.
class CenterTab {
    Screen& screen_;

  public:
    CenterTab(Screen& screen, Program& program);
    ~CenterTab();

    OptionButton optCalCenter{screen_, "optCalCenter", "tabs", "Cal&ibration Center"};
    Frame fraCalCenter{screen_, "fraCalCenter", "FWD Calibration Center"};
    TextBox txtCenterID{screen_, "txtCenterID"};
    TextBox txtCalCenter{screen_, "txtCalCenter"};
    TextBox txtCenterOperator{screen_, "txtCenterOperator"};
    TextBox txtSerialEquipment{screen_, "txtSerialEquipment"};
    Button cmdReadCalCenter{screen_, "cmdReadCalCenter", "&Read FWD Cal Center Configuration"};
    Button cmdWriteCalCenter{screen_, "cmdWriteCalCenter"};
    Button cmdApproveBellmarkCenter{screen_, "cmdApproveBellmarkCenter", "&Approve FWD Cal Center Information"};
    Button cmdSelectCenter{screen_, "cmdSelectCenter", "Selec&t Center"};
    Button cmdShowLC{screen_, "cmdShowLC", "Show Reference &Load Cell"};
    Button cmdShowAccel{screen_, "cmdShowAccel", "Sho&w Accelerometer"};
    std::array<Button, 2> cmdAccelCalButton{{{screen_, "cmdAccelCalButton(0)", "Calibrate Acceleromete&r"},
                                             {screen_, "cmdAccelCalButton(1)", "Calibrate Acceleromete&r"}}};
    std::array<Button, 2> cmdLoadCellOnly{
        {{screen_, "cmdLoadCellOnly(0)", "Load Cell &Only"}, {screen_, "cmdLoadCellOnly(1)", "Load Cell Calibration"}}};

    Frame fraCalCentersID{screen_, "fraCalCentersID", "Calibration Centers"};
    Grid grdCalCenters{screen_, "grdCalCenters"};
    Button cmdCloseCalCenters{screen_, "cmdCloseCalCenters", "Close"};

    Frame fraLoadCell{screen_, "fraLoadCell", "Reference Load Cell"};
    TextBox txtRefLoadCellID{screen_, "txtRefLoadCellID"};
    TextBox txtRefLoadCellExcitation{screen_, "txtRefLoadCellExcitation"};
    TextBox txtRefLoadCellGain{screen_, "txtRefLoadCellGain"};
    std::array<Label, 2> Label2{{{screen_, "Label2(18)", "+B Voltage:"}, {screen_, "Label2(19)", "-B Voltage:"}}};
    TextBox txtRefLoadCellBPlus{screen_, "txtRefLoadCellBPlus"};
    TextBox txtRefLoadCellBMinus{screen_, "txtRefLoadCellBMinus"};
    TextBox txtRefLoadCellUnbalancedZero{screen_, "txtRefLoadCellUnbalancedZero"};
    TextBox txtRefLoadCellCalDate{screen_, "txtRefLoadCellCalDate"};
    TextBox txtRefLoadCellCalUnits{screen_, "txtRefLoadCellCalUnits"};
    std::array<TextBox, 5> txtRefLoadCellCalA{{{screen_, "txtRefLoadCellCalA(0)"},
                                               {screen_, "txtRefLoadCellCalA(1)"},
                                               {screen_, "txtRefLoadCellCalA(2)"},
                                               {screen_, "txtRefLoadCellCalA(3)"},
                                               {screen_, "txtRefLoadCellCalA(4)"}}};
    Button cmdCloseLC{screen_, "cmdCloseLC", "Close"};

    Frame fraAccelerometer{screen_, "fraAccelerometer", "Accelerometer"};
    TextBox txtAccelerometerSN{screen_, "txtAccelerometerSN"};
    TextBox txtAccelerometerModel{screen_, "txtAccelerometerModel"};
    TextBox txtAccelerometerExcitation{screen_, "txtAccelerometerExcitation"};
    TextBox txtAccelerometerGain{screen_, "txtAccelerometerGain"};
    TextBox txtCertDate{screen_, "txtCertDate"};
    TextBox txtCertP1GDC{screen_, "txtCertP1GDC"};
    TextBox txtCertM1GDC{screen_, "txtCertM1GDC"};
    TextBox txtNISTGravity{screen_, "txtNISTGravity"};
    std::array<TextBox, 4> txtCert{
        {{screen_, "txtCert(0)"}, {screen_, "txtCert(1)"}, {screen_, "txtCert(2)"}, {screen_, "txtCert(3)"}}};
    TextBox txtDailyDate{screen_, "txtDailyDate"};
    TextBox txtDailyTime{screen_, "txtDailyTime"};
    TextBox txtDailyP1GDC{screen_, "txtDailyP1GDC"};
    TextBox txtDailyM1GDC{screen_, "txtDailyM1GDC"};
    TextBox txtFieldGravity{screen_, "txtFieldGravity"};
    TextBox txtDailyTemp{screen_, "txtDailyTemp"};
    TextBox txtDailyTempUnit{screen_, "txtDailyTempUnit"};
    TextBox txtSlopeFactor{screen_, "txtSlopeFactor"};
    Button cmdCloseAcc{screen_, "cmdCloseAcc", "Close"};

    Label lblCenterMissing{screen_, "lblCenterMissing"};  ///< in words, what keeps the tab from being approved

    std::function<void()> AllowCalibration;     ///< what unlocks the procedures is to be judged again
    std::function<void()> Approved;             ///< the operator has confirmed the tab, and it was written
    std::function<void(bool editing)> Editing;  ///< the cells were unlocked, or are shown only again

    /// Rebuilds the tab and says what is missing for its approval.
    void CalCenterOptions();
    /// Shows CenterConfig; cells that the operator is changing keep what was typed.
    void FrameCalCenterUpdate();
    /// Takes the cells into CenterConfig: all of them, or none when one cannot be understood (std::invalid_argument).
    void UpdateCalCenter();
    /// "+B Voltage:" or "+A Voltage:".
    void ShowVoltageCaptions();

    /// The center's document as read, created on first use. What it holds goes back into the file when edits are saved.
    PDDXFile& Document();

  private:
    void MarkLoadCellDate();
    void MarkAccelerometer(bool isCurrent);
    void MarkOperator();
    void ShowMissing(bool accelerometerIsCurrent);
    bool HasOperator() const;
    bool LoadCellIsLate() const;
    void LockCells(bool locked);
    void cmdWriteCalCenter_Click();
    void cmdSelectCenter_Click();
    void grdCalCenters_DoubleClick(int row);
    Path FileToSave() const;
    void cmdApproveBellmarkCenter_Click();
    void StoreText(const TextBox& box, std::string& member, const char* key);
    void PutControlsIntoFrames();

    Program& program_;
    std::vector<CenterCell> cells_;
    std::unique_ptr<PDDXFile> document_;
    bool editing_ = false;
};

/// The accelerometer's daily calibration is of today and still holds.
bool IsAccelCalibrationCurrent(Program& program);

}  // namespace bellmark
