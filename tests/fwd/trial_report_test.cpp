// Reports byte for byte against files that were laid out and computed by hand.
#include "fwd/trial_report.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/text.h"
#include "run/trial.h"
#include "run/version.h"

namespace bellmark {
namespace {

/// Three heights of two drops, of peaks in every width of the table.
CalibrationRun SampleRun(Procedure procedure) {
    CalibrationRun run;
    run.CurrentProcedure = procedure;
    run.Trial.shape = {3, 2, true};
    run.NumberSensors = 1;
    run.LoadCellRefTrials = 2;
    run.RefTrials = 1;
    run.DeviceName = "FWD-101";
    run.DeviceSerialNumber = "8002-101";
    run.OperatorName = "F. Driver";
    run.LoadCellSerialNumber = "LC-8002";
    run.LoadCellInitialGain = 1.0123;
    run.Sensor[0].SerialNumber = "D1";
    run.Sensor[0].InitialGain = 0.995;
    run.MeasuredPlus = 3.7414;
    run.MeasuredUnbalancedZero = 1.2;
    run.Trial.DropNoiseFlags[3] = true;
    return run;
}

CenterConfig SampleCenter() {
    CenterConfig center;
    center.CalibrationCenter = "Sample Calibration Center";
    center.CalibrationCenterOperator = "A. Operator";
    center.ReferenceLoadCellName = "RLC-07";
    center.ReferenceLoadCellCalibrationDate = MakeDateTime(2011, 11, 3);
    center.ReferenceLoadCellExcitationVolts = 10;
    center.ReferenceLoadCellGain = "5.00";
    center.ReferenceLoadCellSensitivity = 800;
    center.ReferenceLoadCellPlusVoltage = 3.742;
    center.ReferenceLoadCellUnbalancedZero = 1.218;
    center.ReferenceLoadCellCalibrationCoefficients = {4012.37, 1.8312, -0.26471, 0.0118, -0.00049};
    center.AccelerometerSerialNumber = "ACC-3";
    center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 9);
    center.AccelDailyCalibrationTime = MakeDateTime(2012, 3, 9, 8, 5);
    center.AccelExcitationVolts = 5;
    center.AccelGain = "1";
    center.AccelSensitivity = 2;
    center.AccelVoltageSlope = 1.00123;
    center.AccelReferenceCalibrationDate = MakeDateTime(2011, 10, 1);
    center.AccelRefCalibrationCoefficients = {-0.001, 4.02, 0.0005, -0.0001};
    return center;
}

void ExpectReport(const CalibrationRun& run, const std::string& expectedFile) {
    const DateTime now = MakeDateTime(2012, 3, 9, 14, 5);
    const std::string name = TrialReportName(run, 0, now);
    std::string expected = DiskFileSystem().ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "tests/fwd" / expectedFile);
    // The version's line comes from the build.
    const ProgramVersion version = VersionOfProgram();
    const std::string placeholder = "VERSION";
    expected.replace(expected.find(placeholder), placeholder.size(), version.number + " - " + version.buildDate);
    EXPECT_EQ(ToWindows1252(TrialReportText(run, SampleCenter(), 0, {name, "Trial 2.F25", now, 21.25})), expected);
}

TEST(TrialReport, LoadCellInPounds) {
    CalibrationRun run = SampleRun(Procedure::LoadCell);
    run.LCTrial[1].RefDropData = {6028.34, 5997.05, 9013.5, 9040.5, 12030.7, 12117.3};
    run.LCTrial[1].DropData = {6034, 6009, 9027.84, 9051, 12055, 12124};
    run.LCTrial[1].AdjFactor = 0.99825;
    run.LCTrial[1].StdErrAdjFactor = 0.000249;
    run.LCTrial[1].Gain = 1.0105285;
    EXPECT_EQ(TrialReportName(run, 0, MakeDateTime(2012, 3, 9)), "8002-101 09-Mar-2012 LC-8002.LC2");
    ExpectReport(run, "load_cell_report.txt");
}

TEST(TrialReport, SensorInMicrons) {
    CalibrationRun run = SampleRun(Procedure::Sensors);
    run.Trial.shape.englishUnits = false;
    TrialRecord& trial = run.Sensor[0].RefTrial[0];
    trial.RefDropData = {9.994, 9.996, 99.94, 99.996, 312.34, 1012.5};
    trial.DropData = {10, 10.2, 100.1, 100.2, 313, 1013};
    trial.AdjFactor = 0.9991;
    trial.StdErrAdjFactor = 0.00055;
    trial.Gain = 0.9941045;
    EXPECT_EQ(TrialReportName(run, 0, MakeDateTime(2012, 3, 9)), "8002-101 09-Mar-2012 D1.RF1");
    ExpectReport(run, "sensor_report.txt");
}

TEST(TrialReport, LongSerialNumbersFitIntoTheNameAndStayApart) {
    CalibrationRun run = SampleRun(Procedure::Sensors);
    run.NumberSensors = 2;
    run.DeviceSerialNumber = run.Sensor[0].SerialNumber = run.Sensor[1].SerialNumber = std::string(200, 'S');
    const DateTime now = MakeDateTime(2012, 3, 9);
    const std::string cut(60, 'S');
    EXPECT_EQ(TrialReportName(run, 0, now), cut + "~1 09-Mar-2012 " + cut + "~1.RF1");
    EXPECT_EQ(TrialReportName(run, 1, now), cut + "~2 09-Mar-2012 " + cut + "~2.RF1");
}

}  // namespace
}  // namespace bellmark
