#pragma once

#include <array>
#include <optional>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"

namespace bellmark {

class FWDDocument;
class PDDXFile;
class Program;
struct CalibrationRun;
struct FWDFile;

/// The set-up of a monthly calibration or of a sensor's replacement: the sensors, how they rotate in the stand, and the
/// file that the FWD wrote.
class frmRelative : public Screen, public RelativeDoor {
  public:
    explicit frmRelative(Program& program);

    ctrlHeader Header;
    Frame fraMonhtlyType{*this, "fraMonhtlyType", "What is to be done"};
    OptionButton optMonthlyRelative{fraMonhtlyType, "optMonthlyRelative", "type", "Monthly &Relative Calibration"};
    OptionButton optMonthlyReplace{fraMonhtlyType, "optMonthlyReplace", "type", "Re&place a Sensor"};
    Label lblNextStep{*this, "lblNextStep"};
    Frame fraGeophone{*this, "fraGeophone", "Deflection Sensors"};
    ComboBox cboFWDMfgR{fraGeophone, "cboFWDMfgR"};
    ComboBox cboNumSensorsR{fraGeophone, "cboNumSensorsR"};
    ComboBox cboSensorTypeR{fraGeophone, "cboSensorTypeR"};
    OptionButton optEnglish{fraGeophone, "optEnglish", "units", "&English"};
    OptionButton optMetric{fraGeophone, "optMetric", "units", "Me&tric"};
    Frame fraFile{*this, "fraFile"};
    std::array<OptionButton, 2> optAutoPrint{
        {{fraFile, "optAutoPrint(0)", "auto print", "&Yes"}, {fraFile, "optAutoPrint(1)", "auto print", "N&o"}}};
    Grid grdSerialNum{fraGeophone, "grdSerialNum", 1, 1};
    Label lblSetUpSensors{*this, "lblSetUpSensors"};
    Grid msfgRelTest{*this, "msfgRelTest", 1, 1};
    Picture pctGeoStand{*this, "pctGeoStand"};
    TextBox txtFilename{fraFile, "txtFilename"};
    Button cmdBrowse{*this, "cmdBrowse", "&Browse ..."};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Button cmdNext{*this, "cmdNext", "&Next"};

    void Start() override;
    void SetupMonthly() override;
    void SetupGeophone() override;

  private:
    void cboFWDMfgR_Click();
    void cboNumSensorsR_Click();
    void cboSensorTypeR_Click();
    void optUnits_Click();
    void cmdBrowse_Click();
    void cmdNext_Click();
    void grdSerialNum_Click(int row);
    void grdSerialNum_CellEdit(int row, int column, const std::string& text);

    /// What the operator does next.
    enum class Stage { Kind, Mark, Browse, Next };
    void HideMainmenuItems();
    void EnterTrial(Procedure procedure);
    void ShowTrial(Procedure procedure);
    void SwitchTo(Procedure procedure);
    bool MayChangeSensors() const;
    void BeginTrial();
    void ShowRotationGrid(std::size_t numberOfSensors);
    void ShowSensors();
    void ShowSerialNumbers();
    void ShowStage();
    Stage StageNow() const;
    const char* Prompt(Stage stage) const;
    void TakeFile(const FWDFile& file);
    void ReadFWDConfiguration(const PDDXFile& document, std::optional<int> sensors);
    bool MayTakeSerialNumbers(const FWDDocument& fwd);
    void TellOtherNumber(int chosen);

    Program& program_;
    CalibrationRun& run_;
    std::size_t shownSet_ = 0;  ///< in the picture of the stand, from 0
    bool fileIsRead_ = false;   ///< the run's document is that of the trial's file
};

}  // namespace bellmark
