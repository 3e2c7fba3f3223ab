// The report of a relative trial byte for byte against files that were laid out and computed by hand.
#include "relative/relative_report.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/text.h"
#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/version.h"

namespace bellmark {
namespace {

/// Three sensors with serial numbers of 2, 9 and 14 letters.
CalibrationRun SampleRun(bool english) {
    CalibrationRun run;
    run.EnglishUnits = english;
    run.NumberSensors = 3;
    run.DeviceName = "FWD-101";
    run.DeviceSerialNumber = "8002-123";
    run.OperatorName = "F. Driver";
    const double unit = english ? 1 : 25.4;
    run.RelTrial[1].SSSet = 0.1649 * unit * unit;
    run.RelTrial[1].SSSensor = 0.0042 * unit * unit;
    run.RelTrial[1].SSTotal = 0.2773 * unit * unit;
    const char* serials[] = {"D1", "SEN-00042", "GEO-2012-04567"};
    for (std::size_t s = 0; s < 3; ++s) {
        SensorCalRecord& sensor = run.Sensor[s];
        sensor.SerialNumber = serials[s];
        sensor.InitialGain = 1 + 0.01 * static_cast<double>(s);
        sensor.InterimGain = 1.00254;
        sensor.RelTrial[1] = {{}, 0.99987, 1.00241, static_cast<int>(3 - s), 19.806 * unit, 0.0327 * unit};
    }
    run.Sensor[2].RelTrial[1].Position = 0;
    return run;
}

void ExpectReport(const CalibrationRun& run, const std::string& expectedFile) {
    CenterConfig center;
    center.CalibrationCenter = "Sample Calibration Center";
    center.CalibrationCenterOperator = "A. Operator";
    const DateTime now = MakeDateTime(2012, 3, 9, 14, 5);
    const std::string name = RelativeReportName(run, 1, now);
    EXPECT_EQ(name, "8002-123 09-03-2012 2.RL");
    std::string expected = DiskFileSystem().ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "tests/relative" / expectedFile);
    // The version's line is that of the build.
    const ProgramVersion version = VersionOfProgram();
    const std::string placeholder = "VERSION";
    expected.replace(expected.find(placeholder), placeholder.size(), version.number + " - " + version.buildDate);
    const auto fail = [](const char* text) { ADD_FAILURE() << text; };
    EXPECT_EQ(ToWindows1252(PrintReportRel(run, center, 1, {name, "Relative 2.F25", now}, fail)), expected);
}

TEST(RelativeReport, InMils) {
    ExpectReport(SampleRun(true), "relative_report_mils.txt");
}

TEST(RelativeReport, InMicronsOfAKuab) {
    CalibrationRun run = SampleRun(false);
    run.Manufacturer = Make::Kuab;
    ExpectReport(run, "relative_report_microns.txt");
}

TEST(RelativeReport, DigitsOfTwoNumbersNeverStandTogether) {
    CalibrationRun run = SampleRun(true);
    run.RelTrial[1].SSSet = 1e14;
    run.RelTrial[1].SSTotal = 2e14;
    const auto ignore = [](const char*) {};
    const std::string text = PrintReportRel(run, {}, 1, {}, ignore);
    EXPECT_NE(text.find("100000000000000.0000\r\n                                  7"), std::string::npos) << text;
}

}  // namespace
}  // namespace bellmark
