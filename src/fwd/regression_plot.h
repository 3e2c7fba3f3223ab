#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "controls/picture.h"
#include "run/trial.h"

/// The plot of a device's trial: reference over FWD peaks with the line through the origin.
namespace bellmark {

/// Upper end of both axes, in the units of the run. largest: of the FWD's and the reference's peaks.
double RegressionPlotRange(bool sensors, bool englishUnits, double largest);

/// Distance of the tick labels: a round whole number, at most 14 labels from 0 to the range.
double RegressionTickStep(double range);

/// One marker for each drop; pointing at it shows height, drop, both peaks and the residual.
Plot RegressionPlot(const CalibrationRun& run, std::size_t device);

/// The residuals (reference less line) of the same drops, on their own scale: beside the peaks they are too small to
/// see.
Plot ResidualPlot(const CalibrationRun& run, std::size_t device);

/// The residuals of all sensors side by side on one scale, over their FWD peaks; the sensor with the largest standard
/// error comes first. The drops of the given device are highlighted.
Plot ResidualsOfAllSensors(const CalibrationRun& run, std::size_t device);

/// The drop with the largest distance from the line.
struct FurthestDrop {
    DropPlace place;
    double residual = 0;     ///< reference less line, in the units of the trial
    double gainWithout = 0;  ///< the gain from the other drops alone
};
/// Nothing with fewer than three drops: a line through the others needs at least two.
std::optional<FurthestDrop> FurthestDropOf(const CalibrationRun& run, std::size_t device);
/// The same in words, as advice to the operator; empty without one.
std::string FurthestDropText(const CalibrationRun& run, std::size_t device);

}  // namespace bellmark
