#pragma once

namespace bellmark {

class Program;

/// Start, beginning of a calibration, and end of the program.

/// The program's entry: looks for interim calibrations and for a board, and shows the start form.
void Main(Program& program);

/// Checks for the files that every calibration needs. When one is missing the operator is told (message 300) and the
/// program ends; otherwise, with a board, the center's configuration is read. False when the program is ending.
bool CheckCriticalFiles(Program& program);

/// Names the store of a new run by today's date; with a search, by a name that is still free.
void NameInterimStore(Program& program);

/// No run is in hand, whatever is marked in the list of interim calibrations. The center's configuration read now is
/// the machine's own.
void LeaveInterimStore(Program& program);

/// Replaces the run's record by a fresh one. Only the values of the machine are kept, not those of the last run.
void BeginFreshRun(Program& program);

/// Starts from a fresh record and opens the set-up. False, after a box, when it cannot; nothing has changed then.
bool StartNewCalibration(Program& program);

/// Checks that a stored run can go on, and brings the screens up to the run in hand. False when the program is ending.
bool OpenInterimCalibration(Program& program);

/// Brings the screens up to the run in hand, after a load, and enters it.
void EnterLoadedRun(Program& program);

/// The only way to end the program. Asks first when an interim calibration is not completed.
void QuitApplication(Program& program);

/// Removes the data folders in which nothing was ever stored.
void PurgeEmptyInterimFolders(Program& program);

}  // namespace bellmark
