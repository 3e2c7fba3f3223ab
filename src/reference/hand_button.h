#pragma once

namespace bellmark {

class Program;
class Timer;

/// Called when a screen begins to poll the operator's hand button.
void BeginHandButton(Program& program);

/// Polls the button once, by the screen's timer. True when it was down at the last poll and is now up: a press counts
/// on release. A button held down from one screen to the next has no effect until it was up once. A board that cannot
/// be read throws BoardError and stops the timer, so that the operator is told once.
bool HandButtonWasReleased(Program& program, Timer& poll);

}  // namespace bellmark
