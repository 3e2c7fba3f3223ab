#pragma once

#include <functional>

#include "results/trial_files.h"

namespace bellmark {

class Program;

/// Deletes the marked trials with their files. The files move to the removed runs once the run is saved without them.
/// takeOut: removes the trials from the run's records. Returns false and deletes nothing when the run cannot be saved
/// first. Throws FileError when a file cannot be deleted or renamed; all trials are kept then.
bool DeleteTrialsWithFiles(Program& program, const TrialFileKind& kind, const TrialMarks& marks,
                           const std::function<void()>& takeOut);

}  // namespace bellmark
