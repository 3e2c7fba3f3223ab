#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "virtual_fwd/fwd_documents.h"

/// Trials of an imaginary FWD's deflection sensors in the sensor stand, as its files record them.
namespace bellmark::virtual_fwd {

/// Options of the sensors and their trials. Sensors are numbered as operators number them: from 1, with a KUAB from 0.
struct SensorOptions {
    int count = 9;                     ///< 5 to 12
    std::vector<double> initialGains;  ///< one for all or one each, four decimals; empty: those of the make
    /// Standard deviation of a reading, as a share of it: under a micron in all but the highest drops. Differences
    /// between drops included, this agrees with a limit of 3 microns for the standard error of a relative trial (AASHTO
    /// R32).
    double scatter = 0.001;
    double standEffect = 0.001;    ///< share by which the ends of the stand move more or less than its middle
    std::optional<int> badSensor;  ///< with scatter that makes its standard error too large
    std::set<std::pair<DropNumber, int>> badReadings;  ///< a drop of one sensor in a reference trial, 5 % too large
    std::set<int> reversedTrials;                      ///< reference trials with the sensors in opposite order
    std::map<int, int> missing;                        ///< by trial, a sensor missing from a reference trial
    double gainSpread = 0.015;                         ///< largest share by which a true gain is off its initial one
    int relativeTrials = 0;                            ///< 0 to 4
    int relativeLocations = 1;                         ///< over which the 40 drops of a file are spread: 1 or 4
    int monthlyTrials = 0;                             ///< 0 to 4
    double setEffect = 0.002;                          ///< share by which the sets of a monthly trial differ
    std::optional<int> looseSensor;                    ///< in the stand of the monthly trials
};

/// A drop in the stand, the same for all sensors.
struct StandDrop {
    DropNumber number;
    double microns = 0;  ///< true peak
    double pounds = 0;   ///< load that causes it
};

/// The sensors of an FWD of a make. Uses the same random numbers for any number of sensors, and whether gains are given
/// or not.
std::vector<DeflectionSensor> MakeSensors(const FWDMake& make, const SensorOptions& options, Random& random);

/// The readings of all sensors for one trial's drops.
std::vector<DropReading> ReadStandDrops(const VirtualFWD& fwd, double standEffect, int trial,
                                        const std::vector<StandDrop>& drops, Random& random);

/// The files of one trial, with the faults that the options ask for in a reference trial.
std::string ReferenceTrialText(VirtualFWD fwd, const SensorOptions& options, int trial,
                               const std::vector<StandDrop>& drops, Random& random, DateTime now);
std::string RelativeTrialText(const VirtualFWD& fwd, const SensorOptions& options, int trial,
                              const std::vector<StandDrop>& drops, Random& random, DateTime now);

/// The true values behind the sensors' readings, one "name=value" per line; the names contain the sensors' numbers, as
/// "Sensor3.TrueGain".
std::string SensorGainsText(const VirtualFWD& fwd, const SensorOptions& options);

}  // namespace bellmark::virtual_fwd
