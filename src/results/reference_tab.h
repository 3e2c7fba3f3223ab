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
    Grid grdRefCal{fraRef, "grdRefCal", 2};
    TextBox txtRefMsg{fraRef, "txtRefMsg"};
    Button cmdAcceptReference{fraRef, "cmdAcceptReference", "Accept Reference &Calibration"};
    Button cmdAdditionalRefTrial{fraRef, "cmdAdditionalRefTrial"};
    Button cmdDelRefCal{fraRef, "cmdDelRefCal", "&Delete Reference Trials"};
    Grid grdRelCal{fraRef, "grdRelCal", 2};
    TextBox txtRelMsg{fraRef, "txtRelMsg"};
    Button cmdReviewSensors{fraRef, "cmdReviewSensors", "Accept Relati&ve Calibration"};
    Button cmdAdditionalRelCal{fraRef, "cmdAdditionalRelCal"};

    /// Shows the sensors as they came, while none of them has been calibrated.
    void Evaluate();

  private:
    void ShowReferenceGrid();
    void ShowRelativeGrid();

    Program& program_;
};

}  // namespace bellmark
