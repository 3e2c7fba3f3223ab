#include "reference/load_cell_instrument.h"

#include "app/doors.h"
#include "app/program.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "reference/capture.h"
#include "reference/drop_advice.h"
#include "reference/drop_file.h"
#include "reference/drop_plot.h"
#include "reference/load_analysis.h"
#include "run/trial.h"

namespace bellmark {

std::optional<DropVerdict> LoadCellInstrument::Measure(const CaptureView& view) {
    const CalibrationRun& run = program_.Run;
    // The board compares the samples with this level while it waits.
    program_.Drop.TriggerLevel = program_.Center.ReferenceLoadCellSensitivity;
    if (run.ReviewMode || run.Trial.ReplayMode()) {
        program_.The<SimulatorDoor>().SetFile("LoadCell" + NumberText(NumberOfTrialShown(run)));
    }
    program_.The<AcquisitionDoor>().ShowDAQ(true);
    view.armed();
    if (!CaptureAndWait(program_, run.LoadCellChannel)) return {};
    view.captured();
    return VerdictOn(AnalyzeLoadSamples(program_.Drop, program_.Center, run.Trial.shape.englishUnits));
}

DropVerdict LoadCellInstrument::VerdictOn(const LoadDropFindings& findings) const {
    DropVerdict verdict;
    verdict.hasPeak = !findings.noPulse;
    verdict.outOfRange = findings.peakTooHigh;
    verdict.startEnglish = Format(findings.loadAtStart, "#0.0");
    verdict.startMetric = Format(findings.loadAtStart * kilonewtonsPerPound, "#0.000");
    verdict.advice = AdviceOn(findings);
    if (program_.Drop.ExcessNoise) verdict.panel = NumberedMessage{103, {findings.noise}};
    if (findings.peakTooHigh) verdict.boxes.push_back({303, {program_.Drop.MaxAbsAccel}});
    return verdict;
}

Plot LoadCellInstrument::PlotOf(DropCurve curve, bool zoomedIn) const {
    return LoadDropPlot(program_.Drop, curve, zoomedIn, program_.Run.Trial.shape.englishUnits);
}

std::string LoadCellInstrument::FileText(DateTime now) const {
    return LoadDropFileText(program_.Drop, program_.Run, program_.Center, now);
}

}  // namespace bellmark
