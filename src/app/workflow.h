#pragma once

#include <span>
#include <string>

#include "run/procedure.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// The calibration is one long procedure that can be left at any point. Its state is a pair of numbers in the run:
/// CurrentProcedure and CurrentProcStep. An entry leads back into one such state.
struct WorkflowEntry {
    Procedure procedure;
    int firstStep;
    int lastStep;
    const char* goesTo;
    void (*enter)(Program& program);
};

/// One row per entry; the first that fits counts. A pair without a row leads nowhere.
std::span<const WorkflowEntry> WorkflowEntries();

/// The page header of a procedure; empty for those without a title of their own.
const char* ProcedureTitle(Procedure procedure);

/// Enters the procedure at the run's step. Screens call it when they end, the menu to begin.
void ReturnToProcedure(Program& program, Procedure procedure);

/// Step of the deflection sensor calibration by what was done: reference trials come in pairs, and once they are
/// accepted it goes on to the relative calibration.
int SensorStep(int referenceTrials, bool referenceAccepted);

/// The procedure whose last trial was neither accepted nor rejected; None when there is none.
Procedure ProcedureOfUnacceptedTrial(const CalibrationRun& run);

/// Of a run that was read from its file: the trial that waits is known again by procedure, number and shape. Where the
/// counts leave none that could wait, the flag goes.
void ResumeUnacceptedTrial(CalibrationRun& run);

/// Load cell trials that were accepted: only their gains count.
int AcceptedLoadCellTrials(const CalibrationRun& run);
/// The same of the deflection sensors' reference trials.
int AcceptedReferenceTrials(const CalibrationRun& run);

/// Goes to the trial that still waits for its answer. False when there is none.
bool EnterUnacceptedTrial(Program& program);

/// Whether the procedure has room for one more trial; tells the operator when all are done.
bool AskForRoom(Program& program);

/// Drops that are in of a trial of the procedure are lost by what comes next: asks whether that may be. when: how the
/// sentence ends, "when ..." without its full stop. True without a question where none are in, or where the calibration
/// that they were for is accepted. Takes nothing away itself.
bool MayGiveUpDrops(Program& program, Procedure procedure, const std::string& when);

}  // namespace bellmark
