#include "app/run_document.h"

#include <algorithm>

#include "app/center_keys.h"
#include "app/mod_shared.h"
#include "app/stored_values.h"
#include "pddx/pddx_file.h"
#include "platform/profile_strings.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr int mostDrops = static_cast<int>(maxDrops);

/// A maker's name in the name of the device; the last one that is found counts.
void TakeMakeFrom(const std::string& deviceName, Make& make) {
    constexpr std::pair<const char*, Make> makers[] = {
        {"Dynatest", Make::Dynatest}, {"Carl", Make::CarlBro}, {"JILS", Make::Jils}, {"KUAB", Make::Kuab}};
    for (const auto& [name, ofName] : makers) {
        if (deviceName.find(name) != std::string::npos) make = ofName;
    }
}

/// What is no date leaves the one that is there.
void TakeDate(DateTime& date, const std::string& text) {
    if (const auto read = ReadDateTime(text)) date = *read;
}

}  // namespace

void ReadFWDKeys(const PDDXFile& document, CalibrationRun& run) {
    const PDDXSection& device = document.Sections("Device Information");
    const PDDXSection& calibration = document.Sections("Device Calibration");
    run.OperatorName = document.Sections("Operations Information").Elements("OperatorName").Value();
    run.DeviceDesignationName = device.Elements("DeviceDesignationName").Value();
    TakeMakeFrom(run.DeviceDesignationName, run.Manufacturer);
    // Until a folder of the FWD is chosen it goes by the name that it has itself.
    if (run.DeviceFolder.empty()) run.DeviceName = run.DeviceDesignationName;
    run.DeviceModelNumber = device.Elements("DeviceModelNumber").Value();
    run.DeviceSerialNumber = device.Elements("DeviceSerialNumber").Value();
    run.DeviceLoadType = device.Elements("DeviceLoadType").Value();
    run.LoadCellInitialGain = StoredNumber(calibration.Elements("LoadCellCalibrationCenterGain").Value());
    run.LoadCellSerialNumber = Trim(device.Elements("LoadCellSerialNumber").Value());
    TakeDate(run.LoadCellCalibrationDate, calibration.Elements("LoadCellCalibrationCenterDate").Value());
    const int sensors =
        PDDXCount(document.Sections("Device Configuration").Elements("NumberOfDeflectionSensors").Value());
    run.NumberSensors = std::clamp(sensors, 0, static_cast<int>(maxSensors));
    for (int sensor = 1; sensor <= run.NumberSensors; ++sensor) {
        SensorCalRecord& record = run.Sensor[static_cast<std::size_t>(sensor - 1)];
        record.SerialNumber = Trim(GetListField(sensor, device.Elements("SensorSerialNumbers").Value()));
        record.InitialGain =
            StoredNumber(GetListField(sensor, calibration.Elements("SensorCalibrationCenterGain").Value()));
    }
    TakeDate(run.SensorCalibrationDate, calibration.Elements("SensorCalibrationCenterDate").Value());
}

void ReadSequenceKeys(const ProfileStrings& strings, CalibrationRun& run) {
    const int levels = StoredWhole(strings.Get(centerSection, "NumberLoadLevels"), 0, static_cast<int>(maxHeights));
    const int drops = StoredWhole(strings.Get(centerSection, "NumberDropsPerLoadLevel"), 0, mostDrops);
    if (levels > 0) run.NumberLoadLevels = levels;
    if (drops > 0) run.NumberDropsPerLoadLevel = drops;
    run.NumberDropsPerLoadLevel = std::min(run.NumberDropsPerLoadLevel, mostDrops / run.NumberLoadLevels);
}

}  // namespace bellmark
