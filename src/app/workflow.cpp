#include "app/workflow.h"

#include <algorithm>
#include <array>

#include "app/daily_calibration.h"
#include "app/doors.h"
#include "app/program.h"
#include "platform/dialogs.h"
#include "run/accel_adjustment.h"

namespace bellmark {

namespace {

constexpr int anyStep = 999;

void OpenSetupPage(Program& program) {
    program.The<SetupDoor>().OpenPage(program.Run.CurrentProcStep);
}

void OpenFlip(Program& program) {
    program.The<FlipCalibrationDoor>().Start();
}

void OpenMainMenu(Program& program) {
    program.The<MainMenuDoor>().Open();
}

void StayHere(Program&) {}

void CollectDrops(Program& program) {
    program.The<CollectionDoor>().Bellmark();
}

void ShowFlipResult(Program& program) {
    ComputeAccelAdjustment(program.Center);
    program.The<ResultsDoor>().OpenAccelerometer();
    OpenMainMenu(program);
}

void CheckPrerequisites(Program& program) {
    program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure);
}

void CollectAfterCheck(Program& program) {
    if (program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure)) CollectDrops(program);
}

void CollectWhileAccelerometerHolds(Program& program) {
    if (AccelCalCurrent(program)) {
        CollectDrops(program);
    } else {
        // No drop may be taken behind the flip, with the old calibration.
        program.The<CollectionDoor>().DisableButtons();
        program.The<DropDoor>().DisableButtons();
        OpenFlip(program);
    }
}

void CompareSensors(Program& program) {
    program.The<CenterRelativeDoor>().Start();
}

void OpenMonthly(Program& program) {
    program.The<RelativeDoor>().Start(false);
}
void OpenReplacement(Program& program) {
    program.The<RelativeDoor>().Start(true);
}
void ShowRelativeResults(Program& program) {
    program.The<RelativeResultsDoor>().Open();
}
void ShowNextRelativeResults(Program& program) {
    program.The<RelativeResultsDoor>().OpenNext();
}

void MeasureTrigger(Program& program) {
    program.The<TriggerDoor>().LoadStart();
}
void MeasureNumberOfDrops(Program& program) {
    program.The<TriggerDoor>().NumDropsStart(1);
}

void MeasureTriggerAfterCheck(Program& program) {
    if (!program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure)) return;
    program.Run.CurrentProcStep = 82;
    ReturnToProcedure(program, 8);
}

void MeasureNumberOfDropsAfterCheck(Program& program) {
    if (!program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure)) return;
    program.Run.CurrentProcStep = 93;
    ReturnToProcedure(program, 9);
}

constexpr std::array entries{
    WorkflowEntry{1, 11, 13, "the page of the set-up", OpenSetupPage},
    WorkflowEntry{1, 32, 32, "flip calibration", OpenFlip},
    WorkflowEntry{2, 0, anyStep, "collection of drops", CollectDrops},
    WorkflowEntry{3, 32, 32, "flip calibration", OpenFlip},
    WorkflowEntry{3, 33, 33, "nothing: the flip's results are in hand", StayHere},
    WorkflowEntry{3, 39, 39, "results of the accelerometer, then the main menu", ShowFlipResult},
    WorkflowEntry{3, 0, anyStep, "main menu", OpenMainMenu},
    WorkflowEntry{4, 40, 40, "prerequisites", CheckPrerequisites},
    WorkflowEntry{4, 41, 41, "prerequisites, then collection of drops", CollectAfterCheck},
    WorkflowEntry{4, 42, 42, "collection of drops, or flip calibration first", CollectWhileAccelerometerHolds},
    WorkflowEntry{4, 44, 44, "annual relative calibration", CompareSensors},
    WorkflowEntry{5, 0, anyStep, "collection of drops", CollectDrops},
    WorkflowEntry{6, 60, 61, "monthly relative calibration", OpenMonthly},
    WorkflowEntry{6, 62, 62, "relative results", ShowRelativeResults},
    WorkflowEntry{6, 63, 63, "next relative results", ShowNextRelativeResults},
    WorkflowEntry{6, 69, 69, "main menu", OpenMainMenu},
    WorkflowEntry{7, 70, 71, "replacement of a sensor", OpenReplacement},
    WorkflowEntry{7, 72, 72, "relative results", ShowRelativeResults},
    WorkflowEntry{7, 73, 73, "next relative results", ShowNextRelativeResults},
    WorkflowEntry{7, 79, 79, "main menu", OpenMainMenu},
    WorkflowEntry{8, 81, 81, "prerequisites, then trigger level", MeasureTriggerAfterCheck},
    WorkflowEntry{8, 82, 83, "trigger level", MeasureTrigger},
    WorkflowEntry{9, 91, 91, "prerequisites, then number of drops", MeasureNumberOfDropsAfterCheck},
    WorkflowEntry{9, 0, anyStep, "number of drops", MeasureNumberOfDrops},
};

}  // namespace

std::span<const WorkflowEntry> WorkflowEntries() {
    return entries;
}

const char* ProcedureTitle(int procedure) {
    switch (procedure) {
        case 3:
            return "Flip Calibration of Accelerometer";
        case 4:
            return "FWD Deflection Sensor Calibration";
        case 5:
            return "FWD Load Cell Calibration";
        default:
            return "";
    }
}

void ReturnToProcedure(Program& program, int procedure) {
    // A new capture would be paired with the peaks of the trial that still waits for its answer.
    const bool collects = procedure == 4 || procedure == 5;
    if (collects && EnterUnacceptedTrial(program)) return;
    const int step = program.Run.CurrentProcStep;
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const WorkflowEntry& row) {
        return row.procedure == procedure && row.firstStep <= step && step <= row.lastStep;
    });
    if (entry != entries.end()) entry->enter(program);
}

int SensorStep(int referenceTrials, bool referenceAccepted) {
    if (referenceTrials % 2 == 1 || referenceTrials < 2) return 41;
    return referenceAccepted ? 44 : 42;
}

int ProcedureOfUnacceptedTrial(const CalibrationRun& run) {
    if (!run.FlagUnacceptedTrial) return 0;
    const bool mayBeLoadCell = run.LoadCellRefTrials > 0 && !run.LoadCellCalComplete;
    const bool mayBeSensors = run.RefTrials > 0;
    if (!mayBeLoadCell && !mayBeSensors) return 0;
    if (mayBeLoadCell != mayBeSensors) return mayBeLoadCell ? 5 : 4;
    if (run.CurrentProcedure == 4 || run.CurrentProcedure == 5) return run.CurrentProcedure;
    // The operator went elsewhere in between, to the set-up for one. A trial that was accepted has a gain.
    return run.LCTrial.at(static_cast<std::size_t>(run.LoadCellRefTrials - 1)).Gain == 0 ? 5 : 4;
}

int AcceptedLoadCellTrials(const CalibrationRun& run) {
    return run.LoadCellRefTrials - (ProcedureOfUnacceptedTrial(run) == 5 ? 1 : 0);
}

bool EnterUnacceptedTrial(Program& program) {
    const int procedure = ProcedureOfUnacceptedTrial(program.Run);
    if (procedure == 0 || !program.Has<FWDDataDoor>()) return false;
    program.Run.CurrentProcedure = procedure;
    program.The<FWDDataDoor>().Start();
    return true;
}

bool HasRoomForTrial(Program& program) {
    const CalibrationRun& run = program.Run;
    const bool loadCell = run.CurrentProcedure == 5;
    if ((loadCell ? run.LoadCellRefTrials : run.RefTrials) < static_cast<int>(maxTrials)) return true;
    program.ShowBox(std::string("All four trials of the ") + (loadCell ? "load cell" : "deflection sensors") +
                        " are done.\r\nDelete a trial in the results before another one is made.",
                    box::information);
    return false;
}

}  // namespace bellmark
