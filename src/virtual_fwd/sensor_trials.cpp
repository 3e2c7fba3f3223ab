#include "virtual_fwd/sensor_trials.h"

#include <algorithm>

#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark::virtual_fwd {

namespace {

/// The standard error of a slope is about the scatter divided by the root of the number of drops: 0.003 or more with 15
/// to 40 drops, where 0.002 is allowed.
constexpr double badScatter = 0.02;

std::size_t IndexOf(const FWDMake& make, int sensor) {
    return static_cast<std::size_t>(sensor - make.firstSensorNumber);
}

double InitialGain(const SensorOptions& options, std::size_t sensor, double gainOfMake) {
    if (options.initialGains.size() == 1) return options.initialGains.front();
    return sensor < options.initialGains.size() ? options.initialGains[sensor] : gainOfMake;
}

void SpoilReadings(const VirtualFWD& fwd, const SensorOptions& options, const std::vector<StandDrop>& drops,
                   std::vector<DropReading>& readings) {
    for (std::size_t drop = 0; drop < drops.size(); ++drop) {
        for (const auto& [number, sensor] : options.badReadings) {
            if (number == drops[drop].number) readings[drop].microns[IndexOf(fwd.make, sensor)] *= badReadingFactor;
        }
    }
}

void ReverseSensors(VirtualFWD& fwd, std::vector<DropReading>& readings) {
    std::reverse(fwd.sensors.begin(), fwd.sensors.end());
    for (DropReading& reading : readings) std::reverse(reading.microns.begin(), reading.microns.end());
}

void TakeOutSensor(VirtualFWD& fwd, std::vector<DropReading>& readings, std::size_t sensor) {
    const auto place = static_cast<std::ptrdiff_t>(sensor);
    fwd.sensors.erase(fwd.sensors.begin() + place);
    for (DropReading& reading : readings) reading.microns.erase(reading.microns.begin() + place);
}

}  // namespace

std::vector<DeflectionSensor> MakeSensors(const FWDMake& make, const SensorOptions& options, Random& random) {
    std::vector<DeflectionSensor> sensors;
    for (std::size_t i = 0; i < maxSensors; ++i) {
        const double gainOfMake = make.sensorGain * (1 + make.gainSpread * (2 * random.Next() - 1));
        DeflectionSensor sensor;
        sensor.serialNumber = 'D' + NumberText(i + 1);
        sensor.initialGain = Round(InitialGain(options, i, gainOfMake), 4);
        // Rounded so that TrueGains.txt holds the gain in full.
        sensor.trueGain = Round(sensor.initialGain * (1 + options.gainSpread * (2 * random.Next() - 1)), 5);
        sensor.scatter = options.scatter;
        if (i < static_cast<std::size_t>(options.count)) sensors.push_back(sensor);
    }
    if (options.badSensor) sensors[IndexOf(make, *options.badSensor)].scatter = badScatter;
    return sensors;
}

std::vector<DropReading> ReadStandDrops(const VirtualFWD& fwd, double standEffect, int trial,
                                        const std::vector<StandDrop>& drops, Random& random) {
    const std::vector<double> shares = StandShares(fwd.sensors.size(), trial, standEffect, random);
    std::vector<DropReading> readings;
    for (const StandDrop& drop : drops) {
        DropReading reading;
        reading.pounds = LoadReading(fwd.loadCell, drop.pounds, random);
        for (std::size_t sensor = 0; sensor < fwd.sensors.size(); ++sensor)
            reading.microns.push_back(SensorReading(fwd.sensors[sensor], drop.microns, shares[sensor], random));
        readings.push_back(std::move(reading));
    }
    return readings;
}

std::string ReferenceTrialText(VirtualFWD fwd, const SensorOptions& options, int trial,
                               const std::vector<StandDrop>& drops, Random& random, DateTime now) {
    std::vector<DropReading> readings = ReadStandDrops(fwd, options.standEffect, trial, drops, random);
    SpoilReadings(fwd, options, drops, readings);
    if (const auto missing = options.missing.find(trial); missing != options.missing.end())
        TakeOutSensor(fwd, readings, IndexOf(fwd.make, missing->second));
    if (options.reversedTrials.count(trial) > 0) ReverseSensors(fwd, readings);
    const std::string comment = "Reference calibration of the deflection sensors, trial " + NumberText(trial);
    return TrialText(fwd, {"Reference" + NumberText(trial), comment, std::move(readings)}, now);
}

std::string RelativeTrialText(const VirtualFWD& fwd, const SensorOptions& options, int trial,
                              const std::vector<StandDrop>& drops, Random& random, DateTime now) {
    const std::string comment = "Relative calibration of the deflection sensors, trial " + NumberText(trial);
    return TrialText(fwd,
                     {"Relative" + NumberText(trial), comment,
                      ReadStandDrops(fwd, options.standEffect, trial, drops, random), options.relativeLocations},
                     now);
}

std::string SensorGainsText(const VirtualFWD& fwd, const SensorOptions& options) {
    std::string text;
    const auto add = [&](const std::string& name, const std::string& value) { text += name + '=' + value + "\r\n"; };
    for (std::size_t i = 0; i < fwd.sensors.size(); ++i) {
        const DeflectionSensor& sensor = fwd.sensors[i];
        const std::string name = "Sensor" + NumberText(fwd.make.firstSensorNumber + static_cast<int>(i));
        add(name + ".SerialNumber", sensor.serialNumber);
        add(name + ".TrueGain", NumberText(sensor.trueGain));
        add(name + ".InitialGain", NumberText(sensor.initialGain));
        add(name + ".Scatter", NumberText(sensor.scatter));
    }
    add("StandEffect", NumberText(options.standEffect));
    add("DeflectionUnits", std::string(fwd.deflections.name));
    add("DeflectionResolution", NumberText(fwd.deflections.resolution));
    if (options.badSensor) add("BadSensor", NumberText(*options.badSensor));
    for (const auto& [number, sensor] : options.badReadings)
        add("BadSensorReading." + DropNumberText(number) + ':' + NumberText(sensor), NumberText(badReadingFactor));
    for (const int trial : options.reversedTrials) add("ReversedSensors.Reference" + NumberText(trial), "True");
    for (const auto& [trial, sensor] : options.missing)
        add("MissingSensor.Reference" + NumberText(trial), NumberText(sensor));
    return text;
}

}  // namespace bellmark::virtual_fwd
