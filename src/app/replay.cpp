#include "app/replay.h"

#include "app/ctrl_ht_drop_array.h"
#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"

namespace bellmark {

bool WantsToReview(Program& program, int sequenceIndex) {
    const int perHeight = program.Run.NumberDropsPerLoadLevel;
    const std::string question = "Do you wish to review Drop Height " +
                                 NumberText(HeightOfDrop(sequenceIndex, perHeight) + 1) + ", Drop Number " +
                                 NumberText(DropInHeight(sequenceIndex, perHeight) + 1) + '?';
    return program.ShowBox(question, box::yesNo + box::question, "Review Collected Data") == Answer::Yes;
}

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
