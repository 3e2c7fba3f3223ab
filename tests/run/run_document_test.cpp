#include "run/run_document.h"

#include <gtest/gtest.h>

#include "pddx/pddx_file.h"

namespace bellmark {
namespace {

struct Expected {
    const char* section;
    const char* key;
    const char* value;
};

void ExpectValues(const PDDXFile& document, std::initializer_list<Expected> values) {
    for (const auto& [section, key, value] : values) {
        EXPECT_EQ(document.Sections(section).Elements(key).Value(), value) << key;
    }
}

CalibrationRun RunWithGains() {
    CalibrationRun run;
    run.NumberSensors = 2;
    run.LoadCellInitialGain = 1.01;
    run.NewLoadCellCalibrationCenterGain = 1.0203;
    const auto sensor = [&run](std::size_t index, const char* serialNumber, double initial, double final) {
        run.Sensor[index].SerialNumber = serialNumber;
        run.Sensor[index].InitialGain = initial;
        run.Sensor[index].FinalGain = final;
    };
    sensor(0, "D1", 1.001, 1.0125);
    sensor(1, "D2", 1.002, 0.99);
    return run;
}

TEST(RunDocument, WarmUpLeavesTheFormerSlopeFactorAndTakesAcceptedGains) {
    PDDXFile document;
    document.Sections("FWD Calibration Center").Elements("AccelOldSlopeFactor").SetValue("0.42100");
    document.Sections("FWD Calibration Center").Elements("AccelNewSlopeFactor").SetValue("0.42111");
    CenterConfig center;
    center.AccelNewSlopeFactor = 0.42134;
    center.AccelDailyCalibrationPlus1GVoltage = 2.97051;
    center.AccelDailyCalibrationTemp = 21.5;
    center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 9);
    center.AccelDailyCalibrationTime = MakeDateTime(1899, 12, 30, 8, 5, 9);
    UpdateWarmUp(document, RunWithGains(), center, MakeDateTime(2012, 3, 9, 14, 30, 5));
    ExpectValues(document, {{"Operations Information", "EndTime", "14:30:05"},
                            {"Operations Information", "EndDate", "09-Mar-2012"},
                            {"FWD Calibration Center", "AccelDailyCalibrationTime", "08:05:09"},
                            {"FWD Calibration Center", "AccelDailyCalibration+1GVoltage", "2.97051"},
                            {"FWD Calibration Center", "AccelDailyCalibrationTemp", "21.50"},
                            {"FWD Calibration Center", "AccelOldSlopeFactor", "0.42100"},
                            {"FWD Calibration Center", "AccelNewSlopeFactor", "0.42134"},
                            {"Device Calibration", "LoadCellCalibrationCenterGain", "1.02030000"},
                            {"Device Calibration", "LoadCellCalibrationCenterDate", "09-Mar-2012"},
                            {"Device Calibration", "SensorCalibrationCenterGain", "1.0125, 0.99"}});
}

TEST(RunDocument, GainsAreTheNewOnesOnlyWhereAccepted) {
    CalibrationRun run = RunWithGains();
    run.LoadCellCalComplete = true;
    for (const auto& [gains, loadCell] :
         {std::pair{DocumentGains::Initial, "1.0100"}, std::pair{DocumentGains::Accepted, "1.0203"}}) {
        PDDXFile document;
        SaveBellmarkDDX(document, run, {}, "a.ddx", MakeDateTime(2012, 3, 9), gains);
        ExpectValues(document, {{"Device Calibration", "LoadCellCalibrationCenterGain", loadCell},
                                {"Device Calibration", "SensorCalibrationCenterGain", "1.0010, 1.0020"},
                                {"Device Information", "SensorSerialNumbers", "D1, D2"}});
    }
    run.Manufacturer = Make::CarlBro;
    PDDXFile document;
    SaveBellmarkDDX(document, run, {}, "a.ddx", MakeDateTime(2012, 3, 9), DocumentGains::Accepted);
    ExpectValues(document, {{"Device Calibration", "LoadCellCalibrationCenterGain", "1.02030000"}});
}

}  // namespace
}  // namespace bellmark
