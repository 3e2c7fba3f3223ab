#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "run/calibration_run.h"

/// What an imaginary FWD reads of a drop the true peak of which is known, and how it writes that down.
namespace bellmark::virtual_fwd {

/// The FWD's load cell, and what is wrong with its readings.
struct FWDLoadCell {
    double initialGain = 1;   ///< that the FWD works with
    double trueGain = 1;      ///< that would make its readings right: what a calibration is to find
    double scatter = 0.001;   ///< standard deviation of a reading, as a share of it
    double offsetPounds = 0;  ///< that every reading is too large by
};

/// The load that the FWD takes for the peak, pounds: truePounds x initialGain / trueGain with scatter and offset, so
/// that the regression of the true on the read peaks has the slope trueGain / initialGain.
double LoadReading(const FWDLoadCell& cell, double truePounds, Random& random);

/// Places of the deflection sensors behind the center of the load plate, mm; an FWD with fewer has the first of them.
inline constexpr std::array<int, maxSensors> sensorDistances{0,    200,  300,  450,  600,  900,
                                                             1200, 1500, 1800, 2100, 2400, 2700};

/// Peak deflections under so many sensors, microns: a basin as of a sound flexible pavement, in proportion to the load.
std::vector<double> DeflectionReadings(double truePounds, std::size_t sensors, Random& random);

/// One way in which FWDs write loads.
struct LoadForm {
    std::string_view name;       ///< short form: "lbf", "kip", "psi", "kPa", "kPa-milimeters", "kPa-meter", "kN"
    std::string_view loadUnits;  ///< the document's word for it
    std::string_view radiusUnits;
    double radius = 0;         ///< of the load plate, in radiusUnits
    double unitsPerPound = 0;  ///< what one pound on the plate is in loadUnits
    double resolution = 0;     ///< smallest step of what is written, in loadUnits
};
std::optional<LoadForm> LoadFormNamed(std::string_view name);

/// One way in which FWDs write deflections; its name is the document's word for it too.
struct DeflectionForm {
    std::string_view name;  ///< "mils" or "microns"
    double unitsPerMicron = 0;
    double resolution = 0;
};
std::optional<DeflectionForm> DeflectionFormNamed(std::string_view name);

/// The multiple of the resolution nearest to a value, and its text with as many decimals as the resolution has.
double ToResolution(double value, double resolution);
std::string ResolutionText(double value, double resolution);

}  // namespace bellmark::virtual_fwd
