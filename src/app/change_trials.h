#pragma once

namespace bellmark {

class Program;
struct TrialShape;

/// Whether the trials from now on may have this shape. A trial keeps one shape from its first drop to its last, so the
/// operator is asked whether the trial in hand is to be repeated. With No nothing changes.
bool MayChangeTrials(Program& program, const TrialShape& wanted);

}  // namespace bellmark
