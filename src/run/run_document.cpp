#include "run/run_document.h"

#include <algorithm>

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "run/stored_values.h"
#include "run/version.h"

namespace bellmark {

namespace {

constexpr int mostDrops = static_cast<int>(maxDrops);

/// Finds a maker's name in the name of the device; the last one found counts.
void TakeMakeFrom(const std::string& deviceName, Make& make) {
    constexpr std::pair<const char*, Make> makers[] = {
        {"Dynatest", Make::Dynatest}, {"Carl", Make::CarlBro}, {"JILS", Make::Jils}, {"KUAB", Make::Kuab}};
    for (const auto& [name, ofName] : makers) {
        if (deviceName.find(name) != std::string::npos) make = ofName;
    }
}

/// A text that is not a date leaves the date unchanged.
void TakeDate(DateTime& date, const std::string& text) {
    if (const auto read = ReadDateTime(text)) date = *read;
}

std::string DateText(DateTime date) {
    return date == ZeroDate() ? std::string() : Format(date, "dd-mmm-yyyy");
}

/// One text per sensor, joined by ", ".
template <class TextOf>
std::string SensorList(const CalibrationRun& run, TextOf textOf) {
    std::string list;
    for (int s = 0; s < run.NumberSensors; ++s) {
        if (s > 0) list += ", ";
        list += textOf(run.Sensor.at(static_cast<std::size_t>(s)));
    }
    return list;
}

void SetDevice(PDDXFile& document, const CalibrationRun& run) {
    PDDXSection& device = document.Sections("Device Information");
    device.Elements("DeviceDesignationName").SetValue(run.DeviceDesignationName);
    device.Elements("DeviceModelNumber").SetValue(run.DeviceModelNumber);
    device.Elements("DeviceSerialNumber").SetValue(run.DeviceSerialNumber);
    device.Elements("LoadCellSerialNumber").SetValue(run.LoadCellSerialNumber);
    device.Elements("SensorSerialNumbers").SetValue(SensorSerialNumbers(run));
    document.Sections("Device Configuration")
        .Elements("NumberOfDeflectionSensors")
        .SetValue(NumberText(run.NumberSensors));
}

void SetGains(PDDXFile& document, const CalibrationRun& run, DateTime now, DocumentGains gains) {
    PDDXSection& calibration = document.Sections("Device Calibration");
    const bool newLoadCell = gains == DocumentGains::Accepted && run.LoadCellCalComplete;
    const bool newSensors = gains == DocumentGains::Accepted && run.SensorRelCalComplete;
    calibration.Elements("LoadCellCalibrationCenterGain")
        .SetValue(GainText(run, newLoadCell ? run.NewLoadCellCalibrationCenterGain : run.LoadCellInitialGain));
    calibration.Elements("SensorCalibrationCenterGain")
        .SetValue(SensorGains(run, newSensors ? &SensorCalRecord::FinalGain : &SensorCalRecord::InitialGain));
    calibration.Elements("LoadCellCalibrationCenterDate")
        .SetValue(DateText(newLoadCell ? now : run.LoadCellCalibrationDate));
    calibration.Elements("SensorCalibrationCenterDate")
        .SetValue(DateText(newSensors ? now : run.SensorCalibrationDate));
}

}  // namespace

std::string GainText(const CalibrationRun& run, double gain) {
    return Format(gain, run.Manufacturer == Make::CarlBro ? "#0.00000000" : "#0.0000");
}

std::string SensorSerialNumbers(const CalibrationRun& run) {
    return SensorList(run, [](const SensorCalRecord& sensor) { return sensor.SerialNumber; });
}

std::string SensorGains(const CalibrationRun& run, double SensorCalRecord::*gain) {
    return SensorList(run, [&](const SensorCalRecord& sensor) { return GainText(run, sensor.*gain); });
}

void ReadFWDKeys(const PDDXFile& document, CalibrationRun& run) {
    const PDDXSection& device = document.Sections("Device Information");
    const PDDXSection& calibration = document.Sections("Device Calibration");
    run.OperatorName = document.Sections("Operations Information").Elements("OperatorName").Value();
    run.DeviceDesignationName = device.Elements("DeviceDesignationName").Value();
    TakeMakeFrom(run.DeviceDesignationName, run.Manufacturer);
    // Until a folder of the FWD is chosen, its own name is used.
    if (run.DeviceFolder.empty()) run.DeviceName = run.DeviceDesignationName;
    run.DeviceModelNumber = device.Elements("DeviceModelNumber").Value();
    run.DeviceSerialNumber = device.Elements("DeviceSerialNumber").Value();
    run.DeviceLoadType = device.Elements("DeviceLoadType").Value();
    run.LoadCellInitialGain = StoredGain(calibration.Elements("LoadCellCalibrationCenterGain").Value());
    run.LoadCellSerialNumber = Trim(device.Elements("LoadCellSerialNumber").Value());
    TakeDate(run.LoadCellCalibrationDate, calibration.Elements("LoadCellCalibrationCenterDate").Value());
    const int sensors =
        PDDXCount(document.Sections("Device Configuration").Elements("NumberOfDeflectionSensors").Value());
    run.NumberSensors = std::clamp(sensors, 0, static_cast<int>(maxSensors));
    for (int sensor = 1; sensor <= run.NumberSensors; ++sensor) {
        SensorCalRecord& record = run.Sensor[static_cast<std::size_t>(sensor - 1)];
        record.SerialNumber = Trim(GetListField(sensor, device.Elements("SensorSerialNumbers").Value()));
        record.InitialGain =
            StoredGain(GetListField(sensor, calibration.Elements("SensorCalibrationCenterGain").Value()));
    }
    TakeDate(run.SensorCalibrationDate, calibration.Elements("SensorCalibrationCenterDate").Value());
}

void SaveBellmarkDDX(PDDXFile& document, const CalibrationRun& run, const CenterConfig& center, const Path& file,
                     DateTime now, DocumentGains gains) {
    PDDXSection& header = document.Sections("Pavement Deflection Data Exchange File");
    header.Elements("PDDXVersionNumber").SetValue(center.PDDXVersionNumber);
    header.Elements("DelimiterSymbol").SetValue(center.DelimiterSymbol);
    header.Elements("DecimalSymbol").SetValue(center.DecimalSymbol);
    PDDXSection& operations = document.Sections("Operations Information");
    operations.Elements("FileName").SetValue(PathText(file));
    operations.Elements("EndTime").SetValue(Format(now, "hh:nn"));
    operations.Elements("EndDate").SetValue(Format(now, "mm-dd-yyyy"));
    operations.Elements("OperatorName").SetValue(run.OperatorName);
    SetDevice(document, run);
    SetGains(document, run, now, gains);
    PDDXSection& centerKeys = document.Sections(centerSection);
    centerKeys.Elements("VersionNumber").SetValue(VersionText());
    centerKeys.Elements("CalibrationCenter").SetValue(center.CalibrationCenter);
    centerKeys.Elements("CalCenterIDCode").SetValue(NumberText(center.CalCenterIDCode));
    centerKeys.Elements("CalibrationCenterOperator").SetValue(center.CalibrationCenterOperator);
    centerKeys.Elements("TypeOfCalibration").SetValue("Annual");
}

void UpdateWarmUp(PDDXFile& document, const CalibrationRun& run, const CenterConfig& center, DateTime now) {
    constexpr const char* voltage = "#0.00000";
    PDDXSection& operations = document.Sections("Operations Information");
    operations.Elements("EndTime").SetValue(Format(now, "hh:nn:ss"));
    operations.Elements("EndDate").SetValue(Format(now, "dd-mmm-yyyy"));
    PDDXSection& keys = document.Sections(centerSection);
    keys.Elements("AccelDailyCalibrationDate").SetValue(Format(center.AccelDailyCalibrationDate, "dd-mmm-yyyy"));
    keys.Elements("AccelDailyCalibrationTime").SetValue(Format(center.AccelDailyCalibrationTime, "hh:mm:ss"));
    keys.Elements("AccelDailyCalibration+1GVoltage")
        .SetValue(Format(center.AccelDailyCalibrationPlus1GVoltage, voltage));
    keys.Elements("AccelDailyCalibration-1GVoltage")
        .SetValue(Format(center.AccelDailyCalibrationMinus1GVoltage, voltage));
    keys.Elements("AccelDailyCalibration+1GFlipVoltage")
        .SetValue(Format(center.AccelDailyCalibrationPlus1GFlipVoltage, voltage));
    keys.Elements("AccelDailyCalibrationTemp").SetValue(Format(center.AccelDailyCalibrationTemp, "#0.00"));
    keys.Elements("AccelDailyCalibrationTemperatureUnit").SetValue(center.AccelDailyCalibrationTemperatureUnit);
    keys.Elements("AccelNewSlopeFactor").SetValue(Format(center.AccelNewSlopeFactor, "#0.00000"));

    PDDXSection& calibration = document.Sections("Device Calibration");
    const std::string today = Format(now, "dd-mmm-yyyy");
    if (run.NewLoadCellCalibrationCenterGain != 0) {
        calibration.Elements("LoadCellCalibrationCenterGain")
            .SetValue(Format(run.NewLoadCellCalibrationCenterGain, "#0.00000000"));
        calibration.Elements("LoadCellCalibrationCenterDate").SetValue(today);
    }
    if (run.Sensor[0].FinalGain != 0) {
        calibration.Elements("SensorCalibrationCenterGain").SetValue(SensorList(run, [](const auto& sensor) {
            return NumberText(sensor.FinalGain);
        }));
        calibration.Elements("SensorCalibrationCenterDate").SetValue(today);
    }
}

void ReadSequenceKeys(const ProfileStrings& strings, CalibrationRun& run) {
    const int levels = StoredWhole(strings.Get(centerSection, "NumberLoadLevels"), 0, static_cast<int>(maxHeights));
    const int drops = StoredWhole(strings.Get(centerSection, "NumberDropsPerLoadLevel"), 0, mostDrops);
    if (levels > 0) run.NumberLoadLevels = levels;
    if (drops > 0) run.NumberDropsPerLoadLevel = drops;
    run.NumberDropsPerLoadLevel = std::min(run.NumberDropsPerLoadLevel, mostDrops / run.NumberLoadLevels);
}

}  // namespace bellmark
