#pragma once

#include <array>
#include <string>

#include "platform/date_time.h"

namespace bellmark {

/// The center and its reference equipment, as read from BellmarkCenterConfig.ini. Names follow the file's keys.
struct CenterConfig {
    bool IsKnown = false;  ///< taken from a file with a center's section
    std::string PDDXVersionNumber;
    std::string DelimiterSymbol;
    std::string DecimalSymbol;
    std::string FileName;

    std::string CalibrationCenter;
    int CalCenterIDCode = 0;
    std::string CalibrationCenterOperator;
    std::string SignalConditionerSerialNumber;
    std::string AtoDBoardSerialNumber;

    std::string ReferenceLoadCellName;
    DateTime ReferenceLoadCellCalibrationDate = ZeroDate();
    double ReferenceLoadCellExcitationVolts = 0;
    std::string ReferenceLoadCellGain;  ///< setting of the gain knob
    bool UseBVoltages = false;          ///< the file holds the +B and -B pair, otherwise +A and -A
    double ReferenceLoadCellPlusVoltage = 0;
    double ReferenceLoadCellMinusVoltage = 0;
    double ReferenceLoadCellUnbalancedZero = 0;  ///< volts
    std::string ReferenceLoadCellUnits;          ///< "pound-force", or another unit of force
    /// Load = c0 V + c1 V² + c2 V³ + c3 V⁴ + c4 V⁵, in ReferenceLoadCellUnits, from the cell's calibration certificate.
    std::array<double, 5> ReferenceLoadCellCalibrationCoefficients{};
    double ReferenceLoadCellSensitivity = 0;  ///< trigger level, in ReferenceLoadCellUnits
    double ShuntCalibrationMultiplier = 1.0;  ///< the day's correction of the signal conditioner's gain

    std::string AccelerometerSerialNumber;
    std::string AccelerometerModelNumber;
    DateTime AccelReferenceCalibrationDate = ZeroDate();
    double AccelRefPlus1GDC = 0;   ///< volts
    double AccelRefMinus1GDC = 0;  ///< volts
    std::array<double, 4> AccelRefCalibrationCoefficients{};
    DateTime AccelDailyCalibrationDate = ZeroDate();
    DateTime AccelDailyCalibrationTime = ZeroDate();  ///< date and time of day both count
    std::string AccelDailyCalibrationTemperatureUnit;
    double AccelDailyCalibrationTemp = 0;
    double AccelExcitationVolts = 0;
    std::string AccelGain;
    double AccelNewSlopeFactor = 0;                 ///< volts per g
    double AccelDailyCalibrationPlus1GVoltage = 0;  ///< volts
    double AccelDailyCalibrationMinus1GVoltage = 0;
    double AccelDailyCalibrationPlus1GFlipVoltage = 0;
    double AccelDailyCalibrationPlus1GStdDev = 0;
    double AccelDailyCalibrationMinus1GStdDev = 0;
    double AccelDailyCalibrationPlus1GFlipStdDev = 0;
    double AccelSensitivity = 0;  ///< trigger level, g

    /// The day's conversion of the accelerometer, derived by ComputeAccelAdjustment. Slope and offset convert the day's
    /// volts to those of the certificate; the certificate's polynomial is scaled to give exactly +1 g and -1 g.
    double AccelVoltageSlope = 0;
    double AccelVoltageOffset = 0;
    double AccelB = 0;
    double AccelA1 = 0;
    double AccelA2 = 0;
    double AccelA3 = 0;

    std::string LocationOfFWDDataTransfer;
    std::array<std::string, 11> Notes;  ///< eleven are read, ten are written
};

inline constexpr double kilonewtonsPerPound = 0.0044482;
inline constexpr const char* poundForce = "pound-force";

}  // namespace bellmark
