#include <gtest/gtest.h>

#include <numeric>

#include "app/program.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "reference/flip_results.h"
#include "reference/frm_flip_calibration.h"
#include "run/center_keys.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

constexpr double tiny = 1e-10;  // less than the tolerance of a limit
constexpr double above = 1e-8;

TEST(FlipResults, AReadingIsMeanAndDeviationOfTheBlock) {
    std::vector<float> volts(1000);
    std::iota(volts.begin(), volts.end(), 1.0F);
    const FlipReading reading = ReadingOf(volts, {});
    EXPECT_EQ(reading.average, 500.5);
    // Of the numbers 1 to n: sqrt(n (n + 1) / 12).
    EXPECT_NEAR(reading.stdDev, 288.8194360957494, 1e-9);
    EXPECT_EQ(ReadingOf({}, {}).average, 0);
}

TEST(FlipResults, AReadingIsRefusedForUnrestAndForTheWrongSide) {
    const struct {
        FlipPosition position;
        double average, stdDev;
        const char* fault;
    } cases[] = {
        {FlipPosition::Plus1G, 0.42, 0.02 + tiny, ""},
        {FlipPosition::Plus1G, 0.42, 0.02 + above,
         "Standard Deviation of +1g is too large.(Should be less than 0.02)\r\nRepeat Calibration."},
        {FlipPosition::Plus1G, 0, 0, ""},
        {FlipPosition::Plus1G, -above, 0,
         "Recording of +1g voltage shows the accelerometer was upside down.\r\nRepeat Calibration."},
        {FlipPosition::Minus1G, -0.42, 0.021,
         "Standard Deviation of -1g is too large.(Should be less than 0.02)\r\nRepeat Calibration."},
        {FlipPosition::Minus1G, -above, 0, ""},
        {FlipPosition::Minus1G, 0, 0,
         "Recording of -1g voltage shows the accelerometer was not flipped.\r\nRepeat Calibration."},
        {FlipPosition::FlipPlus1G, 0.42, 0.021,
         "Standard Deviation of Flip +1g is too large.(Should be less than 0.02)\r\nRepeat Calibration."},
        {FlipPosition::FlipPlus1G, -0.42, 0,
         "Recording of Flip +1g voltage shows the accelerometer was not flipped.\r\nRepeat Calibration."},
        {FlipPosition::FlipPlus1G, 0.42, std::nan(""),
         "Standard Deviation of Flip +1g is too large.(Should be less than 0.02)\r\nRepeat Calibration."},
    };
    for (const auto& test : cases) EXPECT_EQ(ReadingFault(test.position, {{}, test.average, test.stdDev}), test.fault);
}

/// Slope 0.42 V per g, offset 0, eight seconds, 21 degrees.
FlipMeasurement Measured() {
    FlipMeasurement measured;
    const DateTime begin = MakeDateTime(2012, 3, 9, 10);
    measured.readings = {FlipReading{begin, 0.42, 0.001}, FlipReading{begin + std::chrono::seconds(8), -0.42, 0.001},
                         FlipReading{begin + std::chrono::seconds(18), 0.42, 0.001}};
    measured.startTemperature = measured.endTemperature = 21;
    return measured;
}

TEST(FlipResults, AreJudgedByTheirLimits) {
    const FlipMeasurement measured = Measured();
    const struct {
        double former;  // slope
        FlipBand band;
        const char* text;
    } slopes[] = {
        {0.42, FlipBand::Good, "0.00%"},
        {0.42 / 1.0025, FlipBand::Good, "0.25%"},
        {0.42 / 0.9975, FlipBand::Good, "0.25%"},
        {0.42 / 1.00251, FlipBand::Caution, "0.25%"},
        {0.42 / 1.01, FlipBand::Caution, "1.00%"},
        {0.42 / 1.0101, FlipBand::Out, "1.01%"},
        {0, FlipBand::Out, "-"},
    };
    for (const auto& test : slopes) {
        const FlipCheck check = CheckFlip(measured, {test.former, 0}).slope;
        EXPECT_EQ(check.band, test.band) << test.former;
        EXPECT_EQ(check.text, test.text);
    }
    const struct {
        double former;  // offset
        FlipBand band;
    } offsets[] = {{0.01, FlipBand::Good},
                   {-0.01 - above, FlipBand::Caution},
                   {0.02, FlipBand::Caution},
                   {0.02 + above, FlipBand::Out}};
    for (const auto& test : offsets) EXPECT_EQ(CheckFlip(measured, {0.42, test.former}).offset.band, test.band);
    EXPECT_EQ(CheckFlip(measured, {0.42, 0.0151}).offset.text, "0.0151");
}

TEST(FlipResults, TemperatureAndTimeHaveTheirRows) {
    FlipMeasurement measured = Measured();
    const auto checks = [&] { return CheckFlip(measured, {0.42, 0}); };
    EXPECT_TRUE(checks().AllGood());
    const struct {
        double degrees;
        const char* text;
    } temperatures[] = {
        {-15.0, "OK"}, {-15.1, "Too cold (less than -15°C)"}, {54.9, "OK"}, {55.0, "Too hot (more than 55°C)"}};
    for (const auto& test : temperatures) {
        measured.startTemperature = measured.endTemperature = test.degrees;
        EXPECT_EQ(checks().temperature.text, test.text);
        EXPECT_EQ(checks().AllGood(), std::string(test.text) == "OK");
    }
    measured.startTemperature = 20;
    measured.endTemperature = 20.5;
    EXPECT_EQ(checks().drift.text, "OK");
    measured.endTemperature = 19.4;
    EXPECT_EQ(checks().drift.text,
              "Temperature change during calibration was 0.6°C\r\nCalibration should be repeated.");
    FlipReading& minus = measured.Of(FlipPosition::Minus1G);
    minus.time = measured.Of(FlipPosition::Plus1G).time + std::chrono::milliseconds(8999);
    EXPECT_EQ(checks().elapsed.band, FlipBand::Good);
    minus.time += std::chrono::milliseconds(1);
    EXPECT_EQ(checks().elapsed.text, "9.0  Too long");
    EXPECT_EQ(checks().elapsed.band, FlipBand::Out);
}

/// The screen on a board that delivers the test's volts for each position.
struct FlipTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    CenterConfig& center = program.Center;
    CalibrationRun& run = program.Run;
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    std::shared_ptr<FakeMainMenu> menu = std::make_shared<FakeMainMenu>(program);
    std::shared_ptr<frmFlipCalibration> flip = std::make_shared<frmFlipCalibration>(program);

    FlipTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Register<MainMenuDoor>([this](Program&) { return menu; });
        program.Register<MainFrameDoor>([](Program&) { return std::make_shared<IdleMainFrame>(); });
        program.Register<ResultsDoor>([](Program&) { return std::make_shared<IdleResults>(); });
        program.Register<SetupDoor>([](Program&) { return std::make_shared<FakeSetup>(); });
        program.Register<FlipCalibrationDoor>([this](Program&) { return flip; });
        machine.Write("BellmarkCenterConfig.ini", "[FWD Calibration Center]\r\nCalibrationCenter=ours\r\n");
        center.AccelNewSlopeFactor = 0.42;
        center.AccelRefPlus1GDC = 0.42;
        center.AccelRefMinus1GDC = -0.42;
        center.AccelRefCalibrationCoefficients = {0, 1 / 0.42, 0, 0};
        center.AccelDailyCalibrationPlus1GVoltage = 0.42;
        center.AccelDailyCalibrationMinus1GVoltage = -0.42;
        center.AccelDailyCalibrationTemperatureUnit = "Fahrenheit";
        run.CurrentProcedure = Procedure::Flip;
        run.InterimFolderName = "InterimCal20120309";
        board->volts = 0.22F;  // of the temperature sensor: 22 degrees
        flip->Start();
    }
    void Hold(float volts, int seconds) {
        board->block.assign(3000, volts);
        for (int i = 0; i < seconds; ++i) {
            machine.clock.Advance(std::chrono::seconds(1));
            machine.timers.RunDue();
        }
    }
    void Measure() {
        flip->cmdStart.UserClick();
        Hold(0.425F, 10);
        Hold(-0.415F, 8);
        Hold(0.424F, 10);
    }
    std::string Stored(const char* key) {
        return OpenProfileStrings(machine.files, machine.folder / "BellmarkCenterConfig.ini").Get(centerSection, key);
    }
};

TEST_F(FlipTest, AcceptedReadingsAreTheDaysCalibration) {
    run.InterimFileName = "InterimCal20120309.DDX";
    run.InterimCalOpen = true;
    Measure();
    EXPECT_EQ(run.CurrentProcStep, step::flipMeasured);
    EXPECT_EQ(flip->txtSlope.Text.Get(), "0.4200");
    EXPECT_EQ(flip->txtOffset.Text.Get(), "0.0050");
    EXPECT_EQ(Stored("AccelNewSlopeFactor"), "") << "nothing is written until it is accepted";
    EXPECT_EQ(center.AccelDailyCalibrationPlus1GVoltage, 0.42);
    flip->cmdAccept.UserClick();
    // The board's volts are single-precision numbers.
    EXPECT_NEAR(ReadNumber(Stored("AccelDailyCalibration+1GVoltage")), 0.425, 1e-7);
    EXPECT_NEAR(ReadNumber(Stored("AccelDailyCalibration-1GVoltage")), -0.415, 1e-7);
    EXPECT_NEAR(ReadNumber(Stored("AccelDailyCalibration+1GFlipVoltage")), 0.424, 1e-7);
    EXPECT_NEAR(ReadNumber(Stored("AccelDailyCalibrationTemp")), 71.6, 1e-5) << "22 °C in the file's unit";
    EXPECT_EQ(Stored("CalibrationCenter"), "ours");
    const auto interim = OpenProfileStrings(machine.files, machine.folder / "InterimCal20120309.DDX");
    EXPECT_EQ(interim.Get(centerSection, "AccelDailyCalibration+1GVoltage"), Stored("AccelDailyCalibration+1GVoltage"));
    EXPECT_NEAR(center.AccelVoltageOffset, -0.005, 1e-6);
    EXPECT_EQ(run.CurrentProcStep, step::flipAccepted);
    EXPECT_EQ(program.Screens.Front(), menu.get());
    EXPECT_FALSE(run.BurstCapture);
}

TEST_F(FlipTest, WhatCannotBeWrittenIsNotAccepted) {
    Measure();
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueAnswer(Answer::OK);
    flip->cmdAccept.UserClick();
    EXPECT_EQ(machine.dialogs.TakeBoxes().size(), 1U) << "the operator is told";
    EXPECT_EQ(center.AccelDailyCalibrationPlus1GVoltage, 0.42);
    EXPECT_EQ(center.AccelNewSlopeFactor, 0.42);
    EXPECT_TRUE(flip->IsShown());
}

TEST_F(FlipTest, TheWrongSideEndsTheTestAndLeavesTheStoredCalibration) {
    flip->cmdStart.UserClick();
    Hold(0.42F, 10);
    Hold(0.42F, 8);
    EXPECT_EQ(flip->txtPrompt.Text.Get(),
              "Recording of -1g voltage shows the accelerometer was not flipped.\r\nRepeat Calibration.");
    EXPECT_FALSE(flip->tmrFlip.IsRunning());
    EXPECT_FALSE(flip->cmdAccept.Enabled);
    EXPECT_TRUE(flip->cmdStart.Enabled);
    EXPECT_FALSE(machine.Has("BellmarkCenterConfigOld.Ini"));
    EXPECT_EQ(Stored("AccelNewSlopeFactor"), "");
}

TEST_F(FlipTest, LeavingTheScreenEndsTheTest) {
    flip->cmdStart.UserClick();
    Hold(0.42F, 4);
    flip->cmdMainMenu.UserClick();
    EXPECT_FALSE(flip->tmrFlip.IsRunning());
    EXPECT_FALSE(run.BurstCapture);
    EXPECT_GT(board->aborts, 0);
}

TEST_F(FlipTest, AChangeOfSlopeAsksForALookAndItsRepetitionMayCompareWithItself) {
    center.AccelNewSlopeFactor = 0.4;
    flip->Start();
    Measure();
    EXPECT_EQ(flip->lblOK.Caption.Get(), "Check Results! One or more acceptance criteria needs to be reviewed.");
    EXPECT_EQ(flip->lblOK.BackColor, colors::mustBeUpdated);
    EXPECT_EQ(flip->lblSlopeChange.Caption.Get(), "5.00%");
    EXPECT_EQ(run.CurrentProcStep, step::flipMeasured);
    machine.dialogs.QueueAnswer(Answer::Yes);
    flip->cmdRepeat.UserClick();
    EXPECT_EQ(flip->txtExistSlope.Text.Get(), "0.4200");
    Measure();
    EXPECT_EQ(flip->lblOK.Caption.Get(), "All Data Checks Passed");
    machine.dialogs.QueueAnswer(Answer::No);
    flip->cmdRepeat.UserClick();
    EXPECT_EQ(flip->txtExistSlope.Text.Get(), "0.4000");
}

TEST_F(FlipTest, ASimulatedFlipIsPutBackWhenItsReviewEnds) {
    struct Played : FakeSimulator {
        float last = 0;
        void SetRandom(float mean, float) override { last = mean; }
    };
    const auto simulator = std::make_shared<Played>();
    run.ReviewMode = true;
    program.Register<SimulatorDoor>([simulator](Program&) { return simulator; });
    Measure();
    EXPECT_EQ(simulator->last, 0.42F) << "the third position without a voltage of its own is the first";
    flip->cmdAccept.UserClick();
    EXPECT_TRUE(machine.Has("BellmarkCenterConfigOld.Ini"));
}

}  // namespace
}  // namespace bellmark
