#pragma once

namespace bellmark {

class Program;

/// Asks whether a drop of the trial is to be reviewed.
bool AskToReview(Program& program, int index);

/// Loads a saved drop of the trial in place of the drop in hand, to be reviewed. The drop's file holds the calibration
/// values of its own time, so the center's are set aside until EndReplay. isCounted: the trial waits for its answer;
/// otherwise its drops are still being taken.
void BeginReplay(Program& program, int index, bool isCounted);

/// Restores the drop in hand and the center's own values. Does nothing when no replay is on, so that it may be called
/// whenever a screen is left or entered.
void EndReplay(Program& program);

}  // namespace bellmark
