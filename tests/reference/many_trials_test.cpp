// A thousand trials in a row: the program must neither grow nor slow down. Long; run by ./test --long.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iostream>

#include "app/doors.h"
#include "app/program.h"
#include "assembly/assembly.h"
#include "reference/frm_bellmark_accel.h"
#include "reference/frm_bellmark_accel_drop.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

/// Resident size in megabytes; 0 where the system does not report it.
double ResidentMegabytes() {
    std::ifstream status("/proc/self/statm");
    double pages = 0, resident = 0;
    status >> pages >> resident;
    return resident * 4096 / 1e6;
}

TEST(ManyTrials, NeitherGrowNorSlowDown) {
    constexpr int trials = 1000;
    TestMachine machine;
    virtual_fwd::CenterOptions options;
    options.trials = 1;
    virtual_fwd::WriteCenter(machine.files, machine.folder.Folder(), options, machine.clock.Now());
    machine.files.Rename(machine.folder / "Review", machine.folder / "InterimCal20120309");
    const auto program = AssembleProgram(machine.machine);
    CalibrationRun& run = program->Run;
    run.ReviewMode = true;
    run.CurrentProcedure = Procedure::LoadCell;
    run.InterimFolderName = "InterimCal20120309";
    run.NumberLoadLevels = 4;
    run.NumberDropsPerLoadLevel = 6;
    program->Center = virtual_fwd::VirtualCenter(false, machine.clock.Now());
    program->Register<PrerequisitesDoor>([](Program&) { return std::make_shared<IdlePrerequisites>(); });
    auto& collection = dynamic_cast<frmBellmark_Accel&>(program->The<CollectionDoor>());
    auto& drop = dynamic_cast<frmBellmark_AccelDrop&>(program->The<DropDoor>());
    // The simulated board reads the same files that the trial writes again.
    program->The<SetupDoor>().ReadCalCenterFromFolderOf(machine.folder / "InterimCal20120309/BellmarkCenterConfig.ini");

    // The data folder already holds drops: the program reports them as those of an interrupted trial.
    machine.dialogs.QueueAnswer(Answer::OK);

    double megabytesAfterTen = 0;
    const auto begun = std::chrono::steady_clock::now();
    for (int trial = 0; trial < trials; ++trial) {
        run.Trial.DropSequenceIndex = 0;
        collection.Start();
        while (run.Trial.DropSequenceIndex < run.Trial.shape.Drops()) {
            collection.cmdNext.UserClick();
            drop.cmdAccept.UserClick();
        }
        if (trial == 9) megabytesAfterTen = ResidentMegabytes();
    }
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begun;
    const double millisecondsPerDrop = took.count() / (trials * run.Trial.shape.Drops());
    const double megabytes = ResidentMegabytes();
    std::cout << "resident after 10 trials " << megabytesAfterTen << " MB, after " << trials << ' ' << megabytes
              << " MB; " << millisecondsPerDrop << " ms a drop\n";
    EXPECT_LT(megabytes, megabytesAfterTen + 5);
#ifdef NDEBUG
    EXPECT_LT(millisecondsPerDrop, 25);
#endif
}

}  // namespace
}  // namespace bellmark
