#pragma once

#include <cstddef>
#include <string>

#include "analysis/analysis.h"
#include "controls/color.h"
#include "run/calibration_run.h"

/// The trial whose peaks are compared: of the load cell in procedure 5, of all deflection sensors in procedure 4. It is
/// the last one counted. A device is the load cell, or a sensor by its index from 0.
namespace bellmark {

inline bool CalibratesSensors(const CalibrationRun& run) {
    return run.CurrentProcedure == 4;
}

int& TrialCount(CalibrationRun& run);
int TrialCount(const CalibrationRun& run);
std::size_t DevicesInTrial(const CalibrationRun& run);

/// Throws std::out_of_range when no trial was counted.
TrialRecord& TrialOf(CalibrationRun& run, std::size_t device);
const TrialRecord& TrialOf(const CalibrationRun& run, std::size_t device);

const std::string& SerialNumberOf(const CalibrationRun& run, std::size_t device);
double InitialGainOf(const CalibrationRun& run, std::size_t device);

/// The sensor so many places further on, going round; step: at most the number of sensors.
std::size_t NeighbourSensor(const CalibrationRun& run, std::size_t sensor, int step);

/// Fit of the reference's peaks on those of the device, of the trial as it is stored.
OriginRegression RegressionOf(const CalibrationRun& run, std::size_t device);

/// Fits, and stores adjustment factor, standard error and gain with the trial: the gain is the device's initial one
/// times the adjustment factor, in a second trial too (AASHTO R32).
OriginRegression CalibrateDevice(CalibrationRun& run, std::size_t device);

/// What the standard error of a slope is shown on: too large are those that do not even round to the limit of 0.002.
Color StdErrorColor(double stdErrSlope);

/// The scatter of the reference's and of the FWD's peaks within a height differ by more than a factor of 3. What lies
/// below the noise floor counts for sensors when both do, for the load cell unless both do. Deviations in the units of
/// the run (mils or microns, pounds or kN).
bool ScatterDiffers(const HeightStatistics& height, bool sensors, bool englishUnits);

}  // namespace bellmark
