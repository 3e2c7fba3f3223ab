#pragma once

#include <string>

#include "controls/controls.h"
#include "run/center_config.h"

namespace bellmark {

class Program;

/// The conversion of volts to acceleration by the day's calibration, in words and numbers. Requires
/// ComputeAccelAdjustment.
std::string CalculatedAcceleromterValues(const CenterConfig& center);

/// The tab of frmResults with the reference accelerometer's daily calibration.
class AccelerometerTab {
    Screen& screen_;

  public:
    AccelerometerTab(Screen& screen, Program& program);

    OptionButton optAccel{screen_, "optAccel", "tabs", "Accele&rometer"};
    Frame fraAccel{screen_, "fraAccel", "Accelerometer Calibration"};
    TextBox txtAccelID{fraAccel, "txtAccelID"};
    TextBox txtFlipDate{fraAccel, "txtFlipDate"};
    TextBox txtFlipTime{fraAccel, "txtFlipTime"};
    TextBox txtTemperature{fraAccel, "txtTemperature"};
    TextBox txtP1GAvg{fraAccel, "txtP1GAvg"};
    TextBox txtM1GAvg{fraAccel, "txtM1GAvg"};
    TextBox txtFP1GAvg{fraAccel, "txtFP1GAvg"};
    TextBox txtSlope{fraAccel, "txtSlope"};
    TextBox txtDailyOffset{fraAccel, "txtDailyOffset"};
    TextBox txtCalc{fraAccel, "txtCalc"};

    void Fill();

  private:
    Program& program_;
};

}  // namespace bellmark
