#include "app/replay.h"

#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

bool AskToReview(Program& program, int index) {
    const DropPlace place = PlaceOf(program.Run.Trial.shape, index);
    const std::string question = "Do you wish to review Drop Height " + NumberText(place.height) + ", Drop Number " +
                                 NumberText(place.drop) + '?';
    return program.ShowBox(question, box::yesNo + box::question, "Review Collected Data") == Answer::Yes;
}

void BeginReplay(Program& program, int index, bool isCounted) {
    program.CenterSetAside = program.Center;
    BeginReview(program.Run.Trial, index, isCounted);
}

void EndReplay(Program& program) {
    EndReview(program.Run.Trial);
    if (!program.CenterSetAside) return;
    program.Center = *program.CenterSetAside;
    program.CenterSetAside.reset();
}

}  // namespace bellmark
