#pragma once

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// Shows all drops of a relative trial by sensor and set. An annual trial is accepted or rejected here.
class frmCenterRelPlot : public Screen, public CenterRelPlotDoor {
  public:
    explicit frmCenterRelPlot(Program& program);

    ctrlHeader Header;
    Label lblNote{*this, "lblNote", "(Deflections = Raw FWD Deflections multiplied by the Interim Adjustment Factor)"};
    Picture pctRelative{*this, "pctRelative"};
    Label lblNextStep{*this, "lblNextStep"};
    Button Command1{*this, "Command1", "Print &Screen"};
    Button cmdBack{*this, "cmdBack", "&Back"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdNext{*this, "cmdNext"};

    void DrawRelativePlot() override;

  private:
    void cmdNext_Click();
    void cmdBack_Click();
    void cmdReject_Click();
    void WriteReport();

    Program& program_;
    CalibrationRun& run_;
};

}  // namespace bellmark
