#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "platform/date_time.h"
#include "platform/files.h"
#include "setup/sensor_checks.h"

namespace bellmark {

class PDDXFile;
enum class FWDReading;
struct FWDFile;
class Program;

/// The tab of frmSetup with the FWD: owner and folder, make, name and serial numbers, load cell and sensors with their
/// gains.
class FWDTab {
    Screen& screen_;

  public:
    FWDTab(Screen& screen, Program& program);

    OptionButton optFWD{screen_, "optFWD", "tabs", "&FWD"};
    Frame fraFWD{screen_, "fraFWD", "FWD"};

    Frame fraFWDDataBase{fraFWD, "fraFWDDataBase", "Calibration Folder"};
    TextBox txtCalibrationFolder{fraFWDDataBase, "txtCalibrationFolder"};
    Grid DirFWDOwner{fraFWDDataBase, "DirFWDOwner", 0};
    Button cmdNewOwner{fraFWDDataBase, "cmdNewOwner", "New &Owner"};
    Button cmdNewFWD{fraFWDDataBase, "cmdNewFWD", "New F&WD"};
    TextBox txtFWDOwner{fraFWDDataBase, "txtFWDOwner"};
    TextBox txtFWDUnitFolder{fraFWDDataBase, "txtFWDUnitFolder"};

    Frame fraFWDData{fraFWD, "fraFWDData", "FWD"};
    ComboBox cboFWDMfg{fraFWD, "cboFWDMfg"};
    Label lblSensorType{fraFWD, "lblSensorType", "Sensor type"};
    ComboBox cboSensorType{fraFWD, "cboSensorType"};
    Button cmdReadFWDConfig{fraFWD, "cmdReadFWDConfig", "&Read FWD Configuration"};
    Button cmdShowSetupHelp{fraFWD, "cmdShowSetupHelp", "W&hich files?"};
    Frame fraSetupHelp{fraFWD, "fraSetupHelp", "JILS Files to Open"};
    TextBox Text2{fraSetupHelp, "Text2"};
    Button cmdCloseSetupHelp{fraSetupHelp, "cmdCloseSetupHelp", "Close"};
    TextBox txtFWDName{fraFWDData, "txtFWDName"};
    TextBox txtFWDModel{fraFWDData, "txtFWDModel"};
    TextBox txtFWDSerial{fraFWDData, "txtFWDSerial"};
    TextBox txtFWDOperator{fraFWDData, "txtFWDOperator"};

    Frame fraFWDLoadCell{fraFWD, "fraFWDLoadCell", "FWD Load Cell"};
    TextBox txtFWDLCSerial{fraFWDLoadCell, "txtFWDLCSerial"};
    TextBox txtFWDLCGain{fraFWDLoadCell, "txtFWDLCGain"};
    TextBox txtFWDLCCalDate{fraFWDLoadCell, "txtFWDLCCalDate"};

    Frame fraFWDSensors{fraFWD, "fraFWDSensors", "Deflection Sensors"};
    ComboBox cboNumSensors{fraFWDSensors, "cboNumSensors"};
    TextBox txtFWDSensorCalDate{fraFWDSensors, "txtFWDSensorCalDate"};
    Grid grdSensor{fraFWDSensors, "grdSensor"};
    Label lblSameName{fraFWDSensors, "lblSameName", "*Sensor name is the same as another"};
    Label lblHyphen{fraFWDSensors, "lblHyphen", "**Sensor name cannot end in a hypen"};

    Label lblMissing{fraFWD, "lblMissing"};  ///< in words, what is missing from the tab

    std::function<void()> Stored;                              ///< the run has something worth saving
    std::function<void()> ConfigurationRead;                   ///< from the FWD's file
    std::function<void(bool complete)> Checked;                ///< the tab was checked again
    std::function<void(const Path& folder)> DataFolderChosen;  ///< the FWD's files are fetched from here

    void BeginRun();     ///< clears everything of another run
    void optFWDClick();  ///< fills the tab from the run
    /// Judges the tab and copies it into the run and its document. True when nothing is missing.
    bool CheckFWDData();
    /// For an unknown FWD only the folders and the make are asked for.
    void ShowForNewRun();

  private:
    static constexpr int serialColumn = 1;
    static constexpr int gainColumn = 2;
    static constexpr const char* createFolderText = "(Create using directory structure)";

    void MakeLists();
    void ConnectCells();
    void ShowDataFrames();

    // folders
    void EnsureRoot();
    void ShowFolder(const Path& folder);
    void DirFWDOwner_Click(int row);
    void SelectOwner(const Path& folder);
    void SelectFWD(const Path& folder);
    void RefuseFolder();
    void cmdNewOwner_Click();
    void cmdNewFWD_Click();
    bool CreateFolder(const Path& folder);
    void StoreFolderKeys(bool withFWD);
    void ShowOwnerAndFWD();

    // make and configuration file
    void cboFWDMfg_Click();
    void cboFWDMfg_Leave();
    void cmdReadFWDConfig_Click();
    void TakeConfiguration(const FWDFile& file, FWDReading reading);
    void ShowMake();

    PDDXFile& Document();

    // cells
    bool HasComma(const std::string& serialNumber);  ///< a comma is reported to the operator
    void PutBack(TextBox& box, const std::string& stored);
    void StoreText(const TextBox& box, std::string& member, const char* section, const char* key);
    void StoreProfile(const char* section, const char* key, const std::string& value);
    void txtFWDLCGain_Leave();
    void LeaveDate(TextBox& box, DateTime& date, const char* key);
    void ShowDate(TextBox& box, DateTime date);
    void cboNumSensors_Click();
    void ShowSensors();
    void EditSensor(int row, int column, const std::string& text);

    // judging
    void LockWhatTrialsRestOn();
    void SuggestNextStep(bool complete);
    bool CheckCount();
    bool CheckSensorCells();
    bool CheckLoadCellGain();
    bool CheckMake(bool completeSoFar);
    bool CheckFolders();
    void Missing(const std::string& what) { missing_.push_back(what); }
    void MissingFirst(const std::string& what) { missing_.insert(missing_.begin(), what); }

    Program& program_;
    Path shownFolder_;
    std::vector<Path> listedFolders_;   ///< one per row of DirFWDOwner
    const char* jilsFilter_ = nullptr;  ///< of the next of its files; null before the first
    bool makeIsKnown_ = true;           ///< false until the operator of a new run has chosen one
    std::vector<std::string> missing_;
    std::string doubt_;  ///< about the file that was read last
};

}  // namespace bellmark
