#include "virtual_fwd/fwd_readings.h"

#include <cmath>
#include <numbers>

#include "platform/format.h"
#include "platform/numbers.h"
#include "run/center_config.h"
#include "virtual_fwd/load_pulse.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr double plateInches = 5.9055;  ///< the FWD's value: its pressures refer to this exact radius
constexpr double plateMeters = 0.15;
constexpr double micronsPerMil = 25.4;
constexpr double deflectionScatter = 0.002;

constexpr double CircleArea(double radius) {
    return std::numbers::pi * radius * radius;
}

/// A pressure is the load divided by the area of the whole plate. Resolutions are about one pound, as FWDs write them:
/// 0.01 psi is 1.1 pounds, 0.1 kPa 1.6, 0.01 kN 2.2.
constexpr double kilopascalsPerPound = kilonewtonsPerPound / CircleArea(plateMeters);
constexpr std::array<LoadForm, 7> loadForms{
    {{"lbf", "pound-force", "inch", plateInches, 1, 1},
     {"kip", "kip", "inch", plateInches, 0.001, 0.001},
     {"psi", "pound-force per square inch", "inch", plateInches, 1 / CircleArea(plateInches), 0.01},
     {"kPa", "kilo-Pascal", "millimeter", 1000 * plateMeters, kilopascalsPerPound, 0.1},
     {"kPa-milimeters", "kilo-Pascal", "milimeters", 1000 * plateMeters, kilopascalsPerPound, 0.1},
     {"kPa-meter", "kilo-Pascal", "meter", plateMeters, kilopascalsPerPound, 0.1},
     {"kN", "kilo-Newton", "millimeter", 1000 * plateMeters, kilonewtonsPerPound, 0.01}}};

constexpr std::array<DeflectionForm, 2> deflectionForms{{{"mils", 1 / micronsPerMil, 0.01}, {"microns", 1, 0.1}}};

template <class Forms>
auto FormNamed(const Forms& forms, std::string_view name) -> std::optional<typename Forms::value_type> {
    for (const auto& form : forms) {
        if (form.name == name) return form;
    }
    return {};
}

/// "0", or "0.00" for a resolution such as 0.05.
std::string PictureOf(double resolution) {
    const std::string text = NumberText(resolution);
    const auto point = text.find('.');
    return point == std::string::npos ? "0" : "0." + std::string(text.size() - point - 1, '0');
}

}  // namespace

double LoadReading(const FWDLoadCell& cell, double truePounds, Random& random) {
    return truePounds * cell.initialGain / cell.trueGain * (1 + cell.scatter * Gaussian(random)) + cell.offsetPounds;
}

std::vector<double> DeflectionReadings(double truePounds, std::size_t sensors, Random& random) {
    constexpr double basinPounds = 9000;
    constexpr std::array<double, maxSensors> basin{310, 262, 235, 200, 170, 124, 93, 71, 56, 46, 38, 32};
    std::vector<double> microns;
    for (std::size_t sensor = 0; sensor < sensors; ++sensor)
        microns.push_back(basin[sensor] * (truePounds / basinPounds * (1 + deflectionScatter * Gaussian(random))));
    return microns;
}

std::optional<LoadForm> LoadFormNamed(std::string_view name) {
    return FormNamed(loadForms, name);
}

std::optional<DeflectionForm> DeflectionFormNamed(std::string_view name) {
    return FormNamed(deflectionForms, name);
}

double ToResolution(double value, double resolution) {
    return std::nearbyint(value / resolution) * resolution;
}

std::string ResolutionText(double value, double resolution) {
    return Format(ToResolution(value, resolution), PictureOf(resolution));
}

}  // namespace bellmark::virtual_fwd
