// The FWD's earlier calibrations: read, shown, plotted, and the run added to them.

#include "results/fwd_history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "results/history_plot.h"
#include "run/calibration_run.h"

namespace bellmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Three sensors, all accepted.
CalibrationRun CalibratedRun(Make make = Make::Dynatest) {
    CalibrationRun run;
    run.Manufacturer = make;
    run.DeviceDesignationName = "Unit 7";
    run.DeviceModelNumber = "8002";
    run.DeviceSerialNumber = "8002-123";
    run.LoadCellSerialNumber = "LC-9";
    run.NewLoadCellCalibrationCenterGain = 1.00425;
    run.NewLoadCellCalibrationCenterDate = "08-Mar-2012";
    run.NumberSensors = 3;
    const double scale = make == Make::CarlBro ? 10.8 : 1;
    for (std::size_t s = 0; s < 3; ++s) {
        run.Sensor[s].SerialNumber = "D-" + NumberText(s + 1);
        run.Sensor[s].FinalGain = scale * (1.00125 + 0.01 * static_cast<double>(s));
    }
    run.LoadCellCalComplete = run.SensorRefCalComplete = run.SensorRelCalComplete = true;
    return run;
}

std::string Section(int number, const std::string& keys) {
    return "[Device Calibration_" + NumberText(number) + "]\r\n" + keys + "\r\n";
}

std::string Counted(int count, const std::string& sections) {
    return "[Device Calibration]\r\nNumberCalibrations = " + NumberText(count) + "\r\n\r\n" + sections;
}

const std::string wholeEntry =
    "LoadCellSerialNumber = LC-9\r\nLoadCellCalibrationCenterDate = 02-Mar-2010\r\n"
    "LoadCellCalibrationCenterGain = 1.0051\r\nSensorCalibrationCenterDate = 03-Mar-2010\r\n"
    "SensorSerialNumbers = D-1, D-2, D-3\r\nSensorCalibrationCenterGain = 1.0015, 0.9985, 1.0025\r\n"
    "CalCenterIDCode = 4\r\n";

/// A row as "text|text!doubt|".
std::string RowText(const EarlierCalibration& calibration, const CalibrationRun& run) {
    std::string text;
    for (const HistoryCell& cell : HistoryRow(calibration, run)) {
        text += cell.text + (cell.doubt.empty() ? "" : "!" + cell.doubt) + '|';
    }
    return text;
}

TEST(FWDHistory, EachEntryIsARowInTheWordsOfTheFile) {
    const struct {
        const char* what;
        std::string keys;
        const char* row;
    } cases[] = {
        {"whole", wholeEntry, "02-Mar-2010|4|1.005|1.002|0.999|1.003|"},
        {"no section", "", "||||||"},
        {"sensors alone", "SensorCalibrationCenterDate = 3-Mar-2010\r\nSensorCalibrationCenterGain = 1,1.01,0.99\r\n",
         "3-Mar-2010|||1.000|1.010|0.990|"},
        {"short list with an empty gain", "SensorCalibrationCenterGain = 1.0015, \r\n", "|||1.002|||"},
        {"long list", "SensorCalibrationCenterGain = 1, 1, 1, 0.9\r\n",
         "!The file has gains of 4 sensors.|||1.000|1.000|1.000|"},
        {"no number", "LoadCellCalibrationCenterGain = n/a\r\nSensorCalibrationCenterGain = 1.0x, 1\r\n",
         "||n/a!The file has no number here.|1.0x!The file has no number here.|1.000||"},
        {"other devices",
         "LoadCellSerialNumber = LC-8\r\nLoadCellCalibrationCenterGain = 1\r\n"
         "SensorSerialNumbers = d-1, D-9\r\nSensorCalibrationCenterGain = 1, 1, 1\r\n",
         "||1.000!Of the load cell LC-8.|1.000|1.000!Of the sensor D-9, which was in this place.|1.000|"},
    };
    const CalibrationRun run = CalibratedRun();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        PDDXFile document;
        const std::string section = c.keys.empty() ? "" : Section(1, c.keys);
        const auto history = ReadHistory(ProfileStrings(Counted(1, section)), document);
        ASSERT_EQ(history.size(), 1u);
        EXPECT_EQ(RowText(history[0], run), c.row);
    }
    EXPECT_THAT(HistoryHeadings(run), ElementsAre("Date", "Calibration Center", "Load Cell Center Gain",
                                                  "Sensor Center Gains\nD-1", "\nD-2", "\nD-3"));
}

TEST(FWDHistory, ACountThatCannotBeRightIsRefused) {
    for (const auto& [count, isRight] : {std::pair{0, true}, {1003, true}, {1004, false}, {32768, false}}) {
        SCOPED_TRACE(count);
        const std::string text = Counted(count, Section(3, wholeEntry) + "[device calibration_03]\r\na = b\r\n");
        PDDXFile document;
        if (isRight) {
            EXPECT_EQ(ReadHistory(ProfileStrings(text), document).size(), static_cast<std::size_t>(count));
        } else {
            EXPECT_THROW(ReadHistory(ProfileStrings(text), document), std::runtime_error);
        }
    }
    EXPECT_EQ(HighestCalibration(ProfileStrings("[Device Calibration_7x]\r\n[DEVICE CALIBRATION_12]\r\n")), 12);
}

const std::string addedLoadCell =
    "LoadCellSerialNumber=LC-9\r\nLoadCellCalibrationCenterDate=08-Mar-2012\r\nLoadCellCalibrationCenterGain=1."
    "00425\r\n";
const std::string addedSensors =
    "NumberOfDeflectionSensors=3\r\nSensorCalibrationCenterDate=09-Mar-2012\r\nSensorSerialNumbers=D-1, D-2, D-3\r\n"
    "SensorCalibrationCenterGain=1.0013, 1.0113, 1.0213\r\n";

/// As AddSection leaves it: without blanks and without an empty line.
std::string Added(int number, const std::string& keys) {
    return "[Device Calibration_" + NumberText(number) + "]\r\n" + keys;
}

HistoryUpdate Add(const std::string& document, const std::string& history, int counted, CalibrationRun run) {
    run.NumberCalibrations = static_cast<std::int16_t>(counted);
    return AddRunToHistory(document, ProfileStrings(history), run, MakeDateTime(2012, 3, 9, 10));
}

TEST(FWDHistory, TheRunIsAddedAndAllElseStaysByteForByte) {
    std::string strange =
        "; first\n[Unknown]\r\nkey =  value \n[Device Calibration]\nother = 1\rNumberCalibrations = 1\n";
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\n' && byte != '\r') strange += FromWindows1252(std::string(1, static_cast<char>(byte)));
    }
    strange += "\r\n" + Section(1, wholeEntry + "Foreign = 1\n; remark\n") + "no end";
    const HistoryUpdate update = Add(strange, strange, 1, CalibratedRun());
    EXPECT_EQ(update.number, 2);
    std::string expected = strange;
    expected.replace(expected.find("NumberCalibrations = 1\n"), 23, "NumberCalibrations=2\r\n");
    EXPECT_EQ(update.text, expected + "\r\n" + Added(2, addedLoadCell + addedSensors));
}

TEST(FWDHistory, WhatIsAcceptedDecidesWhatIsAdded) {
    const std::string empty = "[Device Calibration]\r\n";
    const std::string first = "[Device Calibration]\r\nNumberCalibrations=1\r\n[Device Calibration_1]\r\n";
    CalibrationRun run = CalibratedRun();
    run.SensorRelCalComplete = false;
    EXPECT_EQ(Add(empty, "", 0, run).text, first + addedLoadCell + addedSensors);
    run.SensorRefCalComplete = false;
    EXPECT_EQ(Add(empty, "", 0, run).text, first + addedLoadCell);
    run = CalibratedRun(Make::CarlBro);
    run.LoadCellCalComplete = false;
    const std::string text = Add(empty, "", 0, run).text;
    EXPECT_THAT(text, HasSubstr("SensorCalibrationCenterGain=10.81350000, 10.92150000, 11.02950000\r\n"));
    EXPECT_THAT(text, Not(HasSubstr("LoadCell")));
}

TEST(FWDHistory, NothingInEitherFileIsLost) {
    const auto plain = [](const char* center) { return std::string("CalCenterIDCode = ") + center + "\r\n"; };
    const std::string history = Counted(
        3, Section(1, plain("1")) + Section(2, plain("2") + "Foreign = x\r\n; kept\r\n") + Section(3, plain("3")));
    const struct {
        const char* what;
        std::string document;
        int number;
        std::vector<std::pair<int, const char*>> centers;
    } cases[] = {
        {"none of them yet", "[Device Calibration]\r\n", 4, {{1, "1"}, {2, "2"}, {3, "3"}}},
        {"the same", history, 4, {{1, "1"}, {2, "2"}, {3, "3"}}},
        {"one of its own", Counted(1, Section(1, plain("own"))), 4, {{1, "own"}, {2, "2"}, {3, "3"}}},
        {"more than the history", Counted(4, Section(4, plain("own"))), 5, {{1, "1"}, {3, "3"}, {4, "own"}}},
        {"not counted, with a gap", Section(6, plain("own")), 7, {{3, "3"}, {6, "own"}}},
        {"counted without sections", Counted(8, ""), 9, {{1, "1"}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const HistoryUpdate update = Add(c.document, history, 3, CalibratedRun());
        const ProfileStrings strings(update.text);
        EXPECT_EQ(update.number, c.number);
        EXPECT_EQ(strings.Get("Device Calibration", "NumberCalibrations"), NumberText(c.number));
        EXPECT_EQ(strings.Get("Device Calibration_" + NumberText(c.number), "LoadCellSerialNumber"), "LC-9");
        for (const auto& [number, center] : c.centers) {
            EXPECT_EQ(strings.Get("Device Calibration_" + NumberText(number), "CalCenterIDCode"), center) << number;
        }
        EXPECT_THAT(update.text, HasSubstr("Foreign = x\r\n; kept\r\n"));
    }
    EXPECT_EQ(Add(Counted(32766, ""), "", 0, CalibratedRun()).number, 32767);
    EXPECT_THROW(Add(Counted(32767, ""), "", 0, CalibratedRun()), std::runtime_error);
}

// ---- the plot

TEST(HistoryPlot, TheTrendAgreesWithExactArithmetic) {
    const struct {
        const char* points;
        double lastYear, change;
    } cases[] = {
#include "gain_trend_expected.inc"
    };
    CalibrationRun run = CalibratedRun();
    run.NumberSensors = 0;
    run.NewLoadCellCalibrationCenterGain = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.points);
        std::vector<EarlierCalibration> history;
        for (const std::string& point : Split(c.points, ';')) {
            const auto parts = Split(point, '=');
            history.push_back({"", parts[0], parts[1], "", {}, {}, ""});
        }
        const auto gains = GainsOf(history, run, 0, MakeDateTime(2012, 3, 9));
        ASSERT_EQ(gains.size(), history.size());
        // Differences of years of up to 32 are exact to 1e-15; the slope of gains near 1 loses no more than 1e-13.
        EXPECT_NEAR(ChangePerYear(gains).value(), c.change, 1e-12 * std::max(1.0, std::abs(c.change)));
        const Plot plot = HistoryPlot(history, run, GainsToChoose(run).front(), MakeDateTime(2012, 3, 9));
        EXPECT_DOUBLE_EQ(plot.series.front().x.back(), c.lastYear);
        EXPECT_LE(plot.horizontal.blocks.size(), 12u);
    }
}

TEST(HistoryPlot, FollowsASensorThroughThePlacesOfTheList) {
    const CalibrationRun run = CalibratedRun();
    const std::vector<EarlierCalibration> history{
        {"LC-9", "01-Jan-2010", "1.0010", "", {"D-2", "D-1"}, {"1.02", "1.01"}, ""},
        {"LC-8", "02-Jan-2010", "1.0050", "03-Jan-2011", {}, {"1.03", "", "x"}, ""},
        {"", "no date", "1.0060", "", {"D-3"}, {"1.04"}, ""},
    };
    const auto text = [&](int device, DateTime now = MakeDateTime(2012, 3, 9, 10)) {
        std::string all;
        for (const DatedGain& gain : GainsOf(history, run, device, now)) {
            all += Format(gain.date, "dd-mmm-yyyy") + ' ' + NumberText(gain.gain) + (gain.isOfRun ? " run;" : ";");
        }
        return all;
    };
    EXPECT_EQ(text(0), "01-Jan-2010 1.001;09-Mar-2012 1.00425 run;");
    EXPECT_EQ(text(1), "01-Jan-2010 1.01;03-Jan-2011 1.03;09-Mar-2012 1.00125 run;");
    EXPECT_EQ(text(2), "01-Jan-2010 1.02;09-Mar-2012 1.01125 run;");
    EXPECT_EQ(text(3), "09-Mar-2012 1.02125 run;");

    const auto choices = GainsToChoose(run);
    ASSERT_EQ(choices.size(), 5u);
    EXPECT_EQ(choices[2].name, "Sensor 1 D-1");
    const Plot plot = HistoryPlot(history, run, choices[0], MakeDateTime(2012, 3, 9, 10));
    ASSERT_EQ(plot.series.size(), 5u);  // three sensors, two limits
    EXPECT_THAT(plot.series[3].y, ElementsAre(0.98, 0.98));
    EXPECT_THAT(plot.series[4].y, ElementsAre(1.02, 1.02));
    EXPECT_EQ(plot.series[0].notes[0], "Sensor 1 D-1\n1-Jan-2010: 1.0100");
    ASSERT_EQ(plot.marks.size(), 1u);
    EXPECT_NEAR(plot.marks[0].x, 2012 + 68.0 / 366, 1e-12);
    EXPECT_EQ(plot.horizontal.blocks.size(), 3u);
    EXPECT_LT(plot.vertical.lowest, 0.98);
    EXPECT_GT(plot.vertical.highest, 1.03);
    EXPECT_EQ(TrendText(history, run, choices[2], MakeDateTime(2012, 3, 9)),
              "3 calibrations, 2010 to 2012: gain 1.0013 to 1.0300, on average -0.45% a year. Dashed: limits 0.98 "
              "and 1.02.");
    EXPECT_EQ(NewGainsText(run, MakeDateTime(2012, 3, 9)),
              "New gains: load cell 1.004; sensors 1: 1.001, 2: 1.011, 3: 1.021.");
    EXPECT_EQ(NewGainsText(CalibrationRun(), MakeDateTime(2012, 3, 9)), "No new gains yet.");
    const CalibrationRun carlBro = CalibratedRun(Make::CarlBro);
    EXPECT_THAT(HistoryPlot(history, carlBro, choices[0], {}).series[4].y, ElementsAre(11.5, 11.5));
    EXPECT_THAT(HistoryPlot(history, carlBro, choices[1], {}).series[1].y, ElementsAre(0.98, 0.98));
    EXPECT_TRUE(HistoryPlot({}, CalibrationRun(), GainsToChoose(CalibrationRun())[1], {}).IsEmpty());
}

TEST(HistoryPlot, TheRunThatWasAddedIsNotShownTwice) {
    const CalibrationRun run = CalibratedRun();
    const std::vector<EarlierCalibration> history{{"", "09-Mar-2012", "1.0043", "", {}, {"1.0013", "1.0000"}, ""}};
    const DateTime now = MakeDateTime(2012, 3, 9, 10);
    EXPECT_EQ(GainsOf(history, run, 1, now).size(), 1u);
    EXPECT_TRUE(GainsOf(history, run, 1, now)[0].isOfRun);
    EXPECT_EQ(GainsOf(history, run, 2, now).size(), 2u);
    EXPECT_EQ(GainsOf(history, run, 1, MakeDateTime(2012, 3, 10)).size(), 2u);
}

}  // namespace
}  // namespace bellmark
