#include "platform/timers.h"

#include <gtest/gtest.h>

#include "tests/controls/sample_screen.h"

namespace bellmark {
namespace {

using std::chrono::milliseconds;

struct TimersTest : ::testing::Test, SampleProgram {
    int ticks = 0;
    TimersTest() {
        screen.tmrTick.Tick = [this] { ++ticks; };
    }
};

TEST_F(TimersTest, TickEachIntervalWhileTheyRun) {
    screen.tmrTick.Start();
    Advance(9);
    EXPECT_EQ(ticks, 0);
    Advance(1);
    Advance(0);
    EXPECT_EQ(ticks, 1);
    Advance(95);
    EXPECT_EQ(ticks, 2) << "ticks that were missed are not made up for";
    Advance(5);
    EXPECT_EQ(ticks, 2);
    Advance(5);
    EXPECT_EQ(ticks, 3);
    screen.tmrTick.SetInterval(milliseconds(50));
    Advance(10);
    EXPECT_EQ(ticks, 4) << "a new interval counts from the next start on";
    screen.tmrTick.Start();
    Advance(49);
    screen.tmrTick.Start();
    Advance(49);
    EXPECT_EQ(ticks, 4) << "started anew";
    Advance(1);
    EXPECT_EQ(ticks, 5);
    screen.tmrTick.Stop();
    screen.tmrTick.Stop();
    Advance(1000);
    EXPECT_EQ(ticks, 5);
    EXPECT_FALSE(timers.NextDue());
}

TEST_F(TimersTest, StopAndStartInTheirOwnHandler) {
    screen.tmrTick.Tick = [this] {
        ++ticks;
        screen.tmrTick.Stop();
    };
    screen.tmrTick.Start();
    Advance(10);
    Advance(100);
    EXPECT_EQ(ticks, 1);
    screen.tmrTick.Tick = [this] {
        ++ticks;
        screen.tmrTick.Start();
    };
    screen.tmrTick.Start();
    Advance(25);
    EXPECT_EQ(ticks, 2);
    Advance(10);
    EXPECT_EQ(ticks, 3);
}

TEST_F(TimersTest, ServeEachOtherButNeverThemselvesWhileAHandlerWaits) {
    SampleScreen second(screens, "frmSecond");
    int others = 0;
    second.tmrTick.Tick = [&] { ++others; };
    int depth = 0;
    screen.tmrTick.Tick = [&] {
        ++ticks;
        ++depth;
        EXPECT_EQ(depth, 1);
        for (int i = 0; i < 3; ++i) Advance(10);  // the handler waits for something
        --depth;
    };
    screen.tmrTick.Start();
    second.tmrTick.Start();
    Advance(10);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(others, 3) << "at 20, 30 and 40 ms; that of 10 ms was late";
    Advance(0);
    EXPECT_EQ(ticks, 2);
}

TEST_F(TimersTest, RunTheLongestDueFirst) {
    std::string order;
    timers.Start(milliseconds(30), [&] { order += 'c'; });
    timers.Start(milliseconds(10), [&] { order += 'a'; });
    timers.Start(milliseconds(20), [&] { order += 'b'; });
    EXPECT_EQ(timers.NextDue(), clock.Elapsed() + milliseconds(10));
    Advance(30);
    EXPECT_EQ(order, "abc");
}

}  // namespace
}  // namespace bellmark
