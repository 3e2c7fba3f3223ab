// The screens of a finished trial, with a fake converter, on files as an FWD might write them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/interim_store.h"
#include "app/workflow.h"
#include "fwd/fwd_intake.h"
#include "fwd/trial_report.h"
#include "tests/fwd/trial_screens.h"

namespace bellmark {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST_F(TrialScreens, ATrialIsStartedReadLookedAtAndAccepted) {
    data->Start();
    EXPECT_EQ(run.CurrentProcStep, step::loadCellFileRead);
    EXPECT_EQ(run.LoadCellRefTrials, 1);
    EXPECT_TRUE(run.FlagUnacceptedTrial);
    EXPECT_EQ(run.LCTrial[0].RefDropData[3], 12040);
    EXPECT_FALSE(data->cmdAccept.Enabled);
    EXPECT_FALSE(data->cmdReject.Enabled);
    EXPECT_TRUE(machine.Has("InterimCal20120309.DDX"));

    WriteFile({"9001", "9038", "12001", "12038"});
    Browse();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(data->txtFilename.Text.Get(), "Trial.ddx");
    EXPECT_EQ(data->txtAdjFactor.Text.Get(), "1.0000");
    EXPECT_EQ(data->txtStdError.Text.Get(), "0.0001");
    EXPECT_EQ(data->txtR2.Text.Get(), "1.000");
    EXPECT_EQ(data->txtGain.Text.Get(), "1.000");
    EXPECT_EQ(program.Center.LocationOfFWDDataTransfer, PathText(machine.folder / "transfer/"));

    data->cmdAccept.UserClick();
    EXPECT_EQ(program.Screens.Front(), plot.get()) << "not before the plot was looked at";
    EXPECT_EQ(plot->cmdNext.Caption.Get(), "&Accept");
    plot->cmdBack.UserClick();
    EXPECT_EQ(data->txtFilename.Text.Get(), "Trial.ddx") << "back from the plot nothing begins anew";
    EXPECT_EQ(run.LoadCellRefTrials, 1);
    data->cmdAccept.UserClick();
    EXPECT_TRUE(machine.Has("InterimCal20120309/8002-101 09-Mar-2012 LC-1.LC1"));
    EXPECT_FALSE(run.FlagUnacceptedTrial);
    EXPECT_EQ(run.CurrentProcStep, step::loadCellTrial);
    EXPECT_EQ(run.Trial.DropSequenceIndex, 0) << "the next trial begins with its first drop";
    EXPECT_EQ(menu->loadCellEntered, 1);

    // The first trial's file again is asked about.
    data->Start();
    Browse({Answer::Yes});
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("The peaks of this file are those of trial 1")));
    AcceptByPlot();
    EXPECT_EQ(results->loadCellOpened, 1) << "from the second trial on";
    EXPECT_EQ(run.LoadCellRefTrials, 2);
}

TEST_F(TrialScreens, AReviewBrowsesWhereItsFilesLie) {
    run.SimDataLocation = machine.folder / "review";
    program.Center.LocationOfFWDDataTransfer = PathText(machine.folder / "usual");
    machine.Write("usual/Notes.txt", "");
    EXPECT_EQ(FolderOfFWDFiles(program), machine.folder / "usual") << "there are none anywhere";
    machine.Write("review/Trial1.f25", "");
    EXPECT_EQ(FolderOfFWDFiles(program), machine.folder / "review");
    run.ReviewMode = false;
    EXPECT_EQ(FolderOfFWDFiles(program), machine.folder / "usual");
    run.ReviewMode = true;
    machine.Write("usual/Trial1.F25", "");
    EXPECT_EQ(FolderOfFWDFiles(program), machine.folder / "usual");
}

TEST_F(TrialScreens, AnUnacceptedTrialIsTakenUpAgain) {
    data->Start();
    WriteFile({"9001", "9038", "12001", "12038"});
    Browse();
    run.Trial.DropResults = {};
    data->Start();
    EXPECT_EQ(run.LoadCellRefTrials, 1);
    EXPECT_EQ(run.Trial.DropResults[3], 12040);
    EXPECT_EQ(run.LCTrial[0].Gain, 0) << "the file has to be read again";
    EXPECT_EQ(data->txtFilename.Text.Get(), "");
    EXPECT_FALSE(data->cmdGraph.Enabled);
}

TEST_F(TrialScreens, AReportAfterARestartKnowsWhatWasMeasuredAndNothingElse) {
    run.MeasuredPlus = 3.7414;
    run.MeasuredUnbalancedZero = {};
    run.Trial.DropNoiseFlags[2] = true;
    run.Trial.DropRangeFlags[3] = true;
    data->Start();
    ASSERT_TRUE(LoadInterimCalibration(program));
    data->Start();
    EXPECT_TRUE(run.Trial.DropRangeFlags[3]);
    const std::string report = TrialReportText(run, program.Center, 0, {"", "", program.Now(), 20});
    EXPECT_THAT(report, AllOf(HasSubstr("Measured + Calibration Reading: 3.741\r\n"),
                              HasSubstr("Measured Unbalanced Zero: \r\n"), HasSubstr("9,000.0   12,000.0*\r\n")));
}

TEST_F(TrialScreens, LimitsOfTheLoadCell) {
    const std::string gain = "Load Cell Gain Outside Recommended Limits (206)";
    const std::string scatter = "Excess Standard Error (212)";
    const std::string ratio = "Standard Deviation Too Large (214)";
    const struct {
        double initialGain;
        std::vector<std::string> drops;
        std::vector<std::string> boxes;
    } rows[] = {
        {0.98, {"9000", "9040", "12000", "12040"}, {}},
        {1.02, {"9000", "9040", "12000", "12040"}, {}},
        {0.9799, {"9000", "9040", "12000", "12040"}, {gain}},
        {1.0201, {"9000", "9040", "12000", "12040"}, {gain}},
        // Residuals of 60 and 40 pounds: the standard error is sqrt(10400 / 3 / 4.5e8) = 0.0028.
        {1, {"9060", "9100", "11960", "12000"}, {scatter}},
        // The upper height has deviations of 28.3 and 86.3 pounds; the standard error is 0.0016.
        {1, {"9000", "9040", "11959", "12081"}, {ratio}},
        // Both heights deviate equally, which is reported once; the standard error is 0.0022.
        {1, {"8959", "9081", "11959", "12081"}, {ratio, scatter}},
    };
    data->Start();
    for (const auto& row : rows) {
        run.LoadCellInitialGain = row.initialGain;
        WriteFile(row.drops);
        Browse(std::vector(row.boxes.size(), Answer::OK));
        EXPECT_EQ(Boxes(), row.boxes) << row.initialGain << ' ' << row.drops[1];
    }
}

TEST_F(TrialScreens, FilesThatCannotBeUsed) {
    const std::string noData = "FWD Data File Does Not Contain Drop Data (106)";
    const std::string mismatch = "The number of drops (4) does not match the number of data points (";
    data->Start();
    WriteFile({"9000", "9040", "12000", "12040"});
    Browse();
    EXPECT_EQ(data->txtGain.Text.Get(), "1.000");
    const auto expectRefused = [&](const std::vector<std::string>& boxes) {
        Browse(std::vector(boxes.size(), Answer::OK));
        EXPECT_EQ(Boxes(), boxes);
        EXPECT_FALSE(data->cmdAccept.Enabled);
        EXPECT_EQ(data->txtGain.Text.Get(), "") << "of the file before";
        EXPECT_FALSE(data->cmdGraph.Enabled);
        EXPECT_TRUE(data->cmdReject.Enabled);
        EXPECT_TRUE(data->cmdBrowse.Enabled);
    };
    WriteFile({"9000", "9040", "12000"});
    expectRefused({mismatch + "3) in input file."});
    WriteFile(std::vector<std::string>(50, "9000"));
    expectRefused({mismatch + "50) in input file."});
    machine.Write("transfer/Trial.ddx", "no document at all");
    expectRefused({noData, mismatch + "0) in input file."});
    const std::string unusable = "These drops of the file have no peak that can be used:\\n     Drop ";
    const std::string advice = "\\nPlease check the data file and its units, and try Browse again.";
    WriteFile({"9000", "9040", "abc", "12040"});
    expectRefused({unusable + "3: \"abc\"" + advice});
    for (const char* peak : {"0", "1E308", "1E999", "-9040", "nan", "inf"}) {
        WriteFile({"9000", peak, "12000", "12040"});
        expectRefused({unusable + "2: \"" + peak + '"' + advice});
    }
    for (const char* count : {"-4", "99999999999999999999", "four", "1E308"}) {
        WriteFile({"9000", "9040", "12000", "12040"}, "pound-force",
                  "[Test Location 1]\r\nNumberOfDrops=" + std::string(count) + "\r\n");
        Browse({Answer::OK});
        EXPECT_THAT(Boxes(), ElementsAre(StartsWith(mismatch))) << count;
    }

    // Then the right file.
    WriteFile({"9000", "9040", "12000", "12040"});
    Browse();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_TRUE(data->cmdAccept.Enabled);
}

TEST_F(TrialScreens, UnitsAndDevicesThatAreDoubtfulAreAskedAbout) {
    data->Start();
    WriteFile({"9000", "9040", "12000", "12040"}, "stone");
    Browse({Answer::OK});
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("The unit of the file's loads, \"stone\", is not known")));
    EXPECT_TRUE(data->cmdAccept.Enabled);

    WriteFile({"9500", "9540", "12500", "12540"}, "pound-force", "[Device Information]\r\nDeviceSerialNumber=77\r\n");
    Browse({Answer::No});
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("FWD serial number 77 in place of 8002/101")));
    EXPECT_EQ(run.LCTrial[0].DropData[0], 9000) << "No leaves the trial as it was";
}

TEST_F(TrialScreens, WithoutADialogOrAConverterNothingChanges) {
    data->Start();
    machine.dialogs.QueueFile(std::nullopt);
    data->cmdBrowse.UserClick();
    EXPECT_EQ(data->txtFilename.Text.Get(), "");
    std::filesystem::remove(machine.folder / "Ferrylink.exe");
    WriteFile({"9000", "9040", "12000", "12040"});
    Browse({Answer::OK});
    EXPECT_THAT(Boxes(), ElementsAre("Ferrylink"));
    EXPECT_EQ(data->txtFilename.Text.Get(), "");
    EXPECT_FALSE(data->cmdAccept.Enabled);
}

TEST_F(TrialScreens, RejectingAsksTwice) {
    const struct {
        Answer repeat;
        std::optional<Answer> sure;
        bool rejects;
        int collected, menus;
    } rows[] = {
        {Answer::Cancel, std::nullopt, false, 0, 0}, {Answer::Yes, Answer::No, false, 0, 0},
        {Answer::No, Answer::No, false, 0, 0},       {Answer::Yes, Answer::Yes, true, 1, 0},
        {Answer::No, Answer::Yes, true, 0, 1},
    };
    for (const auto& row : rows) {
        run.FlagUnacceptedTrial = false;
        run.LoadCellRefTrials = 1;
        run.Trial.DropSequenceIndex = 4;
        collection->entered = 0;
        menu->opened = 0;
        data->Start();
        machine.dialogs.QueueAnswer(row.repeat);
        if (row.sure) machine.dialogs.QueueAnswer(*row.sure);
        data->RejectTrial();
        EXPECT_EQ(run.LoadCellRefTrials, row.rejects ? 1 : 2);
        EXPECT_EQ(run.FlagUnacceptedTrial, !row.rejects);
        EXPECT_EQ(run.Trial.DropSequenceIndex, row.rejects ? 0 : 4);
        EXPECT_EQ(run.LCTrial[1].RefDropData[0], row.rejects ? 0 : 9000);
        EXPECT_EQ(collection->entered, row.collected);
        EXPECT_EQ(menu->opened, row.menus);
    }
}

TEST_F(TrialScreens, AWaitingTrialIsAnsweredWithinItsOwnProcedure) {
    const struct {
        int loadCellTrials, referenceTrials;
        double lastLoadCellGain;
        bool loadCellAccepted;
        int procedure, expected;
    } rows[] = {
        {0, 0, 0, false, 5, 0}, {1, 0, 0, false, 1, 5}, {0, 1, 0, false, 3, 4},  {2, 1, 1, true, 1, 4},
        {2, 1, 1, false, 4, 4}, {2, 1, 1, false, 5, 5}, {2, 1, 1, false, 10, 4}, {2, 1, 0, false, 0, 5},
    };
    for (const auto& row : rows) {
        run.Trial = {};  // as after a restart
        run.FlagUnacceptedTrial = true;
        run.LoadCellRefTrials = row.loadCellTrials;
        run.RefTrials = row.referenceTrials;
        run.LCTrial[1].Gain = row.lastLoadCellGain;
        run.LoadCellCalComplete = row.loadCellAccepted;
        run.CurrentProcedure = static_cast<Procedure>(row.procedure);
        EXPECT_EQ(EnterUnacceptedTrial(program), row.expected != 0);
        if (row.expected == 0) continue;
        EXPECT_EQ(run.CurrentProcedure, static_cast<Procedure>(row.expected));
        EXPECT_EQ(run.LoadCellRefTrials, row.loadCellTrials) << "the same trial, not one more";
        EXPECT_EQ(run.RefTrials, row.referenceTrials);
        ReturnToProcedure(program, run.CurrentProcedure);
        EXPECT_EQ(collection->entered, 0) << "no new drops before it is answered";
    }
}

TEST_F(TrialScreens, AFifthTrialIsRefused) {
    for (const Procedure procedure : {Procedure::Sensors, Procedure::LoadCell}) {
        run.CurrentProcedure = procedure;
        run.LoadCellRefTrials = 4;
        run.RefTrials = 4;
        machine.dialogs.QueueAnswer(Answer::OK);
        data->Start();
        EXPECT_THAT(Boxes(), ElementsAre(StartsWith("All four trials of the ")));
        EXPECT_EQ(run.LoadCellRefTrials + run.RefTrials, 8);
        EXPECT_FALSE(run.FlagUnacceptedTrial);
    }
}

TEST_F(TrialScreens, AReportThatCannotBeWrittenKeepsTheTrial) {
    data->Start();
    WriteFile({"9000", "9040", "12000", "12040"});
    Browse();
    data->cmdGraph.UserClick();
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueAnswer(Answer::OK);
    plot->cmdNext.UserClick();
    EXPECT_TRUE(run.FlagUnacceptedTrial);
    machine.files.FailFromWrite(0);
    plot->cmdNext.UserClick();
    EXPECT_FALSE(run.FlagUnacceptedTrial);
}

TEST_F(TrialScreens, SensorsAreLookedAtOneByOne) {
    run.CurrentProcedure = Procedure::Sensors;
    run.Manufacturer = Make::Kuab;
    run.EnglishUnits = true;
    for (std::size_t s = 0; s < 3; ++s) run.Sensor[s].InitialGain = 1;
    run.Trial.DropResults = {10, 10.1, 15, 15.1};
    data->Start();
    EXPECT_EQ(run.CurrentProcStep, step::sensorsFileRead);
    WriteFile({"1, 10.0, 10.0, 9.0", "1, 10.1, 10.1, 9.1", "1, 15.0, 15.0, 13.5", "1, 15.1, 15.1, 13.6"});
    Browse();
    EXPECT_EQ(data->txtSensorNum.Text.Get(), "0") << "a KUAB counts its sensors from 0";
    EXPECT_EQ(data->txtR2.Text.Get(), "1.0000");
    data->cmdDown.UserClick();
    EXPECT_EQ(data->txtSensorNum.Text.Get(), "2");
    data->cmdUp.UserClick();
    data->cmdGraph.UserClick();
    EXPECT_TRUE(plot->lblReviewGraphs.Visible);
    EXPECT_FALSE(plot->cmdNext.Enabled);
    EXPECT_EQ(plot->cmdUpRP.ToolTip.Get(), "Click to view Sensor 1 graph");
    EXPECT_EQ(plot->cmdDownRP.ToolTip.Get(), "Click to view Sensor 2 graph");
    plot->cmdUpRP.UserClick();
    plot->cmdUpRP.UserClick();
    EXPECT_EQ(plot->txtNewGain.Text.Get(), "1.111");
    EXPECT_FALSE(run.PlotReviewPending);
    plot->cmdNext.UserClick();
    EXPECT_EQ(review->started, 1);
}

TEST_F(TrialScreens, SensorsThatTheFileLacksReadZero) {
    run.CurrentProcedure = Procedure::Sensors;
    run.NumberSensors = static_cast<int>(maxSensors);
    for (SensorCalRecord& sensor : run.Sensor) sensor.InitialGain = 1;
    run.Trial.DropResults = {10, 10.1, 15, 15.1};
    data->Start();
    std::string hundredFields = "1";
    for (int field = 2; field <= 100; ++field) hundredFields += ", 10";
    WriteFile({hundredFields, "1", "1, 10", ", , 10"});
    Browse();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(run.Sensor[11].RefTrial[0].DropData[0], 10);
    EXPECT_EQ(run.Sensor[11].RefTrial[0].DropData[2], 0);
    EXPECT_EQ(data->txtNumSensors.Text.Get(), "12");
    for (std::size_t step = 0; step <= maxSensors; ++step) {
        data->cmdGraph.UserClick();
        plot->cmdDownRP.UserClick();
    }

    WriteFile({"1, 1E308", "1, -1E308", "1, nan", "1, 10"});
    Browse({Answer::OK});
    EXPECT_THAT(Boxes(), ElementsAre(AllOf(HasSubstr("Drop 1: "), HasSubstr("Drop 2: "), HasSubstr("Drop 3: "))));
}

}  // namespace
}  // namespace bellmark
