// The screens of the annual relative calibration, with the sample's stand-in for the converter, on files that an FWD
// might bring.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "app/frm_main_menu.h"
#include "app/frm_master.h"
#include "app/interim_store.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/numbers.h"
#include "relative/frm_center_rel_plot.h"
#include "relative/frm_center_relative.h"
#include "relative/relative_plot.h"
#include "relative/relative_readings.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

struct RecordingResults : IdleResults {
    int opened = 0;
    void Open() override { ++opened; }
};

struct RecordingMonthlyResults : RelativeResultsDoor {
    int opened = 0;
    bool Start() override { return true; }
    void Open() override { ++opened; }
    void OpenNext() override {}
};

struct RecordingMonthly : RelativeDoor {
    int compared = 0, replaced = 0;
    void Start() override {}
    void SetupMonthly() override { ++compared; }
    void SetupGeophone() override { ++replaced; }
};

/// Three sensors in microns, accepted in the reference calibration.
struct RelativeScreens : testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    CalibrationRun& run = program.Run;
    std::shared_ptr<frmMainMenu> menu = std::make_shared<frmMainMenu>(program);
    std::shared_ptr<RecordingResults> results = std::make_shared<RecordingResults>();
    std::shared_ptr<RecordingMonthlyResults> monthlyResults = std::make_shared<RecordingMonthlyResults>();
    std::shared_ptr<RecordingMonthly> monthly = std::make_shared<RecordingMonthly>();
    std::shared_ptr<frmCenterRelative> relative = std::make_shared<frmCenterRelative>(program);
    std::shared_ptr<frmCenterRelPlot> plot = std::make_shared<frmCenterRelPlot>(program);

    RelativeScreens() {
        machine.LetProgramsRun();
        program.Register<MainFrameDoor>([](Program& owner) { return std::make_shared<frmMaster>(owner); });
        program.Register<SetupDoor>([](Program&) { return std::make_shared<FakeSetup>(); });
        program.Register<AcquisitionDoor>([](Program&) { return std::make_shared<FakeAcquisition>(); });
        program.Register<MainMenuDoor>([this](Program&) { return menu; });
        program.Register<ResultsDoor>([this](Program&) { return results; });
        program.Register<RelativeResultsDoor>([this](Program&) { return monthlyResults; });
        program.Register<RelativeDoor>([this](Program&) { return monthly; });
        program.Register<CenterRelativeDoor>([this](Program&) { return relative; });
        program.Register<CenterRelPlotDoor>([this](Program&) { return plot; });
        std::filesystem::copy(Path(BELLMARK_SOURCE_FOLDER) / "sample/Ferrylink.exe", machine.folder.Folder());
        menu->AllowProcedures(true, true);
        run.ReviewMode = true;
        run.IsInHand = true;
        run.InterimFileName = "InterimCal20120309.DDX";
        run.InterimFolderName = "InterimCal20120309";
        run.CurrentProcedure = Procedure::Sensors;
        run.CurrentProcStep = step::sensorsRelative;
        run.EnglishUnits = false;
        run.NumberSensors = 3;
        run.DeviceSerialNumber = "8002-123";
        run.RefTrials = 2;
        run.SensorRefCalComplete = true;
        for (std::size_t s = 0; s < 3; ++s) {
            run.Sensor[s].SerialNumber = "S" + NumberText(s + 1);
            run.Sensor[s].InitialGain = 1;
            run.Sensor[s].InterimGain = 1.01;
        }
    }

    /// Sensors that read 500, 501 and 502 microns, with a spread of 0.4 within each set.
    static std::string Reading(int sensor, int drop) { return NumberText(500 + sensor + 0.1 * (drop % 5)); }

    static std::string Document(int locations, int dropsEach, const std::string& more = "",
                                const std::string& units = "microns") {
        std::string text = more + "[Units]\r\nDeflectionUnits=" + units +
                           "\r\n[Deflection Data]\r\nNumberOfTestLocations=" + NumberText(locations) + "\r\n";
        for (int location = 0; location < locations; ++location) {
            text +=
                "[Test Location " + NumberText(location + 1) + "]\r\nNumberOfDrops=" + NumberText(dropsEach) + "\r\n";
            for (int drop = 0; drop < dropsEach; ++drop) {
                text += "DropData_" + NumberText(drop + 1) + "=12000";
                for (int sensor = 0; sensor < 3; ++sensor) {
                    text += ", " + Reading(sensor, location * dropsEach + drop);
                }
                text += "\r\n";
            }
        }
        return text;
    }
    static std::string Replaced(std::string text, const std::string& what, const std::string& by) {
        return text.replace(text.find(what), what.size(), by);
    }

    /// Each file is converted anew. answers: to what comes up then.
    void Browse(const std::string& document, const std::vector<Answer>& answers = {}) {
        machine.Write("transfer/Relative.ddx", document);
        machine.files.RemoveFile(machine.folder / "InterimCal20120309/Relative.ddx");
        if (machine.Has("InterimCal20120309/Relativecvt.ddx")) machine.dialogs.QueueAnswer(Answer::Yes);
        for (const Answer answer : answers) machine.dialogs.QueueAnswer(answer);
        machine.dialogs.QueueFile(machine.folder / "transfer/Relative.ddx");
        relative->cmdBrowse.UserClick();
    }
    /// Texts of the boxes, but for the question about the former document.
    std::vector<std::string> Boxes() {
        std::vector<std::string> told;
        for (const std::string& box : machine.dialogs.TakeBoxes()) {
            if (box.find("already exist") == std::string::npos) told.push_back(box.substr(box.find('\t') + 1));
        }
        return told;
    }
    void Accept() {
        relative->cmdPlot.UserClick();
        plot->cmdNext.UserClick();
    }
    std::string Front() { return program.Screens.Front()->Name(); }
    RelativeTrialRecord& Trial(std::size_t sensor, std::size_t trial) { return run.Sensor[sensor].RelTrial[trial]; }
};

TEST_F(RelativeScreens, TwoTrialsAreReadLookedAtAndAccepted) {
    run.CurrentProcStep = step::sensorsTrial;
    relative->Start();
    EXPECT_EQ(run.CurrentProcStep, step::sensorsRelative);
    EXPECT_EQ(relative->lblTrial.Caption.Get(), "Trial 1");
    EXPECT_EQ(relative->txtRecFileName.Text.Get(), "Relative1");
    EXPECT_FALSE(relative->cmdPlot.Enabled || relative->cmdReject.Enabled || relative->fraStdError.Visible);
    EXPECT_EQ(relative->DefaultButton(), &relative->cmdBrowse);

    Browse(Document(4, 10));
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(relative->DefaultButton(), &relative->cmdPlot);
    EXPECT_EQ(relative->cmdBrowse.BackColor.Get(), colors::buttonFace);
    // 500.2, 501.2 and 502.2 microns times 1.01; the sets do not differ.
    EXPECT_EQ(relative->grdSensors.Cell(1, 3), "(microns)");
    EXPECT_EQ(relative->grdSensors.Cell(2, 3), "505.20");
    EXPECT_EQ(relative->grdSensors.Cell(2, 7), "1.0020");
    EXPECT_EQ(relative->grdSensors.Cell(2, 8), "1.0120");
    EXPECT_EQ(relative->grdSensors.Cell(4, 7), "0.9980");
    EXPECT_EQ(relative->grdSets.Cell(9, 0), "All");
    EXPECT_EQ(relative->grdSets.Cell(9, 1), "506.21");
    EXPECT_EQ(relative->grdANOVA.Cell(1, 2), "7");
    EXPECT_EQ(relative->grdANOVA.Cell(1, 5), "100.00%");
    EXPECT_EQ(relative->grdANOVA.Cell(4, 2), "119");
    EXPECT_EQ(relative->UnitLabel[0].Caption.Get(), "microns");
    EXPECT_EQ(relative->txtStandardError[0].Text.Get(), "0.1");
    EXPECT_EQ(relative->txtStandardError[1].Text.Get(), "0.006");
    EXPECT_EQ(relative->txtStandardError[0].BackColor.Get(), colors::complete);
    EXPECT_EQ(run.RelTrials, 0);

    Accept();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(run.RelTrials, 1);
    EXPECT_NEAR(run.Sensor[0].FinalGain, 1.01 * 501.2 / 500.2, 1e-5);
    EXPECT_TRUE(machine.Has("InterimCal20120309/8002-123 09-03-2012 1.RL"));
    EXPECT_EQ(Front(), "frmCenterRelative");
    EXPECT_EQ(relative->lblTrial.Caption.Get(), "Trial 2");
    EXPECT_THAT(relative->lblNextStep.Caption.Get(), StartsWith("Turn the order of the sensors"));
    EXPECT_EQ(relative->txtFilename.Text.Get(), "");

    Browse(Document(1, 40));
    EXPECT_EQ(relative->grdSensors.Cell(2, 2), "3") << "the other way round";
    const double first = Trial(0, 0).Gain;
    Trial(0, 1).Gain = first + 0.002;
    machine.dialogs.QueueAnswer(Answer::Yes);
    Accept();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The readings are those of trial 1, to the last digit.")));
    EXPECT_EQ(run.RelTrials, 2);
    EXPECT_NEAR(run.Sensor[0].FinalGain, first + 0.001, 1e-12);
    EXPECT_EQ(Front(), "frmMainMenu");
    EXPECT_EQ(menu->DefaultButton(), &menu->cmdFWDDoc);
    EXPECT_EQ(menu->cmdFWDDoc.BackColor.Get(), colors::suggestedNext);
}

TEST_F(RelativeScreens, WhatIsInOneOrFourLocationsIsTheSame) {
    relative->Start();
    Browse(Document(1, 40));
    const auto readings = Trial(2, 0).DropData;
    EXPECT_EQ(readings[39], Round(502.4 * 1.01, 2));
    Browse(Document(4, 10));
    EXPECT_EQ(Trial(2, 0).DropData, readings);
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(RelativeScreens, DoubtfulFilesAreToldOfAndAskedAbout) {
    const std::string count = "The number of drop data points should be 40, but is ";
    const std::string unusable = "These readings of the file are missing or cannot be used. They count as 0:";
    const std::string asksFirst = "There are doubts about this trial:\\n     ";
    const struct {
        std::string document;
        std::vector<std::string> told;
        std::string doubt;  ///< the first one at acceptance; empty when it is not asked
    } rows[] = {
        {Document(1, 39), {count + "39."}, "The file holds 39 drops in place of 40."},
        {Document(1, 41), {count + "41."}, "The file holds 41 drops in place of 40."},
        {Document(41, 1), {count + "41."}, "The file holds 41 drops in place of 40."},
        {Document(1, 60), {count + "60."}, "The file holds 60 drops in place of 40."},
        {Replaced(Document(1, 40), "=12000, 500, 501,", "=12000, 500, ,"),
         {unusable + "\\n     Drop 1, sensor 2: \"\"\\n"},
         "Drop 1, sensor 2: \"\""},
        {Replaced(Document(1, 40), "=12000, 500, 501, 502", "=12000, nan, 1E308, x"),
         {unusable + "\\n     Drop 1, sensor 1: \"nan\"\\n     Drop 1, sensor 2: \"1E308\""},
         "Drop 1, sensor 1: \"nan\""},
        {Document(1, 40, "", "mils"),
         {"The file's deflections are in mils, the calibration is in microns."},
         "The file's deflections are in mils"},
        {Document(1, 40, "", "furlongs"),
         {"The unit of the file's deflections, \"furlongs\", is not known."},
         "The unit of the file's deflections"},
    };
    for (const auto& row : rows) {
        relative->BeginTrial();
        Browse(row.document, std::vector(row.told.size(), Answer::OK));
        const auto boxes = Boxes();
        ASSERT_EQ(boxes.size(), row.told.size());
        for (std::size_t i = 0; i < boxes.size(); ++i) EXPECT_THAT(boxes[i], StartsWith(row.told[i]));
        EXPECT_TRUE(relative->cmdPlot.Enabled && relative->cmdReject.Enabled);
        if (row.doubt.empty()) continue;
        machine.dialogs.QueueAnswer(Answer::No);
        Accept();
        EXPECT_THAT(Boxes(), ElementsAre(StartsWith(asksFirst + row.doubt)));
        EXPECT_EQ(run.RelTrials, 0);
        EXPECT_EQ(Front(), "frmCenterRelPlot");
    }
    Browse(Document(1, 39), {Answer::OK});
    EXPECT_EQ(Trial(0, 0).DropData[39], 0) << "nothing of the former file is left";
    machine.dialogs.QueueAnswer(Answer::Yes);
    Accept();
    EXPECT_EQ(run.RelTrials, 1) << "the operator decides";
}

TEST_F(RelativeScreens, WithoutGainsOrDeflectionsNothingIsComputed) {
    relative->Start();
    run.Sensor[0].InterimGain = 0;
    run.Sensor[1].InitialGain = 0;
    std::string document = Document(1, 40);
    for (int drop = 0; drop < 40; ++drop) {
        const std::string living = ", " + Reading(2, drop) + "\r\n";
        if (document.find(living) != std::string::npos) document = Replaced(document, living, ", 0\r\n");
    }
    Browse(document, {Answer::OK});
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("     There is no interim gain of sensor 1: its relative gain is 0.\\n"
                                                "     There is no initial gain of sensor 2: its relative gain is 0.\\n"
                                                "     There is no deflection of sensor 3: its relative gain is 0.")));
    for (std::size_t s = 0; s < 3; ++s) {
        EXPECT_EQ(Trial(s, 0).AdjFactor, 0);
        EXPECT_EQ(Trial(s, 0).Gain, 0);
    }
    for (const Grid* grid : {&relative->grdSensors, &relative->grdSets, &relative->grdANOVA}) {
        EXPECT_THAT(grid->DisplayText(), AllOf(Not(HasSubstr("nan")), Not(HasSubstr("inf"))));
    }
    relative->cmdPlot.UserClick();
    EXPECT_THAT(plot->pctRelative.DisplayText(), HasSubstr("Deflections (microns): 0 to 4"));

    // The gain that the file tells is taken where the run has none.
    run.Sensor[0].InterimGain = 1;
    Browse(Document(1, 40, "[Device Calibration]\r\nSensorCalibrationCenterGain=7, 1.02, 7\r\n"));
    EXPECT_EQ(run.Sensor[1].InitialGain, 1.02);
    EXPECT_EQ(run.Sensor[0].InitialGain, 1);
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(RelativeScreens, FilesThatAreNoneOrOfAnotherDeviceLeaveTheTrialAlone) {
    relative->Start();
    Browse(Document(1, 40));
    const auto readings = Trial(0, 0).DropData;
    Browse("no document at all", {Answer::OK});
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("The number of drop data points should be 40, but is 0.")));
    const std::string other = "[Device Information]\r\nDeviceSerialNumber=77\r\n";
    Browse(Replaced(Document(1, 40, other), "=12000, 500", "=12000, 300"), {Answer::No});
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("FWD serial number 77 in place of 8002-123")));
    machine.dialogs.QueueFile(std::nullopt);
    relative->cmdBrowse.UserClick();
    EXPECT_EQ(Trial(0, 0).DropData, readings);
    EXPECT_EQ(relative->txtFilename.Text.Get(), "Relative.ddx");
    EXPECT_EQ(relative->DefaultButton(), &relative->cmdPlot);

    // The document that was made before is read when it is not to be replaced.
    machine.dialogs.QueueFile(machine.folder / "transfer/Relative.ddx");
    machine.dialogs.QueueAnswer(Answer::No);
    machine.Write("InterimCal20120309/Relativecvt.ddx", Replaced(Document(1, 40), "=12000, 500", "=12000, 400"));
    relative->cmdBrowse.UserClick();
    EXPECT_EQ(Trial(0, 0).DropData[0], 404);
}

TEST_F(RelativeScreens, StandPositionsAreTypedInAndAskedAboutWhenTheyCannotBe) {
    relative->Start();
    Browse(Document(1, 40));
    Grid& grid = relative->grdSensors;
    EXPECT_EQ(grid.Cell(2, 2) + grid.Cell(3, 2) + grid.Cell(4, 2), "123");
    for (const char* wrong : {"0", "13", "1.5", "first", "-1"}) {
        machine.dialogs.QueueAnswer(Answer::OK);
        grid.UserEditCell(2, 2, wrong);
        EXPECT_THAT(Boxes(), ElementsAre(StartsWith("A stand position is a whole number from 1 to 12.")));
        EXPECT_EQ(Trial(0, 0).Position, 1);
    }
    grid.UserEditCell(2, 2, "3");
    EXPECT_EQ(grid.CellColor(2, 2), colors::warning);
    EXPECT_EQ(grid.CellColor(4, 2), colors::warning);
    EXPECT_EQ(grid.CellColor(3, 2), colors::window);
    grid.UserEditCell(3, 2, " ");
    machine.dialogs.QueueAnswer(Answer::No);
    Accept();
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("There are doubts about this trial:\\n"
                                                "     Stand position 3 is given to sensor 1 and to sensor 3.\\n"
                                                "     The stand position of sensor 2 is empty.")));
    plot->cmdBack.UserClick();
    grid.UserEditCell(4, 2, "1");
    grid.UserEditCell(3, 2, "10");
    EXPECT_EQ(grid.CellColor(2, 2), colors::window);
    Accept();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(Trial(1, 0).Position, 10);
}

TEST_F(RelativeScreens, ATrialThatWasReadStaysInHandUntilItIsAnswered) {
    relative->Start();
    Browse(Document(1, 40));
    relative->grdSensors.UserEditCell(2, 2, "7");
    relative->cmdMainMenu.UserClick();
    EXPECT_EQ(Front(), "frmMainMenu");
    menu->CalibrateSensors();
    EXPECT_EQ(Front(), "frmCenterRelative");
    EXPECT_EQ(relative->txtFilename.Text.Get(), "Relative.ddx");
    EXPECT_EQ(relative->grdSensors.Cell(2, 2), "7");
    EXPECT_TRUE(relative->cmdPlot.Enabled);

    const std::string question = "Do you want to repeat the relative calibration trial?";
    machine.dialogs.QueueAnswer(Answer::Cancel);
    relative->cmdReject.UserClick();
    EXPECT_TRUE(relative->cmdPlot.Enabled);
    machine.dialogs.QueueAnswer(Answer::Yes);
    relative->cmdReject.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith(question), StartsWith(question)));
    EXPECT_EQ(Trial(0, 0).DropData[0], 0);
    EXPECT_EQ(Trial(0, 0).Position, 1);
    EXPECT_FALSE(relative->cmdPlot.Enabled);
    Browse(Document(1, 40));
    machine.dialogs.QueueAnswer(Answer::No);
    relative->cmdReject.UserClick();
    EXPECT_EQ(Front(), "frmMainMenu");
    EXPECT_EQ(run.RelTrials, 0);

    // The plot rejects, too.
    relative->Start();
    Browse(Document(1, 40));
    relative->cmdPlot.UserClick();
    machine.dialogs.QueueAnswer(Answer::No);
    plot->cmdReject.UserClick();
    EXPECT_EQ(Front(), "frmCenterRelPlot");
    machine.dialogs.QueueAnswer(Answer::Yes);
    plot->cmdReject.UserClick();
    EXPECT_EQ(Front(), "frmCenterRelative");
    EXPECT_FALSE(relative->cmdPlot.Enabled);
}

TEST_F(RelativeScreens, ARunGoesOnAfterARestartInTheMiddle) {
    relative->Start();
    Browse(Document(1, 40));
    Accept();
    Browse(Document(1, 40));
    const CalibrationRun before = run;
    // The second trial was read and not accepted when the program ended.
    program.Run = CalibrationRun();
    run.InterimFileName = before.InterimFileName;
    run.InterimFolderName = before.InterimFolderName;
    ASSERT_TRUE(LoadInterimCalibration(program));
    run.NumberSensors = 3;
    EXPECT_EQ(run.RelTrials, 1);
    EXPECT_EQ(run.CurrentProcStep, step::sensorsRelative);
    EXPECT_FALSE(run.RelTrialInHand);
    ReturnToProcedure(program, Procedure::Sensors);
    EXPECT_EQ(relative->lblTrial.Caption.Get(), "Trial 2");
    EXPECT_FALSE(relative->cmdPlot.Enabled);
    relative->cmdMainMenu.UserClick();
    EXPECT_EQ(menu->cmdRefCalDefAccel.BackColor.Get(), colors::suggestedNext) << "a second trial is due";
}

TEST_F(RelativeScreens, HowManyTrialsAreDoneDecidesWhereItGoes) {
    const struct {
        int trials;
        std::string told;  ///< empty: nothing
        bool toResults;
    } rows[] = {
        {0, "", false},
        {1, "", false},
        {2,
         "2 relative calibration trials have been completed so far.\\nOnly 2 acceptable Relative Trials are needed.\\n"
         "Please review the Relative Calibration Results.\\nPress OK to go to the Results screen.\t",
         true},
        {3,
         "3 relative calibration trials have been completed so far.\\nPlease review the Relative Calibration Results\t",
         false},
        {4,
         "4 relative calibration trials have been completed so far.\\nPlease review the Relative Calibration Results\t",
         true},
    };
    for (const auto& row : rows) {
        run.RelTrials = row.trials;
        results->opened = 0;
        if (!row.told.empty()) machine.dialogs.QueueAnswer(Answer::OK);
        relative->Start();
        const auto boxes = Boxes();
        EXPECT_EQ(boxes.size(), row.told.empty() ? 0U : 1U);
        EXPECT_THAT(boxes, ::testing::Each(StartsWith(row.told)));
        EXPECT_EQ(results->opened, row.toResults ? 1 : 0) << row.trials;
        if (row.toResults) continue;
        EXPECT_EQ(relative->lblTrial.Caption.Get(), "Trial " + NumberText(row.trials + 1));
    }
    // The results may ask for more, up to four.
    run.RelTrials = 2;
    relative->BeginTrial();
    EXPECT_EQ(relative->lblTrial.Caption.Get(), "Trial 3");
    run.RelTrials = 4;
    machine.dialogs.QueueAnswer(Answer::OK);
    relative->BeginTrial();
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("All four relative trials are done.")));
    relative->AcceptRelativeTrial();
    EXPECT_EQ(run.RelTrials, 4);
}

TEST_F(RelativeScreens, AFullDiskCostsNoTrial) {
    relative->Start();
    Browse(Document(1, 40));
    relative->cmdPlot.UserClick();
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueAnswer(Answer::OK);
    plot->cmdNext.UserClick();
    EXPECT_EQ(run.RelTrials, 0);
    EXPECT_TRUE(run.RelTrialInHand);
    machine.files.FailFromWrite(0);
    plot->cmdNext.UserClick();
    EXPECT_EQ(run.RelTrials, 1);
}

TEST_F(RelativeScreens, APlotOfAMonthlyTrialGoesOnToItsOwnAnalysis) {
    run.MonthlyCalibration = true;
    const struct {
        Procedure procedure;
        int step;
    } rows[] = {{Procedure::MonthlyRelative, 62}, {Procedure::SensorReplacement, 72}};
    for (const auto& row : rows) {
        run.CurrentProcedure = row.procedure;
        run.RelTrialInHand = {"Monthly1.ddx", 15};
        plot->DrawRelativePlot();
        EXPECT_EQ(program.Header.ProcedureName(), "FWD Monthly Relative Calibration");
        EXPECT_FALSE(plot->lblNote.Visible) << "its deflections are multiplied by nothing";
        plot->cmdNext.UserClick();
        EXPECT_EQ(run.CurrentProcStep, row.step);
    }
    EXPECT_EQ(monthlyResults->opened, 2);
    EXPECT_EQ(run.RelTrials, 0);
    EXPECT_EQ(plot->pctRelative.Drawn().series.size(), 3U) << "a set for each position";
    machine.dialogs.QueueAnswer(Answer::Yes);
    plot->cmdReject.UserClick();
    EXPECT_EQ(monthly->replaced, 1);
    EXPECT_FALSE(run.RelTrialInHand);
    // An accepted trial is looked at again; it cannot be accepted twice.
    run.RelTrials = 2;
    run.CurrentProcStep = step::replacementNext;
    plot->DrawRelativePlot();
    EXPECT_EQ(plot->Header.PageTitle.Caption.Get(), "Relative Calibration Trial 2");
    EXPECT_FALSE(plot->cmdReject.Enabled);
    plot->cmdNext.UserClick();
    EXPECT_EQ(run.CurrentProcStep, step::replacementNext);
    // All drops of twelve sensors, each set with a marker of its own.
    run.NumberSensors = 12;
    run.Sensor[11].RelTrial[1].DropData[59] = 99;
    const Plot twelve = RelativePlot(run, 1);
    ASSERT_EQ(twelve.series.size(), 12U);
    EXPECT_EQ(twelve.series[11].y.back(), 99);
    EXPECT_LT(twelve.vertical.highest, 99) << "the axis is made for the first fifty drops";
    std::set<MarkerShape> shapes;
    for (const PlotSeries& set : twelve.series) shapes.insert(set.shape);
    EXPECT_EQ(shapes.size(), 12U);
}

TEST_F(RelativeScreens, ThePlotTellsSetDropAndDistanceFromTheMean) {
    relative->Start();
    Browse(Document(1, 40));
    const Plot drawn = RelativePlot(run, 0);
    EXPECT_EQ(drawn.title, "Relative Calibration Trial 1");
    ASSERT_EQ(drawn.series.size(), 8U);
    EXPECT_EQ(drawn.series[1].name, "Set 2");
    EXPECT_NE(drawn.series[1].shape, drawn.series[0].shape);
    // The fifth drop of set 2 of the second sensor: 501.4 times 1.01, rounded as all five, the mean of which is 506.21.
    EXPECT_EQ(drawn.series[1].x[9], 950);
    EXPECT_EQ(drawn.series[1].y[9], 506.41);
    EXPECT_EQ(drawn.series[1].notes[9], "Sensor 2, set 2, drop 5\n506.41 microns\n+0.20 from the sensor's mean");
    EXPECT_NEAR(drawn.horizontal.blocks[1].mean.value(), 506.21, 1e-9);
    run.Manufacturer = Make::Kuab;
    EXPECT_EQ(RelativePlot(run, 0).horizontal.blocks[0].caption, "D0");
    // No sensors, nothing to draw.
    run.NumberSensors = 0;
    EXPECT_TRUE(RelativePlot(run, 0).IsEmpty());
}

TEST(DeflectionAxisTest, EndsLieOutsideOfTheDrops) {
    const struct {
        double least, largest;
        bool english;
        double lowest, highest, step;
    } rows[] = {
        {500, 512, false, 480, 516, 4},        // 498.8 down to 480; a tenth of 33.2 up to 4
        {505, 1205, false, 400, 1280, 88},     // 435 down to 400; 1275 is 9.94 steps of 88 away
        {0, 0, false, 0, 4, 4},                // nothing was measured
        {19.80, 19.92, true, 19.2, 20, 0.08},  // 19.788 down to 19.2; 19.932 is 9.15 steps away
        {0, 20, true, -2.4, 22, 2.44},         // a drop is missing: -2 down to -2.4
    };
    for (const auto& row : rows) {
        const DeflectionAxis axis = AxisOfDeflections(row.least, row.largest, row.english);
        EXPECT_NEAR(axis.lowest, row.lowest, 1e-9) << row.least;
        EXPECT_NEAR(axis.step, row.step, 1e-9) << row.least;
        EXPECT_NEAR(axis.highest, row.highest, 1e-9) << row.least;
    }
}

}  // namespace
}  // namespace bellmark
