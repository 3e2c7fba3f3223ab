#pragma once

namespace bellmark {

class Grid;
struct CalibrationRun;

/// The deflection sensors' gains as the results show them, one row a sensor.
/// Reference trials: initial gain, gain of each trial and, with complete pairs, interim gain; below, means and changes.
/// trials: how many of the run's reference trials count.
void ShowReferenceGains(Grid& grid, const CalibrationRun& run, int trials);

}  // namespace bellmark
