#include "app/workflow.h"

#include <algorithm>
#include <array>

#include "app/daily_calibration.h"
#include "app/doors.h"
#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
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
    if (!program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure)) return;
    // The list was completed earlier: the trial is next.
    program.Run.CurrentProcStep = step::sensorsTrial;
    ReturnToProcedure(program, program.Run.CurrentProcedure);
}

void CollectAfterCheck(Program& program) {
    if (program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure)) CollectDrops(program);
}

void CollectWhileAccelerometerHolds(Program& program) {
    if (AccelCalCurrent(program)) {
        CollectDrops(program);
    } else {
        // During the flip calibration no drop may be taken with the old calibration.
        program.The<CollectionDoor>().DisableButtons();
        program.The<DropDoor>().DisableButtons();
        OpenFlip(program);
    }
}

void CollectAfterFlip(Program& program) {
    program.Run.CurrentProcStep = step::sensorsTrial;
    CollectWhileAccelerometerHolds(program);
}

void CompareSensors(Program& program) {
    program.The<CenterRelativeDoor>().Start();
}

void OpenMonthly(Program& program) {
    program.The<RelativeDoor>().SetupMonthly();
}
void OpenReplacement(Program& program) {
    program.The<RelativeDoor>().SetupGeophone();
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
    program.Run.CurrentProcStep = step::triggerRunning;
    ReturnToProcedure(program, Procedure::TriggerLevel);
}

void MeasureNumberOfDropsAfterCheck(Program& program) {
    if (!program.The<PrerequisitesDoor>().PrerequisitesMet(program.Run.CurrentProcedure)) return;
    program.Run.CurrentProcStep = step::dropsRunning;
    ReturnToProcedure(program, Procedure::NumberOfDrops);
}

constexpr std::array entries{
    WorkflowEntry{Procedure::Setup, step::setupCenter, step::setupSequence, "the page of the set-up", OpenSetupPage},
    WorkflowEntry{Procedure::Setup, step::flipRunning, step::flipRunning, "flip calibration", OpenFlip},
    WorkflowEntry{Procedure::ReferenceLoadCell, step::none, anyStep, "collection of drops", CollectDrops},
    WorkflowEntry{Procedure::Flip, step::flipRunning, step::flipRunning, "flip calibration", OpenFlip},
    WorkflowEntry{Procedure::Flip, step::flipMeasured, step::flipMeasured, "nothing: the flip's results are in hand",
                  StayHere},
    WorkflowEntry{Procedure::Flip, step::flipAccepted, step::flipAccepted,
                  "results of the accelerometer, then the main menu", ShowFlipResult},
    WorkflowEntry{Procedure::Flip, step::none, anyStep, "main menu", OpenMainMenu},
    WorkflowEntry{Procedure::Sensors, step::flipEntered, step::flipAccepted,
                  "collection of drops, or flip calibration first", CollectAfterFlip},
    WorkflowEntry{Procedure::Sensors, step::sensorsCheck, step::sensorsCheck, "prerequisites", CheckPrerequisites},
    WorkflowEntry{Procedure::Sensors, step::sensorsTrialStarts, step::sensorsTrialStarts,
                  "prerequisites, then collection of drops", CollectAfterCheck},
    WorkflowEntry{Procedure::Sensors, step::sensorsTrial, step::sensorsTrial,
                  "collection of drops, or flip calibration first", CollectWhileAccelerometerHolds},
    WorkflowEntry{Procedure::Sensors, step::sensorsRelative, step::sensorsRelative, "annual relative calibration",
                  CompareSensors},
    WorkflowEntry{Procedure::LoadCell, step::none, anyStep, "collection of drops", CollectDrops},
    WorkflowEntry{Procedure::MonthlyRelative, step::monthlySetup, step::monthlyTrial, "monthly relative calibration",
                  OpenMonthly},
    WorkflowEntry{Procedure::MonthlyRelative, step::monthlyAnalysis, step::monthlyAnalysis, "relative results",
                  ShowRelativeResults},
    WorkflowEntry{Procedure::MonthlyRelative, step::monthlyNext, step::monthlyNext, "next relative results",
                  ShowNextRelativeResults},
    WorkflowEntry{Procedure::MonthlyRelative, step::monthlyFinished, step::monthlyFinished, "main menu", OpenMainMenu},
    WorkflowEntry{Procedure::SensorReplacement, step::replacementSetup, step::replacementTrial,
                  "replacement of a sensor", OpenReplacement},
    WorkflowEntry{Procedure::SensorReplacement, step::replacementAnalysis, step::replacementAnalysis,
                  "relative results", ShowRelativeResults},
    WorkflowEntry{Procedure::SensorReplacement, step::replacementNext, step::replacementNext, "next relative results",
                  ShowNextRelativeResults},
    WorkflowEntry{Procedure::SensorReplacement, step::replacementFinished, step::replacementFinished, "main menu",
                  OpenMainMenu},
    WorkflowEntry{Procedure::TriggerLevel, step::triggerCheck, step::triggerCheck, "prerequisites, then trigger level",
                  MeasureTriggerAfterCheck},
    WorkflowEntry{Procedure::TriggerLevel, step::triggerRunning, step::triggerFinished, "trigger level",
                  MeasureTrigger},
    WorkflowEntry{Procedure::NumberOfDrops, step::dropsCheck, step::dropsCheck, "prerequisites, then number of drops",
                  MeasureNumberOfDropsAfterCheck},
    WorkflowEntry{Procedure::NumberOfDrops, step::none, anyStep, "number of drops", MeasureNumberOfDrops},
};

}  // namespace

std::span<const WorkflowEntry> WorkflowEntries() {
    return entries;
}

const char* ProcedureTitle(Procedure procedure) {
    switch (procedure) {
        case Procedure::Flip:
            return "Flip Calibration of Accelerometer";
        case Procedure::Sensors:
            return "FWD Deflection Sensor Calibration";
        case Procedure::LoadCell:
            return "FWD Load Cell Calibration";
        default:
            return "";
    }
}

void ReturnToProcedure(Program& program, Procedure procedure) {
    // A new capture would be paired with the peaks of the trial that still waits for its answer.
    const bool collects = procedure == Procedure::Sensors || procedure == Procedure::LoadCell;
    if (collects && EnterUnacceptedTrial(program)) return;
    const int step = program.Run.CurrentProcStep;
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const WorkflowEntry& row) {
        return row.procedure == procedure && row.firstStep <= step && step <= row.lastStep;
    });
    if (entry != entries.end()) entry->enter(program);
}

int SensorStep(int referenceTrials, bool referenceAccepted) {
    if (referenceAccepted) return step::sensorsRelative;
    return referenceTrials % 2 == 1 || referenceTrials < 2 ? step::sensorsTrialStarts : step::sensorsTrial;
}

Procedure ProcedureOfUnacceptedTrial(const CalibrationRun& run) {
    if (!run.FlagUnacceptedTrial) return Procedure::None;
    const bool mayBeLoadCell = run.LoadCellRefTrials > 0 && !run.LoadCellCalComplete;
    const bool mayBeSensors = run.RefTrials > 0 && !run.SensorRefCalComplete;
    const auto mayBe = [&](Procedure procedure) {
        return (procedure == Procedure::LoadCell && mayBeLoadCell) || (procedure == Procedure::Sensors && mayBeSensors);
    };
    const auto isOfATrial = [](Procedure p) { return p == Procedure::Sensors || p == Procedure::LoadCell; };
    if (isOfATrial(run.Trial.procedure)) return mayBe(run.Trial.procedure) ? run.Trial.procedure : Procedure::None;
    // Older files do not hold the procedure: the best match is taken. An accepted trial has a gain.
    if (!mayBeLoadCell && !mayBeSensors) return Procedure::None;
    if (mayBeLoadCell != mayBeSensors) return mayBeLoadCell ? Procedure::LoadCell : Procedure::Sensors;
    if (isOfATrial(run.CurrentProcedure)) return run.CurrentProcedure;
    return run.LCTrial.at(static_cast<std::size_t>(run.LoadCellRefTrials - 1)).Gain == 0 ? Procedure::LoadCell
                                                                                         : Procedure::Sensors;
}

void ResumeUnacceptedTrial(CalibrationRun& run) {
    if (!run.FlagUnacceptedTrial) return;
    const Procedure procedure = ProcedureOfUnacceptedTrial(run);
    run.FlagUnacceptedTrial = procedure != Procedure::None;
    run.Trial.procedure = procedure;
    if (!run.FlagUnacceptedTrial) return;
    const bool loadCell = procedure == Procedure::LoadCell;
    run.Trial.number = loadCell ? run.LoadCellRefTrials : run.RefTrials;
    run.Trial.shape =
        (loadCell ? run.LCTrialShape : run.RefTrialShape).at(static_cast<std::size_t>(run.Trial.number - 1));
}

int AcceptedLoadCellTrials(const CalibrationRun& run) {
    return run.LoadCellRefTrials - (ProcedureOfUnacceptedTrial(run) == Procedure::LoadCell ? 1 : 0);
}

int AcceptedReferenceTrials(const CalibrationRun& run) {
    return run.RefTrials - (ProcedureOfUnacceptedTrial(run) == Procedure::Sensors ? 1 : 0);
}

bool EnterUnacceptedTrial(Program& program) {
    const Procedure procedure = ProcedureOfUnacceptedTrial(program.Run);
    if (procedure == Procedure::None || !program.Has<FWDDataDoor>()) return false;
    program.Run.CurrentProcedure = procedure;
    program.The<FWDDataDoor>().Start();
    return true;
}

bool AskForRoom(Program& program) {
    const CalibrationRun& run = program.Run;
    const bool loadCell = run.CurrentProcedure == Procedure::LoadCell;
    if ((loadCell ? run.LoadCellRefTrials : run.RefTrials) < static_cast<int>(maxTrials)) return true;
    program.ShowBox(std::string("All four trials of the ") + (loadCell ? "load cell" : "deflection sensors") +
                        " are done.\r\nDelete a trial in the results before another one is made.",
                    box::information);
    return false;
}

bool MayGiveUpDrops(Program& program, Procedure procedure, const std::string& when) {
    const CalibrationRun& run = program.Run;
    const bool loadCell = procedure == Procedure::LoadCell;
    const bool isAccepted = loadCell ? run.LoadCellCalComplete : run.SensorRefCalComplete;
    if (run.Trial.procedure != procedure || run.Trial.DropSequenceIndex == 0 || isAccepted) return true;
    const std::string trial = (loadCell ? "load cell trial " : "reference trial ") + NumberText(run.Trial.number);
    const std::string question =
        "Drops of " + trial + " are in hand. They are given up " + when + ".\r\nDo you want to go on?";
    return program.ShowBox(question, box::yesNo + box::question + box::secondIsDefault, "Trial in Hand") == Answer::Yes;
}

}  // namespace bellmark
