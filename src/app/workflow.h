#pragma once

#include <span>

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

/// Step of the deflection sensor calibration by what was done. Reference trials come in pairs; only a finished and
/// accepted pair leads on to the relative calibration.
int SensorStep(int referenceTrials, bool referenceAccepted);

/// The procedure whose last trial was neither accepted nor rejected; None when there is none.
Procedure ProcedureOfUnacceptedTrial(const CalibrationRun& run);

/// Number of accepted load cell trials: only their gains count.
int AcceptedLoadCellTrials(const CalibrationRun& run);
/// The same of the deflection sensors' reference trials.
int AcceptedReferenceTrials(const CalibrationRun& run);

/// Whether the program holds all steps of the sensor calibration, up to its acceptance; part of them is not offered.
bool OffersSensorCalibration(const Program& program);

/// Goes to the trial that still waits for its answer. False when there is none.
bool EnterUnacceptedTrial(Program& program);

/// Whether the procedure has room for one more trial; tells the operator when all are done.
bool AskForRoom(Program& program);

}  // namespace bellmark
