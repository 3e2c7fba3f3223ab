#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "run/calibration_run.h"

/// An imaginary FWD's readings of a drop with a known true peak, and the form in which it writes them.
namespace bellmark::virtual_fwd {

/// The FWD's load cell, and the errors of its readings.
struct FWDLoadCell {
    double initialGain = 1;   ///< used by the FWD
    double trueGain = 1;      ///< makes its readings right: the value that a calibration is to find
    double scatter = 0.001;   ///< standard deviation of a reading, as a share of it
    double offsetPounds = 0;  ///< added to every reading
};

/// The load that the FWD takes for the peak, pounds: truePounds x initialGain / trueGain with scatter and offset, so
/// that the regression of the true on the read peaks has the slope trueGain / initialGain.
double LoadReading(const FWDLoadCell& cell, double truePounds, Random& random);

/// Distances of the deflection sensors from the center of the load plate, mm; an FWD with fewer sensors has the first
/// of them.
inline constexpr std::array<int, maxSensors> sensorDistances{0,    200,  300,  450,  600,  900,
                                                             1200, 1500, 1800, 2100, 2400, 2700};

/// Peak deflections under that many sensors, microns: the basin of a sound flexible pavement, in proportion to the
/// load.
std::vector<double> DeflectionReadings(double truePounds, std::size_t sensors, Random& random);

/// One way in which FWDs write loads.
struct LoadForm {
    std::string_view name;       ///< short form: "lbf", "kip", "psi", "kPa", "kPa-milimeters", "kPa-meter", "kN"
    std::string_view loadUnits;  ///< the word for it in the document
    std::string_view radiusUnits;
    double radius = 0;         ///< of the load plate, in radiusUnits
    double unitsPerPound = 0;  ///< one pound on the plate in loadUnits
    double resolution = 0;     ///< smallest step written, in loadUnits
};
std::optional<LoadForm> LoadFormNamed(std::string_view name);

/// One way in which FWDs write deflections; its name is also the word for it in the document.
struct DeflectionForm {
    std::string_view name;  ///< "mils" or "microns"
    double unitsPerMicron = 0;
    double resolution = 0;
};
std::optional<DeflectionForm> DeflectionFormNamed(std::string_view name);

/// The multiple of the resolution nearest to a value, and its text with the decimals of the resolution.
double ToResolution(double value, double resolution);
std::string ResolutionText(double value, double resolution);

}  // namespace bellmark::virtual_fwd
