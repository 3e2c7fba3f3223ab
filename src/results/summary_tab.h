#pragma once

#include "controls/controls.h"

namespace bellmark {

class Program;

/// The tab of frmResults that says whose FWD was calibrated, and when it was the last time.
class SummaryTab {
    Screen& screen_;

  public:
    SummaryTab(Screen& screen, Program& program);

    OptionButton optSummary{screen_, "optSummary", "tabs", "&Summary"};
    Frame fraSummary{screen_, "fraSummary", "Calibration Results Summary"};
    TextBox txtFWDOwner{screen_, "txtFWDOwner"};
    TextBox txtFWDUnit{screen_, "txtFWDUnit"};
    TextBox txtFWDOperator{screen_, "txtFWDOperator"};
    TextBox txtLastLCCalDate{screen_, "txtLastLCCalDate"};
    TextBox txtLastSensorCalDate{screen_, "txtLastSensorCalDate"};

    void Fill();

  private:
    Program& program_;
};

}  // namespace bellmark
