#include "setup/center_cells.h"

#include <stdexcept>

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/typed_number.h"
#include "run/accel_adjustment.h"
#include "run/center_config.h"
#include "setup/center_tab.h"

namespace bellmark {

namespace {

constexpr double millivoltsPerVolt = 1000;

[[noreturn]] void Refuse(const std::string& text, const char* why) {
    throw std::invalid_argument('"' + text + "\" is " + why);
}

double CellNumber(const std::string& text) {
    const auto number = TypedNumber(text);
    if (!number) Refuse(text, "not a number. The decimal sign is the point; commas part groups of three digits only.");
    return *number;
}

/// For cells that never show thousands with a comma: "3,742" volts may be meant as 3.742.
double SmallNumber(const std::string& text) {
    const bool isDoubtful = text.find(',') != std::string::npos && text.find('.') == std::string::npos;
    if (isDoubtful) Refuse(text, "not a number here. The decimal sign is the point; please leave the comma out.");
    return CellNumber(text);
}

DateTime TypedDate(const std::string& text) {
    const auto date = ReadDateTime(text);
    if (!date) Refuse(text, "not a date. Dates are written 09-Mar-2012, or with the month first, 03-09-2012.");
    return *date;
}

int TypedId(const std::string& text) {
    const double number = SmallNumber(text);
    if (number < -32768 || number > 32767) Refuse(text, "not an ID code.");
    return static_cast<int>(RoundToWhole(number));
}

/// Aligned in a column in which a negative number has one blank less before it.
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

/// Both daily readings have the same form: from 1 volt at +1 g on, tenths of a millivolt are not significant.
std::string DailyMillivolts(const CenterConfig& center, double volts) {
    return Format(volts * millivoltsPerVolt, center.AccelDailyCalibrationPlus1GVoltage < 1.0 ? "#,##0.0" : "#,##0");
}

CenterCell TextCell(const char* name, TextBox& box, std::string CenterConfig::*member, const char* behind) {
    return {name, &box, [=](const CenterConfig& center) { return center.*member + behind; },
            [=](CenterConfig& center, const std::string& text) { center.*member = text; }};
}

CenterCell NumberCell(const char* name, TextBox& box, double CenterConfig::*member, const char* before,
                      const char* picture, const char* behind) {
    return {name, &box, [=](const CenterConfig& center) { return before + Format(center.*member, picture) + behind; },
            [=](CenterConfig& center, const std::string& text) { center.*member = SmallNumber(text); }};
}

CenterCell MillivoltCell(const char* name, TextBox& box, double CenterConfig::*member, const char* behind) {
    return {
        name, &box,
        [=](const CenterConfig& center) { return Format(center.*member * millivoltsPerVolt, "#,000") + behind; },
        [=](CenterConfig& center, const std::string& text) { center.*member = CellNumber(text) / millivoltsPerVolt; }};
}

CenterCell DateCell(const char* name, TextBox& box, DateTime CenterConfig::*member, const char* before,
                    const char* behind) {
    return {name, &box,
            [=](const CenterConfig& center) { return before + Format(center.*member, "dd-mmm-yyyy") + behind; },
            [=](CenterConfig& center, const std::string& text) { center.*member = TypedDate(text); }};
}

CenterCell ShownOnly(TextBox& box, std::function<std::string(const CenterConfig&)> shown) {
    return {{}, &box, std::move(shown), {}};
}

void AddCenter(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back({"Center ID", &tab.txtCenterID,
                     [](const CenterConfig& center) { return Format(center.CalCenterIDCode, "00"); },
                     [](CenterConfig& center, const std::string& text) { center.CalCenterIDCode = TypedId(text); }});
    cells.push_back(TextCell("Center", tab.txtCalCenter, &CenterConfig::CalibrationCenter, ""));
    cells.back().lockedWhileShowing = false;
    cells.push_back(TextCell("Operator", tab.txtCenterOperator, &CenterConfig::CalibrationCenterOperator, ""));
    cells.back().lockedWhileShowing = false;
    cells.push_back(ShownOnly(tab.txtSerialEquipment, SerialEquipment));
}

void AddLoadCell(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back(
        TextCell("Reference load cell, name", tab.txtRefLoadCellID, &CenterConfig::ReferenceLoadCellName, " "));
    cells.push_back(NumberCell("Reference load cell, excitation", tab.txtRefLoadCellExcitation,
                               &CenterConfig::ReferenceLoadCellExcitationVolts, " ", "00", ""));
    cells.push_back(
        TextCell("Reference load cell, gain", tab.txtRefLoadCellGain, &CenterConfig::ReferenceLoadCellGain, " "));
    cells.push_back(NumberCell("Reference load cell, positive voltage", tab.txtRefLoadCellBPlus,
                               &CenterConfig::ReferenceLoadCellPlusVoltage, "  ", "#0.0000", ""));
    cells.push_back(NumberCell("Reference load cell, negative voltage", tab.txtRefLoadCellBMinus,
                               &CenterConfig::ReferenceLoadCellMinusVoltage, " ", "#0.0000", ""));
    cells.push_back(NumberCell("Reference load cell, unbalanced zero", tab.txtRefLoadCellUnbalancedZero,
                               &CenterConfig::ReferenceLoadCellUnbalancedZero, " ", "#0.0000", ""));
    cells.push_back(DateCell("Reference load cell, date of calibration", tab.txtRefLoadCellCalDate,
                             &CenterConfig::ReferenceLoadCellCalibrationDate, " ", ""));
    cells.push_back(
        TextCell("Reference load cell, units", tab.txtRefLoadCellCalUnits, &CenterConfig::ReferenceLoadCellUnits, " "));
    for (std::size_t i = 0; i < tab.txtRefLoadCellCalA.size(); ++i) {
        cells.push_back({"Reference load cell, coefficient A" + NumberText(i + 1), &tab.txtRefLoadCellCalA[i],
                         [i](const CenterConfig& center) {
                             return LoadCellCoefficient(center.ReferenceLoadCellCalibrationCoefficients[i]);
                         },
                         [i](CenterConfig& center, const std::string& text) {
                             center.ReferenceLoadCellCalibrationCoefficients[i] = SmallNumber(text);
                         }});
    }
}

void AddCertificate(std::vector<CenterCell>& cells, CenterTab& tab) {
    cells.push_back(TextCell("Accelerometer, serial number", tab.txtAccelerometerSN,
                             &CenterConfig::AccelerometerSerialNumber, " "));
    cells.push_back(
        TextCell("Accelerometer, model", tab.txtAccelerometerModel, &CenterConfig::AccelerometerModelNumber, " "));
    cells.push_back(NumberCell("Accelerometer, excitation", tab.txtAccelerometerExcitation,
                               &CenterConfig::AccelExcitationVolts, "", "00", " "));
    cells.push_back(TextCell("Accelerometer, gain", tab.txtAccelerometerGain, &CenterConfig::AccelGain, " "));
    cells.push_back(DateCell("Accelerometer, date of calibration", tab.txtCertDate,
                             &CenterConfig::AccelReferenceCalibrationDate, "", "  "));
    cells.push_back(MillivoltCell("Accelerometer, +1 g DC", tab.txtCertP1GDC, &CenterConfig::AccelRefPlus1GDC, "  "));
    cells.push_back(MillivoltCell("Accelerometer, -1 g DC", tab.txtCertM1GDC, &CenterConfig::AccelRefMinus1GDC, " "));
    cells.push_back(ShownOnly(tab.txtNISTGravity, [](const auto&) { return Format(standardGravity, "0.00000"); }));
    for (std::size_t i = 0; i < tab.txtCert.size(); ++i) {
        cells.push_back({"Accelerometer, coefficient C" + NumberText(i), &tab.txtCert[i],
                         [i](const CenterConfig& center) {
                             return Aligned(center.AccelRefCalibrationCoefficients[i], "0.000E+00");
                         },
                         [i](CenterConfig& center, const std::string& text) {
                             center.AccelRefCalibrationCoefficients[i] = SmallNumber(text);
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
