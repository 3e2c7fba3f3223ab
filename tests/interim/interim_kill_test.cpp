#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>
#include <thread>

#include "app/interim_store.h"
#include "platform/numbers.h"
#include "tests/interim/full_run.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

int Kills() {
    const char* wanted = std::getenv("BELLMARK_KILLS");
    return wanted ? static_cast<int>(ReadNumber(wanted)) : 20;
}

/// A process that saves two runs in turn until it is killed.
pid_t StartSaving(Program& program, const CalibrationRun& one, const CalibrationRun& other) {
    const pid_t process = fork();
    if (process != 0) return process;
    for (;;) {
        for (const CalibrationRun* run : {&one, &other}) {
            program.Run = *run;
            if (!SaveInterimCalibration(program)) _exit(1);
        }
    }
}

TEST(InterimKill, LeavesTheOldRunOrTheNewOne) {
    TestMachine machine;
    Program program(machine.machine);
    program.Register<SetupDoor>([](Program&) { return std::make_shared<FakeSetup>(); });
    const Path file = machine.folder / "InterimCal20120309.DDX";
    const Path copy = machine.folder / "InterimCal20120309" / "InterimCal.DDX";
    const CalibrationRun one = FullRun(1);
    const CalibrationRun other = FullRun(2);
    const auto bytesOf = [&](const CalibrationRun& run) {
        program.Run = run;
        SaveInterimCalibration(program);
        return machine.files.ReadBytes(file);
    };
    const std::string otherBytes = bytesOf(other);
    const std::string oneBytes = bytesOf(one);
    ASSERT_NE(oneBytes, otherBytes);

    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution<int> microseconds(1000, 60'000);
    for (int i = 0; i < Kills(); ++i) {
        const pid_t process = StartSaving(program, one, other);
        ASSERT_GT(process, 0);
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        ASSERT_EQ(kill(process, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(waitpid(process, &status, 0), process);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the saving had ended by itself";
        for (const Path& path : {file, copy}) {
            const std::string bytes = machine.files.ReadBytes(path);
            ASSERT_TRUE(bytes == oneBytes || bytes == otherBytes) << PathText(path) << " after kill " << i;
        }
        ASSERT_EQ(InterimCalibrations(machine.files, machine.folder.Folder()).size(), 1U);
    }
}

}  // namespace
}  // namespace bellmark
