// Calculations from the FWD's peaks, checked with numbers worked out by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fwd/fwd_peaks.h"
#include "fwd/regression_plot.h"
#include "pddx/pddx_file.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {
namespace {

using ::testing::ElementsAre;

CalibrationRun SmallRun(Procedure procedure) {
    CalibrationRun run;
    run.CurrentProcedure = procedure;
    run.Trial.shape = {1, 3, true};
    run.NumberSensors = 2;
    run.LoadCellRefTrials = 1;
    run.RefTrials = 1;
    return run;
}

void Fill(PDDXFile& document, const std::vector<std::string>& drops) {
    document.Sections("Deflection Data").Elements("NumberOfTestLocations").SetValue("1");
    PDDXSection& location = document.AddTestLocation(1);
    location.Elements("NumberOfDrops").SetValue(NumberText(drops.size()));
    for (std::size_t i = 0; i < drops.size(); ++i) location.AddDropData(static_cast<int>(i) + 1).SetValue(drops[i]);
}

TEST(FWDPeaks, LoadsOfEveryUnit) {
    const struct {
        double value;
        const char* units;
        double radius;
        const char* radiusUnits;
        double stored;
    } rows[] = {
        // 81.23 psi on 5.9055 inches: 81.23 * 3.14159 * 34.87493 = 8899.83
        {81.23, "pound-force per square inch", 5.9055, "inches", 8899.8},
        {9.01234, "kip", 0, "", 9012.3},
        // 707.5 kPa on 150 mm: 707.5 * 3.14159 * 0.0225 = 50.01019
        {707.5, "kilo-Pascal", 150, "millimeter", 50.0102},
        {707.5, "kilo-Pascal", 150, "milimeters", 50.0102},
        {707.5, "kilo-Pascal", 0.15, "meter", 50.0102},
        {9012.34, "pound-force", 150, "millimeter", 9012.34},
        {40.123456, "kilo-Newton", 150, "millimeter", 40.123456},
        {40.123456, "", 150, "millimeter", 40.123456},
        // Results are rounded half to even.
        {0.00025, "kip", 0, "", 0.2},
    };
    for (const auto& row : rows) {
        EXPECT_DOUBLE_EQ(StoredLoad(row.value, row.units, row.radius, row.radiusUnits), row.stored)
            << row.units << ' ' << row.radiusUnits;
    }
    EXPECT_EQ(StoredDeflection(12.345678, "mils"), 12.35);
    EXPECT_EQ(StoredDeflection(312.345678, "microns"), 312.3457);
    EXPECT_EQ(StoredDeflection(312.345678, "micron"), 312.3457);
}

TEST(FWDPeaks, DropsArePairedByTheirOrder) {
    CalibrationRun run = SmallRun(Procedure::LoadCell);
    PDDXFile document;
    document.Sections("Units").Elements("LoadUnits").SetValue("kip");
    Fill(document, {"9.1, 10.1, 5.1", "9.2, 10.2, 5.2", "9.3, 10.3, 5.3"});
    const FWDPeaks peaks = ReadFWDPeaks(document, run);
    EXPECT_TRUE(peaks.hasLocations);
    EXPECT_TRUE(peaks.unitsAreKnown);
    EXPECT_EQ(peaks.dropsInFile, 3);
    EXPECT_THAT(std::span(run.LCTrial[0].DropData).first(4), ElementsAre(9100, 9200, 9300, 0));
    EXPECT_EQ(run.LoadCellInitialGain, 1.0) << "without a gain anywhere the load cell has 1.0";

    run = SmallRun(Procedure::Sensors);
    document.Sections("Units").Elements("DeflectionUnits").SetValue("mils");
    document.Sections("Device Information").Elements("SensorSerialNumbers").SetValue("S1, S2");
    document.Sections("Device Calibration").Elements("SensorCalibrationCenterGain").SetValue("1.01");
    run.Sensor[0].SerialNumber = "known";
    ReadFWDPeaks(document, run);
    EXPECT_THAT(std::span(run.Sensor[0].RefTrial[0].DropData).first(3), ElementsAre(10.1, 10.2, 10.3));
    EXPECT_THAT(std::span(run.Sensor[1].RefTrial[0].DropData).first(3), ElementsAre(5.1, 5.2, 5.3));
    EXPECT_EQ(run.Sensor[0].SerialNumber, "known");
    EXPECT_EQ(run.Sensor[1].SerialNumber, "S2");
    EXPECT_EQ(run.Sensor[0].InitialGain, 1.01);
    EXPECT_EQ(run.Sensor[1].InitialGain, 0) << "a sensor has no gain to fall back to";
}

TEST(FWDPeaks, WhatIsNoPeakIsNamed) {
    CalibrationRun run = SmallRun(Procedure::LoadCell);
    PDDXFile document;
    Fill(document, {"9100, 1", "abc, 1", ""});
    const FWDPeaks peaks = ReadFWDPeaks(document, run);
    EXPECT_THAT(peaks.unreadable, ElementsAre("Drop 2: \"abc\"", "Drop 3: \"\""));
    EXPECT_FALSE(peaks.unitsAreKnown);
    run = SmallRun(Procedure::Sensors);
    PDDXFile dead;
    Fill(dead, {"9100, 1, 0", "9100, 1", "9100, x"});
    EXPECT_THAT(ReadFWDPeaks(dead, run).unreadable, ElementsAre("Drop 3: \"x\"")) << "a dead sensor reads 0";
    PDDXFile empty;
    EXPECT_FALSE(ReadFWDPeaks(empty, run).hasLocations);
}

TEST(FWDPeaks, AnotherDeviceIsRecognised) {
    CalibrationRun run = SmallRun(Procedure::LoadCell);
    PDDXFile document;
    EXPECT_TRUE(DifferencesFromRun(document, run).empty());
    run.DeviceSerialNumber = "8002-101";
    run.LoadCellSerialNumber = "LC-1";
    EXPECT_TRUE(DifferencesFromRun(document, run).empty());
    document.Sections("Device Information").Elements("DeviceSerialNumber").SetValue("8002-102");
    document.Sections("Device Information").Elements("LoadCellSerialNumber").SetValue("lc-1");
    EXPECT_THAT(DifferencesFromRun(document, run), ElementsAre("FWD serial number 8002-102 in place of 8002-101"));
}

TEST(Trial, ScatterOfReferenceAndFWD) {
    const struct {
        double reference, fwd;
        bool sensors, english, differs;
    } rows[] = {
        {90, 30, false, true, false},                                      // exactly 3
        {30, 90.009, false, true, false},                                  // 0.3333
        {91, 30, false, true, true},       {30, 91, false, true, true},    // 0.3297
        {24.9, 5, false, true, false},                                     // both below the floor of 25 pounds
        {25, 5, false, true, true},                                        // one reaches it
        {0.5, 0.1, false, false, true},                                    // kN
        {0.11, 0.02, false, false, false},                                 // both below 0.111205 kN
        {100, 0.01, false, true, false},                                   // too small to compare
        {0.5, 0.1, true, true, false},                                     // mils: one is not above the floor
        {0.5, 0.11, true, true, true},     {10, 2.5, true, false, false},  // microns
        {10, 2.6, true, false, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ScatterDiffers({0, row.reference, 0, row.fwd}, row.sensors, row.english), row.differs)
            << row.reference << ' ' << row.fwd << ' ' << row.sensors << row.english;
    }
}

TEST(Trial, GainStartsFromTheInitialOneInEveryTrial) {
    CalibrationRun run = SmallRun(Procedure::LoadCell);
    run.LoadCellInitialGain = 1.01;
    for (int trial = 1; trial <= 2; ++trial) {
        run.LoadCellRefTrials = trial;
        TrialRecord& record = run.LCTrial[static_cast<std::size_t>(trial - 1)];
        record.DropData = {6000, 9000, 12000};
        record.RefDropData = {6060, 9090, 12120};
        CalibrateDevice(run, 0);
        EXPECT_DOUBLE_EQ(record.AdjFactor, 1.01);
        EXPECT_DOUBLE_EQ(record.Gain, 1.01 * 1.01) << "trial " << trial;
    }
}

TEST(RegressionPlot, RangesAndTicks) {
    const struct {
        bool sensors, english;
        double largest, range, step;
    } rows[] = {
        {false, true, 17000, 24000, 2000},
        {false, false, 80, 120, 10},
        {true, true, 19.99, 20, 2},
        {true, true, 20, 25, 2},
        {true, true, 29.9, 30, 5},
        {true, true, 34.9, 35, 5},
        // 10 * round((35 + 5) / 10); (40 + 5) / 10 is 4.5 and goes to the even 4.
        {true, true, 35, 40, 5},
        {true, true, 40, 40, 5},
        {true, true, 46, 50, 5},
        {true, false, 499, 500, 50},
        {true, false, 500, 750, 100},
        {true, false, 750, 1000, 100},
    };
    for (const auto& row : rows) {
        const double range = RegressionPlotRange(row.sensors, row.english, row.largest);
        EXPECT_EQ(range, row.range) << row.largest;
        EXPECT_EQ(RegressionTickStep(range), row.step) << range;
    }
}

TEST(RegressionPlot, TheLineEndsAtTheEdgeAndADropTellsItsResidual) {
    CalibrationRun run = SmallRun(Procedure::LoadCell);
    run.LCTrial[0].DropData = {6000, 9000, 12000};
    run.LCTrial[0].RefDropData = {6303, 9450, 12600};
    run.LCTrial[0].AdjFactor = 1.05;
    Plot plot = RegressionPlot(run, 0);
    EXPECT_EQ(plot.title, "Load Cell Trial 1");
    EXPECT_THAT(plot.series.at(1).x, ElementsAre(0, 24000 / 1.05));
    EXPECT_THAT(plot.series.at(1).y, ElementsAre(0, 24000));
    EXPECT_EQ(plot.series.at(0).notes.front(), "Height 1, drop 1\nFWD 6,000.0, reference 6,303.0\nresidual +3.0");
    run.LCTrial[0].AdjFactor = 0.95;
    plot = RegressionPlot(run, 0);
    EXPECT_THAT(plot.series.at(1).x, ElementsAre(0, 24000));
    EXPECT_THAT(plot.series.at(1).y, ElementsAre(0, 24000 * 0.95));
}

}  // namespace
}  // namespace bellmark
