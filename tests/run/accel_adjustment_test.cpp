#include "run/accel_adjustment.h"

#include <gtest/gtest.h>

#include "run/center_config.h"

namespace bellmark {
namespace {

TEST(AccelAdjustment, DegreesAreConverted) {
    EXPECT_EQ(CelsiusToFahrenheit(-40), -40);
    EXPECT_EQ(CelsiusToFahrenheit(37.5), 99.5);
    EXPECT_EQ(FahrenheitToCelsius(99.5), 37.5);
    EXPECT_EQ(FahrenheitToCelsius(32), 0);
}

TEST(AccelAdjustment, BringsTheCertificateVoltsToOneGEachWay) {
    CenterConfig center;
    center.AccelRefPlus1GDC = 2.9713;
    center.AccelRefMinus1GDC = 2.1287;
    center.AccelRefCalibrationCoefficients = {-6.0527, 2.3734, 0.00012, -0.00001};
    center.AccelDailyCalibrationPlus1GVoltage = 2.9605;
    center.AccelDailyCalibrationMinus1GVoltage = 2.1279;
    ComputeAccelAdjustment(center);
    const auto gOf = [&](double v) {
        return center.AccelB + v * (center.AccelA1 + v * (center.AccelA2 + v * center.AccelA3));
    };
    EXPECT_NEAR(gOf(center.AccelRefPlus1GDC), 1, 1e-14);
    EXPECT_NEAR(gOf(center.AccelRefMinus1GDC), -1, 1e-14);
    EXPECT_NEAR(center.AccelA2 / center.AccelA1, 0.00012 / 2.3734, 1e-18) << "scaled as one";
    // The day's volts are converted to the certificate's.
    const auto referenceVolts = [&](double v) { return center.AccelVoltageSlope * v + center.AccelVoltageOffset; };
    EXPECT_NEAR(referenceVolts(2.9605), 2.9713, 1e-14);
    EXPECT_NEAR(referenceVolts(2.1279), 2.1287, 1e-14);
}

TEST(AccelAdjustment, LeavesWhatItCannotDerive) {
    CenterConfig center;
    center.AccelRefPlus1GDC = 3;
    center.AccelRefMinus1GDC = 2;
    center.AccelRefCalibrationCoefficients = {-5, 2, 0, 0};
    center.AccelVoltageSlope = 7;
    center.AccelA1 = 7;
    CenterConfig noSpan = center;
    ComputeAccelAdjustment(noSpan);
    EXPECT_EQ(noSpan.AccelVoltageSlope, 7);
    EXPECT_EQ(noSpan.AccelA1, 7);
    CenterConfig swapped = center;
    swapped.AccelDailyCalibrationPlus1GVoltage = 2;
    swapped.AccelDailyCalibrationMinus1GVoltage = 3;
    ComputeAccelAdjustment(swapped);
    EXPECT_EQ(swapped.AccelVoltageSlope, 7);
    EXPECT_EQ(swapped.AccelA1, 2);
    CenterConfig flat = center;
    flat.AccelDailyCalibrationPlus1GVoltage = 3;
    flat.AccelDailyCalibrationMinus1GVoltage = 2;
    flat.AccelRefCalibrationCoefficients = {1, 0, 0, 0};
    ComputeAccelAdjustment(flat);
    EXPECT_EQ(flat.AccelVoltageSlope, 1);
    EXPECT_EQ(flat.AccelA1, 7);
}

}  // namespace
}  // namespace bellmark
