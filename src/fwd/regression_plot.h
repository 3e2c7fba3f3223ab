#pragma once

#include <cstddef>

#include "controls/picture.h"
#include "run/calibration_run.h"

/// The trial of a device as it is drawn: reference over FWD peaks with the line through the origin.
namespace bellmark {

/// Upper end of both axes, in the units of the run. largest: of the FWD's and the reference's peaks.
double RegressionPlotRange(bool sensors, bool englishUnits, double largest);

/// Distance of the tick labels: a round whole number, at most 14 labels from 0 to the range.
double RegressionTickStep(double range);

/// One marker for each drop; pointed at it tells height, drop, both peaks and the residual.
Plot RegressionPlot(const CalibrationRun& run, std::size_t device);

/// The residuals (reference less line) of the same drops, on a scale of their own: beside the peaks they cannot be
/// seen.
Plot ResidualPlot(const CalibrationRun& run, std::size_t device);

}  // namespace bellmark
