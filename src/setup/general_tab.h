#pragma once

#include <array>
#include <functional>

#include "controls/controls.h"
#include "run/calibration_run.h"

namespace bellmark {

class Program;

/// The tab of frmSetup with units, load levels and drops, trigger levels and the operator's comment.
class GeneralTab {
    Screen& screen_;

  public:
    GeneralTab(Screen& screen, Program& program);

    OptionButton optGeneral{screen_, "optGeneral", "tabs", "&General"};
    Frame fraGeneral{screen_, "fraGeneral", "General"};
    OptionButton optEnglish{fraGeneral, "optEnglish", "units", "&English"};
    OptionButton optMetric{fraGeneral, "optMetric", "units", "Metri&c"};
    std::array<OptionButton, 2> optAutoPrint{
        {{fraGeneral, "optAutoPrint(0)", "auto print", "&Yes"}, {fraGeneral, "optAutoPrint(1)", "auto print", "N&o"}}};
    TextBox loadCellTrigger{fraGeneral, "loadCellTrigger"};
    Label txtTriggerUnits{fraGeneral, "txtTriggerUnits"};
    TextBox AccelTrigger{fraGeneral, "AccelTrigger"};
    TextBox txtComment{fraGeneral, "txtComment"};
    Frame fraTestSequence{fraGeneral, "fraTestSequence", "Calibration Sequence"};
    ComboBox cboNumHeights{fraTestSequence, "cboNumHeights"};
    ComboBox cboNumDrops{fraTestSequence, "cboNumDrops"};
    Button cmdApproveCalSeq{fraTestSequence, "cmdApproveCalSeq", "&Approve Sequence (Load Cell Cal. ONLY)"};
    Button cmdNumberDrops{fraTestSequence, "cmdNumberDrops", "Determine &Number of Drops"};
    Button cmdTriggerLevel{fraTestSequence, "cmdTriggerLevel", "Determine Accelerometer &Trigger Level"};

    std::function<void()> SequenceApproved;  ///< for the load cell only

    void BeginRun();      ///< nothing is measured or approved yet
    void ShowUnits();     ///< of the run, on the unit buttons
    void ShowSequence();  ///< the run's load levels and drops, in the lists
    void ShowComment();
    void ShowAutoPrint();
    /// The plain numbers of both triggers; ShowTrigger formats that of the load cell.
    void ShowPlainTrigger();
    void ShowTrigger();
    /// The measured and accepted values, in green: the trigger level; the least number of drops, and all numbers above
    /// it.
    void ShowMeasuredTrigger();
    void ShowMeasuredDrops();

  private:
    double TriggerInRunUnits() const;
    void ChooseUnits(bool english);
    void ChooseSequence();
    void loadCellTrigger_Leave();
    void AccelTrigger_Leave();
    void txtComment_Leave();
    void AskForDropsAnew();
    void ForgetMeasuredTrigger();
    void OfferDrops(int least);
    void cmdApproveCalSeq_Click();
    void EnterProcedure(Procedure procedure, int step, const char* header);

    Program& program_;
};

}  // namespace bellmark
