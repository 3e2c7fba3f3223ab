#include "daq/frm_daq.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "run/trial.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

struct FakeBoard : Board {
    explicit FakeBoard(std::string boardName) : name(std::move(boardName)) {}
    std::string name;
    bool available = true;
    bool shown = false;
    int unloads = 0;
    int captures = 0;
    int conversions = 0;

    std::string FindBoard() override { return name; }
    bool BoardAvailable() const override { return available; }
    void InitializeBoard() override {}
    void Unload() override { ++unloads; }
    void ShowBoard(bool visible) override { shown = visible; }
    float OneConversion(int) override { return static_cast<float>(++conversions); }
    int WaitforButton(int) override { return 0; }
    void CaptureBlock(int) override { ++captures; }
    bool BlockCaptured() const override { return captures > 0; }
    void GetResultsVolts(std::vector<float>&, int& count) override { count = captures; }
    void StopAcq() override { captures = 0; }
};

TEST(AcquisitionFacade, FallsBackToTheSimulatedBoard) {
    TestMachine machine;
    Program program(machine.machine);
    FakeBoard simulator("Simulator");
    FakeBoard hardware("KUSB-3100");
    frmDAQ none(program, simulator, nullptr);
    EXPECT_EQ(none.FindBoard(), "Simulator");
    EXPECT_FALSE(none.HasHardware());

    frmDAQ daq(program, simulator, &hardware);
    hardware.available = false;
    EXPECT_EQ(daq.FindBoard(), "Simulator");
    EXPECT_FALSE(daq.HasHardware());
    EXPECT_EQ(hardware.unloads, 1);
    hardware.available = true;
    EXPECT_EQ(daq.FindBoard(), "KUSB-3100");
    EXPECT_TRUE(daq.HasHardware());
}

TEST(AcquisitionFacade, CapturesFromTheSimulatedBoardWhileSavedDropsAreReplayed) {
    TestMachine machine;
    Program program(machine.machine);
    FakeBoard simulator("Simulator");
    FakeBoard hardware("KUSB-3100");
    frmDAQ daq(program, simulator, &hardware);
    daq.FindBoard();
    daq.CaptureBlock(1);
    EXPECT_EQ(hardware.captures, 1);
    BeginReview(program.Run.Trial, 0, false);
    EXPECT_FALSE(daq.BlockCaptured());
    daq.CaptureBlock(1);
    daq.CaptureBlock(1);
    EXPECT_EQ(hardware.captures, 1);
    std::vector<float> volts;
    int count = 0;
    daq.GetResultsVolts(volts, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(daq.OneConversion(2), 1) << "single conversions stay with the board in use";
    EXPECT_EQ(hardware.conversions, 1);
    daq.AbortAcquisition();
    EXPECT_EQ(simulator.captures, 0);
    EXPECT_EQ(hardware.captures, 1);

    daq.ShowDAQ(true);
    EXPECT_FALSE(simulator.shown);
    program.Run.ReviewMode = true;
    daq.ShowDAQ(true);
    EXPECT_TRUE(simulator.shown);
    EXPECT_FALSE(hardware.shown);
}

}  // namespace
}  // namespace bellmark
