#pragma once

namespace bellmark {

class Program;

/// Called when a screen begins to poll the operator's hand button.
void BeginHandButton(Program& program);

/// Polls the button once. True when it was down at the last poll and is now up: a press counts on release. A button
/// held down from one screen to the next has no effect until it was up once.
bool HandButtonWasReleased(Program& program);

}  // namespace bellmark
