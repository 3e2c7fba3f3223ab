#include "app/daily_calibration.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

struct DailyCalibrationTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    DailyCalibrationTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 9);
        program.Center.AccelDailyCalibrationTime = ZeroDate() + std::chrono::hours(8) + std::chrono::seconds(30);
        program.Center.AccelDailyCalibrationTemperatureUnit = "Celsius";
        program.Center.AccelDailyCalibrationTemp = 20;
        board->volts = 0.2F;
    }
    void SetClock(int day, int hour, int minute, int second) {
        machine.clock.Set(MakeDateTime(2012, 3, day, hour, minute, second));
    }
};

TEST_F(DailyCalibrationTest, HoldsForEightHours) {
    SetClock(9, 16, 0, 59);
    EXPECT_EQ(MinutesSinceAccelCal(program), 480) << "seconds do not count";
    EXPECT_TRUE(AccelCalCurrent(program));
    SetClock(9, 16, 1, 0);
    EXPECT_EQ(MinutesSinceAccelCal(program), 481);
    EXPECT_FALSE(AccelCalCurrent(program));
    SetClock(10, 8, 0, 0);
    EXPECT_EQ(MinutesSinceAccelCal(program), 1440);
    // Midnight does not shorten the time.
    program.Center.AccelDailyCalibrationTime = ZeroDate() + std::chrono::hours(23);
    SetClock(10, 7, 0, 0);
    EXPECT_TRUE(AccelCalCurrent(program));
}

TEST_F(DailyCalibrationTest, HoldsWithinFiveDegrees) {
    const struct {
        const char* unit;
        double stored;
        float volts;  // 10 mV per degree Celsius
        bool holds;
    } cases[] = {
        {"Celsius", 20, 0.25F, true},    {"Celsius", 20, 0.251F, false},  {"Celsius", 20, 0.15F, true},
        {"Celsius", 20, 0.149F, false},  {"Fahrenheit", 68, 0.25F, true}, {"Fahrenheit", 68, 0.251F, false},
        {"Fahrenheit", 20, 0.2F, false},
    };
    for (const auto& test : cases) {
        program.Center.AccelDailyCalibrationTemperatureUnit = test.unit;
        program.Center.AccelDailyCalibrationTemp = test.stored;
        board->volts = test.volts;
        EXPECT_EQ(AccelCalCurrent(program), test.holds) << test.stored << ' ' << test.unit << ' ' << test.volts;
    }
    // Without a board the temperature is near the stored one.
    program.Run.ReviewMode = true;
    EXPECT_TRUE(AccelCalCurrent(program));
    program.Center.AccelDailyCalibrationTemp = 68;
    EXPECT_NEAR(ReadTemperature(program), 20, 0.1 * 5 / 9);
}

}  // namespace
}  // namespace bellmark
