#include "virtual_fwd/live_drops.h"

#include <gtest/gtest.h>

#include "virtual_fwd/live_signal.h"

namespace bellmark::virtual_fwd {
namespace {

LiveDrops Sample() {
    LiveDrops drops{7, 3.5, 4.25, 0.0007, {}, {}};
    for (const DropNumber number :
         {DropNumber{1, 1, 1}, DropNumber{1, 2, 1}, DropNumber{2, 1, 1}, DropNumber{2, 1, 2}}) {
        PulseModel load;
        load.peakPounds = 6000.123456789 + number.trial * 100 + number.drop;
        load.widthSeconds = 0.0271;
        load.driftPoundsPerSecond = -3.25;
        load.humPounds = 11;
        load.spoil = Spoil::SecondPulse;
        drops.loadCell[number] = load;
        AccelPulseModel accel;
        accel.peakMicrons = 250.987654321 + number.height;
        accel.widthSeconds = 0.031;
        accel.driftVoltsPerSecond = 0.0004;
        accel.triggerLevel = 0.22;
        accel.spoil = AccelSpoil::Ringing;
        drops.accelerometer[number] = accel;
    }
    return drops;
}

TEST(LiveDropsFile, BringsBackEveryValue) {
    const LiveDrops written = Sample();
    const auto read = LiveDropsIn(LiveDropsText(written));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->seed, written.seed);
    EXPECT_EQ(read->secondsToDrop, written.secondsToDrop);
    EXPECT_EQ(read->noisePounds, written.noisePounds);
    EXPECT_EQ(read->accelNoiseVolts, written.accelNoiseVolts);
    ASSERT_EQ(read->loadCell.size(), written.loadCell.size());
    for (const auto& [number, pulse] : written.loadCell) {
        const PulseModel& back = read->loadCell.at(number);
        EXPECT_EQ(back.peakPounds, pulse.peakPounds);
        EXPECT_EQ(back.widthSeconds, pulse.widthSeconds);
        EXPECT_EQ(back.driftPoundsPerSecond, pulse.driftPoundsPerSecond);
        EXPECT_EQ(back.humPounds, pulse.humPounds);
        EXPECT_EQ(back.spoil, pulse.spoil);
    }
    ASSERT_EQ(read->accelerometer.size(), written.accelerometer.size());
    for (const auto& [number, pulse] : written.accelerometer) {
        const AccelPulseModel& back = read->accelerometer.at(number);
        EXPECT_EQ(back.peakMicrons, pulse.peakMicrons);
        EXPECT_EQ(back.widthSeconds, pulse.widthSeconds);
        EXPECT_EQ(back.driftVoltsPerSecond, pulse.driftVoltsPerSecond);
        EXPECT_EQ(back.triggerLevel, pulse.triggerLevel);
        EXPECT_EQ(back.spoil, pulse.spoil);
    }
}

TEST(LiveDropsFile, LeavesOutWhatCannotBeRead) {
    EXPECT_FALSE(LiveDropsIn(""));
    EXPECT_FALSE(LiveDropsIn("[Other]\r\nSeed=1\r\n"));
    const auto read = LiveDropsIn(
        "[Demonstration Board]\r\nSeed=x\r\n[Load Cell "
        "Drops]\r\n1-H1D1=1,2,3\r\n1-H1D2=1,2,3,4,x\r\n1-H1D3=1,2,3,4,0\r\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->seed, LiveDrops().seed);
    EXPECT_EQ(read->loadCell.size(), 1U);
}

TEST(LiveDropsFile, FindsTheDropThatIsDue) {
    const auto drops = Sample().loadCell;
    struct Row {
        DropNumber asked;
        double peak;  ///< 0: none is due
    };
    for (const auto& [asked, peak] :
         {Row{{1, 2, 1}, 6101.123456789}, Row{{2, 1, 2}, 6202.123456789}, Row{{4, 1, 2}, 6202.123456789},
          Row{{3, 1, 1}, 6101.123456789}, Row{{2, 1, 9}, 6201.123456789}, Row{{1, 3, 1}, 0}}) {
        const auto due = DueDrop(drops, asked);
        EXPECT_DOUBLE_EQ(due ? due->peakPounds : 0, peak) << DropNumberText(asked);
    }
}

TEST(LiveSignalTest, FollowsTheSwitches) {
    LiveDrops quiet;
    quiet.noisePounds = 0;
    quiet.accelNoiseVolts = 0;
    LiveSignal signal(quiet);
    signal.ConnectLoadCell({}, 1e6);
    EXPECT_DOUBLE_EQ(signal.VoltsAt(1e6), 1.218);
    signal.isBalanced = true;
    EXPECT_NEAR(signal.VoltsAt(1e6), 12.4 / 4012.37, 1e-6);
    signal.calSwitch = CalSwitch::Plus;
    EXPECT_DOUBLE_EQ(signal.VoltsAt(1e6), 3.742);
    signal.calSwitch = CalSwitch::Minus;
    EXPECT_DOUBLE_EQ(signal.VoltsAt(1e6), -3.738);
    signal.ConnectAccelerometer({}, 1e6);
    EXPECT_NEAR(signal.VoltsAt(1e6), 0.4213, 1e-9);
    signal.TurnAccelerometer(false, 1e6);
    EXPECT_GT(signal.VoltsAt(1e6 + 0.01), 0) << "the turn begins where it was";
    EXPECT_LT(signal.VoltsAt(1e6 + 1.49), 0);
    EXPECT_NEAR(signal.VoltsAt(1e6 + 2), -0.4213, 1e-9);
    signal.TurnAccelerometer(true, 1e6 + 3);
    EXPECT_NEAR(signal.VoltsAt(1e6 + 5), 0.4213, 1e-9);
    for (const double volts : {-10.0, -0.4213, 0.0, 3.742, 9.9996})
        EXPECT_NEAR(VoltsOfRaw(RawOf(volts)), volts, 0.00016);
    EXPECT_EQ(RawOf(-11), 0U);
    EXPECT_EQ(RawOf(11), 65535U);
}

}  // namespace
}  // namespace bellmark::virtual_fwd
