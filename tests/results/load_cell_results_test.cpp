// The load cell's tab of the results, and what it does to the run and its files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/interim_store.h"
#include "platform/profile_strings.h"
#include "results/load_cell_evaluation.h"
#include "results/text_certificate.h"
#include "results/trial_files.h"
#include "tests/results/results_program.h"

namespace bellmark {
namespace {

using testing::ElementsAre;

constexpr const char* advice = "     Perform an additional Load Cell Trial or Delete any erroneous trials.\r\n";
const std::string difference = std::string("Gain difference between Trial 1 and 2 is greater than 0.003.\r\n") + advice;
const std::string tooLarge = "     Final Gain larger than 1.02\r\n";
const std::string tooSmall = "     Final Gain smaller than 0.98\r\n";
const std::string changed = "     Percent change is greater than 1.0%\r\n";

struct EvaluationCase {
    std::vector<double> gains;
    double initialGain;
    std::string message;
};

TEST(LoadCellEvaluation, JudgesOnBothSidesOfEachLimit) {
    // Deviations of three trials by hand: of 1, 1.003, 1.006 exactly 0.003; of 1, 1.0031, 1.0062 0.0031, of 0.9968, 1,
    // 1 sqrt((0.0032^2 * 2 / 3) / 2) = 0.00185.
    const EvaluationCase cases[] = {
        {{}, 1, "Need a minimum of 2 load cell trials."},
        {{1.0}, 1, "Need a minimum of 2 load cell trials."},
        {{1.0, 1.003}, 1, ""},
        {{0.997, 1.0}, 1, ""},
        {{1.0, 1.0031}, 1, difference},
        {{1.0031, 1.0}, 1, difference},
        {{1.0, 1.003, 1.006}, 1.003, ""},
        {{1.0, 1.0031, 1.0062}, 1.0031, std::string("Standard Deviation > 0.003 (= 0.0031).\r\n") + advice},
        {{0.9968, 1.0, 1.0}, 1, ""},  // trials 1 and 2 alone would fail
        {{1.0, 1.01, 1.0, 1.01}, 1.005, std::string("Standard Deviation > 0.003 (= 0.0058).\r\n") + advice},
        {{1.02, 1.02}, 1.02, ""},
        {{1.0201, 1.0201}, 1.02, tooLarge},
        {{0.98, 0.98}, 0.98, ""},
        {{0.9799, 0.9799}, 0.98, tooSmall},
        {{1.01, 1.01}, 1, ""},
        {{0.99, 0.99}, 1, ""},
        {{1.0101, 1.0101}, 1, changed},
        {{0.9899, 0.9899}, 1, changed},
        {{1.0, 1.06}, 0.5, difference + tooLarge + changed},
        {{1.0, 1.0}, 0, changed},  // the change cannot be known
    };
    for (const auto& [gains, initialGain, message] : cases) {
        EXPECT_EQ(EvaluateLoadCell(gains, initialGain).message, message)
            << testing::PrintToString(gains) << " of " << initialGain;
    }
}

struct LoadCellResultsTest : testing::Test, ResultsProgram {
    /// Four trials with a file of two drops and a report each, and other files that no trial owns.
    void WriteTrialFiles() {
        for (int trial = 1; trial <= 4; ++trial) {
            const std::string n = NumberText(trial);
            machine.Write(Data("LoadCell" + n + "-H1D1.txt"), "first drop of " + n);
            machine.Write(Data("LoadCell" + n + "-H4D10.txt"), "last drop of " + n);
            machine.Write(Data("8002-123 09-Mar-2012 LC-9.LC" + n), "report of " + n);
        }
        machine.Write(Data("Reference1-H1D1.txt"), "a sensor's drop");
        machine.Write(Data("8002-123 09-Mar-2012 S-1.RF1"), "a sensor's report");
        machine.Write(Data("LoadCell.txt"), "the operator's notes");
    }
    static Path Data(const std::string& name) { return Path("InterimCal20120309") / name; }

    std::string Saved(const char* key) const {
        return OpenProfileStrings(machine.files, machine.folder / run.InterimFileName)
            .Get("Device Calibration", key, "(none)");
    }
    void Delete(std::initializer_list<int> trials) {
        tab.cmdDelLCTrials.UserClick();
        for (const int trial : trials) tab.ChkDelLC[trial - 1].UserClick();
        tab.cmdDelLCOK.UserClick();
    }
};

TEST_F(LoadCellResultsTest, ShowsTheTrialsAndWhatComesNext) {
    SetTrials({});
    EXPECT_EQ(tab.cmdLCTrial.Caption.Get(), "&Perform First Load Cell Trial");
    EXPECT_FALSE(tab.cmdDelLCTrials.Enabled);
    EXPECT_EQ(Cell(4, 0), "");

    SetTrials({1.0041}, 1.0);
    EXPECT_EQ(tab.txtMsg.Text.Get(), "Need a minimum of 2 load cell trials.");
    EXPECT_EQ(tab.cmdLCTrial.Caption.Get(), "&Perform Load Cell Trial 2");
    EXPECT_EQ(tab.cmdLCTrial.BackColor.Get(), colors::suggestedNext);
    EXPECT_FALSE(tab.cmdAcceptLC.Enabled);
    EXPECT_EQ(tab.grdLoadCell.DisplayText(),
              "   Serial   \t   Initial   \t    Trial 1    \nNumber\tGain\tRef. Gain\nLC-9\t1.000\t1.004\n\t\t\n"
              "Change\t\t0.41%");

    SetTrials({1.0041, 1.0021}, 1.0);
    EXPECT_EQ(Cell(0, 4), "    Final    ");
    EXPECT_EQ(Cell(1, 4), "  Gain   ");
    EXPECT_EQ(Cell(2, 4), "1.0031");
    EXPECT_EQ(Cell(4, 4), "0.31%");
    EXPECT_EQ(tab.grdLoadCell.CellColor(2, 4), colors::complete);
    EXPECT_EQ(tab.grdLoadCell.CellColor(4, 4), colors::complete);
    EXPECT_EQ(tab.optLoadCell.BackColor.Get(), colors::suggestedNext);
    EXPECT_EQ(tab.cmdAcceptLC.BackColor.Get(), colors::suggestedNext);
    EXPECT_EQ(tab.cmdLCTrial.BackColor.Get(), colors::buttonFace);
    EXPECT_TRUE(run.LoadCellCalPassed);
    EXPECT_EQ(run.LoadCellMessage, "All data checks passed");

    SetTrials({1.0, 1.06, 1.0, 1.06}, 1.0);
    EXPECT_EQ(tab.grdLoadCell.CellColor(2, 6), colors::mustBeUpdated);
    EXPECT_EQ(tab.grdLoadCell.CellColor(4, 6), colors::mustBeUpdated);
    EXPECT_EQ(tab.optLoadCell.BackColor.Get(), colors::mustBeUpdated);
    EXPECT_EQ(tab.cmdLCTrial.Caption.Get(), "&Perform Load Cell Trial 5");
    EXPECT_FALSE(tab.cmdLCTrial.Enabled);
    EXPECT_TRUE(tab.cmdAcceptLC.Enabled) << "failing checks advise only";
    EXPECT_FALSE(run.LoadCellCalPassed);
}

TEST_F(LoadCellResultsTest, TheTabInViewIsTheStepOfTheReviewAlone) {
    run.CurrentProcedure = Procedure::Results;
    OptionButton* tabs[] = {&results.Summary.optSummary, &results.Accelerometer.optAccel, &results.Reference.optRef,
                            &results.LoadCell.optLoadCell};
    const Frame* pages[] = {&results.Summary.fraSummary, &results.Accelerometer.fraAccel, &results.Reference.fraRef,
                            &results.LoadCell.fraLoadCell};
    results.Show();
    for (int i = 0; i < 4; ++i) {
        tabs[i]->UserClick();
        EXPECT_EQ(run.CurrentProcStep, 101 + i) << tabs[i]->Name();
        for (int j = 0; j < 4; ++j) EXPECT_EQ(pages[j]->Visible, i == j) << pages[j]->Name();
    }
    run.CurrentProcedure = Procedure::LoadCell;
    run.CurrentProcStep = 53;
    tabs[0]->UserClick();
    EXPECT_EQ(run.CurrentProcStep, 53);
}

TEST_F(LoadCellResultsTest, AcceptsAgainstTheAdviceAndPublishes) {
    SetTrials({1.0, 1.06});
    SaveInterimCalibration(*program);
    tab.cmdAcceptLC.UserClick();
    EXPECT_EQ(tab.txtMsg.Text.Get(), "Load Cell Calibration Complete!\r\n" + difference + tooLarge + changed);
    EXPECT_EQ(tab.grdLoadCell.CellColor(2, 4), colors::complete);
    EXPECT_TRUE(program->Run.LoadCellCalComplete);
    for (const Button* button : {&tab.cmdAcceptLC, &tab.cmdLCTrial, &tab.cmdDelLCTrials, &results.cmdPrintPDDX[1]}) {
        EXPECT_FALSE(button->Enabled) << button->Name();
    }
    EXPECT_TRUE(results.cmdPrintPDDX[0].Enabled) << "a load cell alone has a certificate too";
    EXPECT_TRUE(results.cmdNext.Enabled);
    EXPECT_EQ(results.cmdNext.BackColor.Get(), colors::suggestedNext);
    EXPECT_FALSE(results.txtPleaseWait.Visible);
    EXPECT_EQ(run.CurrentProcedure, Procedure::Sensors);
    EXPECT_EQ(run.CurrentProcStep, step::sensorsCheck);
    EXPECT_EQ(program->Header.ProcedureName(), "FWD Deflection Sensor Calibration");
    EXPECT_EQ(run.NewLoadCellCalibrationCenterGain, 1.03);
    EXPECT_EQ(Saved("LoadCellCalComplete"), "True");
    EXPECT_EQ(Saved("NewLoadCellCalibrationCenterDate"), "09-Mar-2012");
    EXPECT_TRUE(machine.Has("Bellmark/Calibrations/Owner/Unit 7/20120309/InterimCal.DDX"));

    // With the sensors complete the review of all results is what is left.
    run.SensorRelCalComplete = true;
    run.LoadCellCalComplete = false;
    results.Recompute();
    tab.cmdAcceptLC.UserClick();
    EXPECT_EQ(run.CurrentProcedure, Procedure::Results);
    EXPECT_EQ(run.CurrentProcStep, step::resultsLast);
    EXPECT_TRUE(results.cmdPrintPDDX[1].Enabled);
    EXPECT_EQ(results.cmdPrintPDDX[1].BackColor.Get(), colors::suggestedNext);
}

TEST_F(LoadCellResultsTest, WhatCannotBeKeptIsNotAccepted) {
    SetTrials({1.0, 1.002});
    SaveInterimCalibration(*program);
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdAcceptLC.UserClick();
    machine.files.FailFromWrite(0);
    EXPECT_FALSE(run.LoadCellCalComplete);
    EXPECT_EQ(run.CurrentProcedure, Procedure::LoadCell);
    EXPECT_FALSE(results.txtPleaseWait.Visible);
    tab.cmdAcceptLC.UserClick();
    EXPECT_TRUE(run.LoadCellCalComplete);
}

TEST_F(LoadCellResultsTest, ALoadCellAloneGoesOnToItsOutputs) {
    run.LoadCellOnly = true;
    SetTrials({1.0, 1.0});
    tab.cmdAcceptLC.UserClick();
    results.cmdNext.UserClick();
    EXPECT_TRUE(results.Summary.fraSummary.Visible);
    EXPECT_EQ(results.cmdPrintPDDX[0].BackColor.Get(), colors::suggestedNext);
    machine.dialogs.QueueAnswer(Answer::No);
    results.cmdMainMenu.UserClick();
    EXPECT_EQ(Boxes(),
              "\tCalibration is not complete!\\nDeflection Sensor Calibration is not complete\\nAre you done with the "
              "FWD calibration?\\nIf No, any interim data will be saved\t292\tNo\n");
    EXPECT_TRUE(run.InterimCalOpen);
    EXPECT_EQ(program->Screens.Front()->Name(), "frmMainMenu");
}

TEST_F(LoadCellResultsTest, DeletesTrialsAndRenumbersTheFilesOfTheOthers) {
    WriteTrialFiles();
    SetTrials({1.1, 1.2, 1.3, 1.4});
    Delete({});
    EXPECT_EQ(Boxes(), "");
    machine.dialogs.QueueAnswer(Answer::No);
    Delete({2});
    EXPECT_EQ(Boxes(), "Delete Reference Calibrations\tDo you really want to delete Trial 2?\t292\tNo\n");
    EXPECT_EQ(run.LoadCellRefTrials, 4);

    run.LCTrialShape[1] = {3, 8, false};
    machine.dialogs.QueueAnswer(Answer::Yes);
    Delete({1, 3});
    EXPECT_EQ(run.LCTrialShape[0], (TrialShape{3, 8, false})) << "heights, drops and units go with their trial";
    EXPECT_EQ(Boxes(), "Delete Reference Calibrations\tDo you really want to delete Trials 1& 3?\t292\tYes\n");
    EXPECT_EQ(run.LoadCellRefTrials, 2);
    EXPECT_EQ(run.LCTrial[0].Gain, 1.2);
    EXPECT_EQ(run.LCTrial[1].Gain, 1.4);
    EXPECT_EQ(run.LCTrial[2].Gain, 0);
    EXPECT_EQ(Cell(2, 2), "1.200");
    EXPECT_THAT(
        machine.files.FileNames(machine.folder / "InterimCal20120309"),
        ElementsAre("8002-123 09-Mar-2012 LC-9.LC1", "8002-123 09-Mar-2012 LC-9.LC2", "8002-123 09-Mar-2012 S-1.RF1",
                    "InterimCal.DDX", "Journal.txt", "LoadCell.txt", "LoadCell1-H1D1.txt", "LoadCell1-H4D10.txt",
                    "LoadCell2-H1D1.txt", "LoadCell2-H4D10.txt", "Reference1-H1D1.txt"));
    EXPECT_EQ(Text(Data("LoadCell1-H1D1.txt")), "first drop of 2");
    EXPECT_EQ(Text(Data("LoadCell2-H4D10.txt")), "last drop of 4");
    EXPECT_EQ(Text(Data("8002-123 09-Mar-2012 LC-9.LC2")), "report of 4");
    EXPECT_EQ(Saved("LoadCellTrial2Gain"), "1.4");
    EXPECT_EQ(Saved("LoadCellTrial3Gain"), "(none)");
    EXPECT_FALSE(machine.Has("TempInterimDropData"));
    const Path removed = "Removed/20120309-100000-InterimCal20120309/TempInterimDropData";
    EXPECT_EQ(Text(removed / "LoadCell1-H1D1.txt"), "first drop of 1");
}

/// Every write, and every move of a file, fails once: whatever happens, no trial is lost in the run or on disk.
TEST_F(LoadCellResultsTest, NothingIsLostWhenADeletionFails) {
    using Failure = void (FailingFileSystem::*)(int);
    for (const Failure fail : {&FailingFileSystem::FailFromWrite, &FailingFileSystem::FailFromMove}) {
        WriteTrialFiles();
        SetTrials({1.1, 1.2, 1.3, 1.4});
        SaveInterimCalibration(*program);
        // The first message begins it.
        machine.Write("InterimCal20120309/Journal.txt", "");
        const auto before = machine.files.FileNames(machine.folder / "InterimCal20120309");
        int failure = 1;
        for (; failure < 100; failure += 3) {
            (machine.files.*fail)(failure);
            machine.dialogs.QueueAnswer(Answer::Yes);
            machine.dialogs.QueueAnswer(Answer::OK);
            Delete({1, 3});
            (machine.files.*fail)(0);
            if (run.LoadCellRefTrials != 4) break;
            const bool isWhole = machine.files.FileNames(machine.folder / "InterimCal20120309") == before;
            const Path kept = isWhole ? Path("InterimCal20120309") : Path("TempInterimDropData");
            EXPECT_EQ(Text(kept / "LoadCell1-H1D1.txt"), "first drop of 1") << failure;
            EXPECT_EQ(Text(kept / "LoadCell4-H1D1.txt"), "first drop of 4") << failure;
            EXPECT_EQ(run.LCTrial[0].Gain, 1.1) << failure;
            EXPECT_FALSE(results.txtPleaseWait.Visible) << failure;
            if (!isWhole) WriteTrialFiles();
        }
        EXPECT_GT(failure, 10);
        EXPECT_EQ(Text(Data("LoadCell1-H1D1.txt")), "first drop of 2");
        machine.files.RemoveFolder(machine.folder / "TempInterimDropData");
    }
}

TEST_F(LoadCellResultsTest, ATrialThatWaitsForItsAnswerIsNeitherDeletedNorAccepted) {
    run.FlagUnacceptedTrial = true;
    SetTrials({1.0, 1.002, 0});
    EXPECT_EQ(Cell(2, 4), "1.0010") << "the mean of the two that were accepted";
    EXPECT_TRUE(run.LoadCellCalPassed);
    EXPECT_THAT(TextCertificate(run, center, program->Now()), testing::HasSubstr("Trial 3: 0.000"));
    SetTrials({1.0, 1.0});
    EXPECT_EQ(tab.txtMsg.Text.Get(), "Need a minimum of 2 load cell trials.");
    EXPECT_FALSE(tab.cmdDelLCTrials.Enabled);
    EXPECT_FALSE(tab.cmdAcceptLC.Enabled);
    EXPECT_EQ(tab.cmdAcceptLC.ToolTip.Get(), "Accept or reject the last trial first: it still waits for its answer.");
}

TEST(TrialFiles, AFolderThatAFailedDeletionLeftIsNotTouched) {
    TestMachine machine;
    const Path data = machine.folder / "InterimCal20120309";
    EXPECT_EQ(FreeSafeCopy(machine.files, data), machine.folder / "TempInterimDropData");
    machine.Write("TempInterimDropData/LoadCell1-H1D1.txt", "all that is left");
    EXPECT_EQ(FreeSafeCopy(machine.files, data), machine.folder / "TempInterimDropData-1");
}

}  // namespace
}  // namespace bellmark
