#include "reference/hand_button.h"

#include "app/doors.h"
#include "app/program.h"

namespace bellmark {

void BeginHandButton(Program& program) {
    program.Run.ButtonDown = false;
    program.Run.ButtonHeldOver = true;
}

bool HandButtonWasReleased(Program& program) {
    constexpr float pressedVolts = 1.0F;
    CalibrationRun& run = program.Run;
    const bool isDown = program.The<AcquisitionDoor>().OneConversion(run.ButtonChannel) >= pressedVolts;
    if (run.ButtonHeldOver) {
        run.ButtonHeldOver = isDown;
        return false;
    }
    const bool wasDown = run.ButtonDown;
    run.ButtonDown = isDown;
    return wasDown && !isDown;
}

}  // namespace bellmark
