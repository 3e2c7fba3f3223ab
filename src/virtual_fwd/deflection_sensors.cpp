#include "virtual_fwd/deflection_sensors.h"

#include <array>

#include "virtual_fwd/load_pulse.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr std::array<FWDMake, 4> makes{{{"dynatest", Make::Dynatest, "FWD-101", 1, 0, "kN", 0.1, 1},
                                        {"carlbro", Make::CarlBro, "Carl Bro 101", 10.8, 0.01, "kPa", 0.1, 1},
                                        {"jils", Make::Jils, "JILS-101", 1, 0, "kN", 0.1, 1},
                                        {"kuab", Make::Kuab, "KUAB-101", 1, 0, "kN", 1, 0}}};

}  // namespace

std::optional<FWDMake> MakeNamed(std::string_view name) {
    for (const FWDMake& make : makes) {
        if (make.name == name) return make;
    }
    return {};
}

double SensorReading(const DeflectionSensor& sensor, double trueMicrons, double standShare, Random& random) {
    return trueMicrons * sensor.initialGain / sensor.trueGain * (1 + standShare) *
           (1 + sensor.scatter * Gaussian(random));
}

std::vector<double> StandShares(std::size_t sensors, int trial, double endShare, Random& random) {
    constexpr double otherLean = 0.25;  // standard deviation of a trial's lean, as a share of the mean lean
    const double lean = endShare * (1 + otherLean * Gaussian(random)) * (trial % 2 == 1 ? 1 : -1);
    std::vector<double> shares;
    for (std::size_t sensor = 0; sensor < sensors; ++sensor)
        shares.push_back(lean * (2 * static_cast<double>(sensor) / static_cast<double>(sensors - 1) - 1));
    return shares;
}

}  // namespace bellmark::virtual_fwd
