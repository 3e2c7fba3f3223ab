#pragma once

namespace bellmark {

class Program;

/// Removes what earlier processes that ended by force have left behind: half-written files, and the data folders of
/// runs that were never saved. Anything measured stays, but for removed runs whose time is over.
void CleanUpAtStart(Program& program);

}  // namespace bellmark
