#pragma once

namespace bellmark {

class Program;

/// Captures one block on a channel into the drop in hand (RawVolts, NumSamples) and waits for it; events are served
/// meanwhile. False when the wait was aborted (DropAborted), by the operator or because the board failed, which is
/// told: the acquisition is stopped and the record is unchanged.
bool CaptureAndWait(Program& program, int channel);

}  // namespace bellmark
