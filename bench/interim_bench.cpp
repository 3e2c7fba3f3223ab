// One save of a run that holds as much as a run can: four trials of each kind, twelve sensors. The files lie in memory,
// so that what is measured is the program's part; the disk's own flush comes on top, twice a save.
#include <benchmark/benchmark.h>

#include "app/interim_store.h"
#include "platform/clock.h"
#include "platform/portable_machine.h"
#include "platform/timers.h"
#include "tests/interim/full_run.h"
#include "tests/pddx/memory_file_system.h"
#include "tests/support/idle_doors.h"

namespace bellmark {
namespace {

struct WritableMemory : MemoryFileSystem {
    void ReplaceFile(const Path& path, std::string_view bytes) override { contents[path] = bytes; }
    void CreateFolder(const Path&) override {}
};

struct NobodyToAsk : Dialogs {
    Answer Show(const MessageBox& message) override { throw std::runtime_error(message.text); }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::optional<Path> OpenFile(const FileChoice&) override { return {}; }
    std::optional<Path> SaveFile(const FileChoice&) override { return {}; }
    std::optional<Path> PickFolder(const std::string&, const Path&) override { return {}; }
};

struct MemoryMachine {
    WritableMemory files;
    ScriptClock clock;
    Timers timers{clock};
    NobodyToAsk dialogs;
    SystemLauncher launcher;
    FilePrinter printer{files, "Printed.txt"};
    SilentSound sound;
    Random random{1};
    Machine machine{files,  clock,   timers,  dialogs, launcher,   printer,   sound,
                    random, nullptr, nullptr, nullptr, "programs", "programs"};
};

struct SavedRun {
    MemoryMachine machine;
    Program program{machine.machine};

    SavedRun() {
        program.Register<SetupDoor>([](Program&) { return std::make_shared<FakeSetup>(); });
        program.Run = FullRun(1);
    }
};

void SaveInterim(benchmark::State& state) {
    SavedRun run;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(SaveInterimCalibration(run.program));
    state.counters["kB"] =
        static_cast<double>(run.machine.files.contents.at("programs/InterimCal20120309.DDX").size()) / 1000;
}
BENCHMARK(SaveInterim)->Unit(benchmark::kMillisecond);

void LoadInterim(benchmark::State& state) {
    SavedRun run;
    SaveInterimCalibration(run.program);
    for ([[maybe_unused]] auto _ : state) {
        if (!LoadInterimCalibration(run.program)) state.SkipWithError("the run could not be loaded");
    }
}
BENCHMARK(LoadInterim)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
