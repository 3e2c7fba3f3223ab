#pragma once

#include "controls/controls.h"

namespace bellmark {

class Program;

/// The tab of frmResults with the deflection sensors: their reference trials, and their relative ones.
class ReferenceTab {
    Screen& screen_;

  public:
    ReferenceTab(Screen& screen, Program& program);

    OptionButton optRef{screen_, "optRef", "tabs", "Deflection S&ensors"};
    Frame fraRef{screen_, "fraRef", "Deflection Sensor Calibration"};
    Grid grdRefCal{screen_, "grdRefCal", 2};
    TextBox txtRefMsg{screen_, "txtRefMsg"};
    Button cmdAcceptReference{screen_, "cmdAcceptReference", "Accept Reference &Calibration"};
    Button cmdAdditionalRefTrial{screen_, "cmdAdditionalRefTrial"};
    Button cmdDelRefCal{screen_, "cmdDelRefCal", "&Delete Reference Trials"};
    Grid grdRelCal{screen_, "grdRelCal", 2};
    TextBox txtRelMsg{screen_, "txtRelMsg"};
    Button cmdReviewSensors{screen_, "cmdReviewSensors", "Accept Relati&ve Calibration"};
    Button cmdAdditionalRelCal{screen_, "cmdAdditionalRelCal"};

    /// Shows the sensors as they came, while none of them has been calibrated.
    void Evaluate();
    bool IsComplete() const { return optRef.BackColor.Get() == colors::complete; }

  private:
    void ShowReferenceGrid();
    void ShowRelativeGrid();

    Program& program_;
};

}  // namespace bellmark
