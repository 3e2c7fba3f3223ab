// Import of a trial: the FWD's document of 24 drops and 12 sensors is read, paired with the reference and every device
// regressed. The file lies in memory, so that what is measured is the program's part.
#include <benchmark/benchmark.h>

#include "fwd/fwd_peaks.h"
#include "fwd/trial_report.h"
#include "pddx/mod_pddx_read.h"
#include "platform/numbers.h"
#include "run/trial.h"
#include "tests/pddx/memory_file_system.h"

namespace bellmark {
namespace {

constexpr int drops = 24;

std::string Document() {
    std::string text =
        "[Units]\r\nLoadUnits=kip\r\nDeflectionUnits=mils\r\n[Deflection Data]\r\nNumberOfTestLocations=1\r\n"
        "[Test Location 1]\r\nNumberOfDrops=" +
        NumberText(drops) + "\r\n";
    for (int drop = 1; drop <= drops; ++drop) {
        text += "DropData_" + NumberText(drop) + '=' + NumberText(6 + 0.417 * drop);
        for (int sensor = 0; sensor < 12; ++sensor) text += ", " + NumberText((20.5 - sensor) * (1 + 0.01 * drop));
        text += "\r\n";
    }
    return text;
}

CalibrationRun RunOf(Procedure procedure) {
    CalibrationRun run;
    run.CurrentProcedure = procedure;
    run.Trial.shape = {1, drops, true};
    run.NumberSensors = 12;
    run.LoadCellRefTrials = 1;
    run.RefTrials = 1;
    run.LoadCellInitialGain = 1;
    for (int drop = 0; drop < drops; ++drop) {
        const auto index = static_cast<std::size_t>(drop);
        run.LCTrial[0].RefDropData[index] = 6000 + 417 * drop;
        for (SensorCalRecord& sensor : run.Sensor) {
            sensor.InitialGain = 1;
            sensor.RefTrial[0].RefDropData[index] = 15 + 0.1 * drop;
        }
    }
    return run;
}

/// Argument: the procedure, 5 for the load cell and 4 for the sensors.
void ImportTrial(benchmark::State& state) {
    MemoryFileSystem files;
    files.contents["Trial.ddx"] = Document();
    CalibrationRun run = RunOf(static_cast<Procedure>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        PDDXFile document;
        ReadPDDXFile(files, "Trial.ddx", document, false);
        const FWDPeaks peaks = ReadFWDPeaks(document, run);
        if (!peaks.unreadable.empty() || peaks.dropsInFile != drops) state.SkipWithError("the trial was not read");
        for (std::size_t device = 0; device < DevicesInTrial(run); ++device) {
            benchmark::DoNotOptimize(CalibrateDevice(run, device));
        }
    }
}
BENCHMARK(ImportTrial)->Arg(5)->Arg(4)->Unit(benchmark::kMillisecond);

/// The reports of all twelve sensors, without the disk.
void WriteReports(benchmark::State& state) {
    const CalibrationRun run = RunOf(Procedure::Sensors);
    const CenterConfig center;
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t device = 0; device < DevicesInTrial(run); ++device) {
            benchmark::DoNotOptimize(TrialReportText(run, center, device, {"Report.RF1", "Trial.ddx", {}, 21.5}));
        }
    }
}
BENCHMARK(WriteReports)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
