#pragma once

namespace bellmark {

class Program;

/// Asks whether a drop of the trial is to be looked at again.
bool AskToReview(Program& program, int index);

/// Puts a saved drop of the trial in place of the drop in hand, to be looked at. The drop's file brings the calibration
/// values of its own time along, so the center's are set aside until EndReplay. isCounted: the trial waits for its
/// answer; otherwise its drops are still being taken.
void BeginReplay(Program& program, int index, bool isCounted);

/// Back to the drop in hand and to the center's own values. Nothing when no replay is on, so that it may be called
/// whenever a screen is left or entered.
void EndReplay(Program& program);

}  // namespace bellmark
