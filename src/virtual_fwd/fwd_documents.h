#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/date_time.h"
#include "virtual_fwd/drop_number.h"
#include "virtual_fwd/fwd_readings.h"

namespace bellmark {
class PDDXFile;
}

/// The files that an imaginary FWD's operating system writes: PDDX documents.
namespace bellmark::virtual_fwd {

struct VirtualFWD {
    std::string designation;
    std::string serialNumber;
    FWDLoadCell loadCell;
    LoadForm loads;
    DeflectionForm deflections;
    std::set<DropNumber> badReadings;  ///< loads that are read 5 % too large
};

struct DropReading {
    double pounds = 0;
    std::array<double, sensorDistances.size()> microns{};
};

/// What the FWD reads of a drop, before it is written in the FWD's units and resolution.
DropReading ReadDrop(const VirtualFWD& fwd, const DropNumber& number, double truePounds, Random& random);

/// Sets what the FWD tells of itself: serial numbers, sensors, gains and units. now: for the dates of the last
/// calibration, a year ago.
void SetDeviceKeys(PDDXFile& document, const VirtualFWD& fwd, DateTime now);

/// The FWD's configuration.
std::string ConfigurationText(const VirtualFWD& fwd, DateTime now);

/// The drops of one trial as one test location: field 1 of "DropData_n" is the load, the others are the deflections.
std::string TrialText(const VirtualFWD& fwd, int trial, const std::vector<DropReading>& drops, DateTime now);

/// What the FWD's readings were made of, "name=value" a line; "BadReading.1-H2D3" is by what that reading was
/// multiplied.
std::string TrueGainsText(const VirtualFWD& fwd);

}  // namespace bellmark::virtual_fwd
