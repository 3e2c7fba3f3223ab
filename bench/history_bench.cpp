#include <benchmark/benchmark.h>

#include <chrono>

#include "pddx/pddx_file.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "results/history_plot.h"
#include "run/calibration_run.h"

namespace bellmark {
namespace {

constexpr std::size_t sensors = 9;

CalibrationRun MadeRun(int count) {
    CalibrationRun run;
    run.NumberSensors = sensors;
    run.NumberCalibrations = static_cast<std::int16_t>(count);
    run.LoadCellCalComplete = run.SensorRefCalComplete = true;
    for (std::size_t s = 0; s < sensors; ++s) {
        run.Sensor[s].SerialNumber = "D-" + NumberText(s + 1);
        run.Sensor[s].FinalGain = 1.001;
    }
    return run;
}

std::string MadeFile(int count) {
    std::string text = "[Device Calibration]\r\nNumberCalibrations = " + NumberText(count) + "\r\n\r\n";
    for (int n = 1; n <= count; ++n) {
        text += "[Device Calibration_" + NumberText(n) + "]\r\nLoadCellSerialNumber = LC-9\r\n";
        text += "LoadCellCalibrationCenterDate = 09-Mar-" + NumberText(1980 + n % 32) + "\r\n";
        text += "LoadCellCalibrationCenterGain = 1.0042\r\nNumberOfDeflectionSensors = 9\r\n";
        text += "SensorSerialNumbers = D-1, D-2, D-3, D-4, D-5, D-6, D-7, D-8, D-9\r\n";
        text += "SensorCalibrationCenterGain = 1.001, 1.002, 1.003, 1.004, 1.005, 1.006, 1.007, 1.008, 1.009\r\n\r\n";
    }
    return text;
}

/// From the text of the file to the rows of the table; it is to take at most 20 ms for 1000 calibrations.
void ReadHistoryToRows(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const CalibrationRun run = MadeRun(count);
    const std::string text = MadeFile(count);
    for ([[maybe_unused]] auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const ProfileStrings strings(text);
        PDDXFile document;
        const auto history = ReadHistory(strings, document);
        for (const auto& calibration : history) benchmark::DoNotOptimize(HistoryRow(calibration, run));
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
    }
}
BENCHMARK(ReadHistoryToRows)->Arg(0)->Arg(1)->Arg(40)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

void DrawHistory(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const CalibrationRun run = MadeRun(count);
    PDDXFile document;
    const auto history = ReadHistory(ProfileStrings(MadeFile(count)), document);
    const auto all = GainsToChoose(run).front();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(HistoryPlot(history, run, all, MakeDateTime(2012, 3, 9)));
    }
}
BENCHMARK(DrawHistory)->Arg(40)->Arg(1000)->Unit(benchmark::kMillisecond);

void AddRun(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const CalibrationRun run = MadeRun(count);
    const std::string text = MadeFile(count);
    const ProfileStrings strings(text);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(AddRunToHistory(text, strings, run, MakeDateTime(2012, 3, 9)));
    }
}
BENCHMARK(AddRun)->Arg(40)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
