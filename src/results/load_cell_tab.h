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
    Grid grdLoadCell{screen_, "grdLoadCell", 2};
    TextBox txtMsg{screen_, "txtMsg"};
    Button cmdAcceptLC{screen_, "cmdAcceptLC", "&Accept Load Cell Calibration"};
    Button cmdLCTrial{screen_, "cmdLCTrial"};
    Button cmdDelLCTrials{screen_, "cmdDelLCTrials", "&Delete Load Cell Trials"};
    Frame fraDelLCTrails{screen_, "fraDelLCTrails", "Delete Load Cell Trials"};
    Label lblDelLC{screen_, "lblDelLC",
                   "Select the Load Cell Calibration Trials to be Deleted. Then Click OK to continue ..."};
    CheckBox ChkDelLC[4]{{screen_, "ChkDelLC(0)", "Trial 1"},
                         {screen_, "ChkDelLC(1)", "Trial 2"},
                         {screen_, "ChkDelLC(2)", "Trial 3"},
                         {screen_, "ChkDelLC(3)", "Trial 4"}};
    Button cmdDelLCOK{screen_, "cmdDelLCOK", "&OK"};
    Button cmdDelLCCancel{screen_, "cmdDelLCCancel", "&Cancel"};

    std::function<void()> Changed;                 ///< the trials or their acceptance are others now
    std::function<void(bool waiting)> PleaseWait;  ///< files are worked on

    /// Judges the trials of the run and shows them.
    void Evaluate();
    bool IsComplete() const { return optLoadCell.BackColor.Get() == colors::complete; }

  private:
    void cmdAcceptLC_Click();
    void cmdDelLCTrials_Click();
    void cmdDelLCOK_Click();
    void CloseDeletion();
    void DeleteMarkedTrials();
    void WhileWaiting(const std::function<void()>& work);
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
