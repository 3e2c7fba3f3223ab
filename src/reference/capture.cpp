#include "reference/capture.h"

#include "app/doors.h"
#include "app/program.h"
#include "platform/dialogs.h"

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

void TellProblem(Program& program, const std::string& problem) {
    program.Run.DropAborted = true;
    program.Log(problem);
    program.ShowBox("The capture has failed.\r\n" + problem, box::critical);
}

}  // namespace

bool CaptureAndWait(Program& program, int channel) {
    const CalibrationRun& run = program.Run;
    auto& acquisition = program.The<AcquisitionDoor>();
    acquisition.CaptureBlock(channel);
    {
        const WaitForDrop wait(program);
        while (!acquisition.BlockCaptured() && !run.DropAborted && acquisition.CaptureProblem().empty())
            program.Services.yield();
    }
    if (run.DropAborted || !acquisition.CaptureProblem().empty()) {
        acquisition.AbortAcquisition();
        if (!run.DropAborted) TellProblem(program, acquisition.CaptureProblem());
        return false;
    }
    acquisition.GetResultsVolts(program.Drop.RawVolts, program.Drop.NumSamples);
    return true;
}

}  // namespace bellmark
