#pragma once

#include <string>
#include <vector>

#include "platform/files.h"

/// Runs that the program removes are moved aside and kept for 90 days, so that a hasty answer loses no measurement.
namespace bellmark {

class Program;

/// Moves files and folders of the program folder, in the given order, into "Removed/<yyyymmdd-hhnnss>-<name>" there.
/// Each keeps its own name; a missing one is skipped. One that cannot be moved, because it is in use, stays and is
/// logged.
void MoveToRemoved(Program& program, const std::string& name, const std::vector<Path>& things);

/// Deletes what was removed more than 90 days ago, by the date in its name and the machine's clock. A folder with any
/// other name stays. Failures are logged.
void PurgeRemoved(Program& program);

}  // namespace bellmark
