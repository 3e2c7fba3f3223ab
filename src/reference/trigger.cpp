#include "reference/trigger.h"

#include "reference/accel_analysis.h"
#include "reference/load_analysis.h"
#include "run/calibration_run.h"
#include "run/center_config.h"

namespace bellmark {

bool CheckTrigger(const CalibrationRun& run, const CenterConfig& center, DropRecord& drop, double volts) {
    if (run.CurrentProcedure == Procedure::LoadCell)
        return CheckLoadTrigger(drop, center.ReferenceLoadCellCalibrationCoefficients, volts);
    const bool firesAtOnce =
        run.BurstCapture || run.CurrentProcedure == Procedure::Setup || run.CurrentProcedure == Procedure::Flip;
    return firesAtOnce || CheckAccelTrigger(drop, center, volts);
}

}  // namespace bellmark
