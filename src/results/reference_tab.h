#pragma once

#include <functional>

#include "controls/controls.h"
#include "results/relative_stage.h"
#include "results/trial_files.h"

namespace bellmark {

class Program;

/// The tab of frmResults with the reference and relative trials of the deflection sensors.
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
    RelativeStage Relative;
    Frame fraDelRefCal{fraRef, "fraDelRefCal"};
    Label lblDelRef{fraDelRefCal, "lblDelRef"};
    CheckBox ChkDelRef[2]{{fraDelRefCal, "ChkDelRef(0)"}, {fraDelRefCal, "ChkDelRef(1)"}};
    Button cmdDelRefOK{fraDelRefCal, "cmdDelRefOK", "&OK"};
    Button cmdDelRefCancel{fraDelRefCal, "cmdDelRefCancel", "&Cancel"};

    std::function<void()> Changed;  ///< called when trials or their acceptance have changed
    std::function<void(const std::function<void()>& work)>
        WhileWaiting;  ///< runs the work and shows that the program is busy

    /// Judges the sensors' trials and shows them.
    void Evaluate();
    /// The button of the next step; none when that is on another tab.
    Button* NextStep();

  private:
    void cmdAcceptReference_Click();
    void cmdAdditionalRefTrial_Click();
    void cmdDelRefCal_Click();
    void cmdDelRefOK_Click();
    void CloseDeletion();
    void DeleteReferenceTrials(const TrialMarks& marks);
    void DeleteRelativeTrials(const TrialMarks& marks);
    bool DeletesRelativeTrials() const { return run_.SensorRefCalComplete; }
    int TrialsToDelete() const;
    void ShowStage();
    void ShowReferenceButtons();
    void ShowReferenceAdvice();
    void ShowDeletionButton();
    void KeepReferenceAcceptance();
    bool AskForPair() const;

    Program& program_;
    CalibrationRun& run_;
};

}  // namespace bellmark
