#pragma once

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// Shows the fit of one device of a trial; here the trial is accepted or rejected.
class frmRegressionPlot : public Screen, public RegressionPlotDoor {
  public:
    explicit frmRegressionPlot(Program& program);

    ctrlHeader Header;
    TextBox txtDate{*this, "txtDate"};
    TextBox txtTime{*this, "txtTime"};
    TextBox txtOldGain{*this, "txtOldGain"};
    TextBox txtAdjFactor{*this, "txtAdjFactor"};
    TextBox txtStdError{*this, "txtStdError"};
    TextBox txtR2{*this, "txtR2"};
    TextBox txtNewGain{*this, "txtNewGain"};
    Label lblRPSensorNum{*this, "lblRPSensorNum", "Sensor"};
    TextBox txtRPSensorNum{*this, "txtRPSensorNum"};
    Button cmdUpRP{*this, "cmdUpRP", "Ne&xt Sensor"};
    Button cmdDownRP{*this, "cmdDownRP", "&Previous Sensor"};
    Label lblReviewGraphs{*this, "lblReviewGraphs", "Please look at the graphs of all sensors."};
    Label lblPlotTitle{*this, "lblPlotTitle"};
    Picture pctRegression{*this, "pctRegression"};
    Picture pctResiduals{*this, "pctResiduals"};
    Label lblResiduals{*this, "lblResiduals"};
    Label lblFurthest{*this, "lblFurthest"};
    Label lblXAxis{*this, "lblXAxis"};
    Label lblXAxisUnits{*this, "lblXAxisUnits"};
    Label lblYAxis{*this, "lblYAxis"};
    Label lblYAxisUnits{*this, "lblYAxisUnits"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Button cmdPrint{*this, "cmdPrint", "P&rint"};
    Button cmdBack{*this, "cmdBack", "&Back"};
    Button cmdReject{*this, "cmdReject", "R&eject"};
    Button cmdNext{*this, "cmdNext", "&Next"};

    void PlotGraph(const Path& file, int sensor, double stdErrSlope) override;

  private:
    void cmdNext_Click();
    void cmdReject_Click();
    void cmdBack_Click();
    void cmdMainMenu_Click();
    void cmdPrint_Click();
    void MarkSeen();
    void ShowResiduals();
    void ShowSensorControls();
    void ShowAxisTexts();
    void ShowValues(double stdErrSlope);
    void StepSensor(int step);

    Program& program_;
    CalibrationRun& run_;
    Path file_;
    std::size_t device_ = 0;  ///< the device shown
};

}  // namespace bellmark
