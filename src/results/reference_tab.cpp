#include "results/reference_tab.h"

#include "app/program.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

ReferenceTab::ReferenceTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    txtRefMsg.Locked = true;
    txtRelMsg.Locked = true;
    for (Button* button :
         {&cmdAcceptReference, &cmdAdditionalRefTrial, &cmdDelRefCal, &cmdReviewSensors, &cmdAdditionalRelCal}) {
        button->Enabled = false;
        button->ToolTip = "This program calibrates load cells; it cannot calibrate deflection sensors yet.";
    }
}

void ReferenceTab::Evaluate() {
    cmdAdditionalRefTrial.Caption = "&Perform First Reference Trial";
    cmdAdditionalRelCal.Caption = "&Perform First Relative Trial";
    ShowReferenceGrid();
    // Trials of sensors come only from a run that another version has saved.
    txtRefMsg.Text = program_.Run.RefTrials == 0
                         ? "No reference calibrations have been performed yet."
                         : "This run holds reference trials of the sensors; this program cannot judge them yet.";
    ShowRelativeGrid();
    txtRelMsg.Text = program_.Run.RelTrials == 0
                         ? "No relative calibrations have been performed yet."
                         : "This run holds relative trials of the sensors; this program cannot judge them yet.";
}

void ReferenceTab::ShowReferenceGrid() {
    const CalibrationRun& run = program_.Run;
    grdRefCal.SetHeadings({"      ", "   Serial   ", "   Initial   "});
    grdRefCal.AddRow({"No.", "Number", "Gain"});
    double sum = 0;
    for (int s = 0; s < run.NumberSensors; ++s) {
        const SensorCalRecord& sensor = run.Sensor.at(static_cast<std::size_t>(s));
        sum += sensor.InitialGain;
        grdRefCal.AddRow(
            {NumberText(ShownSensorNumber(run, s)), sensor.SerialNumber, Format(sensor.InitialGain, "0.000")});
    }
    grdRefCal.AddRow({"  ", "  ", "  "});
    const double mean = run.NumberSensors > 0 ? sum / run.NumberSensors : 0;
    grdRefCal.AddRow({"-", "Average", Format(mean, "0.000")});
    grdRefCal.AddRow({"-", "Change", ""});
}

void ReferenceTab::ShowRelativeGrid() {
    grdRelCal.SetHeadings({"            ", " Calculated ", "   Overall   "});
    grdRelCal.AddRow({"No.", " Final Gain ", " % Change "});
}

}  // namespace bellmark
