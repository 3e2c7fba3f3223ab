#include "results/accelerometer_tab.h"

#include "app/program.h"
#include "platform/format.h"
#include "run/accel_adjustment.h"

namespace bellmark {

namespace {

constexpr const char* fourPlaces = "0.0000";

std::string Coefficient(double value) {
    return (value < 0 ? " " : "  ") + Format(value, "0.0000E+00");
}

/// Without a date nothing has been measured yet.
std::string DateOrNothing(DateTime date, const char* picture) {
    return date == ZeroDate() ? std::string() : Format(date, picture);
}

}  // namespace

std::string CalculatedAcceleromterValues(const CenterConfig& center) {
    const std::string slope = Format(center.AccelVoltageSlope, fourPlaces);
    const std::string offset = Format(center.AccelVoltageOffset, fourPlaces);
    return "Acceleration Calculation\r\n\r\n"
           "Input Slope Adjustment = " +
           slope +
           " g/g\r\n"
           "Input Offset Adjustment = " +
           offset +
           " V\r\n\r\n"
           "Transformed 3rd Order Calibration Coefficients\r\n"
           "   C0 = " +
           Coefficient(center.AccelB) +
           " g\r\n"
           "   C1 = " +
           Coefficient(center.AccelA1) +
           " g/V\r\n"
           "   C2 = " +
           Coefficient(center.AccelA2) +
           " g/V²\r\n"
           "   C3 = " +
           Coefficient(center.AccelA3) +
           " g/V³\r\n\r\n"
           "Adj.Volts (V) = Input Slope Adj. * Input Volts + Input Offset Adj.\r\n"
           "                   = " +
           slope + " * Input Volts +" + offset +
           "\r\n"
           "Acceleration (g) = C0 + Sum(Ci* Adj.Volts (V))";
}

AccelerometerTab::AccelerometerTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    for (TextBox* box : {&txtAccelID, &txtFlipDate, &txtFlipTime, &txtTemperature, &txtP1GAvg, &txtM1GAvg, &txtFP1GAvg,
                         &txtSlope, &txtDailyOffset, &txtCalc}) {
        box->Locked = true;
    }
}

void AccelerometerTab::Fill() {
    CenterConfig& center = program_.Center;
    ComputeAccelAdjustment(center);
    txtAccelID.Text = center.AccelerometerSerialNumber;
    txtFlipDate.Text = DateOrNothing(center.AccelDailyCalibrationDate, "dd-mmm-yyyy");
    const bool isDone = center.AccelDailyCalibrationDate != ZeroDate();
    txtFlipTime.Text = isDone ? Format(center.AccelDailyCalibrationTime, "hh:mm") : std::string();
    txtTemperature.Text = Format(center.AccelDailyCalibrationTemp, "#0.00") +
                          (center.AccelDailyCalibrationTemperatureUnit == "Fahrenheit" ? "F" : "C");
    txtP1GAvg.Text = Format(center.AccelDailyCalibrationPlus1GVoltage, "+#0.0000");
    txtM1GAvg.Text = Format(center.AccelDailyCalibrationMinus1GVoltage, "#0.0000");
    txtFP1GAvg.Text = Format(center.AccelDailyCalibrationPlus1GFlipVoltage, "+#0.0000");
    txtSlope.Text = Format(center.AccelVoltageSlope, fourPlaces);
    txtDailyOffset.Text = Format(center.AccelVoltageOffset, fourPlaces);
    txtCalc.Text = CalculatedAcceleromterValues(center);
}

}  // namespace bellmark
