#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "results/load_cell_evaluation.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// The tab of frmResults with the load cell's trials: judges them, and lets the operator accept, add or delete.
class LoadCellTab {
    Screen& screen_;

  public:
    LoadCellTab(Screen& screen, Program& program);

    OptionButton optLoadCell{screen_, "optLoadCell", "tabs", "&Load Cell"};
    Frame fraLoadCell{screen_, "fraLoadCell", "Load Cell Calibration"};
    Grid grdLoadCell{fraLoadCell, "grdLoadCell", 2};
    TextBox txtMsg{fraLoadCell, "txtMsg"};
    Button cmdAcceptLC{fraLoadCell, "cmdAcceptLC", "&Accept Load Cell Calibration"};
    Button cmdLCTrial{fraLoadCell, "cmdLCTrial"};
    Button cmdDelLCTrials{fraLoadCell, "cmdDelLCTrials", "&Delete Load Cell Trials"};
    Frame fraDelLCTrails{fraLoadCell, "fraDelLCTrails", "Delete Load Cell Trials"};
    Label lblDelLC{fraDelLCTrails, "lblDelLC",
                   "Select the Load Cell Calibration Trials to be Deleted. Then Click OK to continue ..."};
    CheckBox ChkDelLC[4]{{fraDelLCTrails, "ChkDelLC(0)", "Trial 1"},
                         {fraDelLCTrails, "ChkDelLC(1)", "Trial 2"},
                         {fraDelLCTrails, "ChkDelLC(2)", "Trial 3"},
                         {fraDelLCTrails, "ChkDelLC(3)", "Trial 4"}};
    Button cmdDelLCOK{fraDelLCTrails, "cmdDelLCOK", "&OK"};
    Button cmdDelLCCancel{fraDelLCTrails, "cmdDelLCCancel", "&Cancel"};

    std::function<void()> Changed;  ///< called when trials or their acceptance have changed
    std::function<void(const std::function<void()>& work)>
        WhileWaiting;  ///< runs the work and shows that the program is busy

    /// Judges the trials of the run and shows them.
    void Evaluate();
    /// The button of the next step; none when that is on another tab.
    Button* NextStep();

  private:
    void cmdAcceptLC_Click();
    void cmdDelLCTrials_Click();
    void cmdDelLCOK_Click();
    void CloseDeletion();
    void DeleteMarkedTrials();
    std::string MarkedTrialsInWords();
    void ShowTrials(const std::vector<double>& gains);
    void ShowTrialButtons();
    void ShowJudgement(const LoadCellEvaluation& judged);
    void ShowLimits(const LoadCellEvaluation& judged);
    void ShowAcceptance();
    void KeepAcceptedGain();
    std::vector<double> Gains() const;
    int FinalColumn() const;

    Program& program_;
    CalibrationRun& run_;
    double finalGain_ = 0;  ///< of the last judgement
};

}  // namespace bellmark
