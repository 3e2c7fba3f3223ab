#pragma once

#include <span>
#include <string>

#include "run/procedure.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// The calibration can be left at any point and resumed. Its state is a pair of numbers in the run:
/// CurrentProcedure and CurrentProcStep. An entry leads back into one such state.
struct WorkflowEntry {
    Procedure procedure;
    int firstStep;
    int lastStep;
    const char* goesTo;
    void (*enter)(Program& program);
};

/// One row per entry; the first match applies. A pair without a row has no entry.
std::span<const WorkflowEntry> WorkflowEntries();

/// The page header of a procedure; empty for those without a title of their own.
const char* ProcedureTitle(Procedure procedure);

/// Enters the procedure at the run's step. Called by screens at their end and by the menu.
void ReturnToProcedure(Program& program, Procedure procedure);

/// The next step of the deflection sensor calibration. Reference trials come in pairs; after their acceptance comes the
/// relative calibration.
int SensorStep(int referenceTrials, bool referenceAccepted);

/// The procedure whose last trial was neither accepted nor rejected; None when there is none.
Procedure ProcedureOfUnacceptedTrial(const CalibrationRun& run);

/// Finds the waiting trial of a run that was read from its file, by procedure, number and shape. Clears the flag when
/// the counts leave no such trial.
void ResumeUnacceptedTrial(CalibrationRun& run);

/// The number of accepted load cell trials: only their gains count.
int AcceptedLoadCellTrials(const CalibrationRun& run);
/// The same for the deflection sensors' reference trials.
int AcceptedReferenceTrials(const CalibrationRun& run);

/// Opens the screen of the trial that still waits for its answer. False when there is none.
bool EnterUnacceptedTrial(Program& program);

/// Whether the procedure has room for one more trial; tells the operator when all are done.
bool AskForRoom(Program& program);

/// Asks whether the drops of the procedure's trial in hand may be lost. when: the end of the question, "when ..."
/// without a full stop. True without a question when there are no such drops or when their calibration is accepted.
/// Does not discard them.
bool MayGiveUpDrops(Program& program, Procedure procedure, const std::string& when);

}  // namespace bellmark
