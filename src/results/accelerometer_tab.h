#pragma once

#include <string>

#include "controls/controls.h"
#include "run/center_config.h"

namespace bellmark {

class Program;

/// How volts become an acceleration, by the day's calibration, in words and numbers. ComputeAccelAdjustment comes
/// first.
std::string CalculatedAcceleromterValues(const CenterConfig& center);

/// The tab of frmResults with the reference accelerometer's daily calibration.
class AccelerometerTab {
    Screen& screen_;

  public:
    AccelerometerTab(Screen& screen, Program& program);

    OptionButton optAccel{screen_, "optAccel", "tabs", "Accele&rometer"};
    Frame fraAccel{screen_, "fraAccel", "Accelerometer Calibration"};
    TextBox txtAccelID{screen_, "txtAccelID"};
    TextBox txtFlipDate{screen_, "txtFlipDate"};
    TextBox txtFlipTime{screen_, "txtFlipTime"};
    TextBox txtTemperature{screen_, "txtTemperature"};
    TextBox txtP1GAvg{screen_, "txtP1GAvg"};
    TextBox txtM1GAvg{screen_, "txtM1GAvg"};
    TextBox txtFP1GAvg{screen_, "txtFP1GAvg"};
    TextBox txtSlope{screen_, "txtSlope"};
    TextBox txtDailyOffset{screen_, "txtDailyOffset"};
    TextBox txtCalc{screen_, "txtCalc"};

    void Fill();

  private:
    Program& program_;
};

}  // namespace bellmark
