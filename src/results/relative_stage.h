#pragma once

#include <functional>
#include <optional>
#include <string>

#include "controls/controls.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// The relative trials of the deflection sensors in the results: judges the final gains, and lets the operator accept
/// them or do more trials.
class RelativeStage {
    Screen& screen_;
    Frame& fraRef_;

  public:
    RelativeStage(Screen& screen, Frame& fraRef, Program& program);

    Grid grdRelCal{fraRef_, "grdRelCal", 2};
    TextBox txtRelMsg{fraRef_, "txtRelMsg"};
    Button cmdReviewSensors{fraRef_, "cmdReviewSensors", "Accept Relati&ve Calibration"};
    Button cmdAdditionalRelCal{fraRef_, "cmdAdditionalRelCal"};
    Button cmdShowANOVA{fraRef_, "cmdShowANOVA", "Anal&ysis of Variance"};
    Frame fraANOVA{fraRef_, "fraANOVA", "Final Analysis of Variance"};
    Grid grdANOVA{fraANOVA, "grdANOVA", 1};
    Label lblANOVA{fraANOVA, "lblANOVA"};
    Button cmdCloseANOVA{fraANOVA, "cmdCloseANOVA", "&Back"};
    Button cmdReject{fraANOVA, "cmdReject", "&Reject"};
    Button cmdAcceptSensors{fraANOVA, "cmdAcceptSensors", "&Accept"};

    std::function<void()> Changed;  ///< called when trials or their acceptance have changed
    std::function<void(const std::function<void()>& work)>
        WhileWaiting;  ///< runs the work and shows that the program is busy

    /// Judges the relative trials of the run and shows them.
    void Evaluate();
    /// The button of the next step, more trials or acceptance; none when this stage has none.
    Button* NextStep();

  private:
    void Accept();
    void cmdAcceptSensors_Click();
    void cmdAdditionalRelCal_Click();
    void cmdShowANOVA_Click();
    void ShowFinalAnalysis(bool shown);
    void ShowButtons();
    void ShowANOVAFinal(std::string& message);
    void KeepFinalGains();

    Program& program_;
    CalibrationRun& run_;
};

}  // namespace bellmark
