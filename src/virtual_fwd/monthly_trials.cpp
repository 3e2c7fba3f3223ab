#include "virtual_fwd/monthly_trials.h"

#include "monthly/monthly_trial.h"
#include "monthly/rotation.h"
#include "platform/numbers.h"
#include "virtual_fwd/load_pulse.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr std::size_t dropsPerSet = monthlyDropsPerSet;

/// About 1 % of the reading: five microns, where all others stay within one.
constexpr double looseScatter = 0.01;

void Loosen(VirtualFWD& fwd, const SensorOptions& options) {
    if (!options.looseSensor) return;
    const int sensor = *options.looseSensor - fwd.make.firstSensorNumber;
    fwd.sensors.at(static_cast<std::size_t>(sensor)).scatter = looseScatter;
}

}  // namespace

std::vector<StandDrop> DrawMonthlyDrops(const VirtualFWD& fwd, const SensorOptions& options, int trial,
                                        Random& random) {
    constexpr double targetMicrons = 500;
    constexpr double poundsPerMicron = 18;
    constexpr double repeatShare = 0.002;
    std::vector<StandDrop> drops;
    for (std::size_t set = 0; set < fwd.sensors.size(); ++set) {
        const double ofSet = targetMicrons * (1 + options.setEffect * Gaussian(random));
        for (std::size_t drop = 0; drop < dropsPerSet; ++drop) {
            const double microns = ofSet * (1 + repeatShare * Gaussian(random));
            drops.push_back({{trial, 1, static_cast<int>(drops.size()) + 1}, microns, poundsPerMicron * microns});
        }
    }
    return drops;
}

std::string MonthlyTrialText(const VirtualFWD& fwd, const SensorOptions& options, int trial,
                             const std::vector<StandDrop>& drops, Random& random, DateTime now) {
    VirtualFWD inStand = fwd;
    Loosen(inStand, options);
    const std::size_t sensors = inStand.sensors.size();
    const std::vector<double> shares = StandShares(sensors, trial, options.standEffect, random);
    std::vector<DropReading> readings;
    for (std::size_t drop = 0; drop < drops.size(); ++drop) {
        DropReading reading;
        reading.pounds = LoadReading(inStand.loadCell, drops[drop].pounds, random);
        for (std::size_t s = 0; s < sensors; ++s) {
            const double share = shares[PositionOf(s, drop / dropsPerSet, sensors)];
            reading.microns.push_back(SensorReading(inStand.sensors[s], drops[drop].microns, share, random));
        }
        readings.push_back(std::move(reading));
    }
    const std::string number = NumberText(trial);
    return TrialText(inStand, {"Monthly" + number, "Monthly relative calibration, trial " + number, readings}, now);
}

std::string MonthlyGainsText(const VirtualFWD& fwd, const SensorOptions& options) {
    double sum = 0;
    for (const DeflectionSensor& sensor : fwd.sensors) sum += sensor.initialGain / sensor.trueGain;
    const double common = sum / static_cast<double>(fwd.sensors.size());
    std::string text;
    for (std::size_t s = 0; s < fwd.sensors.size(); ++s) {
        text += "Sensor" + NumberText(fwd.make.firstSensorNumber + static_cast<int>(s)) +
                ".MonthlyGain=" + NumberText(Round(fwd.sensors[s].trueGain * common, 6)) + "\r\n";
    }
    text += "SetEffect=" + NumberText(options.setEffect) + "\r\n";
    if (options.looseSensor) text += "LooseSensor=" + NumberText(*options.looseSensor) + "\r\n";
    return text;
}

}  // namespace bellmark::virtual_fwd
