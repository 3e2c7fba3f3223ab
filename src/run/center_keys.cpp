#include "run/center_keys.h"

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/stored_values.h"
#include "run/version.h"

namespace bellmark {

namespace {

constexpr const char* headerSection = "Pavement Deflection Data Exchange File";
constexpr const char* operationsSection = "Operations Information";
constexpr std::size_t writtenNotes = 10;

/// The elements of the document's center section by their values.
class CenterElements {
  public:
    explicit CenterElements(const PDDXFile& document) : section_(document.Sections(centerSection)) {}
    const std::string& Text(const char* key) const { return section_.Elements(key).Value(); }
    double Number(const char* key) const { return StoredNumber(Text(key)); }
    DateTime Date(const char* key) const { return StoredDate(ZeroIfEmpty(Text(key))); }
    template <std::size_t Count>
    void Numbers(const char* key, std::array<double, Count>& numbers) const {
        for (std::size_t i = 0; i < Count; ++i)
            numbers[i] = StoredNumber(GetListField(static_cast<int>(i) + 1, Text(key)));
    }

  private:
    const PDDXSection& section_;
};

void ReadReferenceLoadCell(const CenterElements& from, CenterConfig& center) {
    center.ReferenceLoadCellName = from.Text("ReferenceLoadCellName");
    center.ReferenceLoadCellExcitationVolts = from.Number("ReferenceLoadCellExcitationVolts");
    center.ReferenceLoadCellGain = from.Text("ReferenceLoadCellGain");
    center.UseBVoltages = !from.Text("ReferenceLoadCell+BVoltage").empty();
    center.ReferenceLoadCellPlusVoltage =
        from.Number(center.UseBVoltages ? "ReferenceLoadCell+BVoltage" : "ReferenceLoadCell+AVoltage");
    center.ReferenceLoadCellMinusVoltage =
        from.Number(center.UseBVoltages ? "ReferenceLoadCell-BVoltage" : "ReferenceLoadCell-AVoltage");
    center.ReferenceLoadCellUnbalancedZero = from.Number("ReferenceLoadCellUnbalancedZero");
    center.ReferenceLoadCellCalibrationDate = from.Date("ReferenceLoadCellCalibrationDate");
    from.Numbers("ReferenceLoadCellCalibrationCoefficients", center.ReferenceLoadCellCalibrationCoefficients);
    center.ReferenceLoadCellSensitivity = from.Number("ReferenceLoadCellSensitivity");
    center.ReferenceLoadCellUnits = from.Text("ReferenceLoadCellUnits");
    const bool isAdjusted = !from.Text("ShuntCalibrationMultiplier").empty();
    center.ShuntCalibrationMultiplier = isAdjusted ? from.Number("ShuntCalibrationMultiplier") : 1.0;
}

void ReadAccelerometer(const CenterElements& from, CenterConfig& center) {
    center.AccelerometerSerialNumber = from.Text("AccelerometerSerialNumber");
    center.AccelerometerModelNumber = from.Text("AccelerometerModelNumber");
    center.AccelExcitationVolts = from.Number("AccelExcitationVolts");
    center.AccelGain = from.Text("AccelGain");
    center.AccelReferenceCalibrationDate = from.Date("AccelReferenceCalibrationDate");
    center.AccelRefPlus1GDC = from.Number("AccelRef+1GDC");
    center.AccelRefMinus1GDC = from.Number("AccelRef-1GDC");
    from.Numbers("AccelRefCalibrationCoefficients", center.AccelRefCalibrationCoefficients);
    center.AccelDailyCalibrationDate = from.Date("AccelDailyCalibrationDate");
    center.AccelDailyCalibrationTime = from.Date("AccelDailyCalibrationTime");
    center.AccelDailyCalibrationPlus1GVoltage = from.Number("AccelDailyCalibration+1GVoltage");
    center.AccelDailyCalibrationMinus1GVoltage = from.Number("AccelDailyCalibration-1GVoltage");
    center.AccelDailyCalibrationPlus1GFlipVoltage = from.Number("AccelDailyCalibration+1GFlipVoltage");
    center.AccelDailyCalibrationTemp = from.Number("AccelDailyCalibrationTemp");
    center.AccelDailyCalibrationTemperatureUnit = from.Text("AccelDailyCalibrationTemperatureUnit");
    center.AccelNewSlopeFactor = from.Number("AccelNewSlopeFactor");
    center.AccelSensitivity = from.Number("AccelSensitivity");
}

std::string Joined(const auto& numbers) {
    std::string text;
    for (const double number : numbers) {
        if (!text.empty()) text += ',';
        text += NumberText(number);
    }
    return text;
}

std::string JoinedNotes(const CenterConfig& center) {
    std::string text = center.Notes[0];
    for (std::size_t i = 1; i < writtenNotes; ++i) text += ',' + center.Notes[i];
    return text;
}

/// Sets keys of the center's section.
class CenterKeys {
  public:
    explicit CenterKeys(ProfileStrings& strings) : strings_(strings) {}
    void Set(const char* key, const std::string& value) { strings_.Set(centerSection, key, value); }
    void Set(const char* key, double value) { Set(key, NumberText(value)); }
    void Remove(const char* key) { strings_.RemoveKey(centerSection, key); }

  private:
    ProfileStrings& strings_;
};

void SetReferenceLoadCell(CenterKeys& keys, const CenterConfig& center) {
    keys.Set("ReferenceLoadCellName", center.ReferenceLoadCellName);
    keys.Set("ReferenceLoadCellCalibrationDate", Format(center.ReferenceLoadCellCalibrationDate, "mm-dd-yyyy"));
    keys.Set("ReferenceLoadCellExcitationVolts", center.ReferenceLoadCellExcitationVolts);
    keys.Set("ReferenceLoadCellGain", center.ReferenceLoadCellGain);
    // A pair left over from another configuration would be taken for the valid one.
    keys.Remove(center.UseBVoltages ? "ReferenceLoadCell+AVoltage" : "ReferenceLoadCell+BVoltage");
    keys.Remove(center.UseBVoltages ? "ReferenceLoadCell-AVoltage" : "ReferenceLoadCell-BVoltage");
    keys.Set(center.UseBVoltages ? "ReferenceLoadCell+BVoltage" : "ReferenceLoadCell+AVoltage",
             center.ReferenceLoadCellPlusVoltage);
    keys.Set(center.UseBVoltages ? "ReferenceLoadCell-BVoltage" : "ReferenceLoadCell-AVoltage",
             center.ReferenceLoadCellMinusVoltage);
    keys.Set("ReferenceLoadCellUnbalancedZero", center.ReferenceLoadCellUnbalancedZero);
    keys.Set("ReferenceLoadCellUnits", center.ReferenceLoadCellUnits);
    keys.Set("ReferenceLoadCellSensitivity", center.ReferenceLoadCellSensitivity);
    keys.Set("ReferenceLoadCellCalibrationCoefficients", Joined(center.ReferenceLoadCellCalibrationCoefficients));
    keys.Set("ShuntCalibrationMultiplier", center.ShuntCalibrationMultiplier);
}

void SetAccelerometer(CenterKeys& keys, const CenterConfig& center) {
    keys.Set("AccelerometerSerialNumber", center.AccelerometerSerialNumber);
    keys.Set("AccelerometerModelNumber", center.AccelerometerModelNumber);
    keys.Set("AccelReferenceCalibrationDate", Format(center.AccelReferenceCalibrationDate, "m/d/yyyy"));
    keys.Set("AccelRef+1GDC", center.AccelRefPlus1GDC);
    keys.Set("AccelRef-1GDC", center.AccelRefMinus1GDC);
    keys.Set("AccelRefCalibrationCoefficients", Joined(center.AccelRefCalibrationCoefficients));
    keys.Set("AccelDailyCalibrationDate", Format(center.AccelDailyCalibrationDate, "dd-mmm-yyyy"));
    keys.Set("AccelDailyCalibrationTime", Format(center.AccelDailyCalibrationTime, "hh:nn"));
    keys.Set("AccelDailyCalibrationTemperatureUnit", center.AccelDailyCalibrationTemperatureUnit);
    keys.Set("AccelDailyCalibrationTemp", center.AccelDailyCalibrationTemp);
    keys.Set("AccelExcitationVolts", center.AccelExcitationVolts);
    keys.Set("AccelGain", center.AccelGain);
    keys.Set("AccelNewSlopeFactor", center.AccelNewSlopeFactor);
    keys.Set("AccelDailyCalibration+1GVoltage", center.AccelDailyCalibrationPlus1GVoltage);
    keys.Set("AccelDailyCalibration-1GVoltage", center.AccelDailyCalibrationMinus1GVoltage);
    keys.Set("AccelDailyCalibration+1GFlipVoltage", center.AccelDailyCalibrationPlus1GFlipVoltage);
    keys.Set("AccelSensitivity", center.AccelSensitivity);
    keys.Set("AccelDailyCalibration+1GStdDev", center.AccelDailyCalibrationPlus1GStdDev);
    keys.Set("AccelDailyCalibration-1GStdDev", center.AccelDailyCalibrationMinus1GStdDev);
    keys.Set("AccelDailyCalibration+1GFlipStdDev", center.AccelDailyCalibrationPlus1GFlipStdDev);
}

}  // namespace

void ReadCenterKeys(const PDDXFile& document, CenterConfig& center) {
    const PDDXSection& header = document.Sections(headerSection);
    center.FileName = document.Sections(operationsSection).Elements("FileName").Value();
    center.PDDXVersionNumber = header.Elements("PDDXVersionNumber").Value();
    center.DelimiterSymbol = header.Elements("DelimiterSymbol").Value();
    center.DecimalSymbol = header.Elements("DecimalSymbol").Value();

    const CenterElements from(document);
    constexpr int greatestId = 32767;
    center.CalCenterIDCode = StoredWhole(from.Text("CalCenterIDCode"), -greatestId, greatestId);
    center.CalibrationCenter = from.Text("CalibrationCenter");
    center.CalibrationCenterOperator = from.Text("CalibrationCenterOperator");
    center.SignalConditionerSerialNumber = from.Text("SignalConditionerSerialNumber");
    center.AtoDBoardSerialNumber = from.Text("AtoDBoardSerialNumber");
    ReadReferenceLoadCell(from, center);
    ReadAccelerometer(from, center);
    center.LocationOfFWDDataTransfer = from.Text("LocationOfFWDDataTransfer");
    for (std::size_t i = 0; i < center.Notes.size(); ++i) {
        center.Notes[i] = GetListField(static_cast<int>(i) + 1, from.Text("Notes"));
    }
}

void SetCenterKeys(ProfileStrings& strings, const CenterConfig& center, bool englishUnits, const Path& file,
                   DateTime now) {
    strings.Set(headerSection, "PDDXVersionNumber", center.PDDXVersionNumber);
    strings.Set(headerSection, "DelimiterSymbol", center.DelimiterSymbol);
    strings.Set(headerSection, "DecimalSymbol", center.DecimalSymbol);
    strings.Set(operationsSection, "FileName", PathText(file));
    strings.Set(operationsSection, "EndTime", Format(now, "hh:nn"));
    strings.Set(operationsSection, "EndDate", Format(now, "mm-dd-yyyy"));

    CenterKeys keys(strings);
    keys.Set("CalibrationCenter", center.CalibrationCenter);
    keys.Set("CalCenterIDCode", center.CalCenterIDCode);
    keys.Set("VersionNumber", VersionText());
    keys.Set("CalibrationCenterOperator", center.CalibrationCenterOperator);
    keys.Set("SignalConditionerSerialNumber", center.SignalConditionerSerialNumber);
    keys.Set("AtoDBoardSerialNumber", center.AtoDBoardSerialNumber);
    SetReferenceLoadCell(keys, center);
    SetAccelerometer(keys, center);
    keys.Set("LocationOfFWDDataTransfer", center.LocationOfFWDDataTransfer);
    keys.Set("EnglishUnits", BooleanText(englishUnits));
    keys.Set("Notes", JoinedNotes(center));
}

void SetDailyCalibrationKeys(ProfileStrings& strings, const CenterConfig& center) {
    constexpr const char* dailyKeys[] = {"AccelDailyCalibrationDate",
                                         "AccelDailyCalibrationTime",
                                         "AccelDailyCalibrationTemperatureUnit",
                                         "AccelDailyCalibrationTemp",
                                         "AccelNewSlopeFactor",
                                         "AccelDailyCalibration+1GVoltage",
                                         "AccelDailyCalibration-1GVoltage",
                                         "AccelDailyCalibration+1GFlipVoltage",
                                         "AccelDailyCalibration+1GStdDev",
                                         "AccelDailyCalibration-1GStdDev",
                                         "AccelDailyCalibration+1GFlipStdDev"};
    ProfileStrings all;
    CenterKeys keys(all);
    SetAccelerometer(keys, center);
    for (const char* key : dailyKeys) strings.Set(centerSection, key, all.Get(centerSection, key));
}

}  // namespace bellmark
