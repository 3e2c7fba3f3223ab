#include "reference/capture.h"

#include "app/doors.h"
#include "app/program.h"

namespace bellmark {

namespace {

/// Disables the menus while a drop is awaited.
class WaitForDrop {
  public:
    explicit WaitForDrop(Program& program) : program_(program) { Set(true); }
    ~WaitForDrop() { Set(false); }
    WaitForDrop(const WaitForDrop&) = delete;
    WaitForDrop& operator=(const WaitForDrop&) = delete;

  private:
    void Set(bool waits) {
        program_.Run.AcquisitionActive = waits;
        program_.The<MainFrameDoor>().SetMeasuring(waits);
    }

    Program& program_;
};

}  // namespace

bool CaptureAndWait(Program& program, int channel) {
    const CalibrationRun& run = program.Run;
    auto& acquisition = program.The<AcquisitionDoor>();
    acquisition.CaptureBlock(channel);
    {
        const WaitForDrop wait(program);
        while (!acquisition.BlockCaptured() && !run.DropAborted) program.Services.yield();
    }
    if (run.DropAborted) {
        acquisition.AbortAcquisition();
        return false;
    }
    acquisition.GetResultsVolts(program.Drop.RawVolts, program.Drop.NumSamples);
    return true;
}

}  // namespace bellmark
