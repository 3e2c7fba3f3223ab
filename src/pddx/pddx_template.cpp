#include "pddx/pddx_template.h"

namespace bellmark {

namespace {

using enum PDDXDataType;

constexpr PDDXTemplateKey exchangeFileKeys[] = {
    {"PDDXVersionNumber", Number, "1.0"},
    {"DelimiterSymbol", Text, ","},
    {"DecimalSymbol", Text, "."},
};

constexpr PDDXTemplateKey operationsInformationKeys[] = {
    {"FileName", Text}, {"StartTime", TimeOfDay}, {"EndTime", TimeOfDay},     {"StartDate", Date},
    {"EndDate", Date},  {"OperatorName", Text},   {"WeatherCondition", Text},
};

constexpr PDDXTemplateKey unitsKeys[] = {
    {"LoadPlateRadiusUnits", UnitName}, {"LoadUnits", UnitName},
    {"DeflectionUnits", UnitName},      {"TemperatureUnits", UnitName},
    {"SensorsLocationUnits", UnitName}, {"GPSUnits", UnitName},
    {"TestLocationUnits", UnitName},    {"NominalTestSpacingUnits", UnitName},
    {"LoadFrequencyUnits", UnitName},   {"DropHistoryDataFrequencyUnits", UnitName},
};

constexpr PDDXTemplateKey deviceInformationKeys[] = {
    {"DeviceDesignationName", Text}, {"DeviceModelNumber", Text},   {"DeviceSerialNumber", Text},
    {"LoadCellSerialNumber", Text},  {"SensorSerialNumbers", Text}, {"DeviceLoadType", Text},
};

constexpr PDDXTemplateKey deviceConfigurationKeys[] = {
    {"LoadPlateRadius", Number},
    {"NumberOfDeflectionSensors", Number, "0"},
    {"DeflectionSensorXAxisDistances", Number},
    {"DeflectionSensorYAxisDistances", Number},
    {"NumberOfTemperatureSensors", Number},
    {"TemperatureSensorUse", Text},
    {"LoadFrequency", Number},
};

constexpr PDDXTemplateKey deviceCalibrationKeys[] = {
    {"LoadCellCalibrationDate", Date},
    {"LoadCellCalibrationFactor", Number},
    {"LoadCellDynamicCalibrationDate", Number},  // a date, yet always stored as a number
    {"LoadCellDynamicCalibrationFactor", Number},
    {"LoadCellCalibrationCenterDate", Date},
    {"LoadCellCalibrationCenterGain", Number},
    {"LoadCellCalibrationIntercept", Number},
    {"SensorStaticCalibrationDate", Date},
    {"SensorStaticCalibrationFactor", Number},
    {"SensorDynamicCalibrationDate", Date},
    {"SensorDynamicCalibrationFactor", Number},
    {"SensorReferenceCalibrationDate", Date},
    {"SensorReferenceCalibrationFactor", Number},
    {"SensorRelativeCalibrationDate", Date},
    {"SensorRelativeCalibrationFactor", Number},
    {"SensorCalibrationCenterDate", Date},
    {"SensorCalibrationCenterGain", Number},
    {"DMIDeviceCalibrationDate", Date},
    {"DMIDeviceCalibrationFactor", Number},
    {"NumberCalibrations", Number},
};

constexpr PDDXTemplateKey locationIdentificationKeys[] = {
    {"SiteName", Text},          {"FacilityName", Text}, {"SectionName", Text},
    {"DirectionOfTravel", Text}, {"PavementType", Text},
};

constexpr PDDXTemplateKey deflectionDataKeys[] = {
    {"NumberOfTestLocations", Number},
    {"NominalTestPattern", Text},
    {"NominalTestSpacing", Number},
    {"DropHistoryDataFrequency", Number},
    {"NumberOfDropHistoryDataSamples", Number},
};

constexpr PDDXTemplateKey calibrationCenterKeys[] = {
    {"VersionNumber", Text},
    {"CalibrationCenter", Text},
    {"CalCenterIDCode", Number},
    {"CalibrationCenterOperator", Text},
    {"SignalConditionerSerialNumber", Text},
    {"AtoDBoardSerialNumber", Text},
    {"ReferenceLoadCellName", Text},
    {"ReferenceLoadCellCalibrationDate", Date},
    {"ReferenceLoadCellExcitationVolts", Number},
    {"ReferenceLoadCellGain", Number},
    {"ReferenceLoadCell+BVoltage", Number},
    {"ReferenceLoadCell-BVoltage", Number},
    {"ReferenceLoadCell+AVoltage", Number},
    {"ReferenceLoadCell-AVoltage", Number},
    {"ReferenceLoadCellUnbalancedZero", Number},
    {"ReferenceLoadCellUnits", UnitName},
    {"ReferenceLoadCellCalibrationCoefficients", Number},
    {"ReferenceLoadCellSensitivity", Number},
    {"ShuntCalibrationMultiplier", Number},
    {"UniversalTestMachineName", Text},
    {"UniversalCalibrationDate", Date},
    {"UniversalCalibrationCoefficients", Number},
    {"AccelerometerSerialNumber", Text},
    {"AccelerometerModelNumber", Text},
    {"AccelReferenceCalibrationDate", Date},
    {"AccelRef+1GDC", Number},
    {"AccelRef-1GDC", Number},
    {"AccelRefCalibrationCoefficients", Number},
    {"AccelDailyCalibrationDate", Date},
    {"AccelDailyCalibrationTime", TimeOfDay},
    {"AccelDailyCalibrationTemperatureUnit", UnitName},
    {"AccelDailyCalibrationTemp", Number},
    {"AccelExcitationVolts", Number},
    {"AccelGain", Number},
    {"AccelNewSlopeFactor", Text},
    {"AccelOldSlopeFactor", Text},
    {"AccelDailyCalibration+1GVoltage", Text},
    {"AccelDailyCalibration-1GVoltage", Text},
    {"AccelDailyCalibration+1GFlipVoltage", Text},
    {"AccelSensitivity", Text},
    {"LocationOfFWDDataTransfer", Text},
    {"EnglishUnits", Text},
    {"TypeOfCalibration", Text},
    {"Notes", Text},
};

constexpr PDDXTemplateKey testLocationKeys[] = {
    {"TestLocation", Number}, {"GPSLocation", Number},   {"TestLane", Text},
    {"TestType", Text},       {"DropHistoryType", Text}, {"TestTemperatures", Number},
    {"TestTime", TimeOfDay},  {"TestComment", Text},     {"NumberOfDrops", Number, "0"},
};

constexpr PDDXTemplateKey bellmarkHistoryKeys[] = {
    {"LoadCellSerialNumber", Text},          {"LoadCellCalibrationFactor", Number},
    {"LoadCellCalibrationCenterDate", Date}, {"LoadCellCalibrationCenterGain", Number},
    {"NumberOfDeflectionSensors", Number},   {"SensorCalibrationCenterDate", Date},
    {"SensorSerialNumbers", Text},           {"SensorReferenceCalibrationFactor", Number},
    {"SensorCalibrationCenterGain", Number}, {"CalCenterIDCode", Number},
};

constexpr PDDXTemplateSection sections[] = {
    {"Pavement Deflection Data Exchange File", "desc", exchangeFileKeys},
    {"Operations Information", "blah", operationsInformationKeys},
    {"Units", "blah", unitsKeys},
    {"Device Information", "blah", deviceInformationKeys},
    {"Device Configuration", "blah", deviceConfigurationKeys},
    {"Device Calibration", "blah", deviceCalibrationKeys},
    {"Location Identification", "blah", locationIdentificationKeys},
    {"Deflection Data", "blah", deflectionDataKeys},
    {"FWD Calibration Center", "blah", calibrationCenterKeys},
};

}  // namespace

std::span<const PDDXTemplateSection> PDDXTemplate() {
    return sections;
}
std::span<const PDDXTemplateKey> TestLocationKeys() {
    return testLocationKeys;
}
std::span<const PDDXTemplateKey> BellmarkHistoryKeys() {
    return bellmarkHistoryKeys;
}

}  // namespace bellmark
