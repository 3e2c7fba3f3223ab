#include "reference/hand_button.h"

#include "app/board_error.h"
#include "app/doors.h"
#include "app/program.h"
#include "controls/controls.h"

namespace bellmark {

namespace {

bool IsDown(Program& program, Timer& poll) {
    constexpr float pressedVolts = 1.0F;
    try {
        return program.The<AcquisitionDoor>().OneConversion(program.Run.ButtonChannel) >= pressedVolts;
    } catch (const BoardError&) {
        poll.Stop();
        throw;
    }
}

}  // namespace

void BeginHandButton(Program& program) {
    program.Run.ButtonDown = false;
    program.Run.ButtonHeldOver = true;
}

bool HandButtonWasReleased(Program& program, Timer& poll) {
    CalibrationRun& run = program.Run;
    const bool isDown = IsDown(program, poll);
    if (run.ButtonHeldOver) {
        run.ButtonHeldOver = isDown;
        return false;
    }
    const bool wasDown = run.ButtonDown;
    run.ButtonDown = isDown;
    return wasDown && !isDown;
}

}  // namespace bellmark
