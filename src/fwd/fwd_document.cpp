#include "fwd/fwd_document.h"

#include <algorithm>

#include "pddx/pddx_file.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/stored_values.h"

namespace bellmark {

namespace {

constexpr const char* firstLocation = "Test Location 1";
constexpr const char* information = "Device Information";
constexpr const char* configuration = "Device Configuration";
constexpr const char* calibration = "Device Calibration";
constexpr const char* operations = "Operations Information";

std::string TrimmedField(const std::string& list, int field) {
    return std::string(Trim(GetListField(field, list)));
}

double NumberField(const std::string& list, int field) {
    return StoredNumber(ZeroIfEmpty(TrimmedField(list, field)));
}

}  // namespace

/// Empty for a section or key missing from the document.
std::string FWDDocument::Value(std::string_view section, std::string_view key) const {
    if (!document_.Sections().Contains(section)) return {};
    const auto& elements = document_.Sections(section).Elements();
    return elements.Contains(key) ? elements.At(key).Value() : std::string();
}

int FWDDocument::Locations() const {
    return PDDXCount(Value("Deflection Data", "NumberOfTestLocations"));
}

int FWDDocument::Drops() const {
    return PDDXCount(Value(firstLocation, "NumberOfDrops"));
}

int FWDDocument::Sensors() const {
    const std::string list = Value(information, "SensorSerialNumbers");
    return Trim(list).empty() ? 0 : static_cast<int>(std::count(list.begin(), list.end(), ',')) + 1;
}

int FWDDocument::DeflectionSensors() const {
    return PDDXCount(Value(configuration, "NumberOfDeflectionSensors"));
}

std::vector<std::string> FWDDocument::DropFields(int location, int drop) const {
    const std::string list = Value("Test Location " + NumberText(location), "DropData_" + NumberText(drop));
    std::vector<std::string> fields = Split(CompressBlanks(list), ',');
    for (std::string& field : fields) field = Trim(field);
    return fields;
}

std::string FWDDocument::DeviceSerialNumber() const {
    return std::string(Trim(Value(information, "DeviceSerialNumber")));
}

std::string FWDDocument::OperatorName() const {
    return std::string(Trim(Value(operations, "OperatorName")));
}

std::string FWDDocument::EndDate() const {
    return std::string(Trim(Value(operations, "EndDate")));
}

std::string FWDDocument::LoadCellSerialNumber() const {
    return std::string(Trim(Value(information, "LoadCellSerialNumber")));
}

std::string FWDDocument::SensorSerialNumber(int sensor) const {
    return TrimmedField(Value(information, "SensorSerialNumbers"), sensor);
}

double FWDDocument::LoadCellGain() const {
    return StoredGain(ZeroIfEmpty(TrimmedField(Value(calibration, "LoadCellCalibrationCenterGain"), 1)));
}

double FWDDocument::SensorGain(int sensor) const {
    return StoredGain(ZeroIfEmpty(TrimmedField(Value(calibration, "SensorCalibrationCenterGain"), sensor)));
}

FWDUnits FWDDocument::Units() const {
    const auto word = [&](const char* key) { return std::string(Trim(Value("Units", key))); };
    return {word("LoadUnits"), word("DeflectionUnits"), word("LoadPlateRadiusUnits"),
            NumberField(Value(configuration, "LoadPlateRadius"), 1)};
}

}  // namespace bellmark
