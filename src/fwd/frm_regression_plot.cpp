#include "fwd/frm_regression_plot.h"

#include <algorithm>

#include "app/program.h"
#include "app/workflow.h"
#include "fwd/regression_plot.h"
#include "fwd/std_error_color.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

frmRegressionPlot::frmRegressionPlot(Program& program)
    : Screen(program.Screens, "frmRegressionPlot", "Plot of Reference Device vs. FWD"),
      Header(*this, program.Header),
      program_(program),
      run_(program.Run) {
    for (TextBox* box :
         {&txtDate, &txtTime, &txtOldGain, &txtAdjFactor, &txtStdError, &txtR2, &txtNewGain, &txtRPSensorNum}) {
        box->Locked = true;
    }
    cmdUpRP.ToolTip = "Click to view Sensor 1 graph";
    cmdDownRP.ToolTip = "Click to view Sensor 1 graph";
    cmdUpRP.Click = [this] { StepSensor(1); };
    cmdDownRP.Click = [this] { StepSensor(-1); };
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    cmdBack.Click = [this] { cmdBack_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    cmdPrint.Click = [this] { cmdPrint_Click(); };
}

void frmRegressionPlot::PlotGraph(const Path& file, int sensor, double stdErrSlope) {
    file_ = file;
    device_ = static_cast<std::size_t>(std::max(sensor, 1) - 1);
    MarkSeen();
    ShowSensorControls();
    const bool acceptsHere = run_.ReviewMode && run_.FlagUnacceptedTrial;
    cmdNext.Caption = acceptsHere ? "&Accept" : "&Next";
    cmdNext.Enabled = !run_.PlotReviewPending;
    cmdNext.BackColor = run_.PlotReviewPending ? colors::buttonFace : colors::suggestedNext;
    cmdUpRP.BackColor = run_.PlotReviewPending ? colors::suggestedNext : colors::buttonFace;
    Header.PageTitle.Caption = Title();
    ShowValues(stdErrSlope);
    ShowAxisTexts();
    const Plot plot = RegressionPlot(run_, device_);
    lblPlotTitle.Caption = plot.title;
    pctRegression.Draw(plot);
    ShowResiduals();
    Show();
    Button& next = run_.PlotReviewPending ? cmdUpRP : cmdNext;
    SetDefaultButton(&next);
    SetFocus(next);
}

void frmRegressionPlot::ShowResiduals() {
    const bool sensors = CalibratesSensors(run_);
    lblResiduals.Caption = sensors ? "Residuals of all sensors, the largest standard error first: reference less line. "
                                     "Point at a drop to see its values."
                                   : "Residuals: reference less line. Point at a drop to see its values.";
    pctResiduals.Draw(sensors ? ResidualsOfAllSensors(run_, device_) : ResidualPlot(run_, device_));
    lblFurthest.Caption = FurthestDropText(run_, device_);
}

void frmRegressionPlot::MarkSeen() {
    if (!CalibratesSensors(run_)) {
        run_.PlotReviewPending = false;
        return;
    }
    run_.GraphSeen.at(device_) = true;
    const auto sensors = std::min(DevicesInTrial(run_), run_.GraphSeen.size());
    run_.PlotReviewPending =
        !std::all_of(run_.GraphSeen.begin(), run_.GraphSeen.begin() + static_cast<std::ptrdiff_t>(sensors),
                     [](bool seen) { return seen; });
}

void frmRegressionPlot::ShowSensorControls() {
    const bool sensors = CalibratesSensors(run_);
    SetVisible({&lblRPSensorNum, &txtRPSensorNum, &cmdUpRP, &cmdDownRP}, sensors);
    lblReviewGraphs.Visible = sensors && run_.PlotReviewPending;
    if (!sensors) return;
    txtRPSensorNum.Text = NumberText(ShownSensorNumber(run_, static_cast<int>(device_)));
    const auto hint = [&](int step) {
        return "Click to view Sensor " +
               NumberText(ShownSensorNumber(run_, static_cast<int>(NeighbourSensor(run_, device_, step)))) + " graph";
    };
    cmdUpRP.ToolTip = hint(1);
    cmdDownRP.ToolTip = hint(-1);
}

void frmRegressionPlot::ShowValues(double stdErrSlope) {
    const TrialRecord& trial = TrialOf(run_, device_);
    const DateTime now = program_.Now();
    txtDate.Text = Format(now, "dd-mmm-yyyy");
    txtTime.Text = Format(now, "hh:nn");
    txtOldGain.Text = Format(InitialGainOf(run_, device_), "0.000");
    txtAdjFactor.Text = Format(trial.AdjFactor, "0.0000");
    txtStdError.Text = Format(stdErrSlope, "0.0000");
    txtStdError.BackColor = StdErrorColor(stdErrSlope);
    txtR2.Text = Format(RegressionOf(run_, device_).r2, "0.0000");
    txtNewGain.Text = Format(trial.Gain, "0.000");
}

void frmRegressionPlot::ShowAxisTexts() {
    const bool sensors = CalibratesSensors(run_);
    const bool english = run_.Trial.shape.englishUnits;
    const char* units = sensors ? (english ? "mils" : "microns") : (english ? "pounds" : "kN");
    lblXAxis.Caption = sensors ? "FWD Deflection Sensor" : "FWD Load Cell";
    lblYAxis.Caption = sensors ? "Reference Accelerometer Deflection" : "Reference Load Cell";
    lblXAxisUnits.Caption = units;
    lblYAxisUnits.Caption = units;
}

void frmRegressionPlot::StepSensor(int step) {
    const std::size_t next = NeighbourSensor(run_, device_, step);
    PlotGraph(file_, static_cast<int>(next) + 1, TrialOf(run_, next).StdErrAdjFactor);
}

void frmRegressionPlot::cmdNext_Click() {
    program_.The<FWDDataDoor>().AcceptTrial();
}

void frmRegressionPlot::cmdReject_Click() {
    program_.The<FWDDataDoor>().RejectTrial();
}

void frmRegressionPlot::cmdBack_Click() {
    program_.The<FWDDataDoor>().ReturnFromPlot();
}

void frmRegressionPlot::cmdMainMenu_Click() {
    program_.The<MainMenuDoor>().Open();
}

void frmRegressionPlot::cmdPrint_Click() {
    program_.Services.printScreen(Name());
}

}  // namespace bellmark
