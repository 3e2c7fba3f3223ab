#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "controls/picture.h"
#include "run/trial.h"

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

/// The residuals of all sensors side by side on one scale, over their FWD peaks; the sensor with the largest standard
/// error comes first. The drops of the device stand out.
Plot ResidualsOfAllSensors(const CalibrationRun& run, std::size_t device);

/// The drop that lies furthest from the line.
struct FurthestDrop {
    DropPlace place;
    double residual = 0;     ///< reference less line, in the units of the trial
    double gainWithout = 0;  ///< the gain that the other drops alone would give
};
/// Nothing with fewer than three drops: one line must be left to compare with.
std::optional<FurthestDrop> FurthestDropOf(const CalibrationRun& run, std::size_t device);
/// The same in words, for the operator to think about; empty without one.
std::string FurthestDropText(const CalibrationRun& run, std::size_t device);

}  // namespace bellmark
