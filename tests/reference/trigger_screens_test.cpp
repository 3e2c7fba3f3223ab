#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "app/workflow.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "reference/frm_bellmark_accel_trigger.h"
#include "run/trial.h"
#include "tests/reference/made_accel_block.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// The screen on a machine with a board, with the set-up screen and the simulated board behind their doors.
struct TriggerScreenTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    CalibrationRun& run = program.Run;
    double& level = program.Center.AccelSensitivity;
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    std::shared_ptr<FakeSimulator> simulator = std::make_shared<FakeSimulator>();
    std::shared_ptr<FakeSetup> setup = std::make_shared<FakeSetup>();
    std::shared_ptr<FakeMainMenu> menu = std::make_shared<FakeMainMenu>(program);
    std::shared_ptr<frmBellmark_AccelTrigger> shared = std::make_shared<frmBellmark_AccelTrigger>(program);
    frmBellmark_AccelTrigger& screen = *shared;

    TriggerScreenTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Register<SimulatorDoor>([this](Program&) { return simulator; });
        program.Register<SetupDoor>([this](Program&) { return setup; });
        program.Register<MainMenuDoor>([this](Program&) { return menu; });
        program.Register<MainFrameDoor>([](Program&) { return std::make_shared<IdleMainFrame>(); });
        program.Register<PrerequisitesDoor>([](Program&) { return std::make_shared<IdlePrerequisites>(); });
        program.Register<TriggerDoor>([this](Program&) { return shared; });
        program.Center = MadeCenter(0.06);
        run.EnglishUnits = false;
        run.ProgramStarted = true;  // a new set-up; an edit has its own step
        run.NumberLoadLevels = 4;
        run.NumberDropsPerLoadLevel = 9;
        machine.Write("BellmarkCenterConfig.ini", "[FWD Calibration Center]\r\nAccelSensitivity=0.06\r\n");
        SetPulse(400);
    }

    /// microns: 0 for a block at rest.
    void SetPulse(double microns) { board->block = VoltsOf({6000, 7, 0.004, 0, {{3000, 400, microns}}, {}, {}, 0.06}); }
    void Enter(Procedure procedure) {
        run.CurrentProcedure = procedure;
        run.CurrentProcStep = procedure == Procedure::TriggerLevel ? step::triggerCheck : step::dropsCheck;
        ReturnToProcedure(program, procedure);
    }
    void Drop() {
        if (screen.fraMessage.Visible) screen.cmdErrOK.UserClick();
        screen.cmdStart.UserClick();
    }
    std::string Written() const {
        return OpenProfileStrings(machine.files, machine.folder / "BellmarkCenterConfig.ini")
            .Get("FWD Calibration Center", "AccelSensitivity", "(none)");
    }
    bool IsInFront() const { return program.Screens.Front() == &screen; }
    void ExpectNothingTaken() const {
        EXPECT_EQ(program.Center.AccelSensitivity, 0.06);
        EXPECT_EQ(Written(), "0.06");
        EXPECT_EQ(run.NumberDropsPerLoadLevel, 9);
        EXPECT_EQ(setup->triggerLevels + setup->numbersOfDrops, 0);
        EXPECT_FALSE(IsInFront());
        EXPECT_FALSE(screen.TimerDrop.IsRunning());
    }
};

TEST_F(TriggerScreenTest, ALevelIsSearchedShownAndWrittenWhenItIsTaken) {
    Enter(Procedure::TriggerLevel);
    EXPECT_EQ(run.LastMessageCode, 5);
    EXPECT_EQ(run.CurrentHeightIndex, 1);
    EXPECT_TRUE(run.ErrorPanelOpen);
    EXPECT_THAT(screen.txtError.Text.Get(), HasSubstr("LOWEST"));
    EXPECT_EQ(screen.HelpContext(), helpPage::firstMessage + 5);
    screen.cmdErrOK.UserClick();
    EXPECT_EQ(screen.HelpContext(), helpPage::contents);
    EXPECT_EQ(screen.Focus(), &screen.cmdStart);
    screen.cmdStart.UserClick();
    EXPECT_EQ(screen.lblCurrentTrigger.Caption.Get(), "0.06");
    EXPECT_NEAR(ReadNumber(screen.lblPeakValue.Caption.Get()), 400, 1);
    EXPECT_EQ(screen.cmdAccept.Caption.Get(), "&Calculate");
    EXPECT_EQ(screen.cmdAccept.BackColor.Get(), colors::suggestedNext);
    EXPECT_EQ(screen.cmdStart.Caption.Get(), "ReStart");
    EXPECT_EQ(screen.cmdNoTrigger.Caption.Get(), "Late Trigger");
    const TriggerBand band = DetermineTrigger(program.Drop);
    screen.cmdAccept.UserClick();
    EXPECT_EQ(level, 0.06) << "only proposed";
    EXPECT_EQ(Written(), "0.06");
    EXPECT_EQ(screen.lblNewTrigger.Caption.Get(), NumberText(band.newTrigger));
    EXPECT_EQ(screen.lblUpperTrigger.Caption.Get(), NumberText(Round(band.upperBound, 2)));
    EXPECT_EQ(screen.lblLowerTrigger.Caption.Get(), NumberText(Round(band.lowerBound, 2)));
    EXPECT_NE(band.newTrigger, 0.06);
    EXPECT_EQ(program.Drop.TriggerLevel, band.newTrigger) << "the plot shows the level proposed";
    EXPECT_EQ(screen.grdLevels.Rows(), 101);
    EXPECT_FALSE(screen.cmdTooEarly.Visible || screen.cmdNoTrigger.Visible);
    const auto& bands = screen.picDropResponse.Drawn().bands;
    ASSERT_EQ(bands.size(), 2U);
    EXPECT_NEAR(bands[0].chosen + program.Drop.BaselineAccel, 1 + band.newTrigger, 1e-12);
    EXPECT_NEAR(bands[1].lowest + program.Drop.BaselineAccel, 1 - band.upperBound, 1e-12);
    screen.cmdAccept.UserClick();
    EXPECT_EQ(level, band.newTrigger);
    EXPECT_EQ(Written(), NumberText(band.newTrigger));
    EXPECT_EQ(setup->triggerLevels, 1);
    EXPECT_EQ(run.CurrentProcedure, Procedure::Setup);
    EXPECT_EQ(run.CurrentProcStep, step::setupEnds);
    EXPECT_FALSE(IsInFront());
}

TEST_F(TriggerScreenTest, AClickOnEitherLevelTakesIt) {
    const struct {
        const char* what;
        bool isNew;
        int raised;
        const char* written;
    } cases[] = {{"kept", false, 0, "0.06"}, {"raised by hand", false, 1, "0.11"}, {"proposed", true, 0, nullptr}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        level = 0.06;
        setup->triggerLevels = 0;
        Enter(Procedure::TriggerLevel);
        EXPECT_THROW(screen.lblCurrentTrigger.UserClick(), UserError) << "nothing is measured yet";
        Drop();
        EXPECT_THROW(screen.lblNewTrigger.UserClick(), UserError);
        for (int i = 0; i < test.raised; ++i) screen.cmdTooEarly.UserClick();
        if (test.isNew) screen.cmdAccept.UserClick();
        const std::string proposed = screen.lblNewTrigger.Caption;
        (test.isNew ? screen.lblNewTrigger : screen.lblCurrentTrigger).UserClick();
        EXPECT_EQ(Written(), test.isNew ? proposed : test.written);
        EXPECT_EQ(NumberText(level), Written());
        EXPECT_EQ(setup->triggerLevels, 1);
    }
}

TEST_F(TriggerScreenTest, ByHandTheLevelStaysBetweenNothingAndTwo) {
    const struct {
        double before;
        bool early;
        double after;
        const char* shown;
    } cases[] = {{1.98, true, 2, "2.00"},    {2, true, 2, "2.00"},  {0.1, true, 0.15, "0.15"},
                 {0.03, false, 0, "0.00"},   {0, false, 0, "0.00"}, {0.3, false, 0.25, "0.25"},
                 {0.06, false, 0.01, "0.01"}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.before);
        level = 0.06;
        Enter(Procedure::TriggerLevel);
        Drop();
        level = test.before;
        (test.early ? screen.cmdTooEarly : screen.cmdNoTrigger).UserClick();
        EXPECT_EQ(level, test.after);
        EXPECT_EQ(screen.lblCurrentTrigger.Caption.Get(), test.shown);
        EXPECT_FALSE(screen.cmdAccept.Enabled);
        EXPECT_TRUE(screen.cmdStart.Enabled);
        EXPECT_EQ(screen.DefaultButton(), &screen.cmdStart);
        EXPECT_FALSE(screen.TimerDrop.IsRunning());
        EXPECT_EQ(run.DropAborted, !test.early);
        EXPECT_EQ(screen.BackColor(), colors::warning);
        screen.cmdCancel.UserClick();
    }
    ExpectNothingTaken();
}

TEST_F(TriggerScreenTest, LeavingAtAnyStepTakesNothing) {
    enum class Step { Panel, Ready, Waiting, Captured, Changed, Proposed };
    for (const Procedure procedure : {Procedure::TriggerLevel, Procedure::NumberOfDrops}) {
        for (const Step step :
             {Step::Panel, Step::Ready, Step::Waiting, Step::Captured, Step::Changed, Step::Proposed}) {
            for (const bool toMenu : {false, true}) {
                SCOPED_TRACE(NumberText(static_cast<int>(procedure)) + ' ' + NumberText(static_cast<int>(step)));
                const auto leave = [&] { (toMenu ? screen.cmdMainMenu : screen.cmdCancel).UserClick(); };
                const int returns = setup->returns;
                const int opened = menu->opened;
                machine.WhileWaiting = nullptr;
                board->captured = true;
                Enter(procedure);
                if (step >= Step::Ready) screen.cmdErrOK.UserClick();
                if (step == Step::Waiting) {
                    board->captured = false;
                    machine.WhileWaiting = [&] {
                        EXPECT_FALSE(screen.cmdStart.Enabled || screen.cmdAccept.Enabled || screen.cmdTooEarly.Enabled);
                        EXPECT_EQ(screen.DefaultButton(), nullptr) << "a stray Enter leaves nothing";
                        if (screen.IsShown()) leave();
                    };
                }
                if (step >= Step::Waiting) screen.cmdStart.UserClick();
                const bool ofTrigger = procedure == Procedure::TriggerLevel;
                if (step == Step::Changed && ofTrigger) screen.cmdNoTrigger.UserClick();
                if (step == Step::Proposed) screen.cmdAccept.UserClick();
                if (step != Step::Waiting) leave();
                EXPECT_EQ(setup->returns - returns, toMenu ? 0 : 1);
                EXPECT_EQ(menu->opened - opened, toMenu ? 1 : 0);
                EXPECT_EQ(run.CurrentProcedure, Procedure::Setup);
                ExpectNothingTaken();
            }
        }
    }
}

TEST_F(TriggerScreenTest, ADropThatDoesNotComeIsEndedByALowerLevel) {
    for (const Procedure procedure : {Procedure::TriggerLevel, Procedure::NumberOfDrops}) {
        level = 0.06;
        machine.WhileWaiting = nullptr;
        board->captured = true;
        Enter(procedure);
        Drop();
        const std::string peakBefore = NumberText(program.Drop.PeakMetric);
        board->captured = false;
        const int aborts = board->aborts;
        machine.WhileWaiting = [this] {
            EXPECT_EQ(screen.cmdNoTrigger.ToolTip.Get(),
                      "No Trigger (click to stop DAQ, decrease Current Trigger by 0.05)");
            if (screen.cmdNoTrigger.IsReachable()) screen.cmdNoTrigger.UserClick();
        };
        screen.cmdStart.UserClick();
        EXPECT_GT(board->aborts, aborts);
        EXPECT_EQ(level, 0.01);
        EXPECT_EQ(screen.lblState.Caption.Get(), "Level lowered to 0.01 g: start again");
        EXPECT_EQ(NumberText(program.Drop.PeakMetric), peakBefore) << "the results stay as they were";
        EXPECT_FALSE(screen.cmdAccept.Enabled);
        EXPECT_TRUE(screen.cmdStart.Enabled);
        EXPECT_FALSE(screen.TimerDrop.IsRunning());
        EXPECT_TRUE(IsInFront());
        screen.cmdCancel.UserClick();
    }
}

TEST_F(TriggerScreenTest, ADropWithoutAPulseIsRepeated) {
    SetPulse(0);
    for (const Procedure procedure : {Procedure::TriggerLevel, Procedure::NumberOfDrops}) {
        Enter(procedure);
        Drop();
        EXPECT_EQ(screen.lblState.Caption.Get(), "No pulse found: repeat this drop");
        EXPECT_FALSE(screen.cmdAccept.Enabled);
        EXPECT_EQ(screen.DefaultButton(), &screen.cmdStart);
    }
}

TEST_F(TriggerScreenTest, TheNumberOfDropsComesFromTwoDrops) {
    // 4 / sqrt(n S) below 0.003, S the sum of the squared peaks between low and high; by hand.
    const struct {
        const char* what;
        int heights;
        double high, low;
        Answer answer;
        int message;
        int drops;  ///< the run's number afterwards; 9 as before
    } cases[] = {{"the least for four heights", 4, 1000, 400, Answer::OK, 10, 5},
                 {"the least for three heights", 3, 1000, 400, Answer::OK, 10, 6},
                 {"seven", 3, 300, 300, Answer::OK, 10, 7},
                 {"tried again", 4, 1000, 400, Answer::Cancel, 10, 9},
                 {"too many", 4, 150, 100, Answer::OK, 203, 9},
                 {"too many for three", 3, 150, 100, Answer::Cancel, 203, 9}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        run.NumberLoadLevels = test.heights;
        run.NumberDropsPerLoadLevel = 9;
        setup->numbersOfDrops = 0;
        Enter(Procedure::NumberOfDrops);
        EXPECT_EQ(run.LastMessageCode, 6);
        EXPECT_EQ(run.CurrentHeightIndex, test.heights);
        EXPECT_FALSE(screen.fraTrigger.Visible);
        SetPulse(test.high);
        Drop();
        EXPECT_FALSE(screen.cmdTooEarly.Enabled || screen.cmdNoTrigger.Enabled);
        screen.cmdAccept.UserClick();
        EXPECT_EQ(run.LastMessageCode, 7);
        EXPECT_EQ(screen.cmdStart.Caption.Get(), "Start");
        EXPECT_EQ(run.CurrentHeightIndex, 1);
        EXPECT_EQ(screen.lblPeakValue.Caption.Get(), "");
        EXPECT_FALSE(screen.cmdAccept.Enabled);
        SetPulse(test.low);
        Drop();
        machine.dialogs.QueueAnswer(test.answer);
        screen.cmdAccept.UserClick();
        const auto boxes = machine.dialogs.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_THAT(boxes[0], HasSubstr(test.message == 10 ? "(010)" : "(203)"));
        EXPECT_EQ(boxes[0].find("four (4) drop heights") != std::string::npos,
                  test.message == 203 && test.heights == 3);
        EXPECT_EQ(run.NumberDropsPerLoadLevel, test.drops);
        const bool taken = test.drops != 9;
        EXPECT_EQ(setup->numbersOfDrops, taken ? 1 : 0);
        const bool triedAgain = test.message == 10 && !taken;
        EXPECT_EQ(IsInFront(), triedAgain);
        if (triedAgain) {
            EXPECT_EQ(run.CurrentHeightIndex, test.heights) << "both drops are repeated";
            EXPECT_TRUE(screen.fraMessage.Visible);
        } else {
            EXPECT_EQ(run.CurrentProcedure, Procedure::Setup);
        }
        EXPECT_EQ(setup->returns, test.message == 203 ? 1 : 0);
        setup->returns = 0;
    }
}

TEST_F(TriggerScreenTest, ATrialInHandIsRepeatedWithTheMeasuredNumberOfDropsOrKeepsItsOwn) {
    for (const bool repeat : {false, true}) {
        run.NumberDropsPerLoadLevel = 9;
        run.CurrentProcedure = Procedure::LoadCell;
        BeginTrial(run);
        TakePeak(run.Trial, 6028, {});
        Enter(Procedure::NumberOfDrops);
        SetPulse(1000);
        Drop();
        screen.cmdAccept.UserClick();
        Drop();
        machine.dialogs.QueueAnswer(Answer::OK);
        machine.dialogs.QueueAnswer(repeat ? Answer::Yes : Answer::No);
        screen.cmdAccept.UserClick();
        EXPECT_THAT(machine.dialogs.TakeBoxes(), ElementsAre(HasSubstr("(010)"), HasSubstr("1 of the 36 drops")));
        EXPECT_EQ(run.NumberDropsPerLoadLevel, repeat ? 5 : 9);
        EXPECT_EQ(run.Trial.DropSequenceIndex, repeat ? 0 : 1);
        EXPECT_EQ(setup->numbersOfDrops, repeat ? 1 : 0);
        EXPECT_FALSE(IsInFront());
    }
}

TEST_F(TriggerScreenTest, TheHandButtonGoesOnStepByStep) {
    const auto press = [this] {
        machine.Advance(milliseconds(200));
        board->volts = 5;
        machine.Advance(milliseconds(100));
        board->volts = 0;
        machine.Advance(milliseconds(100));
    };
    Enter(Procedure::TriggerLevel);
    press();
    EXPECT_TRUE(screen.fraMessage.Visible) << "nobody polls it before the first drop";
    Drop();
    press();
    EXPECT_EQ(screen.cmdAccept.Caption.Get(), "&Accept");
    EXPECT_EQ(setup->triggerLevels, 0);
    press();
    EXPECT_EQ(setup->triggerLevels, 1);
}

TEST_F(TriggerScreenTest, AReviewReadsTheSavedDropOfTheHeightAndOneWithoutAFileEndsTheWait) {
    run.ReviewMode = true;
    Enter(Procedure::TriggerLevel);
    Drop();
    EXPECT_EQ(simulator->file, "Reference1-H3D0.txt");
    EXPECT_FALSE(screen.TimerDrop.IsRunning());
    board->captured = false;
    machine.WhileWaiting = [this] { run.DropAborted = true; };
    screen.cmdStart.UserClick();
    EXPECT_TRUE(screen.cmdStart.Enabled);
    EXPECT_TRUE(screen.cmdCancel.Enabled);
    EXPECT_EQ(screen.lblState.Caption.Get(), "No drop was captured: start again");
}

TEST_F(TriggerScreenTest, WhatCannotBeWrittenIsNotTaken) {
    Enter(Procedure::TriggerLevel);
    Drop();
    screen.cmdAccept.UserClick();
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueAnswer(Answer::OK);
    screen.cmdAccept.UserClick();
    EXPECT_THAT(machine.dialogs.TakeBoxes(), ElementsAre(HasSubstr("no space left on device")));
    machine.files.FailFromWrite(0);
    EXPECT_TRUE(IsInFront());
    EXPECT_EQ(level, 0.06);
    EXPECT_EQ(setup->triggerLevels, 0);
}

TEST_F(TriggerScreenTest, PeaksAreShownInTheRunsUnitsAndTheTableIsSaved) {
    run.EnglishUnits = true;
    Enter(Procedure::TriggerLevel);
    Drop();
    EXPECT_EQ(screen.lblPeakValue.Caption.Get(), NumberText(Round(program.Drop.PeakMetric / 25.4, 2)));
    EXPECT_EQ(screen.lblPeakUnit.Caption.Get(), "mils");
    screen.cmdAccept.UserClick();
    machine.dialogs.QueueFile(machine.folder / "Levels.csv");
    screen.cmdSaveLevels.UserClick();
    const std::string table = machine.files.ReadBytes(machine.folder / "Levels.csv");
    EXPECT_THAT(table, ::testing::StartsWith("Level (g),Peak (microns),Rise time (ms),Good\r\n0.02,"));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 101);
}

}  // namespace
}  // namespace bellmark
