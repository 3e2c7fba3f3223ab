#include "setup/fwd_tab.h"

#include <algorithm>
#include <array>

#include "app/center_file.h"
#include "app/fwd_configuration.h"
#include "app/program.h"
#include "controls/screen.h"
#include "fwd/fwd_files.h"
#include "fwd/fwd_intake.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/printed_pages.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "run/run_document.h"
#include "run/stored_values.h"
#include "setup/folder_tree.h"

namespace bellmark {

namespace {

constexpr const char* information = "Device Information";
constexpr const char* calibration = "Device Calibration";
constexpr const char* jilsFiles = "*.cfg (Load cell gain)\r\n*.DAT (sensor numbers)\r\nSETUp.PAr (sensor gains)";

constexpr int fewestSensors = 6;

Color MarkedIf(bool fault) {
    return fault ? colors::mustBeUpdated : colors::window;
}

void Set(PDDXFile& document, const char* section, const char* key, const std::string& value) {
    document.Sections(section).Elements(key).SetValue(value);
}

}  // namespace

FWDTab::FWDTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    MakeLists();
    ConnectCells();
    for (TextBox* shown : {&txtCalibrationFolder, &txtFWDOwner, &txtFWDUnitFolder, &Text2}) shown->Locked = true;
    for (TextBox* optional : {&txtFWDLCCalDate, &txtFWDSensorCalDate}) optional->EmptyHint = "recommended";
    Text2.Text = jilsFiles;
    SetVisible({&fraSetupHelp, &cmdShowSetupHelp, &lblSameName, &lblHyphen}, false);
    ShowMake();
}

void FWDTab::MakeLists() {
    cboFWDMfg.Items = {"Dynatest", "Carl Bro", "JILS", "KUAB"};
    std::vector<std::string> counts;
    for (int count = fewestSensors; count <= static_cast<int>(maxSensors); ++count) counts.push_back(NumberText(count));
    cboNumSensors.Items = counts;
}

void FWDTab::ConnectCells() {
    CalibrationRun& run = program_.Run;
    DirFWDOwner.CellClick = [this](int row, int) { DirFWDOwner_Click(row); };
    cmdNewOwner.Click = [this] { cmdNewOwner_Click(); };
    cmdNewFWD.Click = [this] { cmdNewFWD_Click(); };
    cboFWDMfg.Click = [this] { cboFWDMfg_Click(); };
    cboFWDMfg.Leave = [this] { cboFWDMfg_Leave(); };
    cboSensorType.Click = [this] {
        program_.Run.SensorType = cboSensorType.ListIndex;
        cboSensorType.BackColor = colors::window;
        cmdReadFWDConfig.Enabled = true;
        cmdReadFWDConfig.ToolTip = "";
        CheckFWDData();
    };
    cmdReadFWDConfig.Click = [this] { cmdReadFWDConfig_Click(); };
    cmdShowSetupHelp.Click = [this] { fraSetupHelp.Visible = true; };
    cmdCloseSetupHelp.Click = [this] { fraSetupHelp.Visible = false; };
    cboNumSensors.Click = [this] { cboNumSensors_Click(); };
    grdSensor.CellEdit = [this](int row, int column, const std::string& text) { EditSensor(row, column, text); };
    txtFWDName.Leave = [this, &run] {
        StoreText(txtFWDName, run.DeviceDesignationName, information, "DeviceDesignationName");
    };
    txtFWDModel.Leave = [this, &run] {
        StoreText(txtFWDModel, run.DeviceModelNumber, information, "DeviceModelNumber");
    };
    txtFWDSerial.Leave = [this, &run] {
        if (HasComma(txtFWDSerial.Text)) return PutBack(txtFWDSerial, run.DeviceSerialNumber);
        StoreText(txtFWDSerial, run.DeviceSerialNumber, information, "DeviceSerialNumber");
    };
    txtFWDOperator.Leave = [this, &run] {
        StoreText(txtFWDOperator, run.OperatorName, "Operations Information", "OperatorName");
    };
    txtFWDLCSerial.Leave = [this, &run] {
        if (HasComma(txtFWDLCSerial.Text)) return PutBack(txtFWDLCSerial, run.LoadCellSerialNumber);
        StoreText(txtFWDLCSerial, run.LoadCellSerialNumber, information, "LoadCellSerialNumber");
        StoreProfile(information, "LoadCellSerialNumber", run.LoadCellSerialNumber);
    };
    txtFWDLCGain.Leave = [this] { txtFWDLCGain_Leave(); };
    txtFWDLCCalDate.Leave = [this, &run] {
        LeaveDate(txtFWDLCCalDate, run.LoadCellCalibrationDate, "LoadCellCalibrationCenterDate");
    };
    txtFWDSensorCalDate.Leave = [this, &run] {
        LeaveDate(txtFWDSensorCalDate, run.SensorCalibrationDate, "SensorCalibrationCenterDate");
    };
}

void FWDTab::BeginRun() {
    makeIsKnown_ = true;
    doubt_.clear();
    jilsFilter_ = nullptr;
    fraSetupHelp.Visible = false;
    cmdReadFWDConfig.Enabled = true;
    cmdReadFWDConfig.ToolTip = "";
    ShowDataFrames();
}

void FWDTab::ShowForNewRun() {
    const CalibrationRun& run = program_.Run;
    const bool isKnown = !run.DeviceDesignationName.empty() || !run.DeviceSerialNumber.empty() ||
                         !run.LoadCellSerialNumber.empty() || run.LoadCellInitialGain != 0;
    if (isKnown) return;
    for (Frame* frame : {&fraFWDLoadCell, &fraFWDSensors, &fraFWDData}) frame->Visible = false;
    cmdReadFWDConfig.Enabled = false;
    fraFWDDataBase.Visible = true;
    program_.Run.Manufacturer = Make::Dynatest;
    makeIsKnown_ = false;
    ShowMake();
}

void FWDTab::ShowDataFrames() {
    for (Frame* frame : {&fraFWDData, &fraFWDLoadCell, &fraFWDSensors, &fraFWDDataBase}) frame->Visible = true;
}

void FWDTab::optFWDClick() {
    const CalibrationRun& run = program_.Run;
    EnsureRoot();
    ShowOwnerAndFWD();
    txtFWDName.Text = run.DeviceDesignationName;
    txtFWDModel.Text = run.DeviceModelNumber;
    txtFWDSerial.Text = run.DeviceSerialNumber;
    txtFWDOperator.Text = run.OperatorName;
    txtFWDLCSerial.Text = run.LoadCellSerialNumber;
    txtFWDLCGain.Text = Format(run.LoadCellInitialGain, "0.0000");
    ShowDate(txtFWDLCCalDate, run.LoadCellCalibrationDate);
    ShowDate(txtFWDSensorCalDate, run.SensorCalibrationDate);
    ShowMake();
    ShowSensors();
    CheckFWDData();
}

// ---- make and configuration file

void FWDTab::ShowMake() {
    cboFWDMfg.ListIndex = makeIsKnown_ ? static_cast<int>(program_.Run.Manufacturer) : -1;
    const bool kuab = program_.Run.Manufacturer == Make::Kuab;
    cboSensorType.Items =
        kuab ? std::vector<std::string>{"Geophone", "Seismometer"} : std::vector<std::string>{"Geophone"};
    cboSensorType.ListIndex = kuab ? program_.Run.SensorType : 0;
    cboSensorType.BackColor = MarkedIf(cboSensorType.ListIndex < 0);
    cboSensorType.Visible = kuab;
    lblSensorType.Visible = kuab;
    cmdShowSetupHelp.Visible = program_.Run.Manufacturer == Make::Jils;
}

void FWDTab::cboFWDMfg_Click() {
    CalibrationRun& run = program_.Run;
    makeIsKnown_ = true;
    run.Manufacturer = static_cast<Make>(cboFWDMfg.ListIndex.Get());
    if (!run.InterimCalOpen) {
        const bool fixedHeights = run.Manufacturer == Make::Dynatest || run.Manufacturer == Make::CarlBro;
        if (fixedHeights) run.NumberLoadLevels = 4;
        run.NumberDropsPerLoadLevel = fixedHeights ? 6 : 8;
    }
    const bool kuab = run.Manufacturer == Make::Kuab;
    run.SensorType = kuab ? -1 : 0;
    ShowMake();
    // A KUAB's sensors are numbered from 0.
    ShowSensors();
    fraSetupHelp.Visible = run.Manufacturer == Make::Jils;
    jilsFilter_ = nullptr;
    // Only a KUAB has several kinds of sensors, and its file does not say which.
    cmdReadFWDConfig.Enabled = !kuab;
    cmdReadFWDConfig.ToolTip = kuab ? "The sensor type must be chosen first." : "";
    CheckFWDData();
}

void FWDTab::cboFWDMfg_Leave() {
    if (program_.Run.Manufacturer != Make::Kuab || cboSensorType.ListIndex >= 0) return;
    program_.ShowBox("Please choose the sensor type for the FWD", box::exclamation);
    screen_.SetFocus(cboSensorType);
}

void FWDTab::cmdReadFWDConfig_Click() {
    CalibrationRun& run = program_.Run;
    const bool nextOfJils = run.Manufacturer == Make::Jils && jilsFilter_;
    const char* filter = nextOfJils ? jilsFilter_ : ConfigurationFilter(run.Manufacturer);
    const auto file = AskForFWDFile(program_, {"Open FWD Warm-up or config file", filter, false});
    if (!file) return;
    if (DataFolderChosen) DataFolderChosen(file->chosen.parent_path());
    if (run.Manufacturer == Make::Jils) jilsFilter_ = NextJilsFilter(FileExtension(PathText(file->chosen)));
    TakeConfiguration(*file, nextOfJils ? FWDReading::Added : FWDReading::Fresh);
    // Values missing from the files can be typed.
    ShowDataFrames();
    optFWDClick();
    screen_.SetFocus(cmdReadFWDConfig);
    if (ConfigurationRead) ConfigurationRead();
    if (Stored) Stored();
}

void FWDTab::TakeConfiguration(const FWDFile& file, FWDReading reading) {
    if (!file.isReady) {
        if (!file.told) program_.ShowBox("There was a problem reading the PDDX file.", box::exclamation);
        return;
    }
    const auto doubt = ReadFWDConfiguration(program_, file.document, reading);
    if (!doubt) return;
    doubt_ = *doubt;
    if (program_.Run.AutoPrint) PrintTextFile(program_.Services.files, program_.Services.printer, file.document);
}

PDDXFile& FWDTab::Document() {
    return *program_.RunDocument;
}

// ---- cells

void FWDTab::StoreText(const TextBox& box, std::string& member, const char* section, const char* key) {
    member = box.Text;
    Set(Document(), section, key, member);
    CheckFWDData();
}

bool FWDTab::HasComma(const std::string& serialNumber) {
    if (serialNumber.find(',') == std::string::npos) return false;
    program_.ShowBox(
        "A serial number cannot hold a comma: the files list serial numbers between commas, and those behind it would "
        "belong to other sensors.",
        box::exclamation);
    return true;
}

void FWDTab::PutBack(TextBox& box, const std::string& stored) {
    box.Text = stored;
    screen_.SetFocus(box);
}

void FWDTab::StoreProfile(const char* section, const char* key, const std::string& value) {
    WriteKey(program_, RunCenterConfig(program_), section, key, value);
}

void FWDTab::txtFWDLCGain_Leave() {
    const auto gain = NumberIn(txtFWDLCGain.Text.Get());
    if (!gain || StoredGain(txtFWDLCGain.Text.Get()) == 0) {
        program_.ShowBox(gain ? "Please type in a valid Gain value.\r\nThe Gain cannot be zero."
                              : "Please type in a valid Gain value.",
                         box::exclamation);
        screen_.SetFocus(txtFWDLCGain);
        CheckFWDData();
        return;
    }
    txtFWDLCGain.Text = Format(*gain, "0.000#");
    program_.Run.LoadCellInitialGain = StoredGain(txtFWDLCGain.Text.Get());
    Set(Document(), calibration, "LoadCellCalibrationCenterGain", txtFWDLCGain.Text);
    StoreProfile(calibration, "LoadCellCalibrationCenterGain", txtFWDLCGain.Text);
    CheckFWDData();
}

void FWDTab::LeaveDate(TextBox& box, DateTime& date, const char* key) {
    const auto read = box.Text.Get().empty() ? std::optional(ZeroDate()) : ReadDateTime(box.Text.Get());
    if (!read) {
        program_.ShowBox("Please type in a valid date.", box::exclamation);
        screen_.SetFocus(box);
        return;
    }
    date = *read;
    const std::string text = Format(date, "dd-mmm-yyyy");
    Set(Document(), calibration, key, text);
    StoreProfile(calibration, key, text);
    ShowDate(box, date);
    if (!box.Text.Get().empty()) box.Text = text;
}

void FWDTab::ShowDate(TextBox& box, DateTime date) {
    const bool missing = DayOf(date) == ZeroDate();
    box.Text = missing ? std::string() : Format(date, "d-mmm-yyyy");
    box.BackColor = MarkedIf(missing);
    box.ToolTip = missing ? "The date of the last calibration is recommended, but not required." : "";
}

void FWDTab::cboNumSensors_Click() {
    program_.Run.NumberSensors = static_cast<int>(ReadNumber(cboNumSensors.DisplayText()));
    Set(Document(), "Device Configuration", "NumberOfDeflectionSensors", cboNumSensors.DisplayText());
    ShowSensors();
    CheckFWDData();
}

void FWDTab::ShowSensors() {
    const CalibrationRun& run = program_.Run;
    grdSensor.SetHeadings({" No. ", "Serial Number  ", " Initial Gain"});
    const int firstNumber = run.Manufacturer == Make::Kuab ? 0 : 1;
    for (int s = 0; s < run.NumberSensors; ++s) {
        const auto& sensor = run.Sensor[static_cast<std::size_t>(s)];
        grdSensor.AddRow({NumberText(s + firstNumber), sensor.SerialNumber, Format(sensor.InitialGain, "0.0000")});
        grdSensor.SetEditable(s + 1, serialColumn, true);
        grdSensor.SetEditable(s + 1, gainColumn, true);
    }
}

void FWDTab::EditSensor(int row, int column, const std::string& text) {
    if (column == serialColumn) {
        if (HasComma(text)) return;
        grdSensor.SetCell(row, column, text);
    } else {
        const auto gain = NumberIn(text);
        if (!gain || *gain == 0) {
            program_.ShowBox(gain ? "Please type in a numeric Gain value.\r\nThe Gain cannot be zero."
                                  : "Please type in a valid Gain value.",
                             box::exclamation);
            return;
        }
        grdSensor.SetCell(row, column, Format(*gain, "0.0000"));
    }
    CheckFWDData();
}

}  // namespace bellmark
