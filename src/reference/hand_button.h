#pragma once

namespace bellmark {

class Program;

/// Polls the operator's hand button once. True when it was down at the last poll and is not now: the press counts on release,
/// so that a button held down from one screen to the next does nothing there.
bool HandButtonWasReleased(Program& program);

}  // namespace bellmark
