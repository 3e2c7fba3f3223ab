#include "app/replay.h"

#include "app/program.h"

namespace bellmark {

void BeginReplay(Program& program, int sequenceIndex) {
    program.SetAside = SetAsideForReplay{program.Center, program.Run.DropSequenceIndex};
    program.Run.ReplayMode = true;
    program.Run.DropSequenceIndex = sequenceIndex;
}

void EndReplay(Program& program) {
    program.Run.ReplayMode = false;
    if (!program.SetAside) return;
    program.Center = program.SetAside->center;
    program.Run.DropSequenceIndex = program.SetAside->dropSequenceIndex;
    program.SetAside.reset();
}

}  // namespace bellmark
