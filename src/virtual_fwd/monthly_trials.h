#pragma once

#include <string>
#include <vector>

#include "virtual_fwd/sensor_trials.h"

/// Monthly trials of an imaginary FWD: its sensors rotate in the stand, and there is no reference.
namespace bellmark::virtual_fwd {

/// The drops of a monthly trial, as many sets of five as the FWD has sensors, near 500 microns. Each set is by chance
/// larger or smaller as a whole: options.setEffect is the standard deviation of that, as a share.
std::vector<StandDrop> DrawMonthlyDrops(const VirtualFWD& fwd, const SensorOptions& options, int trial, Random& random);

/// The file of one trial of those drops. The ends of the stand move more and less than its middle, whichever sensor
/// stands there; a loose sensor scatters.
std::string MonthlyTrialText(const VirtualFWD& fwd, const SensorOptions& options, int trial,
                             const std::vector<StandDrop>& drops, Random& random, DateTime now);

/// The gain that each sensor should be found to have in monthly trials, one "Sensor3.MonthlyGain=value" per line. No
/// reference tells the true deflection: sensors are compared with their mean, and all gains may be off by one factor.
std::string MonthlyGainsText(const VirtualFWD& fwd, const SensorOptions& options);

}  // namespace bellmark::virtual_fwd
