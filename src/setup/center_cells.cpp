#include "setup/center_cells.h"

#include <stdexcept>

#include "platform/format.h"
#include "platform/numbers.h"
#include "run/accel_adjustment.h"
#include "run/center_config.h"
#include "setup/center_tab.h"

namespace bellmark {

namespace {

constexpr double millivoltsPerVolt = 1000;

double TypedNumber(std::string text) {
    std::erase(text, ',');  // grouping of thousands, as the cells show it
    const auto number = NumberIn(text);
    if (!number) throw std::invalid_argument("\"" + text + "\" is not a number.");
    return *number;
}

DateTime TypedDate(const std::string& text) {
    const auto date = ReadDateTime(text);
    if (!date) throw std::invalid_argument("\"" + text + "\" is not a date.");
    return *date;
}

int TypedId(const std::string& text) {
    const double number = TypedNumber(text);
    if (number < -32768 || number > 32767) throw std::invalid_argument("\"" + text + "\" is not an ID code.");
    return static_cast<int>(RoundToWhole(number));
}

/// Aligned in a column in which a negative number has one blank less in front.
std::string Aligned(double value, const char* picture) {
    return std::string(value < 0 ? 1 : 2, ' ') + Format(value, picture);
}

std::string LoadCellCoefficient(double value) {
    return value == 0 ? "  0" : Aligned(value, "0.00000E+00");
}

std::string SerialEquipment(const CenterConfig& center) {
    return "     Signal Conditioner: " + center.SignalConditionerSerialNumber +
           "\r\n\t    KUSB DAQ Board: " + center.AtoDBoardSerialNumber +
           "\r\n\t          Accelerometer: " + center.AccelerometerSerialNumber +
           "\r\n\t Reference Load Cell: " + center.ReferenceLoadCellName;
}

/// Both daily readings are shown alike: from 1 volt at +1 g on, tenths of a millivolt say nothing.
std::string DailyMillivolts(const CenterConfig& center, double volts) {
    return Format(volts * millivoltsPerVolt, center.AccelDailyCalibrationPlus1GVoltage < 1.0 ? "#,##0.0" : "#,##0");
}

CenterCell TextCell(TextBox& box, std::string CenterConfig::*member, const char* behind) {
    return {&box, [=](const CenterConfig& center) { return center.*member + behind; },
            [=](CenterConfig& center, const std::string& text) { center.*member = text; }};
}

CenterCell NumberCell(TextBox& box, double CenterConfig::*member, const char* before, const char* picture,
                      const char* behind) {
    return {&box, [=](const CenterConfig& center) { return before + Format(center.*member, picture) + behind; },
            [=](CenterConfig& center, const std::string& text) { center.*member = TypedNumber(text); }};
}

CenterCell MillivoltCell(TextBox& box, double CenterConfig::*member, const char* behind) {
    return {
        &box, [=](const CenterConfig& center) { return Format(center.*member * millivoltsPerVolt, "#,000") + behind; },
        [=](CenterConfig& center, const std::string& text) { center.*member = TypedNumber(text) / millivoltsPerVolt; }};
}

CenterCell DateCell(TextBox& box, DateTime CenterConfig::*member, const char* before, const char* behind) {
    return {&box, [=](const CenterConfig& center) { return before + Format(center.*member, "dd-mmm-yyyy") + behind; },
            [=](CenterConfig& center, const std::string& text) { center.*member = TypedDate(text); }};
}

CenterCell ShownOnly(TextBox& box, std::function<std::string(const CenterConfig&)> shown) {
    return {&box, std::move(shown), {}};
}

void AddCenter(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back({&tab.txtCenterID, [](const CenterConfig& center) { return Format(center.CalCenterIDCode, "00"); },
                     [](CenterConfig& center, const std::string& text) { center.CalCenterIDCode = TypedId(text); }});
    cells.push_back(TextCell(tab.txtCalCenter, &CenterConfig::CalibrationCenter, ""));
    cells.back().lockedWhileShowing = false;
    cells.push_back(TextCell(tab.txtCenterOperator, &CenterConfig::CalibrationCenterOperator, ""));
    cells.back().lockedWhileShowing = false;
    cells.push_back(ShownOnly(tab.txtSerialEquipment, SerialEquipment));
}

void AddLoadCell(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back(TextCell(tab.txtRefLoadCellID, &CenterConfig::ReferenceLoadCellName, " "));
    cells.push_back(
        NumberCell(tab.txtRefLoadCellExcitation, &CenterConfig::ReferenceLoadCellExcitationVolts, " ", "00", ""));
    cells.push_back(TextCell(tab.txtRefLoadCellGain, &CenterConfig::ReferenceLoadCellGain, " "));
    cells.push_back(
        NumberCell(tab.txtRefLoadCellBPlus, &CenterConfig::ReferenceLoadCellPlusVoltage, "  ", "#0.0000", ""));
    cells.push_back(
        NumberCell(tab.txtRefLoadCellBMinus, &CenterConfig::ReferenceLoadCellMinusVoltage, " ", "#0.0000", ""));
    cells.push_back(NumberCell(tab.txtRefLoadCellUnbalancedZero, &CenterConfig::ReferenceLoadCellUnbalancedZero, " ",
                               "#0.0000", ""));
    cells.push_back(DateCell(tab.txtRefLoadCellCalDate, &CenterConfig::ReferenceLoadCellCalibrationDate, " ", ""));
    cells.push_back(TextCell(tab.txtRefLoadCellCalUnits, &CenterConfig::ReferenceLoadCellUnits, " "));
    for (std::size_t i = 0; i < tab.txtRefLoadCellCalA.size(); ++i) {
        cells.push_back({&tab.txtRefLoadCellCalA[i],
                         [i](const CenterConfig& center) {
                             return LoadCellCoefficient(center.ReferenceLoadCellCalibrationCoefficients[i]);
                         },
                         [i](CenterConfig& center, const std::string& text) {
                             center.ReferenceLoadCellCalibrationCoefficients[i] = TypedNumber(text);
                         }});
    }
}

void AddCertificate(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back(TextCell(tab.txtAccelerometerSN, &CenterConfig::AccelerometerSerialNumber, " "));
    cells.push_back(TextCell(tab.txtAccelerometerModel, &CenterConfig::AccelerometerModelNumber, " "));
    cells.push_back(NumberCell(tab.txtAccelerometerExcitation, &CenterConfig::AccelExcitationVolts, "", "00", " "));
    cells.push_back(TextCell(tab.txtAccelerometerGain, &CenterConfig::AccelGain, " "));
    cells.push_back(DateCell(tab.txtCertDate, &CenterConfig::AccelReferenceCalibrationDate, "", "  "));
    cells.push_back(MillivoltCell(tab.txtCertP1GDC, &CenterConfig::AccelRefPlus1GDC, "  "));
    cells.push_back(MillivoltCell(tab.txtCertM1GDC, &CenterConfig::AccelRefMinus1GDC, " "));
    cells.push_back(ShownOnly(tab.txtNISTGravity, [](const auto&) { return Format(standardGravity, "0.00000"); }));
    for (std::size_t i = 0; i < tab.txtCert.size(); ++i) {
        cells.push_back({&tab.txtCert[i],
                         [i](const CenterConfig& center) {
                             return Aligned(center.AccelRefCalibrationCoefficients[i], "0.000E+00");
                         },
                         [i](CenterConfig& center, const std::string& text) {
                             center.AccelRefCalibrationCoefficients[i] = TypedNumber(text);
                         }});
    }
}

void AddDaily(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back(ShownOnly(tab.txtDailyDate, [](const CenterConfig& center) {
        return Format(center.AccelDailyCalibrationDate, "dd-mmm-yyyy");
    }));
    cells.push_back(ShownOnly(tab.txtDailyTime, [](const CenterConfig& center) {
        return Format(center.AccelDailyCalibrationTime, "hh:mm:ss");
    }));
    cells.push_back(ShownOnly(tab.txtDailyP1GDC, [](const CenterConfig& center) {
        return DailyMillivolts(center, center.AccelDailyCalibrationPlus1GVoltage);
    }));
    cells.push_back(ShownOnly(tab.txtDailyM1GDC, [](const CenterConfig& center) {
        return DailyMillivolts(center, center.AccelDailyCalibrationMinus1GVoltage);
    }));
    cells.push_back(ShownOnly(tab.txtFieldGravity, [](const auto&) { return Format(standardGravity, "0.000000"); }));
    cells.push_back(ShownOnly(
        tab.txtDailyTemp, [](const CenterConfig& center) { return Format(center.AccelDailyCalibrationTemp, "#0.0"); }));
    cells.push_back(ShownOnly(tab.txtDailyTempUnit, [](const CenterConfig& center) -> std::string {
        return center.AccelDailyCalibrationTemperatureUnit == "Celsius" ? "°C" : "°F";
    }));
    cells.push_back(ShownOnly(
        tab.txtSlopeFactor, [](const CenterConfig& center) { return Format(center.AccelNewSlopeFactor, "#0.0000"); }));
}

}  // namespace

std::vector<CenterCell> CenterCells(CenterTab& tab) {
    std::vector<CenterCell> cells;
    AddCenter(cells, tab);
    AddLoadCell(cells, tab);
    AddCertificate(cells, tab);
    AddDaily(cells, tab);
    return cells;
}

}  // namespace bellmark
