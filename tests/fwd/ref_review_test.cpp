// Reference trials of deflection sensors, from the FWD's file through the plot to the review of the pair.
#include <gmock/gmock.h>

#include "app/interim_store.h"
#include "app/workflow.h"
#include "fwd/frm_ref_review.h"
#include "tests/fwd/trial_screens.h"

namespace bellmark {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* differs =
    "One or more sensors has a difference in the reference gain factor between the two trials of more than 0.005.\r\n"
    "Please perform two more reference calibrations.";

struct RefReviewTest : TrialScreens {
    std::shared_ptr<frmRefReview> form = std::make_shared<frmRefReview>(program);

    RefReviewTest() {
        program.Register<ReferenceReviewDoor>([this](Program&) { return form; });
        run.CurrentProcedure = Procedure::Sensors;
        run.CurrentProcStep = step::sensorsTrial;
        run.DeviceSerialNumber = "8002-101";
        for (std::size_t s = 0; s < 3; ++s) {
            run.Sensor[s].SerialNumber = "D" + NumberText(s + 1);
            run.Sensor[s].InitialGain = s == 2 ? 10.8 : 1;
        }
    }
    void Capture() {
        BeginTrial(run);
        run.Trial.DropSequenceIndex = 4;
        run.Trial.DropResults = {10, 10.1, 15, 15.1};
    }
    /// The FWD reads the reference's peaks divided by the factors: to them the regression comes, but for the rounding.
    /// No two trials are alike to the last digit: the last drop is read 0.01 mils higher from trial to trial.
    std::vector<std::string> Readings(const std::vector<double>& factors) const {
        std::vector<std::string> drops;
        for (const double peak : {10.0, 10.1, 15.0, 15.1}) {
            const double own = peak > 15 ? 0.01 * std::max(run.RefTrials - 1, 0) : 0;
            std::string line = "9000";
            for (const double factor : factors) line += ", " + NumberText(Round(peak / factor, 2) + own);
            drops.push_back(line);
        }
        return drops;
    }
    void BrowseReadings(const std::vector<double>& factors) {
        WriteFile(Readings(factors));
        Browse();
    }
    void LookAtAllGraphs() {
        data->cmdGraph.UserClick();
        for (int s = 1; s < run.NumberSensors; ++s) plot->cmdUpRP.UserClick();
    }
    /// From captured drops to the review in front.
    void ReviewTrial(const std::vector<double>& factors) {
        Capture();
        data->Start();
        BrowseReadings(factors);
        LookAtAllGraphs();
        plot->cmdNext.UserClick();
    }
    std::string Report(const std::string& sensor, int trial) {
        return "InterimCal20120309/8002-101 09-Mar-2012 " + sensor + ".RF" + NumberText(trial);
    }
    std::string Cell(int row, int column) const { return form->grdDefCal.Cell(row, column); }
};

TEST_F(RefReviewTest, APairThatAgreesLeadsToTheResults) {
    Capture();
    data->Start();
    BrowseReadings({1.01, 0.99, 1});
    data->cmdGraph.UserClick();
    EXPECT_FALSE(plot->cmdNext.Enabled) << "two graphs are unseen";
    EXPECT_TRUE(plot->lblReviewGraphs.Visible);
    plot->cmdDownRP.UserClick();
    EXPECT_EQ(plot->txtRPSensorNum.Text.Get(), "3");
    EXPECT_EQ(plot->txtOldGain.Text.Get(), "10.800");
    plot->cmdDownRP.UserClick();
    EXPECT_FALSE(plot->lblReviewGraphs.Visible);
    plot->cmdNext.UserClick();
    EXPECT_EQ(program.Screens.Front(), form.get());
    EXPECT_EQ(Cell(0, 3), "    Trial 1");
    EXPECT_THAT((std::vector<std::string>{Cell(1, 3), Cell(1, 4), Cell(1, 5)}),
                ElementsAre("Std. Error", "Adj. Factor", "Ref. Gain"));
    EXPECT_THAT((std::vector<std::string>{Cell(4, 0), Cell(4, 1), Cell(4, 2), Cell(4, 5)}),
                ElementsAre("3", "D3", "10.800", "10.800"));
    EXPECT_EQ(Cell(5, 1), "Avg.Change");
    EXPECT_FALSE(form->fraRefStats.Visible);
    EXPECT_TRUE(run.FlagUnacceptedTrial);

    // Back at the plot, nothing is lost.
    form->cmdBack.UserClick();
    EXPECT_EQ(program.Screens.Front(), data.get());
    data->cmdAccept.UserClick();
    form->cmdAccept.UserClick();
    EXPECT_FALSE(run.FlagUnacceptedTrial);
    EXPECT_EQ(menu->sensorsEntered, 1);
    for (const char* sensor : {"D1", "D2", "D3"}) EXPECT_TRUE(machine.Has(Report(sensor, 1))) << sensor;

    ReviewTrial({1.012, 0.99, 1});
    EXPECT_EQ(form->txtRefNotes.Text.Get(), "Reference Trial criteria passed.");
    EXPECT_EQ(form->txtRefNotes.BackColor.Get(), (Color{128, 255, 128}));
    EXPECT_EQ(form->cmdAccept.Caption.Get(), "&Accept");
    EXPECT_EQ(form->grdDefCal.Columns(), 9);
    EXPECT_EQ(Cell(0, 8), "   Trial Pair   ");
    EXPECT_EQ(Cell(1, 7), "  Gain   ");
    EXPECT_EQ(Cell(2, 7), "1.011");
    EXPECT_NEAR(ReadNumber(Cell(2, 8)), 0.002, 0.0004);
    EXPECT_EQ(form->grdDefCal.CellColor(2, 8), (Color{128, 255, 128}));
    EXPECT_TRUE(form->fraRefStats.Visible);
    EXPECT_FALSE(form->txtRMSorStdDev.Visible || form->Label7.Visible);
    form->cmdAccept.UserClick();
    EXPECT_EQ(results->referenceOpened, 1);
    EXPECT_TRUE(machine.Has(Report("D3", 2)));

    // A restart keeps every digit.
    CalibrationRun before = run;
    run.RefTrials = 0;
    LoadInterimCalibration(program);
    ASSERT_EQ(run.RefTrials, 2);
    for (std::size_t s = 0; s < 3; ++s) {
        for (std::size_t t = 0; t < 2; ++t) {
            const TrialRecord& saved = run.Sensor[s].RefTrial[t];
            const TrialRecord& was = before.Sensor[s].RefTrial[t];
            EXPECT_EQ(saved.Gain, was.Gain);
            EXPECT_EQ(saved.AdjFactor, was.AdjFactor);
            EXPECT_EQ(saved.StdErrAdjFactor, was.StdErrAdjFactor);
            EXPECT_EQ(saved.DropData, was.DropData);
            EXPECT_EQ(saved.RefDropData, was.RefDropData);
        }
        EXPECT_EQ(run.Sensor[s].InterimGain, before.Sensor[s].InterimGain);
    }
}

TEST_F(RefReviewTest, OfARejectedSecondTrialNothingIsSaved) {
    ReviewTrial({1.01, 0.99, 1});
    form->cmdAccept.UserClick();
    ReviewTrial({1.012, 0.99, 1});
    ASSERT_NE(run.Sensor[0].InterimGain, 0);
    // Not again, but yes.
    for (const Answer answer : {Answer::No, Answer::Yes}) machine.dialogs.QueueAnswer(answer);
    form->cmdReject.UserClick();
    const std::string file = machine.files.ReadBytes(machine.folder / run.InterimFileName);
    EXPECT_THAT(file, HasSubstr("RefTrials=1\r\n"));
    EXPECT_THAT(file, HasSubstr("RefCalAvg=0\r\nRefCalStdDev=0\r\nRefCalChange=0\r\n"));
    EXPECT_THAT(file, ::testing::Not(HasSubstr("SensorInterimGain")));
}

TEST_F(RefReviewTest, APairThatDiffersLeadsToTwoMoreTrialsOrToTheResults) {
    for (const bool toResults : {false, true}) {
        run.RefTrials = 0;
        ReviewTrial({1, 1, 1});
        form->cmdAccept.UserClick();
        ReviewTrial({1.0, 1.006, 1});
        EXPECT_EQ(form->txtRefNotes.Text.Get(), differs);
        EXPECT_EQ(form->txtRefNotes.BackColor.Get(), colors::mustBeUpdated);
        EXPECT_EQ(form->grdDefCal.CellColor(3, 8), colors::mustBeUpdated);
        EXPECT_EQ(form->grdDefCal.CellColor(2, 8), (Color{128, 255, 128}));
        EXPECT_EQ(form->cmdAccept.Caption.Get(), "&Next");
        EXPECT_EQ(form->cmdReject.Caption.Get(), "&Results");
        const int entered = menu->sensorsEntered;
        if (toResults) machine.dialogs.QueueAnswer(Answer::Yes);  // the reports of the first round exist
        (toResults ? form->cmdReject : form->cmdAccept).UserClick();
        EXPECT_EQ(menu->sensorsEntered, toResults ? entered : entered + 1);
        EXPECT_EQ(results->referenceOpened, toResults ? 1 : 0);
        EXPECT_EQ(run.RefTrials, 2) << "nothing is lost";
        EXPECT_FALSE(run.FlagUnacceptedTrial);
        EXPECT_EQ(run.CurrentProcStep, step::sensorsTrial);
        if (!toResults) machine.dialogs.QueueAnswer(Answer::Yes);
    }
    // A rejected trial leaves the others; after the fourth the only way on is to accept.
    ReviewTrial({1, 1, 1});
    for (const Answer answer : {Answer::No, Answer::Yes}) machine.dialogs.QueueAnswer(answer);
    form->cmdReject.UserClick();
    EXPECT_EQ(run.RefTrials, 2);
    ReviewTrial({1, 1, 1});
    EXPECT_EQ(form->grdDefCal.Columns(), 9) << "three trials show no pair";
    EXPECT_FALSE(form->fraRefStats.Visible);
    form->cmdAccept.UserClick();
    ReviewTrial({1, 1.02, 1});
    EXPECT_THAT(form->txtRefNotes.Text.Get(), HasSubstr("After 4 acceptable trials, please accept"));
    EXPECT_EQ(Cell(1, 12), "Deviation");
    EXPECT_EQ(form->grdDefCal.CellColor(3, 12), colors::warning);
    EXPECT_EQ(form->grdDefCal.CellColor(2, 12), colors::window);
    EXPECT_EQ(form->cmdAccept.Caption.Get(), "&Accept");
    machine.dialogs.TakeBoxes();
}

TEST_F(RefReviewTest, DoubtfulFilesAreAskedAboutByName) {
    struct Row {
        std::string information;
        std::vector<double> factors;
        std::string told;
    };
    const Row rows[] = {
        {"DeviceSerialNumber=8002-102\r\n", {1, 1, 1}, "FWD serial number 8002-102 in place of 8002-101"},
        {"SensorSerialNumbers=D2, D1, D3\r\n", {1, 1, 1}, "sensor 1: D2 in place of D1"},
        {"SensorSerialNumbers=D1, D2\r\n", {1, 1}, "2 sensors in place of 3"},
        {"", {1, 1}, "Sensor 3 (D3) shows no deflection in any drop"},
    };
    Capture();
    data->Start();
    for (const Row& row : rows) {
        WriteFile(Readings(row.factors), "pound-force", "[Device Information]\r\n" + row.information);
        Browse({Answer::No});
        EXPECT_THAT(Boxes(), ElementsAre(HasSubstr(row.told)));
        EXPECT_TRUE(data->cmdReject.Enabled);
        EXPECT_FALSE(data->cmdAccept.Enabled);
    }
    run.Sensor[1].InitialGain = 0;
    WriteFile(Readings({1, 1, 1}));
    Browse({Answer::No});
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Sensor 2 (D2) has no initial gain")));
    run.Sensor[1].InitialGain = 1;
    BrowseReadings({1, 1, 1});
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_TRUE(data->cmdGraph.Enabled);
}

}  // namespace
}  // namespace bellmark
