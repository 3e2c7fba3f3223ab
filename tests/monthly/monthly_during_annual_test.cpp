// A monthly calibration that begins while an annual one is in hand, in the assembled program.
#include "app/app_main.h"
#include "app/interim_store.h"
#include "tests/interim/full_run.h"
#include "tests/monthly/monthly_screens.h"

namespace bellmark {
namespace {

struct MonthlyDuringAnnual : MonthlyScreens {
    MonthlyDuringAnnual() {
        // An annual run with everything in it, opened in this sitting.
        const CalibrationRun full = FullRun(1);
        run = full;
        run.IsInHand = true;
        run.ReviewMode = true;
        run.FlagUnacceptedTrial = false;
        run.Trial = {};
        run.StoreIsOfThisSitting = true;
        run.SetupComplete = true;
        machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "measured");
        program->Header.SetFWDOwnerName(run.DeviceOwner);
        SaveInterimCalibration(*program);
        program->The<MainMenuDoor>().Open();
    }
};

TEST_F(MonthlyDuringAnnual, NoFileOfTheAnnualRunChanges) {
    run.RefCalAvg = 1.2345;  // not saved yet
    program->CenterSetAside = program->Center;
    program->Center.AccelDailyCalibrationPlus1GStdDev = 77;  // of a drop that is looked at again
    menu->cmdRelativeCal.UserClick();
    const auto before = FilesOf("InterimCal");
    EXPECT_EQ(before.size(), 3U);
    EXPECT_THAT(before.at("InterimCal20120309.DDX"),
                AllOf(HasSubstr("RefCalAvg=1.2345"), HasSubstr("AccelDailyCalibration+1GStdDev=0\r\n")))
        << "saved first";
    EXPECT_TRUE(run.InterimFileName.empty());
    EXPECT_TRUE(run.InterimFolderName.empty());
    EXPECT_FALSE(run.InterimCalOpen);
    EXPECT_EQ(run.RelTrials, 0);
    EXPECT_EQ(run.Sensor[0].FinalGain, 0) << "nothing of the annual run is left";
    EXPECT_EQ(run.RefTrials, 0);
    EXPECT_TRUE(run.ReviewMode);

    QueueAnswer(Answer::OK);  // 7 sensors in the file
    run.NumberSensors = 7;
    run.EnglishUnits = true;
    relative->SetupMonthly();
    AcceptTrial(FileOff(thirdIsLow));
    AcceptTrial(FileOff(thirdIsLow, 1));
    results->cmdNext.UserClick();
    Boxes();
    EXPECT_EQ(FilesOf("InterimCal"), before);
    EXPECT_FALSE(menu->fraAnnual.Visible);
    EXPECT_FALSE(menu->lblFWDOwner.Visible);
    EXPECT_EQ(menu->Header.FWDOwnerName.Caption.Get(), "");

    QuitApplication(*program);
    EXPECT_TRUE(machine.ended);
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(FilesOf("InterimCal"), before);
    EXPECT_FALSE(machine.Has("Removed"));
}

TEST_F(MonthlyDuringAnnual, TheAnnualRunGoesOnFromTheStartForm) {
    menu->cmdRelativeCal.UserClick();
    relative->cmdMainMenu.UserClick();
    menu->cmdStartForm.UserClick();
    EXPECT_EQ(Front(), "frmAbout");
    EXPECT_FALSE(run.MonthlyCalibration);
    EXPECT_FALSE(run.IsInHand);
    EXPECT_EQ(start->Header.BoardName.Caption.Get(), "No Board: Review");
    ASSERT_EQ(start->grdInterim.Rows(), 2);
    start->grdInterim.UserClickCell(1, 0);
    QueueAnswer(Answer::Yes);
    start->cmdOpenInterimCal.UserClick();
    EXPECT_EQ(run.InterimFileName, "InterimCal20120309.DDX");
    EXPECT_EQ(run.RelTrials, 4);
    EXPECT_EQ(run.Sensor[11].RelTrial[3].DropData[39], FullRun(1).Sensor[11].RelTrial[3].DropData[39]);
    EXPECT_EQ(Front(), "frmMainMenu");
    EXPECT_TRUE(menu->fraAnnual.Visible);
    EXPECT_FALSE(menu->fraMonthly.Visible);
    EXPECT_TRUE(menu->cmdEditSetup.Visible);
}

TEST_F(MonthlyDuringAnnual, ARunThatCannotBeSavedStaysInHand) {
    machine.files.FailFromWrite(1);
    QueueAnswer(Answer::OK);
    menu->cmdRelativeCal.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Unable to create PDDX file")));
    EXPECT_FALSE(run.MonthlyCalibration);
    EXPECT_EQ(run.RelTrials, 4);
    EXPECT_EQ(Front(), "frmMainMenu");
}

TEST_F(MonthlyDuringAnnual, DropsInHandAreGivenUpOnlyWhenTheOperatorWants) {
    run.LoadCellCalComplete = false;
    run.Trial.procedure = Procedure::LoadCell;
    run.Trial.number = 1;
    run.Trial.DropSequenceIndex = 5;
    QueueAnswer(Answer::No);
    menu->cmdRelativeCal.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("They are given up when a monthly calibration begins.")));
    EXPECT_EQ(run.Trial.DropSequenceIndex, 5);
    EXPECT_FALSE(run.MonthlyCalibration);
}

}  // namespace
}  // namespace bellmark
