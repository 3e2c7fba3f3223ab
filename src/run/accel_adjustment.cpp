#include "run/accel_adjustment.h"

#include "run/center_config.h"

namespace bellmark {

double CelsiusToFahrenheit(double degrees) {
    return degrees * 9 / 5 + 32;
}
double FahrenheitToCelsius(double degrees) {
    return (degrees - 32) * 5 / 9;
}

void ComputeAccelAdjustment(CenterConfig& center) {
    const double refHalf = (center.AccelRefPlus1GDC - center.AccelRefMinus1GDC) / 2;
    const double refMid = (center.AccelRefPlus1GDC + center.AccelRefMinus1GDC) / 2;
    const double dayHalf = (center.AccelDailyCalibrationPlus1GVoltage - center.AccelDailyCalibrationMinus1GVoltage) / 2;
    const double dayMid = (center.AccelDailyCalibrationPlus1GVoltage + center.AccelDailyCalibrationMinus1GVoltage) / 2;
    if (dayHalf > 0) {
        // The certificate and the center are assumed to have the same gravity.
        center.AccelVoltageSlope = refHalf / dayHalf * (standardGravity / standardGravity);
        center.AccelVoltageOffset = refMid - center.AccelVoltageSlope * dayMid;
    }
    if (dayHalf == 0) return;
    const auto& c = center.AccelRefCalibrationCoefficients;
    const auto polynomial = [&](double v) { return c[0] + v * (c[1] + v * (c[2] + v * c[3])); };
    const double atPlus = polynomial(center.AccelRefPlus1GDC);
    const double atMinus = polynomial(center.AccelRefMinus1GDC);
    if (atPlus == atMinus) return;
    const double scale = 2 / (atPlus - atMinus);
    const double shift = 1 - scale * atPlus;
    center.AccelB = scale * c[0] + shift;
    center.AccelA1 = scale * c[1];
    center.AccelA2 = scale * c[2];
    center.AccelA3 = scale * c[3];
}

}  // namespace bellmark
