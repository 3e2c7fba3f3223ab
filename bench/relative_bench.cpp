// A relative trial of twelve sensors: its analysis with both probabilities, and the final one over two trials.
#include <benchmark/benchmark.h>

#include "relative/relative_analysis.h"
#include "relative/relative_trial.h"
#include "run/calibration_run.h"

namespace bellmark {
namespace {

CalibrationRun TwoTrials() {
    CalibrationRun run;
    run.NumberSensors = 12;
    for (int trial = 0; trial < 2; ++trial) {
        BeginRelativeTrial(run);
        for (std::size_t s = 0; s < maxSensors; ++s) {
            SensorCalRecord& sensor = run.Sensor[s];
            sensor.InterimGain = 1 + 0.001 * static_cast<double>(s);
            auto& readings = sensor.RelTrial.at(static_cast<std::size_t>(run.RelTrials)).DropData;
            for (std::size_t drop = 0; drop < relativeDrops; ++drop) {
                readings[drop] = 500 + 0.01 * static_cast<double>((s * 31 + drop * 17) % 97);
            }
        }
        DoRelativeDataAnalysis(run);
        CountRelativeTrial(run);
    }
    return run;
}

void Ignore(const char*) {}

void AnalyseRelativeTrial(benchmark::State& state) {
    CalibrationRun run = TwoTrials();
    run.RelTrials = 1;
    for ([[maybe_unused]] auto _ : state) {
        DoRelativeDataAnalysis(run);
        benchmark::DoNotOptimize(RelativeTrialTable(run.RelTrial[1], run.NumberSensors, Ignore));
    }
}
BENCHMARK(AnalyseRelativeTrial)->Unit(benchmark::kMicrosecond);

void AnalyseAllRelativeTrials(benchmark::State& state) {
    const CalibrationRun run = TwoTrials();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(AnalyseAllTrials(run, Ignore));
}
BENCHMARK(AnalyseAllRelativeTrials)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
