#pragma once

#include <functional>

#include "results/trial_files.h"

namespace bellmark {

class Program;

/// Deletes the marked trials with their files; the files go to the removed runs once the run is saved without them.
/// takeOut: takes the trials out of the run's records. Nothing is deleted when the run cannot be saved before; then
/// false. Throws FileError when a file cannot be deleted or renamed; then all trials are still there.
bool DeleteTrialsWithFiles(Program& program, const TrialFileKind& kind, const TrialMarks& marks,
                           const std::function<void()>& takeOut);

}  // namespace bellmark
