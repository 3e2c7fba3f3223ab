#include "reference/capture.h"

#include "app/doors.h"
#include "app/program.h"

namespace bellmark {

bool CaptureAndWait(Program& program, int channel) {
    CalibrationRun& run = program.Run;
    auto& acquisition = program.The<AcquisitionDoor>();
    acquisition.CaptureBlock(channel);
    run.AcquisitionActive = true;
    while (!acquisition.BlockCaptured() && !run.DropAborted) program.Services.yield();
    run.AcquisitionActive = false;
    if (run.DropAborted) {
        acquisition.AbortAcquisition();
        return false;
    }
    acquisition.GetResultsVolts(program.Drop.RawVolts, program.Drop.NumSamples);
    return true;
}

}  // namespace bellmark
