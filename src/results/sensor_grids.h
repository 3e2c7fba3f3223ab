#pragma once

namespace bellmark {

class Grid;
struct CalibrationRun;
struct SensorEvaluation;

/// The deflection sensors' gains in the results, one row per sensor.
/// Reference trials: initial gain, gain of each trial and, with complete pairs, interim gain; below, means and changes.
/// trials: how many of the run's reference trials count.
void ShowReferenceGains(Grid& grid, const CalibrationRun& run, int trials);

/// Relative trials: gain of each trial, final gain, and its change from the initial gain; below, means of the gains and
/// the mean change of the interim gains. judged: colours the final gains and changes; nothing for none.
void ShowRelativeGains(Grid& grid, const CalibrationRun& run, const SensorEvaluation* judged);

}  // namespace bellmark
