#include "reference/accelerometer_instrument.h"

#include "app/doors.h"
#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "reference/accel_analysis.h"
#include "reference/accel_drop_file.h"
#include "reference/capture.h"
#include "reference/drop_advice.h"
#include "reference/drop_plot.h"
#include "run/trial.h"

namespace bellmark {

namespace {

bool IsSimulated(const CalibrationRun& run) {
    return run.ReviewMode || run.Trial.ReplayMode();
}

/// All pairs of trials use the flat files of one pair. A drop for a set-up value has no file of its own: the name leads
/// to the saved drop of its height.
std::string SimulatedSource(const CalibrationRun& run) {
    if (run.CurrentProcedure != Procedure::Sensors) return "Reference1-H3D0.txt";
    return NumberOfTrialShown(run) % 2 == 0 ? "Ref2" : "Ref1";
}

}  // namespace

std::optional<DropVerdict> AccelerometerInstrument::Measure(const CaptureView& view) {
    ArmAccelTrigger(program_.Drop, program_.Center);
    if (IsSimulated(program_.Run)) program_.The<SimulatorDoor>().SetFile(SimulatedSource(program_.Run));
    program_.The<AcquisitionDoor>().ShowDAQ(true);
    if (!CaptureBurst()) return {};
    const BurstFindings burst = CheckBurst(program_.Drop, program_.Center);
    if (!CaptureDrop(view)) return {};
    return VerdictOn(AnalyzeAccelSamples(program_.Drop, program_.Center), burst);
}

bool AccelerometerInstrument::CaptureBurst() {
    CalibrationRun& run = program_.Run;
    run.BurstCapture = true;
    const bool captured = CaptureAndWait(program_, run.AccelChannel);
    run.BurstCapture = false;
    // A saved drop contains the figures of its own burst.
    if (captured && !IsSimulated(run)) {
        program_.Drop.BurstTime = program_.Now();
        MeasureBurst(program_.Drop);
    }
    return captured;
}

bool AccelerometerInstrument::CaptureDrop(const CaptureView& view) {
    view.armed();
    if (!CaptureAndWait(program_, program_.Run.AccelChannel)) return false;
    // The board is armed minutes before the drop, and delivers its block a second after the trigger.
    program_.Drop.TriggerTime = program_.Now();
    view.captured();
    return true;
}

DropVerdict AccelerometerInstrument::VerdictOn(const AccelDropFindings& findings, const BurstFindings& burst) {
    const DropRecord& drop = program_.Drop;
    DropVerdict verdict;
    verdict.hasPeak = !findings.fault && !findings.noPulse && drop.PeakMetric > 0;
    verdict.outOfRange = findings.outOfRange;
    verdict.startEnglish = Format(findings.deflectionAtStart / micronsPerMil, "#0.000");
    verdict.startMetric = Format(findings.deflectionAtStart, "#0.0");
    const bool isOfTrial = program_.Run.CurrentProcedure == Procedure::Sensors;
    verdict.advice = AdviceOn(findings, burst, isOfTrial);
    if (findings.fault && isOfTrial) {
        program_.Compose(270, {std::string()});
        program_.ShowComposed(box::critical + box::helpButton);
    }
    if (drop.ExcessNoise && isOfTrial) verdict.panel = NumberedMessage{113, {findings.noise}};
    if (findings.outOfRange) verdict.boxes.push_back({302, {drop.MaxAbsAccel, drop.MinAbsAccel}});
    return verdict;
}

Plot AccelerometerInstrument::PlotOf(DropCurve curve, bool zoomedIn) const {
    const CalibrationRun& run = program_.Run;
    // Drops for the set-up belong to no trial.
    const bool english = run.CurrentProcedure == Procedure::Sensors ? run.Trial.shape.englishUnits : run.EnglishUnits;
    return AccelDropPlot(program_.Drop, curve, zoomedIn, english);
}

std::string AccelerometerInstrument::FileText(DateTime now) const {
    return AccelDropFileText(program_.Drop, program_.Run, program_.Center, now);
}

}  // namespace bellmark
