#pragma once

namespace bellmark {

class Program;

/// Start, beginning of a calibration, and end of the program.

/// The program's entry: looks for interim calibrations and for a board, and shows the start form.
void Main(Program& program);

/// Looks for what no calibration can do without. When something is missing the operator is told (message 300) and the
/// program ends; otherwise, with a board, the center's configuration is read. False when the program is ending.
bool CheckCriticalFiles(Program& program);

/// Names the store of a new run by today's date; with a search for a name that is still free.
void NameInterimStore(Program& program);

/// No run is in hand, whatever the list of interim calibrations marks: the center's configuration that is read now is
/// the machine's own.
void LeaveInterimStore(Program& program);

/// Puts a fresh record in place of the run's: what is kept of the last one is the machine's, not the run's.
void BeginFreshRun(Program& program);

/// Starts from a fresh record and opens the set-up. False, after a box, when it cannot: then nothing has begun.
bool StartNewCalibration(Program& program);

/// Makes sure that a stored run can be gone on with, and brings the screens up to the run in hand. False when the
/// program is ending.
bool OpenInterimCalibration(Program& program);

/// Brings the screens up to the run in hand, after a load, and enters it.
void EnterLoadedRun(Program& program);

/// The one way out. Asks where an interim calibration would be left uncompleted.
void QuitApplication(Program& program);

/// Removes the data folders in which nothing was ever stored.
void PurgeEmptyInterimFolders(Program& program);

}  // namespace bellmark
