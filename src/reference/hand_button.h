#pragma once

namespace bellmark {

class Program;

/// A screen begins to poll the operator's hand button.
void BeginHandButton(Program& program);

/// Polls the button once. True when it was down at the last poll and is not now: the press counts on release. A button
/// that is held down from one screen to the next does nothing there until it was seen up.
bool HandButtonWasReleased(Program& program);

}  // namespace bellmark
