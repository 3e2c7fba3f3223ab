#include "reference/hand_button.h"

#include "app/doors.h"
#include "app/program.h"

namespace bellmark {

bool HandButtonWasReleased(Program& program) {
    constexpr float pressedVolts = 1.0F;
    const bool wasDown = program.Run.ButtonDown;
    program.Run.ButtonDown =
        program.The<AcquisitionDoor>().OneConversion(program.Run.ButtonChannel) >= pressedVolts;
    return wasDown && !program.Run.ButtonDown;
}

}  // namespace bellmark
