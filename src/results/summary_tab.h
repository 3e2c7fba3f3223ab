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
    TextBox txtFWDOwner{fraSummary, "txtFWDOwner"};
    TextBox txtFWDUnit{fraSummary, "txtFWDUnit"};
    TextBox txtFWDOperator{fraSummary, "txtFWDOperator"};
    TextBox txtLastLCCalDate{fraSummary, "txtLastLCCalDate"};
    TextBox txtLastSensorCalDate{fraSummary, "txtLastSensorCalDate"};

    void Fill();

  private:
    Program& program_;
};

}  // namespace bellmark
