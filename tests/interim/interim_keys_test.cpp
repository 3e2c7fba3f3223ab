#include "run/interim_keys.h"

#include <gtest/gtest.h>

#include "platform/numbers.h"
#include "platform/profile_strings.h"

namespace bellmark {
namespace {

/// A list of 40 members: the given ones, then zeros.
std::string Padded(std::string list, int members) {
    for (int i = members; i < 40; ++i) list += ", 0";
    return list;
}

std::string EmptySets(int first, int trial) {
    std::string lines;
    for (int m = first; m <= 10; ++m) {
        const std::string key = "RelTrial" + NumberText(trial);
        lines += key + "SetAvg" + NumberText(m) + "=0\r\n" + key + "SetStdDev" + NumberText(m) + "=0\r\n";
    }
    return lines;
}

TEST(InterimKeys, StandInTheirOrderAndForm) {
    CalibrationRun run;
    run.NumberLoadLevels = 1;
    run.NumberDropsPerLoadLevel = 2;
    run.NumberSensors = 2;
    run.LCTrialShape[0] = run.LCTrialShape[1] = run.RefTrialShape[0] = {1, 2, true};
    run.LoadCellRefTrials = 2;
    run.LCTrial[0].Gain = 1.25;
    run.LCTrial[0].AdjFactor = 0.1;
    run.LCTrial[0].RefDropData = {6000.5, 7000};
    run.LCTrial[1].DropData = {1e-7, 1e15};
    run.NewLoadCellCalibrationCenterGain = 1.0 / 3;
    run.RefTrials = 1;
    run.RefTrial[0] = {0.5, 0.25, -1};
    run.RefCalAvg = 2;
    run.RelTrials = 1;
    run.RelTrial[0].Avg = 21;
    run.RelTrial[0].StdDev = 22;
    run.RelTrial[0].ChiSq = 3.5;
    run.RelTrial[0].SetAvg[0] = 9;
    run.RelTrial[0].SetStdDev[0] = 23;
    run.Sensor[0].InterimGain = 1.01;
    run.Sensor[1].FinalGain = 7;  // the first sensor's 0 means that there is none
    run.Sensor[0].RefTrial[0].Gain = 1.02;
    run.Sensor[0].RefTrial[0].RefDropData = {10, 11};
    run.Sensor[1].RefTrial[0].DropData = {12, 13};
    run.Sensor[0].RelTrial[0].Position = 1;
    run.Sensor[1].RelTrial[0].Position = 2;
    run.Sensor[1].RelTrial[0].StdDev = 24;
    run.Sensor[1].RelTrial[0].Average = 25;
    run.Sensor[1].RelTrial[0].Gain = 26;
    run.Sensor[1].RelTrial[0].AdjFactor = 27;
    run.Sensor[1].RelTrial[0].DropData[0] = 4.5;
    run.CurrentProcedure = Procedure::Sensors;
    run.CurrentProcStep = step::sensorsRelative;
    run.SensorRefCalComplete = true;
    run.Manufacturer = Make::CarlBro;
    run.DeviceOwner = "Owner";
    run.DeviceSerialNumber = "123";
    run.OwnerFolder = "tree/Owner";
    run.DeviceFolder = "tree/Owner/123";
    ProfileStrings strings;
    SetRunKeys(strings, run, "first,second", MakeDateTime(2012, 3, 9));
    // Copied from the table of keys, row by row.
    EXPECT_EQ(
        strings.Text(),
        "[Device Calibration]\r\nLoadCellRefTrials=2\r\nLoadCellTrial1Gain=1.25\r\nLoadCellTrial1AdjFactor=0.1\r\n"
        "LoadCellTrial2Gain=0\r\nLoadCellTrial2AdjFactor=0\r\nNewLoadCellCalibrationCenterDate=09-Mar-2012\r\n"
        "NewLoadCellCalibrationCenterGain=0.33333333\r\nLCTrial1RefDropData=6000.5, 7000\r\n"
        "LCTrial1DropData=0, 0\r\nLCTrial2RefDropData=0, 0\r\nLCTrial2DropData=1E-07, 1E+15\r\nRefTrials=1\r\n"
        "RefTrial1Avg=0.5\r\nRefTrial1StdDev=0.25\r\nRefTrial1Change=-1\r\nRefCalAvg=2\r\nRefCalStdDev=0\r\n"
        "RefCalChange=0\r\nRelTrials=1\r\nRelTrial1Avg=21\r\nRelTrial1StdDev=22\r\nRelTrial1ChiSq=3.5\r\n"
        "RelTrial1SetAvg1=9\r\nRelTrial1SetStdDev1=23\r\n" +
            EmptySets(2, 1) +
            "SensorInterimGain=1.01, 0\r\nSensorRefTrial1Gain=1.02, 0\r\nSensorRefTrial1AdjFactor=0, 0\r\n"
            "SensorRefTrial1RefDropData=10, 11\r\nSensorRefTrial1Sensor1DropData=0, 0\r\n"
            "SensorRefTrial1Sensor2DropData=12, 13\r\nSensorRelTrial1StdDev=0, 24\r\n"
            "SensorRelTrial1Average=0, 25\r\nSensorRelTrial1Position=1, 2\r\nSensorRelTrial1Gain=0, 26\r\n"
            "SensorRelTrial1AdjFactor=0, 27\r\nSensorRelTrial1Sensor1DropData=" +
            Padded("0", 1) + "\r\nSensorRelTrial1Sensor2DropData=" + Padded("4.5", 1) +
            "\r\nCalibrationComment=first,second\r\nCurrentProcedure=4\r\nCurrentProcStep=44\r\n"
            "FlagUnacceptedTrial=False\r\nLoadCellCalComplete=False\r\nSensorRefCalComplete=True\r\n"
            "SensorRelCalComplete=False\r\nDeviceOwnerFolder=tree/Owner\r\nDeviceOwnerSNFolder=tree/Owner/123\r\n"
            "[FWD Calibration Center]\r\nNumberLoadLevels=1\r\nNumberDropsPerLoadLevel=2\r\nEnglishUnits=True\r\n"
            "SensorStand=0\r\n[Device Information]\r\nManufacturer=1\r\nDeviceOwner=Owner\r\n"
            "DeviceSerialNumber=123\r\n");
}

TEST(InterimKeys, LeaveOutWhatThereIsNone) {
    ProfileStrings strings;
    SetRunKeys(strings, CalibrationRun(), "", MakeDateTime(2012, 3, 9));
    for (const char* key : {"LoadCellRefTrials", "NewLoadCellCalibrationCenterDate", "NewLoadCellCalibrationCenterGain",
                            "SensorInterimGain", "SensorFinalGain", "SensorFinalDate", "DeviceOwnerSNDateFolder"}) {
        EXPECT_EQ(strings.Text().find(key), std::string::npos) << key;
    }
}

struct DamagedCase {
    const char* what;
    std::string text;
    int loadCellTrials;
    int levels;
    int drops;
};

void PrintTo(const DamagedCase& damaged, std::ostream* out) {
    *out << damaged.what;
}

class DamagedInterim : public ::testing::TestWithParam<DamagedCase> {};

TEST_P(DamagedInterim, IsReadWithinWhatTheRecordHolds) {
    CalibrationRun run;
    ReadRunKeys(ProfileStrings(GetParam().text), run);
    EXPECT_EQ(run.LoadCellRefTrials, GetParam().loadCellTrials);
    EXPECT_EQ(run.NumberLoadLevels, GetParam().levels);
    EXPECT_EQ(run.NumberDropsPerLoadLevel, GetParam().drops);
    EXPECT_LE(run.NumberLoadLevels * run.NumberDropsPerLoadLevel, static_cast<int>(maxDrops));
}

const std::string levelsAndDrops = "[FWD Calibration Center]\nNumberLoadLevels=3\nNumberDropsPerLoadLevel=7\n";
const std::string calibration = "[Device Calibration]\n";

INSTANTIATE_TEST_SUITE_P(
    InterimKeys, DamagedInterim,
    ::testing::Values(
        DamagedCase{"empty", "", 0, 4, 6}, DamagedCase{"line feeds alone", levelsAndDrops, 0, 3, 7},
        DamagedCase{"trial count of nine", calibration + "LoadCellRefTrials=9\n" + levelsAndDrops, 4, 3, 7},
        DamagedCase{"negative count", calibration + "LoadCellRefTrials=-2\n", 0, 4, 6},
        DamagedCase{"count in words", calibration + "LoadCellRefTrials=two\n", 0, 4, 6},
        DamagedCase{"count beyond every range", calibration + "LoadCellRefTrials=1E+300\n", 4, 4, 6},
        DamagedCase{"names in the wrong case", "[DEVICE CALIBRATION]\r\nLOADCELLREFTRIALS=2\r\n", 2, 4, 6},
        DamagedCase{"section twice, the first counts",
                    calibration + "LoadCellRefTrials=1\n" + calibration + "LoadCellRefTrials=3\n", 1, 4, 6},
        DamagedCase{"unknown keys", calibration + "LoadCellTrials=3\nLoadCellRefTrials=1\nX=\n", 1, 4, 6},
        DamagedCase{"more drops than a list holds",
                    "[FWD Calibration Center]\nNumberLoadLevels=5\nNumberDropsPerLoadLevel=400\n", 0, 5, 8},
        DamagedCase{"byte order mark", "\xC3\xAF\xC2\xBB\xC2\xBF" + levelsAndDrops, 0, 3, 7},
        DamagedCase{"zero bytes", calibration + std::string(5000, '\0') + "\nLoadCellRefTrials=2\n", 2, 4, 6},
        DamagedCase{"value of 100 kB",
                    calibration + "DeviceOwnerFolder=" + std::string(100'000, 'x') + "\nLoadCellRefTrials=2\n", 2, 4,
                    6}));

TEST(InterimKeys, ListsAreCutAt999Characters) {
    std::string list = "5";
    while (list.size() < 1200) list += ", 5.00000000000000000000000000000000";
    CalibrationRun run;
    run.NumberLoadLevels = 4;
    run.NumberDropsPerLoadLevel = 10;
    ReadRunKeys(ProfileStrings("[FWD Calibration Center]\nNumberLoadLevels=4\nNumberDropsPerLoadLevel=10\n"
                               "[Device Calibration]\nLoadCellRefTrials=1\nLCTrial1DropData=" +
                               list + "\n"),
                run);
    // 999 characters: the first takes 1, each further one 36; the 28th begins at 974 and is still a number.
    EXPECT_EQ(run.LCTrial[0].DropData[28], 5);
    EXPECT_EQ(run.LCTrial[0].DropData[29], 0);
}

}  // namespace
}  // namespace bellmark
