#pragma once

namespace bellmark {

class Program;
struct TrialShape;

/// Whether the trials from now on may be of this shape. A trial in hand is of one shape from its first drop to its
/// last: the operator is asked whether it is repeated; with No nothing changes.
bool MayChangeTrials(Program& program, const TrialShape& wanted);

}  // namespace bellmark
