// Checks of the FWD's tab: marks in colours and words what is missing or wrong, and decides whether the operator may go
// on.
#include <algorithm>

#include "app/program.h"
#include "controls/screen.h"
#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/trial.h"
#include "setup/folder_tree.h"
#include "setup/fwd_tab.h"

namespace bellmark {

namespace {

constexpr Color endsInHyphenColor{255, 224, 192};

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const auto& text : texts) joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

}  // namespace

bool FWDTab::CheckFWDData() {
    missing_.clear();
    // Every check runs, so that everything missing shows at once.
    bool complete = CheckCount();
    complete = CheckSensorCells() && complete;
    complete = CheckLoadCellGain() && complete;
    // Values that cannot be typed yet come with the configuration.
    if (!fraFWDData.Visible && !complete) missing_ = {"the FWD's configuration"};
    complete = CheckMake(complete) && complete;
    complete = CheckFolders() && complete;
    optFWD.BackColor = complete ? colors::complete : colors::mustBeUpdated;
    const std::string missing = missing_.empty() ? std::string() : "Still missing: " + Joined(missing_);
    lblMissing.Caption = missing + (missing.empty() || doubt_.empty() ? "" : ". ") + doubt_;
    LockWhatTrialsRestOn();
    SuggestNextStep(complete);
    if (Checked) Checked(complete);
    return complete;
}

void FWDTab::LockWhatTrialsRestOn() {
    const bool sensors = HasSensorTrials(program_.Run);
    const bool loadCell = HasLoadCellTrials(program_.Run);
    constexpr const char* why = "Trials were made with it: delete them in the results before it is changed.";
    const bool any = sensors || loadCell;
    if (any || cmdReadFWDConfig.ToolTip.Get() == why) {
        cmdReadFWDConfig.Enabled = !any;
        cmdReadFWDConfig.ToolTip = any ? why : "";
    }
    cboFWDMfg.Enabled = !any;
    cboFWDMfg.ToolTip = any ? why : "";
    cboNumSensors.Enabled = !sensors;
    cboNumSensors.ToolTip = sensors ? why : "";
    for (int row = grdSensor.FixedRows(); row < grdSensor.Rows(); ++row) {
        grdSensor.SetEditable(row, gainColumn, !sensors);
        if (sensors) grdSensor.SetCellToolTip(row, gainColumn, why);
    }
    txtFWDLCGain.Locked = loadCell;
    if (loadCell) txtFWDLCGain.ToolTip = why;
}

void FWDTab::SuggestNextStep(bool complete) {
    const CalibrationRun& run = program_.Run;
    const Button* next = run.OwnerFolder.empty()    ? &cmdNewOwner
                         : run.DeviceFolder.empty() ? &cmdNewFWD
                         : complete                 ? nullptr
                                                    : &cmdReadFWDConfig;
    for (Button* button : {&cmdNewOwner, &cmdNewFWD, &cmdReadFWDConfig}) {
        button->BackColor = button == next ? colors::suggestedNext : colors::buttonFace;
    }
}

bool FWDTab::CheckCount() {
    const int count = program_.Run.NumberSensors;
    // The list begins at six: an FWD of fewer sensors is known by its file.
    if (!cboNumSensors.ChooseText(NumberText(count))) cboNumSensors.ListIndex = -1;
    if (count > 0) return true;
    Missing("the number of sensors");
    return false;
}

bool FWDTab::CheckSensorCells() {
    CalibrationRun& run = program_.Run;
    std::vector<std::string> serialNumbers;
    std::vector<std::string> gainTexts;
    std::vector<double> gains;
    for (int row = grdSensor.FixedRows(); row < grdSensor.Rows(); ++row) {
        serialNumbers.push_back(grdSensor.Cell(row, serialColumn));
        const std::string& gain = grdSensor.Cell(row, gainColumn);
        gainTexts.push_back(gain.empty() ? "0.000" : Format(ReadNumber(gain), "0.0000"));
        gains.push_back(ReadNumber(gainTexts.back()));
    }
    const auto faults = CheckSensors(serialNumbers, gains);
    const auto any = [&](bool SensorFault::*fault) {
        return std::any_of(faults.begin(), faults.end(), [&](const SensorFault& found) { return found.*fault; });
    };
    for (std::size_t s = 0; s < faults.size(); ++s) {
        const int row = static_cast<int>(s) + grdSensor.FixedRows();
        const SensorFault& fault = faults[s];
        grdSensor.SetCellColor(row, serialColumn,
                               fault.sameName       ? colors::mustBeUpdated
                               : fault.endsInHyphen ? endsInHyphenColor
                                                    : colors::window);
        grdSensor.SetCellToolTip(row, serialColumn,
                                 fault.sameName       ? lblSameName.Caption
                                 : fault.endsInHyphen ? lblHyphen.Caption
                                                      : std::string());
        grdSensor.SetCellColor(row, gainColumn, fault.zeroGain ? colors::mustBeUpdated : colors::window);
        grdSensor.SetCellToolTip(row, gainColumn, fault.zeroGain ? "The gain of this sensor cannot be 0." : "");
        run.Sensor[s].SerialNumber = serialNumbers[s];
        run.Sensor[s].InitialGain = gains[s];
    }
    lblSameName.Visible = any(&SensorFault::sameName);
    lblHyphen.Visible = any(&SensorFault::endsInHyphen);
    if (lblSameName.Visible) Missing("a serial number of its own for each sensor");
    if (lblHyphen.Visible) Missing("a serial number without a hyphen at its end");
    if (any(&SensorFault::zeroGain)) Missing("the gain of each sensor");
    Document().Sections("Device Information").Elements("SensorSerialNumbers").SetValue(Joined(serialNumbers));
    Document().Sections("Device Calibration").Elements("SensorCalibrationCenterGain").SetValue(Joined(gainTexts));
    return std::none_of(faults.begin(), faults.end(), [](const SensorFault& fault) { return fault.Any(); });
}

bool FWDTab::CheckLoadCellGain() {
    const GainFault fault = CheckGain(txtFWDLCGain.Text.Get());
    txtFWDLCGain.BackColor = fault == GainFault::None ? colors::window : colors::mustBeUpdated;
    switch (fault) {
        case GainFault::None:
            txtFWDLCGain.ToolTip = "";
            return true;
        case GainFault::Zero:
            txtFWDLCGain.ToolTip = "The FWD Load Cell Gain cannot be 0.";
            break;
        case GainFault::NotANumber:
            txtFWDLCGain.ToolTip = "The FWD Load Cell Gain must be a number.";
            break;
    }
    Missing("the gain of the load cell");
    return false;
}

bool FWDTab::CheckMake(bool completeSoFar) {
    const bool chosen = cboFWDMfg.ListIndex >= 0;
    cboFWDMfg.BackColor = chosen ? colors::window : colors::mustBeUpdated;
    cmdReadFWDConfig.BackColor = chosen && !completeSoFar ? colors::suggestedNext : colors::buttonFace;
    if (!chosen) {
        cmdReadFWDConfig.Enabled = false;
        MissingFirst("the make of the FWD");
    }
    const bool lacksType = chosen && cboSensorType.Visible && cboSensorType.ListIndex < 0;
    if (lacksType) MissingFirst("the type of the KUAB's sensors");
    return chosen && !lacksType;
}

bool FWDTab::CheckFolders() {
    const std::string& unit = txtFWDUnitFolder.Text;
    const bool chosen = !unit.empty() && unit != createFolderText;
    txtFWDUnitFolder.BackColor = chosen ? colors::window : colors::mustBeUpdated;
    txtFWDUnitFolder.ToolTip = chosen ? "" : "Select or create the owner's folder and the FWD's folder.";
    if (!chosen) MissingFirst(program_.Run.DeviceOwner.empty() ? "the owner and the FWD's folder" : "the FWD's folder");
    if (chosen) program_.Run.DeviceName = PathText(program_.Run.DeviceFolder.filename());
    program_.Header.SetFWDOwnerName(program_.Run.DeviceOwner);
    program_.Header.SetFWDNameCtrl(program_.Run.DeviceName);
    return chosen;
}

}  // namespace bellmark
