#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/date_time.h"
#include "virtual_fwd/deflection_sensors.h"
#include "virtual_fwd/drop_number.h"
#include "virtual_fwd/fwd_readings.h"

namespace bellmark {
class PDDXFile;
}

/// The files that an imaginary FWD's operating system writes: PDDX documents.
namespace bellmark::virtual_fwd {

/// The factor of a reading that is wrong on request.
inline constexpr double badReadingFactor = 1.05;

struct VirtualFWD {
    FWDMake make;
    std::string serialNumber;
    FWDLoadCell loadCell;
    LoadForm loads;
    DeflectionForm deflections;
    std::vector<DeflectionSensor> sensors;
    std::set<DropNumber> badReadings;  ///< loads that are read 5 % too large
};

struct DropReading {
    double pounds = 0;
    std::vector<double> microns;  ///< one per sensor
};

/// The FWD's readings of a drop on the road, before they are written in the FWD's units and resolution.
DropReading ReadDrop(const VirtualFWD& fwd, const DropNumber& number, double truePounds, Random& random);

/// One file of drops.
struct FWDTrial {
    std::string name;  ///< of the file, without its extension
    std::string comment;
    std::vector<DropReading> drops;
    int locations = 1;  ///< number of locations with equally many drops; a divisor of the number of drops
};

/// Sets the keys in which the FWD describes itself: serial numbers, sensors, gains and units. now: for the dates of the
/// last calibration, a year ago.
void SetDeviceKeys(PDDXFile& document, const VirtualFWD& fwd, DateTime now);

/// The FWD's configuration.
std::string ConfigurationText(const VirtualFWD& fwd, DateTime now);

/// The drops of one trial: field 1 of "DropData_n" is the load, the others are the deflections.
std::string TrialText(const VirtualFWD& fwd, const FWDTrial& trial, DateTime now);

/// The true values behind the load cell's readings, one "name=value" per line; "BadReading.1-H2D3" is the factor of
/// that reading.
std::string TrueGainsText(const VirtualFWD& fwd);

}  // namespace bellmark::virtual_fwd
