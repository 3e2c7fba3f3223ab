#include "virtual_fwd/fwd_documents.h"

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr double badReadingFactor = 1.05;
constexpr const char* gainPicture = "0.0000";

void Set(PDDXFile& document, std::string_view section, std::string_view key, const std::string& value) {
    document.Sections(section).Elements(key).SetValue(value);
}

/// One item a sensor, numbered from 1.
template <class Item>
std::string SensorList(const Item& item) {
    std::string list;
    for (std::size_t sensor = 1; sensor <= sensorDistances.size(); ++sensor) {
        if (sensor > 1) list += ", ";
        list += item(sensor);
    }
    return list;
}

void SetOperation(PDDXFile& document, const std::string& fileName, DateTime now) {
    const std::string section = "Operations Information";
    Set(document, section, "FileName", fileName);
    Set(document, section, "StartTime", Format(now, "hh:nn"));
    Set(document, section, "StartDate", Format(now, "dd-mmm-yyyy"));
    Set(document, section, "OperatorName", "F. Driver");
}

std::string DropLine(const VirtualFWD& fwd, const DropReading& drop) {
    std::string line = ResolutionText(drop.pounds * fwd.loads.unitsPerPound, fwd.loads.resolution);
    for (const double microns : drop.microns)
        line += ',' + ResolutionText(microns * fwd.deflections.unitsPerMicron, fwd.deflections.resolution);
    return line;
}

std::string TextOf(const PDDXFile& document) {
    std::string text;
    document.PDDX_Output(text);
    return text;
}

}  // namespace

DropReading ReadDrop(const VirtualFWD& fwd, const DropNumber& number, double truePounds, Random& random) {
    DropReading reading;
    reading.pounds = LoadReading(fwd.loadCell, truePounds, random);
    reading.microns = DeflectionReadings(truePounds, random);
    if (fwd.badReadings.count(number) > 0) reading.pounds *= badReadingFactor;
    return reading;
}

void SetDeviceKeys(PDDXFile& document, const VirtualFWD& fwd, DateTime now) {
    const std::string units = "Units";
    Set(document, units, "LoadPlateRadiusUnits", std::string(fwd.loads.radiusUnits));
    Set(document, units, "LoadUnits", std::string(fwd.loads.loadUnits));
    Set(document, units, "DeflectionUnits", std::string(fwd.deflections.name));
    Set(document, units, "SensorsLocationUnits", "millimeter");

    const std::string information = "Device Information";
    Set(document, information, "DeviceDesignationName", fwd.designation);
    Set(document, information, "DeviceModelNumber", "8002");
    Set(document, information, "DeviceSerialNumber", fwd.serialNumber);
    Set(document, information, "LoadCellSerialNumber", "LC-8002");
    Set(document, information, "SensorSerialNumbers", SensorList([](auto sensor) { return 'D' + NumberText(sensor); }));
    Set(document, information, "DeviceLoadType", "Impulse");

    const std::string configuration = "Device Configuration";
    Set(document, configuration, "LoadPlateRadius", NumberText(fwd.loads.radius));
    Set(document, configuration, "NumberOfDeflectionSensors", NumberText(sensorDistances.size()));
    Set(document, configuration, "DeflectionSensorXAxisDistances",
        SensorList([](auto sensor) { return NumberText(sensorDistances[sensor - 1]); }));
    Set(document, configuration, "DeflectionSensorYAxisDistances", SensorList([](auto) { return "0"; }));

    const std::string calibration = "Device Calibration";
    const std::string lastCalibration = Format(now - std::chrono::days(365), "dd-mmm-yyyy");
    Set(document, calibration, "LoadCellCalibrationCenterDate", lastCalibration);
    Set(document, calibration, "LoadCellCalibrationCenterGain", Format(fwd.loadCell.initialGain, gainPicture));
    Set(document, calibration, "SensorCalibrationCenterDate", lastCalibration);
    Set(document, calibration, "SensorCalibrationCenterGain", SensorList([](auto) { return Format(1, gainPicture); }));
}

std::string ConfigurationText(const VirtualFWD& fwd, DateTime now) {
    PDDXFile document;
    SetOperation(document, "Configuration", now);
    SetDeviceKeys(document, fwd, now);
    return TextOf(document);
}

std::string TrialText(const VirtualFWD& fwd, int trial, const std::vector<DropReading>& drops, DateTime now) {
    PDDXFile document;
    SetOperation(document, "Trial" + NumberText(trial), now);
    SetDeviceKeys(document, fwd, now);
    PDDXSection& location = document.AddTestLocation(0);
    location.Elements("TestLocation").SetValue("0,0,0");
    location.Elements("TestTime").SetValue(Format(now, "hh:nn:ss"));
    location.Elements("TestComment").SetValue("Load cell calibration, trial " + NumberText(trial));
    for (const DropReading& drop : drops) location.AddDropData(0).SetValue(DropLine(fwd, drop));
    return TextOf(document);
}

std::string TrueGainsText(const VirtualFWD& fwd) {
    const FWDLoadCell& cell = fwd.loadCell;
    std::string text;
    const auto add = [&](std::string_view name, std::string_view value) {
        text.append(name).append("=").append(value).append("\r\n");
    };
    add("TrueGain", NumberText(cell.trueGain));
    add("InitialGain", NumberText(cell.initialGain));
    add("Scatter", NumberText(cell.scatter));
    add("OffsetPounds", NumberText(cell.offsetPounds));
    add("LoadUnits", fwd.loads.loadUnits);
    add("Resolution", NumberText(fwd.loads.resolution));
    for (const DropNumber& number : fwd.badReadings)
        add("BadReading." + DropNumberText(number), NumberText(badReadingFactor));
    return text;
}

}  // namespace bellmark::virtual_fwd
