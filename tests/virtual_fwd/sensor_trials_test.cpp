// The imaginary FWD's files of drops in the stand are read back like an FWD's file, and must give the true values of
// the drops.
#include "virtual_fwd/sensor_trials.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {
namespace {

const DateTime now = MakeDateTime(2012, 3, 9);

CenterOptions OptionsFor(const char* make, bool metric, int sensors) {
    CenterOptions options;
    options.metric = metric;
    options.fwd.make = MakeNamed(make).value();
    options.fwd.sensors.count = sensors;
    return options;
}

VirtualFWD FWDFor(const CenterOptions& options) {
    Random random(options.seed);
    return MakeFWD(options, random);
}

/// Two drops of each height, 300 to 900 microns.
std::vector<StandDrop> FewDrops(int trial) {
    std::vector<StandDrop> drops;
    for (int height = 1; height <= 3; ++height) {
        for (int drop = 1; drop <= 2; ++drop)
            drops.push_back({{trial, height, drop}, 290.0 * height + 10 * drop, 3000.0 * height});
    }
    return drops;
}

struct TrialFile {
    ProfileStrings strings;

    std::vector<std::string> List(const char* section, const char* key) const {
        std::vector<std::string> list;
        for (const std::string& item : Split(strings.Get(section, key), ',')) list.emplace_back(Trim(item));
        return list;
    }
    std::vector<double> Readings(std::size_t drop) const {
        std::vector<double> readings;
        for (const std::string& field : List("Test Location 1", ("DropData_" + NumberText(drop)).c_str()))
            readings.push_back(ReadNumber(field));
        return readings;
    }
};

TrialFile ReferenceFile(const VirtualFWD& fwd, const SensorOptions& options, int trial) {
    Random random(7);
    return {ProfileStrings(ReferenceTrialText(fwd, options, trial, FewDrops(trial), random, now))};
}

TEST(SensorTrials, EverySensorOfEveryMakeReadsTheTruePeaks) {
    const struct {
        const char* make;
        bool metric;
        int sensors;
        const char* designation;
        const char* loadUnits;
        double micronsPerUnit;
        double step;  ///< in the file's unit
        double gain;  ///< mean of the initial gains
    } cases[] = {
        {"dynatest", false, 9, "FWD-101", "pound-force", 25.4, 0.01, 1},
        {"carlbro", true, 5, "Carl Bro 101", "kilo-Pascal", 1, 0.1, 10.8},
        {"jils", false, 12, "JILS-101", "pound-force", 25.4, 0.01, 1},
        {"kuab", true, 7, "KUAB-101", "kilo-Newton", 1, 1, 1},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.make);
        CenterOptions options = OptionsFor(test.make, test.metric, test.sensors);
        options.fwd.sensors.scatter = 0;
        const VirtualFWD fwd = FWDFor(options);
        for (const int trial : {1, 2}) {
            const TrialFile file = ReferenceFile(fwd, options.fwd.sensors, trial);
            EXPECT_EQ(file.strings.Get("Device Information", "DeviceDesignationName"), test.designation);
            EXPECT_EQ(file.strings.Get("Units", "LoadUnits"), test.loadUnits);
            EXPECT_EQ(file.strings.Get("Units", "DeflectionUnits"), test.metric ? "microns" : "mils");
            const auto gains = file.List("Device Calibration", "SensorCalibrationCenterGain");
            ASSERT_EQ(gains.size(), static_cast<std::size_t>(test.sensors));
            const auto drops = FewDrops(trial);
            for (std::size_t drop = 0; drop < drops.size(); ++drop) {
                const auto readings = file.Readings(drop + 1);
                ASSERT_EQ(readings.size(), gains.size() + 1);
                for (std::size_t s = 0; s < gains.size(); ++s) {
                    const double gain = ReadNumber(gains[s]);
                    EXPECT_NEAR(gain, test.gain, 0.01 * test.gain);
                    const double steps = readings[s + 1] / test.step;
                    EXPECT_NEAR(steps, std::round(steps), 1e-6);
                    // The stand's ends move about 0.1 % more or less than its middle; turned over, the other way.
                    const double place = 2 * static_cast<double>(s) / (test.sensors - 1) - 1;
                    const double found = readings[s + 1] * test.micronsPerUnit * fwd.sensors[s].trueGain / gain;
                    const double share = found / drops[drop].microns - 1;
                    const double halfStep = test.step / 2 * test.micronsPerUnit * 1.016 / drops[drop].microns;
                    EXPECT_NEAR(share, 0.001 * place * (trial == 1 ? 1 : -1), 0.0006 * std::abs(place) + halfStep);
                }
            }
        }
    }
}

TEST(SensorTrials, WhatIsSpoiledOnRequestIsSpoiledAndNothingElse) {
    CenterOptions options = OptionsFor("kuab", true, 7);
    const VirtualFWD fwd = FWDFor(options);
    const TrialFile right = ReferenceFile(fwd, options.fwd.sensors, 2);
    SensorOptions spoiled = options.fwd.sensors;
    spoiled.badReadings = {{{2, 3, 1}, 0}, {{1, 1, 1}, 3}};  // the second belongs to another trial
    const TrialFile bad = ReferenceFile(fwd, spoiled, 2);
    spoiled.badReadings.clear();
    spoiled.missing = {{2, 1}, {1, 5}};
    const TrialFile missing = ReferenceFile(fwd, spoiled, 2);
    spoiled.missing.clear();
    spoiled.reversedTrials = {2};
    const TrialFile reversed = ReferenceFile(fwd, spoiled, 2);

    using Names = std::vector<std::string>;
    EXPECT_EQ(right.List("Device Information", "SensorSerialNumbers"),
              (Names{"D1", "D2", "D3", "D4", "D5", "D6", "D7"}));
    EXPECT_EQ(missing.List("Device Information", "SensorSerialNumbers"), (Names{"D1", "D3", "D4", "D5", "D6", "D7"}));
    EXPECT_EQ(missing.strings.Get("Device Configuration", "NumberOfDeflectionSensors"), "6");
    EXPECT_EQ(reversed.List("Device Information", "SensorSerialNumbers"),
              (Names{"D7", "D6", "D5", "D4", "D3", "D2", "D1"}));
    for (std::size_t drop = 1; drop <= 6; ++drop) {
        auto expected = right.Readings(drop);
        const std::vector<double> others(expected.begin() + 2, expected.end());
        const auto readings = bad.Readings(drop);
        EXPECT_EQ(std::vector<double>(readings.begin() + 2, readings.end()), others);
        EXPECT_NEAR(readings[1], expected[1] * (drop == 5 ? 1.05 : 1), drop == 5 ? 1.03 : 0);
        std::reverse(expected.begin() + 1, expected.end());
        EXPECT_EQ(reversed.Readings(drop), expected);
        std::reverse(expected.begin() + 1, expected.end());
        expected.erase(expected.begin() + 2);
        EXPECT_EQ(missing.Readings(drop), expected);
    }
}

TEST(SensorTrials, GainsGivenAndTheNumberOfSensorsChangeNoOtherGain) {
    CenterOptions options = OptionsFor("carlbro", true, 12);
    const auto all = FWDFor(options).sensors;
    options.fwd.sensors.count = 6;
    options.fwd.sensors.badSensor = 2;
    options.fwd.sensors.initialGains = {all[0].initialGain, 10.75, 1, 1, 1, 1};
    const auto few = FWDFor(options).sensors;
    ASSERT_EQ(few.size(), 6U);
    EXPECT_EQ(few[0].trueGain, all[0].trueGain);
    EXPECT_EQ(few[1].initialGain, 10.75);
    EXPECT_NEAR(few[1].trueGain / 10.75, all[1].trueGain / all[1].initialGain, 2e-6);
    EXPECT_GT(few[1].scatter, 10 * few[2].scatter);
    const std::string told = SensorGainsText(FWDFor(options), options.fwd.sensors);
    for (const char* line : {"\r\nSensor2.TrueGain=", "\r\nSensor2.InitialGain=10.75\r\n", "\r\nBadSensor=2\r\n"})
        EXPECT_NE(told.find(line), std::string::npos) << told;
    EXPECT_EQ(told.find("Sensor7"), std::string::npos);
    // A KUAB's first sensor is number 0.
    options = OptionsFor("kuab", true, 7);
    EXPECT_EQ(SensorGainsText(FWDFor(options), options.fwd.sensors).substr(0, 25), "Sensor0.SerialNumber=D1\r\n");
}

TEST(SensorTrials, RelativeTrialIsFortyHighDropsOfAStandThatGrowsWarm) {
    CenterOptions options = OptionsFor("dynatest", true, 9);
    options.fwd.sensors.relativeLocations = 4;
    const VirtualFWD fwd = FWDFor(options);
    Random random(5);
    const auto drops = DrawRelativeDrops(options, 1, random);
    ASSERT_EQ(drops.size(), 40U);
    const ProfileStrings file(RelativeTrialText(fwd, options.fwd.sensors, 1, drops, random, now));
    EXPECT_EQ(file.Get("Deflection Data", "NumberOfTestLocations"), "4");
    double halves[2] = {0, 0};
    for (int drop = 0; drop < 40; ++drop) {
        const std::string section = "Test Location " + NumberText(drop / 10 + 1);
        EXPECT_EQ(file.Get(section, "NumberOfDrops"), "10");
        const auto fields = Split(file.Get(section, "DropData_" + NumberText(drop % 10 + 1)), ',');
        ASSERT_EQ(fields.size(), 10U);
        const double microns = drops[static_cast<std::size_t>(drop)].microns;
        EXPECT_NEAR(microns, 900, 0.04 * 900);
        for (std::size_t s = 0; s < 9; ++s) {
            const auto& sensor = fwd.sensors[s];
            const double found = ReadNumber(fields[s + 1]) * sensor.trueGain / sensor.initialGain;
            EXPECT_NEAR(found, microns, 0.006 * microns);
        }
        halves[drop / 20] += microns / 20;
    }
    EXPECT_NEAR(halves[1] / halves[0], 1.005, 0.002);
}

}  // namespace
}  // namespace bellmark::virtual_fwd
