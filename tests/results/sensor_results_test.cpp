// The deflection sensors' tab of the results: both stages, what is accepted, and what deletion does to the files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/interim_store.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "relative/relative_analysis.h"
#include "results/pair_deletion.h"
#include "results/sensor_evaluation.h"
#include "tests/results/results_program.h"
#include "tests/support/idle_doors.h"

namespace bellmark {
namespace {

using testing::HasSubstr;

TEST(PairDeletion, MarksTrialsByTheCountAndTheBoxes) {
    const struct {
        int trials;
        bool first, second;
        const char* words;
        TrialMarks marks;
    } rows[] = {
        {1, true, false, "Trial 1", {true}},
        {2, true, false, "Trials 1 & 2", {true, true}},
        {3, true, false, "Trials 1 & 2", {true, true}},
        {4, true, false, "Trials 1 & 2", {true, true}},
        {3, false, true, "Trial 3", {false, false, true}},
        {3, true, true, "Trials 1, 2, and 3", {true, true, true}},
        {4, false, true, "Trials 3 & 4", {false, false, true, true}},
        {4, true, true, "Trials 1, 2, 3 & 4", {true, true, true, true}},
        {4, false, false, "", {}},
    };
    for (const auto& row : rows) {
        const MarkedPairs marked = MarkPairs(row.trials, row.first, row.second);
        EXPECT_EQ(marked.words, row.words);
        EXPECT_EQ(marked.marks, row.marks) << row.words;
    }
    EXPECT_EQ(FirstPairCaption(1) + FirstPairCaption(3) + SecondPairCaption(2), "Trial 1Trials 1 && 2");
    EXPECT_EQ(SecondPairCaption(3) + SecondPairCaption(4), "Trial 3Trials 3 && 4");
}

TEST(SensorEvaluation, JudgesOnBothSidesOfEachLimit) {
    const std::string large = "     At least one sensor has a Final Gain > 1.02\r\n";
    const std::string small = "     At least one sensor has a Final Gain < 0.98\r\n";
    const std::string changed = "At least one sensor has an Final Gain change > 1.0%\r\n";
    const struct {
        Make make;
        double initial, final;
        int status;
        std::string limits;
    } rows[] = {
        {Make::Dynatest, 1.02, 1.02, 1, ""},
        {Make::Dynatest, 1.02, 1.0201, 2, large},
        {Make::Kuab, 0.98, 0.98, 1, ""},
        {Make::Jils, 0.98, 0.9799, 2, small},
        {Make::Dynatest, 1, 1.01, 1, ""},
        {Make::Dynatest, 1, 0.9899, 2, changed},
        {Make::Dynatest, 1.025, 1.03, 2, large},
        {Make::Dynatest, 1.0098, 1.03, 3, large + changed},
        {Make::Dynatest, 10.9, 10.9, 2, large},
        {Make::CarlBro, 10.9, 10.9, 1, ""},
        {Make::CarlBro, 11.5, 11.5, 1, ""},
        {Make::CarlBro, 11.5, 11.5001, 2, "     At least one sensor has a Final Gain > 11.5\r\n"},
        {Make::CarlBro, 10.1, 10.0999, 2, "     At least one sensor has a Final Gain < 10.1\r\n"},
        {Make::Dynatest, 0, 1, 2, changed},  // the change cannot be known
    };
    for (const auto& row : rows) {
        CalibrationRun run;
        run.Manufacturer = row.make;
        run.NumberSensors = 1;
        run.Sensor[0].SerialNumber = "D1";
        run.Sensor[0].InitialGain = row.initial;
        run.Sensor[0].FinalGain = row.final;
        const SensorEvaluation judged = EvaluateSensors(run);
        SCOPED_TRACE(row.final);
        EXPECT_EQ(judged.sensors[0].Status(), row.status);
        EXPECT_EQ(judged.limits, row.limits);
        EXPECT_EQ(judged.message, row.status < 3
                                      ? "\r\nFinal Acceptance Critera are met for all sensors."
                                      : "Sensor 1:(D1) failed Final Acceptance Criteria 1 and 2.\r\n\r\n"
                                        "One of more sensors needs to have Criterion 3 (Historical trend) checked.");
    }
}

struct RecordingRelative : IdleCenterRelative {
    int started = 0;
    void Start() override { ++started; }
};

struct SensorResultsTest : testing::Test, ResultsProgram {
    ReferenceTab& sensors = results.Reference;
    RelativeStage& relative = sensors.Relative;
    std::shared_ptr<RecordingRelative> comparison = std::make_shared<RecordingRelative>();

    SensorResultsTest() {
        program->Register<CenterRelativeDoor>([this](Program&) { return comparison; });
        run.IsInHand = true;
        run.CurrentProcedure = Procedure::Sensors;
        run.CurrentProcStep = step::sensorsTrial;
        run.NumberSensors = 3;
        for (std::size_t s = 0; s < 3; ++s) {
            run.Sensor[s].SerialNumber = "D" + NumberText(s + 1);
            run.Sensor[s].InitialGain = 1;
        }
        // The daily calibration holds.
        center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 9);
        center.AccelDailyCalibrationTime = MakeDateTime(2012, 3, 9, 9);
        center.AccelDailyCalibrationTemperatureUnit = "Celsius";
        run.ReviewMode = true;
    }
    /// gains: of the second sensor in each trial; the others keep 1.
    void SetReferenceTrials(const std::vector<double>& gains) {
        run.RefTrials = static_cast<int>(gains.size());
        for (std::size_t s = 0; s < 3; ++s) {
            run.Sensor[s].RefTrial = {};
            for (std::size_t t = 0; t < gains.size(); ++t) run.Sensor[s].RefTrial[t].Gain = s == 1 ? gains[t] : 1;
        }
        results.OpenReference();
        results.Recompute();
    }
    void SetRelativeTrials(const std::vector<double>& gains) {
        run.RelTrials = static_cast<int>(gains.size());
        for (std::size_t s = 0; s < 3; ++s) {
            run.Sensor[s].RelTrial = {};
            for (std::size_t t = 0; t < gains.size(); ++t) {
                RelativeTrialRecord& trial = run.Sensor[s].RelTrial[t];
                trial.Gain = s == 1 ? gains[t] : 1;
                trial.Position = static_cast<int>(s) + 1;
                trial.Average = 20;
                for (std::size_t drop = 0; drop < relativeDrops; ++drop)
                    trial.DropData[drop] = 20 + 0.01 * static_cast<double>((drop * (s + 2) + t) % 5);
            }
        }
        for (std::size_t t = 0; t < gains.size(); ++t) run.RelTrial[t].Avg = 20.02;
        SetFinalGains(run);
        results.OpenReference();
        results.Recompute();
    }
    void Answer(std::initializer_list<bellmark::Answer> answers) {
        for (const auto answer : answers) machine.dialogs.QueueAnswer(answer);
    }
    std::string Saved(const char* key) const {
        return OpenProfileStrings(machine.files, machine.folder / run.InterimFileName)
            .Get("Device Calibration", key, "(none)");
    }
    static Path Data(const std::string& name) { return Path("InterimCal20120309") / name; }
};

TEST_F(SensorResultsTest, ShowTheReferenceTrialsAndWhatComesNext) {
    SetReferenceTrials({});
    EXPECT_EQ(sensors.txtRefMsg.Text.Get(), "No reference calibrations have been performed yet.");
    EXPECT_EQ(sensors.cmdAdditionalRefTrial.Caption.Get(), "&Perform First Reference Trial");
    EXPECT_FALSE(sensors.cmdDelRefCal.Enabled);

    SetReferenceTrials({1.0041});
    EXPECT_EQ(sensors.cmdAdditionalRefTrial.Caption.Get(), "&Perform Reference Trial 2");
    EXPECT_EQ(sensors.txtRefMsg.Text.Get(), "At least 2 reference calibrations must be done.");
    EXPECT_FALSE(sensors.cmdAcceptReference.Enabled);

    SetReferenceTrials({1.0041, 1.0021});
    EXPECT_EQ(sensors.cmdAdditionalRefTrial.Caption.Get(), "&Perform Two More Reference Trials");
    EXPECT_EQ(sensors.cmdAcceptReference.BackColor.Get(), colors::suggestedNext);
    EXPECT_EQ(sensors.cmdAdditionalRefTrial.BackColor.Get(), colors::buttonFace);
    EXPECT_EQ(
        sensors.grdRefCal.DisplayText(),
        "      \t   Serial   \t   Initial   \t    Trial 1    \t    Trial 2    \t   Interim   \n"
        "No.\tNumber\tGain\tRef. Gain\tRef. Gain\t  Gain   \n"
        "1\tD1\t1.000\t1.000\t1.000\t1.000\n2\tD2\t1.000\t1.004\t1.002\t1.003\n3\tD3\t1.000\t1.000\t1.000\t1.000\n"
        "  \t  \t  \t  \t  \t  \n-\tAverage\t1.000\t1.001\t1.001\t1.001\n-\tChange\t\t0.1%\t0.1%\t0.1%");
    EXPECT_FALSE(relative.cmdAdditionalRelCal.Enabled);

    SetReferenceTrials({1.0, 1.0051});
    EXPECT_TRUE(sensors.cmdAcceptReference.Enabled) << "the criteria advise";
    EXPECT_EQ(sensors.cmdAdditionalRefTrial.BackColor.Get(), colors::suggestedNext);
    EXPECT_EQ(sensors.cmdAcceptReference.BackColor.Get(), colors::buttonFace);

    SetReferenceTrials({1.0, 1.0051, 1.0, 1.0});
    EXPECT_FALSE(sensors.cmdAdditionalRefTrial.Enabled);

    // A trial that waits for its answer does not count, and blocks acceptance and deletion.
    run.FlagUnacceptedTrial = true;
    SetReferenceTrials({1.0, 1.0, 0});
    EXPECT_EQ(sensors.grdRefCal.Columns(), 6);
    EXPECT_FALSE(sensors.cmdAcceptReference.Enabled || sensors.cmdDelRefCal.Enabled);
}

TEST_F(SensorResultsTest, AnAcceptedReferenceLeadsToTheComparison) {
    SetReferenceTrials({1.0041, 1.0021});
    ASSERT_TRUE(SaveInterimCalibration(*program));
    Answer({Answer::OK});
    sensors.cmdAcceptReference.UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("Attach Reference Load Cell (012)"));
    EXPECT_EQ(Saved("SensorRefCalComplete"), "True");
    EXPECT_EQ(comparison->started, 1);
    EXPECT_EQ(run.CurrentProcStep, step::sensorsRelative);
    results.Recompute();
    EXPECT_FALSE(sensors.cmdAcceptReference.Enabled || sensors.cmdAdditionalRefTrial.Enabled);
    EXPECT_TRUE(relative.cmdAdditionalRelCal.Enabled);
    EXPECT_THAT(sensors.txtRefMsg.Text.Get(), testing::StartsWith("Reference Calibrations Accepted.\r\n"));
}

TEST_F(SensorResultsTest, DropsOfAFurtherReferenceTrialAreGivenUpOnlyWhenTheOperatorSaysSo) {
    SetReferenceTrials({1.0041, 1.0021});
    for (const Procedure procedure : {Procedure::LoadCell, Procedure::Sensors}) {
        const bool mayBeLost = procedure == Procedure::Sensors;
        SCOPED_TRACE(mayBeLost);
        run.SensorRefCalComplete = false;
        run.Trial.procedure = procedure;
        run.Trial.number = 3;
        run.Trial.DropSequenceIndex = 5;
        if (mayBeLost) {
            results.Recompute();
            Answer({Answer::No});
            sensors.cmdAcceptReference.UserClick();
            EXPECT_THAT(Boxes(), HasSubstr("Drops of reference trial 3 are in hand. They are given up when the "
                                           "reference calibration is accepted."));
            EXPECT_FALSE(run.SensorRefCalComplete);
            EXPECT_EQ(run.Trial.DropSequenceIndex, 5);
            Answer({Answer::Yes});
        }
        results.Recompute();
        Answer({Answer::OK});
        sensors.cmdAcceptReference.UserClick();
        EXPECT_TRUE(run.SensorRefCalComplete);
        EXPECT_EQ(run.Trial.DropSequenceIndex, mayBeLost ? 0 : 5) << "the load cell's drops stay";
        EXPECT_EQ(Boxes().find("Drops of") != std::string::npos, mayBeLost);
        results.OpenReference();
    }
}

TEST_F(SensorResultsTest, MoreReferenceTrialsAreAskedForInPairs) {
    SetReferenceTrials({1.0, 1.0});
    Answer({Answer::No});
    sensors.cmdAdditionalRefTrial.UserClick();
    EXPECT_THAT(Boxes(),
                testing::AllOf(HasSubstr("Start New Reference Calibraion Trial Pair"),
                               HasSubstr("Do you want to perform 2 additional Reference Calibration Trials?")));
    EXPECT_EQ(program->Screens.Front(), &results);
    run.CurrentProcedure = Procedure::LoadCell;
    SetReferenceTrials({1.0});
    sensors.cmdAdditionalRefTrial.UserClick();
    EXPECT_EQ(Boxes(), "");
    EXPECT_EQ(run.CurrentProcedure, Procedure::Sensors);
    EXPECT_EQ(program->Screens.Front()->Name(), "frmPrerequisites");
}

TEST_F(SensorResultsTest, DeletionTakesPairsWithTheirFiles) {
    SetReferenceTrials({1.1, 1.2, 1.3, 1.4});
    run.RefTrialShape[2] = {3, 5, false};
    for (int trial = 1; trial <= 5; ++trial) {
        machine.Write(Data("Reference" + NumberText(trial) + "-H1D1.txt"), "drop of " + NumberText(trial));
        machine.Write(Data("8002-123 09-Mar-2012 D1.RF" + NumberText(trial)), "report of " + NumberText(trial));
    }
    machine.Write(Data("LoadCell1-H1D1.txt"), "the load cell's");
    run.Trial.procedure = Procedure::Sensors;
    run.Trial.number = 5;  // drops of a fifth one are in
    sensors.cmdDelRefCal.UserClick();
    EXPECT_EQ(sensors.fraDelRefCal.Caption.Get(), "Delete Reference Calibrations");
    sensors.ChkDelRef[0].UserClick();
    Answer({Answer::Yes});
    sensors.cmdDelRefOK.UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("Do you really want to delete Trials 1 & 2?"));
    EXPECT_EQ(run.RefTrials, 2);
    EXPECT_EQ(run.Sensor[1].RefTrial[0].Gain, 1.3);
    EXPECT_EQ(run.RefTrialShape[0], (TrialShape{3, 5, false}));
    EXPECT_NEAR(run.Sensor[1].InterimGain, 1.35, 1e-12);
    EXPECT_EQ(Text(Data("Reference1-H1D1.txt")), "drop of 3");
    EXPECT_EQ(Text(Data("8002-123 09-Mar-2012 D1.RF2")), "report of 4");
    EXPECT_EQ(Text(Data("Reference3-H1D1.txt")), "drop of 5");
    EXPECT_EQ(run.Trial.number, 3);
    EXPECT_FALSE(machine.Has(Data("Reference4-H1D1.txt")));
    EXPECT_TRUE(machine.Has(Data("LoadCell1-H1D1.txt")));

    run.SensorRefCalComplete = true;
    SetRelativeTrials({1.01, 1.02, 1.03});
    machine.Write(Data("8002-123 09-03-2012 1.RL"), "one");
    machine.Write(Data("8002-123 09-03-2012 3.RL"), "three");
    sensors.cmdDelRefCal.UserClick();
    EXPECT_EQ(sensors.fraDelRefCal.Caption.Get(), "Delete Relative Calibrations");
    sensors.ChkDelRef[0].UserClick();
    Answer({Answer::Yes});
    sensors.cmdDelRefOK.UserClick();
    EXPECT_EQ(run.RelTrials, 1);
    EXPECT_NEAR(run.Sensor[1].FinalGain, 1.03, 1e-12);
    EXPECT_EQ(Text(Data("8002-123 09-03-2012 1.RL")), "three");
    EXPECT_FALSE(machine.Has(Data("8002-123 09-03-2012 3.RL")));
}

TEST_F(SensorResultsTest, TheRelativeStageIsJudgedAndAccepted) {
    SetReferenceTrials({1.0041, 1.0021});
    run.SensorRefCalComplete = true;
    SetRelativeTrials({1.0});
    EXPECT_THAT(relative.txtRelMsg.Text.Get(), HasSubstr("Missing calibration; a calibration must be done for each"));
    EXPECT_EQ(relative.cmdAdditionalRelCal.Caption.Get(), "&Perform Relative Trial 2");
    EXPECT_FALSE(run.SensorRelCalGood || relative.cmdReviewSensors.Enabled);

    SetRelativeTrials({1.0123456789, 1.0123456789});
    EXPECT_THAT(relative.txtRelMsg.Text.Get(),
                testing::AllOf(HasSubstr("At least one sensor has an Final Gain change > 1.0%\r\n"),
                               HasSubstr("randomly dist"), HasSubstr("Final Acceptance Critera are met")));
    EXPECT_EQ(relative.grdRelCal.DisplayText(),
              "            \t    Trial 1    \t    Trial 2    \t Calculated \t   Overall   \n"
              "No.\tRel. Gain\tRel. Gain\t Final Gain \t % Change \n1\t1.000\t1.000\t1.000\t0.0%\n"
              "2\t1.012\t1.012\t1.012\t1.2%\n3\t1.000\t1.000\t1.000\t0.0%\n  \t  \t  \t  \t  \n"
              "Avg.\t1.004\t1.004\t1.004\t\nChange\t\t\t\t0.1%");
    EXPECT_EQ(relative.grdRelCal.CellColor(3, 4), colors::mustBeUpdated);
    EXPECT_EQ(relative.grdRelCal.CellColor(3, 3), colors::passed);
    EXPECT_EQ(relative.cmdReviewSensors.BackColor.Get(), colors::suggestedNext);

    // Accepted over the analysis, before the load cell.
    ASSERT_TRUE(SaveInterimCalibration(*program));
    relative.cmdShowANOVA.UserClick();
    EXPECT_EQ(relative.grdANOVA.Rows(), 7);
    EXPECT_EQ(relative.cmdAcceptSensors.Caption.Get(), "&Accept");
    relative.cmdAcceptSensors.UserClick();
    EXPECT_TRUE(run.SensorRelCalComplete);
    EXPECT_EQ(run.Sensor[1].FinalGain, 1.01234568);
    EXPECT_EQ(relative.grdRelCal.Cell(0, 2), " Accepted ");
    EXPECT_EQ(sensors.optRef.BackColor.Get(), colors::complete);
    EXPECT_EQ(run.CurrentProcedure, Procedure::LoadCell);
    EXPECT_EQ(run.CurrentProcStep, step::loadCellTrialStarts);
    EXPECT_FALSE(relative.cmdReviewSensors.Enabled || relative.cmdAdditionalRelCal.Enabled ||
                 sensors.cmdDelRefCal.Enabled);
    EXPECT_THAT(relative.txtRelMsg.Text.Get(), testing::StartsWith("\r\nSensor Calibration Completed!"));
    EXPECT_TRUE(machine.Has(run.OutputFolder.lexically_relative(machine.folder.Folder())));

    run.SensorRelCalComplete = false;
    SetTrials({1.0, 1.0});
    run.LoadCellCalComplete = true;
    results.OpenReference();
    results.Recompute();
    relative.cmdReviewSensors.UserClick();
    EXPECT_EQ(run.CurrentProcedure, Procedure::Results);
    EXPECT_TRUE(results.cmdPrintPDDX[1].Enabled);
}

}  // namespace
}  // namespace bellmark
