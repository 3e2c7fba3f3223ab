#pragma once

#include <string>
#include <vector>

#include "app/ctrl_ht_drop_array.h"
#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class PDDXFile;
class Program;
struct FWDFile;
struct FWDPeaks;
struct OriginRegression;

/// Takes the FWD's own data file of a finished trial, compares its peaks with the reference's, and has the operator
/// judge the result.
class frmGetFWDData : public Screen, public FWDDataDoor {
  public:
    explicit frmGetFWDData(Program& program);

    ctrlHeader Header;
    TextBox txtTrial{*this, "txtTrial"};
    TextBox txtFilename{*this, "txtFilename"};
    Button cmdBrowse{*this, "cmdBrowse", "&Browse ..."};
    Button cmdFerrylink{*this, "cmdFerrylink", "&Ferrylink"};
    Frame fraDataDisplay{*this, "fraDataDisplay"};
    ctrlHtDropArray DataDisplay;
    Frame fraFWDData{*this, "fraFWDData"};
    ctrlHtDropArray FWDData;
    Label lblSensorNum{*this, "lblSensorNum", "Sensor"};
    TextBox txtSensorNum{*this, "txtSensorNum"};
    Label lblNumSensors{*this, "lblNumSensors", "of"};
    TextBox txtNumSensors{*this, "txtNumSensors"};
    Button cmdUp{*this, "cmdUp", "Ne&xt Sensor"};
    Button cmdDown{*this, "cmdDown", "&Previous Sensor"};
    TextBox txtSerial{*this, "txtSerial"};
    TextBox txtInitialGain{*this, "txtInitialGain"};
    TextBox txtAdjFactor{*this, "txtAdjFactor"};
    TextBox txtStdError{*this, "txtStdError"};
    TextBox txtR2{*this, "txtR2"};
    TextBox txtGain{*this, "txtGain"};
    Label lblNextStep{*this, "lblNextStep"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdGraph{*this, "cmdGraph", "&Graph"};
    Button cmdAccept{*this, "cmdAccept", "&Next"};

    void Start() override;
    void Refresh() override { Show(); }
    void ReturnFromPlot() override;
    void AcceptTrial() override;
    void RejectTrial() override;
    void PrintReport() override;

  private:
    void cmdBrowse_Click();
    void cmdGraph_Click();
    void cmdUp_Click() { StepSensor(1); }
    void cmdDown_Click() { StepSensor(-1); }
    void cmdAccept_Click();
    void cmdMainMenu_Click();
    void cmdFerrylink_Click();

    /// The state of the trial on this screen: each stage has one next step.
    enum class Stage { Browse, Refused, Look, Answer };
    void ShowStage(Stage stage);
    void PrepareScreen();
    void ClearResults();
    void ReviewDrop(int index);
    bool TakeFile(const FWDFile& file);
    bool ReadFWDPeakData(const PDDXFile& document, bool readable);
    bool CanBeUsed(const FWDPeaks& peaks);
    void CompareDevices();
    void ShowDevice(std::size_t device, const OriginRegression& fit);
    void ShowFWDPeaks(std::size_t device);
    void ShowSensorNavigation(bool visible);
    void StepSensor(int step);
    void CheckScatter(std::size_t device);
    void CheckLoadCell();
    void EndTrial();
    void ShowMessage(int code);

    Program& program_;
    CalibrationRun& run_;
    Path document_;
    std::size_t device_ = 0;  ///< the device shown
};

}  // namespace bellmark
