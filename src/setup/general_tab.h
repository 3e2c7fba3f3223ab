#pragma once

#include <array>
#include <functional>

#include "controls/controls.h"
#include "run/procedure.h"

namespace bellmark {

class Program;

/// The tab of frmSetup with units, load levels and drops, trigger levels and the operator's comment.
class GeneralTab {
    Screen& screen_;

  public:
    GeneralTab(Screen& screen, Program& program);

    OptionButton optGeneral{screen_, "optGeneral", "tabs", "&General"};
    Frame fraGeneral{screen_, "fraGeneral", "General"};
    OptionButton optEnglish{screen_, "optEnglish", "units", "&English"};
    OptionButton optMetric{screen_, "optMetric", "units", "Metri&c"};
    std::array<OptionButton, 2> optAutoPrint{
        {{screen_, "optAutoPrint(0)", "auto print", "&Yes"}, {screen_, "optAutoPrint(1)", "auto print", "N&o"}}};
    TextBox loadCellTrigger{screen_, "loadCellTrigger"};
    Label txtTriggerUnits{screen_, "txtTriggerUnits"};
    TextBox AccelTrigger{screen_, "AccelTrigger"};
    TextBox txtComment{screen_, "txtComment"};
    Frame fraTestSequence{screen_, "fraTestSequence", "Calibration Sequence"};
    ComboBox cboNumHeights{screen_, "cboNumHeights"};
    ComboBox cboNumDrops{screen_, "cboNumDrops"};
    Button cmdApproveCalSeq{screen_, "cmdApproveCalSeq", "&Approve Sequence (Load Cell Cal. ONLY)"};
    Button cmdNumberDrops{screen_, "cmdNumberDrops", "Determine &Number of Drops"};
    Button cmdTriggerLevel{screen_, "cmdTriggerLevel", "Determine Accelerometer &Trigger Level"};

    std::function<void()> SequenceApproved;  ///< for the load cell only

    void ShowUnits();     ///< of the run, on the unit buttons
    void ShowSequence();  ///< the run's load levels and drops, in the lists
    void ShowComment();
    void ShowAutoPrint();
    /// The load trigger as it stands, and as the operator reads it.
    void ShowPlainTrigger();
    void ShowTrigger();

  private:
    double TriggerInRunUnits() const;
    void ChooseUnits(bool english);
    void loadCellTrigger_Leave();
    void AccelTrigger_Leave();
    void txtComment_Leave();
    void cmdApproveCalSeq_Click();
    void EnterProcedure(Procedure procedure, int step, const char* header);

    Program& program_;
};

}  // namespace bellmark
