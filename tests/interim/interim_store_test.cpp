#include "app/interim_store.h"

#include <gtest/gtest.h>

#include "analysis/analysis.h"
#include "app/center_file.h"
#include "app/save_pddx.h"
#include "app/workflow.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "run/center_keys.h"
#include "run/interim_keys.h"
#include "run/trial.h"
#include "tests/interim/full_run.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

struct InterimStoreTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    Path file = machine.folder / "InterimCal20120309.DDX";
    Path copy = machine.folder / "InterimCal20120309" / "InterimCal.DDX";

    InterimStoreTest() {
        program.Register<SetupDoor>([](Program&) { return std::make_shared<FakeSetup>(); });
        program.Run = FullRun(1);
        program.Center.Notes = {"first", "", "third, with more"};
        program.Center.LocationOfFWDDataTransfer = "/data/";
    }
    std::string Bytes(const Path& path) { return machine.files.ReadBytes(path); }
};

void ExpectSameTrial(const TrialRecord& saved, const TrialRecord& loaded) {
    EXPECT_EQ(saved.RefDropData, loaded.RefDropData);
    EXPECT_EQ(saved.DropData, loaded.DropData);
    EXPECT_EQ(saved.AdjFactor, loaded.AdjFactor);
    EXPECT_EQ(saved.Gain, loaded.Gain);
}

void ExpectSameSensor(const SensorCalRecord& saved, const SensorCalRecord& loaded) {
    EXPECT_EQ(saved.SerialNumber, loaded.SerialNumber);
    EXPECT_EQ(saved.InitialGain, loaded.InitialGain);
    EXPECT_EQ(saved.InterimGain, loaded.InterimGain);
    EXPECT_EQ(saved.FinalGain, loaded.FinalGain);
    for (std::size_t t = 0; t < maxTrials; ++t) {
        ExpectSameTrial(saved.RefTrial[t], loaded.RefTrial[t]);
        EXPECT_EQ(saved.RelTrial[t].DropData, loaded.RelTrial[t].DropData);
        EXPECT_EQ(saved.RelTrial[t].AdjFactor, loaded.RelTrial[t].AdjFactor);
        EXPECT_EQ(saved.RelTrial[t].Gain, loaded.RelTrial[t].Gain);
        EXPECT_EQ(saved.RelTrial[t].Position, loaded.RelTrial[t].Position);
        EXPECT_EQ(saved.RelTrial[t].Average, loaded.RelTrial[t].Average);
        EXPECT_EQ(saved.RelTrial[t].StdDev, loaded.RelTrial[t].StdDev);
    }
}

TEST_F(InterimStoreTest, EveryDigitComesBack) {
    const CalibrationRun saved = program.Run;
    ASSERT_TRUE(SaveInterimCalibration(program));
    program.Run.LoadCellInitialGain = -1;
    program.Run.Sensor = {};
    program.Center.Notes = {};
    ASSERT_TRUE(LoadInterimCalibration(program));
    const CalibrationRun& loaded = program.Run;
    EXPECT_EQ(saved.CurrentProcedure, loaded.CurrentProcedure);
    EXPECT_EQ(saved.CurrentProcStep, loaded.CurrentProcStep);
    EXPECT_EQ(saved.NumberLoadLevels, loaded.NumberLoadLevels);
    EXPECT_EQ(saved.NumberDropsPerLoadLevel, loaded.NumberDropsPerLoadLevel);
    EXPECT_EQ(saved.NumberSensors, loaded.NumberSensors);
    EXPECT_EQ(saved.SensorStand, loaded.SensorStand);
    EXPECT_EQ(saved.EnglishUnits, loaded.EnglishUnits);
    EXPECT_EQ(saved.Manufacturer, loaded.Manufacturer);
    EXPECT_EQ(saved.DeviceOwner, loaded.DeviceOwner);
    EXPECT_EQ(saved.DeviceSerialNumber, loaded.DeviceSerialNumber);
    EXPECT_EQ(loaded.DeviceName, "8002-123");
    EXPECT_EQ(saved.OwnerFolder, loaded.OwnerFolder);
    EXPECT_EQ(saved.DeviceFolder, loaded.DeviceFolder);
    EXPECT_EQ(saved.OutputFolder, loaded.OutputFolder);
    EXPECT_TRUE(loaded.FlagUnacceptedTrial);
    EXPECT_FALSE(loaded.LoadCellCalComplete);
    EXPECT_TRUE(loaded.SensorRefCalComplete);
    EXPECT_FALSE(loaded.SensorRelCalComplete);
    EXPECT_TRUE(loaded.SetupComplete);
    EXPECT_FALSE(loaded.ProgramStarted);
    EXPECT_EQ(saved.LoadCellInitialGain, loaded.LoadCellInitialGain);
    EXPECT_EQ(saved.LoadCellSerialNumber, loaded.LoadCellSerialNumber);
    EXPECT_EQ(saved.NewLoadCellCalibrationCenterGain, loaded.NewLoadCellCalibrationCenterGain);
    EXPECT_EQ(loaded.NewLoadCellCalibrationCenterDate, "09-Mar-2012");
    EXPECT_EQ(loaded.LoadCellRefTrials, 4);
    EXPECT_EQ(loaded.RefTrials, 4);
    EXPECT_EQ(loaded.RelTrials, 4);
    EXPECT_EQ(saved.RefCalAvg, loaded.RefCalAvg);
    EXPECT_EQ(saved.RefCalStdDev, loaded.RefCalStdDev);
    EXPECT_EQ(saved.RefCalChange, loaded.RefCalChange);
    for (std::size_t t = 0; t < maxTrials; ++t) {
        ExpectSameTrial(saved.LCTrial[t], loaded.LCTrial[t]);
        EXPECT_EQ(saved.RefTrial[t].Avg, loaded.RefTrial[t].Avg);
        EXPECT_EQ(saved.RefTrial[t].StdDev, loaded.RefTrial[t].StdDev);
        EXPECT_EQ(saved.RefTrial[t].Change, loaded.RefTrial[t].Change);
        EXPECT_EQ(saved.RelTrial[t].Avg, loaded.RelTrial[t].Avg);
        EXPECT_EQ(saved.RelTrial[t].StdDev, loaded.RelTrial[t].StdDev);
        EXPECT_EQ(saved.RelTrial[t].ChiSq, loaded.RelTrial[t].ChiSq);
        EXPECT_EQ(saved.RelTrial[t].SetAvg, loaded.RelTrial[t].SetAvg);
        EXPECT_EQ(saved.RelTrial[t].SetStdDev, loaded.RelTrial[t].SetStdDev);
    }
    for (std::size_t s = 0; s < maxSensors; ++s) ExpectSameSensor(saved.Sensor[s], loaded.Sensor[s]);
    EXPECT_EQ(program.Center.LocationOfFWDDataTransfer, "/data/");
    // A note with a comma comes back as two, because the comma separates the notes. The blank after it stays.
    EXPECT_EQ(program.Center.Notes[2], "third");
    EXPECT_EQ(program.Center.Notes[3], " with more");
}

TEST_F(InterimStoreTest, TheTrialThatWaitsIsKnownAfterARestart) {
    constexpr Procedure loadCell = Procedure::LoadCell, sensors = Procedure::Sensors, none = Procedure::None;
    const struct {
        const char* what;
        Procedure waits;
        int loadCellTrials, referenceTrials;
        bool loadCellAccepted, referenceAccepted;
        Procedure expected;
    } rows[] = {
        // The file was read and plotted, so the trial has its gain; then the operator looked into the set-up.
        {"load cell beside two accepted reference trials", loadCell, 1, 2, false, false, loadCell},
        {"second reference trial beside an accepted load cell trial", sensors, 1, 2, false, false, sensors},
        {"no trial of its procedure", loadCell, 0, 2, false, false, none},
        {"its procedure is accepted", sensors, 1, 2, false, true, none},
        {"all is accepted", none, 2, 2, true, true, none},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CalibrationRun& run = program.Run;
        run = FullRun(1);
        run.CurrentProcedure = none;
        run.CurrentProcStep = step::none;
        run.LCTrialShape[0] = {3, 5, true};
        run.LoadCellRefTrials = row.loadCellTrials;
        run.RefTrials = row.referenceTrials;
        run.LoadCellCalComplete = row.loadCellAccepted;
        run.SensorRefCalComplete = row.referenceAccepted;
        run.FlagUnacceptedTrial = true;
        run.Trial.procedure = row.waits;
        ASSERT_TRUE(SaveInterimCalibration(program));
        ASSERT_TRUE(LoadInterimCalibration(program));
        EXPECT_EQ(run.FlagUnacceptedTrial, row.expected != none);
        EXPECT_EQ(ProcedureOfUnacceptedTrial(run), row.expected);
        EXPECT_EQ(AcceptedLoadCellTrials(run), row.loadCellTrials - (row.expected == loadCell ? 1 : 0));
        EXPECT_EQ(AcceptedReferenceTrials(run), row.referenceTrials - (row.expected == sensors ? 1 : 0));
        if (row.expected == none) continue;
        EXPECT_EQ(run.Trial.number, row.expected == loadCell ? 1 : 2);
        EXPECT_EQ(run.Trial.shape, row.expected == loadCell ? (TrialShape{3, 5, true}) : (TrialShape{4, 10, false}));
    }
}

TEST_F(InterimStoreTest, ARestartKnowsThatDropsWereInHand) {
    CalibrationRun& run = program.Run;
    run.FlagUnacceptedTrial = false;
    run.Trial.DropSequenceIndex = 3;
    for (const bool wasRejected : {false, true}) {
        if (wasRejected) LeaveTrial(run);
        // Twice: what was known at the first restart is so at the second.
        for (int restart = 0; restart < 2; ++restart) {
            ASSERT_TRUE(SaveInterimCalibration(program));
            ASSERT_TRUE(LoadInterimCalibration(program));
            EXPECT_EQ(run.Trial.wasInterrupted, !wasRejected);
            EXPECT_EQ(run.Trial.procedure, wasRejected ? Procedure::None : Procedure::LoadCell);
            EXPECT_EQ(run.Trial.DropSequenceIndex, 0);
            EXPECT_FALSE(run.FlagUnacceptedTrial);
        }
    }
}

TEST_F(InterimStoreTest, ARunThatGoesOnUsesTheCentersOwnCalibrationOfTheDay) {
    for (const bool review : {false, true}) {
        program.Center.AccelDailyCalibrationMinus1GStdDev = 0.001;
        ASSERT_TRUE(SaveInterimCalibration(program));
        program.Center.AccelDailyCalibrationMinus1GStdDev = 0.002;  // after a later flip
        program.Run.ReviewFromInterim = review;
        machine.dialogs.QueueAnswer(Answer::OK);  // there is no configuration for the review
        ASSERT_TRUE(LoadInterimCalibration(program));
        EXPECT_EQ(program.Center.AccelDailyCalibrationMinus1GStdDev, review ? 0.001 : 0.002);
    }
}

TEST_F(InterimStoreTest, StandardErrorsAreComputedAgain) {
    // Reference on FWD peaks (1, 2), (2, 4.1), (3, 5.9): slope 27.9 / 14, residuals 0.00714, 0.11429, -0.07857;
    // sqrt(0.0192857 / 2 / 14), by hand.
    program.Run.LCTrialShape[0] = {3, 1, true};
    program.Run.LCTrial[0].DropData = {1, 2, 3};
    program.Run.LCTrial[0].RefDropData = {2, 4.1, 5.9};
    SaveInterimCalibration(program);
    LoadInterimCalibration(program);
    EXPECT_NEAR(program.Run.LCTrial[0].StdErrAdjFactor, 0.0262445, 1e-6);
}

/// Also from an older file, which has only its lists.
TEST_F(InterimStoreTest, ATrialKeepsItsDropsWhateverTheSetUpSays) {
    const CalibrationRun saved = program.Run;
    const std::span<const double> reference(saved.LCTrial[0].RefDropData);
    const double error = RegressThroughOrigin(saved.LCTrial[0].DropData, saved.LCTrial[0].RefDropData, 24).stdErrSlope;
    for (const bool hasState : {true, false}) {
        for (const auto& [heights, drops] : {std::pair(3, 5), {3, 10}, {4, 10}}) {
            SCOPED_TRACE(NumberText(heights) + (hasState ? "" : ", file of before"));
            program.Run = saved;
            program.Run.LCTrialShape[0] = program.Run.RefTrialShape[0] = {4, 6, false};
            program.Run.NumberLoadLevels = heights;
            program.Run.NumberDropsPerLoadLevel = drops;
            ASSERT_TRUE(SaveInterimCalibration(program));
            if (!hasState) machine.files.ReplaceFile(file, Bytes(file).substr(0, Bytes(file).find("[Interim State]")));
            ASSERT_TRUE(LoadInterimCalibration(program));
            const CalibrationRun& run = program.Run;
            EXPECT_EQ(run.LCTrialShape[0].Drops(), 24);
            EXPECT_EQ(run.RefTrialShape[0].Drops(), 24);
            const auto& peaks = run.LCTrial[0].RefDropData;
            EXPECT_TRUE(std::equal(peaks.begin(), peaks.begin() + 24, reference.begin()));
            EXPECT_TRUE(std::all_of(peaks.begin() + 24, peaks.end(), [](double peak) { return peak == 0; }));
            EXPECT_EQ(run.Sensor[11].RefTrial[0].DropData[23], saved.Sensor[11].RefTrial[0].DropData[23]);
            EXPECT_EQ(run.LCTrial[0].StdErrAdjFactor, error);
        }
    }
}

TEST_F(InterimStoreTest, FileIsWhatDocumentCenterAndRunWriteOneAfterTheOther) {
    ASSERT_TRUE(SaveInterimCalibration(program));
    const std::string saved = Bytes(file);
    EXPECT_EQ(saved, Bytes(copy));
    SavePDDX(program, *program.RunDocument, file);
    WriteCenterDataToPDDX(program, file);
    ProfileStrings strings = OpenProfileStrings(machine.files, file);
    SetRunKeys(strings, program.Run, "first,,third, with more", program.Now());
    SetStateKeys(strings, program.Run, program.Center);
    SaveProfileStrings(machine.files, file, strings);
    EXPECT_EQ(saved, Bytes(file));
    EXPECT_NE(saved.find("DeviceOwner=Stra\xDF"
                         "enbau S\xFC"
                         "d\r\n"),
              std::string::npos)
        << "in the files' code page";
}

TEST_F(InterimStoreTest, NoKeyOfAnEarlierSaveSurvives) {
    SaveInterimCalibration(program);
    program.Run.LoadCellRefTrials = 1;
    program.Run.NewLoadCellCalibrationCenterGain = 0;
    SaveInterimCalibration(program);
    const std::string saved = Bytes(file);
    EXPECT_NE(saved.find("LoadCellTrial1Gain"), std::string::npos);
    for (const char* key : {"LoadCellTrial2Gain", "LCTrial2DropData", "NewLoadCellCalibrationCenterGain"}) {
        EXPECT_EQ(saved.find(key), std::string::npos) << key;
    }
}

TEST_F(InterimStoreTest, FailedWriteLeavesTheOldFilesAndTheRun) {
    SaveInterimCalibration(program);
    const std::string old = Bytes(file);
    program.Run.RefCalAvg = 123;
    for (const int writes : {1, 3}) {  // writes of a save: folder, file, folder, copy
        machine.files.FailFromWrite(writes);
        machine.dialogs.QueueAnswer(Answer::OK);
        EXPECT_FALSE(SaveInterimCalibration(program));
        machine.files.FailFromWrite(0);
        const Path failed = writes == 1 ? file : copy;
        EXPECT_EQ(machine.dialogs.TakeBoxes(),
                  std::vector<std::string>{"\tUnable to create PDDX file:\\n" + PathText(failed) + "\t48\tOK"});
        EXPECT_EQ(Bytes(copy), old);
        EXPECT_EQ(Bytes(file) == old, writes == 1);
        EXPECT_EQ(program.Run.RefCalAvg, 123);
        EXPECT_EQ(program.Run.LoadCellRefTrials, 4);
    }
}

TEST_F(InterimStoreTest, WhatFilesCannotHoldIsLeftOutAndAllElseSaved) {
    program.Run.DeviceOwner = "Owner";
    SaveInterimCalibration(program);
    std::string expected = Bytes(file);
    program.Run.DeviceOwner = "東京";
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_TRUE(SaveInterimCalibration(program));
    const std::string owner = "DeviceOwner=Owner";
    expected.erase(expected.find(owner) + owner.find('=') + 1, std::string("Owner").size());
    EXPECT_TRUE(Bytes(file) == expected) << "one value less, and no other byte";
    EXPECT_EQ(machine.dialogs.TakeBoxes().size(), 1U);
}

TEST_F(InterimStoreTest, NothingIsSavedWithoutAName) {
    program.Run.InterimFileName.clear();
    EXPECT_TRUE(SaveInterimCalibration(program));
    EXPECT_FALSE(program.Run.InterimCalOpen);
}

TEST_F(InterimStoreTest, MissingFileIsTold) {
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_FALSE(LoadInterimCalibration(program));
    EXPECT_EQ(program.Run.LoadCellRefTrials, 0) << "the record is a fresh one";
    EXPECT_EQ(machine.dialogs.TakeBoxes().size(), 1U);
}

/// Older versions did not write the end mark.
TEST_F(InterimStoreTest, AFileOfBeforeTheMarkIsComparedWithItsCopy) {
    SaveInterimCalibration(program);
    const auto before = [&](const Path& path) {
        const std::string bytes = Bytes(path);
        return bytes.substr(0, bytes.find("[Interim State]"));
    };
    const std::string whole = before(file);
    const std::string cut = whole.substr(0, whole.find("LoadCellRefTrials"));
    const struct {
        const char* what;
        std::string file, copy;
        bool fromCopy;
    } cases[] = {
        {"both whole", whole, whole, false},
        {"file without its trials", cut, whole, true},
        {"copy without its trials", whole, cut, false},
        {"whole file of today, copy of before", Bytes(file), whole, false},
    };
    for (const auto& c : cases) {
        machine.files.ReplaceFile(file, c.file);
        machine.files.ReplaceFile(copy, c.copy);
        EXPECT_EQ(ReadInterim(machine.files, machine.folder.Folder(), program.Run.InterimFileName).fromCopy, c.fromCopy)
            << c.what;
    }
}

TEST_F(InterimStoreTest, CopyIsOfferedWhereTheFileIsGoneOrDamaged) {
    SaveInterimCalibration(program);
    const std::string saved = Bytes(file);
    const auto list = [&] { return InterimCalibrations(machine.files, machine.folder.Folder()); };
    ASSERT_EQ(list().size(), 1U);
    EXPECT_FALSE(list()[0].fromCopy);
    const std::string zeros(saved.size(), '\0');
    const std::string behindItsStep = saved.substr(0, saved.find("CurrentProcStep"));
    const std::string withoutItsMark = saved.substr(0, saved.rfind("Complete="));
    const std::string withoutTrials = saved.substr(0, saved.find("LoadCellRefTrials"));
    for (const auto& damage : {std::string(), zeros, behindItsStep, withoutItsMark, withoutTrials}) {
        SCOPED_TRACE(damage.size());
        machine.files.RemoveFile(file);
        if (!damage.empty()) machine.Write("InterimCal20120309.DDX", damage);
        ASSERT_EQ(list().size(), 1U);
        EXPECT_TRUE(list()[0].fromCopy);
        EXPECT_EQ(list()[0].endDate, "03-09-2012");
        EXPECT_EQ(list()[0].owner, "Straßenbau Süd");
        RestoreInterimFromCopy(machine.files, machine.folder.Folder(), list()[0].fileName);
        EXPECT_EQ(Bytes(file), saved);
    }
    machine.files.RemoveFile(file);
    machine.Write("InterimCal20120309/InterimCal.DDX", "[Operations Information]\r\nEndDate=03-09-2012\r\n");
    EXPECT_TRUE(list().empty()) << "half a copy is none";
}

}  // namespace
}  // namespace bellmark
