#pragma once

namespace bellmark {

class Program;

/// Removes what interrupted processes have left behind: half-written files, and the data folders of runs that were
/// never saved. Measurements are kept, except for removed runs older than 90 days.
void CleanUpAtStart(Program& program);

}  // namespace bellmark
