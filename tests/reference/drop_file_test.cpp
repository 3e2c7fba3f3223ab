#include "reference/drop_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/files.h"

namespace bellmark {
namespace {

// The expected bytes are written by recompute_load_drop.py, independently of the program.
TEST(DropFile, IsWrittenByteForByte) {
    CalibrationRun run;
    run.DeviceOwner = "Sample Road Agency";
    run.DeviceName = "FWD-101";
    run.DeviceSerialNumber = "8002-101";
    run.LoadCellRefTrials = 1;
    run.CurrentHeightIndex = 3;
    run.CurrentDropIndex = 2;

    CenterConfig center;
    center.CalCenterIDCode = 7;
    center.CalibrationCenter = "Sample Center";
    center.ReferenceLoadCellName = "RLC-07";
    center.ReferenceLoadCellCalibrationDate = MakeDateTime(2011, 11, 3);
    center.ReferenceLoadCellUnits = poundForce;
    center.ReferenceLoadCellGain = "5.00";
    center.ReferenceLoadCellCalibrationCoefficients = {1000, 1.5, -0.25, 0.00001, -0.00049};
    center.ShuntCalibrationMultiplier = 1.0024;

    DropRecord drop;
    const std::vector<float> volts{0.002F, -0.0015F, 0, 1.25F, 9.0145F};
    drop.NumSamples = static_cast<int>(volts.size());
    for (std::size_t i = 0; i < volts.size(); ++i) {
        drop.RawVolts[i] = volts[i];
        drop.Velocity[i] = 1000 * static_cast<double>(volts[i]);
        drop.Displacement[i] = drop.Velocity[i] - 2;
    }
    drop.PeakEnglish = 9012.5;
    drop.PeakMetric = 40.089;
    drop.ZeroEndIndex = 3;
    drop.StartPulseIndex = 2;
    drop.PeakIndex = 4;
    drop.RiseTime = 2 / 15.0;

    EXPECT_EQ(LoadDropFileName(run), "LoadCell2-H3D2.txt");
    const Path expected = Path(BELLMARK_SOURCE_FOLDER) / "tests/reference/LoadCell2-H3D2.txt";
    EXPECT_EQ(LoadDropFileText(drop, run, center, MakeDateTime(2012, 3, 9, 14, 5, 9)),
              DiskFileSystem().ReadBytes(expected));
}

}  // namespace
}  // namespace bellmark
