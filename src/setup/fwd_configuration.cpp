#include "setup/fwd_configuration.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/mod_shared.h"
#include "app/stored_values.h"
#include "pddx/pddx_file.h"
#include "platform/date_time.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr const char* information = "Device Information";
constexpr const char* calibration = "Device Calibration";

const std::string& ValueOf(const PDDXFile& document, const char* section, const char* handle) {
    return document.Sections(section).Elements(handle).Value();
}

void TakeDate(DateTime& date, const std::string& text) {
    if (const auto read = ReadDateTime(text)) date = *read;
}

std::string TrimmedField(int index, const std::string& list) {
    return std::string(Trim(GetListField(index, list)));
}

}  // namespace

void SetManufacturerByName(CalibrationRun& run, const std::string& deviceName) {
    constexpr std::array<std::pair<const char*, Make>, 4> makers{
        {{"Dynatest", Make::Dynatest}, {"Carl", Make::CarlBro}, {"JILS", Make::Jils}, {"KUAB", Make::Kuab}}};
    for (const auto& [word, make] : makers) {
        if (deviceName.find(word) != std::string::npos) run.Manufacturer = make;
    }
}

void TakeFWDConfiguration(CalibrationRun& run, const PDDXFile& document) {
    run.OperatorName = ValueOf(document, "Operations Information", "OperatorName");
    run.DeviceDesignationName = ValueOf(document, information, "DeviceDesignationName");
    SetManufacturerByName(run, run.DeviceDesignationName);
    run.DeviceModelNumber = ValueOf(document, information, "DeviceModelNumber");
    run.DeviceSerialNumber = ValueOf(document, information, "DeviceSerialNumber");
    run.DeviceLoadType = ValueOf(document, information, "DeviceLoadType");
    run.LoadCellInitialGain = StoredNumber(ValueOf(document, calibration, "LoadCellCalibrationCenterGain"));
    run.LoadCellSerialNumber = std::string(Trim(ValueOf(document, information, "LoadCellSerialNumber")));
    TakeDate(run.LoadCellCalibrationDate, ValueOf(document, calibration, "LoadCellCalibrationCenterDate"));
    run.NumberSensors = StoredWhole(ValueOf(document, "Device Configuration", "NumberOfDeflectionSensors"), 0,
                                    static_cast<int>(maxSensors));
    const std::string& serialNumbers = ValueOf(document, information, "SensorSerialNumbers");
    const std::string& gains = ValueOf(document, calibration, "SensorCalibrationCenterGain");
    for (int s = 0; s < run.NumberSensors; ++s) {
        auto& sensor = run.Sensor[static_cast<std::size_t>(s)];
        sensor.SerialNumber = TrimmedField(s + 1, serialNumbers);
        sensor.InitialGain = StoredNumber(TrimmedField(s + 1, gains));
    }
    TakeDate(run.SensorCalibrationDate, ValueOf(document, calibration, "SensorCalibrationCenterDate"));
}

}  // namespace bellmark
