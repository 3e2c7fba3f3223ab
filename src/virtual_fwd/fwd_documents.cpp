#include "virtual_fwd/fwd_documents.h"

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr const char* gainPicture = "0.0000";

void Set(PDDXFile& document, std::string_view section, std::string_view key, const std::string& value) {
    document.Sections(section).Elements(key).SetValue(value);
}

/// One item per sensor; item: called with the sensor's index.
template <class Item>
std::string SensorList(const VirtualFWD& fwd, const Item& item) {
    std::string list;
    for (std::size_t sensor = 0; sensor < fwd.sensors.size(); ++sensor) {
        if (sensor > 0) list += ", ";
        list += item(sensor);
    }
    return list;
}

void SetOperation(PDDXFile& document, const std::string& fileName, DateTime now) {
    const std::string section = "Operations Information";
    Set(document, section, "FileName", fileName);
    Set(document, section, "StartTime", Format(now, "hh:nn"));
    Set(document, section, "StartDate", Format(now, "dd-mmm-yyyy"));
    Set(document, section, "EndDate", Format(now, "dd-mmm-yyyy"));
    Set(document, section, "OperatorName", "F. Driver");
}

PDDXSection& AddLocation(PDDXFile& document, const std::string& comment, DateTime now) {
    PDDXSection& location = document.AddTestLocation(0);
    location.Elements("TestLocation").SetValue("0,0,0");
    location.Elements("TestTime").SetValue(Format(now, "hh:nn:ss"));
    location.Elements("TestComment").SetValue(comment);
    return location;
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
    reading.microns = DeflectionReadings(truePounds, fwd.sensors.size(), random);
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
    Set(document, information, "DeviceDesignationName", std::string(fwd.make.designation));
    Set(document, information, "DeviceModelNumber", "8002");
    Set(document, information, "DeviceSerialNumber", fwd.serialNumber);
    Set(document, information, "LoadCellSerialNumber", "LC-8002");
    Set(document, information, "SensorSerialNumbers",
        SensorList(fwd, [&](auto sensor) { return fwd.sensors[sensor].serialNumber; }));
    Set(document, information, "DeviceLoadType", "Impulse");

    const std::string configuration = "Device Configuration";
    Set(document, configuration, "LoadPlateRadius", NumberText(fwd.loads.radius));
    Set(document, configuration, "NumberOfDeflectionSensors", NumberText(fwd.sensors.size()));
    Set(document, configuration, "DeflectionSensorXAxisDistances",
        SensorList(fwd, [](auto sensor) { return NumberText(sensorDistances[sensor]); }));
    Set(document, configuration, "DeflectionSensorYAxisDistances", SensorList(fwd, [](auto) { return "0"; }));

    const std::string calibration = "Device Calibration";
    const std::string lastCalibration = Format(now - std::chrono::days(365), "dd-mmm-yyyy");
    Set(document, calibration, "LoadCellCalibrationCenterDate", lastCalibration);
    Set(document, calibration, "LoadCellCalibrationCenterGain", Format(fwd.loadCell.initialGain, gainPicture));
    Set(document, calibration, "SensorCalibrationCenterDate", lastCalibration);
    Set(document, calibration, "SensorCalibrationCenterGain",
        SensorList(fwd, [&](auto sensor) { return Format(fwd.sensors[sensor].initialGain, gainPicture); }));
}

std::string ConfigurationText(const VirtualFWD& fwd, DateTime now) {
    PDDXFile document;
    SetOperation(document, "Configuration", now);
    SetDeviceKeys(document, fwd, now);
    return TextOf(document);
}

std::string TrialText(const VirtualFWD& fwd, const FWDTrial& trial, DateTime now) {
    PDDXFile document;
    SetOperation(document, trial.name, now);
    SetDeviceKeys(document, fwd, now);
    const std::size_t dropsOfLocation = trial.drops.size() / static_cast<std::size_t>(trial.locations);
    PDDXSection* location = nullptr;
    for (std::size_t drop = 0; drop < trial.drops.size(); ++drop) {
        if (drop % dropsOfLocation == 0) location = &AddLocation(document, trial.comment, now);
        location->AddDropData(0).SetValue(DropLine(fwd, trial.drops[drop]));
    }
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
