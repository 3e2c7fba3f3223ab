#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "run/calibration_run.h"

/// The deflection sensors of an imaginary FWD in the sensor stand: what they read of a drop the true peak of which is
/// known.
namespace bellmark::virtual_fwd {

/// What distinguishes the FWDs of a make.
struct FWDMake {
    std::string_view name;  ///< "dynatest", "carlbro", "jils", "kuab"
    Make make = Make::Dynatest;
    std::string_view designation;   ///< tells the make to those who read it
    double sensorGain = 1;          ///< about which the gains of its sensors lie
    double gainSpread = 0;          ///< how far from it they lie, as a share of it
    std::string_view metricLoads;   ///< form in which it writes loads in metric units
    double micronResolution = 0.1;  ///< smallest step of a deflection in microns
    int firstSensorNumber = 1;      ///< by which people call its first sensor
};
std::optional<FWDMake> MakeNamed(std::string_view name);

struct DeflectionSensor {
    std::string serialNumber;
    double initialGain = 1;  ///< that the FWD works with
    double trueGain = 1;     ///< that would make its readings right: what a calibration is to find
    double scatter = 0;      ///< standard deviation of a reading, as a share of it
};

/// The deflection that the FWD takes for the peak, microns: trueMicrons x initialGain / trueGain with scatter, from
/// a place of the stand that moves by a share more than its middle.
double SensorReading(const DeflectionSensor& sensor, double trueMicrons, double standShare, Random& random);

/// By what share the stand moves more at each sensor than at its middle. The stand leans a little, so that one end
/// moves more and the other less; after each trial it is turned over with its sensors, and leans nearly as before.
/// sensors: 2 or more; trial: from 1; endShare: at the ends, in a trial on average.
std::vector<double> StandShares(std::size_t sensors, int trial, double endShare, Random& random);

}  // namespace bellmark::virtual_fwd
