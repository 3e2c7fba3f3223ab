#pragma once

namespace bellmark {

struct CalibrationRun;
struct CenterConfig;
struct DropRecord;

/// The trigger of the procedure in hand, called for each sample of a capture in its order; volts: the sample as
/// captured. The load cell's procedure waits for its load, all others for the accelerometer. Set-up, the daily
/// calibration and an initial burst are captured without a trigger.
bool CheckTrigger(const CalibrationRun& run, const CenterConfig& center, DropRecord& drop, double volts);

}  // namespace bellmark
