#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "run/calibration_run.h"

/// The deflection sensors of an imaginary FWD in the sensor stand: their readings of a drop with a known true peak.
namespace bellmark::virtual_fwd {

/// What distinguishes the FWDs of a make.
struct FWDMake {
    std::string_view name;  ///< "dynatest", "carlbro", "jils", "kuab"
    Make make = Make::Dynatest;
    std::string_view designation;   ///< by which readers recognise the make
    double sensorGain = 1;          ///< mean of the gains of its sensors
    double gainSpread = 0;          ///< spread of the gains, as a share of the mean
    std::string_view metricLoads;   ///< form in which it writes loads in metric units
    double micronResolution = 0.1;  ///< smallest step of a deflection in microns
    int firstSensorNumber = 1;      ///< number of its first sensor
};
std::optional<FWDMake> MakeNamed(std::string_view name);

struct DeflectionSensor {
    std::string serialNumber;
    double initialGain = 1;  ///< used by the FWD
    double trueGain = 1;     ///< makes its readings right: the value that a calibration is to find
    double scatter = 0;      ///< standard deviation of a reading, as a share of it
};

/// The deflection that the FWD takes for the peak, microns: trueMicrons x initialGain / trueGain with scatter. The
/// sensor's place in the stand moves more than the middle by standShare.
double SensorReading(const DeflectionSensor& sensor, double trueMicrons, double standShare, Random& random);

/// The share by which the stand moves more at each sensor than at its middle. The stand leans a little, so that one end
/// moves more and the other less. After each trial it is turned over with its sensors, and leans nearly as before.
/// sensors: 2 or more; trial: from 1; endShare: the share at the ends, in a trial on average.
std::vector<double> StandShares(std::size_t sensors, int trial, double endShare, Random& random);

}  // namespace bellmark::virtual_fwd
