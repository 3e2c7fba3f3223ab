#include "app/app_main.h"
#include "app/center_file.h"

#include <gtest/gtest.h>

#include "app/frm_about.h"
#include "app/frm_main_menu.h"
#include "app/frm_master.h"
#include "app/program.h"
#include "app/removed_runs.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

/// The core of the program with real start form, menu and frame; board and set-up are fakes.
struct AppMainTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    std::shared_ptr<FakeSetup> setup = std::make_shared<FakeSetup>();
    CalibrationRun& run = program.Run;

    AppMainTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Register<SetupDoor>([this](Program&) { return setup; });
        program.Register<MainFrameDoor>([](Program& owner) { return std::make_shared<frmMaster>(owner); });
        program.Register<StartFormDoor>([](Program& owner) { return std::make_shared<frmAbout>(owner); });
        program.Register<MainMenuDoor>([](Program& owner) { return std::make_shared<frmMainMenu>(owner); });
        machine.Write("Ferrylink.exe", "");
        machine.Write("BellmarkCenterConfig.ini",
                      "[FWD Calibration Center]\r\nCalibrationCenter=the machine's own\r\n");
    }

    frmAbout& StartForm() { return dynamic_cast<frmAbout&>(program.The<StartFormDoor>()); }
    std::vector<std::string> Boxes() { return machine.dialogs.TakeBoxes(); }
    std::string FileText(const Path& name) { return machine.files.ReadBytes(machine.folder / name); }
};

TEST_F(AppMainTest, StartsOnTheStartForm) {
    Main(program);
    EXPECT_EQ(program.Screens.Front(), &StartForm());
    EXPECT_FALSE(run.ReviewMode);
    EXPECT_FALSE(setup->reviewChoices);
    EXPECT_EQ(run.StartDirectory, machine.folder.Folder());
    EXPECT_FALSE(run.InterimCalOpen);
    EXPECT_FALSE(StartForm().cmdOpenInterimCal.Enabled);
    EXPECT_FALSE(StartForm().cmdDeleteInterim.Enabled);
    EXPECT_TRUE(StartForm().cmdReadCalCenterA.Enabled);
    EXPECT_EQ(setup->opened, 1);
}

TEST_F(AppMainTest, StartsInReviewModeWithoutABoard) {
    board->hardware = false;
    Main(program);
    EXPECT_TRUE(run.ReviewMode) << "the simulated board does not count";
    EXPECT_TRUE(setup->reviewChoices);
    EXPECT_EQ(StartForm().cmdStartNewCal.Caption.Get(), "Start Cal. &Review");
    EXPECT_TRUE(StartForm().lblReviewMode.Visible);
    machine.dialogs.QueueAnswer(Answer::Cancel);
    StartForm().cmdStartNewCal.UserClick();
    EXPECT_EQ(setup->centerReads, 0);
    machine.dialogs.QueueAnswer(Answer::OK);
    StartForm().cmdStartNewCal.UserClick();
    EXPECT_EQ(setup->centerReads, 1);
    EXPECT_EQ(Boxes().size(), 2U);
}

TEST_F(AppMainTest, ASecondInstanceEndsWithoutAScreen) {
    machine.machine.isFirstInstance = false;
    Main(program);
    EXPECT_TRUE(machine.ended);
    EXPECT_TRUE(program.Screens.Screens().empty());
    EXPECT_FALSE(machine.Has("Bellmark.log"));
}

TEST_F(AppMainTest, ListsInterimCalibrationsAndOpensOneWithAnEndDateOnly) {
    machine.Write("InterimCal20120308.DDX",
                  "[Operations Information]\r\nEndDate=03-08-2012\r\n[Device Information]\r\nDeviceOwner=Agency\r\n"
                  "DeviceSerialNumber=8002-101\r\n");
    machine.Write("interimcal20120307.ddx", "[Device Information]\r\nDeviceOwner=Agency\r\n");
    Main(program);
    frmAbout& start = StartForm();
    EXPECT_TRUE(run.InterimCalOpen);
    EXPECT_FALSE(start.cmdReadCalCenterA.Enabled);
    ASSERT_EQ(start.grdInterim.Rows(), 3);
    EXPECT_EQ(start.grdInterim.Cell(2, 0), "InterimCal20120308.DDX");
    EXPECT_EQ(start.grdInterim.Cell(2, 1), "03-08-2012");
    EXPECT_EQ(start.grdInterim.Cell(2, 3), "8002-101");
    start.grdInterim.UserClickCell(1, 0);
    start.cmdOpenInterimCal.UserClick();
    EXPECT_TRUE(Boxes().empty()) << "no end date, nothing to open";
    start.grdInterim.UserClickCell(2, 0);
    EXPECT_EQ(run.InterimFileName, "") << "marking marks, and nothing else";
    machine.dialogs.QueueAnswer(Answer::No);
    start.cmdOpenInterimCal.UserClick();
    EXPECT_EQ(Boxes(), std::vector<std::string>{
                           "Continue an Interim Calibration\tAre you sure you want to use the following interim "
                           "calibration?\\nInterimCal20120308.DDX\\nDate: 03-08-2012\\nFWD Owner: Agency\\nFWD Serial "
                           "Number: 8002-101\t292\tNo"});

    machine.Write("InterimCal20120308/LoadCell1-H1D1.txt", "");
    machine.dialogs.QueueAnswer(Answer::Yes);
    start.cmdDeleteInterim.UserClick();
    EXPECT_FALSE(machine.Has("InterimCal20120308.DDX"));
    EXPECT_FALSE(machine.Has("InterimCal20120308"));
    EXPECT_TRUE(machine.Has("Removed/20120309-100000-InterimCal20120308/InterimCal20120308/LoadCell1-H1D1.txt"));
    EXPECT_EQ(start.grdInterim.Rows(), 2);
    EXPECT_EQ(run.InterimFileName, "InterimCal20120309.DDX") << "a fresh name by today's date";
}

TEST_F(AppMainTest, OfADamagedFileTheOperatorChoosesTheCopyOrWhatIsLeft) {
    const std::string left = "[Operations Information]\r\nEndDate=03-08-2012\r\n";
    const std::string whole = "[Operations Information]\r\nEndDate=03-09-2012\r\n[Interim State]\r\nComplete=True\r\n";
    machine.Write("InterimCal20120308.DDX", left);
    machine.Write("InterimCal20120308/InterimCal.DDX", whole);
    Main(program);
    frmAbout& start = StartForm();
    start.grdInterim.UserClickCell(1, 0);
    EXPECT_EQ(start.grdInterim.Cell(1, 1), "03-09-2012");
    for (const bool takesCopy : {false, true}) {
        machine.dialogs.QueueAnswer(takesCopy ? Answer::Yes : Answer::No);
        machine.dialogs.QueueAnswer(Answer::No);
        start.cmdOpenInterimCal.UserClick();
        const auto boxes = Boxes();
        ASSERT_EQ(boxes.size(), 2U);
        EXPECT_NE(boxes[0].find("the copy in its data folder is whole. It was saved on 03-09-2012."),
                  std::string::npos);
        EXPECT_NE(boxes[1].find(takesCopy ? "Date: 03-09-2012" : "Date: 03-08-2012"), std::string::npos) << boxes[1];
        EXPECT_EQ(FileText("InterimCal20120308.DDX"), takesCopy ? whole : left);
    }
}

TEST_F(AppMainTest, NamesTheStoreByDayAndFreeNumber) {
    NameInterimStore(program);
    EXPECT_EQ(run.InterimFileName, "InterimCal20120309.DDX");
    EXPECT_EQ(run.InterimFolderName, "InterimCal20120309");
    machine.Write("interimcal20120309.ddx", "");
    NameInterimStore(program);
    EXPECT_EQ(run.InterimFileName, "InterimCal20120309-1.DDX");
    machine.Write("InterimCal20120309-1.DDX", "");
    machine.Write("InterimCal20120309-3.DDX", "");
    NameInterimStore(program);
    EXPECT_EQ(run.InterimFileName, "InterimCal20120309-2.DDX");
    EXPECT_EQ(run.InterimFolderName, "InterimCal20120309-2");
}

TEST_F(AppMainTest, ANewCalibrationStartsFromAFreshRecord) {
    Main(program);
    run.LoadCellChannel = 3;
    run.LoadCellRefTrials = 2;
    run.LoadCellCalComplete = true;
    run.Sensor[3].FinalGain = 1.01;
    run.InterimCalOpen = true;
    machine.Write("InterimCal20120309.DDX", "");
    StartForm().cmdStartNewCal.UserClick();
    EXPECT_EQ(run.LoadCellRefTrials, 0);
    EXPECT_FALSE(run.LoadCellCalComplete);
    EXPECT_EQ(run.Sensor[3].FinalGain, 0);
    EXPECT_FALSE(run.InterimCalOpen);
    EXPECT_EQ(run.LoadCellChannel, 3) << "the machine's own";
    EXPECT_EQ(run.InterimFileName, "InterimCal20120309-1.DDX");
    EXPECT_EQ(run.CurrentProcedure, Procedure::Setup);
    EXPECT_EQ(run.CurrentProcStep, step::setupCenter);
    EXPECT_TRUE(run.ProgramStarted);
    EXPECT_EQ(program.Center.CalibrationCenter, "the machine's own");
    EXPECT_EQ(setup->centerShown, 1);
    EXPECT_EQ(setup->centerPageOpened, 1);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_NE(FileText("InterimCal20120309-1/BellmarkCenterConfig.ini").find("ReferenceLoadCellName="),
              std::string::npos)
        << "whole, for a review of the run";
}

TEST_F(AppMainTest, EndsWithoutTheConverter) {
    Main(program);
    std::filesystem::remove(machine.folder / "Ferrylink.exe");
    machine.dialogs.QueueAnswer(Answer::OK);
    StartNewCalibration(program);
    const std::string folder = PathText(machine.folder.Folder());
    EXPECT_EQ(Boxes(),
              std::vector<std::string>{
                  "Missing Critical File (300)\tThe following file is missing from the program directory: \\n" +
                  folder + "\\n\\n\t\xE2\x80\xA2" + "Ferrylink.exe - FWD file conversion software \\n\\n" +
                  "Please copy the file into this directory before continuing.\\nExecution will "
                  "terminate.\t16400\tOK"});
    EXPECT_TRUE(machine.ended);
    EXPECT_TRUE(run.InterimFileName.empty()) << "no run was begun";
}

TEST_F(AppMainTest, FetchesAMissingCenterConfiguration) {
    Main(program);
    std::filesystem::remove(machine.folder / "BellmarkCenterConfig.ini");
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_FALSE(StartNewCalibration(program)) << "the operator's choice has brought none";
    EXPECT_EQ(setup->centerReads, 1);
    EXPECT_FALSE(run.IsInHand);
    EXPECT_FALSE(machine.ended);
}

TEST_F(AppMainTest, QuitAsksOnlyWhereSomethingIsLeftUncompleted) {
    const struct {
        const char* name;
        bool interimOpen, monthly;
        int lastMessage;
        std::optional<Answer> asked;
        bool ends;
    } cases[] = {
        {"nothing begun", false, false, 0, {}, true},
        {"interim calibration, Yes", true, false, 0, Answer::Yes, true},
        {"interim calibration, No", true, false, 0, Answer::No, false},
        {"monthly calibration", true, true, 0, {}, true},
        {"interim file could not be read", true, false, 304, {}, true},
    };
    for (const auto& test : cases) {
        machine.ended = false;
        board->unloaded = false;
        run.InterimCalOpen = test.interimOpen;
        run.MonthlyCalibration = test.monthly;
        run.LastMessageCode = test.lastMessage;
        if (test.asked) machine.dialogs.QueueAnswer(*test.asked);
        QuitApplication(program);
        EXPECT_EQ(machine.ended, test.ends) << test.name;
        EXPECT_EQ(board->unloaded, test.ends) << test.name;
        const auto boxes = Boxes();
        ASSERT_EQ(boxes.size(), test.asked ? 1U : 0U) << test.name;
        if (test.asked) {
            EXPECT_EQ(boxes[0].substr(0, boxes[0].rfind('\t')),
                      "\tDo you really want to quit?\\nThere is an uncompleted interim calibration.\t36");
        }
    }
}

TEST_F(AppMainTest, QuitMovesTheRunThatTheOperatorIsDoneWith) {
    machine.Write("InterimCal20120309.DDX", "kept");
    machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "kept");
    NameInterimStore(program);
    machine.Write("InterimCal20120309-1.DDX", "");
    machine.Write("InterimCal20120309-1/LoadCell1-H1D1.txt", "measured");
    machine.files.CreateFolder(machine.folder / "InterimCal20120301");
    machine.files.CreateFolder(machine.folder / "Interim");
    QuitApplication(program);
    EXPECT_TRUE(machine.ended);
    EXPECT_FALSE(machine.Has("InterimCal20120309-1.DDX"));
    EXPECT_FALSE(machine.Has("InterimCal20120309-1"));
    const Path removed = "Removed/20120309-100000-InterimCal20120309-1";
    EXPECT_TRUE(machine.Has(removed / "InterimCal20120309-1.DDX"));
    EXPECT_EQ(FileText(removed / "InterimCal20120309-1/LoadCell1-H1D1.txt"), "measured");
    EXPECT_TRUE(machine.Has("InterimCal20120309.DDX"));
    EXPECT_TRUE(machine.Has("InterimCal20120309/LoadCell1-H1D1.txt"));
    EXPECT_FALSE(machine.Has("InterimCal20120301")) << "an empty folder goes";
    EXPECT_TRUE(machine.Has("Interim"));
}

TEST_F(AppMainTest, ALockedFileKeepsNeitherItsFolderNorTheProgram) {
    NameInterimStore(program);
    machine.Write("InterimCal20120309.DDX", "");
    machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "");
    machine.files.RefuseToMove(machine.folder / "InterimCal20120309.DDX");
    QuitApplication(program);
    EXPECT_TRUE(machine.ended);
    EXPECT_TRUE(machine.Has("InterimCal20120309.DDX"));
    EXPECT_FALSE(machine.Has("InterimCal20120309"));
}

TEST_F(AppMainTest, QuitLeavesAStoreThatWasNeitherOpenedNorMade) {
    machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "measured");
    run.InterimFileName = "InterimCal20120309.DDX";
    run.InterimFolderName = "InterimCal20120309";
    QuitApplication(program);
    EXPECT_TRUE(machine.ended);
    EXPECT_TRUE(machine.Has("InterimCal20120309/LoadCell1-H1D1.txt"));
}

TEST_F(AppMainTest, WhatWasRemovedIsKeptForNinetyDays) {
    const char* const goes[] = {"Removed/20111209-095959-InterimCal20111208", "Removed/20011209-095959-x"};
    const char* const stays[] = {"Removed/20111210-100000-InterimCal20111208",
                                 "Removed/20120309-100000-a",
                                 "Removed/20130101-000000-of a clock that went wrong",
                                 "Removed/20111330-000000-no date",
                                 "Removed/20010101",
                                 "Removed/my own"};
    for (const char* name : goes) machine.Write(Path(name) / "data.txt", "");
    for (const char* name : stays) machine.Write(Path(name) / "data.txt", "");
    Main(program);
    for (const char* name : goes) EXPECT_FALSE(machine.Has(name)) << name;
    for (const char* name : stays) EXPECT_TRUE(machine.Has(Path(name) / "data.txt")) << name;
}

TEST_F(AppMainTest, TwoOfOneNameAreRemovedInOneSecond) {
    for (const char* content : {"first", "second"}) {
        machine.Write("TempInterimDropData/LoadCell1-H1D1.txt", content);
        MoveToRemoved(program, "InterimCal20120309", {machine.folder / "TempInterimDropData"});
    }
    const Path file = "TempInterimDropData/LoadCell1-H1D1.txt";
    EXPECT_EQ(FileText("Removed/20120309-100000-InterimCal20120309" / file), "first");
    EXPECT_EQ(FileText("Removed/20120309-100000-InterimCal20120309-1" / file), "second");
}

TEST_F(AppMainTest, QuitOfARunWithoutANameHarmsNoFolder) {
    run.InterimFileName = "InterimCal20120309.DDX";
    run.InterimFolderName = "";
    QuitApplication(program);
    EXPECT_TRUE(machine.Has("Ferrylink.exe"));
}

TEST_F(AppMainTest, QuitOfAReviewPutsTheMachinesOwnCenterBack) {
    const std::string own = "[FWD Calibration Center]\r\nCalibrationCenter=the machine's own\r\n";
    machine.Write("BellmarkCenterConfig.ini", "reviewed center's");
    machine.Write("BellmarkCenterConfigOld.Ini", own);
    QuitApplication(program);
    EXPECT_EQ(FileText("BellmarkCenterConfig.ini"), "reviewed center's") << "not in Review Mode";
    run.ReviewMode = true;
    QuitApplication(program);
    EXPECT_EQ(FileText("BellmarkCenterConfig.ini"), own);
    EXPECT_FALSE(machine.Has("BellmarkCenterConfigOld.Ini"));
    QuitApplication(program);
    EXPECT_EQ(FileText("BellmarkCenterConfig.ini"), own);
}

TEST_F(AppMainTest, AConfigurationThatABrokenOffReviewHasLeftIsPutBackAtStart) {
    const std::string own = "[FWD Calibration Center]\r\nCalibrationCenter=the machine's own\r\n";
    machine.Write("BellmarkCenterConfig.ini", "reviewed center's");
    machine.Write("BellmarkCenterConfigOld.Ini", own);
    Main(program);
    EXPECT_EQ(FileText("BellmarkCenterConfig.ini"), own);
    EXPECT_FALSE(machine.Has("BellmarkCenterConfigOld.Ini")) << "it must not come back over a newer one";
    machine.Write("BellmarkCenterConfigOld.Ini", "no configuration");
    PutBackCenterConfiguration(program);
    EXPECT_EQ(FileText("BellmarkCenterConfig.ini"), own);
}

TEST_F(AppMainTest, ACancelledStartOfAReviewHasBegunNothing) {
    board->hardware = false;
    Main(program);
    setup->readsCenter = false;
    machine.dialogs.QueueAnswer(Answer::OK);
    StartForm().cmdStartNewCal.UserClick();
    EXPECT_EQ(setup->opened, 1) << "by the start of the program alone";
    EXPECT_EQ(program.Screens.Front(), &StartForm());
    EXPECT_FALSE(run.IsInHand);
    EXPECT_EQ(run.InterimFileName, "");
}

TEST_F(AppMainTest, AFailingHandlerIsLoggedShownAndSurvived) {
    Main(program);
    StartForm().cmdRelativeCal.Enabled = true;
    StartForm().cmdRelativeCal.Click = [] { throw std::runtime_error("no such file"); };
    for (const int failingWrite : {0, 1}) {  // the failing file may be the log
        machine.files.FailFromWrite(failingWrite);
        machine.dialogs.QueueAnswer(Answer::OK);
        StartForm().cmdRelativeCal.UserClick();
        EXPECT_EQ(Boxes(),
                  std::vector<std::string>{"Bellmark\tno such file\\n\\nWhile: frmAbout.cmdRelativeCal.Click\t16\tOK"});
    }
    EXPECT_EQ(FileText("Bellmark.log"), "2012-03-09 10:00:00 frmAbout.cmdRelativeCal.Click: no such file\r\n");
    EXPECT_EQ(program.Screens.Front(), &StartForm());
}

TEST_F(AppMainTest, WhatAKilledProgramLeftIsCleanedAtStart) {
    const char* const goes[] = {".bellmark-77-0.tmp", "InterimCal20120101/.bellmark-77-1.tmp",
                                "InterimCal20120102/BellmarkCenterConfig.ini"};
    const char* const stays[] = {
        "bellmark-notes.tmp",
        "InterimCal20120101/InterimCal.DDX",      // saved, but only its copy is left
        "InterimCal20120103/LoadCell1-H1D1.txt",  // measured
        "InterimCal20120103/BellmarkCenterConfig.ini",
        "InterimCal20120104.DDX",
        "InterimCal20120104/BellmarkCenterConfig.ini",
        "InterimCal20120105/kept/BellmarkCenterConfig.ini",
    };
    for (const char* name : goes) machine.Write(name, "x");
    for (const char* name : stays) machine.Write(name, "x");
    Main(program);
    for (const char* name : goes) EXPECT_FALSE(machine.Has(name)) << name;
    EXPECT_FALSE(machine.Has("InterimCal20120102"));
    for (const char* name : stays) EXPECT_TRUE(machine.Has(name)) << name;
}

TEST_F(AppMainTest, AClickOnTheAboutViewStopsItsTimer) {
    Main(program);
    StartForm().ShowAbout();
    EXPECT_TRUE(StartForm().tmrShowTime.IsRunning());
    StartForm().Clicked();
    EXPECT_FALSE(StartForm().tmrShowTime.IsRunning());
}

}  // namespace
}  // namespace bellmark
