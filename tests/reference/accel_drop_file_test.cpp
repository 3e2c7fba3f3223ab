#include "reference/accel_drop_file.h"

#include <gtest/gtest.h>

#include "daq/drop_file_reader.h"
#include "platform/files.h"
#include "platform/text.h"

namespace bellmark {
namespace {

CalibrationRun TrialInHand() {
    CalibrationRun run;
    run.DeviceOwner = "Straßenamt";
    run.DeviceName = "FWD-101";
    run.DeviceSerialNumber = "8002-101";
    run.RefTrials = 1;
    run.CurrentHeightIndex = 3;
    run.CurrentDropIndex = 1;
    return run;
}

CenterConfig CenterInUse() {
    CenterConfig center;
    center.CalCenterIDCode = 7;
    center.CalibrationCenter = "Sample Center";
    center.AccelerometerSerialNumber = "ACC-311";
    center.AccelReferenceCalibrationDate = MakeDateTime(2011, 8, 22);
    center.AccelRefPlus1GDC = 2.9713;
    center.AccelRefMinus1GDC = 2.1287;
    center.AccelRefCalibrationCoefficients = {-6.0527, 2.3733, 0.00012, -0.00001};
    center.AccelB = -6.0531;
    center.AccelA1 = 2.3734;
    center.AccelA2 = 0.00012;
    center.AccelA3 = -0.00001;
    center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 8);
    center.AccelDailyCalibrationTime = ZeroDate() + TimeOfDay(MakeDateTime(2012, 3, 8, 7, 3, 59));
    center.AccelDailyCalibrationPlus1GVoltage = 2.9705;
    center.AccelDailyCalibrationMinus1GVoltage = 2.1279;
    return center;
}

DropRecord MadeDrop() {
    DropRecord drop;
    const struct {
        float volts;
        double velocity, displacement;
    } samples[] = {{2.9704F, 5, 7}, {2.9101F, 11, 0}, {-2.5F, 123456.7, 0.53}, {10, -98765.4321, 500.44}};
    drop.NumSamples = 4;
    for (std::size_t i = 0; i < 4; ++i) {
        drop.RawVolts[i] = samples[i].volts;
        drop.AbsAccel[i] = 2 * static_cast<double>(samples[i].volts) - 1;
        drop.RelAccelMicrons[i] = drop.AbsAccel[i] * 9806650 - 1;
        drop.Velocity[i] = samples[i].velocity;
        drop.Displacement[i] = samples[i].displacement;
    }
    drop.PeakEnglish = 19.701;
    drop.PeakMetric = 500.4;
    drop.FirstRiseIndex = 2;
    drop.TriggerTime = MakeDateTime(2012, 3, 9, 14, 5, 8);
    drop.VelocityFulcrumReading = 1;
    drop.DeflectionFulcrumReading = 1;
    drop.StartPulseIndex = 2;
    drop.PeakIndex = 3;
    drop.RiseTime = 16.2;
    drop.BurstAverage = 2.9704;
    drop.BurstStdDev = 0.00081;
    drop.BurstTime = MakeDateTime(2012, 3, 9, 14, 4, 51);
    drop.BurstAbsAccel = 0.9997631;
    drop.PreFulcrumAverage = 1.0001239;
    return drop;
}

// The expected bytes are written by recompute_accel_drop.py, independently of the program.
TEST(AccelDropFile, IsWrittenByteForByte) {
    EXPECT_EQ(AccelDropFileName(TrialInHand()), "Reference2-H3D1.txt");
    const Path expected = Path(BELLMARK_SOURCE_FOLDER) / "tests/reference/Reference2-H3D1.txt";
    const std::string text =
        AccelDropFileText(MadeDrop(), TrialInHand(), CenterInUse(), MakeDateTime(2012, 3, 9, 14, 5, 9));
    EXPECT_EQ(ToWindows1252(text), DiskFileSystem().ReadBytes(expected));
}

TEST(AccelDropFile, IsReadBackByTheSimulatedBoard) {
    const DropRecord drop = MadeDrop();
    const std::string text = AccelDropFileText(drop, TrialInHand(), CenterInUse(), MakeDateTime(2012, 3, 9));
    const DropSamples read = ReadSavedDropFile(ToWindows1252(text));
    EXPECT_TRUE(read.complete);
    EXPECT_EQ(read.volts, std::vector<float>(drop.RawVolts.begin(), drop.RawVolts.begin() + 4));
    EXPECT_EQ(read.header.plus1GVoltage, 2.9705);
    EXPECT_EQ(read.header.minus1GVoltage, 2.1279);
    EXPECT_EQ(read.header.burstAverage, 2.9704);
    EXPECT_EQ(read.header.burstStdDev, 0.00081);
}

}  // namespace
}  // namespace bellmark
