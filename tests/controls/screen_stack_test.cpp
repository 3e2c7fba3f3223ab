#include "controls/screen_stack.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/controls/sample_screen.h"

namespace bellmark {
namespace {

struct ScreenStackTest : ::testing::Test, SampleProgram {};

TEST_F(ScreenStackTest, BringsScreensToTheFront) {
    SampleScreen second(screens, "frmSecond");
    int changes = 0;
    screens.FrontChanged = [&] { ++changes; };
    EXPECT_EQ(screens.Front(), nullptr);
    screen.Show();
    screen.Show();
    EXPECT_EQ(screen.activations, 1) << "it was in front already";
    second.Show();
    EXPECT_EQ(screens.Front(), &second);
    screen.Hide();
    EXPECT_EQ(second.activations, 1) << "hiding one behind changes nothing in front";
    screen.Show();
    second.Hide();
    screen.Hide();
    EXPECT_EQ(screens.Front(), nullptr);
    EXPECT_EQ(screen.activations, 2);
    EXPECT_EQ(changes, 4);
}

TEST_F(ScreenStackTest, ForgetsAScreenThatIsGone) {
    {
        SampleScreen second(screens, "frmSecond");
        second.Show();
        second.tmrTick.Tick = [] { ADD_FAILURE() << "a timer outlived its screen"; };
        second.tmrTick.Start();
        EXPECT_EQ(screens.Find("FRMSECOND"), &second);
    }
    EXPECT_EQ(screens.Front(), nullptr);
    EXPECT_EQ(screens.Find("frmSecond"), nullptr);
    Advance(100);
}

TEST_F(ScreenStackTest, FindsControlsByNameAndTakesEachOnce) {
    EXPECT_EQ(screen.Find("CMDGO"), &screen.cmdGo);
    EXPECT_EQ(screen.Find("cmdNone"), nullptr);
    EXPECT_THROW(Label(screen, "CmdGo"), std::logic_error);
}

TEST_F(ScreenStackTest, HandsAFailureOverWithWhatTheOperatorWasDoing) {
    screen.cmdGo.Click = [] { throw std::runtime_error("the disk is full"); };
    EXPECT_THROW(screen.cmdGo.UserClick(), std::runtime_error) << "nobody is there to handle it";
    std::string failure;
    screens.HandleFailure = [&](const std::string& what, const std::string& why) { failure = what + ": " + why; };
    screen.cmdGo.UserClick();
    EXPECT_EQ(failure, "frmSample.cmdGo.Click: the disk is full");
    screen.tmrTick.Tick = [] { throw std::runtime_error("no board"); };
    screen.tmrTick.Start();
    Advance(10);
    EXPECT_EQ(failure, "frmSample.tmrTick.Tick: no board");
    EXPECT_TRUE(screen.tmrTick.IsRunning()) << "one failure does not end a poll";
    // Anything but a std::exception is left to the front end.
    screen.cmdGo.Click = [] { throw 1; };
    EXPECT_THROW(screen.cmdGo.UserClick(), int);
}

}  // namespace
}  // namespace bellmark
