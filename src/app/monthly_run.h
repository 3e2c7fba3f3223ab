#pragma once

namespace bellmark {

class Program;
struct CalibrationRun;

/// A monthly calibration, or the replacement of a sensor, is made by the FWD's own operator, without board or center.
/// Its record is of this sitting only: it has no interim file.

/// Begins one from a fresh record. The run in hand is saved first, and its store is let go before anything of it
/// changes, so that no file of it is written or deleted from here on. False when the operator wants to keep what would
/// be lost, or when the run in hand cannot be saved; nothing has changed then.
bool BeginMonthlyRun(Program& program);

/// Ends it and goes to the start form, where the interim calibrations can be opened again. False when the operator
/// wants to go on with it.
bool LeaveMonthlyRun(Program& program);

/// Asks before the program ends while trials would be lost. True when it may end.
bool MayQuitMonthlyRun(Program& program);

/// Trials are in hand or accepted, and the calibration is not finished.
bool IsMonthlyRunUnderWay(const CalibrationRun& run);

/// The next trial of the one in hand, from its beginning.
void ReturnToMonthlyTrial(Program& program);

/// A sensor is replaced; otherwise all sensors are compared.
bool IsReplacement(const CalibrationRun& run);

}  // namespace bellmark
