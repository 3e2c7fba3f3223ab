#include "daq/frm_simulator.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "platform/numbers.h"
#include "run/trial.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

/// A simulated board whose drop files are in the folder "Review" of the program folder.
struct SimulatorTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    std::shared_ptr<FakeSetup> setup = std::make_shared<FakeSetup>();
    frmSimulator simulator{program};
    std::vector<float> volts = std::vector<float>(sampleCapacity);
    int count = 0;

    SimulatorTest() {
        program.Register<SetupDoor>([this](Program&) { return setup; });
        program.Run.SimDataLocation = machine.folder / "Review";
        program.Run.InterimFolderName = "InterimCal20120309";
        program.Run.NumberDropsPerLoadLevel = 4;
        program.Run.CurrentProcedure = Procedure::LoadCell;
    }

    void Capture() {
        simulator.CaptureBlock(1);
        simulator.GetResultsVolts(volts, count);
    }
    static std::string SavedDrop(const std::string& value) { return "Sample\r\n1,0," + value + "\r\n"; }
};

TEST_F(SimulatorTest, NamesTheFileByWhatIsInHand) {
    const struct {
        const char* file;
        Procedure procedure;
        int refTrials, loadCellRefTrials, height, drop;
        bool replay = false, trialReview = false;
    } cases[] = {
        {"Review/LoadCell1-H1D1.txt", Procedure::LoadCell, 3, 0, 1, 1},
        {"Review/LoadCell3-H4D2.txt", Procedure::LoadCell, 0, 2, 4, 2},
        {"InterimCal20120309/LoadCell3-H4D4.txt", Procedure::LoadCell, 0, 2, 4, 4, true},
        {"InterimCal20120309/LoadCell2-H1D4.txt", Procedure::LoadCell, 0, 2, 1, 4, true, true},
        {"Review/Reference1-H3D2.txt", Procedure::Sensors, 0, 3, 3, 2},
        {"InterimCal20120309/Reference2-H3D2.txt", Procedure::Sensors, 2, 3, 3, 2, true, true},
        {"Review/Reference1-H2D1.txt", Procedure::TriggerLevel, 0, 3, 2, 7},
        {"Review/Reference3-H1D1.txt", Procedure::NumberOfDrops, 2, 3, 1, 0},
        {"Review/reference3-h2d2.TXT", Procedure::Sensors, 2, 0, 2, 2},  // names ignore case
        {"Review/Base_009.txt", Procedure::LoadCell, 0, 0, 3,
         2},  // the flat form comes first: drop 2 of height 3, of 4 drops each
        {"Review/Base_000.txt", Procedure::Sensors, 1, 1, 1, 1},
        {"Review/Base_006.txt", Procedure::Setup, 0, 0, 2, 3},
    };
    CalibrationRun& run = program.Run;
    simulator.SetFile("Base");
    double value = 1;
    for (const auto& test : cases) {
        run.CurrentProcedure = test.procedure;
        run.RefTrials = test.refTrials;
        run.LoadCellRefTrials = test.loadCellRefTrials;
        run.CurrentHeightIndex = test.height;
        run.CurrentDropIndex = test.drop;
        EndReview(run.Trial);
        if (test.replay) BeginReview(run.Trial, 0, test.trialReview);
        value += 1;
        const std::string text = NumberText(value);
        const bool flat = std::string_view(test.file).find('_') != std::string_view::npos;
        machine.Write(test.file, flat ? text : SavedDrop(text));
        Capture();
        EXPECT_EQ(count, 1) << test.file;
        EXPECT_EQ(volts[0], static_cast<float>(value)) << test.file;
        EXPECT_EQ(simulator.lblSource.Caption.Get(), PathText(machine.folder / test.file));
    }
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

TEST_F(SimulatorTest, TellsWhichFileItCouldNotReadAndGivesAnEmptyBlock) {
    const Path path = machine.folder / "Review/LoadCell1-H1D1.txt";
    const auto huge = [&] {
        machine.Write("Review/LoadCell1-H1D1.txt", SavedDrop("1"));
        std::filesystem::resize_file(path, FileSystem::defaultLimit + 1);
    };
    const struct {
        const char* defect;
        std::function<void()> make;
    } cases[] = {
        {"missing folder", [] {}},
        {"missing file", [&] { machine.files.CreateFolder(machine.folder / "Review"); }},
        {"folder in its place", [&] { machine.files.CreateFolder(path); }},
        {"larger than any drop", huge},
        {"no permission",
         [&] {
             machine.Write("Review/LoadCell1-H1D1.txt", SavedDrop("1"));
             machine.files.RefuseToRead(path);
         }},
    };
    simulator.SetFile("LoadCell1");
    for (const auto& test : cases) {
        std::filesystem::remove_all(path);
        test.make();
        count = -1;
        machine.dialogs.QueueAnswer(Answer::OK);
        program.Run.DropAborted = false;
        Capture();
        EXPECT_EQ(count, 0) << test.defect;
        EXPECT_TRUE(program.Run.DropAborted) << test.defect << ": nobody waits for what cannot come";
        const auto boxes = machine.dialogs.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U) << test.defect;
        EXPECT_EQ(boxes[0], "\tCouldn't find simulation input file " + PathText(path) +
                                ".\\nGo to setup screen to set simulation file path.\t48\tOK")
            << test.defect;
    }
}

TEST_F(SimulatorTest, KeepsTheSamplesBeforeABrokenLine) {
    machine.Write("Review/LoadCell1-H1D1.txt", SavedDrop("1.5") + "2,0,2.5\r\nbroken\r\n4,0,4.5\r\n");
    machine.dialogs.QueueAnswer(Answer::OK);
    Capture();
    EXPECT_EQ(count, 2);
    EXPECT_EQ(volts[1], 2.5F);
    EXPECT_EQ(machine.dialogs.TakeBoxes().size(), 1U);
}

TEST_F(SimulatorTest, ServesAShortBlockAfterALongOne) {
    simulator.SetFile("LoadCell1");
    machine.Write("Review/LoadCell1_000.txt", "1,2,3,4,5");
    Capture();
    EXPECT_EQ(count, 5);
    EXPECT_EQ(volts[5], 0);
    machine.Write("Review/LoadCell1_000.txt", "7,8");
    volts.assign(sampleCapacity, -1);
    Capture();
    EXPECT_EQ(count, 2);
    // Both ends are copied; the element after the last sample is left from the longer block. The rest is not touched.
    EXPECT_EQ(std::vector<float>(volts.begin(), volts.begin() + 4), (std::vector<float>{7, 8, 3, -1}));
}

TEST_F(SimulatorTest, TakesTheHeaderIntoTheCenterAndTheDrop) {
    program.Center.AccelRefPlus1GDC = 3;
    program.Center.AccelRefMinus1GDC = 2;
    program.Drop.BurstAverage = 7;
    program.Drop.BurstStdDev = 7;
    const std::string sample = "Sample\r\n1,0,1\r\n";
    machine.Write(
        "Review/LoadCell1-H1D1.txt",
        "Daily Shunt = 1.005\r\nDaily +G = 2510 mV\r\nDaily -G = 2010 mV\r\nInitial Burst Ave = 1.25\r\n" + sample);
    Capture();
    EXPECT_EQ(program.Center.ShuntCalibrationMultiplier, 1.005);
    EXPECT_EQ(program.Center.AccelDailyCalibrationPlus1GVoltage, 2.51);
    EXPECT_EQ(program.Center.AccelDailyCalibrationMinus1GVoltage, 2.01);
    // Half-spans of 0.5 V and 0.25 V, middles of 2.5 V and 2.26 V.
    EXPECT_NEAR(program.Center.AccelVoltageSlope, 2, 1e-12);
    EXPECT_NEAR(program.Center.AccelVoltageOffset, 2.5 - 2 * 2.26, 1e-12);
    EXPECT_EQ(program.Drop.BurstAverage, 1.25);
    EXPECT_EQ(program.Drop.BurstStdDev, 0);
    // A file without these lines leaves the center unchanged.
    machine.Write("Review/LoadCell1-H1D1.txt", sample);
    Capture();
    EXPECT_EQ(program.Center.ShuntCalibrationMultiplier, 1.005);
    EXPECT_EQ(program.Drop.BurstAverage, 0);
}

TEST_F(SimulatorTest, TheCenterKeepsItsDigitsWhereTheFileHasTheSameValue) {
    const struct {
        const char* line;
        double CenterConfig::*value;
        double inForce, then;
    } cases[] = {
        {"Daily Shunt = 1.002", &CenterConfig::ShuntCalibrationMultiplier, 1.00167112, 1.00167112},
        {"Daily Shunt = 1.002", &CenterConfig::ShuntCalibrationMultiplier, 1.00267112, 1.002},
        {"Daily Shunt = 1.0024", &CenterConfig::ShuntCalibrationMultiplier, 1.00167112, 1.0024},
        {"Daily +G = 2.510", &CenterConfig::AccelDailyCalibrationPlus1GVoltage, 2.51034, 2.51034},
        {"Daily +G = 2.510", &CenterConfig::AccelDailyCalibrationPlus1GVoltage, 2.5134, 2.51},
        {"Daily +G = 2510.2 mV", &CenterConfig::AccelDailyCalibrationPlus1GVoltage, 2.51024, 2.51024},
        {"Daily -G = -2.01", &CenterConfig::AccelDailyCalibrationMinus1GVoltage, -2.0134, -2.0134},
        {"Daily -G = -2.01", &CenterConfig::AccelDailyCalibrationMinus1GVoltage, -2.0234, -2.01},
    };
    for (const auto& c : cases) {
        program.Center.*c.value = c.inForce;
        machine.Write("Review/LoadCell1-H1D1.txt", std::string(c.line) + "\r\nSample\r\n1,0,1\r\n");
        Capture();
        EXPECT_EQ(program.Center.*c.value, c.then) << c.line << " over " << c.inForce;
    }
}

TEST_F(SimulatorTest, DrawsRandomVoltsInTheirRanges) {
    simulator.SetRandom(2.5F, 0.25F);
    Capture();
    ASSERT_EQ(count, 15000);
    const auto [least, most] = std::minmax_element(volts.begin(), volts.end());
    // Of 15001 uniform values the extremes miss the ends by more than 1 % of the range once in e^150 runs.
    EXPECT_GE(*least, 2.25F);
    EXPECT_LT(*least, 2.255F);
    EXPECT_LE(*most, 2.75F);
    EXPECT_GT(*most, 2.745F);

    float lowest = 0;
    float highest = 0;
    for (int i = 0; i < 2000; ++i) {
        const float value = simulator.OneConversion(1);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    EXPECT_GE(lowest, -10);
    EXPECT_LE(highest, 10);
    EXPECT_LT(lowest, -9.9F);
    EXPECT_GT(highest, 9.9F);

    simulator.SetFile("LoadCell1");
    machine.Write("Review/LoadCell1_000.txt", "1");
    Capture();
    EXPECT_EQ(count, 1) << "naming a file ends the random source";
}

TEST_F(SimulatorTest, ReplaysForAWhileAndThenIsCapturedForGood) {
    using std::chrono::milliseconds;
    machine.machine.simulatedCapture = milliseconds(300);  // of a whole block: 500 samples are 10 ms
    simulator.SetFile("LoadCell1");
    machine.Write("Review/LoadCell1_000.txt", "");
    machine.dialogs.QueueAnswer(Answer::OK);
    Capture();
    machine.Advance(milliseconds(1000));
    EXPECT_FALSE(simulator.BlockCaptured()) << "nothing to replay";

    std::string text;
    for (int i = 0; i < 1001; ++i) text += "1,";
    machine.Write("Review/LoadCell1_000.txt", text);
    Capture();
    EXPECT_EQ(count, 1001) << "the samples are there at once";
    machine.Advance(milliseconds(29));
    EXPECT_FALSE(simulator.BlockCaptured());
    machine.Advance(milliseconds(1));
    EXPECT_TRUE(simulator.BlockCaptured());
    EXPECT_FALSE(simulator.Timer1.IsRunning());
    Capture();
    EXPECT_TRUE(simulator.BlockCaptured());
    simulator.StopAcq();
    machine.Advance(milliseconds(10));
    EXPECT_FALSE(simulator.Timer1.IsRunning()) << "stopped at the next tick";
}

TEST_F(SimulatorTest, AFileWithoutSamplesIsTold) {
    for (const char* text : {"", "Daily Shunt = 1.002\r\nSample\r\n"}) {
        machine.Write("Review/LoadCell1-H1D1.txt", text);
        program.Run.CurrentHeightIndex = program.Run.CurrentDropIndex = 1;
        machine.dialogs.QueueAnswer(Answer::OK);
        Capture();
        const auto boxes = machine.dialogs.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_NE(boxes[0].find("LoadCell1-H1D1.txt holds no samples."), std::string::npos) << boxes[0];
        EXPECT_TRUE(program.Run.DropAborted);
    }
}

}  // namespace
}  // namespace bellmark
