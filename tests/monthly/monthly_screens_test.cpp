// A monthly calibration and a sensor's replacement through the screens of the assembled program, on the files that an
// FWD might bring.
#include "tests/monthly/monthly_screens.h"

namespace bellmark {
namespace {

TEST_F(MonthlyScreens, TwoTrialsThatAgreeGiveTheFinalGains) {
    start->cmdRelativeCal.UserClick();
    EXPECT_EQ(Front(), "frmRelative");
    EXPECT_TRUE(run.MonthlyCalibration);
    EXPECT_FALSE(relative->fraGeophone.Visible);
    EXPECT_FALSE(relative->cmdNext.Visible);
    EXPECT_EQ(relative->Header.BoardName.Caption.Get(), "Monthly Cal");
    relative->optMonthlyRelative.UserClick();
    EXPECT_EQ(relative->Header.PageTitle.Caption.Get(), "Monthly Relative Calibration - Trial 1");
    EXPECT_EQ(run.CurrentProcedure, Procedure::MonthlyRelative);
    EXPECT_EQ(run.CurrentProcStep, step::monthlySetup);
    EXPECT_EQ(relative->DefaultButton(), &relative->cmdBrowse);
    EXPECT_FALSE(relative->cmdNext.Enabled);

    Browse(FileOff(thirdIsLow));
    EXPECT_EQ(relative->DefaultButton(), &relative->cmdNext);
    EXPECT_EQ(relative->grdSerialNum.Cell(3, 1), "S103");
    relative->cmdNext.UserClick();
    EXPECT_EQ(Front(), "frmRelResults");
    EXPECT_EQ(run.CurrentProcStep, step::monthlyTrial);
    EXPECT_FALSE(results->cmdNext.Enabled) << "the plot was not looked at";
    EXPECT_EQ(results->DefaultButton(), &results->cmdShowPlot);
    EXPECT_EQ(results->txtStandardError[0].BackColor.Get(), colors::complete);
    // The sensor's ratio is its 1.005 over the mean of all sensors' 1 / ratio.
    EXPECT_EQ(results->grdMeans.Cell(4, 3), "1.0043");
    EXPECT_EQ(results->grdMeans.Cell(4, 4), "1.006") << "of an existing gain of 1.002";
    EXPECT_EQ(results->grdMeans.Cell(4, 6), "YES");
    EXPECT_EQ(results->grdMeans.CellColor(4, 6), colors::mustBeUpdated);
    EXPECT_EQ(results->grdMeans.Cell(2, 6), " NO");
    EXPECT_EQ(results->grdMeans.CellColor(2, 6), colors::window);
    LookAtPlot();
    EXPECT_EQ(run.CurrentProcStep, step::monthlyAnalysis);
    EXPECT_EQ(results->cmdNext.Caption.Get(), "&Accept");
    EXPECT_EQ(results->DefaultButton(), &results->cmdNext);
    results->cmdNext.UserClick();
    EXPECT_TRUE(machine.Has("FWD/Monthly1_09-Mar-2012.MC1"));
    EXPECT_EQ(run.RelTrials, 1);
    EXPECT_EQ(run.CurrentProcStep, step::monthlyTrial);
    EXPECT_EQ(Front(), "frmRelative");
    EXPECT_EQ(relative->Header.PageTitle.Caption.Get(), "Monthly Relative Calibration - Trial 2");
    EXPECT_FALSE(relative->cboNumSensorsR.Enabled);
    EXPECT_FALSE(relative->optMetric.Enabled);

    Browse(FileOff(thirdIsLow, 1));
    relative->cmdNext.UserClick();
    EXPECT_THAT(results->txtResults.Text.Get(), HasSubstr("Review the calibration plot for outliers"));
    LookAtPlot();
    EXPECT_THAT(results->txtResults.Text.Get(), Not(HasSubstr("Review the calibration plot")));
    results->cmdNext.UserClick();
    EXPECT_TRUE(machine.Has("FWD/Monthly1_09-Mar-2012.MC2"));
    EXPECT_EQ(run.CurrentProcStep, step::monthlyNext);
    EXPECT_EQ(Front(), "frmRelResults");
    EXPECT_FALSE(results->cmdReject.Enabled);
    EXPECT_THAT(Boxes(), IsEmpty());
    QueueAnswer(Answer::OK);
    results->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("Update Gain Factors in FWD (171)")));
    EXPECT_TRUE(machine.Has("FWD/Monthly1_09-Mar-2012.MFG"));
    EXPECT_EQ(run.CurrentProcStep, step::monthlyFinished);
    EXPECT_EQ(Front(), "frmMainMenu");
    EXPECT_THAT(FilesOf("InterimCal"), IsEmpty());
}

TEST_F(MonthlyScreens, OneTrialWithinTheLimitsIsEnough) {
    BeginMonthly();
    relative->optAutoPrint[0].UserClick();
    AcceptTrial({});
    EXPECT_TRUE(machine.Has("Printed.txt"));
    EXPECT_EQ(run.CurrentProcStep, step::monthlyFinished);
    EXPECT_THAT(results->lblNextStep.Caption.Get(), HasSubstr("finished"));
    EXPECT_FALSE(machine.Has("FWD/Monthly1_09-Mar-2012.MFG"));
    results->cmdNext.UserClick();
    EXPECT_EQ(Front(), "frmMainMenu");
    EXPECT_FALSE(menu->cmdContinue.Visible);
    EXPECT_EQ(menu->DefaultButton(), &menu->cmdStartForm);
    // The next one begins anew, of whatever kind.
    menu->cmdStartForm.UserClick();
    BeginReplacement(1);
    EXPECT_EQ(run.RelTrials, 0);
    EXPECT_EQ(relative->grdSerialNum.Cell(1, 1), "");
}

TEST_F(MonthlyScreens, TrialsThatDifferAskForTwoNewOnes) {
    for (const Answer answer : {Answer::Cancel, Answer::OK}) {
        menu->cmdRelativeCal.UserClick();
        AcceptTrial(FileOff(thirdIsLow));
        QueueAnswer(answer);
        AcceptTrial(FileOff({1, 1, 1.009}, 1));
        EXPECT_THAT(Boxes(), ElementsAre(StartsWith("The Difference in the Relative Trail Gains is Too Large (252)")));
        EXPECT_EQ(results->grdMeans.CellColor(4, 6), colors::mustBeUpdated);
        if (answer == Answer::Cancel) {
            EXPECT_EQ(run.RelTrials, 2);
            EXPECT_EQ(run.CurrentProcStep, step::monthlyNext);
            EXPECT_EQ(Front(), "frmRelResults");
            // The last trial can be looked at, and is not accepted again by it.
            LookAtPlot();
            EXPECT_EQ(run.CurrentProcStep, step::monthlyNext);
            QueueAnswer(Answer::OK);
            results->cmdNext.UserClick();
            EXPECT_EQ(Boxes().size(), 1U);
        } else {
            EXPECT_EQ(run.RelTrials, 0);
            EXPECT_EQ(run.CurrentProcStep, step::monthlyTrial);
            EXPECT_EQ(Front(), "frmRelative");
            EXPECT_TRUE(relative->cboNumSensorsR.Enabled);
        }
    }
}

TEST_F(MonthlyScreens, AReplacementTakesUpToFourTrials) {
    BeginReplacement(3);
    EXPECT_EQ(relative->Header.PageTitle.Caption.Get(), "Replace a Sensor - Trial 1");
    EXPECT_EQ(run.CurrentProcStep, step::replacementSetup);
    EXPECT_EQ(relative->grdSerialNum.CellColor(3, 1), colors::passed);
    EXPECT_EQ(relative->grdSerialNum.CellColor(2, 1), colors::window);
    const double ratios[] = {1.010, 1.020, 1.030, 1.022};
    for (int trial = 1; trial <= 4; ++trial) {
        QueueAnswer(Answer::OK);
        AcceptTrial(FileOff({1, 1, ratios[trial - 1]}, trial));
        EXPECT_THAT(Boxes(), ElementsAre(AllOf(StartsWith("Trial Gain Factor for Replacement Sensor (172)"),
                                               HasSubstr("Sensor No.3 is "))));
        EXPECT_TRUE(machine.Has("FWD/Monthly1_09-Mar-2012.SC" + NumberText(trial)));
        EXPECT_EQ(run.CurrentProcStep, trial < 4 ? step::replacementTrial : step::replacementNext) << trial;
    }
    QueueAnswer(Answer::OK);
    results->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(AllOf(StartsWith("Gain Factor for Replacement Sensor (173)"),
                                           HasSubstr("The Final Gain for the replacement sensor S103 is "))));
    EXPECT_TRUE(machine.Has("FWD/Monthly1_09-Mar-2012.SFG"));
    EXPECT_EQ(run.CurrentProcStep, step::replacementFinished);
    EXPECT_EQ(Front(), "frmMainMenu");
    EXPECT_THAT(menu->txtMonthlyStatus.Text.Get(), AllOf(HasSubstr("Replacement of a Sensor"), HasSubstr("Finished")));
}

TEST_F(MonthlyScreens, TheReplacedSensorMayBeChosenBesideTheResults) {
    start->cmdRelativeCal.UserClick();
    relative->optMonthlyReplace.UserClick();
    EXPECT_THAT(relative->lblNextStep.Caption.Get(), StartsWith("Click the sensor"));
    EXPECT_EQ(relative->grdSerialNum.CellColor(1, 1), colors::suggestedNext);
    Browse({});
    relative->optMonthlyRelative.UserClick();
    EXPECT_EQ(run.CurrentProcStep, step::monthlySetup);
    relative->optMonthlyReplace.UserClick();
    EXPECT_EQ(relative->grdSerialNum.Cell(3, 1), "S103") << "the list is kept";
    relative->cmdNext.UserClick();
    LookAtPlot();
    EXPECT_FALSE(results->cmdNext.Enabled);
    EXPECT_EQ(results->cboReplacedSensor.BackColor.Get(), colors::mustBeUpdated);
    QueueAnswer(Answer::OK);
    results->cboReplacedSensor.UserChoose(1);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Sensor No.2 is ")));
    EXPECT_TRUE(results->cmdNext.Enabled);
}

TEST_F(MonthlyScreens, AFileThatCannotBeUsedIsToldAndAnotherOneIsRead) {
    const struct {
        MonthlyFile file;
        const char* box;
    } rows[] = {
        {{7, 34}, "The Number of Drops in the FWD Data File is Incorrect (251)"},
        {{7, 36}, "The Number of Drops in the FWD Data File is Incorrect (251)"},
        {{0, 35}, "Number of Sensors in the FWD Data File is Zero (250)"},
        {{7, 0}, "The Number of Drops in the FWD Data File is Incorrect (251)"},
    };
    BeginMonthly();
    for (const auto& row : rows) {
        Browse(row.file);
        QueueAnswer(Answer::OK);
        relative->cmdNext.UserClick();
        EXPECT_THAT(Boxes(), ElementsAre(StartsWith(row.box)));
        EXPECT_EQ(Front(), "frmRelative");
        EXPECT_FALSE(run.RelTrialInHand);
        EXPECT_EQ(relative->DefaultButton(), &relative->cmdBrowse);
        EXPECT_TRUE(relative->cboNumSensorsR.Enabled);
    }
    QueueAnswer(Answer::OK);
    MonthlyFile thirteen;
    thirteen.sensors = 13;
    thirteen.drops = 65;
    Browse(thirteen);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The file lists 13 sensors, chosen were 7.")));
    QueueAnswer(Answer::OK);
    relative->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The stand holds 12 at most")));

    machine.dialogs.QueueFile(machine.folder / "FWD/Gone.ddx");
    QueueAnswer(Answer::OK);
    relative->cmdBrowse.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Couldn't open: ")));

    QueueAnswer(Answer::OK);
    Browse({});
    relative->cmdNext.UserClick();
    EXPECT_EQ(Front(), "frmRelResults");
    EXPECT_EQ(Boxes().size(), 1U) << "the file has 7 sensors after one of 13";
}

TEST_F(MonthlyScreens, ASecondTrialMustBeOfTheSameFWD) {
    BeginMonthly();
    AcceptTrial(FileOff(thirdIsLow));
    MonthlyFile other = FileOff(thirdIsLow, 1);
    other.fwd = "8002-999";
    QueueAnswer(Answer::No);
    Browse(other);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("FWD serial number 8002-999 in place of 8002-123")));
    EXPECT_FALSE(relative->cmdNext.Enabled);
    // The same readings again are a doubt.
    Browse(FileOff(thirdIsLow));
    relative->cmdNext.UserClick();
    LookAtPlot();
    QueueAnswer(Answer::No);
    results->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("There are doubts about this trial")));
    EXPECT_EQ(run.RelTrials, 1);
}

TEST_F(MonthlyScreens, AReportThatCannotBeWrittenCostsNoTrial) {
    BeginMonthly();
    Browse(FileOff(thirdIsLow));
    relative->cmdNext.UserClick();
    LookAtPlot();
    machine.files.FailFromWrite(1);
    QueueAnswer(Answer::OK);
    results->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The report cannot be written:")));
    EXPECT_EQ(run.RelTrials, 0);
    EXPECT_TRUE(run.RelTrialInHand);
    machine.files.FailFromWrite(0);
    results->cmdNext.UserClick();
    EXPECT_EQ(run.RelTrials, 1);
}

TEST_F(MonthlyScreens, RejectHasThreeAnswers) {
    const struct {
        Answer answer;
        const char* front;
        bool isKept;
    } rows[] = {{Answer::Cancel, "frmRelResults", true},
                {Answer::Yes, "frmRelative", false},
                {Answer::No, "frmMainMenu", false}};
    BeginMonthly();
    for (const auto& row : rows) {
        if (!run.RelTrialInHand) {
            Browse({});
            relative->cmdNext.UserClick();
        }
        QueueAnswer(row.answer);
        results->cmdReject.UserClick();
        EXPECT_THAT(Boxes(), ElementsAre(AllOf(StartsWith("Rejected Relative Calibration\t"),
                                               HasSubstr("repeat the monthly relative calibration trial?"))));
        EXPECT_EQ(Front(), row.front);
        EXPECT_EQ(run.RelTrialInHand.has_value(), row.isKept);
    }
    // Only the trial is lost: the set-up can be gone on with.
    EXPECT_EQ(menu->DefaultButton(), &menu->cmdContinue);
    menu->cmdContinue.UserClick();
    EXPECT_EQ(Front(), "frmRelative");
    EXPECT_NE(run.Sensor[0].SerialNumber, "");
}

TEST_F(MonthlyScreens, BackLeavesTheTrialAndItsFileCanBeReadAgain) {
    BeginMonthly();
    Browse(FileOff(thirdIsLow));
    relative->cmdNext.UserClick();
    LookAtPlot();
    results->cmdBack.UserClick();
    EXPECT_EQ(Front(), "frmRelative");
    EXPECT_TRUE(run.RelTrialInHand);
    EXPECT_EQ(relative->DefaultButton(), &relative->cmdNext);
    MonthlyFile second;
    second.firstGain = 2;
    Browse(second);
    EXPECT_FALSE(run.RelTrialInHand);
    relative->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(results->grdMeans.Cell(4, 2), "2.002") << "the second file counts";
    EXPECT_EQ(results->grdMeans.Cell(4, 6), " NO");
    EXPECT_FALSE(results->cmdNext.Enabled) << "its plot was not looked at";
}

TEST_F(MonthlyScreens, UnitsOfTheFileAreTold) {
    BeginMonthly();
    MonthlyFile file;
    file.units = "microns";
    file.level = 500;
    QueueAnswer(Answer::OK);
    Browse(file);
    relative->cmdNext.UserClick();
    const char* doubt = "The file's deflections are in microns, the calibration is in mils.";
    const char* loads = "The file's loads are in kN, the calibration is in pounds.";
    EXPECT_THAT(Boxes(), ElementsAre(AllOf(HasSubstr(loads), HasSubstr(doubt))));
    LookAtPlot();
    QueueAnswer(Answer::No);
    results->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(AllOf(HasSubstr(doubt), HasSubstr("accept it all the same?"))));
    EXPECT_EQ(run.RelTrials, 0);
    // The choice is corrected, and the same file read again.
    results->cmdBack.UserClick();
    relative->optMetric.UserClick();
    EXPECT_FALSE(run.RelTrialInHand);
    relative->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(results->UnitLabel[0].Caption.Get(), "microns");
}

TEST_F(MonthlyScreens, ALooseSensorIsColored) {
    BeginMonthly();
    MonthlyFile file;
    file.scatter = 0.5;
    Browse(file);
    relative->cmdNext.UserClick();
    EXPECT_EQ(results->txtStandardError[0].BackColor.Get(), colors::mustBeUpdated);
    EXPECT_THAT(results->lblNextStep.Caption.Get(), HasSubstr("REJECT"));
    EXPECT_EQ(results->UnitLabel[0].Caption.Get(), "mils");
    results->chkANOVA.UserClick();
    EXPECT_TRUE(results->fraANOVA.Visible);
    EXPECT_FALSE(results->grdMeans.Visible);
    EXPECT_EQ(results->chkANOVA.Caption.Get(), "Close AN&OVA");
    EXPECT_EQ(results->grdANOVA.Cell(6, 0), "Std. Error");
    EXPECT_EQ(results->grdANOVA.CellColor(6, 1), colors::mustBeUpdated);
    EXPECT_THAT(results->lblCritical.Caption.Get(), HasSubstr("Exact critical values at the 5% level for 7 sensors:"));
    // A form that was never used with 7 or 9 sensors finds every variance too large.
    results->cmdBack.UserClick();
    file = {};
    file.sensors = 8;
    file.drops = 40;
    QueueAnswer(Answer::OK);
    Browse(file);
    relative->cmdNext.UserClick();
    EXPECT_TRUE(results->grdMeans.Visible) << "a new trial begins with its gains";
    EXPECT_EQ(results->txtStandardError[0].BackColor.Get(), colors::complete)
        << "the limit of 7 sensors is kept, and met";
}

TEST_F(MonthlyScreens, AVarianceThatIsTooLargeIsYellow) {
    BeginMonthly();
    MonthlyFile file;
    file.sensors = 8;
    file.drops = 40;
    QueueAnswer(Answer::OK);
    Browse(file);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The file lists 8 sensors, chosen were 7.")));
    relative->cmdNext.UserClick();
    EXPECT_EQ(results->txtStandardError[0].BackColor.Get(), colors::warning);
    EXPECT_EQ(results->grdANOVA.CellColor(6, 1), colors::complete);
    EXPECT_THAT(results->txtResultsAnova.Text.Get(), HasSubstr("Results of Cochran Test"));
}

TEST_F(MonthlyScreens, ASecondTrialWithinTheLimitsNeedsNoNewGains) {
    BeginMonthly();
    AcceptTrial(FileOff({1, 1, 1.0045}));
    AcceptTrial(FileOff({1, 1, 1.0032}, 1));
    EXPECT_EQ(run.CurrentProcStep, step::monthlyNext);
    QueueAnswer(Answer::OK);
    results->cmdNext.UserClick();
    EXPECT_THAT(Boxes(), ElementsAre(StartsWith("No change of the Gain Factors (170)")));
}

TEST_F(MonthlyScreens, TheSensorsRotateByTheGrid) {
    BeginMonthly();
    EXPECT_THAT(relative->lblSetUpSensors.Caption.Get(),
                AllOf(HasSubstr("to perform 49 drops in sets of seven"), HasSubstr("20 mils ±4 mils.")));
    relative->optMetric.UserClick();
    EXPECT_THAT(relative->lblSetUpSensors.Caption.Get(), HasSubstr("500 microns ±100 microns."));
    EXPECT_FALSE(run.EnglishUnits);
    relative->cboNumSensorsR.UserChoose(0);
    const Grid& grid = relative->msfgRelTest;
    ASSERT_EQ(grid.Rows(), 7);
    ASSERT_EQ(grid.Columns(), 7);
    EXPECT_EQ(grid.Cell(0, 0), "Position");
    EXPECT_EQ(grid.Cell(0, 6), "Set 6");
    EXPECT_EQ(grid.Cell(1, 6), "D6");
    EXPECT_EQ(grid.Cell(6, 2), "D1");
    EXPECT_EQ(grid.CellColor(6, 2), colors::passed);
    EXPECT_EQ(grid.CellColor(6, 1), colors::window);
    EXPECT_EQ(relative->cboSensorTypeR.Items.Get().size(), 1U);

    relative->cboFWDMfgR.UserChoose("KUAB");
    EXPECT_EQ(grid.Cell(6, 2), "D0");
    EXPECT_EQ(relative->cboSensorTypeR.Items.Get().back(), "Seismometer");
    // The stand in the set that was clicked: the sensors of that column, the first position on top.
    relative->msfgRelTest.UserClickCell(1, 2);
    const Plot& stand = relative->pctGeoStand.Drawn();
    EXPECT_EQ(stand.title, "Stand in set 2");
    ASSERT_EQ(stand.boxes.size(), 6U);
    EXPECT_EQ(stand.boxes[0].text, "D1");
    EXPECT_EQ(stand.boxes[0].top, 6);
    EXPECT_EQ(stand.boxes[5].text, "D0");
    EXPECT_EQ(stand.boxes[5].color, colors::passed);
    EXPECT_EQ(stand.boxes[0].color, colors::window);
    EXPECT_THAT(stand.series[0].y, ElementsAre(5.5, 0.5, 1.5, 2.5, 3.5, 4.5));
}

TEST_F(MonthlyScreens, AnFWDsOwnFileIsConvertedBesideIt) {
    BeginMonthly();
    machine.Write("FWD/Monthly1cvt.ddx", MonthlyFile{}.Text());
    MonthlyFile nine;
    nine.sensors = 9;
    nine.drops = 45;
    machine.Write("FWD/Monthly1.ddx", nine.Text());
    machine.dialogs.QueueFile(machine.Write("FWD/Monthly1.F25", "drops"));
    QueueAnswer(Answer::No);  // the document of an earlier conversion stays
    QueueAnswer(Answer::OK);
    relative->cmdBrowse.UserClick();
    EXPECT_EQ(Boxes().size(), 2U);
    EXPECT_EQ(run.NumberSensors, 9) << "a document of the file's own name is read";
    EXPECT_EQ(relative->txtFilename.Text.Get(), "Monthly1.F25");
}

TEST_F(MonthlyScreens, AnotherMakeOrNumberNeedsTheFileAgain) {
    BeginMonthly();
    Browse({});
    relative->cboNumSensorsR.UserChoose("9");
    EXPECT_FALSE(relative->cmdNext.Enabled);
    EXPECT_EQ(run.NumberSensors, 9);
    QueueAnswer(Answer::OK);
    relative->grdSerialNum.UserEditCell(9, 1, "S1,09");
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("cannot hold a comma")));
    relative->grdSerialNum.UserEditCell(9, 1, "S109");
    EXPECT_EQ(run.Sensor[8].SerialNumber, "S109");
}

TEST_F(MonthlyScreens, ATrialOfAMonthlyRunIsGivenUpOnlyWhenTheOperatorWants) {
    BeginMonthly();
    AcceptTrial(FileOff(thirdIsLow));
    relative->cmdMainMenu.UserClick();
    EXPECT_THAT(menu->txtMonthlyStatus.Text.Get(), HasSubstr("1 Trial Done"));
    EXPECT_EQ(menu->DefaultButton(), &menu->cmdContinue);
    for (Button* leaves : {&menu->cmdRelativeCal, &menu->cmdStartForm}) {
        QueueAnswer(Answer::No);
        leaves->UserClick();
        EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The monthly relative calibration is not finished.")));
        EXPECT_EQ(run.RelTrials, 1);
    }
    menu->cmdContinue.UserClick();
    EXPECT_EQ(Front(), "frmRelative");
    EXPECT_EQ(relative->Header.PageTitle.Caption.Get(), "Monthly Relative Calibration - Trial 2");
}

TEST_F(MonthlyScreens, QuitAsksBeforeTrialsAreLost) {
    BeginMonthly();
    AcceptTrial(FileOff(thirdIsLow));
    QueueAnswer(Answer::No);
    QuitApplication(*program);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The monthly relative calibration is not finished.")));
    EXPECT_FALSE(machine.ended);
    QueueAnswer(Answer::Yes);
    QuitApplication(*program);
    EXPECT_TRUE(machine.ended);
}

TEST_F(MonthlyScreens, TypedSerialNumbersGiveWayOnlyWhenTheOperatorWants) {
    BeginMonthly();
    Browse({});
    const std::string inFile = run.Sensor[2].SerialNumber;
    relative->grdSerialNum.UserEditCell(3, 1, "Corrected");
    QueueAnswer(Answer::No);
    Browse({});
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr(inFile + " in place of Corrected")));
    EXPECT_EQ(run.Sensor[2].SerialNumber, "Corrected");
    QueueAnswer(Answer::Yes);
    Browse({});
    EXPECT_EQ(run.Sensor[2].SerialNumber, inFile);
    Browse({});
    EXPECT_EQ(Boxes().size(), 1U) << "the same numbers raise no question";
}

}  // namespace
}  // namespace bellmark
