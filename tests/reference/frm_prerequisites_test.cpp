#include "reference/frm_prerequisites.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "platform/numbers.h"
#include "reference/frm_bellmark_accel.h"
#include "run/trial.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

/// The checklist with a board whose volts the test sets, in front of the real collection screen.
struct PrerequisitesTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    CalibrationRun& run = program.Run;
    CenterConfig& center = program.Center;
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    std::shared_ptr<FakeMainMenu> menu = std::make_shared<FakeMainMenu>(program);
    std::shared_ptr<frmPrerequisites> list = std::make_shared<frmPrerequisites>(program);
    std::shared_ptr<frmBellmark_Accel> collection = std::make_shared<frmBellmark_Accel>(program);

    PrerequisitesTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Register<MainMenuDoor>([this](Program&) { return menu; });
        program.Register<PrerequisitesDoor>([this](Program&) { return list; });
        program.Register<CollectionDoor>([this](Program&) { return collection; });
        center.ReferenceLoadCellUnbalancedZero = 1.218;
        center.ReferenceLoadCellPlusVoltage = 3.742;
        center.ReferenceLoadCellMinusVoltage = -3.738;
        center.ReferenceLoadCellGain = "5.00";
        center.UseBVoltages = true;
        center.ShuntCalibrationMultiplier = 1.002;
        run.CurrentProcedure = Procedure::LoadCell;
        run.CurrentProcStep = step::loadCellTrialStarts;
        run.InterimFolderName = "InterimCal20120309";
    }

    void Ok(float volts = 0) {
        board->volts = volts;
        list->cmdOK.UserClick();
    }
    void PassHandWork(int items) {
        for (int i = 0; i < items; ++i) Ok();
    }
    /// Goes to the reading of this item of the load cell's list, 4 being the first one.
    void GoToReading(int item) {
        list->ResetPreReq();
        list->PrerequisitesMet(Procedure::LoadCell);
        PassHandWork(4);
        const double readings[] = {center.ReferenceLoadCellUnbalancedZero, 0, center.ReferenceLoadCellPlusVoltage};
        for (int i = 4; i < item; ++i) Ok(static_cast<float>(readings[i - 4]));
    }
    int ItemsDone() const {
        int done = 0;
        for (const auto& box : list->chkPrereq) done += box->Value ? 1 : 0;
        return done;
    }
    std::vector<std::string> Boxes() { return machine.dialogs.TakeBoxes(); }
};

TEST_F(PrerequisitesTest, LeadThroughTheLoadCellsChecks) {
    collection->Bellmark();
    ASSERT_EQ(program.Screens.Front(), list.get());
    EXPECT_EQ(list->lblDateTime.Caption.Get(), "03-09-2012  10:00:00");
    machine.Advance(std::chrono::milliseconds(1000));
    EXPECT_EQ(list->lblDateTime.Caption.Get(), "03-09-2012  10:00:01");

    const struct {
        const char* prompt;
        float volts;
    } items[] = {
        {"Verify that the computer's Date and Time are correct.", 0},
        {"Verify the Signal Conditioner and the Load Cell have been on and warmed up for 60 minutes", 0},
        {"Set up Signal Conditioner with Load Cell", 0},
        {"Be sure the FWD load plate is raised off the Reference Load Cell.", 0},
        {"Press OK to read the unbalanced zero.", 1.22F},
        {"Briefly depress the Auto Balance switch to the RESET position, then release it to the ON position, and "
         "adjust "
         "the Trim knob to 0.0 volts.",
         0.003F},
        {"Push and hold the CAL switch in the +B position, then press OK", 3.75F},
        {"Push and hold the CAL switch in the -B position, then press OK", -3.7425F},
        {"Carefully line up the Reference load cell, lower FWD plate, perform 3 seating drops", -3.7425F},
    };
    int done = 0;
    for (const auto& item : items) {
        EXPECT_EQ(list->lblPrompt.Caption.Get(), item.prompt);
        EXPECT_EQ(ItemsDone(), done++);
        EXPECT_FALSE(list->PrerequisitesMet(Procedure::LoadCell));
        if (done == 8) {
            EXPECT_EQ(list->fraStep.Caption.Get(), "-B Reading");
        }
        EXPECT_EQ(Boxes().size(), 0U) << "the switch may be held until the list is passed";
        // The switch is still held when the plate is down.
        if (done == 9) machine.dialogs.QueueAnswer(Answer::OK);
        Ok(item.volts);
    }
    EXPECT_EQ(ItemsDone(), 9);
    EXPECT_TRUE(run.PrereqSetupDone && run.PrereqZeroDone && run.PrereqShuntDone);
    const auto boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_THAT(
        boxes[0],
        ::testing::StartsWith(
            "Shunt Switch Not Set to Neutral Position (211)\tThe Reference Load Cell has a measured unbalanced zero of "
            "-3.743 v.\\nThis may be d"));
    EXPECT_EQ(run.CurrentProcStep, step::loadCellTrialStarts);
    EXPECT_TRUE(list->PrerequisitesMet(Procedure::LoadCell));
    list->cmdNext.UserClick();
    EXPECT_EQ(run.CurrentProcStep, step::loadCellTrial);
    EXPECT_EQ(program.Screens.Front(), collection.get());
    // 7.4925 V measured on 7.48 V, as single-precision readings give it.
    EXPECT_NEAR(center.ShuntCalibrationMultiplier, 7.4925 / 7.48, 1e-7);
}

TEST_F(PrerequisitesTest, ReadingsAreJudgedByTheirLimits) {
    const struct {
        int item;
        float volts;
        int message;  // 0: the reading passes
        double zero = 1.218, plus = 3.742, minus = -3.738;
    } cases[] = {
        {4, 1.218F, 0},
        {4, 5.2F, 0, 5},     // 4 percent
        {4, 5.25F, 210, 5},  // exactly 5 percent
        {4, -5.5F, 210, -5},
        {4, 1.0625F, 0, 1},  // 6 percent, but less than 0.1 V
        {4, 2.125F, 210, 2},
        {4, 0.0625F, 0, 0},
        {4, 0.125F, 210, 0},
        {5, 0.01F, 0},
        {5, 0.0101F, 201},
        {5, -0.0101F, 201},
        {6, 0.001F, 0},
        {6, 0, 202},
        {6, -3.742F, 202},
        {7, 0, 202},
        {7, 3.738F, 202},
        {7, -3.70F, 104},  // 38 mV of 7480: more than 10 mV and more than 0.5 percent
        {7, -3.702F, 0},   // 36 mV: less than 0.5 percent
        {7, -3.774F, 0},
        {7, -3.776F, 104},
        {7, -0.491F, 0, 1, 0.5, -0.5},     // 9 mV of 1000
        {7, -0.4890F, 104, 1, 0.5, -0.5},  // 11 mV
    };
    run.LoadCellRefTrials = 1;  // no message 211
    for (const auto& test : cases) {
        SCOPED_TRACE("item " + NumberText(test.item) + ' ' + NumberText(test.volts));
        center.ReferenceLoadCellUnbalancedZero = test.zero;
        center.ReferenceLoadCellPlusVoltage = test.plus;
        center.ReferenceLoadCellMinusVoltage = test.minus;
        GoToReading(test.item);
        ASSERT_EQ(ItemsDone(), test.item);
        if (test.message != 0) machine.dialogs.QueueAnswer(test.message == 104 ? Answer::Yes : Answer::OK);
        Ok(test.volts);
        const auto boxes = Boxes();
        ASSERT_EQ(boxes.size(), test.message == 0 ? 0U : 1U);
        if (test.message != 0) {
            EXPECT_NE(boxes[0].find('(' + NumberText(test.message) + ")\t"), std::string::npos) << boxes[0];
        }
        const int repeatedFrom = test.message == 104 ? 4 : test.item;
        EXPECT_EQ(ItemsDone(), test.message == 0 ? test.item + 1 : repeatedFrom);
    }
}

TEST_F(PrerequisitesTest, AnUnsuitablePairOfShuntVoltagesRepeatsOrLeaves) {
    center.UseBVoltages = false;
    GoToReading(7);
    EXPECT_EQ(list->lblPrompt.Caption.Get(), "Push and hold the CAL switch in the -A position, then press OK");
    machine.dialogs.QueueAnswer(Answer::No);
    Ok(-3.5F);
    const auto boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_THAT(
        boxes[0],
        ::testing::StartsWith(
            "Error in +/- A readings (104)\tA difference of 7.242 v. was measured.  This differs from the\\nreference "
            "value 7.480 v. by more than the limit"));
    EXPECT_NE(boxes[0].find("on 5.00."), std::string::npos);
    EXPECT_EQ(menu->opened, 1);
    EXPECT_FALSE(list->IsShown());
    EXPECT_EQ(center.ShuntCalibrationMultiplier, 1.002);
    EXPECT_FALSE(run.PrereqShuntDone);
}

TEST_F(PrerequisitesTest, WarnOfTheShuntSwitchOnceARunAndBeforeItsFirstTrialOnly) {
    const auto boxesAfterList = [&](float volts) {
        GoToReading(7);
        Ok(static_cast<float>(center.ReferenceLoadCellMinusVoltage));
        machine.dialogs.QueueAnswer(Answer::OK);
        Ok(volts);
        return Boxes().size();
    };
    run.LoadCellRefTrials = 1;
    EXPECT_EQ(boxesAfterList(-3.738F), 0U);
    run.LoadCellRefTrials = 0;
    EXPECT_EQ(boxesAfterList(-0.0099F), 0U);
    EXPECT_EQ(boxesAfterList(-3.738F), 1U);
    EXPECT_EQ(boxesAfterList(-3.738F), 0U);
}

TEST_F(PrerequisitesTest, InReviewTheStoredVoltagesAreRead) {
    run.ReviewMode = true;
    board->volts = 9;
    list->PrerequisitesMet(Procedure::LoadCell);
    machine.dialogs.QueueAnswer(Answer::OK);
    for (int i = 0; i < 9; ++i) list->cmdOK.UserClick();
    EXPECT_EQ(ItemsDone(), 9);
    EXPECT_EQ(run.MeasuredPlus, 3.742);
    EXPECT_EQ(run.MeasuredMinus, -3.738);
    EXPECT_EQ(center.ShuntCalibrationMultiplier, 1.002);
    // The unbalanced zero is the one of the warning's reading.
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(PrerequisitesTest, TheAccelerometersListIsShortAndLeadsOnByProcedure) {
    run.ReviewMode = true;
    run.CurrentProcedure = Procedure::Sensors;
    center.AccelDailyCalibrationDate = program.Now();
    center.AccelDailyCalibrationTime = program.Now();
    center.AccelDailyCalibrationTemperatureUnit = "Celsius";
    EXPECT_FALSE(list->PrerequisitesMet(Procedure::Sensors));
    machine.dialogs.QueueAnswer(Answer::OK);
    list->cmdNext.UserClick();
    EXPECT_EQ(Boxes(),
              std::vector<std::string>{"\tAll prerequisites must be complete before continuing with the current "
                                       "procedure.\t48\tOK"});
    EXPECT_TRUE(list->IsShown());
    EXPECT_THROW(list->chkPrereq[1]->UserClick(), UserError) << "one after the other";
    EXPECT_THROW(list->chkPrereq[4]->UserClick(), UserError) << "not of this list";
    for (int i = 0; i < 4; ++i) list->chkPrereq[static_cast<std::size_t>(i)]->UserClick();
    EXPECT_THROW(list->cmdOK.UserClick(), UserError);
    list->cmdNext.UserClick();
    EXPECT_EQ(run.CurrentProcStep, step::sensorsTrial);
    EXPECT_EQ(program.Screens.Front(), collection.get());
    EXPECT_TRUE(list->PrerequisitesMet(Procedure::Sensors));

    // For the load cell the conditioner is set up anew, but it is already warm.
    EXPECT_FALSE(list->PrerequisitesMet(Procedure::LoadCell));
    EXPECT_EQ(ItemsDone(), 0);
    Ok();
    EXPECT_NE(list->lblPrompt.Caption.Get().find("warmed up for 10 minutes"), std::string::npos);
    list->cmdMainMenu.UserClick();
    EXPECT_EQ(menu->opened, 1);
    EXPECT_FALSE(list->PrerequisitesMet(Procedure::Sensors)) << "the accelerometer's list was given up for it";
}

TEST_F(PrerequisitesTest, KeepTheTrialInHand) {
    run.ReviewMode = true;
    run.LoadCellRefTrials = 1;
    collection->Bellmark();
    PassHandWork(9);
    list->cmdNext.UserClick();
    TakePeak(run.Trial, 6028, {});
    collection->GetResults();
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);
    list->ResetPreReq();
    collection->Start();
    ASSERT_EQ(program.Screens.Front(), list.get());
    PassHandWork(9);
    list->cmdNext.UserClick();
    EXPECT_EQ(program.Screens.Front(), collection.get());
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);
    EXPECT_EQ(run.Trial.DropResults[0], 6028);
    EXPECT_EQ(collection->DropDataDisplay.txtData[0]->Text.Get(), "6,028");
}

}  // namespace
}  // namespace bellmark
