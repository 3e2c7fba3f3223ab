#pragma once

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;

/// The main menu: the state of the calibration, and the way into each procedure. All of it is derived from the run each
/// time the screen comes to the front, so that a resumed run and a live one look alike.
class frmMainMenu : public Screen, public MainMenuDoor {
  public:
    explicit frmMainMenu(Program& program);

    ctrlHeader Header;
    Label lblBoardName{*this, "lblBoardName"};
    Label lblFWDOwner{*this, "lblFWDOwner"};
    Label lblFWDName{*this, "lblFWDName"};
    Frame fraAnnual{*this, "fraAnnual"};
    Button cmdCalAccelerometer{fraAnnual, "cmdCalAccelerometer", "&Accelerometer Calibration"};
    Button cmdCalLoadCell{fraAnnual, "cmdCalLoadCell", "FWD &Load Cell Calibration"};
    TextBox txtLoadCellStatus{fraAnnual, "txtLoadCellStatus"};
    Button cmdRefCalDefAccel{fraAnnual, "cmdRefCalDefAccel", "FWD &Deflection Sensor Calibration"};
    TextBox txtSensorStatus{fraAnnual, "txtSensorStatus"};
    Button cmdFWDDoc{fraAnnual, "cmdFWDDoc", "&Results and Certificate"};
    TextBox txtCertStatus{fraAnnual, "txtCertStatus"};
    Frame fraMonthly{*this, "fraMonthly"};
    TextBox txtMonthlyStatus{fraMonthly, "txtMonthlyStatus"};
    Button cmdContinue{fraMonthly, "cmdContinue", "&Go On"};
    Button cmdStartForm{fraMonthly, "cmdStartForm", "Start &Form"};
    Button cmdRelativeCal{*this, "cmdRelativeCal", "&Monthly Relative Calibration"};
    Button cmdEditSetup{*this, "cmdEditSetup", "Edit &Setup"};
    Button cmdFerrylinker{*this, "cmdFerrylinker", "&Convert FWD Files"};
    Button cmdQuit{*this, "cmdQuit", "&Quit"};

    void Activated() override;

    void Open() override;
    void MarkAccelerometer() override;
    void AllowProcedures(bool loadCell, bool sensors) override;
    void EditSetup() override { cmdEditSetup_Click(); }
    void CalibrateAccelerometer() override { cmdCalAccelerometer_Click(); }
    void CalibrateLoadCell() override { cmdCalLoadCell_Click(); }
    void CalibrateSensors() override { cmdRefCalDefAccel_Click(); }

  private:
    void cmdCalAccelerometer_Click();
    void cmdCalLoadCell_Click();
    void cmdRefCalDefAccel_Click();
    void cmdEditSetup_Click();
    void AllowWhatNeedsARun();
    void ShowHeaderLabels();
    void ShowMonthly();
    void ShowLoadCellStatus();
    void ShowSensorStatus();
    void ShowCertificateStatus();
    void SuggestNextStep();
    Button& NextStep();
    void ResetPrerequisites();

    Program& program_;
};

}  // namespace bellmark
