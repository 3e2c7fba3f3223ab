// A whole run with a program folder, and with files from a folder, whose names the program's files cannot hold.

#include <gtest/gtest.h>

#include "app/app_main.h"
#include "app/interim_store.h"
#include "tests/setup/set_up_program.h"

namespace bellmark {
namespace {

struct AnyFolderTest : ::testing::Test, SetUpProgram {
    Path here = machine.folder / PathFromText("Łódź");

    AnyFolderTest() {
        machine.machine.programFolder = here;
        run.ReviewMode = false;
        machine.Write(here / "Ferrylink.exe", "");
        machine.Write(here / "BellmarkCenterConfig.ini", configuration.Text());
    }
};

TEST_F(AnyFolderTest, ARunIsStartedSavedAndResumedThere) {
    const Path device = here / "Bellmark/Calibrations/Owner/8002";
    machine.files.CreateFolder(device);
    StartNewCalibration(*program);
    ASSERT_TRUE(run.ProgramStarted);
    run.DeviceOwner = "Owner";
    run.OwnerFolder = device.parent_path();
    run.DeviceFolder = device;
    run.LoadCellRefTrials = 1;
    run.LCTrialShape[0] = {4, 6, true};
    run.LCTrial[0].RefDropData = {26.8125};
    center.LocationOfFWDDataTransfer = PathText(here / "FWD/");
    ASSERT_TRUE(SaveInterimCalibration(*program));
    EXPECT_EQ(machine.dialogs.TakeBoxes().size(), 0U) << "all of it lies below the program";

    // A file from another folder. Only the folder's name is lost, and this is reported once.
    center.LocationOfFWDDataTransfer = "/media/Ł/";
    machine.dialogs.QueueAnswer(Answer::OK);
    ASSERT_TRUE(SaveInterimCalibration(*program));
    ASSERT_TRUE(SaveInterimCalibration(*program));
    const auto told = machine.dialogs.TakeBoxes();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("letters that the program's files cannot hold"), std::string::npos);

    const auto resumed = AssembleProgram(machine.machine);
    resumed->Run.InterimFileName = run.InterimFileName;
    resumed->Run.InterimFolderName = run.InterimFolderName;
    ASSERT_TRUE(LoadInterimCalibration(*resumed));
    EXPECT_EQ(resumed->Run.LCTrial[0].RefDropData[0], 26.8125);
    EXPECT_EQ(resumed->Run.DeviceOwner, "Owner");
    EXPECT_EQ(resumed->Run.DeviceFolder, device);
    EXPECT_EQ(resumed->Run.OwnerFolder, device.parent_path());
    EXPECT_EQ(resumed->Center.LocationOfFWDDataTransfer, "");
}

TEST_F(AnyFolderTest, AnOwnersFolderCanBeChosenThereIfItsOwnNameCanBeStored) {
    machine.files.CreateFolder(here / PathFromText("Bellmark/Calibrations/Kraków"));
    machine.files.CreateFolder(here / PathFromText("Bellmark/Calibrations/Wrocław"));
    StartNewCalibration(*program);
    setup.OpenPage(12);
    setup.FWD.DirFWDOwner.UserClickCell(2, 0);
    EXPECT_EQ(run.DeviceOwner, "Kraków");
    setup.OpenPage(12);
    machine.dialogs.QueueAnswer(Answer::OK);
    setup.FWD.DirFWDOwner.UserClickCell(3, 0);
    EXPECT_EQ(run.DeviceOwner, "Kraków") << "a record cannot hold the other name";
}

}  // namespace
}  // namespace bellmark
