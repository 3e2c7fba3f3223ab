#pragma once

#include <array>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class PDDXFile;
class Program;
struct CalibrationRun;
struct FWDFile;

/// The annual comparison of all sensors in the stand: reads the FWD's file of 40 drops and shows its analysis of
/// variance.
class frmCenterRelative : public Screen, public CenterRelativeDoor {
  public:
    explicit frmCenterRelative(Program& program);

    ctrlHeader Header;
    Label lblTrial{*this, "lblTrial"};
    Label cmdRelSteps{*this, "cmdRelSteps",
                      "1. Perform 3 seating drops.\r\n2. Perform 40 FWD Drops at highest drop height used in "
                      "Reference Calibration."};
    TextBox txtRecFileName{*this, "txtRecFileName"};
    TextBox txtFilename{*this, "txtFilename"};
    Button cmdBrowse{*this, "cmdBrowse", "&Browse ..."};
    Label lblNextStep{*this, "lblNextStep"};
    Grid grdSensors{*this, "grdSensors", 2};
    Grid grdSets{*this, "grdSets"};
    Frame fraStdError{*this, "fraStdError", "Standard Error"};
    std::array<TextBox, 2> txtStandardError{
        {{fraStdError, "txtStandardError(0)"}, {fraStdError, "txtStandardError(1)"}}};
    std::array<Label, 2> UnitLabel{{{fraStdError, "UnitLabel(0)"}, {fraStdError, "UnitLabel(1)"}}};
    CheckBox chkANOVA{*this, "chkANOVA", "Show &ANOVA"};
    Frame fraANOVA{*this, "fraANOVA", "Analysis of Variance"};
    Grid grdANOVA{fraANOVA, "grdANOVA"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Button cmdPrint{*this, "cmdPrint", "Print Repor&t"};
    Button Command1{*this, "Command1", "Print &Screen"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdPlot{*this, "cmdPlot", "&Plot"};

    void Start() override;
    void BeginTrial() override;
    void ReturnFromPlot() override;
    void AcceptRelativeTrial() override;

  private:
    void cmdBrowse_Click();
    void cmdPrint_Click();
    void cmdReject_Click();
    void chkANOVA_Click();
    void grdSensors_CellEdit(int row, int column, const std::string& text);

    /// What the operator does next.
    enum class Stage { Browse, Look };
    void SetUpForm();
    void ShowForm(Stage stage);
    void ShowStage(Stage stage);
    std::string Prompt(Stage stage) const;
    void TellTrialsDone();
    Path DocumentOf(const FWDFile& file) const;
    void TakeDocument(const PDDXFile& document, const FWDFile& file);
    void TellDropCount(long long drops);
    void ShowRelativeResults();
    void SetUpGrids();
    void ShowSensors();
    void ShowPosition(std::size_t sensor);
    void ShowSets();
    void ShowStandardError();
    std::size_t Trial() const;

    Program& program_;
    CalibrationRun& run_;
};

}  // namespace bellmark
