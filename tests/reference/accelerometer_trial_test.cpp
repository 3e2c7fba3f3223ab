// A whole trial of deflection drops by script, in a program that offers all steps of the sensor calibration.
#include <gtest/gtest.h>

#include <iostream>

#include "app/app_main.h"
#include "assembly/assembly.h"
#include "console/script_runner.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

TEST(AccelerometerTrial, RunsByScriptFromTheMainMenuToTheFWDsFile) {
    TestMachine machine;
    virtual_fwd::CenterOptions options;
    options.trials = 1;
    options.referenceTrials = 1;
    options.heights = 3;
    options.drops = 5;
    const Path folder = machine.folder / "sample";
    virtual_fwd::WriteCenter(machine.files, folder, options, machine.clock.Now());
    machine.Write("sample/Ferrylink.exe", "");
    machine.machine.programFolder = folder;
    const auto program = AssembleProgram(machine.machine);
    program->Register<ReferenceReviewDoor>([](Program&) { return std::make_shared<IdleReferenceReview>(); });
    program->Register<CenterRelativeDoor>([](Program&) { return std::make_shared<IdleCenterRelative>(); });
    Main(*program);
    ScriptRunner runner(*program, machine.dialogs, machine.clock, std::cout);
    machine.WhileWaiting = [&] { runner.TakeTurn(); };
    const Path script = Path(BELLMARK_SOURCE_FOLDER) / "tests/reference/accelerometer-trial.script";
    runner.Run(ReadScript(machine.files.ReadBytes(script)));
    const CalibrationRun& run = program->Run;
    EXPECT_EQ(run.RefTrials, 1);
    EXPECT_EQ(run.RefTrialShape[0], (TrialShape{3, 5, true}));
    // Every accepted peak is within half a percent of the true one in the list beside the drops, in microns.
    const std::string list = machine.files.ReadBytes(folder / "Review/TruePeaks.txt");
    const auto truth = SplitLines(std::string_view(list).substr(list.find("Reference trial")));
    ASSERT_GE(truth.size(), 16U);
    for (std::size_t drop = 0; drop < 15; ++drop) {
        const double mils = ReadNumber(Split(truth[drop + 1], '\t').at(4));
        EXPECT_NEAR(run.Sensor[0].RefTrial[0].RefDropData[drop], mils, 0.005 * mils) << truth[drop + 1];
    }
    EXPECT_TRUE(machine.Has("sample/" + run.InterimFolderName + "/Reference1-H3D5.txt"));
}

}  // namespace
}  // namespace bellmark
