#pragma once

namespace bellmark {

class Program;

/// Asks whether a drop of the trial is to be looked at again.
bool WantsToReview(Program& program, int sequenceIndex);

/// Puts a saved drop of the trial in place of the drop in hand, to be looked at. The drop's file brings the calibration
/// values of its own time along, so what it changes is set aside until EndReplay.
void BeginReplay(Program& program, int sequenceIndex);

/// Back to the drop in hand and to the center's own values. Nothing when no replay is on.
void EndReplay(Program& program);

}  // namespace bellmark
