#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "app/replay.h"
#include "app/workflow.h"
#include "platform/numbers.h"
#include "reference/frm_bellmark_accel.h"
#include "reference/frm_bellmark_accel_drop.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct FakeFWDData : IdleFWDData {
    int started = 0;
    int refreshed = 0;
    void Start() override { ++started; }
    void Refresh() override { ++refreshed; }
};

struct FakeCenterRelative : IdleCenterRelative {
    int started = 0;
    void Start() override { ++started; }
};

/// The two screens of a trial on a machine with a board: a cell of 1000 pounds a volt, 2 heights of 2 drops.
struct DropScreensTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    CalibrationRun& run = program.Run;
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    std::shared_ptr<FakeMainMenu> menu = std::make_shared<FakeMainMenu>(program);
    std::shared_ptr<FakeFWDData> fwdData = std::make_shared<FakeFWDData>();
    std::shared_ptr<FakeCenterRelative> stand = std::make_shared<FakeCenterRelative>();
    std::shared_ptr<FakeSimulator> simulator = std::make_shared<FakeSimulator>();
    std::shared_ptr<frmBellmark_Accel> collection = std::make_shared<frmBellmark_Accel>(program);
    std::shared_ptr<frmBellmark_AccelDrop> drop = std::make_shared<frmBellmark_AccelDrop>(program);

    DropScreensTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Register<MainMenuDoor>([this](Program&) { return menu; });
        program.Register<MainFrameDoor>([](Program&) { return std::make_shared<IdleMainFrame>(); });
        program.Register<FWDDataDoor>([this](Program&) { return fwdData; });
        program.Register<CenterRelativeDoor>([this](Program&) { return stand; });
        program.Register<SimulatorDoor>([this](Program&) { return simulator; });
        program.Register<CollectionDoor>([this](Program&) { return collection; });
        program.Register<DropDoor>([this](Program&) { return drop; });
        program.Center.ReferenceLoadCellUnits = poundForce;
        program.Center.ReferenceLoadCellCalibrationCoefficients = {1000, 0, 0, 0, 0};
        run.InterimFolderName = "InterimCal20120309";
        run.CurrentProcedure = Procedure::LoadCell;
        run.NumberLoadLevels = 2;
        run.NumberDropsPerLoadLevel = 2;
        SetPulse(9);
        collection->Bellmark();
    }

    /// A triangle of 40 samples with this many volts at its top, sample 2000.
    void SetPulse(float volts) {
        board->block.assign(3000, 0);
        for (int i = -20; i <= 20; ++i) {
            board->block[static_cast<std::size_t>(2000 + i)] = volts * static_cast<float>(20 - std::abs(i)) / 20;
        }
    }
    void Take() {
        collection->cmdNext.UserClick();
        drop->cmdAccept.UserClick();
    }
    void PressAndRelease() {
        machine.Advance(milliseconds(100));
        board->volts = 5;
        machine.Advance(milliseconds(100));
        board->volts = 0;
        machine.Advance(milliseconds(100));
    }
    bool IsInFront(const Screen& screen) const { return program.Screens.Front() == &screen; }
    std::vector<std::string> Boxes() { return machine.dialogs.TakeBoxes(); }
};

TEST_F(DropScreensTest, ATrialRunsHeightByHeight) {
    EXPECT_EQ(collection->lblTrialNum.Caption.Get(), "1");
    const char* names[] = {"H1D1", "H1D2", "H2D1", "H2D2"};
    for (const char* name : names) {
        EXPECT_EQ(fwdData->started, 0);
        const int taken = run.Trial.DropSequenceIndex;
        SetPulse(static_cast<float>(6 + taken));
        EXPECT_EQ('H' + collection->lblLoadNumber.Caption.Get() + 'D' + collection->lblDropNumber.Caption.Get(), name);
        Take();
        EXPECT_TRUE(machine.Has("InterimCal20120309/LoadCell1-" + std::string(name) + ".txt"));
    }
    EXPECT_THAT(run.Trial.DropResults, ::testing::Contains(9000).Times(1));
    // Heights of 6000, 7000 and of 8000, 9000 pounds: means 6500 and 8500, deviations 1000 / sqrt 2.
    const auto heights = StatisticsOfHeights(run.Trial.shape, std::span(run.Trial.DropResults).first(4));
    EXPECT_EQ(heights.at(0).mean, 6500);
    EXPECT_EQ(heights.at(1).mean, 8500);
    EXPECT_NEAR(heights.at(1).stdDev, 707.10678118654752, 1e-6);
    EXPECT_EQ(collection->DropDataDisplay.lblMean[1]->Caption.Get(), "8,500");
    collection->cmdNext.UserClick();
    EXPECT_EQ(fwdData->started, 1);
}

TEST_F(DropScreensTest, ADropIsShownAndKeptInTheUnitsOfTheRun) {
    const struct {
        bool englishUnits;
        const char* unit;
        double peak;  // of 9000 pounds; a pound-force is 4.4482216152605 N
    } cases[] = {{true, "lbf", 9000}, {false, "kN", 40.0339945373445}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.unit);
        run.EnglishUnits = test.englishUnits;
        run.Trial.DropSequenceIndex = 0;
        collection->Bellmark();
        collection->cmdNext.UserClick();
        drop->optDeflection.UserClick();
        const Plot& plot = drop->picDropResponse.Drawn();
        EXPECT_EQ(plot.vertical.caption, test.unit);
        // The axis ends a tenth of the curve's range above its top.
        EXPECT_NEAR(plot.vertical.highest, 1.1 * test.peak, 1e-3 * test.peak);
        ASSERT_FALSE(plot.marks.empty());
        EXPECT_NEAR(plot.marks.back().y, test.peak, 1e-4 * test.peak) << "the mark of the peak";
        drop->cmdAccept.UserClick();
        EXPECT_NEAR(run.Trial.DropResults[0], test.peak, 1e-6 * test.peak);
    }
}

TEST_F(DropScreensTest, ADropCanBeAbortedWhileItIsWaitedFor) {
    Take();
    board->captured = false;
    machine.WhileWaiting = [this] {
        EXPECT_EQ(drop->lblState.Caption.Get(), "Ready: drop now");
        EXPECT_FALSE(drop->cmdAccept.Enabled);
        drop->cmdMainMenu.UserClick();
    };
    collection->cmdNext.UserClick();
    EXPECT_EQ(menu->opened, 1);
    EXPECT_FALSE(drop->IsShown());
    EXPECT_TRUE(run.DropRejected);
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);
    EXPECT_GT(board->aborts, 0);
    EXPECT_FALSE(machine.Has("InterimCal20120309/LoadCell1-H1D2.txt"));
    machine.WhileWaiting = nullptr;
    board->captured = true;
    machine.Advance(milliseconds(200));
    board->conversions = 0;
    PressAndRelease();
    EXPECT_FALSE(drop->IsShown()) << "the button means nothing in the main menu";
    EXPECT_EQ(board->conversions, 0) << "and what is measured there is not disturbed";
    // The same drop is next, and the trial is still there.
    collection->Bellmark();
    Take();
    EXPECT_TRUE(machine.Has("InterimCal20120309/LoadCell1-H1D2.txt"));
    EXPECT_EQ(run.Trial.DropSequenceIndex, 2);
}

TEST_F(DropScreensTest, NoDropIsTakenUntilTheTrialIsEnteredAgain) {
    collection->DisableButtons();
    EXPECT_FALSE(collection->cmdNext.Enabled);
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*collection)) << "the hand button is no way around";
    for (const bool reviewMode : {false, true}) {
        run.ReviewMode = reviewMode;
        collection->DisableButtons();
        ReturnToProcedure(program, Procedure::LoadCell);
        EXPECT_TRUE(collection->cmdNext.Enabled) << reviewMode;
    }
}

TEST_F(DropScreensTest, OnlyDropsThatWereInHandWhenTheProgramEndedAreToBeRepeated) {
    Take();
    for (const bool wasInterrupted : {false, true}) {
        run.Trial = {};  // as after a restart; the file of the drop is still there
        run.Trial.procedure = wasInterrupted ? Procedure::LoadCell : Procedure::None;
        run.Trial.wasInterrupted = wasInterrupted;
        machine.dialogs.QueueAnswer(Answer::OK);
        collection->Bellmark();
        EXPECT_EQ(Boxes().size(), wasInterrupted ? 1U : 0U);
        EXPECT_FALSE(run.Trial.wasInterrupted) << "told once";
    }
}

TEST_F(DropScreensTest, AnAcceptedReferenceTakesNoMoreDrops) {
    run.CurrentProcedure = Procedure::Sensors;
    run.RefTrials = 2;
    BeginTrial(run);
    run.Trial.DropSequenceIndex = 1;
    menu->Open();
    run.SensorRefCalComplete = true;
    collection->Bellmark();
    EXPECT_EQ(stand->started, 1);
    EXPECT_FALSE(IsInFront(*collection));
    EXPECT_EQ(run.CurrentProcStep, step::sensorsRelative);
}

/// Whichever of the two procedures is begun, the other's drops are asked about before they go.
TEST_F(DropScreensTest, DropsOfTheOtherProcedureAreNotLostWithoutAWord) {
    Take();
    const TrialInHand loadCell = run.Trial;
    // The sensors are held up by no flip: the calibration of the accelerometer is of now.
    program.Center.AccelDailyCalibrationDate = program.Center.AccelDailyCalibrationTime = program.Now();
    program.Center.AccelDailyCalibrationTemperatureUnit = "Celsius";
    const auto begin = [this](Procedure procedure, Answer answer) {
        machine.dialogs.QueueAnswer(answer);
        run.CurrentProcedure = procedure;
        menu->opened = 0;
        collection->Bellmark();
    };
    begin(Procedure::Sensors, Answer::No);
    EXPECT_THAT(Boxes(), ElementsAre("Trial in Hand\tDrops of load cell trial 1 are in hand. They are given up when a "
                                     "trial of the deflection sensors begins.\\nDo you want to go on?\t292\tNo"));
    EXPECT_EQ(menu->opened, 1);
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);
    run.CurrentProcedure = Procedure::LoadCell;
    collection->Bellmark();
    EXPECT_TRUE(IsInFront(*collection)) << "the trial goes on";
    EXPECT_EQ(run.Trial.DropResults, loadCell.DropResults);

    begin(Procedure::Sensors, Answer::Yes);
    EXPECT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(menu->opened, 0);
    EXPECT_EQ(run.Trial.procedure, Procedure::Sensors);
    EXPECT_EQ(run.Trial.DropSequenceIndex, 0);
    run.Trial.DropSequenceIndex = 3;
    begin(Procedure::LoadCell, Answer::No);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Drops of reference trial 1 are in hand. They are given up when a trial "
                                               "of the load cell begins.")));
    EXPECT_EQ(run.Trial.DropSequenceIndex, 3);
    // Drops that nothing can be made of any more are not worth a question.
    run.SensorRefCalComplete = true;
    collection->Bellmark();
    EXPECT_THAT(Boxes(), ::testing::IsEmpty());
    EXPECT_EQ(run.Trial.procedure, Procedure::LoadCell);
}

TEST_F(DropScreensTest, AFifthTrialIsNotBegun) {
    run.LoadCellRefTrials = 4;
    // Declines the results; then from the screen itself, which the fourth trial has left.
    for (const Answer answer : {Answer::Cancel, Answer::OK, Answer::OK}) machine.dialogs.QueueAnswer(answer);
    collection->Bellmark();
    collection->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("4  load cell calibration trials"), HasSubstr("All four trials"),
                                     HasSubstr("All four trials")));
    EXPECT_TRUE(IsInFront(*collection));
}

TEST_F(DropScreensTest, ARejectedDropIsTakenAgain) {
    collection->cmdNext.UserClick();
    machine.dialogs.QueueAnswer(Answer::No);
    drop->cmdReject.UserClick();
    EXPECT_TRUE(IsInFront(*drop));
    machine.dialogs.QueueAnswer(Answer::Yes);
    drop->cmdReject.UserClick();
    EXPECT_TRUE(IsInFront(*collection));
    EXPECT_EQ(run.Trial.DropSequenceIndex, 0);
    EXPECT_EQ(run.Trial.DropResults[0], 0);
    machine.Advance(milliseconds(200));
    EXPECT_TRUE(IsInFront(*collection)) << "the operator has not asked for the next drop yet";
    SetPulse(7);
    Take();
    EXPECT_EQ(run.Trial.DropResults[0], 7000);
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);
}

TEST_F(DropScreensTest, TheHandButtonCountsOnReleaseOnTheScreenWhereItWasPressed) {
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*drop));
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*collection));
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);

    // Held down while the screen changes, the button has no effect there on release.
    board->volts = 5;
    machine.Advance(milliseconds(100));
    collection->cmdNext.UserClick();
    machine.Advance(milliseconds(200));
    board->volts = 0;
    machine.Advance(milliseconds(200));
    EXPECT_TRUE(IsInFront(*drop));
    board->volts = 0.99F;
    machine.Advance(milliseconds(100));
    board->volts = 0;
    machine.Advance(milliseconds(100));
    EXPECT_TRUE(IsInFront(*drop)) << "too little to be the button";

    // A drop screen left by a menu waits in the background, and takes no press from the screen in front.
    menu->Open();
    collection->Bellmark();
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*drop)) << "taken again";

    // In a panel the button means OK first.
    drop->cmdAccept.UserClick();
    SetPulse(9);
    board->block[1300] = 0.081F;
    collection->cmdNext.UserClick();
    EXPECT_TRUE(drop->fraMessage.Visible);
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*drop));
    EXPECT_FALSE(drop->fraMessage.Visible);
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*collection));
    EXPECT_TRUE(run.Trial.DropNoiseFlags[2]);
}

TEST_F(DropScreensTest, TooHighAPeakIsToldOnceTheDropIsSaved) {
    SetPulse(23.6F);
    bool savedBefore = false;
    machine.dialogs.Shown = [&](const std::string&) {
        savedBefore = machine.Has("InterimCal20120309/LoadCell1-H1D1.txt");
    };
    machine.dialogs.QueueAnswer(Answer::OK);
    collection->cmdNext.UserClick();
    EXPECT_TRUE(savedBefore);
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("Peak Load Above Acceptable Limits (303)\tThe maximum load of the drop "
                                                "was 23,600pound-force.")));
    EXPECT_EQ(run.LastMessageCode, 0);
    EXPECT_TRUE(drop->cmdAccept.Enabled) << "left to the operator";
    EXPECT_EQ(drop->cmdReject.BackColor.Get(), colors::suggestedNext);
    EXPECT_EQ(drop->cmdAccept.BackColor.Get(), colors::buttonFace);
    EXPECT_EQ(drop->Focus(), &drop->cmdReject);
    drop->cmdAccept.UserClick();
    EXPECT_TRUE(run.Trial.DropRangeFlags[0]);
    const auto& cells = collection->DropDataDisplay.txtData;
    EXPECT_EQ(cells[0]->BackColor.Get(), colors::mustBeUpdated);
    SetPulse(9);
    Take();
    EXPECT_EQ(cells[0]->BackColor.Get(), colors::mustBeUpdated) << "the mark stays with its drop";
    EXPECT_NE(cells[1]->BackColor.Get(), colors::mustBeUpdated);
    EXPECT_EQ(drop->cmdReject.BackColor.Get(), colors::buttonFace);
}

TEST_F(DropScreensTest, ADropThatCannotBeSavedCannotBeAccepted) {
    Take();
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueAnswer(Answer::OK);
    collection->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("no space left on device")));
    EXPECT_FALSE(drop->cmdAccept.Enabled);
    EXPECT_TRUE(drop->cmdReject.Enabled);
    machine.files.FailFromWrite(0);
    machine.dialogs.QueueAnswer(Answer::Yes);
    drop->cmdReject.UserClick();
    EXPECT_EQ(run.Trial.DropSequenceIndex, 1);
    Take();
    EXPECT_EQ(run.Trial.DropSequenceIndex, 2);
}

TEST_F(DropScreensTest, ABlockWithoutAPulseCannotBeAccepted) {
    SetPulse(0);
    collection->cmdNext.UserClick();
    EXPECT_EQ(drop->lblState.Caption.Get(), "No pulse found: reject this drop");
    EXPECT_FALSE(drop->cmdAccept.Enabled);
    PressAndRelease();
    EXPECT_TRUE(IsInFront(*drop)) << "nor by the hand button";
}

TEST_F(DropScreensTest, LookingAtASavedDropChangesNothing) {
    Take();
    Take();
    // A drop left at the message of its noise does not block anything.
    board->block[1400] = 0.2F;
    collection->cmdNext.UserClick();
    ASSERT_TRUE(drop->fraMessage.Visible);
    drop->cmdMainMenu.UserClick();
    collection->Bellmark();
    SetPulse(9);
    const Path saved = machine.folder / "InterimCal20120309/LoadCell1-H1D1.txt";
    const std::string text = machine.files.ReadBytes(saved);
    machine.dialogs.QueueAnswer(Answer::Yes);
    collection->DropDataDisplay.txtData[0]->UserClick();
    EXPECT_THAT(Boxes(),
                ElementsAre("Review Collected Data\tDo you wish to review Drop Height 1, Drop Number 1?\t36\tYes"));
    ASSERT_TRUE(IsInFront(*drop));
    EXPECT_TRUE(run.Trial.ReplayMode());
    EXPECT_EQ(simulator->file, "LoadCell1");
    // As the simulated board does, with the lines of the drop's file.
    program.Center.ShuntCalibrationMultiplier = 0.5;
    EXPECT_EQ(drop->cmdAccept.Caption.Get(), "&Return");
    drop->cmdAccept.UserClick();
    EXPECT_TRUE(IsInFront(*collection));
    EXPECT_FALSE(run.Trial.ReplayMode());
    EXPECT_EQ(run.Trial.DropSequenceIndex, 2);
    EXPECT_EQ(run.Trial.DropResults[0], 9000);
    EXPECT_EQ(program.Center.ShuntCalibrationMultiplier, 1);
    EXPECT_EQ(machine.files.ReadBytes(saved), text);
    // A click on a missing drop has no effect.
    collection->DropDataDisplay.txtData[2]->UserClick();
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(DropScreensTest, WhicheverWayAReviewIsLeftTheNextCaptureIsALiveOne) {
    Take();
    const struct {
        const char* way;
        std::function<void()> leave;
    } ways[] = {
        {"main menu", [&] { drop->cmdMainMenu.UserClick(); }},
        {"a screen of the menu bar", [&] { menu->Show(); }},
        {"closed", [&] { drop->Hide(); }},
        {"rejected", [&] { EXPECT_THROW(drop->cmdReject.UserClick(), UserError); }},
        {"no file, so that nothing is ever captured", {}},
    };
    for (const auto& [way, leave] : ways) {
        for (const bool isCounted : {false, true}) {
            SCOPED_TRACE(std::string(way) + (isCounted ? ", from the FWD's data" : ""));
            board->captured = leave != nullptr;
            machine.WhileWaiting = [&] { run.DropAborted = !leave; };
            BeginReplay(program, 0, isCounted);
            program.Center.ShuntCalibrationMultiplier = 0.5;
            drop->StartReview();
            if (leave) {
                EXPECT_TRUE(run.Trial.ReplayMode());
                leave();
            }
            if (std::string_view(way) == "rejected") {
                EXPECT_TRUE(IsInFront(*drop)) << "what is only looked at cannot be rejected";
                drop->cmdAccept.UserClick();
            }
            EXPECT_FALSE(run.Trial.ReplayMode());
            EXPECT_FALSE(run.Trial.TrialReview());
            EXPECT_FALSE(program.CenterSetAside.has_value());
            EXPECT_EQ(program.Center.ShuntCalibrationMultiplier, 1);
            board->captured = true;
            machine.WhileWaiting = nullptr;
            collection->Bellmark();
            collection->cmdNext.UserClick();
            EXPECT_EQ(drop->cmdAccept.Caption.Get(), "&Accept");
            machine.dialogs.QueueAnswer(Answer::Yes);
            drop->cmdReject.UserClick();
            EXPECT_EQ(run.Trial.DropSequenceIndex, 1) << "the accepted drop stays, and no other came in";
        }
    }
}

}  // namespace
}  // namespace bellmark
