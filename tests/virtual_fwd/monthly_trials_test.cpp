// The imaginary FWD's monthly trials, read and analysed like an FWD's file: what was put in must come out.
#include "virtual_fwd/monthly_trials.h"

#include <gtest/gtest.h>

#include <cmath>

#include "monthly/monthly_trial.h"
#include "pddx/mod_pddx_read.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {
namespace {

void FailOnWarning(const char* text) {
    ADD_FAILURE() << text;
}

struct Analysed {
    CalibrationRun run;
    MonthlyAnalysis analysis;
    ProfileStrings trueGains;
};

Analysed AnalyseTrial(const CenterOptions& options, int trial) {
    Random random(options.seed);
    const VirtualFWD fwd = MakeFWD(options, random);
    const SensorOptions& asked = options.fwd.sensors;
    const auto drops = DrawMonthlyDrops(fwd, asked, trial, random);
    const ProfileStrings file(MonthlyTrialText(fwd, asked, trial, drops, random, MakeDateTime(2012, 3, 9)));
    PDDXFile document;
    ReadPDDX(file, document, false);
    Analysed found;
    found.run.EnglishUnits = !options.metric;
    const MonthlyReading reading = ReadMonthlyTrial(document, found.run, "");
    EXPECT_EQ(reading.problem, MonthlyProblem::None);
    // In the run's unit, whatever the make writes.
    const double load = drops[0].pounds * (options.metric ? kilonewtonsPerPound : 1);
    EXPECT_NEAR(reading.loads.at(0) / load, fwd.loadCell.initialGain / fwd.loadCell.trueGain, 0.005);
    found.analysis = AnalyseMonthlyTrial(found.run, 1, 0, FailOnWarning);
    found.trueGains = ProfileStrings("[Gains]\r\n" + MonthlyGainsText(fwd, asked));
    return found;
}

CenterOptions OptionsFor(const char* make, bool metric, int sensors) {
    CenterOptions options;
    options.metric = metric;
    options.fwd.make = MakeNamed(make).value();
    options.fwd.deflectionResolution = metric ? 0.01 : 0.001;
    options.fwd.sensors.count = sensors;
    return options;
}

TEST(MonthlyTrials, TheSensorsOfEveryMakeAreFoundAgainInALeaningStand) {
    constexpr const char* makes[] = {"dynatest", "carlbro", "jils", "kuab"};
    for (int sensors = 6; sensors <= 12; ++sensors) {
        CenterOptions options = OptionsFor(makes[sensors % 4], sensors % 2 == 0, sensors);
        options.fwd.sensors.scatter = 0;
        options.fwd.sensors.standEffect = 0.01;
        options.fwd.sensors.setEffect = 0.01;
        const Analysed found = AnalyseTrial(options, 1 + sensors % 2);
        for (int s = 0; s < sensors; ++s) {
            const std::string key = "Sensor" + NumberText(options.fwd.make.firstSensorNumber + s) + ".MonthlyGain";
            const double gain = ReadNumber(found.trueGains.Get("Gains", key));
            // Every sensor was everywhere; what is left is the resolution, and set times position.
            EXPECT_NEAR(found.run.Sensor[static_cast<std::size_t>(s)].RelTrial[0].Gain / gain, 1, 1e-4) << key;
        }
        EXPECT_TRUE(found.analysis.SetIsSignificant && found.analysis.PositionIsSignificant) << sensors;
        // The top of the stand moves less in odd trials, more in even ones.
        const auto& positions = found.analysis.square.positions;
        EXPECT_EQ(positions.front().average < positions.back().average, sensors % 2 == 0);
    }
}

TEST(MonthlyTrials, WhatIsAskedForIsFound) {
    const struct {
        const char* what;
        double standEffect, setEffect, spread;
        std::optional<int> loose;
        bool position, sensor;
    } rows[] = {
        {"nothing", 0, 0, 0, {}, false, false},      {"stand", 0.004, 0, 0, {}, true, false},
        {"sets", 0, 0.01, 0, {}, false, false},      {"sensors", 0, 0, 0.015, {}, false, true},
        {"a loose sensor", 0, 0, 0, 4, false, true},
    };
    for (const auto& row : rows) {
        CenterOptions options = OptionsFor("kuab", true, 9);
        SensorOptions& sensors = options.fwd.sensors;
        sensors.initialGains = {1};
        sensors.standEffect = row.standEffect;
        sensors.setEffect = row.setEffect;
        sensors.gainSpread = row.spread;
        sensors.looseSensor = row.loose;
        const Analysed found = AnalyseTrial(options, 1);
        EXPECT_EQ(found.analysis.PositionIsSignificant, row.position) << row.what;
        // A set's five drops scatter for all sensors alike, so that no two sets are quite the same.
        const double setF = found.analysis.table.rows[latin_square::set].F.value();
        EXPECT_EQ(setF > 50, row.setEffect > 0) << row.what << ' ' << setF;
        EXPECT_EQ(found.analysis.SensorIsSignificant, row.sensor) << row.what;
        EXPECT_FALSE(found.analysis.standardError.isTooLarge) << row.what;
        // The make counts from 0.
        const bool isFound = found.analysis.CochranExceeded && found.analysis.cochran.sensor == 4;
        EXPECT_EQ(found.analysis.CochranExceeded, row.loose.has_value()) << row.what;
        EXPECT_EQ(isFound, row.loose.has_value()) << row.what;
    }
}

}  // namespace
}  // namespace bellmark::virtual_fwd
