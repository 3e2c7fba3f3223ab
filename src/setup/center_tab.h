#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "controls/controls.h"
#include "platform/files.h"
#include "setup/center_cells.h"

namespace bellmark {

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
    TextBox txtCenterID{fraCalCenter, "txtCenterID"};
    TextBox txtCalCenter{fraCalCenter, "txtCalCenter"};
    TextBox txtCenterOperator{fraCalCenter, "txtCenterOperator"};
    TextBox txtSerialEquipment{fraCalCenter, "txtSerialEquipment"};
    Button cmdReadCalCenter{fraCalCenter, "cmdReadCalCenter", "&Read FWD Cal Center Configuration"};
    Button cmdWriteCalCenter{fraCalCenter, "cmdWriteCalCenter"};
    Button cmdApproveBellmarkCenter{fraCalCenter, "cmdApproveBellmarkCenter", "&Approve FWD Cal Center Information"};
    Button cmdSelectCenter{fraCalCenter, "cmdSelectCenter", "Selec&t Center"};
    Button cmdShowLC{fraCalCenter, "cmdShowLC", "Show Reference &Load Cell"};
    Button cmdShowAccel{fraCalCenter, "cmdShowAccel", "Sho&w Accelerometer"};

    Frame fraCalCentersID{fraCalCenter, "fraCalCentersID", "Calibration Centers"};
    Grid grdCalCenters{fraCalCentersID, "grdCalCenters"};
    Button cmdCloseCalCenters{fraCalCentersID, "cmdCloseCalCenters", "Close"};

    Frame fraLoadCell{fraCalCenter, "fraLoadCell", "Reference Load Cell"};
    TextBox txtRefLoadCellID{fraLoadCell, "txtRefLoadCellID"};
    TextBox txtRefLoadCellExcitation{fraLoadCell, "txtRefLoadCellExcitation"};
    TextBox txtRefLoadCellGain{fraLoadCell, "txtRefLoadCellGain"};
    std::array<Label, 2> Label2{
        {{fraLoadCell, "Label2(18)", "+B Voltage:"}, {fraLoadCell, "Label2(19)", "-B Voltage:"}}};
    TextBox txtRefLoadCellBPlus{fraLoadCell, "txtRefLoadCellBPlus"};
    TextBox txtRefLoadCellBMinus{fraLoadCell, "txtRefLoadCellBMinus"};
    TextBox txtRefLoadCellUnbalancedZero{fraLoadCell, "txtRefLoadCellUnbalancedZero"};
    TextBox txtRefLoadCellCalDate{fraLoadCell, "txtRefLoadCellCalDate"};
    TextBox txtRefLoadCellCalUnits{fraLoadCell, "txtRefLoadCellCalUnits"};
    std::array<TextBox, 5> txtRefLoadCellCalA{{{fraLoadCell, "txtRefLoadCellCalA(0)"},
                                               {fraLoadCell, "txtRefLoadCellCalA(1)"},
                                               {fraLoadCell, "txtRefLoadCellCalA(2)"},
                                               {fraLoadCell, "txtRefLoadCellCalA(3)"},
                                               {fraLoadCell, "txtRefLoadCellCalA(4)"}}};
    Button cmdCloseLC{fraLoadCell, "cmdCloseLC", "Close"};

    Frame fraAccelerometer{fraCalCenter, "fraAccelerometer", "Accelerometer"};
    TextBox txtAccelerometerSN{fraAccelerometer, "txtAccelerometerSN"};
    TextBox txtAccelerometerModel{fraAccelerometer, "txtAccelerometerModel"};
    TextBox txtAccelerometerExcitation{fraAccelerometer, "txtAccelerometerExcitation"};
    TextBox txtAccelerometerGain{fraAccelerometer, "txtAccelerometerGain"};
    TextBox txtCertDate{fraAccelerometer, "txtCertDate"};
    TextBox txtCertP1GDC{fraAccelerometer, "txtCertP1GDC"};
    TextBox txtCertM1GDC{fraAccelerometer, "txtCertM1GDC"};
    TextBox txtNISTGravity{fraAccelerometer, "txtNISTGravity"};
    std::array<TextBox, 4> txtCert{{{fraAccelerometer, "txtCert(0)"},
                                    {fraAccelerometer, "txtCert(1)"},
                                    {fraAccelerometer, "txtCert(2)"},
                                    {fraAccelerometer, "txtCert(3)"}}};
    TextBox txtDailyDate{fraAccelerometer, "txtDailyDate"};
    TextBox txtDailyTime{fraAccelerometer, "txtDailyTime"};
    TextBox txtDailyP1GDC{fraAccelerometer, "txtDailyP1GDC"};
    TextBox txtDailyM1GDC{fraAccelerometer, "txtDailyM1GDC"};
    TextBox txtFieldGravity{fraAccelerometer, "txtFieldGravity"};
    TextBox txtDailyTemp{fraAccelerometer, "txtDailyTemp"};
    TextBox txtDailyTempUnit{fraAccelerometer, "txtDailyTempUnit"};
    TextBox txtSlopeFactor{fraAccelerometer, "txtSlopeFactor"};
    Button cmdCloseAcc{fraAccelerometer, "cmdCloseAcc", "Close"};

    std::array<Button, 2> cmdAccelCalButton{{{fraAccelerometer, "cmdAccelCalButton(0)", "Cali&brate Accelerometer"},
                                             {fraCalCenter, "cmdAccelCalButton(1)", "Calibrate Acc&elerometer"}}};
    std::array<Button, 2> cmdLoadCellOnly{{{fraCalCenter, "cmdLoadCellOnly(0)", "Load Cell &Only"},
                                           {fraLoadCell, "cmdLoadCellOnly(1)", "Load Cell Calibration"}}};

    Label lblCenterMissing{fraCalCenter, "lblCenterMissing"};  ///< in words, what prevents approving the tab

    std::function<void()> AllowCalibration;     ///< asks for a new check of which procedures are unlocked
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

    Program& program_;
    std::vector<CenterCell> cells_;
    bool editing_ = false;
};

}  // namespace bellmark
